#pragma once

#include <algorithm>
#include <cmath>

namespace zentro::world {

/// A place or a way, in centimetres: x to the right, y to the front.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

struct Segment {
    Point from;
    Point to;

    bool operator==(const Segment&) const = default;
};

/// A piece of a circle, anticlockwise from `begin`; angles in radians.
struct Arc {
    Point centre;
    double radius = 0;
    double begin = 0;
    double turn = 0;  ///< above 0, at most 2 pi

    bool operator==(const Arc&) const = default;
};

/// An arc with the ways from its centre to its ends, worked out once.
struct Sweep {
    Arc arc;
    Point begin;
    Point end;
};

static inline Point Plus(const Point& a, const Point& b) {
    return {a.x + b.x, a.y + b.y};
}

static inline Point Minus(const Point& a, const Point& b) {
    return {a.x - b.x, a.y - b.y};
}

static inline Point Times(const Point& a, double factor) {
    return {a.x * factor, a.y * factor};
}

static inline double Dot(const Point& a, const Point& b) {
    return a.x * b.x + a.y * b.y;
}

static inline double Cross(const Point& a, const Point& b) {
    return a.x * b.y - a.y * b.x;
}

static inline double Length(const Point& a) {
    return std::sqrt(Dot(a, a));
}

/// A way seen from a robot (x ahead, y to its left) as one on the floor.
static inline Point Turned(const Point& way, const Point& ahead) {
    return {way.x * ahead.x - way.y * ahead.y, way.x * ahead.y + way.y * ahead.x};
}

static inline Point Nearest(const Segment& segment, const Point& to) {
    const Point along = Minus(segment.to, segment.from);
    const double square = Dot(along, along);
    if (square == 0) return segment.from;
    const double share = Dot(Minus(to, segment.from), along) / square;
    return Plus(segment.from, Times(along, std::clamp(share, 0.0, 1.0)));
}

/// How far a ray from `eye` in a direction of length 1 goes until it meets the segment; `most` if
/// it does not before.
static inline double RayLength(const Point& eye, const Point& direction, const Segment& segment,
                               double most) {
    const Point along = Minus(segment.to, segment.from);
    const Point way = Minus(segment.from, eye);
    double across = Cross(direction, along);
    double share = Cross(way, direction);
    double length = Cross(way, along);
    if (across < 0) {
        across = -across;
        share = -share;
        length = -length;
    }
    // Divided last, since most rays meet nothing.
    if (share < 0 || share > across || length < 0 || length >= most * across) return most;
    return length / across;
}

/// The way of length 1 in a direction, in radians anticlockwise from x.
Point Direction(double angle);

double Distance(const Segment& segment, const Point& to);
Sweep MakeSweep(const Arc& arc);
double Distance(const Sweep& sweep, const Point& to);
Point PointOf(const Arc& arc, double angle);

/// Whether two segments have a point in common.
bool Meet(const Segment& a, const Segment& b);

}  // namespace zentro::world
