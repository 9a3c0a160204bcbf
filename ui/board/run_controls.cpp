#include "ui/board/run_controls.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QTimer>
#include <algorithm>
#include <array>
#include <utility>

#include "board/text.h"
#include "desktop/board_text.h"
#include "ui/support/colours.h"
#include "ui/support/icons.h"
#include "ui/support/source_font.h"
#include "ui/support/spoken_label.h"

namespace zentro {

namespace {

/// The positions of the speed slider.
constexpr std::array kSpeeds{
    BoardSpeed{BoardSpeed::Kind::SlowMotion, 1},     BoardSpeed{BoardSpeed::Kind::SlowMotion, 3},
    BoardSpeed{BoardSpeed::Kind::SlowMotion, 10},    BoardSpeed{BoardSpeed::Kind::SlowMotion, 30},
    BoardSpeed{BoardSpeed::Kind::SlowMotion, 100},   BoardSpeed{BoardSpeed::Kind::SlowMotion, 1000},
    BoardSpeed{BoardSpeed::Kind::SlowMotion, 10000}, BoardSpeed{BoardSpeed::Kind::RealTime, 1},
    BoardSpeed{BoardSpeed::Kind::FullSpeed, 1},
};

constexpr int kBesidePicture = 10;  // pixels of a button without words
constexpr int kGap = 6;             // pixels between what stands in one row
constexpr char kWords[] = "words";  // the property of a button that keeps its text

constexpr qint64 kCalmInterval = 250;  // milliseconds between instructions that run past
constexpr int kRepeatDelay = 400;      // milliseconds until a held step button goes on
constexpr int kRepeatInterval = 60;

int PositionOf(const BoardSpeed& speed) {
    const auto* found = std::ranges::find_if(kSpeeds, [&](const BoardSpeed& candidate) {
        return candidate.kind == speed.kind &&
               (speed.kind != BoardSpeed::Kind::SlowMotion ||
                candidate.instructionsPerSecond >= speed.instructionsPerSecond);
    });
    return static_cast<int>(std::min<std::ptrdiff_t>(found - kSpeeds.begin(), kSpeeds.size() - 1));
}

QString WordsOf(const QPushButton& button) {
    return button.property(kWords).toString();
}

/// The width of a button with its picture and its words, in pixels.
int RoomForButton(const QPushButton& button) {
    constexpr int kFrame = 18;
    return button.iconSize().width() + kFrame +
           button.fontMetrics().size(Qt::TextShowMnemonic, WordsOf(button)).width();
}

}  // namespace

RunControls::RunControls(VirtualBoardHost& host, QWidget* parent)
    : QWidget(parent),
      host_(host),
      run_(AddButton("BtnBoardRun", tr("&Run"), "run", tr("Start the program, or go on"))),
      stop_(AddButton("BtnBoardStop", tr("St&op"), "stop", tr("End the program"))),
      pause_(AddButton("BtnBoardPause", tr("&Pause"), "pause",
                       tr("Hold the program and the clock (Ctrl+F8)"))),
      line_(AddButton("BtnBoardLine", tr("&Line"), "step-line",
                      tr("Carry out one line of the program (F10)"))),
      lineBack_(AddButton("BtnBoardLineBack", tr("Line Bac&k"), "step-line-back",
                          tr("Take the last line back (Shift+F10)"))),
      step_(AddButton("BtnBoardStep", tr("&Step"), "step", tr("Carry out one instruction"))),
      stepBack_(AddButton("BtnBoardStepBack", tr("Step &Back"), "step-back",
                          tr("Take the last instruction back"))),
      reset_(AddButton("BtnBoardReset", tr("R&eset"), "reset",
                       tr("End the program, switch everything off, put the robot at its start"))),
      speed_(new QSlider(Qt::Horizontal, this)),
      speedCaption_(new QLabel(tr("Spee&d"), this)),
      speedText_(new QLabel(this)),
      state_(new QLabel(this)),
      instruction_(new QLabel(this)),
      steps_(new QLabel(this)) {
    pause_->setCheckable(true);
    for (QPushButton* button : {line_, lineBack_, step_, stepBack_}) {
        button->setAutoRepeat(true);
        button->setAutoRepeatDelay(kRepeatDelay);
        button->setAutoRepeatInterval(kRepeatInterval);
    }
    connect(run_, &QPushButton::clicked, &host, [this] {
        if (!mayRun_ || mayRun_()) host_.Run();
    });
    connect(stop_, &QPushButton::clicked, &host, &VirtualBoardHost::Stop);
    connect(line_, &QPushButton::clicked, &host, [this] { host_.StepLine(LineStep::Over); });
    connect(lineBack_, &QPushButton::clicked, &host, [this] { host_.StepLineBack(); });
    connect(step_, &QPushButton::clicked, &host, &VirtualBoardHost::Step);
    connect(stepBack_, &QPushButton::clicked, &host, [this] { host_.StepBack(); });
    connect(reset_, &QPushButton::clicked, &host, &VirtualBoardHost::Reset);
    connect(pause_, &QPushButton::clicked, &host, [this](bool pause) {
        if (pause) {
            host_.Pause();
        } else {
            host_.Resume();
        }
    });
    connect(speed_, &QSlider::valueChanged, this, &RunControls::ChooseSpeed);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    buttons_ = MakeButtons();
    speedRow_ = MakeSpeed();
    for (QBoxLayout* row : {buttons_, speedRow_})
        row->setSpacing(kGap);
    top_ = new QVBoxLayout;
    top_->addLayout(buttons_);
    top_->addLayout(speedRow_);
    rows->addLayout(top_);
    rows->addLayout(MakeStatus());
}

QPushButton* RunControls::AddButton(const QString& name, const QString& text, const QString& icon,
                                    const QString& help) {
    auto* button = new QPushButton(ThemedIcon(icon), text, this);
    button->setObjectName(name);
    button->setToolTip(help);
    button->setAccessibleName(QString(text).remove('&'));
    button->setProperty(kWords, text);
    button->setAutoDefault(false);
    return button;
}

QBoxLayout* RunControls::MakeButtons() {
    auto* row = new QHBoxLayout;
    for (QPushButton* button : {run_, stop_, pause_, line_, lineBack_, reset_})
        row->addWidget(button);
    return row;
}

/// Steps of single instructions are for those who look closely, as is another speed.
QBoxLayout* RunControls::MakeSpeed() {
    auto* row = new QHBoxLayout;
    speed_->setObjectName("BoardSpeed");
    speed_->setAccessibleName(tr("Speed of the board"));
    speed_->setRange(0, static_cast<int>(kSpeeds.size()) - 1);
    speed_->setPageStep(1);
    speed_->setTickPosition(QSlider::TicksBelow);
    speed_->setMinimumWidth(110);
    speedCaption_->setBuddy(speed_);
    speedText_->setObjectName("BoardSpeedText");
    speedText_->setMinimumWidth(fontMetrics().horizontalAdvance("10000 instructions a second"));
    row->addWidget(speedCaption_);
    row->addWidget(speed_, 1);
    row->addWidget(speedText_);
    row->addWidget(step_);
    row->addWidget(stepBack_);
    return row;
}

QLayout* RunControls::MakeStatus() {
    auto* row = new QHBoxLayout;
    state_->setObjectName("BoardState");
    state_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    state_->setWordWrap(true);
    instruction_->setObjectName("BoardInstruction");
    instruction_->installEventFilter(this);
    instruction_->setFont(FixedFont());
    instruction_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    steps_->setObjectName("BoardSteps");
    steps_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (QLabel* label : {state_, instruction_})
        label->setMinimumHeight(2 * fontMetrics().height() + 2);
    instruction_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    const QString many = tr("%1 instructions").arg(QLocale().toString(qlonglong{999'999'999'999}));
    // Of a fixed size: it changes so often that the window must not be laid out for it.
    steps_->setFixedSize(fontMetrics().horizontalAdvance(many), fontMetrics().height() + 2);
    row->addWidget(state_, 4);
    row->addWidget(instruction_, 5);
    row->addWidget(steps_);
    return row;
}

/// What the buttons need beside each other with their words, in pixels.
int RunControls::RoomForWords() const {
    int room = 0;
    for (const QPushButton* button : {run_, stop_, pause_, line_, lineBack_, reset_})
        room += RoomForButton(*button) + kGap;
    const int ofSpeed = speedCaption_->sizeHint().width() + RoomForButton(*step_) +
                        RoomForButton(*stepBack_) + 3 * kGap + RoomForSpeed();
    return std::max(room, ofSpeed);
}

/// The slider and what stands beside it at all times.
int RunControls::RoomForSpeed() const {
    return speed_->minimumWidth() + speedText_->minimumWidth() + kGap +
           (besideSpeed_ == nullptr ? 0 : besideSpeed_->sizeHint().width() + kGap);
}

int RunControls::RoomForOneRow() const {
    int room = RoomForSpeed();
    for (const auto* button : findChildren<QPushButton*>())
        room += button->iconSize().width() + kBesidePicture + kGap;
    return room;
}

void RunControls::SetIsLow(bool low) {
    if (std::exchange(isLow_, low) != low) Fit();
}

void RunControls::AddToSpeed(QWidget* widget) {
    besideSpeed_ = widget;
    speedRow_->addWidget(widget);
}

/// Where there is no room for words, all buttons stand in one row as pictures; what they do is told
/// by their tool tips then, and by their names to a screen reader.
void RunControls::Fit() {
    const bool isCompact = isLow_ || width() < RoomForWords();
    top_->setDirection(isCompact && width() >= RoomForOneRow() ? QBoxLayout::LeftToRight
                                                               : QBoxLayout::TopToBottom);
    if (isCompact == isCompact_) return;
    isCompact_ = isCompact;
    for (auto* button : findChildren<QPushButton*>())
        button->setText(isCompact ? QString() : WordsOf(*button));
    if (isCompact) {
        buttons_->insertWidget(buttons_->indexOf(reset_), step_);
        buttons_->insertWidget(buttons_->indexOf(reset_), stepBack_);
    } else {
        const int behindText = speedRow_->indexOf(speedText_) + 1;
        speedRow_->insertWidget(behindText, stepBack_);
        speedRow_->insertWidget(behindText, step_);
    }
    speedCaption_->setVisible(!isCompact);
    for (QLabel* label : {state_, instruction_})
        label->setMinimumHeight((isCompact ? 1 : 2) * fontMetrics().height() + 2);
    layout()->setSpacing(isCompact ? 2 : -1);
    // The layout around is at work just now, and would not notice.
    QTimer::singleShot(0, this, [this] { updateGeometry(); });
}

void RunControls::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Fit();
}

bool RunControls::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) ElideInstruction();
    return QWidget::eventFilter(watched, event);
}

void RunControls::ChooseSpeed(int position) {
    host_.SetSpeed(kSpeeds[static_cast<std::size_t>(position)]);
}

void RunControls::Refresh() {
    run_->setEnabled(host_.HasProgram());
    line_->setEnabled(host_.HasProgram() && host_.KnowsLines());
    lineBack_->setEnabled(host_.CanStepBack() && host_.KnowsLines());
    step_->setEnabled(host_.HasProgram());
    stepBack_->setEnabled(host_.CanStepBack());
    pause_->setEnabled(host_.State().processor.running || host_.IsPaused());
    ShowPause();
    const QSignalBlocker quiet(speed_);
    speed_->setValue(PositionOf(host_.Speed()));
    speedText_->setText(QString::fromStdString(DescribeSpeed(host_.Speed())));
    speed_->setAccessibleDescription(speedText_->text());
    ShowState();
    ShowInstruction();
}

/// The button says what it does when it is pressed.
void RunControls::ShowPause() {
    const bool isPaused = host_.IsPaused();
    pause_->setChecked(isPaused);
    const QString words = isPaused ? tr("&Go On") : tr("&Pause");
    if (words == WordsOf(*pause_)) return;
    pause_->setProperty(kWords, words);
    pause_->setAccessibleName(QString(words).remove('&'));
    pause_->setIcon(ThemedIcon(isPaused ? "go-on" : "pause"));
    pause_->setToolTip(isPaused ? tr("Let the program go on (Ctrl+F8)")
                                : tr("Hold the program and the clock (Ctrl+F8)"));
    if (!isCompact_) pause_->setText(words);
}

void RunControls::ShowState() {
    const Processor& processor = host_.State().processor;
    const bool faulty = !processor.running && processor.end == EndReason::Fault;
    QString text =
        QString::fromStdString(DescribeState(host_.State(), host_.IsPaused(), host_.Words()));
    if (!text.isEmpty()) text[0] = text[0].toUpper();
    if (faulty) text.prepend(QString::fromUtf8("⚠ "));
    if (state_->text() == text) return;
    QPalette colours = palette();
    if (faulty)
        colours.setColor(QPalette::WindowText,
                         ReadableOn(QColor(0xC6, 0x28, 0x28), colours.color(QPalette::Window)));
    state_->setPalette(colours);
    state_->setText(text);
    SayWithCaption(*state_, tr("State of the board"));
}

/// Whether the instruction and their number change too fast to be read.
bool RunControls::InstructionFlickers() const {
    return host_.State().processor.running && !host_.IsPaused() &&
           host_.Speed().kind != BoardSpeed::Kind::SlowMotion && sinceInstruction_.isValid() &&
           sinceInstruction_.elapsed() < kCalmInterval;
}

void RunControls::ShowInstruction() {
    const Processor& processor = host_.State().processor;
    if (InstructionFlickers()) return;
    sinceInstruction_.start();
    steps_->setText(
        processor.steps == 1
            ? tr("1 instruction")
            : tr("%1 instructions").arg(QLocale().toString(qulonglong{processor.steps})));
    SayWithCaption(*steps_, tr("Instructions carried out"));
    QString text;
    if (!host_.LastStep().empty())
        text = tr("done  %1\n").arg(QString::fromStdString(host_.LastStep()));
    if (processor.running)
        text += tr("next  %1")
                    .arg(QString::fromStdString(
                        FormatInstruction(host_.State().memory, NextOf(host_.State()).address)));
    instructionText_ = text;
    instruction_->setVisible(!text.isEmpty());  // a fault takes the whole line
    ElideInstruction();
}

/// What is cut off is told by the tool tip.
void RunControls::ElideInstruction() {
    SayWithCaption(*instruction_, tr("Present instruction"), instructionText_);
    QStringList lines = instructionText_.split('\n');
    for (QString& line : lines)
        line = instruction_->fontMetrics().elidedText(line, Qt::ElideRight, instruction_->width());
    instruction_->setText(lines.join('\n'));
    instruction_->setToolTip(instruction_->text() == instructionText_ ? QString()
                                                                      : instructionText_);
}

}  // namespace zentro
