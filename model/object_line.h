#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "model/data_type.h"
#include "model/instruction.h"
#include "model/label.h"
#include "model/source_line.h"
#include "model/table_data.h"

namespace zentro {

enum class ObjectPurpose : std::uint8_t {
    Instruction = 0,
    VariableLocation = 1,
};

/// What the listing says about an object line. Most show their source line; the words of the others
/// are in one table. A kind instead of a text keeps object lines small.
enum class ObjectComment : std::uint8_t {
    SourceLine,
    None,
    Default,
    PopParameter,
    PushArgument,
    SaveLocal,
    RestoreLocal,
    Return,
    PrepareDivide,
    CleanUpDivide,
    PrepareMod,
    CleanUpMod,
    StartOfNot,
    EndOfIfBlock,
    EndOfWhile,
    EndOfCase,
    CaseJoin,
    Variable,
    TableByte,
    Constant,
};

/// One unit of the board's object code: an instruction, a location of the data area or a whole
/// table.
struct ObjectLine {
    Label* label = nullptr;  ///< the name of this place, if it has one
    union {
        /// What the arguments name, or for byte slots are. They belong to the compilation.
        std::array<const Label*, kMaxArguments> arguments{};
        const TableData* table;  ///< of a table, which has no arguments
    };
    std::int32_t address = 0;
    std::int32_t sourceLineNo = 0;   ///< the line that it comes from; 0 for the data area
    std::uint16_t initialValue = 0;  ///< locations: what they hold before the program runs
    ObjectPurpose purpose = ObjectPurpose::Instruction;
    Opcode opcode = Opcode::Nop;
    ObjectComment comment = ObjectComment::SourceLine;
    DataType type = DataType::Any;  ///< locations: what is kept there
    std::uint8_t argCount = 0;
    std::uint8_t byteCount = 0;  ///< 0 for a table

    bool IsTable() const { return type == DataType::Table; }
    /// In bytes of the board's memory.
    std::size_t Size() const { return IsTable() ? table->Size() : byteCount; }
    /// How many lines of the object file and the listing it stands for: of a table one a byte.
    std::size_t LineCount() const { return IsTable() ? table->Size() : 1; }

    std::string_view OpcodeName() const { return InstructionFor(opcode).name; }
};

/// An instruction that comes from the source line. The arguments must be those of the instruction.
ObjectLine CreateObjectLine(Opcode opcode, const SourceLine& line, ObjectComment comment,
                            std::span<const Label* const> arguments);

/// A location of the data area.
ObjectLine CreateVariableLocation(Label& label, DataType type, std::uint16_t initialValue,
                                  ObjectComment comment);

/// A data table, which stays the symbol's.
ObjectLine CreateTableLocation(Label& label, const TableData& table);

/// Addresses beyond this cannot be encoded; they come out as 0.
inline constexpr std::uint32_t kLargestAddress = 32767;

/// Of a program that is larger than the board's memory no more bytes are written and listed: enough
/// to be refused wherever it is loaded.
inline constexpr std::int32_t kMostBytesWritten = 65536;
inline constexpr std::int32_t kMostBytesListed = 131072;

/// The object code of a line: decimal numbers joined by ",". Of a location they are its initial
/// bytes.
class ObjectCodeText {
  public:
    /// The line is no table.
    explicit ObjectCodeText(const ObjectLine& line);
    explicit ObjectCodeText(std::uint8_t byte) { AppendByte(byte); }
    std::string_view View() const { return {text_.data(), length_}; }

  private:
    void AppendByte(std::uint32_t byte);
    void AppendWord(std::uint32_t word);

    std::array<char, 32> text_;  ///< an opcode and three words take 27 characters
    std::size_t length_ = 0;
};

}  // namespace zentro
