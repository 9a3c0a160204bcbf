// A second opinion on every program: random programs are compiled and run on the virtual board, and
// the results are compared with those that this test works out by itself while it writes them.

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "board/board.h"
#include "board/loader.h"
#include "tests/support/compile_fixture.h"

namespace zentro::test {
namespace {

using Frame = std::map<std::string, unsigned>;

/// What the variables of a program hold: those of the program, and those of each active call.
struct State {
    Frame globals;
    std::vector<Frame> calls;

    unsigned& At(const std::string& name) {
        if (!calls.empty() && calls.back().contains(name)) return calls.back()[name];
        return globals.at(name);
    }
};

using Value = std::function<unsigned(State&)>;
using Action = std::function<void(State&)>;

struct Operand {
    std::string text;
    Value value;
};

enum class Type { Byte, Word, Flag };

unsigned Fit(Type type, unsigned value) {
    return value & (type == Type::Word ? 0xFFFFU : 0xFFU);
}

struct Routine {
    std::string name;
    std::vector<std::pair<std::string, Type>> parameters;
    Type result = Type::Byte;
    Action body;
    Value returned;
};

/// Writes a program and, beside each line, what the line means.
class RandomProgram {
  public:
    explicit RandomProgram(unsigned seed) : random_(seed) {
        for (const auto& [name, type] : kGlobals) {
            const unsigned start = StartValue(type);
            state_.globals[name] = start;
            Write("DEFINE " + TypeName(type) + " " + name + " = " + ValueText(type, start));
        }
        visible_ = kGlobals;
        for (int i = 0; i < 3; ++i)
            WriteRoutine("Routine" + std::to_string(i));
        WriteRecursiveRoutine();
        Write("BEGIN PROGRAM");
        const Action program = Block(12, 3);
        Write("END PROGRAM");
        program(state_);
    }

    const std::string& Text() const { return text_; }
    const Frame& Results() const { return state_.globals; }

  private:
    using Names = std::vector<std::pair<std::string, Type>>;
    inline static const Names kGlobals{
        {"ByteA", Type::Byte}, {"ByteB", Type::Byte}, {"ByteC", Type::Byte}, {"WordA", Type::Word},
        {"WordB", Type::Word}, {"WordC", Type::Word}, {"FlagA", Type::Flag}, {"FlagB", Type::Flag}};

    int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    void Write(const std::string& line) { text_ += line + "\n"; }

    static std::string TypeName(Type type) {
        return type == Type::Byte ? "BYTE" : type == Type::Word ? "WORD" : "FLAG";
    }

    unsigned StartValue(Type type) {
        if (type == Type::Flag) return Pick(2) == 0 ? 0 : 255;
        static constexpr unsigned kEdges[] = {0, 1, 2, 127, 128, 254, 255, 256, 1000, 32767};
        const int count = type == Type::Byte ? 7 : 10;
        return Pick(2) == 0 ? kEdges[Pick(count)]
                            : static_cast<unsigned>(Pick(type == Type::Byte ? 256 : 32768));
    }

    std::string ValueText(Type type, unsigned value) {
        if (type == Type::Flag) return value == 0 ? "FALSE" : "TRUE";
        const bool isLetter = value >= 'A' && value <= 'Z';
        if (isLetter && Pick(2) == 0) return {'"', static_cast<char>(value), '"'};
        if (Pick(5) > 0) return std::to_string(value);
        char digits[16];
        std::snprintf(digits, sizeof digits, "0%XH", value);
        return digits;
    }

    std::string Variable(Type type) {
        Names suitable;
        std::copy_if(visible_.begin(), visible_.end(), std::back_inserter(suitable),
                     [&](const auto& name) { return name.second == type; });
        return suitable[static_cast<std::size_t>(Pick(static_cast<int>(suitable.size())))].first;
    }

    static Operand Reading(const std::string& name) {
        return {name, [name](State& state) { return state.At(name); }};
    }

    Operand Literal(Type type, bool notZero = false) {
        unsigned value = StartValue(type);
        if (notZero && value == 0) value = 3;
        return {ValueText(type, value), [value](State&) { return value; }};
    }

    /// A variable or a value. A flag can be read where a byte is needed.
    Operand AnOperand(Type type) {
        if (Pick(3) == 0) return Literal(type);
        const bool readsFlag = type == Type::Byte && Pick(4) == 0;
        return Reading(Variable(readsFlag ? Type::Flag : type));
    }

