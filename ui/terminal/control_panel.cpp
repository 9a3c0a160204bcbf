#include "ui/terminal/control_panel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "ui/support/icons.h"
#include "ui/terminal/drive_frame.h"

namespace zentro {

namespace {

constexpr std::array<DriveFrameNames, kMotors> kMotorNames{{
    {"Motor 1", "Mtr1Fwd", "Mtr1BCK", "MTr1Off", "OFF", "off", "Mtr1SP", "Mtr1Speed", "Speed",
     kMaxSpeed},
    {"Motor 2", "Mtr2FWD", "Mtr2BCk", "Mtr2Off", "OFF", "off", "Mtr2SP", "Mtr2Speed", "Speed",
     kMaxSpeed},
    {"Motor 3", "Mtr3fwd", "Mtr3Bck", "MTr3Off", "OFF", "off", "Mtr3SP", "Mtr3Speed", "Speed",
     kMaxSpeed},
    {"Motor 4", "Mtr4Fwd", "Mtr4BCK", "Mtr4Off", "OFF", "off", "MTR4SP", "Mtr4Speed", "Speed",
     kMaxSpeed},
}};

constexpr std::array<DriveFrameNames, kServos> kServoNames{{
    {"Servo 1", "Svo1Fwd", "Svo1BCK", "SVo1Ctr", "CTR", "centre", "Svo1Pos", "Svo1Position",
     "Angle", kMaxPosition},
    {"Servo 2", "Svo2Fwd", "Svo2Bck", "Svo2OFf", "CTR", "centre", "Svo2Pos", "Svo2Position",
     "Angle", kMaxPosition},
}};

constexpr int kSpacing = 6;

/// A new caption takes a button's shortcut away.
void SetCaption(QPushButton& button, const QString& caption, const QKeySequence& shortcut) {
    button.setText(caption);
    button.setShortcut(shortcut);
}

QPushButton* MakeButton(const char* name, const char* icon, const QString& toolTip,
                        QWidget* parent) {
    auto* button = new QPushButton(parent);
    button->setObjectName(name);
    button->setIcon(ThemedIcon(icon));
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

ControlPanel::ControlPanel(TerminalSession& session, ManualControls& controls, QWidget* parent)
    : QWidget(parent), session_(session), controls_(controls), grid_(new QGridLayout(this)) {
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setSpacing(kSpacing);
    MakeDrives();
    groups_.push_back(MakeActions());
    groups_.push_back(MakeButtons());
    connect(&controls, &ManualControls::Changed, this, &ControlPanel::Reflect);
    Reflect();
}

void ControlPanel::MakeDrives() {
    for (const DriveFrameNames& names : kMotorNames) {
        motors_.push_back(new DriveFrame(names, this));
        ConnectMotor(static_cast<int>(motors_.size()));
    }
    for (const DriveFrameNames& names : kServoNames) {
        servos_.push_back(new DriveFrame(names, this));
        ConnectServo(static_cast<int>(servos_.size()));
    }
    groups_.assign(motors_.begin(), motors_.end());
    groups_.insert(groups_.end(), servos_.begin(), servos_.end());
    for (DriveFrame* frame : findChildren<DriveFrame*>()) {
        // A board in debug mode refuses with a message: one is enough.
        connect(frame, &DriveFrame::DragBegun, this,
                [this, frame] { frame->SetFollowing(!session_.IsDebugging()); });
    }
}

void ControlPanel::ConnectMotor(int number) {
    DriveFrame* frame = motors_.back();
    connect(frame, &DriveFrame::OptionChosen, this,
            Then([this, number](DriveOption option) { controls_.ChooseMotor(number, option); }));
    connect(frame, &DriveFrame::ValueChanged, this,
            Then([this, number](int speed) { controls_.ChangeMotorSpeed(number, speed); }));
}

void ControlPanel::ConnectServo(int number) {
    DriveFrame* frame = servos_.back();
    connect(frame, &DriveFrame::OptionChosen, this,
            Then([this, number](DriveOption option) { controls_.ChooseServo(number, option); }));
    connect(frame, &DriveFrame::ValueChanged, this, Then([this, number](int position) {
                controls_.ChangeServoPosition(number, position);
            }));
}

QWidget* ControlPanel::MakeActions() {
    auto* group = new QGroupBox(tr("Action"), this);
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins(6, 4, 6, 4);
    for (int number = 1; number <= static_cast<int>(kActionPorts); ++number) {
        auto* box = new QCheckBox(QString::number(number), group);
        box->setObjectName(QString("Action%1").arg(number));
        box->setAccessibleName(tr("Action port %1").arg(number));
        connect(box, &QCheckBox::clicked, this,
                Then([this, number](bool on) { controls_.SwitchAction(number, on); }));
        column->addWidget(box);
        actions_.push_back(box);
    }
    column->addStretch();
    return group;
}

QWidget* ControlPanel::MakeButtons() {
    auto* group = new QWidget(this);
    run_ = MakeButton("BtnRun", "run", tr("Run the program on the board (Alt+R)"), group);
    stop_ = MakeButton("BtnStop", "stop",
                       tr("Stop the program and put every output to rest (Alt+S)"), group);
    scan_ = MakeButton("BtnScanAllInputs", "", tr("Show the board's inputs (Alt+N)"), group);
    log_ = MakeButton("BtnLog", "", tr("Keep the conversation in a file (Alt+L)"), group);
    SetCaption(*run_, tr("RUN"), tr("Alt+R"));
    SetCaption(*stop_, tr("STOP"), tr("Alt+S"));
    QFont bold = stop_->font();
    bold.setBold(true);
    stop_->setFont(bold);
    connect(run_, &QPushButton::clicked, this, &ControlPanel::RunClicked);
    connect(stop_, &QPushButton::clicked, this, &ControlPanel::Stop);
    connect(scan_, &QPushButton::clicked, this, Then([this](bool) { controls_.ToggleScan(); }));
    connect(log_, &QPushButton::clicked, this, &ControlPanel::LogClicked);
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    for (QPushButton* button : {run_, stop_, scan_, log_})
        column->addWidget(button);
    column->addStretch();
    return group;
}

/// A download in progress would swallow the commands.
void ControlPanel::Stop() {
    if (session_.IsDownloading()) session_.CancelDownload();
    controls_.Stop();
    Reflect();
}

void ControlPanel::Arrange(int columns) {
    for (std::size_t i = 0; i < groups_.size(); ++i) {
        const int place = static_cast<int>(i);
        grid_->addWidget(groups_[i], place / columns, place % columns);
    }
    for (int row = 0; row < static_cast<int>(groups_.size()); ++row)
        grid_->setRowStretch(row, row == Rows(columns) ? 1 : 0);  // what is over lies below
}

int ControlPanel::Rows(int columns) const {
    return (static_cast<int>(groups_.size()) + columns - 1) / columns;
}

QSize ControlPanel::SizeWith(int columns) const {
    QSize cell;
    for (const QWidget* group : groups_)
        cell = cell.expandedTo(group->sizeHint());
    const int rows = Rows(columns);
    return {cell.width() * columns + kSpacing * (columns - 1),
            cell.height() * rows + kSpacing * (rows - 1)};
}

void ControlPanel::Reflect() {
    for (int number = 1; number <= static_cast<int>(kMotors); ++number)
        motors_[static_cast<std::size_t>(number) - 1]->Show(controls_.Motor(number));
    for (int number = 1; number <= static_cast<int>(kServos); ++number)
        servos_[static_cast<std::size_t>(number) - 1]->Show(controls_.Servo(number));
    for (int number = 1; number <= static_cast<int>(kActionPorts); ++number)
        actions_[static_cast<std::size_t>(number) - 1]->setChecked(controls_.Action(number));
    SetCaption(*scan_, controls_.IsScanning() ? tr("Stop Scan") : tr("Scan Inputs"), tr("Alt+N"));
    SetCaption(*log_, session_.IsLogging() ? tr("End Log") : tr("Start Log"), tr("Alt+L"));
    // Commands sent into a download would spoil it. Stopping ends it first; the log takes no part.
    for (QWidget* group : groups_) {
        if (group != stop_->parentWidget()) group->setEnabled(!session_.IsDownloading());
    }
    run_->setEnabled(!session_.IsDownloading());
    scan_->setEnabled(!session_.IsDownloading());
}

}  // namespace zentro
