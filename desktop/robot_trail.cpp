#include "desktop/robot_trail.h"

namespace zentro {

namespace {

constexpr std::size_t kMostPlaces = 5000;
constexpr double kStep = 1.0;     // centimetres
constexpr double kFastest = 2.5;  // centimetres in a tick; who is faster was carried

}  // namespace

void RobotTrail::Clear() {
    if (places_.empty()) return;
    places_.clear();
    ++changes_;
}

void RobotTrail::GoBack(std::uint64_t tick) {
    while (!places_.empty() && places_.back().tick > tick) {
        places_.pop_back();
        ++changes_;
    }
}

void RobotTrail::Follow(const world::WorldState& state) {
    if (state.tick == 0) Clear();
    GoBack(state.tick);
    bool isCarried = places_.empty();
    if (!places_.empty()) {
        const Place& last = places_.back();
        const double way = Length(Minus(state.robot.place, last.point));
        if (way < kStep) return;
        // The last place was left at some time after it was noted.
        const auto ticks = static_cast<double>(state.tick - last.tick);
        isCarried = way > kStep + kFastest * ticks;
    }
    if (places_.size() >= kMostPlaces) places_.pop_front();
    places_.push_back({state.robot.place, state.tick, isCarried});
    ++changes_;
}

std::vector<std::vector<world::Point>> RobotTrail::Pieces() const {
    std::vector<std::vector<world::Point>> pieces;
    for (const Place& place : places_) {
        if (place.afterGap || pieces.empty()) pieces.emplace_back();
        pieces.back().push_back(place.point);
    }
    return pieces;
}

}  // namespace zentro
