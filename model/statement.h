#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "config/token.h"
#include "model/compile_state.h"
#include "model/data_type.h"
#include "model/instruction.h"

namespace zentro {

/// How the parsers read what begins with the statement's words.
enum class Reading : std::uint8_t {
    Include,
    SharedParameters,
    ByteDeclaration,
    WordDeclaration,
    ConstantDeclaration,
    FlagDeclaration,
    PointerDeclaration,
    TableHeader,
    RoutineHeader,
    EventHeader,
    TableRoom,  ///< RESERVE
    ProgramStart,
    BlockEnd,
    LoopStart,
    If,
    Else,
    While,
    Until,
    Select,
    Case,
    CaseElse,
    Call,
    Return,
    Words,        ///< its words alone
    Values,       ///< its words and its values, with commas between
    Unsupported,  ///< the board has it, the compiler refuses it
    // These begin no line.
    Assignment,  ///< target = value, told by the operator between the values
    RoutineCall,
    Function,  ///< its word, and its values in parentheses
    UnsupportedFunction,
};

/// How the generators write it.
enum class Coding : std::uint8_t {
    None,
    ProgramStart,
    ProgramEnd,
    RoutineStart,
    Return,
    EventEnd,
    Call,
    If,
    Else,
    JumpTarget,
    While,
    EndWhile,
    Until,
    EndLoop,
    Select,
    Case,
    Instruction,  ///< one instruction, with the arguments of the row; of its two forms the one for
                  ///< the size of what the last argument stands for
    Division,
    Not,
    Complement,
    Joystick,  ///< the form for the joystick of the first value
    Leds,      ///< both instructions, with a value each
    Silence,
};

/// Where an argument of an instruction comes from.
enum class ArgumentSource : std::uint8_t {
    None,
    Target,    ///< the variable that receives the result
    Operand1,  ///< an operand by its place in memory
    Operand2,
    Operand3,
    Value1,  ///< an operand's value, shown as the value
    Value2,
    NamedValue1,  ///< an operand's value, shown under its name
    NamedValue2,
    Scratch,  ///< the first scratch variable, for a result that nobody asked for
};

struct StatementCode {
    Coding coding = Coding::None;
    Opcode byteForm = Opcode::Nop;
    Opcode wordForm = Opcode::Nop;  ///< the same where there is one form
    std::array<ArgumentSource, kMaxArguments> arguments{};
};

/// A value of a statement or function: its name for people, and what may stand there.
struct StatementValue {
    enum class Kind : std::uint8_t {
        Operand,       ///< a variable or a constant
        Constant,      ///< a value that becomes part of the instruction
        Variable,      ///< a variable that the statement changes
        EventHandler,  ///< the name of an event
    };
    std::string_view name;
    Kind kind = Kind::Operand;
    DataType type = DataType::Any;
    std::span<const std::string_view> allowed{};  ///< the only ones; empty: any of the type
    std::int32_t mostMeant = 0;  ///< a larger one is legal, but no more than this; 0: any is meant
};

/// What a line does to the blocks around it.
enum class BlockRole : std::uint8_t {
    None,
    Opens,
    Continues,  ///< ELSE, CASE
    Ends,
};

struct BlockEdge {
    BlockRole role = BlockRole::None;
    CompileState block = CompileState::Outside;  ///< the block that it opens, continues or ends
};

inline constexpr std::size_t kMaxStatementValues = 3;

/// All that is particular to a statement, declaration or function of the language, or to an
/// assignment with an operator. The words are the configuration file's.
struct Statement {
    Token token;
    Reading reading;
    StatementCode code{};
    std::array<StatementValue, kMaxStatementValues> valueSlots{};  ///< without name: not used
    BlockEdge edge{};
    DataType result = DataType::Any;  ///< of a function; Any: that of its target

    constexpr std::span<const StatementValue> Values() const {
        std::size_t count = 0;
        while (count < kMaxStatementValues && !valueSlots[count].name.empty())
            ++count;
        return std::span(valueSlots).first(count);
    }
};

/// The row of a token; nothing for words that are no statements of their own.
const Statement* FindStatement(Token token);

/// The row of a statement whose values stand with commas between; nothing for other tokens.
const Statement* FindValueStatement(Token token);

/// The row of a function; nothing for those that are not supported.
const Statement* FindFunction(Token token);

}  // namespace zentro
