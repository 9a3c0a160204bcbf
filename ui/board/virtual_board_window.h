#pragma once

#include <QString>
#include <QWidget>
#include <functional>

#include "desktop/virtual_board_host.h"

namespace zentro {

class FloorWidget;
class InputsPanel;
class OutputsPanel;
class RunControls;

/// A picture of the virtual board that one can play with, and a robot that it drives. While it is
/// hidden it draws nothing; the board goes on.
class VirtualBoardWindow : public QWidget {
    Q_OBJECT

  public:
    /// The host outlives the window.
    explicit VirtualBoardWindow(VirtualBoardHost& host, QWidget* parent = nullptr);
    ~VirtualBoardWindow() override;

    QSize sizeHint() const override { return {960, 640}; }

    /// What the caption says of the program on the board; empty: nothing.
    void ShowProgram(const QString& text);
    /// Asked before Run; nothing set: it may always run.
    void SetMayRun(std::function<bool()> mayRun);

  signals:
    void FormClosing();

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void Refresh();

    VirtualBoardHost& host_;
    RunControls* controls_;
    FloorWidget* floor_;
    OutputsPanel* outputs_;
    InputsPanel* inputs_;
};

}  // namespace zentro
