#include "ui/board/edit_bar.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>
#include <array>

#include "ui/board/floor_pencil.h"

namespace zentro {

namespace {

struct ToolButton {
    WorldTool tool;
    const char* name;
};
constexpr std::array<ToolButton, 10> kTools{{{WorldTool::Line, "ToolLine"},
                                             {WorldTool::Area, "ToolArea"},
                                             {WorldTool::Wall, "ToolWall"},
                                             {WorldTool::Box, "ToolBox"},
                                             {WorldTool::Lamp, "ToolLamp"},
                                             {WorldTool::Start, "ToolStart"},
                                             {WorldTool::Goal, "ToolGoal"},
                                             {WorldTool::Move, "ToolMove"},
                                             {WorldTool::Erase, "ToolErase"},
                                             {WorldTool::Ruler, "ToolRuler"}}};

}  // namespace

EditBar::EditBar(WorldCommands& commands, QWidget* parent)
    : QWidget(parent), commands_(commands), tools_(new QButtonGroup(this)) {
    setObjectName("EditBar");
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    rows->addLayout(MakeTools());
    rows->addLayout(MakeRest());
    connect(&commands_.Document(), &WorldDocument::Changed, this, &EditBar::Refresh);
    Refresh();
}

QHBoxLayout* EditBar::MakeTools() {
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    for (const ToolButton& one : kTools) {
        QToolButton* button = AddButton(row, one.name, ToolWords(one.tool), ToolHelp(one.tool));
        button->setCheckable(true);
        button->setChecked(one.tool == WorldTool::Line);
        tools_->addButton(button);
        connect(button, &QToolButton::clicked, this,
                [this, tool = one.tool] { emit ToolChosen(tool); });
    }
    row->addStretch(1);
    return row;
}

QHBoxLayout* EditBar::MakeRest() {
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    auto* snaps = new QCheckBox(tr("Snap to grid"), this);
    snaps->setObjectName("Snap");
    snaps->setToolTip(tr("The pencil keeps to places %1 cm apart").arg(kPencilGrid));
    snaps->setChecked(true);
    connect(snaps, &QCheckBox::toggled, this, &EditBar::SnapsToggled);
    row->addWidget(snaps);
    row->addStretch(1);
    undo_ =
        AddButton(row, "BtnUndoWorld", tr("Undo"), tr("Take the last change of the world back"));
    redo_ = AddButton(row, "BtnRedoWorld", tr("Redo"), tr("Make the change again"));
    save_ = AddButton(row, "BtnSaveWorld", tr("Save"), tr("Save the world in its file"));
    connect(undo_, &QToolButton::clicked, &commands_.Document(), &WorldDocument::Undo);
    connect(redo_, &QToolButton::clicked, &commands_.Document(), &WorldDocument::Redo);
    connect(save_, &QToolButton::clicked, this, [this] { commands_.Save(this); });
    return row;
}

QToolButton* EditBar::AddButton(QHBoxLayout* row, const QString& name, const QString& text,
                                const QString& toolTip) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(toolTip);
    button->setAccessibleDescription(toolTip);
    button->setFocusPolicy(Qt::TabFocus);
    row->addWidget(button);
    return button;
}

void EditBar::Refresh() {
    undo_->setEnabled(commands_.Document().CanUndo());
    redo_->setEnabled(commands_.Document().CanRedo());
    save_->setEnabled(commands_.Document().IsChanged());
}

}  // namespace zentro
