#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "board/devices.h"

namespace zentro {

/// The outputs of a run as they changed: as lines, and from a limit on as a digest alone, so that a
/// recording stays a file that fits everywhere.
struct OutputLog {
    static constexpr std::size_t kMostLines = 100'000;
    static constexpr std::uint64_t kFirstDigest = 0xcbf29ce484222325;

    std::vector<std::string> lines;       ///< as FormatChange writes them, the first ones
    std::uint64_t more = 0;               ///< so many came after them
    std::uint64_t digest = kFirstDigest;  ///< of those; FNV-1a over the lines and their ends

    void Add(const OutputChange& change);

    bool operator==(const OutputLog&) const = default;
};

/// Where two logs part, in a sentence; empty: they are equal.
std::string Difference(const OutputLog& recorded, const OutputLog& replayed);

}  // namespace zentro
