// Statements that drive outputs, read inputs and make events happen.

#include "tests/random_program.h"

namespace zentro::test {

namespace {

const std::vector<std::pair<std::string, char>> kDirections{
    {"FORWARD", 'F'}, {"BACKWARD", 'B'}, {"\"F\"", 'F'}, {"\"B\"", 'B'}};

}  // namespace

/// An input, which shows the same all the time.
Action RandomProgram::Reading() {
    struct Row {
        const char* call;
        unsigned value;
    };
    if (Chance(8)) return PulsesOfLastSecond();
    static constexpr std::array kRows{
        Row{"BATTERY()", SteadyInputs::kBattery},
        Row{"PROGRAMNUMBER()", SteadyInputs::kProgramNumber},
        Row{"DIGITAL(1)", 0},
        Row{"DIGITAL(4)", 255},
        Row{"BUTTON(1)", 0},
        Row{"BUTTON(6)", 255},
        Row{"ANALOG(1)", 0},
        Row{"ANALOG(6)", SteadyInputs::kAnalog6},
        Row{"TIMED(4)", SteadyInputs::kTimed4 % 256},
        Row{"PULSELENGTH(4)", SteadyInputs::kTimed4 % 256},
        Row{"PULSECOUNT(3)", 0},
    };
    const Row& row = OneOf(kRows);
    const std::string target = Variable(Type::Byte);
    Write(target + " = " + row.call);
    return [target, value = row.value](State& state) { state.At(target) = value; };
}

/// The pulses that came before the start count as those of the first second.
Action RandomProgram::PulsesOfLastSecond() {
    const std::string target = Variable(Type::Byte);
    Write(target + " = TIMEDPULSECOUNT(3)");
    return [=](State& state) {
        const bool isSecondSecond = state.clock / 100 == 1;
        state.At(target) = isSecondSecond ? SteadyInputs::kPulses3 : 0U;
    };
}

Action RandomProgram::Output() {
    switch (Pick(5)) {
        case 0: return Motor();
        case 1: return Servo();
        case 2: return Switches();
        case 3: return Sound();
        default: return Show();
    }
}

Action RandomProgram::Motor() {
    if (Chance(6)) {
        Write("STOP MOTORS");
        return [](State& state) {
            for (const char* motor : {"motor 1", "motor 2", "motor 3", "motor 4"})
                state.SetOutput(motor, "F 0");
        };
    }
    const std::string number = std::to_string(1 + Pick(4));
    const auto& [word, direction] = OneOf(kDirections);
    const Operand speed = AnOperand(Type::Byte);
    Write("SET MOTOR " + number + ", " + word + ", " + speed.text);
    return [=, sign = std::string(1, direction)](State& state) {
        state.SetOutput("motor " + number, sign + " " + std::to_string(speed.value(state)));
    };
}

Action RandomProgram::Servo() {
    constexpr unsigned kFullSwing = 90;
    const bool isPercent = Chance(2);
    const std::string number = std::to_string(1 + Pick(3));
    const auto& [word, direction] = OneOf(kDirections);
    const Operand place = AnOperand(Type::Byte);
    Write(std::string("SET SERVO ") + (isPercent ? "PERCENT " : "") + number + ", " + word + ", " +
          place.text);
    return [=, sign = std::string(1, direction)](State& state) {
        const unsigned given = place.value(state);
        const unsigned degrees = isPercent ? given * kFullSwing / 100 : given;
        state.SetOutput("servo " + number, sign + " " + std::to_string(degrees));
    };
}

Action RandomProgram::Switches() {
    if (Chance(2)) {
        const std::string number = std::to_string(1 + Pick(3));
        const Operand given = Literal(Type::Byte);
        Write("SET PORT " + number + ", " + given.text);
        return [=](State& state) {
            state.SetOutput("port " + number, given.value(state) != 0 ? "1" : "0");
        };
    }
    const Operand left = AnOperand(Type::Byte);
    const Operand right = AnOperand(Type::Byte);
    Write("SET LEDS " + left.text + ", " + right.text);
    return [=](State& state) {
        state.SetOutput("led 1", left.value(state) != 0 ? "1" : "0");
        state.SetOutput("led 2", right.value(state) != 0 ? "1" : "0");
    };
}

Action RandomProgram::Show() {
    const bool isHex = Chance(3);
    const Operand shown = AnOperand(Type::Byte);
    Write((isHex ? "DISPLAY HEX " : "DISPLAY ") + shown.text);
    return [=](State& state) {
        state.SetOutput("display",
                        (isHex ? "hex " : "number ") + std::to_string(shown.value(state)));
    };
}

Action RandomProgram::Sound() {
    if (Chance(3)) {
        Write("STOP SOUND");
        return [](State& state) { state.PlayNote(0, 0); };
    }
    if (Chance(3)) {
        const Melody& melody = OneOf(Melodies());
        Write(std::string("PLAY TUNE ") + melody.name);
        return [&melody](State& state) { state.PlayMelody(melody); };
    }
    const Operand note = Literal(Type::Byte);
    const Operand length = Literal(Type::Byte);
    Write("PLAY SOUND " + note.text + ", " + length.text);
    return [=](State& state) { state.PlayNote(note.value(state), length.value(state)); };
}

/// Handlers and what they call may raise only so many, or they would never come to an end.
Action RandomProgram::Raise(unsigned number) {
    const std::string raise = "RAISE EVENT " + std::to_string(number);
    if (where_ == Where::Program || where_ == Where::Routine) {
        Write(raise);
        return [=](State& state) { state.RaiseEvent(number); };
    }
    for (const std::string& line :
         {std::string("IF MayRaise > 0 THEN"), std::string("DECREMENT MayRaise"), raise,
          std::string("END IF")})
        Write(line);
    return [=](State& state) {
        unsigned& left = state.globals.at("MayRaise");
        if (left == 0) return;
        --left;
        state.RaiseEvent(number);
    };
}

Action RandomProgram::Watch(unsigned number) {
    const auto& [name, body] = OneOf(events_);
    Write("SET EVENT " + std::to_string(number) + ", " + name);
    return [number, handler = &body](State& state) { state.handlers[number] = handler; };
}

Action RandomProgram::Event() {
    static constexpr std::array<unsigned, 23> kNumbers{
        3, 4, 5, 6, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27};
    static constexpr std::array<unsigned, 3> kUsual{3, 25, 26};
    const unsigned number = Chance(3) ? OneOf(kNumbers) : OneOf(kUsual);
    switch (Pick(10)) {
        case 0:
            Write("DISABLE EVENTS");
            return [](State& state) { state.SetMode(EventMode::Disabled); };
        case 1:
            Write("DEFER EVENTS");
            return [](State& state) { state.SetMode(EventMode::Deferred); };
        case 2:
            Write("ENABLE EVENTS");
            return [](State& state) { state.SetMode(EventMode::Enabled); };
        case 3:
            Write("CLEAR EVENT " + std::to_string(number));
            return [=](State& state) { state.handlers.erase(number); };
        case 4:
        case 5: return Watch(number);
        case 6: return Sequence({Watch(number), Raise(number)});
        default: return Raise(number);
    }
}

}  // namespace zentro::test
