#pragma once

#include <QWidget>

#include "desktop/virtual_board_host.h"
#include "ui/board/world_commands.h"

class QHBoxLayout;
class QToolButton;

namespace zentro {

class FloorWidget;
class GoalsLabel;

/// The floor with what can be done to it.
class FloorPanel : public QWidget {
    Q_OBJECT

  public:
    /// Both outlive the panel.
    FloorPanel(VirtualBoardHost& host, WorldCommands& commands, QWidget* parent);

    void Refresh();

  private:
    QToolButton* AddButton(const QString& name, const QString& text, const QString& toolTip);
    void MakeBar();
    void ShowName();

    VirtualBoardHost& host_;
    WorldCommands& commands_;
    QHBoxLayout* bar_;
    QToolButton* world_ = nullptr;
    FloorWidget* floor_;
    GoalsLabel* goals_;
};

}  // namespace zentro
