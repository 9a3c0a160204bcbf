#include "ui/board/inputs_panel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/board/feed_button.h"
#include "ui/board/stick_widget.h"

namespace zentro {

namespace {

constexpr int kMostOfByte = 255;
constexpr int kMostOfWord = 65535;

QLabel* SmallLabel(const QString& text, QWidget* buddy, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignCenter);
    label->setBuddy(buddy);
    return label;
}

/// Narrower than buttons are as a rule: several stand side by side.
QPushButton* SmallButton(const QString& name, const QString& spokenName, QWidget* parent) {
    auto* button = new QPushButton(parent);
    button->setObjectName(name);
    button->setAccessibleName(spokenName);
    button->setAutoDefault(false);
    button->setMinimumWidth(button->fontMetrics().horizontalAdvance("0000000"));
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return button;
}

/// A control that shows a value without telling that it has changed.
template <typename Control, typename Value>
void ShowValue(Control* control, Value value) {
    if (control->value() == value) return;
    const QSignalBlocker quiet(control);
    control->setValue(value);
}

void ShowDown(QPushButton* button, bool down) {
    const QSignalBlocker quiet(button);
    if (button->isCheckable()) {
        button->setChecked(down);
    } else {
        button->setDown(down);
    }
}

/// A number that is not finished: what the robot reads may not overwrite it.
bool IsBeingTyped(const QSpinBox& box) {
    const auto* line = box.findChild<QLineEdit*>();
    return box.hasFocus() && line != nullptr && line->isModified();
}

}  // namespace

InputsPanel::InputsPanel(QWidget* parent) : QWidget(parent) {
    setObjectName("Inputs");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    const auto addGroup = [&](InputGroup kind, const QString& title, QLayout* content) {
        auto* group = new QGroupBox(title, this);
        content->setContentsMargins(8, 4, 8, 6);
        group->setLayout(content);
        column->addWidget(group);
        groups_[kind] = group;
    };
    addGroup(InputGroup::Buttons, tr("Buttons"), MakeButtons());
    addGroup(InputGroup::Joysticks, tr("Joysticks"), MakeSticks());
    addGroup(InputGroup::Analog, tr("Analogue inputs"), MakeAnalog());
    addGroup(InputGroup::Digital, tr("Digital inputs"), MakeDigital());
    addGroup(InputGroup::PulseAndTimed, tr("Pulse and timed inputs"), MakePulses());
    addGroup(InputGroup::BatteryAndNumber, tr("Battery and program number"), MakeRest());
    column->addWidget(MakeFolding());
    column->addStretch(1);
    Fold();
}

QWidget* InputsPanel::MakeFolding() {
    auto* row = new QWidget(this);
    noneUsed_ = new QLabel(tr("The program uses no inputs."), row);
    noneUsed_->setObjectName("NoInputsUsed");
    noneUsed_->setWordWrap(true);
    all_ = new QToolButton(row);
    all_->setObjectName("AllInputs");
    all_->setCheckable(true);
    all_->setText(tr("A&ll inputs"));
    all_->setAccessibleName(tr("Show the inputs too that the program does not use"));
    all_->setToolTip(all_->accessibleName());
    connect(all_, &QToolButton::toggled, this, &InputsPanel::Fold);
    letAllGo_ = new QPushButton(tr("&Give All Back to the Robot"), row);
    letAllGo_->setObjectName("LetAllGo");
    letAllGo_->setToolTip(tr("The robot's sensors feed all their inputs again"));
    letAllGo_->setAutoDefault(false);
    connect(letAllGo_, &QPushButton::clicked, this, &InputsPanel::AllLetGo);
    auto* rows = new QVBoxLayout(row);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(letAllGo_);
    rows->addWidget(noneUsed_);
    rows->addWidget(all_);
    return row;
}

void InputsPanel::ShowUsed(const std::optional<InputUse>& used) {
    if (used == used_) return;
    used_ = used;
    NameButtons();
    Fold();
}

