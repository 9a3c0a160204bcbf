#include "tests/random_program.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <stdexcept>

namespace zentro::test {

namespace {

constexpr std::array kTypeNames{"BYTE", "WORD", "FLAG", "POINTER"};

std::string TypeName(Type type) {
    return kTypeNames[static_cast<std::size_t>(type)];
}

/// The constants that every program knows, and what stands for them.
const std::vector<std::pair<std::string, unsigned>> kCatalogue{
    {"TRUE", 255}, {"FALSE", 0}, {"ON", 1}, {"OFF", 0}, {"FORWARD", 'F'}, {"BACKWARD", 'B'}};

}  // namespace

RandomProgram::RandomProgram(unsigned seed) : random_(seed) {
    start_.outputs = OutputsAtRest();
    DeclareConstants();
    DeclareTables();
    DeclareGlobals();
    WriteIsOver();
    WriteService();
    WriteSharedRoutine();
    for (auto& [name, body] : events_)
        body = EventBody(name);
    for (int i = 0; i < 3; ++i)
        WriteRoutine("Routine" + std::to_string(i));
    WriteRecursiveRoutine();
    WriteEndlessRoutine();
    if (Chance(2)) {
        included_ = std::move(text_);
        text_ = "INCLUDE \"more.txt\"\n";
    }
    where_ = Where::Program;
    visible_ = globals_;
    Write("BEGIN PROGRAM");
    std::vector<Action> actions;
    for (const auto& [name, type] : globals_) {
        if (type != Type::Pointer) continue;
        Write(name + " = ADDRESSOF(" + tables_.front() + ")");
        actions.push_back([pointer = name](State& state) { state.At(pointer) = 0; });
    }
    if (Chance(2)) {
        for (const unsigned number : {3U, 25U, 26U})
            actions.push_back(Watch(number));
        Write("ENABLE EVENTS");
        actions.push_back([](State& state) { state.SetMode(EventMode::Enabled); });
    }
    actions.push_back(Block(14, 3));
    if (Chance(2)) actions.push_back(End());
    Write("END PROGRAM");
    program_ = Sequence(std::move(actions));
}

State RandomProgram::Run() const {
    State state = start_;
    try {
        program_(state);
    } catch (const ProgramEnd& end) {
        state.ending = end.ending;
    }
    return state;
}

unsigned RandomProgram::Pick(std::size_t count) {
    return std::uniform_int_distribution<unsigned>(0, static_cast<unsigned>(count) - 1)(random_);
}

unsigned RandomProgram::StartValue(Type type) {
    if (type == Type::Flag) return Chance(2) ? 0 : 255;
    static constexpr std::array<unsigned, 11> kEdges{0,   1,   2,   127,  128,  254,
                                                     255, 256, 257, 1000, 32767};
    constexpr std::size_t kByteEdges = 7;
    if (Chance(2)) return kEdges[Pick(type == Type::Byte ? kByteEdges : kEdges.size())];
    return Pick(type == Type::Byte ? 256 : 32768);
}

std::string RandomProgram::ValueText(Type type, unsigned value) {
    if (type == Type::Flag) return value == 0 ? "FALSE" : "TRUE";
    const bool isLetter = value >= 'A' && value <= 'Z';
    if (isLetter && Chance(2)) return {'"', static_cast<char>(value), '"'};
    if (!Chance(5)) return std::to_string(value);
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), Chance(2) ? "0%XH" : "0%xh", value);
    return digits.data();
}

std::string RandomProgram::Variable(Type type) {
    Names suitable;
    std::copy_if(visible_.begin(), visible_.end(), std::back_inserter(suitable),
                 [&](const auto& name) { return name.second == type; });
    return OneOf(suitable).first;
}

RandomProgram::Operand RandomProgram::Literal(Type type, bool notZero) {
    if (type != Type::Flag && Chance(4)) {
        const auto& [name, value] = OneOf(Chance(3) ? kCatalogue : constants_);
        const bool fits = Fit(type, value) == value && !(notZero && value == 0);
        if (fits) return {name, [constant = value](State&) { return constant; }};
    }
    if (type == Type::Word && Chance(10)) {
        return {"\"Kz\"", [](State&) { return 'K' * 256U + 'z'; }};
    }
    unsigned value = StartValue(type);
    if (notZero && value == 0) value = 3;
    return {ValueText(type, value), [value](State&) { return value; }};
}

