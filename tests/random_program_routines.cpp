// Routines, their calls, recursion, and the handlers of events.
#include "tests/random_program.h"

namespace zentro::test {

namespace {

constexpr const char* kDepth = "Depth";  ///< how often a routine may still call itself

}  // namespace

/// The call, and what it gives. `depth` is what a routine that calls itself is told.
RandomProgram::Operand RandomProgram::Invocation(const SharedRoutine& routine,
                                                 const Operand& depth) {
    std::vector<Operand> arguments;
    std::string list;
    for (const auto& [name, type] : routine->parameters) {
        arguments.push_back(name == kDepth ? depth : AnOperand(type));
        list += (list.empty() ? "" : ", ") + arguments.back().text;
    }
    return {routine->name + "(" + list + ")", [arguments, routine](State& state) {
                Frame frame;
                for (std::size_t i = 0; i < arguments.size(); ++i)
                    frame.variables[routine->parameters[i].first] = arguments[i].value(state);
                if (routine->sharesParameters) {
                    for (const auto& [name, value] : std::exchange(frame.variables, {}))
                        state.globals[name] = value;
                }
                for (std::size_t i = 0; i < routine->locals.size(); ++i)
                    frame.variables[routine->locals[i].first] = routine->localValues[i];
                state.calls.push_back(std::move(frame));
                routine->body(state);
                const unsigned result = state.calls.back().result;
                state.calls.pop_back();
                return result;
            }};
}

Action RandomProgram::Call() {
    const auto& suitable = where_ == Where::Event ? services_ : routines_;
    if (suitable.empty()) return Assignment();
    const SharedRoutine routine = OneOf(suitable);
    const unsigned depth = Pick(3);
    const Operand call =
        Invocation(routine, {std::to_string(depth), [depth](State&) { return depth; }});
    if (!routine->hasResult) {
        Write("CALL " + call.text);
        return [=](State& state) { call.value(state); };
    }
    const std::string target = Variable(routine->result);
    Write(target + " = " + call.text);
    return [=](State& state) {
        const unsigned result = call.value(state);
        state.At(target) = result;
    };
}

Action RandomProgram::Return() {
    if (where_ == Where::Event || !present_->hasResult) {
        Write("RETURN");
        return [](State& state) { state.calls.back().hasReturned = true; };
    }
    const Type type = present_->result;
    const Operand result = AnOperand(type);
    Write("RETURN " + result.text);
    return [=](State& state) {
        const unsigned value = Fit(type, result.value(state));
        state.calls.back().result = value;
        state.calls.back().hasReturned = true;
    };
}

void RandomProgram::EndRoutine(const SharedRoutine& routine, Action body) {
    Write("END ROUTINE");
    routine->body = std::move(body);
    (where_ == Where::Service ? services_ : routines_).push_back(routine);
    visible_ = globals_;
    where_ = Where::Program;
}

RandomProgram::SharedRoutine RandomProgram::NewRoutine(const std::string& name) {
    const auto routine = std::make_shared<Routine>();
    routine->name = name;
    routine->hasResult = !Chance(4);
    routine->result = AType();
    for (unsigned i = Pick(4); i > 0; --i)
        routine->parameters.emplace_back("Given" + std::to_string(i), AType());
    for (unsigned i = Pick(3); i > 0; --i) {
        const Type type = DataType();
        const bool hides = i == 1 && type == Type::Byte && Chance(2);
        routine->locals.emplace_back(hides ? "ByteA" : "Own" + std::to_string(i), type);
        routine->localValues.push_back(StartValue(type));
    }
    return routine;
}

void RandomProgram::WriteRoutine(const std::string& name) {
    const SharedRoutine routine = NewRoutine(name);
    BeginRoutine(routine);
    std::vector<Action> actions{Block(5, 2)};
    if (routine->hasResult || Chance(2)) actions.push_back(Return());
    EndRoutine(routine, Sequence(std::move(actions)));
}

void RandomProgram::WriteService() {
    const SharedRoutine routine = NewRoutine("Service");
    BeginRoutine(routine, Where::Service);
    std::vector<Action> actions{Block(3, 0), Return()};
    EndRoutine(routine, Sequence(std::move(actions)));
}

/// Its parameters keep their values when it is over, and any line may change them.
void RandomProgram::WriteSharedRoutine() {
    Write("DEFINE SHARED PARAMETERS ON");
    const SharedRoutine routine = NewRoutine("Sharing");
    routine->parameters = {{"SharedByte", Type::Byte}, {"SharedWord", Type::Word}};
    routine->sharesParameters = true;
    for (const auto& [name, type] : routine->parameters)
        start_.globals[name] = 0;
    globals_.insert(globals_.end(), routine->parameters.begin(), routine->parameters.end());
    BeginRoutine(routine);
    std::vector<Action> actions{Block(4, 1), Return()};
    EndRoutine(routine, Sequence(std::move(actions)));
    Write("DEFINE SHARED PARAMETERS OFF");
}

/// Its variables must survive the calls that it makes of itself.
void RandomProgram::WriteRecursiveRoutine() {
    const SharedRoutine routine = NewRoutine("Recursive");
    routine->parameters.insert(routine->parameters.begin(), {kDepth, Type::Byte});
    BeginRoutine(routine);
    std::vector<Action> before{Block(3, 1)};
    Write("IF Depth > 0 THEN");
    Write("DECREMENT Depth");
    // The routine holds its body, and the body calls it: not as one that owns it.
    const Operand call = Invocation(SharedRoutine(routine.get(), [](Routine*) {}),
                                    {kDepth, [](State& state) { return state.At(kDepth); }});
    const std::string target = routine->hasResult ? Variable(routine->result) : "";
    Write(target.empty() ? "CALL " + call.text : target + " = " + call.text);
    const Action after = Block(2, 0);
    Write("END IF");
    before.push_back([=](State& state) {
        if (state.At(kDepth) == 0) return;
        --state.At(kDepth);
        const unsigned result = call.value(state);
        if (!target.empty()) state.At(target) = result;
        after(state);
    });
    before.push_back(Block(3, 1));
    before.push_back(Return());
    EndRoutine(routine, Sequence(std::move(before)));
}

/// A loop without a condition, which the routine leaves by returning.
void RandomProgram::WriteEndlessRoutine() {
    const SharedRoutine routine = NewRoutine("Endless");
    const unsigned rounds = 1 + Pick(4);
    BeginRoutine(routine);
    Write("DEFINE BYTE Rounds = " + std::to_string(rounds));
    Write("LOOP");
    const Action body = Block(3, 1);
    Write("DECREMENT Rounds");
    Write("IF Rounds = 0 THEN");
    const Action leave = Return();
    Write("END IF");
    Write("END LOOP");
    Return();  // never reached
    EndRoutine(routine, [=](State& state) {
        for (unsigned round = 0; round < rounds && !state.HasReturned(); ++round)
            body(state);
        if (!state.HasReturned()) leave(state);
    });
}

/// Ends loops.
void RandomProgram::WriteIsOver() {
    Write("DEFINE ROUTINE IsOver(Left WORD) RETURNS FLAG");
    Write("IF Left = 0 THEN");
    Write("RETURN TRUE");
    Write("END IF");
    Write("RETURN FALSE");
    Write("END ROUTINE");
}

Action RandomProgram::EventBody(const std::string& name) {
    where_ = Where::Event;
    visible_ = globals_;
    Write("DEFINE EVENT " + name + "()");
    Action body = Block(3, 1);
    Write("END EVENT");
    where_ = Where::Program;
    return body;
}

}  // namespace zentro::test
