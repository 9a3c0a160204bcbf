// Any bytes are read as a recording, and replayed twice.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "recording/recording_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zentro;
    constexpr std::uint64_t kMostTicks = 50;
    constexpr std::size_t kMostActionsHere = 50;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const LoadedRecording loaded = LoadRecording(text);
    if (!loaded.error.empty() || loaded.recording.actions.size() > kMostActionsHere) return 0;
    const auto scene = std::make_unique<Scene>();
    Prepare(loaded.recording, loaded.map, *scene);
    const Outcome first = Replay(loaded.recording, *scene, kMostTicks);

    // What is written is read as the same, and what is the same does the same.
    const LoadedRecording again = LoadRecording(SaveRecording(loaded.recording));
    if (!again.error.empty() || again.recording.actions != loaded.recording.actions) std::abort();
    Prepare(again.recording, again.map, *scene);
    if (Replay(again.recording, *scene, kMostTicks) != first) std::abort();
    return 0;
}
