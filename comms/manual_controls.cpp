#include "comms/manual_controls.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace zentro {

namespace {

/// How the commands of motors and of servos differ.
struct DriveKind {
    char letter;
    int digits;  ///< of the value
    int largestValue;
};

constexpr DriveKind kMotorKind{'M', 3, kMaxSpeed};
constexpr DriveKind kServoKind{'S', 2, kMaxPosition};

/// "M1F045" and CR.
std::string DriveCommand(const DriveKind& kind, int number, char direction, int value) {
    std::array<char, 16> text{};
    const int length = std::snprintf(text.data(), text.size(), "%c%d%c%0*d\r", kind.letter, number,
                                     direction, kind.digits, value);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string ActionCommand(int number, bool on) {
    return "A" + std::to_string(number) + (on ? "1\r" : "0\r");
}

/// Sends what the option of the control means now.
void SendOption(TerminalSession& session, const DriveKind& kind, int number,
                DriveControl& control) {
    const bool atRest = control.option == DriveOption::Rest;
    const char direction = control.option == DriveOption::Back ? 'B' : 'F';
    session.ChkForDebugB4SendCmd(DriveCommand(kind, number, direction, atRest ? 0 : control.value));
    control.active = !atRest;
}

void Choose(TerminalSession& session, const DriveKind& kind, int number, DriveControl& control,
            DriveOption option) {
    control.option = option;
    SendOption(session, kind, number, control);
}

void ChangeValue(TerminalSession& session, const DriveKind& kind, int number, DriveControl& control,
                 int value) {
    value = std::clamp(value, 0, kind.largestValue);
    if (value == control.value) return;
    control.value = value;
    if (control.option != DriveOption::Rest) SendOption(session, kind, number, control);
}

void PutToRest(TerminalSession& session, const DriveKind& kind, int number, DriveControl& control) {
    if (control.option != DriveOption::Rest)
        Choose(session, kind, number, control, DriveOption::Rest);
}

template <typename Controls>
auto& At(Controls& controls, int number) {
    return controls.at(static_cast<std::size_t>(number) - 1);
}

}  // namespace

void ManualControls::ChooseMotor(int number, DriveOption option) {
    Choose(session_, kMotorKind, number, At(motors_, number), option);
}

void ManualControls::ChangeMotorSpeed(int number, int speed) {
    ChangeValue(session_, kMotorKind, number, At(motors_, number), speed);
}

void ManualControls::ChooseServo(int number, DriveOption option) {
    Choose(session_, kServoKind, number, At(servos_, number), option);
}

void ManualControls::ChangeServoPosition(int number, int position) {
    ChangeValue(session_, kServoKind, number, At(servos_, number), position);
}

void ManualControls::SwitchAction(int number, bool on) {
    At(actions_, number) = on;
    session_.ChkForDebugB4SendCmd(ActionCommand(number, on));
}

void ManualControls::Run() {
    session_.ChkForDebugB4SendCmd("G\r");
}

void ManualControls::ToggleScan() {
    session_.SetScreenOff(false);
    session_.ChkForDebugB4SendCmd(scanning_ ? "\r" : "R\r");
    scanning_ = !scanning_;
}

void ManualControls::Stop() {
    for (const char* command : {"X\r", "Z\r", "\r"})
        session_.SendCmd(command);
    for (int number = 1; number <= static_cast<int>(kMotors); ++number)
        PutToRest(session_, kMotorKind, number, At(motors_, number));
    for (int number = 1; number <= static_cast<int>(kServos); ++number)
        PutToRest(session_, kServoKind, number, At(servos_, number));
    for (int number = 1; number <= static_cast<int>(kActionPorts); ++number) {
        if (Action(number)) SwitchAction(number, false);
    }
    for (int number = 1; number <= static_cast<int>(kMotors); ++number)
        ChangeMotorSpeed(number, 0);
    for (int number = 1; number <= static_cast<int>(kServos); ++number)
        ChangeServoPosition(number, 0);
}

}  // namespace zentro
