// Statements about time, chance and joysticks, and the ways to end.
#include <algorithm>

#include "tests/random_program.h"

namespace zentro::test {

Action RandomProgram::TimeOrChance() {
    switch (Pick(5)) {
        case 0: return Calibrate();
        case 1: return StickReading();
        case 2: return RandomByte();
        case 3: {
            const std::string target = Variable(Type::Word);
            Write(target + " = CLOCK()");
            return [=](State& state) { state.At(target) = state.clock % 0x10000; };
        }
        default: {
            // Seldom, or few programs would come far.
            const std::string word = Variable(Type::Word);
            Write("IF " + word + " = 257 THEN");
            const Action end = End();
            Write("END IF");
            return [=](State& state) {
                if (state.At(word) == 257) end(state);
            };
        }
    }
}

/// A byte that nobody can foretell, so nothing else is kept of it than that it is one.
Action RandomProgram::RandomByte() {
    const std::string target = Variable(Type::Byte);
    const std::string word = Variable(Type::Word);
    Write(target + " = RANDOM()");
    Write(word + " = TOWORD(" + target + ")");
    Write(word + " = " + word + " / 256");
    Write(target + " = " + target + " AND 0");
    return [=](State& state) { state.At(word) = state.At(target) = 0; };
}

/// In a routine long enough for a second to pass, and in the program for a minute. Events that come
/// each second have to be done with in a second, or the program would never go on.
Action RandomProgram::Wait() {
    const std::map<Where, unsigned> limits{{Where::Program, Chance(8) ? 8000 : 250},
                                           {Where::Routine, 250},
                                           {Where::Service, 1},
                                           {Where::Event, 3}};
    const unsigned longest = limits.at(where_);
    if (Chance(2)) {
        const unsigned ticks = Pick(longest);
        Write("WAIT " + std::to_string(ticks));
        return [=](State& state) { state.Wait(ticks); };
    }
    const std::string name = Variable(Type::Word);
    Write(name + " = " + name + " MOD " + std::to_string(longest));
    Write("WAIT " + name);
    return [=](State& state) {
        state.At(name) %= longest;
        state.Wait(state.At(name));
    };
}

Action RandomProgram::Calibrate() {
    const unsigned stick = Pick(2);
    const Operand x = Literal(Type::Byte);
    const Operand y = Literal(Type::Byte);
    Write("CALIBRATE JOYSTICK " + std::to_string(stick + 1) + ", " + x.text + ", " + y.text);
    return [=](State& state) { state.stickRest.at(stick) = {x.value(state), y.value(state)}; };
}

/// The position of the stick, moved by as much as its rest is away from the middle.
Action RandomProgram::StickReading() {
    struct Row {
        const char* arguments;
        unsigned stick;
        bool isAcross;
        int position;
    };
    constexpr int kMiddle = 128;
    static constexpr std::array kRows{
        Row{"(1, \"X\")", 0, true, SteadyInputs::kStick1X},
        Row{"(1, \"Y\")", 0, false, kMiddle},
        Row{"(2, \"X\")", 1, true, kMiddle},
        Row{"(2, \"Y\")", 1, false, SteadyInputs::kStick2Y},
    };
    const Row& row = OneOf(kRows);
    const std::string target = Variable(Type::Byte);
    Write(target + " = " + (Chance(2) ? "JOYSTICK" : "STICK") + row.arguments);
    return [=](State& state) {
        const auto& [x, y] = state.stickRest.at(row.stick);
        const int rest = static_cast<int>(row.isAcross ? x : y);
        const int reading = std::clamp(row.position - rest + kMiddle, 0, 255);
        state.At(target) = static_cast<unsigned>(reading);
    };
}

Action RandomProgram::End() {
    struct Row {
        const char* statement;
        Ending ending;
        bool putsToRest;
    };
    static constexpr std::array kRows{
        Row{"ESCAPE", Ending::Escape, false},
        Row{"EMERGENCY STOP", Ending::EmergencyStop, true},
        Row{"POWER OFF", Ending::PowerOff, true},
    };
    const Row& row = OneOf(kRows);
    Write(row.statement);
    return [row](State& state) {
        if (row.putsToRest) state.PutOutputsToRest();
        throw ProgramEnd{row.ending};
    };
}

}  // namespace zentro::test
