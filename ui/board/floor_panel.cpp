#include "ui/board/floor_panel.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/board/floor_widget.h"

namespace zentro {

FloorPanel::FloorPanel(VirtualBoardHost& host, QWidget* parent)
    : QWidget(parent), host_(host), floor_(new FloorWidget(host, this)), bar_(new QHBoxLayout) {
    bar_->setContentsMargins(0, 0, 0, 0);
    bar_->addStretch(1);
    QToolButton* sight = AddButton("BtnSight", tr("&What It Sees"),
                                   tr("Draw what each sensor of the robot sees or feels"));
    sight->setCheckable(true);
    connect(sight, &QToolButton::toggled, floor_, &FloorWidget::ShowSight);
    const QToolButton* putBack =
        AddButton("BtnRobotToStart", tr("&Back to Start"),
                  tr("Put the robot back at its start; the program goes on"));
    connect(putBack, &QToolButton::clicked, &host, &VirtualBoardHost::PutRobotAtStart);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(floor_, 1);
    rows->addLayout(bar_);
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

void FloorPanel::Refresh() {
    floor_->Refresh();
}

}  // namespace zentro
