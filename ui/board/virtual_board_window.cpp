#include "ui/board/virtual_board_window.h"

#include <QBoxLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>
#include <chrono>

#include "ui/board/floor_panel.h"
#include "ui/board/inputs_panel.h"
#include "ui/board/outputs_panel.h"
#include "ui/board/run_controls.h"
#include "ui/board/sound_controls.h"
#include "ui/support/icons.h"

namespace zentro {

namespace {

/// A column that scrolls when the window is too low for it.
QScrollArea* InScrollArea(QWidget* content, QWidget* parent) {
    auto* area = new QScrollArea(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(content);
    return area;
}

/// From this relation of width to height on, floor and board stand side by side, if there is room
/// for the captions of the board.
constexpr double kWide = 1.7;
constexpr std::chrono::milliseconds kInputsRest{50};
constexpr int kLeastForBoth = 660;  // pixels
constexpr int kFloorShare = 4;      // of the height; side by side both are as wide
constexpr int kOutputsShare = 3;
constexpr int kMargins = 30;             // round the columns and between them
constexpr int kLeastForPictures = 315;   // beside the inputs
constexpr int kLeastLinesForWords = 34;  // in height, on the buttons
constexpr int kSmallMargin = 4;          // where room is short

}  // namespace

VirtualBoardWindow::VirtualBoardWindow(VirtualBoardHost& host, WorldCommands& world,
                                       SoundOutput& sound, SettingsStore& settings, QWidget* parent)
    : QWidget(parent),
      host_(host),
      controls_(new RunControls(host, this)),
      sound_(new SoundControls(host, sound, settings, this)),
      floor_(new FloorPanel(host, world, this)),
      outputs_(new OutputsPanel(this)),
      inputs_(new InputsPanel(this)) {
    setObjectName("frmVirtualBoard");
    ShowProgram({});
    setWindowIcon(ThemedIcon("virtual-board"));
    inputsRest_.setSingleShot(true);
    inputsRest_.setInterval(kInputsRest);
    connect(&inputsRest_, &QTimer::timeout, this, [this] {
        if (inputsAreLate_) ShowInputs();
    });
    setAutoFillBackground(true);  // or its frame is painted with each picture of the robot
    pictures_ = new QVBoxLayout;
    pictures_->addWidget(floor_, kFloorShare);
    pictures_->addWidget(outputs_, kOutputsShare);
    auto* body = new QWidget;
    inputsArea_ = InScrollArea(inputs_, body);
    columns_ = new QHBoxLayout(body);
    columns_->setContentsMargins(0, 0, 0, 0);
    columns_->addLayout(pictures_, 1);
    columns_->addWidget(inputsArea_);
    connect(inputs_, &InputsPanel::Folded, this, &VirtualBoardWindow::Arrange);
    auto* rows = new QVBoxLayout(this);
    controls_->AddToSpeed(sound_);
    rows->addWidget(controls_);
    rows->addWidget(sound_->ProblemRow());
    QScrollArea* bodyArea = InScrollArea(body, this);
    bodyArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);  // the drawing tools are wide
    rows->addWidget(bodyArea, 1);
    Arrange();
    connect(&host, &VirtualBoardHost::Changed, this, &VirtualBoardWindow::Refresh);
    connect(inputs_, &InputsPanel::Edited, this, [this](const InputsPanel::Edit& edit) {
        Inputs inputs = host_.State().inputs;
        edit(inputs);
        host_.SetInputs(inputs);
    });
    connect(floor_, &FloorPanel::EditingToggled, outputs_, &QWidget::setHidden);
    connect(floor_, &FloorPanel::EditingToggled, this, &VirtualBoardWindow::Arrange);
    connect(inputs_, &InputsPanel::ButtonPressed, &host, &VirtualBoardHost::PressButton);
    connect(inputs_, &InputsPanel::ButtonLetGo, &host, &VirtualBoardHost::LetButtonGo);
    connect(inputs_, &InputsPanel::HoldWanted, &host, &VirtualBoardHost::HoldInput);
    connect(inputs_, &InputsPanel::AllLetGo, &host, &VirtualBoardHost::LetAllInputsGo);
}

/// A joystick that has the focus springs back while the window goes: nobody is to hear it then.
VirtualBoardWindow::~VirtualBoardWindow() {
    host_.disconnect(this);
    inputs_->disconnect(this);
}

void VirtualBoardWindow::ShowProgram(const QString& text) {
    setWindowTitle(text.isEmpty() ? tr("Virtual Board") : tr("Virtual Board - %1").arg(text));
}

void VirtualBoardWindow::SetMayRun(std::function<bool()> mayRun) {
    controls_->SetMayRun(std::move(mayRun));
}

void VirtualBoardWindow::ShowUsedInputs(const std::optional<InputUse>& used) {
    inputs_->ShowUsed(used);
}

int VirtualBoardWindow::InputsWidth() const {
    inputs_->layout()->activate();
    return inputs_->minimumSizeHint().width() +
           inputsArea_->verticalScrollBar()->sizeHint().width() + 4;
}

/// The inputs are as wide as they need to be; floor and board get the rest. Where that is too
/// little for them, the inputs go below, and all of it scrolls.
void VirtualBoardWindow::Arrange() {
    const int inputsWidth = InputsWidth();
    controls_->SetIsLow(height() < kLeastLinesForWords * fontMetrics().height());
    const int leastForPictures = std::max(kLeastForPictures, floor_->LeastWidth());
    const bool isNarrow = width() < inputsWidth + leastForPictures + kMargins;
    columns_->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    inputsArea_->setMinimumWidth(isNarrow ? 0 : inputsWidth);
    inputsArea_->setMaximumWidth(isNarrow ? QWIDGETSIZE_MAX : inputsWidth);
    inputsArea_->setMinimumHeight(isNarrow ? inputs_->minimumSizeHint().height() : 0);
    const int margin = isNarrow ? kSmallMargin : style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    layout()->setContentsMargins(margin, margin, margin, margin);
    // So that the robot is in sight without scrolling.
    const int leastFloor = floor_->minimumSizeHint().height();
    const int seen = height() - controls_->sizeHint().height() - 3 * margin;
    floor_->setMaximumHeight(isNarrow ? std::max(seen, leastFloor) : QWIDGETSIZE_MAX);
    const QSize room = size() - QSize(isNarrow ? 0 : inputsWidth, controls_->sizeHint().height());
    const bool isWide = room.width() > kWide * room.height() && room.width() >= kLeastForBoth;
    pictures_->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    pictures_->setStretch(0, isWide ? kOutputsShare : kFloorShare);
    const QSize outputs = outputs_->isHidden() ? QSize() : outputs_->minimumSizeHint();
    const int floorHeight = isNarrow ? floor_->maximumHeight() : room.height();
    floor_->FitTo(isWide     ? QSize(room.width() / 2, floorHeight)
                  : isNarrow ? QSize(room.width(), floorHeight)
                             : QSize(room.width(), floorHeight - outputs.height()));
}

void VirtualBoardWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Arrange();
}

void VirtualBoardWindow::Refresh() {
    if (!isVisible()) return;
    controls_->Refresh();
    sound_->Refresh();
    floor_->Refresh();
    outputs_->Show(host_.State());
    const bool runs = host_.State().processor.running && !host_.IsPaused();
    if (!runs || !inputsRest_.isActive()) return ShowInputs();
    inputsAreLate_ = true;
}

/// Their numbers cost as much as the picture of the robot, and nobody reads them so fast.
void VirtualBoardWindow::ShowInputs() {
    inputs_->Show(host_.World());
    inputsAreLate_ = false;
    inputsRest_.start();
}

void VirtualBoardWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    Refresh();
}

void VirtualBoardWindow::closeEvent(QCloseEvent* event) {
    emit FormClosing();
    QWidget::closeEvent(event);
}

}  // namespace zentro
