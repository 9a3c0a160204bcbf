#include "recording/recording_file.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

#include "config/text.h"
#include "config/text_lines.h"
#include "world/json_fields.h"
#include "world/load_world.h"

namespace zentro {

namespace {

constexpr std::uint64_t kVersion = 1;
constexpr std::size_t kLongestOutput = 40;
constexpr int kHexadecimal = 16;
constexpr std::size_t kDigestDigits = 16;

std::string FormatDigest(std::uint64_t digest) {
    std::string text(kDigestDigits, '0');
    for (std::size_t place = kDigestDigits; place-- > 0; digest /= kHexadecimal) {
        text[place] = "0123456789abcdef"[digest % kHexadecimal];
    }
    return text;
}

bool ParseDigest(const std::string& text, std::uint64_t& digest) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, digest, kHexadecimal);
    return text.size() == kDigestDigits && error == std::errc{} && stop == end;
}

class Reader {
  public:
    LoadedRecording Read(std::string_view text) {
        if (text.size() > kMostRecordingBytes)
            mistake_.Note("", "the file is larger than 20 million bytes");
        std::optional<nlohmann::json> json;
        if (!mistake_.Found()) json = world::ParseJson(text, mistake_);
        if (json) ReadAll(*json);
        if (mistake_.Found()) return {{}, {}, mistake_.Text()};
        return {std::move(recording_), std::move(map_), {}};
    }

  private:
    void ReadAll(const nlohmann::json& json) {
        world::Fields fields(json, "", mistake_);
        for (const std::string_view name : {"recording", "program", "ticks"}) {
            fields.Require(name);
        }
        std::uint64_t version = kVersion;
        fields.Take("recording", version, std::numeric_limits<std::uint32_t>::max());
        if (version != kVersion)
            fields.Complain("recording", "this program reads recordings of version 1");
        ReadProgram(fields);
        ReadSource(fields);
        ReadWorld(fields);
        ReadSeed(fields, "seed", recording_.seed);
        ReadSeed(fields, "noise", recording_.noise);
        if (recording_.noise != 0 && !fields.Has("world"))
            fields.Complain("noise", "without a world there are no sensors");
        fields.Take("clock", recording_.clock, kLargestClock);
        ReadBytes(fields, "memory", kMemorySize, recording_.memory);
        ReadBytes(fields, "eeprom", kEepromSize, recording_.eeprom);
        ReadSticks(fields);
        ReadActions(fields);
        fields.Take("ticks", recording_.ticks, kMostRecordedTicks);
        ReadOutcome(fields);
        fields.End();
        if (!mistake_.Found()) CheckTimes(fields);
    }

    void ReadProgram(world::Fields& fields) {
        std::vector<std::uint8_t>& program = recording_.program;
        fields.TakeLines("program", kMemorySize, [&program](const std::string& line) {
            for (const std::string_view field : SplitFields(line, ',')) {
                const auto number =
                    ReadNumber(Trim(field), std::numeric_limits<std::uint8_t>::max());
                if (!number) return "must be numbers from 0 to 255 with commas between";
                if (program.size() == kMemorySize) return "is more than the board's memory holds";
                program.push_back(static_cast<std::uint8_t>(*number));
            }
            return "";
        });
        if (program.empty()) fields.Complain("program", "there is no program");
    }

    void ReadSource(world::Fields& fields) {
        fields.Take("source", recording_.source);
        if (recording_.source.find_first_of("/\\") != std::string::npos)
            fields.Complain("source", "must be the name of a file, without its folder");
    }

    void ReadWorld(world::Fields& fields) {
        fields.TakeObjectText("world", recording_.world);
        if (recording_.world.empty()) return;
        world::LoadedWorld loaded = world::LoadWorld(recording_.world);
        if (loaded.error.empty())
            map_ = std::make_shared<const world::WorldMap>(world::MakeMap(std::move(loaded.world)));
        else
            fields.Complain("world", loaded.error);
    }

    static void ReadBytes(world::Fields& fields, std::string_view name, std::size_t size,
                          std::vector<BytesAt>& pieces) {
        fields.TakeLines(name, size, [size, &pieces](const std::string& line) {
            pieces.emplace_back();
            const bool isGood = ReadPiece(line, size, pieces.back());
            return isGood ? "" : "must be an address, a blank, and bytes that have room there";
        });
    }

    static bool ReadPiece(std::string_view line, std::size_t size, BytesAt& piece) {
        const std::size_t blank = line.find(' ');
        if (blank == std::string_view::npos) return false;
        const auto address = ReadNumber(line.substr(0, blank), size - 1);
        if (!address) return false;
        piece.address = static_cast<std::uint32_t>(*address);
        for (const std::string_view field : SplitFields(line.substr(blank + 1), ',')) {
            const auto byte = ReadNumber(Trim(field), std::numeric_limits<std::uint8_t>::max());
            if (!byte || piece.address + piece.bytes.size() == size) return false;
            piece.bytes.push_back(static_cast<std::uint8_t>(*byte));
        }
        return true;
    }

    void ReadSticks(world::Fields& fields) {
        std::size_t stick = 0;
        fields.TakeLines("sticks", recording_.sticks.size(), [&](const std::string& line) {
            const std::vector<std::string_view> parts = SplitFields(line, ',');
            constexpr unsigned long kMost = std::numeric_limits<std::uint8_t>::max();
            const auto x = ReadNumber(parts.front(), kMost);
            const auto y = ReadNumber(parts.back(), kMost);
            if (parts.size() != 2 || !x || !y) return "must be two numbers from 0 to 255";
            recording_.sticks[stick++] = {static_cast<std::uint8_t>(*x),
                                          static_cast<std::uint8_t>(*y)};
            return "";
        });
    }