    static Action Setting(const std::string& name, Type type, const Value& value) {
        return [=](State& state) { state.At(name) = Fit(type, value(state)); };
    }

    Action Operation(Type type) {
        const std::string target = Variable(type);
        const std::vector<std::string> operators =
            type == Type::Byte   ? std::vector<std::string>{"+", "-", "/", "MOD", "AND", "OR"}
            : type == Type::Word ? std::vector<std::string>{"+", "-", "/", "MOD", "*"}
                                 : std::vector<std::string>{"AND", "OR"};
        const std::string& sign =
            operators[static_cast<std::size_t>(Pick(static_cast<int>(operators.size())))];
        const Type operandType = sign == "*" ? Type::Byte : type;
        const bool divides = sign == "/" || sign == "MOD";
        const Operand a = AnOperand(operandType);
        const Operand b = divides ? Literal(operandType, true) : AnOperand(operandType);
        Write(target + " = " + a.text + " " + sign + " " + b.text);
        return Setting(target, type, [=](State& state) {
            const unsigned x = a.value(state);
            const unsigned y = b.value(state);
            if (sign == "+") return x + y;
            if (sign == "-") return x - y;
            if (sign == "*") return x * y;
            if (sign == "/") return x / y;
            if (sign == "MOD") return x % y;
            return sign == "AND" ? x & y : x | y;
        });
    }

    Action Function() {
        const auto write = [&](Type type, const std::string& name, const Operand& argument,
                               const std::function<unsigned(unsigned)>& meaning) {
            const std::string target = Variable(type);
            Write(target + " = " + name + "(" + argument.text + ")");
            return Setting(target, type,
                           [=](State& state) { return meaning(argument.value(state)); });
        };
        const auto same = [](unsigned value) { return value; };
        const auto inverse = [](unsigned value) { return ~value; };
        switch (Pick(5)) {
            case 0: return write(Type::Byte, "TOBYTE", AnOperand(Type::Word), same);
            case 1: return write(Type::Byte, "LOWBYTE", AnOperand(Type::Word), same);
            case 2: return write(Type::Word, "TOWORD", AnOperand(Type::Byte), same);
            case 3: return write(Type::Byte, "COMPLEMENT", AnOperand(Type::Byte), inverse);
            default: return write(Type::Flag, "NOT", AnOperand(Type::Flag), inverse);
        }
    }

    Action Assignment() {
        const Type type = static_cast<Type>(Pick(3));
        if (Pick(2) == 0) return Operation(type);
        const std::string target = Variable(type);
        const Operand value = AnOperand(type);
        if (type != Type::Flag && Pick(3) == 0) {
            const bool up = Pick(2) == 0;
            Write((up ? "INCREMENT " : "decrement ") + target);
            return Setting(target, type,
                           [=](State& state) { return state.At(target) + (up ? 1U : ~0U); });
        }
        Write(target + " = " + value.text);
        return Setting(target, type, value.value);
    }

    /// A comparison, or a call or NOT whose result is a flag; without the words around it.
    Operand Condition() {
        if (Pick(5) == 0) {
            const Operand flag = AnOperand(Type::Flag);
            return {"NOT(" + flag.text + ")",
                    [=](State& s) { return flag.value(s) == 0 ? 1U : 0U; }};
        }
        static const std::vector<std::string> kSigns{"=",  "<",  ">",  "<=", "=<",
                                                     ">=", "=>", "<>", "><"};
        const std::string& sign = kSigns[static_cast<std::size_t>(Pick(9))];
        const Type type = Pick(2) == 0 ? Type::Byte : Type::Word;
        Operand a = Reading(Variable(type));
        Operand b = AnOperand(type);
        if (Pick(3) == 0) std::swap(a, b);
        return {a.text + " " + sign + " " + b.text, [=](State& state) {
                    const unsigned x = a.value(state);
                    const unsigned y = b.value(state);
                    const bool less = sign.find('<') != std::string::npos && x < y;
                    const bool greater = sign.find('>') != std::string::npos && x > y;
                    const bool equal = sign.find('=') != std::string::npos && x == y;
                    return less || greater || equal ? 1U : 0U;
                }};
    }

    Action If(int depth) {
        const Operand condition = Condition();
        Write("IF " + condition.text + " THEN");
        const Action whenTrue = Block(3, depth - 1);
        Action whenFalse = [](State&) {};
        if (Pick(2) == 0) {
            Write("ELSE");
            whenFalse = Block(3, depth - 1);
        }
        Write("END IF");
        return [=](State& s) { condition.value(s) != 0 ? whenTrue(s) : whenFalse(s); };
    }

