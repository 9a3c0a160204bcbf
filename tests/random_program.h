#pragma once

#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/random_program_meaning.h"

namespace zentro::test {

/// Writes a program and, beside each line, what the line means.
class RandomProgram {
  public:
    explicit RandomProgram(unsigned seed);
    RandomProgram(const RandomProgram&) = delete;
    RandomProgram& operator=(const RandomProgram&) = delete;

    const std::string& Text() const { return text_; }
    /// The file "more.txt", if the program includes it.
    const std::string& IncludedText() const { return included_; }
    /// The names of the tables; their bytes stand in the same order in the state.
    const std::vector<std::string>& Tables() const { return tables_; }
    const Names& Globals() const { return globals_; }

    /// What the program leaves, worked out without running it.
    State Run() const;

  private:
    struct Operand {
        std::string text;
        Value value;
    };
    struct Routine {
        std::string name;
        Names parameters;
        Names locals;  ///< with their values at each start
        std::vector<unsigned> localValues;
        bool sharesParameters = false;  ///< as variables of the whole program
        bool hasResult = true;
        Type result = Type::Byte;
        Action body;
    };
    using SharedRoutine = std::shared_ptr<Routine>;
    /// A service is a routine that only events call, so that they never interrupt it.
    enum class Where : std::uint8_t { Program, Routine, Service, Event };

    // random_program.cpp: choices, declarations, operands
    unsigned Pick(std::size_t count);
    bool Chance(std::size_t oneIn) { return Pick(oneIn) == 0; }
    template <typename Choices>
    const auto& OneOf(const Choices& choices) {
        return choices[Pick(choices.size())];
    }
    Type AType() { return static_cast<Type>(Pick(4)); }
    Type DataType() { return static_cast<Type>(Pick(3)); }
    Type NumberType() { return Chance(2) ? Type::Byte : Type::Word; }
    void Write(const std::string& line) { text_ += line + "\n"; }
    unsigned StartValue(Type type);
    std::string ValueText(Type type, unsigned value);
    std::string Variable(Type type);
    Operand Literal(Type type, bool notZero = false);
    static Operand ReadVariable(const std::string& name);
    Operand AnOperand(Type type);
    void DeclareConstants();
    void DeclareTables();
    void DeclareGlobals();

    // random_program_statements.cpp
    Action Assignment();
    Action Operation(Type type);
    Action Division(Type type, const std::string& target, const std::string& sign);
    Action CountUpOrDown(Type type);
    Action Function();
    Action Sequence(std::vector<Action> actions) const;
    Action PushAndPop();

    // random_program_devices.cpp
    Action Reading();
    Action PulsesOfLastSecond();
    Action Output();
    Action Motor();
    Action Servo();
    Action Switches();
    Action Show();
    Action Sound();
    Action Event();
    Action Raise(unsigned number);
    Action Watch(unsigned number);

    // random_program_time.cpp
    Action TimeOrChance();
    Action RandomByte();
    Action Wait();
    Action Calibrate();
    Action StickReading();
    Action End();

    // random_program_tables.cpp
    Action Access();
    Action PointAnywhere();
    Action WalkThrough();

    // random_program_blocks.cpp
    Operand Condition();
    Operand FlagCondition();
    Action Block(std::size_t lines, int depth);
    Action AnAction(int depth);
    Action If(int depth);
    Action Loop(int depth);
    Action Select(int depth);

    // random_program_routines.cpp
    Operand Invocation(const SharedRoutine& routine, const Operand& depth);
    Action Call();
    Action Return();
    void BeginRoutine(const SharedRoutine& routine, Where where = Where::Routine);
    void EndRoutine(const SharedRoutine& routine, Action body);
    SharedRoutine NewRoutine(const std::string& name);
    void WriteRoutine(const std::string& name);
    void WriteService();
    void WriteSharedRoutine();
    void WriteRecursiveRoutine();
    void WriteEndlessRoutine();
    void WriteIsOver();
    Action EventBody(const std::string& name);

    std::mt19937 random_;
    std::string text_;
    std::string included_;
    State start_;
    Action program_;
    Names globals_;
    Names visible_;  ///< the variables that a statement may change here
    std::vector<std::string> tables_;
    std::vector<std::pair<std::string, unsigned>> constants_;
    std::vector<SharedRoutine> routines_;
    std::vector<SharedRoutine> services_;
    SharedRoutine present_;  ///< the routine that is being written
    std::array<std::pair<std::string, Action>, 2> events_{{{"EventA", {}}, {"EventB", {}}}};
    Where where_ = Where::Program;
    int counters_ = 0;
};

}  // namespace zentro::test
