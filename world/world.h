#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "world/geometry.h"

namespace zentro::world {

/// The inputs that a world can feed.
enum class InputKind : std::uint8_t { Digital, Button, Analog, Pulses };

struct InputId {
    InputKind kind{};
    std::size_t index = 0;  ///< input 1 is 0

    bool operator==(const InputId&) const = default;
};

struct Floor {
    double width = 240;  ///< the floor has walls round it
    double height = 150;
    double brightness = 225;  ///< what an eye reads over it

    bool operator==(const Floor&) const = default;
};

/// A picture that fills the floor and takes brightness away from it. What lies on the floor is
/// shaded by it too.
struct FloorPicture {
    std::size_t columns = 0;
    /// Of each pixel, 0 (black) to 15 (as bright as the floor), row by row from the upper left
    /// corner; none: there is no picture.
    std::vector<std::uint8_t> shades;

    std::size_t Rows() const { return columns == 0 ? 0 : shades.size() / columns; }
    bool operator==(const FloorPicture&) const = default;
};

/// A dark line: from point to point, or a piece of a circle. Lines of one name belong together.
struct Line {
    std::string name;
    std::vector<Point> points;
    std::optional<Arc> arc;  ///< instead of points
    double width = 8;
    double darkness = 200;  ///< so much less than the floor is read over it

    bool operator==(const Line&) const = default;
};

/// A piece of floor: a rectangle from its lower left corner, or a circle.
struct Area {
    std::string name;
    Point corner;
    Point size;
    double radius = 0;  ///< above 0: a circle round `corner`
    double darkness = 0;

    bool operator==(const Area&) const = default;
};

/// Stands fast; from its lower left corner.
struct Box {
    Point corner;
    Point size;

    bool operator==(const Box&) const = default;
};

struct Lamp {
    Point place;
    double brightness = 200;  ///< what a sensor reads that looks at it from next to it
    double halfAt = 50;       ///< the distance at which that is the half

    bool operator==(const Lamp&) const = default;
};

struct Pose {
    Point place;
    double heading = 0;  ///< radians, anticlockwise from the x direction

    bool operator==(const Pose&) const = default;
};

/// A disc on two wheels.
struct RobotMeasures {
    double radius = 11;
    double wheelDistance = 16;
    double wheelDiameter = 6;
    double fullSpeed = 50;  ///< centimetres in a second at 100 percent

    bool operator==(const RobotMeasures&) const = default;
};

enum class SensorKind : std::uint8_t { Floor, Distance, Light, Bumper, Wheel };

struct Sensor {
    SensorKind kind{};
    InputId input;
    Point place;         ///< on the robot: x ahead of its middle, y to its left
    double heading = 0;  ///< radians, anticlockwise from ahead
    double cone = 0;     ///< radians, the whole width in which it sees or feels
    double range = 100;  ///< of a distance sensor: it reads 0 from there on, and 255 at 0
    bool rightWheel = false;
    double pulses = 20;  ///< of a wheel, in one turn
    double noise = 0;    ///< at most so far from the true reading, if noise is asked for

    bool operator==(const Sensor&) const = default;
};

enum class GoalKind : std::uint8_t { Reach, Follow, Clear };

struct Goal {
    GoalKind kind{};
    std::string target;     ///< the area to reach or the line to follow
    double seconds = 300;   ///< the time for it
    double stand = 0;       ///< seconds to stand still in the area
    double tolerance = 10;  ///< the robot's middle follows a line within so many centimetres

    bool operator==(const Goal&) const = default;
};

/// What stands on a floor and what a robot shall do there. The origin is the floor's lower left
/// corner.
struct World {
    std::string name;
    Floor floor;
    FloorPicture picture;
    std::vector<Line> lines;
    std::vector<Area> areas;
    std::vector<Segment> walls;
    std::vector<Box> boxes;
    std::vector<Lamp> lamps;
    Pose start{{75, 25}, 0};
    RobotMeasures robot;
    std::vector<Sensor> sensors;
    std::vector<Goal> goals;

    bool operator==(const World&) const = default;
};

}  // namespace zentro::world
