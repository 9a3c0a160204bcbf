#include "apps/zentro-board/run.h"

#include <filesystem>
#include <iostream>
#include <memory>

#include "apps/zentro-board/files.h"
#include "board/loader.h"
#include "config/file.h"
#include "recording/recording_file.h"
#include "world/load_world.h"
#include "world/named_world.h"

namespace zentro {

namespace {

namespace fs = std::filesystem;

constexpr const char* kNoWorld = "none";

/// What a recording shall hold, from the files of a run.
std::string ReadProgram(const std::string& text, Recording& recording) {
    const auto board = std::make_unique<Board>();
    const std::string wrong = LoadObjectText(*board, text);
    recording.program = ProgramOf(*board);
    return wrong.empty() && recording.program.empty() ? "there is no program" : wrong;
}

bool ReadFiles(const RunOptions& options, Recording& recording,
               std::shared_ptr<const world::WorldMap>& map) {
    const auto readProgram = [&recording](const std::string& text) {
        return ReadProgram(text, recording);
    };
    const auto readScript = [&recording](const std::string& text) {
        InputScript script = ParseInputScript(text);
        recording.actions = std::move(script.actions);
        return script.error;
    };
    const auto readWorld = [&recording, &map](const std::string& text) {
        world::LoadedWorld loaded = world::LoadWorld(text);
        if (!loaded.error.empty()) return loaded.error;
        recording.world = text;
        map = std::make_shared<const world::WorldMap>(world::MakeMap(std::move(loaded.world)));
        return std::string();
    };
    return UseFile(options.objectFile, readProgram) && UseFile(options.worldFile, readWorld) &&
           UseFile(options.inputFile, readScript);
}

/// The world that the program's source names, if that lies beside the object file. Empty: none.
std::string WorldOfProgram(const std::string& objectFile) {
    const fs::path object(objectFile);
    const FileContent source = ReadWholeFile(fs::path(object).replace_extension(".txt").string());
    if (source.status != FileContent::Status::Read) return {};
    const std::string name = world::WorldNamedIn(source.bytes);
    if (name.empty()) return {};
    return world::FindWorld(name, object.parent_path(), ShippedFolder("worlds")).string();
}

RunOptions WithWorld(RunOptions options) {
    if (options.worldFile.empty())
        options.worldFile = WorldOfProgram(options.objectFile);
    else if (options.worldFile == kNoWorld)
        options.worldFile.clear();
    return options;
}

bool OptionsFit(const RunOptions& options) {
    if (!options.worldFile.empty()) return true;
    if (!options.show.pictureFile.empty()) return Complain("--picture", "needs --world");
    return options.noise == 0 || Complain("--noise", "needs --world");
}

/// Writes what was done to the board and what it did, if that is asked for.
bool WriteRecording(const BoardRun& run, Recording recording, const std::string& path) {
    if (path.empty()) return true;
    recording.ticks = run.scene.board.clock;
    recording.actions.resize(run.player.Done());
    if (run.stepsOfTick > 0) {
        const auto steps = static_cast<std::uint32_t>(run.stepsOfTick);
        recording.actions.push_back({recording.ticks, ActionKind::Step, {}, steps});
    }
    recording.outcome = run.outcome;
    const std::string text = SaveRecording(recording);
    if (text.empty()) return Complain(path, "the run is too long for a recording");
    return MakeFile(path, text);
}

}  // namespace

ExitStatus RunProgram(const RunOptions& given) {
    std::ios::sync_with_stdio(false);
    const RunOptions options = WithWorld(given);
    const auto run = std::make_unique<BoardRun>();
    run->show = options.show;
    run->limits = options.limits;
    run->keepsOutcome = !options.recordFile.empty();
    Recording recording;
    std::shared_ptr<const world::WorldMap> map;
    if (!OptionsFit(options) || !ReadFiles(options, recording, map) || !ReadShowFiles(*run))
        return ExitStatus::BadUsage;
    recording.seed = options.seed;
    recording.noise = options.noise;
    Prepare(recording, std::move(map), run->scene);
    run->player = Player(recording.actions);
    RunToEnd(*run);
    const ExitStatus status = PrintResults(*run);
    return WriteRecording(*run, recording, options.recordFile) ? status : ExitStatus::BadUsage;
}

ExitStatus ReplayRecording(const ReplayOptions& options) {
    std::ios::sync_with_stdio(false);
    LoadedRecording loaded;
    const auto read = [&loaded](const std::string& text) {
        loaded = LoadRecording(text);
        return loaded.error;
    };
    const auto run = std::make_unique<BoardRun>();
    run->show = options.show;
    if (!UseFile(options.recordingFile, read) || !ReadShowFiles(*run)) return ExitStatus::BadUsage;
    if (!loaded.map && !options.show.pictureFile.empty()) {
        Complain("--picture", "there is no world in the recording");
        return ExitStatus::BadUsage;
    }
    const Recording& recording = loaded.recording;
    run->limits.endOfTape = recording.End();
    run->keepsOutcome = recording.outcome.has_value();
    Prepare(recording, loaded.map, run->scene);
    run->player = Player(recording.actions);
    RunToEnd(*run);
    const ExitStatus status = PrintResults(*run);
    if (!recording.outcome) return status;
    const std::string difference = Difference(*recording.outcome, run->outcome);
    if (difference.empty()) return status;
    Complain(options.recordingFile, difference);
    return ExitStatus::Differs;
}

}  // namespace zentro
