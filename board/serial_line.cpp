#include "board/serial_line.h"

#include "board/board.h"
#include "board/commands.h"
#include "board/loader.h"

namespace zentro {

namespace {

constexpr char kBackspace = 8;
constexpr char kDelete = 127;
constexpr std::uint64_t kStepAndPrompt = 2;  // a budget that is never used up in debug mode
constexpr std::string_view kEraseCharacter = "\x1b[D";

bool IsPrintable(char character) {
    const auto code = static_cast<unsigned char>(character);
    return code >= ' ' && code <= '~';
}

char Upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

void EndLine(Board& board) {
    PrintLine(board, "");
    board.serial.reporting = false;
    std::string line;
    line.swap(board.serial.line);
    if (board.processor.debug != DebugState::Off) {
        CarryOutDebugCommand(board, line);
    } else {
        CarryOutCommand(board, line);
    }
    // A step is taken at once, so that the next line finds the prompt that it is meant for.
    if (board.processor.debug != DebugState::Off) RunInstructions(board, kStepAndPrompt);
}

void TypeCharacter(Board& board, char character) {
    SerialLine& serial = board.serial;
    if (!IsPrintable(character) || serial.line.size() == kMaxLine) return;
    Print(board, std::string(1, character));
    if (serial.line.empty() && Upper(character) == 'L') {
        EndProgram(board, EndReason::Stopped);
        serial.reporting = false;
        StartLoader(board);
        return;
    }
    serial.line += Upper(character);
}

void TakeBackCharacter(Board& board) {
    if (board.serial.line.empty()) return;
    board.serial.line.pop_back();
    Print(board, kEraseCharacter);
}

void ReceiveCharacter(Board& board, char character) {
    SerialLine& serial = board.serial;
    if (serial.off && Upper(character) != 'W') return;
    serial.off = false;
    if (serial.loader.active) {
        LoadCharacter(board, character);
        return;
    }
    serial.received = static_cast<std::uint8_t>(character);
    if (character == '\r') {
        EndLine(board);
    } else if (character == kBackspace || character == kDelete) {
        TakeBackCharacter(board);
    } else {
        TypeCharacter(board, character);
    }
}

}  // namespace

void ReceiveCharacters(Board& board, std::string_view characters) {
    for (char character : characters) {
        ReceiveCharacter(board, character);
    }
}

void SwitchSerialLineOff(Board& board) {
    board.serial = {};
    board.serial.off = true;
}

void Print(Board& board, std::string_view text) {
    if (text.find('\n') != std::string_view::npos) board.serial.reportOnScreen = false;
    board.output += text;
}

void PrintLine(Board& board, std::string_view text) {
    Print(board, text);
    Print(board, "\r\n");
}

}  // namespace zentro
