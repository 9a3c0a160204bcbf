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
    places_.push_back({state.robot.place, state.tick, isCarried, pen_});
    ++changes_;
}

std::vector<TrailPiece> RobotTrail::Pieces() const {
    std::vector<TrailPiece> pieces;
    const Place* before = nullptr;
    for (const Place& place : places_) {
        const bool begins = before == nullptr || place.afterGap;
        if (begins || place.pen != before->pen) {
            pieces.push_back({place.pen, {}});
            // With another pen it goes on where the one before was put away.
            if (!begins) pieces.back().points.push_back(before->point);
        }
        pieces.back().points.push_back(place.point);
        before = &place;
    }
    std::erase_if(pieces, [](const TrailPiece& piece) { return piece.pen == Pen::None; });
    return pieces;
}

}  // namespace zentro
