#include "recording/output_log.h"

#include <algorithm>

#include "board/text.h"

namespace zentro {

namespace {

std::string LineOrNothing(const OutputLog& log, std::size_t index) {
    return index < log.lines.size() ? '"' + log.lines[index] + '"' : "nothing";
}

}  // namespace

void OutputLog::Add(const OutputChange& change) {
    std::string line = FormatChange(change);
    if (lines.size() < kMostLines) {
        lines.push_back(std::move(line));
        return;
    }
    constexpr std::uint64_t kPrime = 0x100000001b3;
    ++more;
    line += '\n';
    for (const char character : line) {
        digest = (digest ^ static_cast<unsigned char>(character)) * kPrime;
    }
}

std::string Difference(const OutputLog& recorded, const OutputLog& replayed) {
    const std::size_t count = std::max(recorded.lines.size(), replayed.lines.size());
    for (std::size_t index = 0; index < count; ++index) {
        const std::string was = LineOrNothing(recorded, index);
        const std::string is = LineOrNothing(replayed, index);
        if (was == is) continue;
        std::string difference = "output " + std::to_string(index + 1) + " was ";
        difference.append(was).append(" when it was recorded, and is ").append(is).append(" now");
        return difference;
    }
    if (recorded == replayed) return {};
    return "the outputs differ somewhere behind the first " + std::to_string(count);
}

}  // namespace zentro
