#pragma once

#include <optional>

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

Point Plus(const Point& a, const Point& b);
Point Minus(const Point& a, const Point& b);
Point Times(const Point& a, double factor);
double Dot(const Point& a, const Point& b);
double Cross(const Point& a, const Point& b);
double Length(const Point& a);

/// The way of length 1 in a direction, in radians anticlockwise from x.
Point Direction(double angle);

/// A way seen from a robot (x ahead, y to its left) as one on the floor.
Point Turned(const Point& way, const Point& ahead);

Point Nearest(const Segment& segment, const Point& to);
double Distance(const Segment& segment, const Point& to);
Sweep MakeSweep(const Arc& arc);
double Distance(const Sweep& sweep, const Point& to);
Point PointOf(const Arc& arc, double angle);

/// How far a ray from `eye` in a direction of length 1 goes until it meets the segment.
std::optional<double> RayLength(const Point& eye, const Point& direction, const Segment& segment);

/// Whether two segments have a point in common.
bool Meet(const Segment& a, const Segment& b);

}  // namespace zentro::world