    /// A loop that a counter of its own ends.
    Action Loop(int depth) {
        const std::string counter = "Counter" + std::to_string(counters_++);
        const bool isWhile = Pick(2) == 0;
        const int rounds = 1 + Pick(4);
        Write("DEFINE BYTE " + counter + " = 0");
        Write(counter + " = " + std::to_string(rounds));
        Write(isWhile ? "WHILE " + counter + " > 0" : "REPEAT");
        const Action body = Block(3, depth - 1);
        Write("DECREMENT " + counter);
        Write(isWhile ? "END WHILE" : "UNTIL " + counter + " = 0");
        return [=](State& state) {
            for (int i = 0; i < rounds; ++i)
                body(state);
        };
    }

    Action Select(int depth) {
        const std::string selector = Variable(Type::Byte);
        Write("SELECT " + selector);
        std::vector<std::pair<std::vector<Operand>, Action>> cases;
        for (int i = 1 + Pick(3); i > 0; --i) {
            std::vector<Operand> values;
            std::string list;
            for (int j = 1 + Pick(3); j > 0; --j) {
                values.push_back(AnOperand(Type::Byte));
                list += (list.empty() ? "" : ", ") + values.back().text;
            }
            Write("CASE " + list);
            cases.emplace_back(values, Block(2, depth - 1));
        }
        Action otherwise = [](State&) {};
        if (Pick(2) == 0) {
            Write("CASE ELSE");
            otherwise = Block(2, depth - 1);
        }
        Write("END SELECT");
        return [=](State& state) {
            const unsigned selected = state.At(selector);
            for (const auto& [values, body] : cases) {
                const bool matches =
                    std::any_of(values.begin(), values.end(),
                                [&](const Operand& v) { return v.value(state) == selected; });
                if (matches) return body(state);
            }
            otherwise(state);
        };
    }

    Action PushAndPop() {
        const Type type = Pick(2) == 0 ? Type::Byte : Type::Word;
        const Operand pushed = Reading(Variable(type));
        const std::string target = Variable(type);
        Write("PUSH " + pushed.text);
        const Action between = Assignment();
        Write(target + " = POP()");
        return [=](State& state) {
            const unsigned value = pushed.value(state);
            between(state);
            state.At(target) = value;
        };
    }

    Action Call() {
        const Routine routine =
            routines_[static_cast<std::size_t>(Pick(static_cast<int>(routines_.size())))];
        const std::string target = Variable(routine.result);
        std::vector<Operand> arguments;
        std::string list;
        for (const auto& [name, type] : routine.parameters) {
            // The recursive routine calls itself as often as its first argument says.
            arguments.push_back(name == "Depth" ? Operand{"3", [](State&) { return 3U; }}
                                                : AnOperand(type));
            list += (list.empty() ? "" : ", ") + arguments.back().text;
        }
        Write(target + " = " + routine.name + "(" + list + ")");
        return [=](State& state) {
            std::vector<unsigned> values;
            values.reserve(arguments.size());
            for (const Operand& argument : arguments)
                values.push_back(argument.value(state));
            state.At(target) = Invoke(state, routine, values);
        };
    }

    static unsigned Invoke(State& state, const Routine& routine,
                           const std::vector<unsigned>& values) {
        Frame frame;
        for (std::size_t i = 0; i < values.size(); ++i)
            frame[routine.parameters[i].first] = values[i];
        state.calls.push_back(frame);
        routine.body(state);
        const unsigned result = Fit(routine.result, routine.returned(state));
        state.calls.pop_back();
        return result;
    }

    Action Block(int lines, int depth) {
        std::vector<Action> actions;
        for (int i = 1 + Pick(lines); i > 0; --i) {
            switch (depth > 0 ? Pick(9) : Pick(4)) {
                case 4: actions.push_back(If(depth)); break;
                case 5: actions.push_back(Loop(depth)); break;
                case 6: actions.push_back(Select(depth)); break;
                case 7: actions.push_back(PushAndPop()); break;
                case 8:
                    if (!routines_.empty()) actions.push_back(Call());
                    break;
                case 3: actions.push_back(Function()); break;
                default: actions.push_back(Assignment());
            }
        }
        return [=](State& state) {
            for (const Action& action : actions)
                action(state);
        };
    }

