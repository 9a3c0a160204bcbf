#include "ui/board/floor_panel.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/board/edit_bar.h"
#include "ui/board/floor_widget.h"
#include "ui/board/goals_label.h"
#include "ui/board/world_menu.h"

namespace zentro {

FloorPanel::FloorPanel(VirtualBoardHost& host, WorldCommands& commands, QWidget* parent)
    : QWidget(parent),
      host_(host),
      commands_(commands),
      floor_(new FloorWidget(host, this)),
      goals_(new GoalsLabel(this)),
      editBar_(new EditBar(commands, this)) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    rows->addLayout(MakeHead());
    rows->addWidget(editBar_);
    rows->addWidget(floor_, 1);
    rows->addLayout(MakeFoot());
    setTabOrder(editBar_, floor_);
    editBar_->hide();
    ConnectDrawing();
    connect(&commands.Document(), &WorldDocument::Changed, this, &FloorPanel::ShowName);
    ShowName();
}

QHBoxLayout* FloorPanel::MakeHead() {
    auto* row = new QHBoxLayout;
    world_ = AddButton(row, "BtnWorld", {}, tr("Choose the world in which the robot drives"));
    world_->setPopupMode(QToolButton::InstantPopup);
    world_->setMenu(new WorldMenu(commands_, this));
    row->addStretch(1);
    QToolButton* sight = AddButton(row, "BtnSight", tr("What It Sees"),
                                   tr("Draw what each sensor of the robot sees or feels"));
    sight->setCheckable(true);
    connect(sight, &QToolButton::toggled, floor_, &FloorWidget::ShowSight);
    QToolButton* edit = AddButton(row, "BtnEdit", tr("Edit"),
                                  tr("Draw in the world: lines, walls, boxes, lamps, goals"));
    edit->setCheckable(true);
    connect(edit, &QToolButton::toggled, editBar_, &QWidget::setVisible);
    connect(edit, &QToolButton::toggled, floor_, &FloorWidget::SetEditing);
    connect(edit, &QToolButton::toggled, this, &FloorPanel::EditingToggled);
    return row;
}

QHBoxLayout* FloorPanel::MakeFoot() {
    auto* row = new QHBoxLayout;
    row->addWidget(goals_, 1);
    const QToolButton* startHere =
        AddButton(row, "BtnStartHere", tr("Start Here"),
                  tr("From now on the robot starts where it is now, looking the way it looks"));
    connect(startHere, &QToolButton::clicked, this, [this] { commands_.StartHere(this); });
    const QToolButton* putBack =
        AddButton(row, "BtnRobotToStart", tr("Back to Start"),
                  tr("Put the robot back at its start; the program goes on"));
    connect(putBack, &QToolButton::clicked, &host_, &VirtualBoardHost::PutRobotAtStart);
    return row;
}

void FloorPanel::ConnectDrawing() {
    connect(editBar_, &EditBar::ToolChosen, floor_, &FloorWidget::ChooseTool);
    connect(editBar_, &EditBar::SnapsToggled, floor_, &FloorWidget::SetSnaps);
    connect(floor_, &FloorWidget::Drawn, this,
            [this](const world::World& world) { commands_.Change(this, world); });
    connect(floor_, &FloorWidget::UndoWanted, &commands_.Document(), &WorldDocument::Undo);
    connect(floor_, &FloorWidget::RedoWanted, &commands_.Document(), &WorldDocument::Redo);
}

QToolButton* FloorPanel::AddButton(QHBoxLayout* row, const QString& name, const QString& text,
                                   const QString& toolTip) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(toolTip);
    row->addWidget(button);
    return button;
}

/// With a star while something is unsaved, like the tabs of programs.
void FloorPanel::ShowName() {
    const WorldDocument& document = commands_.Document();
    QString name = document.Name().replace('&', "&&");
    world_->setText(document.IsChanged() ? tr("World: %1*").arg(name) : tr("World: %1").arg(name));
}

void FloorPanel::Refresh() {
    floor_->Refresh();
    goals_->Show(host_.World(), host_.IsRunOver());
}

}  // namespace zentro
