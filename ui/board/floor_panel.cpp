#include "ui/board/floor_panel.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/board/floor_widget.h"
#include "ui/board/goals_label.h"
#include "ui/board/world_menu.h"

namespace zentro {

FloorPanel::FloorPanel(VirtualBoardHost& host, WorldCommands& commands, QWidget* parent)
    : QWidget(parent),
      host_(host),
      commands_(commands),
      bar_(new QHBoxLayout),
      floor_(new FloorWidget(host, this)),
      goals_(new GoalsLabel(this)) {
    MakeBar();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    rows->addLayout(bar_);
    rows->addWidget(floor_, 1);
    rows->addWidget(goals_);
    setTabOrder(world_, floor_);
    connect(&commands.Document(), &WorldDocument::Changed, this, &FloorPanel::ShowName);
    ShowName();
}

void FloorPanel::MakeBar() {
    bar_->setContentsMargins(0, 0, 0, 0);
    world_ = AddButton("BtnWorld", {}, tr("Choose the world in which the robot drives"));
    world_->setPopupMode(QToolButton::InstantPopup);
    world_->setMenu(new WorldMenu(commands_, this));
    bar_->addStretch(1);
    QToolButton* sight = AddButton("BtnSight", tr("What It Sees"),
                                   tr("Draw what each sensor of the robot sees or feels"));
    sight->setCheckable(true);
    connect(sight, &QToolButton::toggled, floor_, &FloorWidget::ShowSight);
    const QToolButton* startHere =
        AddButton("BtnStartHere", tr("Start Here"),
                  tr("From now on the robot starts where it is now, looking the way it looks"));
    connect(startHere, &QToolButton::clicked, this, [this] { commands_.StartHere(this); });
    const QToolButton* putBack =
        AddButton("BtnRobotToStart", tr("Back to Start"),
                  tr("Put the robot back at its start; the program goes on"));
    connect(putBack, &QToolButton::clicked, &host_, &VirtualBoardHost::PutRobotAtStart);
}

QToolButton* FloorPanel::AddButton(const QString& name, const QString& text,
                                   const QString& toolTip) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(toolTip);
    bar_->addWidget(button);
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