    void BeginRoutine(const Routine& routine) {
        std::string list;
        for (const auto& [name, type] : routine.parameters) {
            list += (list.empty() ? "" : ", ") + name + " " + TypeName(type);
        }
        Write("DEFINE ROUTINE " + routine.name + "(" + list + ") RETURNS " +
              TypeName(routine.result));
        visible_ = kGlobals;
        visible_.insert(visible_.end(), routine.parameters.begin(), routine.parameters.end());
    }

    void EndRoutine(Routine& routine) {
        const Operand result = AnOperand(routine.result);
        Write("RETURN " + result.text);
        Write("END ROUTINE");
        routine.returned = result.value;
        routines_.push_back(routine);
        visible_ = kGlobals;
    }

    void WriteRoutine(const std::string& name) {
        Routine routine;
        routine.name = name;
        routine.result = static_cast<Type>(Pick(3));
        for (int i = Pick(4); i > 0; --i) {
            routine.parameters.emplace_back("Given" + std::to_string(i),
                                            static_cast<Type>(Pick(3)));
        }
        BeginRoutine(routine);
        routine.body = Block(5, 2);
        EndRoutine(routine);
    }

    /// Its variables must survive the calls that it makes of itself.
    void WriteRecursiveRoutine() {
        Routine routine;
        routine.name = "Recursive";
        routine.result = Type::Word;
        routine.parameters = {{"Depth", Type::Byte}, {"Carried", Type::Word}};
        BeginRoutine(routine);
        Write("DEFINE WORD Deeper = 7");
        Write("DEFINE BYTE Kept = 0");
        Write("Kept = Depth");
        Write("IF Depth > 0 THEN");
        Write("Depth = Depth - 1");
        Write("Deeper = Carried + 300");
        Write("Deeper = Recursive(Depth, Deeper)");
        Write("END IF");
        Write("Carried = Carried + Deeper");
        Write("Deeper = TOWORD(Kept)");
        Write("Carried = Carried - Deeper");
        Write("RETURN Carried");
        Write("END ROUTINE");
        routine.body = [](State&) {};
        routine.returned = [](State& state) {
            const std::function<unsigned(unsigned, unsigned)> meaning = [&](unsigned depth,
                                                                            unsigned carried) {
                const unsigned deeper =
                    depth > 0 ? meaning(depth - 1, Fit(Type::Word, carried + 300)) : 7;
                return Fit(Type::Word, carried + deeper - depth);
            };
            return meaning(state.At("Depth"), state.At("Carried"));
        };
        routines_.push_back(routine);
        visible_ = kGlobals;
    }

    std::mt19937 random_;
    std::string text_;
    State state_;
    Names visible_;
    std::vector<Routine> routines_;
    int counters_ = 0;
};

unsigned ValueOf(const Compilation& compilation, const Board& board, const std::string& name) {
    const Symbol* symbol = compilation.symbols.FindOwn(std::string_view(name), ParentId::Program);
    const auto address = static_cast<std::uint32_t>(symbol->label.address);
    const unsigned first = board.memory.Byte(address);
    return IsByteSized(symbol->type) ? first : first * 256 + board.memory.Byte(address + 1);
}

/// How many programs are compared; ZENTRO_RANDOM_PROGRAMS asks for another number.
unsigned ProgramCount() {
    const char* asked = std::getenv("ZENTRO_RANDOM_PROGRAMS");
    if (asked == nullptr) return 300;
    return static_cast<unsigned>(std::stoul(asked));
}

TEST(RandomProgramTest, BoardAndMeaningAgree) {
    const unsigned programs = ProgramCount();
    ASSERT_GT(programs, 0U);
    constexpr std::uint64_t kEnough = 1'000'000;
    for (unsigned seed = 1; seed <= programs; ++seed) {
        const RandomProgram random(seed);
        Program program(random.Text());
        ASSERT_TRUE(program.Compile()) << random.Text();
        ASSERT_EQ(program.Messages(), std::vector<std::string>{}) << random.Text();
        Board board;
        ASSERT_EQ(LoadObjectText(board, program.object.text), "");
        StartProgram(board);
        RunInstructions(board, kEnough);
        ASSERT_EQ(board.processor.end, EndReason::End) << "seed " << seed << "\n" << random.Text();
        for (const auto& [name, expected] : random.Results()) {
            ASSERT_EQ(ValueOf(program.compilation, board, name), expected)
                << name << ", seed " << seed << "\n"
                << random.Text();
        }
    }
}

}  // namespace
}  // namespace zentro::test
