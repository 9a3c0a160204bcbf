#pragma once

#include <QWidget>

#include "desktop/world_drawing.h"
#include "ui/board/world_commands.h"

class QButtonGroup;
class QHBoxLayout;
class QToolButton;

namespace zentro {

/// The tools with which the world is drawn, and what brings it back or keeps it.
class EditBar : public QWidget {
    Q_OBJECT

  public:
    /// The commands outlive the bar.
    EditBar(WorldCommands& commands, QWidget* parent);

  signals:
    void ToolChosen(zentro::WorldTool tool);
    void SnapsToggled(bool snaps);

  private:
    QHBoxLayout* MakeTools();
    QHBoxLayout* MakeRest();
    QToolButton* AddButton(QHBoxLayout* row, const QString& name, const QString& text,
                           const QString& toolTip);
    void Refresh();

    WorldCommands& commands_;
    QButtonGroup* tools_;
    QToolButton* undo_ = nullptr;
    QToolButton* redo_ = nullptr;
    QToolButton* save_ = nullptr;
};

}  // namespace zentro
