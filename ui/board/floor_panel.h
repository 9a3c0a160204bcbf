#pragma once

#include <QWidget>

#include "desktop/virtual_board_host.h"
#include "ui/board/world_commands.h"

class QHBoxLayout;
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

  signals:
    /// The world is drawn in, which takes room; or no longer.
    void EditingToggled(bool editing);

  private:
    QToolButton* AddButton(QHBoxLayout* row, const QString& name, const QString& text,
                           const QString& toolTip);
    QHBoxLayout* MakeHead();
    QHBoxLayout* MakeFoot();
    void ConnectDrawing();
    void ShowName();

    VirtualBoardHost& host_;
    WorldCommands& commands_;
    QToolButton* world_ = nullptr;
    FloorWidget* floor_;
    GoalsLabel* goals_;
    EditBar* editBar_;
};

}  // namespace zentro
