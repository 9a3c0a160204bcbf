#include "apps/zentro-board/world_report.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>

#include "world/arithmetic.h"
#include "world/goals.h"

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

WorldReport::WorldReport(Scene& scene, bool showPlaces)
    : scene_(scene),
      showPlaces_(showPlaces),
      way_{scene.state.robot},
      shown_(scene.map->world.goals.size()),
      last_(scene.state.robot) {}

void WorldReport::Look() {
    const bool stands = scene_.state.robot == last_;
    last_ = scene_.state.robot;
    standing_ = !scene_.board.processor.running && stands ? standing_ + 1 : 0;
    if (scene_.state.tick % kTicksBetweenPlaces == 0) ShowPlace();
    ShowGoals();
}

void WorldReport::ShowPlace() {
    if (scene_.state.robot == way_.back()) return;
    way_.push_back(scene_.state.robot);
    if (!showPlaces_) return;
    std::cout << scene_.state.tick << " robot " << Shown(scene_.state.robot.place.x) << ' '
              << Shown(scene_.state.robot.place.y) << ' '
              << Shown(world::Degrees(scene_.state.robot.heading)) << '\n';
}

void WorldReport::ShowGoals() {
    for (std::size_t index = 0; index < shown_.size(); ++index) {
        const world::GoalState& goal = scene_.state.goals[index];
        if (shown_[index] || goal.status == world::GoalStatus::Open) continue;
        shown_[index] = true;
        const bool met = goal.status == world::GoalStatus::Met;
        std::cout << goal.tick << " goal " << index + 1 << (met ? " met: " : " missed: ")
                  << GoalText(scene_.map->world.goals[index]) << '\n';
    }
}

bool WorldReport::IsOver() const {
    if (!scene_.state.goals.empty() && AllDecided(scene_.state)) return true;
    if (scene_.board.processor.running) return false;
    return scene_.state.goals.empty() || standing_ >= kTicksToStand ||
           scene_.board.processor.end == EndReason::Fault;
}

bool WorldReport::GoesOn() const {
    const std::array<Drive, 4>& motors = scene_.board.outputs.motors;
    return motors[0].value != 0 || motors[1].value != 0 || !AllDecided(scene_.state);
}

void WorldReport::End() {
    if (scene_.state.robot != way_.back()) way_.push_back(scene_.state.robot);
    EndGoals(*scene_.map, scene_.state);
    ShowGoals();
}

void WorldReport::PrintVerdict() const {
    std::size_t met = 0;
    for (const world::GoalState& goal : scene_.state.goals) {
        if (goal.status == world::GoalStatus::Met) ++met;
    }
    std::cout << "verdict\t";
    if (scene_.state.goals.empty())
        std::cout << "no goals";
    else
        std::cout << (HasMetItsGoals() ? "passed, " : "failed, ") << met << " of "
                  << scene_.state.goals.size() << " goals met";
    std::cout << " after " << Seconds(scene_.state.tick) << " s\n";
}

bool WorldReport::HasMetItsGoals() const {
    return AllMet(scene_.state);
}

}  // namespace zentro
