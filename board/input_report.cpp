#include "board/input_report.h"

#include "board/board.h"

namespace zentro {

namespace {

constexpr std::uint64_t kTicksPerReport = 10;
constexpr std::string_view kLinesUp = "\x1b[8A";  // as many as a report has lines

std::string Label(std::string_view name) {
    constexpr std::size_t kWidth = 11;
    std::string label(name);
    label.resize(kWidth, ' ');
    return label;
}

template <typename Values>
std::string ReportLine(std::string_view name, const Values& values) {
    std::string line = Label(name);
    for (const auto value : values) {
        line += std::to_string(static_cast<unsigned>(value)) + ' ';
    }
    line.pop_back();
    return line + "\r\n";
}

std::array<std::uint8_t, 4> PulsesSinceStart(const Board& board) {
    std::array<std::uint8_t, 4> counts{};
    for (std::size_t index = 0; index < counts.size(); ++index) {
        counts[index] = static_cast<std::uint8_t>(board.inputs.pulses[index] -
                                                  board.devices.pulsesAtStart[index]);
    }
    return counts;
}

std::string ReportText(const Board& board) {
    const Inputs& inputs = board.inputs;
    const auto& sticks = inputs.joysticks;
    return ReportLine("Digital", inputs.digital) + ReportLine("Buttons", inputs.buttons) +
           ReportLine("Analogue", inputs.analog) + ReportLine("Timed", inputs.timed) +
           ReportLine("Pulses", PulsesSinceStart(board)) +
           ReportLine("Joysticks", std::array{sticks[0].x, sticks[0].y, sticks[1].x, sticks[1].y}) +
           ReportLine("Battery", std::array{inputs.battery}) +
           ReportLine("Program", std::array{inputs.programNumber});
}

void Report(Board& board) {
    if (board.serial.reportOnScreen) Print(board, kLinesUp);
    Print(board, ReportText(board));
    board.serial.reportOnScreen = true;
    board.serial.nextReport = board.clock + kTicksPerReport;
}

}  // namespace

void StartReport(Board& board) {
    board.serial.reporting = true;
    Report(board);
}

void AdvanceReport(Board& board) {
    const SerialLine& serial = board.serial;
    if (serial.reporting && board.clock >= serial.nextReport && board.output.empty()) Report(board);
}

}  // namespace zentro
