#pragma once

#include <QString>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>
#include <set>

#include "desktop/used_inputs.h"
#include "desktop/virtual_board_host.h"

class QBoxLayout;
class QScrollArea;

namespace zentro {

class FloorPanel;
class InputsPanel;
class OutputsPanel;
class RunControls;
class SettingsStore;
class SoundControls;
class SoundOutput;
class WorldCommands;

/// A picture of the virtual board that one can play with, and a robot that it drives. While it is
/// hidden it draws nothing; the board goes on.
class VirtualBoardWindow : public QWidget {
    Q_OBJECT

  public:
    /// All of them outlive the window.
    VirtualBoardWindow(VirtualBoardHost& host, WorldCommands& world, SoundOutput& sound,
                       SettingsStore& settings, QWidget* parent = nullptr);
    ~VirtualBoardWindow() override;

    QSize sizeHint() const override { return {960, 640}; }

    /// What the caption says of the program on the board; empty: nothing.
    void ShowProgram(const QString& text);
    /// Which inputs the program uses; nothing: it is not known.
    void ShowUsedInputs(const std::optional<InputUse>& used);
    /// Asked before Run; nothing set: it may always run.
    void SetMayRun(std::function<bool()> mayRun);

  signals:
    void FormClosing();

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Refresh();
    void ShowInputs();
    void Arrange();
    int InputsWidth() const;

    VirtualBoardHost& host_;
    RunControls* controls_;
    SoundControls* sound_;
    FloorPanel* floor_;
    OutputsPanel* outputs_;
    InputsPanel* inputs_;
    QTimer inputsRest_;           ///< after they were shown, while a program runs
    bool inputsAreLate_ = false;  ///< they have changed since
    QScrollArea* inputsArea_ = nullptr;
    QBoxLayout* pictures_ = nullptr;  ///< floor and outputs
    QBoxLayout* columns_ = nullptr;   ///< the pictures and the inputs
};

}  // namespace zentro