    static void ReadSeed(world::Fields& fields, std::string_view name, std::uint32_t& target) {
        std::uint64_t value = target;
        fields.Take(name, value, std::numeric_limits<std::uint32_t>::max());
        target = static_cast<std::uint32_t>(value);
    }

    void ReadActions(world::Fields& fields) {
        fields.TakeLines("inputs", kMostActions, [this](const std::string& line) {
            std::string wrong;
            const std::optional<Action> action = ParseAction(line, wrong);
            if (!action) return wrong;
            if (!recording_.actions.empty() && action->tick < recording_.actions.back().tick)
                wrong = "stands behind a later one";
            recording_.actions.push_back(*action);
            return wrong;
        });
    }

    /// A recording that a person wrote need not say what came of it.
    void ReadOutcome(world::Fields& fields) {
        if (!fields.Has("outputs")) return;
        Outcome outcome;
        fields.Require("steps");
        fields.Take("steps", outcome.steps, kMostSteps);
        ReadOutputs(fields, outcome.outputs);
        recording_.outcome = std::move(outcome);
    }

    static void ReadOutputs(world::Fields& fields, OutputLog& log) {
        fields.TakeLines("outputs", OutputLog::kMostLines, [&log](const std::string& line) {
            log.lines.push_back(line);
            const bool printable = std::ranges::all_of(
                line, [](char character) { return character >= ' ' && character <= '~'; });
            const bool fits = printable && !line.empty() && line.size() <= kLongestOutput;
            return fits ? "" : "must be an output as it is printed, like 100 motor1 F 60";
        });
        fields.TakeObject("moreOutputs", [&log](world::Fields& more) {
            std::string digest;
            more.Require("count");
            more.Require("digest");
            more.Take("count", log.more, kMostSteps);
            more.Take("digest", digest);
            if (!ParseDigest(digest, log.digest))
                more.Complain("digest", "must be 16 hexadecimal digits");
        });
    }

    void CheckTimes(world::Fields& fields) {
        const std::vector<Action>& actions = recording_.actions;
        if (!actions.empty() && actions.back().tick > recording_.End())
            fields.Complain("inputs", "the last one comes after the end of the recording");
    }

    static constexpr std::uint64_t kLargestClock = 1'000'000'000'000;
    // As many as the longest recording can have.
    static constexpr std::uint64_t kMostSteps = kMostRecordedTicks * kLargestPace;

    Recording recording_;
    std::shared_ptr<const world::WorldMap> map_;
    world::Mistake mistake_;
};

std::vector<std::string> ActionLines(const std::vector<Action>& actions) {
    std::vector<std::string> lines;
    lines.reserve(actions.size());
    for (const Action& action : actions) {
        lines.push_back(FormatAction(action));
    }
    return lines;
}

std::vector<std::string> PieceLines(const std::vector<BytesAt>& pieces) {
    std::vector<std::string> lines;
    lines.reserve(pieces.size());
    for (const BytesAt& piece : pieces) {
        std::string line = std::to_string(piece.address);
        char separator = ' ';
        for (const std::uint8_t byte : piece.bytes) {
            line += std::exchange(separator, ',') + std::to_string(byte);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

/// What is as on a fresh board need not be said.
void AddStart(const Recording& recording, nlohmann::ordered_json& json) {
    if (recording.clock != 0) json["clock"] = recording.clock;
    if (!recording.memory.empty()) json["memory"] = PieceLines(recording.memory);
    if (!recording.eeprom.empty()) json["eeprom"] = PieceLines(recording.eeprom);
    if (recording.sticks == decltype(recording.sticks){}) return;
    std::vector<std::string> lines;
    for (const StickPosition& stick : recording.sticks) {
        lines.push_back(std::to_string(stick.x) + ',' + std::to_string(stick.y));
    }
    json["sticks"] = lines;
}

std::vector<std::string> ProgramLines(const std::vector<std::uint8_t>& program) {
    const std::string text = ObjectText(program);
    const std::vector<std::string_view> lines = SplitLines(text);
    return {lines.begin(), lines.end()};
}

void AddOutcome(const Outcome& outcome, nlohmann::ordered_json& json) {
    const OutputLog& log = outcome.outputs;
    json["steps"] = outcome.steps;
    json["outputs"] = log.lines;
    if (log.more > 0)
        json["moreOutputs"] = {{"count", log.more}, {"digest", FormatDigest(log.digest)}};
}

}  // namespace

LoadedRecording LoadRecording(std::string_view text) {
    return Reader().Read(text);
}

std::string SaveRecording(const Recording& recording) {
    if (recording.actions.size() > kMostActions || recording.ticks > kMostRecordedTicks) return {};
    nlohmann::ordered_json json;
    json["recording"] = kVersion;
    json["program"] = ProgramLines(recording.program);
    if (!recording.source.empty()) json["source"] = recording.source;
    if (!recording.world.empty())
        json["world"] = nlohmann::ordered_json::parse(recording.world, nullptr, true, true);
    json["seed"] = recording.seed;
    if (recording.noise != 0) json["noise"] = recording.noise;
    AddStart(recording, json);
    json["inputs"] = ActionLines(recording.actions);
    json["ticks"] = recording.ticks;
    if (recording.outcome) AddOutcome(*recording.outcome, json);
    return json.dump(1) + '\n';
}

}  // namespace zentro
