#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "model/instruction.h"
#include "model/label.h"
#include "model/line_element.h"
#include "model/source_line.h"

namespace zentro {

enum class ObjectPurpose : std::uint8_t {
    Instruction = 0,
    VariableLocation = 1,
};

/// An argument of an instruction.
struct ObjectArgument {
    std::string_view symbol;       ///< as the listing shows it
    const Label* label = nullptr;  ///< address slots: the place that is meant
    std::uint8_t byte = 0;         ///< byte slots: the value
};

/// An argument that names a place in memory.
ObjectArgument AddressArgument(const Label& label);
ObjectArgument AddressArgument(const LineElement& element);

/// An argument that is part of the instruction: the value of a constant, shown in the listing as
/// the value itself or under the constant's name.
ObjectArgument ValueArgument(const LineElement& element);
ObjectArgument NamedValueArgument(const LineElement& element);

/// One unit of the board's object code: an instruction or a location of the data area. Its texts
/// belong to the compilation.
struct ObjectLine {
    ObjectPurpose purpose = ObjectPurpose::Instruction;
    Opcode opcode = Opcode::Nop;
    std::uint8_t argCount = 0;
    std::int32_t byteCount = 0;
    std::int32_t address = 0;
    std::int32_t sourceLineNo = 0;  ///< the line that it comes from; 0 for the data area
    Label* label = nullptr;         ///< the name of this place, if it has one
    std::string_view comment;       ///< for the listing, without its leading ";"
    std::string_view value;  ///< locations: the initial bytes, as decimal numbers joined by ","
    std::array<ObjectArgument, kMaxArguments> arguments{};

    std::string_view OpcodeName() const { return InstructionFor(opcode).name; }
};

/// An instruction that comes from the source line. The arguments must be those of the instruction.
ObjectLine CreateObjectLine(Opcode opcode, const SourceLine& line, std::string_view comment,
                            std::span<const ObjectArgument> arguments);

/// A location of the data area.
ObjectLine CreateVariableLocation(Label& label, std::string_view value, int byteCount,
                                  std::string_view comment);

/// Addresses beyond this cannot be encoded; they come out as 0.
inline constexpr std::int32_t kLargestAddress = 32767;

/// Appends the line's object code: decimal numbers joined by ",".
void AppendObjectCode(const ObjectLine& line, std::string& text);

}  // namespace zentro
