// Statements that reach into tables through pointers. A pointer always stands in a table with at
// least two bytes from it on.
#include "tests/random_program.h"

namespace zentro::test {

Action RandomProgram::Access() {
    const std::string pointer = Variable(Type::Pointer);
    const Type type = DataType();
    if (Chance(2)) {
        const std::string target = Variable(type);
        Write(target + " = READ(" + pointer + ")");
        return [=](State& state) {
            const unsigned at = state.At(pointer);
            const unsigned first = state.Cell(at);
            state.At(target) = IsByteSized(type) ? first : first * 256 + state.Cell(at + 1);
        };
    }
    // The size of a number says whether it is written as a byte or a word.
    const Operand source =
        type == Type::Byte && Chance(3) ? Literal(type) : ReadVariable(Variable(type));
    Write("WRITE " + pointer + ", " + source.text);
    return [=](State& state) {
        const unsigned at = state.At(pointer);
        const unsigned value = source.value(state);
        if (!IsByteSized(type)) state.Cell(at + 1) = static_cast<std::uint8_t>(value);
        state.Cell(at) = static_cast<std::uint8_t>(IsByteSized(type) ? value : value / 256);
    };
}

/// To a table, on in it by a number or a variable, and perhaps the way from its start.
Action RandomProgram::PointAnywhere() {
    const std::string pointer = Variable(Type::Pointer);
    const unsigned table = Pick(tables_.size());
    const auto places = static_cast<unsigned>(start_.tables[table].size()) - 1;
    const std::string index = Variable(Type::Word);
    if (Chance(4)) {
        const std::string other = Variable(Type::Pointer);
        Write(pointer + " = " + other + (Chance(2) ? " + 0" : " - 0"));
        return [=](State& state) { state.At(pointer) = state.At(other); };
    }
    Write(pointer + " = ADDRESSOF(" + tables_[table] + ")");
    if (Chance(2)) {
        const unsigned step = Pick(places);
        Write(pointer + " = " + pointer + " + " + std::to_string(step));
        return [=](State& state) { state.At(pointer) = table * kTableStep + step; };
    }
    Write(index + " = " + index + " MOD " + std::to_string(places));
    Write(pointer + " = " + pointer + " + " + index);
    return [=](State& state) {
        state.At(index) %= places;
        state.At(pointer) = table * kTableStep + state.At(index);
    };
}

/// From the start of a table on, reading or writing bytes, and back to its start.
Action RandomProgram::WalkThrough() {
    const std::string pointer = Variable(Type::Pointer);
    const unsigned table = Pick(tables_.size());
    const auto size = static_cast<unsigned>(start_.tables[table].size());
    const unsigned steps = 1 + Pick(size);
    const std::string counter = "Counter" + std::to_string(counters_++);
    const std::string target = Variable(Type::Byte);
    const bool isRead = Chance(2);
    Write("DEFINE BYTE " + counter + " = 0");
    Write(counter + " = " + std::to_string(steps));
    Write(pointer + " = ADDRESSOF(" + tables_[table] + ")");
    Write("REPEAT");
    Write(isRead ? target + " = READ(" + pointer + ")" : "WRITE " + pointer + ", " + target);
    Write("INCREMENT " + target);
    Write("INCREMENT " + pointer);
    Write("DECREMENT " + counter);
    Write("UNTIL " + counter + " = 0");
    Write(pointer + " = " + pointer + " - " + std::to_string(steps));
    return [=](State& state) {
        for (unsigned step = 0; step < steps; ++step) {
            std::uint8_t& cell = state.Cell(table * kTableStep + step);
            if (isRead) state.At(target) = cell;
            if (!isRead) cell = static_cast<std::uint8_t>(state.At(target));
            state.At(target) = Fit(Type::Byte, state.At(target) + 1);
        }
        state.At(pointer) = table * kTableStep;
    };
}

}  // namespace zentro::test