/// A variable or a value. A flag can be read where a byte is needed. A pointer has no values.
RandomProgram::Operand RandomProgram::AnOperand(Type type) {
    if (type != Type::Pointer && Chance(3)) return Literal(type);
    const bool readsFlag = type == Type::Byte && Chance(4);
    return ReadVariable(Variable(readsFlag ? Type::Flag : type));
}

RandomProgram::Operand RandomProgram::ReadVariable(const std::string& name) {
    return {name, [name](State& state) { return state.At(name); }};
}

void RandomProgram::DeclareConstants() {
    for (int i = 0; i < 4; ++i) {
        const Type type = i < 2 ? Type::Byte : Type::Word;
        const unsigned value = StartValue(type);
        constants_.emplace_back("Fixed" + std::to_string(i), value);
        Write("DEFINE CONSTANT " + constants_.back().first + " = " + ValueText(type, value));
    }
}

/// At least four bytes each, so that a word fits wherever a pointer stands.
void RandomProgram::DeclareTables() {
    for (int i = 0; i < 3; ++i) {
        tables_.push_back("Table" + std::to_string(i));
        std::vector<std::uint8_t> bytes;
        const auto add = [&](const Operand& operand) {
            bytes.push_back(static_cast<std::uint8_t>(operand.value(start_)));
            return operand.text;
        };
        std::string first = add(Literal(Type::Byte));
        if (Chance(2)) {
            first += ", \"Kz\"";
            bytes.insert(bytes.end(), {'K', 'z'});
        }
        Write("DEFINE TABLE " + tables_.back() + " = " + first);
        for (unsigned lines = Pick(4); lines > 0; --lines) {
            const std::string left = add(Literal(Type::Byte));
            Write(left + ", " + add(Literal(Type::Byte)));
        }
        const unsigned reserved = 3 + Pick(5);
        Write("RESERVE " + std::to_string(reserved));
        bytes.insert(bytes.end(), reserved, 0);
        Write("END TABLE");
        start_.tables.push_back(std::move(bytes));
    }
    for (const Melody& melody : Melodies()) {
        Write(std::string("DEFINE TABLE ") + melody.name);
        for (const auto& [note, length] : melody.notes)
            Write(std::to_string(note) + ", " + std::to_string(length));
        Write("0");
        Write("END TABLE");
    }
}

void RandomProgram::DeclareGlobals() {
    globals_ = {{"ByteA", Type::Byte},      {"ByteB", Type::Byte}, {"ByteC", Type::Byte},
                {"WordA", Type::Word},      {"WordB", Type::Word}, {"WordC", Type::Word},
                {"FlagA", Type::Flag},      {"FlagB", Type::Flag}, {"PointerA", Type::Pointer},
                {"PointerB", Type::Pointer}};
    for (const auto& [name, type] : globals_) {
        std::string line = "DEFINE " + TypeName(type) + " " + name;
        unsigned start = 0;
        if (type != Type::Pointer) {
            start = StartValue(type);
            line += " = " + ValueText(type, start);
        }
        start_.globals[name] = start;
        Write(line);
    }
    Write("DEFINE BYTE MayRaise = 9");
    start_.globals["MayRaise"] = 9;
    visible_ = globals_;
}

void RandomProgram::BeginRoutine(const SharedRoutine& routine, Where where) {
    where_ = where;
    present_ = routine;
    std::string list;
    for (const auto& [name, type] : routine->parameters)
        list += (list.empty() ? "" : ", ") + name + " " + TypeName(type);
    Write("DEFINE ROUTINE " + routine->name + "(" + list + ")" +
          (routine->hasResult ? " RETURNS " + TypeName(routine->result) : ""));
    for (std::size_t i = 0; i < routine->locals.size(); ++i) {
        const auto& [name, type] = routine->locals[i];
        Write("DEFINE " + TypeName(type) + " " + name + " = " +
              ValueText(type, routine->localValues[i]));
    }
    // A routine's own name hides the program's.
    visible_ = routine->locals;
    std::copy_if(routine->parameters.begin(), routine->parameters.end(),
                 std::back_inserter(visible_),
                 [](const auto& parameter) { return parameter.first != "Depth"; });
    std::copy_if(
        globals_.begin(), globals_.end(), std::back_inserter(visible_), [&](const auto& global) {
            return std::none_of(routine->locals.begin(), routine->locals.end(),
                                [&](const auto& local) { return local.first == global.first; });
        });
}

}  // namespace zentro::test