void InputsPanel::Fold() {
    const bool isFolding = used_ && used_->size() < groups_.size();
    const bool showsAll = !isFolding || all_->isChecked();
    for (const auto& [kind, group] : groups_)
        group->setVisible(showsAll || used_->contains(kind));
    noneUsed_->setVisible(!showsAll && used_->empty());
    all_->setVisible(isFolding);
    emit Folded();
}

QLayout* InputsPanel::MakeButtons() {
    auto* grid = new QGridLayout;
    for (std::size_t index = 0; index < buttons_.size(); ++index) {
        const int number = static_cast<int>(index) + 1;
        auto* button =
            SmallButton(QString("Button%1").arg(number), tr("Button %1").arg(number), this);
        buttons_[index] = button;
        button->setText(QString("&%1").arg(number));
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance("00000"));
        connect(button, &QPushButton::pressed, this, [=, this] {
            if (!button->isCheckable()) emit ButtonPressed(index);
        });
        connect(button, &QPushButton::released, this, [=, this] {
            if (!button->isCheckable()) emit ButtonLetGo(index);
        });
        connect(button, &QPushButton::toggled, this, [this, index](bool down) {
            emit Edited([=](Inputs& inputs) { inputs.buttons[index] = down; });
        });
        grid->addWidget(button, 0, static_cast<int>(index));
    }
    buttonsStay_ = new QCheckBox(tr("Buttons sta&y down"), this);
    buttonsStay_->setObjectName("ButtonsStay");
    connect(buttonsStay_, &QCheckBox::toggled, this, &InputsPanel::LetButtonsStay);
    AddFeedRow(grid, 1, world::InputKind::Button, buttons_.size(), tr("Button %1"));
    grid->addWidget(buttonsStay_, 2, 0, 1, 6);
    usedButtons_ = new QLabel(this);
    usedButtons_->setObjectName("UsedButtons");
    usedButtons_->setWordWrap(true);
    usedButtons_->hide();
    grid->addWidget(usedButtons_, 3, 0, 1, 6);
    return grid;
}

/// A program often waits for a button, and the robot stands still then.
void InputsPanel::NameButtons() {
    const std::set<int> used = used_ && used_->contains(InputGroup::Buttons)
                                   ? used_->at(InputGroup::Buttons)
                                   : std::set<int>();
    QStringList numbers;
    for (std::size_t index = 0; index < buttons_.size(); ++index) {
        const int number = static_cast<int>(index) + 1;
        QFont own = font();
        own.setBold(used.contains(number));
        buttons_[index]->setFont(own);
        if (used.contains(number)) numbers += QString::number(number);
    }
    usedButtons_->setText(numbers.size() == 1
                              ? tr("The program reads button %1.").arg(numbers.first())
                              : tr("The program reads buttons %1.").arg(numbers.join(", ")));
    usedButtons_->setVisible(!numbers.isEmpty());
}

/// While a program is stepped nobody can hold a button and press Step.
void InputsPanel::LetButtonsStay(bool stay) {
    for (QPushButton* button : buttons_) {
        const QSignalBlocker quiet(button);
        button->setChecked(false);
        button->setCheckable(stay);
    }
    emit Edited([](Inputs& inputs) { inputs.buttons = {}; });
}

QLayout* InputsPanel::MakeDigital() {
    auto* grid = new QGridLayout;
    for (std::size_t index = 0; index < digital_.size(); ++index) {
        const int number = static_cast<int>(index) + 1;
        auto* button =
            SmallButton(QString("Digital%1").arg(number), tr("Digital input %1").arg(number), this);
        digital_[index] = button;
        button->setCheckable(true);
        button->setText(tr("%1 off").arg(number));
        connect(button, &QPushButton::toggled, this, [this, index](bool on) {
            emit Edited([=](Inputs& inputs) { inputs.digital[index] = on; });
        });
        grid->addWidget(button, 0, static_cast<int>(index));
    }
    AddFeedRow(grid, 1, world::InputKind::Digital, digital_.size(), tr("Digital input %1"));
    return grid;
}

