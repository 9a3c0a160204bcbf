// Conditions, and the statements that hold other statements.
#include <algorithm>

#include "tests/random_program.h"

namespace zentro::test {

namespace {

bool Holds(const std::string& sign, unsigned x, unsigned y) {
    const bool less = sign.find('<') != std::string::npos && x < y;
    const bool greater = sign.find('>') != std::string::npos && x > y;
    const bool equal = sign.find('=') != std::string::npos && x == y;
    return less || greater || equal;
}

}  // namespace

/// NOT, or a routine that returns a flag.
RandomProgram::Operand RandomProgram::FlagCondition() {
    std::vector<SharedRoutine> suitable;
    std::copy_if(
        routines_.begin(), routines_.end(), std::back_inserter(suitable),
        [](const auto& routine) { return routine->hasResult && routine->result == Type::Flag; });
    if (suitable.empty() || where_ == Where::Event || Chance(3)) {
        const Operand flag = AnOperand(Type::Flag);
        return {"NOT(" + flag.text + ")",
                [=](State& state) { return Fit(Type::Flag, ~flag.value(state)); }};
    }
    return Invocation(OneOf(suitable), {"2", [](State&) { return 2U; }});
}

/// Without the words around it. What it gives is not 0 when it holds.
RandomProgram::Operand RandomProgram::Condition() {
    if (Chance(4)) return FlagCondition();
    static const std::vector<std::string> kSigns{"=", "<", ">", "<=", "=<", ">=", "=>", "<>", "><"};
    const Type type = AType();
    // Which of two tables stands further on in memory is the compiler's business.
    const std::string sign = type == Type::Pointer ? (Chance(2) ? "=" : "<>") : OneOf(kSigns);
    Operand a = ReadVariable(Variable(type));
    Operand b = AnOperand(type);
    if (Chance(3)) std::swap(a, b);
    return {a.text + " " + sign + " " + b.text,
            [=](State& state) { return Holds(sign, a.value(state), b.value(state)) ? 1U : 0U; }};
}

Action RandomProgram::If(int depth) {
    const Operand condition = Condition();
    Write("IF " + condition.text + " THEN");
    const Action whenTrue = Block(3, depth - 1);
    Action whenFalse = [](State&) {};
    if (Chance(2)) {
        Write("ELSE");
        whenFalse = Block(3, depth - 1);
    }
    Write("END IF");
    return [=](State& state) { condition.value(state) != 0 ? whenTrue(state) : whenFalse(state); };
}

/// A loop that a counter of its own ends, or, sooner, a return.
Action RandomProgram::Loop(int depth) {
    struct Form {
        std::string begin;
        std::string end;
    };
    const std::string counter = "Counter" + std::to_string(counters_++);
    const std::vector<Form> forms{
        {"WHILE " + counter + " > 0", "END WHILE"},
        {"WHILE 0 <> " + counter, "END WHILE"},
        {"WHILE IsOver(" + counter + ") = FALSE", "END WHILE"},
        {"REPEAT", "UNTIL " + counter + " = 0"},
        {"REPEAT", "UNTIL 1 > " + counter},
        {"REPEAT", "UNTIL IsOver(" + counter + ")"},
        {"REPEAT", "UNTIL IsOver(" + counter + ") = TRUE"},
    };
    const Form form = OneOf(forms);
    const unsigned rounds = 1 + Pick(3);
    Write("DEFINE WORD " + counter + " = 0");
    Write(counter + " = " + std::to_string(rounds));
    Write(form.begin);
    const Action body = Block(3, depth - 1);
    Write("DECREMENT " + counter);
    Write(form.end);
    return [=](State& state) {
        for (unsigned round = 0; round < rounds && !state.HasReturned(); ++round)
            body(state);
    };
}

Action RandomProgram::Select(int depth) {
    struct Case {
        std::vector<Operand> values;
        Action body;
    };
    const Type type = NumberType();
    const std::string selector = Variable(type);
    Write("SELECT " + selector);
    std::vector<Case> cases;
    for (unsigned i = 1 + Pick(3); i > 0; --i) {
        std::vector<Operand> values;
        std::string list;
        for (unsigned j = 1 + Pick(3); j > 0; --j) {
            values.push_back(AnOperand(type));
            list += (list.empty() ? "" : ", ") + values.back().text;
        }
        Write("CASE " + list);
        cases.push_back({values, Block(2, depth - 1)});
    }
    Action otherwise = [](State&) {};
    if (Chance(2)) {
        Write("CASE ELSE");
        otherwise = Block(2, depth - 1);
    }
    Write("END SELECT");
    return [=](State& state) {
        const unsigned selected = state.At(selector);
        const auto chosen = std::find_if(cases.begin(), cases.end(), [&](const Case& row) {
            return std::any_of(row.values.begin(), row.values.end(), [&](const Operand& value) {
                return value.value(state) == selected;
            });
        });
        chosen != cases.end() ? chosen->body(state) : otherwise(state);
    };
}

Action RandomProgram::AnAction(int depth) {
    if (depth > 0 && Chance(3)) {
        switch (Pick(3)) {
            case 0: return If(depth);
            case 1: return Loop(depth);
            default: return Select(depth);
        }
    }
    switch (Pick(14)) {
        case 0:
        case 1: return Function();
        case 2: return Output();
        case 3: return Access();
        case 4: return Chance(2) ? PointAnywhere() : WalkThrough();
        case 5: return PushAndPop();
        case 6: return Call();
        case 7: return TimeOrChance();
        case 8: return Wait();
        case 9: return Event();
        default: return Assignment();
    }
}

Action RandomProgram::Block(std::size_t lines, int depth) {
    std::vector<Action> actions;
    for (std::size_t i = 1 + Pick(lines); i > 0; --i)
        actions.push_back(AnAction(depth));
    const bool canReturn = where_ != Where::Program && depth < 1;
    if (canReturn && Chance(6)) actions.push_back(Return());
    return Sequence(std::move(actions));
}

}  // namespace zentro::test
