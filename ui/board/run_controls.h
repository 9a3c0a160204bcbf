#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <functional>
#include <utility>

#include "desktop/virtual_board_host.h"

class QBoxLayout;
class QLabel;
class QPushButton;
class QSlider;

namespace zentro {

/// The buttons that run, hold and step the program, its speed, and where it stands.
class RunControls : public QWidget {
    Q_OBJECT

  public:
    /// The host outlives the controls.
    RunControls(VirtualBoardHost& host, QWidget* parent);

    /// Asked before Run; nothing set: it may always run.
    void SetMayRun(std::function<bool()> mayRun) { mayRun_ = std::move(mayRun); }
    /// Something that belongs beside the speed.
    void AddToSpeed(QWidget* widget);
    /// Where the window is low, rows are saved before words.
    void SetIsLow(bool low);
    /// Shows where the program stands now.
    void Refresh();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QPushButton* AddButton(const QString& name, const QString& text, const QString& icon,
                           const QString& help);
    QBoxLayout* MakeButtons();
    QBoxLayout* MakeSpeed();
    QLayout* MakeStatus();
    void Fit();
    int RoomForWords() const;
    int RoomForOneRow() const;
    int RoomForSpeed() const;
    void ShowInstruction();
    void ElideInstruction();
    bool InstructionFlickers() const;
    void ShowPause();
    void ShowState();
    void ChooseSpeed(int position);

    VirtualBoardHost& host_;
    std::function<bool()> mayRun_;
    QPushButton* run_;
    QPushButton* stop_;
    QPushButton* pause_;
    QPushButton* line_;
    QPushButton* lineBack_;
    QPushButton* step_;
    QPushButton* stepBack_;
    QPushButton* reset_;
    QSlider* speed_;
    QLabel* speedCaption_;
    QLabel* speedText_;
    QWidget* besideSpeed_ = nullptr;
    QLabel* state_;
    QLabel* instruction_;
    QLabel* steps_;
    QBoxLayout* buttons_ = nullptr;
    QBoxLayout* speedRow_ = nullptr;
    QBoxLayout* top_ = nullptr;  ///< both
    bool isLow_ = false;
    bool isCompact_ = false;
    QString instructionText_;
    QElapsedTimer sinceInstruction_;
};

}  // namespace zentro
