// Statements about time, chance and joysticks, and the ways to end.
#include <algorithm>

#include "tests/random_program.h"

namespace zentro::test {

Action RandomProgram::TimeOrChance() {
    switch (Pick(5)) {
        case 0: return Calibrate();
        case 1: return StickReading();
        case 2: {
            const std::string target = Variable(Type::Byte);
            Write(target + " = RANDOM()");
            return [=](State& state) { state.At(target) = state.RandomByte(); };
        }
        case 3: {
            const std::string target = Variable(Type::Word);
            Write(target + " = CLOCK()");
            return [=](State& state) { state.At(target) = state.clock % 0x10000; };
        }
        default: return Wait();
    }
}

/// In the program long enough for a second to pass. Events that come each second have to be done
/// with in a second, or the program would never go on.
Action RandomProgram::Wait() {
    const unsigned longest = where_ == Where::Event ? 10 : 250;
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
        const char* call;
        unsigned stick;
        bool isAcross;
        int position;
    };
    constexpr int kMiddle = 128;
    static constexpr std::array kRows{
        Row{"JOYSTICK(1, \"X\")", 0, true, SteadyInputs::kStick1X},
        Row{"JOYSTICK(1, \"Y\")", 0, false, kMiddle},
        Row{"STICK(2, \"X\")", 1, true, kMiddle},
        Row{"STICK(2, \"Y\")", 1, false, SteadyInputs::kStick2Y},
    };
    const Row& row = OneOf(kRows);
    const std::string target = Variable(Type::Byte);
    Write(target + " = " + row.call);
    return [=](State& state) {
        const auto& [x, y] = state.stickRest.at(row.stick);
        const int rest = static_cast<int>(row.isAcross ? x : y);
        const int reading = std::clamp(row.position - rest + kMiddle, 0, 255);
        state.At(target) = static_cast<unsigned>(reading);
    };
}

Action RandomProgram::End() {
    ending_ = static_cast<Ending>(Pick(4));
    switch (ending_) {
        case Ending::EndProgram: return [](State&) {};
        case Ending::Escape: Write("ESCAPE"); return [](State&) {};
        case Ending::EmergencyStop: Write("EMERGENCY STOP"); break;
        case Ending::PowerOff: Write("POWER OFF"); break;
    }
    return [](State& state) { state.PutOutputsToRest(); };
}

}  // namespace zentro::test
