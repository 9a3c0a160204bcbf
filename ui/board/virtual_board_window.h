#pragma once

#include <QString>
#include <QWidget>
#include <string>

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

  signals:
    /// A program was stopped by a fault: the address in four hexadecimal digits, and a sentence.
    void FaultHappened(const std::string& address, const QString& text);
    /// The program is held before this instruction: four hexadecimal digits.
    void HeldAt(const std::string& address);
    void FormClosing();

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void Refresh();
    void TellWhereHeld();

    VirtualBoardHost& host_;
    RunControls* controls_;
    FloorWidget* floor_;
    OutputsPanel* outputs_;
    InputsPanel* inputs_;
    std::string heldAt_;
};

}  // namespace zentro
