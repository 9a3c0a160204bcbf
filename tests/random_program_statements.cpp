// Statements that compute: assignments, operators, functions, the stack.
#include "tests/random_program.h"

namespace zentro::test {

namespace {

Action Setting(const std::string& name, Type type, const Value& value) {
    return [=](State& state) { state.At(name) = Fit(type, value(state)); };
}

unsigned Meaning(const std::string& sign, unsigned x, unsigned y) {
    if (sign == "+") return x + y;
    if (sign == "-") return x - y;
    if (sign == "*") return x * y;
    if (sign == "/") return x / y;
    if (sign == "MOD") return x % y;
    return sign == "AND" ? x & y : x | y;
}

}  // namespace

/// One after the other, until one of them returns from the routine.
Action RandomProgram::Sequence(std::vector<Action> actions) const {
    return [actions = std::move(actions)](State& state) {
        for (const Action& action : actions) {
            if (state.HasReturned()) return;
            action(state);
        }
    };
}

Action RandomProgram::Operation(Type type) {
    const std::string target = Variable(type);
    const std::vector<std::string> operators =
        type == Type::Byte   ? std::vector<std::string>{"+", "-", "/", "MOD", "AND", "OR"}
        : type == Type::Word ? std::vector<std::string>{"+", "-", "/", "MOD", "*"}
                             : std::vector<std::string>{"AND", "OR"};
    const std::string sign = OneOf(operators);
    const Type operandType = sign == "*" ? Type::Byte : type;
    const bool divides = sign == "/" || sign == "MOD";
    const Operand a = AnOperand(operandType);
    const Operand b = divides ? Literal(operandType, true) : AnOperand(operandType);
    Write(target + " = " + a.text + " " + sign + " " + b.text);
    return Setting(target, type,
                   [=](State& state) { return Meaning(sign, a.value(state), b.value(state)); });
}

Action RandomProgram::CountUpOrDown(Type type) {
    const std::string target = Variable(type);
    const bool up = Chance(2);
    Write((up ? "INCREMENT " : "decrement ") + target);
    return Setting(target, type, [=](State& state) { return state.At(target) + (up ? 1U : ~0U); });
}

Action RandomProgram::Assignment() {
    const Type type = DataType();
    if (Chance(2)) return Operation(type);
    if (type != Type::Flag && Chance(3)) return CountUpOrDown(type);
    const std::string target = Variable(type);
    const Operand value = AnOperand(type);
    Write(target + " = " + value.text);
    return Setting(target, type, value.value);
}

Action RandomProgram::Function() {
    if (Chance(4)) return Reading();
    struct Row {
        Type target;
        const char* name;
        Type argument;
        unsigned (*meaning)(unsigned);
    };
    static constexpr auto kSame = [](unsigned value) { return value; };
    static constexpr auto kInverse = [](unsigned value) { return ~value; };
    static constexpr std::array kRows{
        Row{Type::Byte, "TOBYTE", Type::Word, kSame},
        Row{Type::Byte, "LOWBYTE", Type::Word, kSame},
        Row{Type::Word, "TOWORD", Type::Byte, kSame},
        Row{Type::Byte, "COMPLEMENT", Type::Byte, kInverse},
        Row{Type::Byte, "NOT", Type::Byte, kInverse},
        Row{Type::Flag, "NOT", Type::Flag, kInverse},
    };
    const Row& row = OneOf(kRows);
    const std::string target = Variable(row.target);
    const Operand argument = AnOperand(row.argument);
    Write(target + " = " + row.name + "(" + argument.text + ")");
    return Setting(target, row.target, [meaning = row.meaning, argument](State& state) {
        return meaning(argument.value(state));
    });
}

/// What is pushed comes back in the opposite order, whatever happens in between.
Action RandomProgram::PushAndPop() {
    std::vector<Action> actions;
    std::vector<Type> types;
    for (unsigned pushes = 1 + Pick(3); pushes > 0; --pushes) {
        types.push_back(DataType());
        const std::string name = Variable(types.back());
        Write("PUSH " + name);
        actions.push_back([name](State& state) { state.stack.push_back(state.At(name)); });
    }
    actions.push_back(Chance(2) ? Call() : Assignment());
    for (; !types.empty(); types.pop_back()) {
        const std::string target = Variable(types.back());
        Write(target + " = POP()");
        actions.push_back([target](State& state) {
            state.At(target) = state.stack.back();
            state.stack.pop_back();
        });
    }
    return Sequence(std::move(actions));
}

}  // namespace zentro::test
