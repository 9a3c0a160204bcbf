#include "ui/board/floor_panel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QToolButton>
#include <algorithm>

#include "ui/board/edit_bar.h"
#include "ui/board/floor_widget.h"
#include "ui/board/goals_label.h"
#include "ui/board/world_menu.h"

namespace zentro {

namespace {

constexpr int kGap = 2;
/// As much larger the floor has to become for its buttons to change their place.
constexpr double kWorthIt = 1.1;

/// How large a world is drawn in that room, in pixels a centimetre.
double ScaleIn(const QSize& room, const world::World& world) {
    return std::min(room.width() / world.floor.width, room.height() / world.floor.height);
}

}  // namespace

FloorPanel::FloorPanel(VirtualBoardHost& host, WorldCommands& commands, QWidget* parent)
    : QWidget(parent),
      host_(host),
      commands_(commands),
      floor_(new FloorWidget(host, this)),
      goals_(new GoalsLabel(this)),
      editBar_(new EditBar(commands, this)),
      grid_(new QGridLayout(this)),
      head_(new QBoxLayout(QBoxLayout::LeftToRight)),
      foot_(new QBoxLayout(QBoxLayout::LeftToRight)) {
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setSpacing(kGap);
    MakeHead();
    MakeFoot();
    Place(false);
    setTabOrder(editBar_, floor_);
    editBar_->hide();
    ConnectDrawing();
    connect(&commands.Document(), &WorldDocument::Changed, this, &FloorPanel::ShowName);
    ShowName();
}

void FloorPanel::MakeHead() {
    world_ = AddButton(head_, "BtnWorld", {}, tr("Choose the world in which the robot drives"));
    world_->setPopupMode(QToolButton::InstantPopup);
    world_->setMenu(new WorldMenu(commands_, this));
    head_->addStretch(1);
    auto* tools = new QHBoxLayout;
    head_->addLayout(tools);
    QToolButton* sight = AddButton(tools, "BtnSight", tr("What It Sees"),
                                   tr("Draw what each sensor of the robot sees or feels"));
    sight->setCheckable(true);
    connect(sight, &QToolButton::toggled, floor_, &FloorWidget::ShowSight);
    QToolButton* edit = AddButton(tools, "BtnEdit", tr("Edit"),
                                  tr("Draw in the world: lines, walls, boxes, lamps, goals"));
    edit->setCheckable(true);
    connect(edit, &QToolButton::toggled, editBar_, &QWidget::setVisible);
    connect(edit, &QToolButton::toggled, floor_, &FloorWidget::SetEditing);
    connect(edit, &QToolButton::toggled, this, &FloorPanel::EditingToggled);
}

void FloorPanel::MakeFoot() {
    foot_->addWidget(goals_, 1);
    auto* moves = new QHBoxLayout;
    foot_->addLayout(moves);
    const QToolButton* startHere =
        AddButton(moves, "BtnStartHere", tr("Start Here"),
                  tr("From now on the robot starts where it is now, looking the way it looks"));
    connect(startHere, &QToolButton::clicked, this, [this] { commands_.StartHere(this); });
    const QToolButton* putBack =
        AddButton(moves, "BtnRobotToStart", tr("Back to Start"),
                  tr("Put the robot back at its start; the program goes on"));
    connect(putBack, &QToolButton::clicked, &host_, &VirtualBoardHost::PutRobotAtStart);
}

/// The drawing tools take the whole width, above the floor.
void FloorPanel::Place(bool beside) {
    for (QLayoutItem* item : {static_cast<QLayoutItem*>(head_), static_cast<QLayoutItem*>(foot_)})
        grid_->removeItem(item);
    grid_->removeWidget(editBar_);
    grid_->removeWidget(floor_);
    const auto direction = beside ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
    head_->setDirection(direction);
    foot_->setDirection(direction);
    const int column = beside ? 1 : 0;
    grid_->addItem(head_, beside ? 1 : 0, column);
    grid_->addWidget(editBar_, beside ? 0 : 1, 0);
    grid_->addWidget(floor_, beside ? 1 : 2, 0, beside ? 2 : 1, 1);
    grid_->addItem(foot_, beside ? 2 : 3, column);
    grid_->setRowStretch(2, 1);
    grid_->setColumnStretch(0, 1);
}

int FloorPanel::LeastWidth() const {
    int width = world_->sizeHint().width();
    for (const char* name : {"BtnSight", "BtnEdit"})
        width += findChild<QToolButton*>(name)->sizeHint().width() + kGap;
    return width;
}

bool FloorPanel::IsBetterBeside(const QSize& room) const {
    if (floor_->IsEditing()) return false;
    const QSize head = world_->sizeHint();
    const auto* const moves = foot_->itemAt(1);
    const int column = std::max(head.width(), moves->sizeHint().width());
    const int taken = 2 * (head.height() + kGap);
    // The world, the tools, the moves, and as much again for the task.
    if (room.height() < 3 * taken) return false;
    const world::World& world = host_.World().map->world;
    const double beside = ScaleIn({room.width() - column, room.height()}, world);
    return beside > kWorthIt * ScaleIn({room.width(), room.height() - taken}, world);
}

void FloorPanel::FitTo(const QSize& room) {
    room_ = room;
    const bool beside = IsBetterBeside(room);
    if (beside == isBeside_) return;
    isBeside_ = beside;
    Place(beside);
}

void FloorPanel::ConnectDrawing() {
    connect(editBar_, &EditBar::ToolChosen, floor_, &FloorWidget::ChooseTool);
    connect(editBar_, &EditBar::SnapsToggled, floor_, &FloorWidget::SetSnaps);
    connect(floor_, &FloorWidget::Drawn, this,
            [this](const world::World& world) { commands_.Change(this, world); });
    connect(floor_, &FloorWidget::UndoWanted, &commands_.Document(), &WorldDocument::Undo);
    connect(floor_, &FloorWidget::RedoWanted, &commands_.Document(), &WorldDocument::Redo);
}

QToolButton* FloorPanel::AddButton(QBoxLayout* row, const QString& name, const QString& text,
                                   const QString& toolTip) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(toolTip);
    button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);  // as wide as its column
    row->addWidget(button);
    return button;
}

/// With a star while something is unsaved, like the tabs of programs.
void FloorPanel::ShowName() {
    const WorldDocument& document = commands_.Document();
    QString name = document.Name().replace('&', "&&");
    world_->setText(document.IsChanged() ? tr("World: %1*").arg(name) : tr("World: %1").arg(name));
    FitTo(room_);
}

void FloorPanel::Refresh() {
    floor_->Refresh();
    goals_->Show(host_.World(), host_.IsRunOver());
}

}  // namespace zentro
