#include "recording/recording.h"

#include <algorithm>
#include <utility>

#include "board/loader.h"
#include "recording/player.h"

namespace zentro {

namespace {

void TakeOutputs(Board& board, OutputLog& log) {
    for (const OutputChange& change : TakeChanges(board)) {
        log.Add(change);
    }
    TakeOutput(board);
}

}  // namespace

std::vector<std::uint8_t> ProgramOf(const Board& board) {
    std::vector<std::uint8_t> program;
    program.reserve(board.processor.programSize);
    for (std::uint32_t address = 0; address < board.processor.programSize; ++address) {
        program.push_back(board.memory.Byte(address));
    }
    return program;
}

std::string ObjectText(const std::vector<std::uint8_t>& program) {
    constexpr std::size_t kInLine = 16;
    std::string text;
    for (std::size_t index = 0; index < program.size(); ++index) {
        if (index > 0) text += index % kInLine == 0 ? '\n' : ',';
        text += std::to_string(program[index]);
    }
    return text;
}

void Prepare(const Recording& recording, std::shared_ptr<const world::WorldMap> map, Scene& scene) {
    scene = {};
    LoadObjectText(scene.board, ObjectText(recording.program));
    Board& board = scene.board;
    board.random = recording.seed;
    board.clock = recording.clock;
    board.devices.stickRest = recording.sticks;
    for (const BytesAt& piece : recording.memory) {
        for (std::size_t index = 0; index < piece.bytes.size(); ++index)
            board.memory.StoreByte(piece.address + static_cast<std::uint32_t>(index),
                                   piece.bytes[index]);
    }
    for (const BytesAt& piece : recording.eeprom) {
        std::ranges::copy(piece.bytes, board.eeprom.begin() + piece.address);
    }
    EnterWorld(scene, std::move(map), recording.noise);
}

Outcome Replay(const Recording& recording, Scene& scene, std::uint64_t mostTicks) {
    Outcome outcome;
    Player player(recording.actions);
    const auto run = [&scene, &outcome](std::uint64_t budget) {
        RunInstructions(scene.board, budget);
        TakeOutputs(scene.board, outcome.outputs);
    };
    for (std::uint64_t tick = 0; tick <= mostTicks; ++tick) {
        player.BeginTick(scene, run);
        TakeOutputs(scene.board, outcome.outputs);  // of what was done to it
        if (tick >= recording.ticks) break;
        run(player.Pace());
        PassTick(scene);
        TakeOutputs(scene.board, outcome.outputs);
    }
    outcome.steps = scene.board.processor.steps;
    return outcome;
}

std::string Difference(const Outcome& recorded, const Outcome& replayed) {
    std::string difference = Difference(recorded.outputs, replayed.outputs);
    if (!difference.empty() || recorded.steps == replayed.steps) return difference;
    return "it took " + std::to_string(recorded.steps) +
           " instructions when it was recorded, and takes " + std::to_string(replayed.steps) +
           " now";
}

}  // namespace zentro
