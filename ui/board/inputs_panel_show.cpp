// The inputs of the board as they are, shown on the controls that change them.
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include "ui/board/inputs_panel.h"
#include "ui/board/stick_widget.h"

namespace zentro {

namespace {

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

}  // namespace

void InputsPanel::Show(const BoardWorld& world) {
    const QSignalBlocker quiet(robotSees_);
    robotSees_->setChecked(world.robotSees);
    analog_[0]->setEnabled(!world.robotSees);
    analog_[1]->setEnabled(!world.robotSees);
    const Inputs& inputs = world.board.inputs;
    for (std::size_t index = 0; index < buttons_.size(); ++index)
        ShowDown(buttons_[index], inputs.buttons[index]);
    for (std::size_t index = 0; index < analog_.size(); ++index) {
        ShowValue(analog_[index], int{inputs.analog[index]});
        analogValues_[index]->setNum(inputs.analog[index]);
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
