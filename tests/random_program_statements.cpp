// Statements that compute: assignments, operators, functions, the stack.
#include "tests/random_program.h"

namespace zentro::test {

namespace {

Action Setting(const std::string& name, Type type, const Value& value) {
    return [=](State& state) { state.At(name) = Fit(type, value(state)); };
}

/// Other types that take as many bytes off the stack.
std::vector<Type> Resized(const std::vector<Type>& types) {
    std::vector<Type> resized;
    for (const Type type : types) {
        const bool isSecondByte =
            !resized.empty() && resized.back() == Type::Byte && type == Type::Byte;
        if (isSecondByte) resized.back() = Type::Word;
        if (!isSecondByte && type == Type::Word) resized.push_back(Type::Byte);
        if (!isSecondByte) resized.push_back(type == Type::Word ? Type::Byte : type);
    }
    return resized;
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
    if (divides && Chance(3)) return Division(type, target, sign);
    const Operand a = AnOperand(operandType);
    const Operand b = divides ? Literal(operandType, true) : AnOperand(operandType);
    Write(target + " = " + a.text + " " + sign + " " + b.text);
    return Setting(target, type,
                   [=](State& state) { return Meaning(sign, a.value(state), b.value(state)); });
}

/// By a variable, which is not 0 or ends the program.
Action RandomProgram::Division(Type type, const std::string& target, const std::string& sign) {
    const Operand a = AnOperand(type);
    const Operand b = ReadVariable(Variable(type));
    const bool isGuarded = !Chance(5);
    if (isGuarded) Write("IF " + b.text + " <> 0 THEN");
    Write(target + " = " + a.text + " " + sign + " " + b.text);
    if (isGuarded) Write("END IF");
    const Action divide = Setting(target, type, [=](State& state) {
        if (b.value(state) == 0) throw ProgramEnd{Ending::DivisionByZero};
        return Meaning(sign, a.value(state), b.value(state));
    });
    return [=](State& state) {
        if (!isGuarded || b.value(state) != 0) divide(state);
    };
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

/// What is pushed comes back in the opposite order, whatever happens in between. Two bytes may come
/// back as a word, and a word as two bytes.
Action RandomProgram::PushAndPop() {
    std::vector<Action> actions;
    std::vector<Type> types;
    for (unsigned pushes = 1 + Pick(3); pushes > 0; --pushes) {
        const Type type = AType();
        types.push_back(type);
        // The size of a number says whether it is pushed as a byte or a word.
        const Operand pushed =
            type == Type::Byte && Chance(3) ? Literal(type) : ReadVariable(Variable(type));
        Write("PUSH " + pushed.text);
        actions.push_back([=](State& state) { state.Push(type, pushed.value(state)); });
    }
    if (Chance(4)) types = Resized(types);
    actions.push_back(Chance(2) ? Call() : Assignment());
    for (; !types.empty(); types.pop_back()) {
        const std::string target = Variable(types.back());
        Write(target + " = POP()");
        actions.push_back(
            [target, type = types.back()](State& state) { state.At(target) = state.Pop(type); });
    }
    return Sequence(std::move(actions));
}

}  // namespace zentro::test
