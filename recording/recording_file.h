#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "recording/recording.h"

namespace zentro {

inline constexpr std::size_t kMostRecordingBytes = 20'000'000;
inline constexpr std::size_t kMostActions = 100'000;
inline constexpr std::uint64_t kMostRecordedTicks = 8'640'000;  ///< a day

struct LoadedRecording {
    Recording recording;                         ///< only if there is no error
    std::shared_ptr<const world::WorldMap> map;  ///< of its world, if it has one
    std::string error;  ///< what is wrong and where: "inputs[3]: ...", or empty
};

/// Reads a *.recording file, JSON with comments; docs/file-formats.md describes it. Whatever it
/// holds, the recording can be replayed.
LoadedRecording LoadRecording(std::string_view text);

/// The file of a recording that LoadRecording would not refuse. With more actions or ticks than a
/// file may hold, empty.
std::string SaveRecording(const Recording& recording);

}  // namespace zentro
