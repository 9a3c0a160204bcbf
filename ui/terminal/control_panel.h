#pragma once

#include <QWidget>
#include <vector>

#include "comms/manual_controls.h"

class QCheckBox;
class QGridLayout;
class QPushButton;

namespace zentro {

class DriveFrame;

/// The panel beside the terminal's screen that drives the board's outputs by hand.
class ControlPanel : public QWidget {
    Q_OBJECT

  public:
    /// Both outlive the panel.
    ControlPanel(TerminalSession& session, ManualControls& controls, QWidget* parent);

    /// Lays the groups out in so many columns.
    void Arrange(int columns);
    /// The size with so many columns.
    QSize SizeWith(int columns) const;

    /// Ends a download, stops the program and puts every output to rest.
    void Stop();

    /// Shows the state of the controls, the log and the download.
    void Reflect();

  signals:
    void RunClicked();
    void LogClicked();

  private:
    QWidget* MakeActions();
    QWidget* MakeButtons();
    void MakeDrives();
    void ConnectMotor(int number);
    void ConnectServo(int number);
    int Rows(int columns) const;
    /// Shows what became of the controls after one of them was used.
    template <typename Action>
    auto Then(Action action) {
        return [this, action](auto... values) {
            action(values...);
            Reflect();
        };
    }

    TerminalSession& session_;
    ManualControls& controls_;
    QGridLayout* grid_;
    std::vector<QWidget*> groups_;
    std::vector<DriveFrame*> motors_;
    std::vector<DriveFrame*> servos_;
    std::vector<QCheckBox*> actions_;
    QPushButton* run_ = nullptr;
    QPushButton* stop_ = nullptr;
    QPushButton* scan_ = nullptr;
    QPushButton* log_ = nullptr;
};

}  // namespace zentro
