#include "apps/zentro-board/world_drive.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>

#include "world/arithmetic.h"
#include "world/goals.h"
#include "world/load_world.h"
#include "world/picture.h"

namespace zentro {

namespace {

constexpr std::uint64_t kTicksBetweenPlaces = 10;
constexpr std::uint64_t kTicksToStand = 100;  // after the end of a program

std::string Shown(double value) {
    std::array<char, 32> text{};
    // 0.0 has no sign that would tell anybody anything.
    std::snprintf(text.data(), text.size(), "%.1f", std::abs(value) < 0.05 ? 0.0 : value);
    return text.data();
}

std::string Seconds(std::uint64_t ticks) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f", static_cast<double>(ticks) / kTicksPerSecond);
    return text.data();
}

}  // namespace

WorldDrive::WorldDrive(world::WorldMap map, std::uint32_t noiseSeed, bool showPlaces)
    : map_(std::move(map)),
      state_(StartState(map_, noiseSeed)),
      showPlaces_(showPlaces),
      way_{state_.robot},
      shown_(map_.world.goals.size()) {}

std::optional<WorldDrive> WorldDrive::Load(std::string_view text, std::uint32_t noiseSeed,
                                           bool showPlaces, std::string& error) {
    world::LoadedWorld loaded = world::LoadWorld(text);
    error = std::move(loaded.error);
    if (!error.empty()) return std::nullopt;
    return WorldDrive(world::MakeMap(std::move(loaded.world)), noiseSeed, showPlaces);
}

void WorldDrive::Hold(const InputChange& change) {
    if (!change.fed) return;
    if (change.letsGo)
        LetGo(state_, *change.fed);
    else
        TakeOver(state_, *change.fed);
}

void WorldDrive::Feed(Board& board) {
    Inputs inputs = board.inputs;
    FeedInputs(map_, state_, inputs);
    if (inputs != board.inputs) SetInputs(board, inputs);
}

void WorldDrive::PassTick(const Board& board) {
    const world::Pose before = state_.robot;
    world::PassTick(map_, state_, board.outputs);
    const bool ended = !board.processor.running;
    standing_ = ended && state_.robot == before ? standing_ + 1 : 0;
    if (state_.tick % kTicksBetweenPlaces == 0) ShowPlace();
    ShowGoals();
}

void WorldDrive::ShowPlace() {
    if (state_.robot == way_.back()) return;
    way_.push_back(state_.robot);
    if (!showPlaces_) return;
    std::cout << state_.tick << " robot " << Shown(state_.robot.place.x) << ' '
              << Shown(state_.robot.place.y) << ' ' << Shown(world::Degrees(state_.robot.heading))
              << '\n';
}

void WorldDrive::ShowGoals() {
    for (std::size_t index = 0; index < shown_.size(); ++index) {
        const world::GoalState& goal = state_.goals[index];
        if (shown_[index] || goal.status == world::GoalStatus::Open) continue;
        shown_[index] = true;
        const bool met = goal.status == world::GoalStatus::Met;
        std::cout << goal.tick << " goal " << index + 1 << (met ? " met: " : " missed: ")
                  << GoalText(map_.world.goals[index]) << '\n';
    }
}

bool WorldDrive::IsOver(const Board& board) const {
    if (!state_.goals.empty() && AllDecided(state_)) return true;
    if (board.processor.running) return false;
    return state_.goals.empty() || standing_ >= kTicksToStand ||
           board.processor.end == EndReason::Fault;
}

bool WorldDrive::GoesOn(const Board& board) const {
    const std::array<Drive, 4>& motors = board.outputs.motors;
    return motors[0].value != 0 || motors[1].value != 0 || !AllDecided(state_);
}

void WorldDrive::End() {
    if (state_.robot != way_.back()) way_.push_back(state_.robot);
    EndGoals(map_, state_);
    ShowGoals();
}

void WorldDrive::PrintVerdict() const {
    std::size_t met = 0;
    for (const world::GoalState& goal : state_.goals) {
        if (goal.status == world::GoalStatus::Met) ++met;
    }
    std::cout << "verdict\t";
    if (state_.goals.empty())
        std::cout << "no goals";
    else
        std::cout << (HasMetItsGoals() ? "passed, " : "failed, ") << met << " of "
                  << state_.goals.size() << " goals met";
    std::cout << " after " << Seconds(state_.tick) << " s\n";
}

bool WorldDrive::HasMetItsGoals() const {
    return AllMet(state_);
}

std::string WorldDrive::Picture() const {
    return PictureOf(map_, way_);
}

}  // namespace zentro
