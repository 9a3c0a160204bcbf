#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "board/devices.h"
#include "board/memory.h"
#include "model/address.h"

namespace zentro {

/// The prompt of the debug mode, with the blank and the ESC sequence that takes the blank away.
inline constexpr std::string_view kPromptAsSent =
    "*Debug Mode*  Go,eXit,Mem,Reset,Alter,Jump or <CR> to Step -> \x1b[D";

/// What a read behind the end of memory shows.
inline constexpr std::uint8_t kNothingThere = 0xFF;

/// "0F"
std::string FormatHexByte(std::uint8_t value);

/// "[00A0] ADD WORD [0100], [0102], [0104]": the instruction that stands at an address.
std::string FormatInstruction(const Memory& memory, std::uint32_t address);

/// "division by zero"
std::string_view FaultText(Fault fault);

/// "Fault: division by zero at [00A0]"
std::string FaultLine(Fault fault, std::uint32_t address);

/// "150 motor1 F 60": the tick, the output and its new value.
std::string FormatChange(const OutputChange& change);

}  // namespace zentro
