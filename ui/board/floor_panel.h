#pragma once

#include <QWidget>

#include "desktop/virtual_board_host.h"
#include "ui/board/world_commands.h"

class QBoxLayout;
class QGridLayout;
class QToolButton;

namespace zentro {

class EditBar;
class FloorWidget;
class GoalsLabel;

/// The floor with what can be done to it.
class FloorPanel : public QWidget {
    Q_OBJECT

  public:
    /// Both outlive the panel.
    FloorPanel(VirtualBoardHost& host, WorldCommands& commands, QWidget* parent);

    void Refresh();
    /// Puts the buttons and the task beside the floor or above and below it, whichever leaves more
    /// of this room to the floor.
    void FitTo(const QSize& room);
    /// What its buttons need in one row, in pixels.
    int LeastWidth() const;

  signals:
    /// The world is drawn in, which takes room; or no longer.
    void EditingToggled(bool editing);

  private:
    QToolButton* AddButton(QBoxLayout* row, const QString& name, const QString& text,
                           const QString& toolTip);
    void MakeHead();
    void MakeFoot();
    bool IsBetterBeside(const QSize& room) const;
    void Place(bool beside);
    void ConnectDrawing();
    void ShowName();

    VirtualBoardHost& host_;
    WorldCommands& commands_;
    QToolButton* world_ = nullptr;
    FloorWidget* floor_;
    GoalsLabel* goals_;
    EditBar* editBar_;
    QGridLayout* grid_;
    QBoxLayout* head_;
    QBoxLayout* foot_;
    QSize room_;
    bool isBeside_ = false;
};

}  // namespace zentro