QLayout* InputsPanel::MakeAnalog() {
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(1);
    grid->setHorizontalSpacing(2);
    for (std::size_t index = 0; index < analog_.size(); ++index) {
        const int number = static_cast<int>(index) + 1;
        const int column = static_cast<int>(index);
        auto* slider = new QSlider(Qt::Vertical, this);
        analog_[index] = slider;
        slider->setObjectName(QString("Analog%1").arg(number));
        slider->setAccessibleName(tr("Analogue input %1").arg(number));
        slider->setRange(0, kMostOfByte);
        slider->setPageStep(32);
        slider->setMinimumHeight(62);
        connect(slider, &QSlider::valueChanged, this, [this, index](int value) {
            emit Edited(
                [=](Inputs& inputs) { inputs.analog[index] = static_cast<std::uint8_t>(value); });
        });
        analogValues_[index] = MakeAnalogValue(index);
        grid->addWidget(SmallLabel(number == 1 ? tr("&A1") : QString::number(number), slider, this),
                        0, column);
        grid->addWidget(slider, 1, column, Qt::AlignHCenter);
        grid->addWidget(analogValues_[index], 2, column);
    }
    AddFeedRow(grid, 3, world::InputKind::Analog, analog_.size(), tr("Analogue input %1"));
    return grid;
}

/// For an exact value; the slider is for a quick one.
QSpinBox* InputsPanel::MakeAnalogValue(std::size_t index) {
    auto* value = new QSpinBox(this);
    value->setObjectName(QString("AnalogValue%1").arg(index + 1));
    value->setAccessibleName(tr("Exact value of analogue input %1").arg(index + 1));
    value->setToolTip(value->accessibleName());
    value->setRange(0, kMostOfByte);
    value->setButtonSymbols(QAbstractSpinBox::NoButtons);
    value->setAlignment(Qt::AlignCenter);
    value->setFrame(false);
    value->setKeyboardTracking(false);
    value->setMinimumWidth(fontMetrics().horizontalAdvance("2555"));
    value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    connect(value, &QSpinBox::valueChanged, this, [this, index](int number) {
        emit Edited(
            [=](Inputs& inputs) { inputs.analog[index] = static_cast<std::uint8_t>(number); });
    });
    return value;
}

/// Who feeds the inputs of a group.
void InputsPanel::AddFeedRow(QGridLayout* grid, int row, world::InputKind kind, std::size_t count,
                             const QString& name, int firstColumn) {
    for (std::size_t index = 0; index < count; ++index) {
        auto* feed = new FeedButton({kind, index}, name.arg(index + 1), this);
        connect(feed, &FeedButton::HoldWanted, this, &InputsPanel::HoldWanted);
        grid->addWidget(feed, row, firstColumn + static_cast<int>(index));
        feeds_.push_back(feed);
    }
}

QLayout* InputsPanel::MakeSticks() {
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(1);
    for (std::size_t index = 0; index < sticks_.size(); ++index) {
        const int column = static_cast<int>(index);
        sticks_[index] = new StickWidget(column + 1, this);
        stickValues_[index] =
            SmallLabel(column == 0 ? tr("&Joystick 1") : tr("Joystick 2"), sticks_[index], this);
        connect(sticks_[index], &StickWidget::Moved, this, [this, index](StickPosition position) {
            emit Edited([=](Inputs& inputs) { inputs.joysticks[index] = position; });
        });
        grid->addWidget(sticks_[index], 0, column);
        grid->addWidget(stickValues_[index], 1, column);
    }
    return grid;
}

