#include "board/commands.h"

#include <array>
#include <optional>

#include "board/board.h"
#include "board/input_report.h"

namespace zentro {

namespace {

constexpr unsigned kLargestByte = 255;

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// A number of digits alone, of which there is at least one, that fits a byte.
std::optional<unsigned> ReadByte(std::string_view digits) {
    unsigned value = 0;
    for (char digit : digits) {
        if (!IsDigit(digit)) return std::nullopt;
        value = value * 10 + static_cast<unsigned>(digit - '0');
    }
    if (value > kLargestByte) return std::nullopt;
    return value;
}

/// The form of a command that drives an output: "M" n "F" or "B" sss, "S" n "F" or "B" pp.
struct DriveForm {
    char letter;
    std::size_t digits;
    std::size_t count;
    void (*set)(Board&, unsigned number, unsigned direction, unsigned value);
};

constexpr DriveForm kMotorForm{'M', 3, std::tuple_size_v<decltype(Outputs::motors)>, SetMotor};
constexpr DriveForm kServoForm{'S', 2, std::tuple_size_v<decltype(Outputs::servos)>, SetServo};

/// The number of an output, which is one digit from 1 on.
std::optional<unsigned> ReadOutputNumber(char digit, std::size_t count) {
    const std::optional<unsigned> number = ReadByte({&digit, 1});
    if (!number || *number < 1 || *number > count) return std::nullopt;
    return number;
}

bool SetDriveByHand(Board& board, std::string_view line, const DriveForm& form) {
    if (line.size() != 3 + form.digits || line[0] != form.letter) return false;
    const auto number = ReadOutputNumber(line[1], form.count);
    const auto value = ReadByte(line.substr(3));
    const char direction = line[2];
    if (!number || !value || (direction != kForward && direction != kBackward)) return false;
    form.set(board, *number, static_cast<unsigned char>(direction), *value);
    return true;
}

/// "A" k "0" or "1".
bool SwitchPort(Board& board, std::string_view line) {
    if (line.size() != 3 || line[0] != 'A' || (line[2] != '0' && line[2] != '1')) return false;
    const auto number = ReadOutputNumber(line[1], board.outputs.ports.size());
    if (!number) return false;
    SetPort(board, *number, line[2] == '1');
    return true;
}

}  // namespace

bool DriveOutputByHand(Board& board, std::string_view line) {
    return SetDriveByHand(board, line, kMotorForm) || SetDriveByHand(board, line, kServoForm) ||
           SwitchPort(board, line);
}

void StopEverything(Board& board) {
    EndProgram(board, EndReason::Stopped);
    PutOutputsToRest(board);
}

void TellName(Board& board) {
    PrintLine(board, "Kinetron");
}

void RefuseLine(Board& board) {
    PrintLine(board, "?");
}

void CarryOutCommand(Board& board, std::string_view line) {
    // "]" and CR are also what ends a load and what is sent first when somebody connects.
    if (line.empty() || line == "]") return;
    if (line == "G") {
        StartProgram(board);
    } else if (line == "D") {
        StartProgram(board, DebugState::BeforePrompt);
    } else if (line == "X") {
        EndProgram(board, EndReason::Stopped);
    } else if (line == "Z") {
        StopEverything(board);
    } else if (line == "R") {
        StartReport(board);
    } else if (line == "W") {
        TellName(board);
    } else if (!DriveOutputByHand(board, line)) {
        RefuseLine(board);
    }
}

}  // namespace zentro
