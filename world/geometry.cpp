#include "world/geometry.h"

#include <algorithm>
#include <cmath>

#include "world/arithmetic.h"

namespace zentro::world {

Point Direction(double angle) {
    return {Cosine(angle), Sine(angle)};
}

double Distance(const Segment& segment, const Point& to) {
    return Length(Minus(to, Nearest(segment, to)));
}

Point PointOf(const Arc& arc, double angle) {
    return Plus(arc.centre, Times(Direction(angle), arc.radius));
}

Sweep MakeSweep(const Arc& arc) {
    return {arc, Times(Direction(arc.begin), arc.radius),
            Times(Direction(arc.begin + arc.turn), arc.radius)};
}

double Distance(const Sweep& sweep, const Point& to) {
    const Arc& arc = sweep.arc;
    const Point way = Minus(to, arc.centre);
    // Up to half a turn, a point must lie left of the beginning and right of the end; beyond it,
    // one of the two is enough.
    const bool behindBegin = Cross(sweep.begin, way) >= 0;
    const bool beforeEnd = Cross(way, sweep.end) >= 0;
    const bool beside = arc.turn <= kPi ? behindBegin && beforeEnd : behindBegin || beforeEnd;
    if (beside || arc.turn >= 2 * kPi) return std::abs(Length(way) - arc.radius);
    return std::min(Length(Minus(way, sweep.begin)), Length(Minus(way, sweep.end)));
}

bool Meet(const Segment& a, const Segment& b) {
    const Point alongA = Minus(a.to, a.from);
    const Point alongB = Minus(b.to, b.from);
    const double fromB = Cross(alongA, Minus(b.from, a.from));
    const double toB = Cross(alongA, Minus(b.to, a.from));
    const double fromA = Cross(alongB, Minus(a.from, b.from));
    const double toA = Cross(alongB, Minus(a.to, b.from));
    return fromA * toA <= 0 && fromB * toB <= 0 && (fromB != 0 || toB != 0);
}

}  // namespace zentro::world
