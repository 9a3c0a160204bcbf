// The commands of the debug mode's prompt. Instructions themselves are stepped by RunInstructions.
#include <charconv>
#include <optional>

#include "board/board.h"
#include "board/commands.h"
#include "board/text.h"

namespace zentro {

namespace {

constexpr std::uint32_t kBytesShown = 8;

/// Hexadecimal digits alone, exactly `count` of them.
std::optional<std::uint32_t> ReadHex(std::string_view text, std::size_t count) {
    std::uint32_t value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, 16);
    if (text.size() != count || error != std::errc{} || stop != end) return std::nullopt;
    return value;
}

/// The address in "M001A" and the like.
std::optional<std::uint32_t> ReadAddress(std::string_view line) {
    return ReadHex(line.substr(1), 4);
}

/// "M001A"
bool ShowMemory(Board& board, std::string_view line) {
    const auto address = ReadAddress(line);
    if (!address) return false;
    std::string text = FormatAddress(*address);
    for (std::uint32_t at = *address; at < *address + kBytesShown; ++at) {
        text += ' ';
        text += FormatHexByte(at < kMemorySize ? board.memory.Byte(at) : kNothingThere);
    }
    PrintLine(board, text);
    return true;
}

/// "A001A 2F"
bool AlterMemory(Board& board, std::string_view line) {
    if (line.size() != 8 || line[5] != ' ') return false;
    const auto address = ReadAddress(line.substr(0, 5));
    const auto value = ReadHex(line.substr(6), 2);
    if (!address || *address >= kMemorySize || !value) return false;
    board.memory.StoreByte(*address, *value);
    return true;
}

/// "J001A"
bool JumpTo(Board& board, std::string_view line) {
    const auto address = ReadAddress(line);
    if (!address || *address >= kMemorySize) return false;
    board.processor.address = *address;
    board.processor.wait = {};
    board.processor.debug = DebugState::BeforePrompt;
    return true;
}

/// Whether the first letter says what to do with the rest of the line, and that could be done.
bool CarryOutWithAddress(Board& board, std::string_view line) {
    switch (line[0]) {
        case 'M': return ShowMemory(board, line);
        case 'A': return AlterMemory(board, line);
        case 'J': return JumpTo(board, line);
        default: return false;
    }
}

void Step(Board& board) {
    if (board.processor.debug == DebugState::AtPrompt) board.processor.debug = DebugState::Stepping;
}

void Restart(Board& board) {
    RestartProgram(board);
    board.processor.debug = DebugState::BeforePrompt;
}

}  // namespace

void CarryOutDebugCommand(Board& board, std::string_view line) {
    if (line.empty()) {
        Step(board);
    } else if (line == "G") {
        board.processor.debug = DebugState::Off;
    } else if (line == "X") {
        EndProgram(board, EndReason::Stopped);
    } else if (line == "Z") {
        StopEverything(board);
    } else if (line == "R") {
        Restart(board);
    } else if (line == "W") {
        TellName(board);
    } else if (line != "]" && !CarryOutWithAddress(board, line)) {
        RefuseLine(board);
    }
    if (board.processor.debug == DebugState::AtPrompt) Print(board, kPromptAsSent);
}

}  // namespace zentro
