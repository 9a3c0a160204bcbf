#include "apps/zentro-link/answers.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "comms/download.h"
#include "comms/variable_reader.h"
#include "model/address.h"

namespace zentro {

namespace {

using State = Answer::State;

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kName = "Kinetron";
constexpr std::string_view kRefusals[] = {"?", "No program"};
constexpr std::string_view kProgramEnds[] = {"End at [", "Escape at [", "Emergency stop at [",
                                             "Fault: "};

/// The lines that are whole.
std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    for (std::size_t end = text.find(kLineEnd); end != std::string_view::npos;
         end = text.find(kLineEnd)) {
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end + kLineEnd.size());
    }
    return lines;
}

/// What follows the echo of a command; nothing when the board has not echoed it.
std::optional<std::string_view> AfterEcho(std::string_view said, std::string_view command) {
    const std::string echo = std::string(command).append(kLineEnd);
    for (std::size_t at = said.find(echo); at != std::string_view::npos;
         at = said.find(echo, at + 1)) {
        // The end of a prompt, ESC "[D", is no echo of "D".
        if (!said.substr(0, at).ends_with("\x1b[")) return said.substr(at + echo.size());
    }
    return std::nullopt;
}

bool IsRefusal(std::string_view line) {
    return std::ranges::find(kRefusals, line) != std::end(kRefusals);
}

/// The refusal among the whole lines behind the command's echo.
Answer RefusalIn(std::string_view answer) {
    for (const std::string_view line : LinesOf(answer)) {
        if (IsRefusal(line)) return {State::Refused, std::string(line)};
    }
    return {};
}

std::string MemoryCommand(std::uint32_t address) {
    return "M" + AddressDigits(address);
}

}  // namespace

bool HasSaidItsName(std::string_view said) {
    const auto isName = [](std::string_view line) { return line == kName; };
    // Another make of board may have another name.
    const auto isAnyName = [](std::string_view line) { return !line.empty(); };
    return std::ranges::any_of(LinesOf(said), isName) ||
           std::ranges::any_of(LinesOf(AfterEcho(said, "W").value_or("")), isAnyName);
}

std::string BrokenOffLoad(std::string_view said) {
    for (const std::string_view line : LinesOf(said)) {
        if (IsVerdict(line)) return std::string(line);
    }
    return {};
}

Answer StartAnswer(std::string_view said) {
    const auto answer = AfterEcho(said, "G");
    if (!answer) return {};
    for (const std::string_view line : LinesOf(*answer)) {
        if (IsRefusal(line)) return {State::Refused, std::string(line)};
        const auto begins = [line](std::string_view words) { return line.starts_with(words); };
        if (std::ranges::any_of(kProgramEnds, begins)) return {State::Done, {}};
    }
    return {};
}

bool IsStartEchoed(std::string_view said) {
    if (AfterEcho(said, "G")) return true;
    // What a running program says may stand between the echoed characters. A prompt is none of it.
    const std::size_t letter = said.find('G');
    return said.find(kDebugPrompt) == std::string_view::npos && letter != std::string_view::npos &&
           said.find(kLineEnd, letter) != std::string_view::npos;
}

Answer StopAnswer(std::string_view said) {
    const auto answer = AfterEcho(said, "Z");
    if (!answer) return {};
    for (const std::string_view line : LinesOf(*answer)) {
        if (IsRefusal(line)) return {State::Refused, std::string(line)};
        if (line.empty()) return {State::Done, {}};  // the echo of the last CR
    }
    return {};
}

Answer DebugAnswer(std::string_view said) {
    const auto answer = AfterEcho(said, "D");
    if (!answer) return {};
    if (Answer refusal = RefusalIn(*answer); refusal.state == State::Refused) return refusal;
    const std::vector<std::string_view> lines = LinesOf(*answer);
    const auto instruction =
        std::ranges::find_if(lines, [](std::string_view line) { return line.starts_with('['); });
    if (instruction == lines.end()) return {};
    const auto shown = static_cast<std::size_t>(instruction->data() - said.data());
    if (said.find(kReplyEndMarker, shown) == std::string_view::npos) return {};
    return {State::Done, std::string(*instruction)};
}

bool IsMemoryShown(std::string_view said, std::uint32_t address) {
    const std::string place = "[" + AddressDigits(address) + "] ";
    const auto lines = LinesOf(AfterEcho(said, MemoryCommand(address)).value_or(""));
    return std::ranges::any_of(lines,
                               [&](std::string_view line) { return line.starts_with(place); });
}

Answer MemoryAnswer(std::string_view said, std::uint32_t address) {
    const auto answer = AfterEcho(said, MemoryCommand(address));
    if (!answer) return {};
    const bool hasPrompt = answer->ends_with(kReplyEndMarker);
    if (hasPrompt && IsMemoryShown(said, address)) return {State::Done, {}};
    return RefusalIn(*answer);
}

}  // namespace zentro