QLayout* InputsPanel::MakePulses() {
    auto* grid = new QGridLayout;
    for (std::size_t index = 0; index < pulses_.size(); ++index) {
        const int number = static_cast<int>(index) + 1;
        const int column = static_cast<int>(index);
        pulses_[index] =
            SmallButton(QString("Pulse%1").arg(number), tr("Pulse on input %1").arg(number), this);
        pulses_[index]->setToolTip(tr("Each press is a pulse; the number counts them"));
        pulses_[index]->setText("0");
        connect(pulses_[index], &QPushButton::clicked, this,
                [this, index] { emit Edited([=](Inputs& inputs) { ++inputs.pulses[index]; }); });
        timed_[index] = new QSpinBox(this);
        timed_[index]->setObjectName(QString("Timed%1").arg(number));
        timed_[index]->setAccessibleName(
            tr("Length of the pulse on timed input %1, in hundredths of a second").arg(number));
        timed_[index]->setToolTip(timed_[index]->accessibleName());
        timed_[index]->setRange(0, kMostOfWord);
        timed_[index]->setButtonSymbols(QAbstractSpinBox::NoButtons);
        timed_[index]->setMinimumWidth(pulses_[index]->minimumWidth());
        timed_[index]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        connect(timed_[index], &QSpinBox::valueChanged, this, [this, index](int value) {
            emit Edited(
                [=](Inputs& inputs) { inputs.timed[index] = static_cast<std::uint16_t>(value); });
        });
        grid->addWidget(pulses_[index], 0, column + 1);
        grid->addWidget(timed_[index], 2, column + 1);
    }
    AddFeedRow(grid, 1, world::InputKind::Pulses, pulses_.size(), tr("Pulse input %1"), 1);
    grid->addWidget(SmallLabel(tr("P&ulses"), pulses_[0], this), 0, 0);
    grid->addWidget(SmallLabel(tr("T&imed"), timed_[0], this), 2, 0);
    return grid;
}

QLayout* InputsPanel::MakeRest() {
    auto* row = new QHBoxLayout;
    const auto addSpin = [&](const QString& name, const QString& label,
                             std::uint8_t Inputs::*field) {
        auto* spin = new QSpinBox(this);
        spin->setObjectName(name);
        spin->setRange(0, kMostOfByte);
        spin->setAccessibleName(QString(label).remove('&'));
        connect(spin, &QSpinBox::valueChanged, this, [this, field](int value) {
            emit Edited([=](Inputs& inputs) { inputs.*field = static_cast<std::uint8_t>(value); });
        });
        row->addWidget(SmallLabel(label, spin, this));
        row->addWidget(spin, 1);
        return spin;
    };
    battery_ = addSpin("Battery", tr("Ba&ttery"), &Inputs::battery);
    program_ = addSpin("ProgramNumber", tr("Pro&gram"), &Inputs::programNumber);
    return row;
}

void InputsPanel::ShowFeeding(const Scene& scene) {
    for (FeedButton* feed : feeds_)
        feed->Show(scene);
    const bool someHeld = std::ranges::any_of(
        scene.map->world.sensors,
        [&](const world::Sensor& sensor) { return IsTakenOver(scene.state, sensor.input); });
    letAllGo_->setVisible(someHeld);
}

void InputsPanel::Show(const Scene& scene) {
    ShowFeeding(scene);
    const Inputs& inputs = scene.board.inputs;
    for (std::size_t index = 0; index < buttons_.size(); ++index)
        ShowDown(buttons_[index], inputs.buttons[index]);
    for (std::size_t index = 0; index < analog_.size(); ++index) {
        ShowValue(analog_[index], int{inputs.analog[index]});
        if (!IsBeingTyped(*analogValues_[index]))
            ShowValue(analogValues_[index], int{inputs.analog[index]});
    }
    for (std::size_t index = 0; index < digital_.size(); ++index) {
        ShowDown(digital_[index], inputs.digital[index]);
        digital_[index]->setText(
            (inputs.digital[index] ? tr("%1 on") : tr("%1 off")).arg(index + 1));
        pulses_[index]->setText(QString::number(inputs.pulses[index]));
        ShowValue(timed_[index], int{inputs.timed[index]});
    }
    for (std::size_t index = 0; index < sticks_.size(); ++index)
        sticks_[index]->Show(inputs.joysticks[index]);
    ShowValue(battery_, int{inputs.battery});
    ShowValue(program_, int{inputs.programNumber});
}

}  // namespace zentro
