#include "comms/manual_controls.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

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

/// Sends what the option means with the control's value. The control has it when the board was
/// told.
void Choose(TerminalSession& session, const DriveKind& kind, int number, DriveControl& control,
            DriveOption option) {
    const bool atRest = option == DriveOption::Rest;
    const char direction = option == DriveOption::Back ? 'B' : 'F';
    const int value = atRest ? 0 : control.value;
    if (!session.ChkForDebugB4SendCmd(DriveCommand(kind, number, direction, value))) return;
    control.option = option;
    control.active = !atRest;
}

void ChangeValue(TerminalSession& session, const DriveKind& kind, int number, DriveControl& control,
                 int value) {
    value = std::clamp(value, 0, kind.largestValue);
    if (value == control.value) return;
    control.value = value;
    if (control.option != DriveOption::Rest) Choose(session, kind, number, control, control.option);
}

bool PutToRest(TerminalSession& session, const DriveKind& kind, int number, DriveControl& control) {
    if (control.option != DriveOption::Rest)
        Choose(session, kind, number, control, DriveOption::Rest);
    if (control.option != DriveOption::Rest) return false;
    control.value = 0;
    return true;
}

template <typename Controls>
auto& At(Controls& controls, int number) {
    return controls.at(static_cast<std::size_t>(number) - 1);
}

}  // namespace

ManualControls::ManualControls(TerminalSession& session) : session_(session) {
    connect(&session, &TerminalSession::LineSent, this, &ManualControls::HearLine);
    connect(&session, &TerminalSession::ConnectionLost, this, &ManualControls::EndScan);
    connect(&session, &TerminalSession::ScreenChanged, this,
            &ManualControls::RestWhenPromptHasGone);
}

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
    if (session_.ChkForDebugB4SendCmd(ActionCommand(number, on))) At(actions_, number) = on;
}

void ManualControls::Run() {
    session_.ChkForDebugB4SendCmd("G\r");
}

void ManualControls::ToggleScan() {
    session_.SetScreenOff(false);
    const bool starts = !scanning_;
    if (session_.ChkForDebugB4SendCmd(starts ? "R\r" : "\r")) scanning_ = starts;
}

void ManualControls::Stop() {
    stopping_ = true;
    for (const char* command : {"X\r", "Z\r", "\r"})
        session_.SendCmd(command);
    PutAllToRest();
    stopping_ = false;
    RestWhenPromptHasGone();
}

void ManualControls::PutAllToRest() {
    bool atRest = true;
    for (int number = 1; number <= static_cast<int>(kMotors); ++number)
        atRest = PutToRest(session_, kMotorKind, number, At(motors_, number)) && atRest;
    for (int number = 1; number <= static_cast<int>(kServos); ++number)
        atRest = PutToRest(session_, kServoKind, number, At(servos_, number)) && atRest;
    for (int number = 1; number <= static_cast<int>(kActionPorts); ++number) {
        if (Action(number)) SwitchAction(number, false);
        atRest = !Action(number) && atRest;
    }
    restWanted_ = !atRest;
}

/// A stop takes the board out of its debug mode, but the prompt is on the screen until the board
/// answers.
void ManualControls::RestWhenPromptHasGone() {
    if (!restWanted_ || stopping_ || session_.IsDebugging() || !session_.IsConnected()) return;
    stopping_ = true;
    PutAllToRest();
    stopping_ = false;
    restWanted_ = false;
    emit Changed();
}

/// The next line ends the board's report, and "Z" puts its outputs to rest, whoever sent them.
void ManualControls::HearLine(const std::string& line) {
    if (!stopping_) {
        restWanted_ = false;
        if (line == "Z") {
            for (DriveControl& motor : motors_)
                motor = {DriveOption::Rest, motor.value, false};
            for (DriveControl& servo : servos_)
                servo = {DriveOption::Rest, servo.value, false};
            actions_ = {};
            emit Changed();
        }
    }
    EndScan();
}

void ManualControls::EndScan() {
    if (std::exchange(scanning_, false)) emit Changed();
}

}  // namespace zentro
