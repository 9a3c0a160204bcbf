#include "world/load_world.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "world/arithmetic.h"
#include "world/floor_picture.h"
#include "world/input_names.h"
#include "world/json_fields.h"
#include "world/world_map.h"

namespace zentro::world {

namespace {

constexpr NumberRange kBrightness{0, 255};
constexpr NumberRange kAngle{-360, 360};
constexpr NumberRange kSize{0.1, 1000};
constexpr std::size_t kMostSensors = 16;
constexpr std::size_t kMostGoals = 8;

/// The words of a table's rows: "floor, distance or light".
template <typename Table>
std::string WordsOf(const Table& table) {
    std::string words;
    for (std::size_t index = 0; index < table.size(); ++index) {
        if (index > 0) words += index + 1 == table.size() ? " or " : ", ";
        words += table[index].word;
    }
    return words;
}

std::optional<InputId> InputOf(std::string_view text) {
    for (const InputName& name : kInputNames) {
        if (!text.starts_with(name.word)) continue;
        const std::string_view number = text.substr(name.word.size());
        if (number.size() != 1 || number[0] < '1') continue;
        const auto index = static_cast<std::size_t>(number[0] - '1');
        if (index < name.count) return InputId{name.kind, index};
    }
    return std::nullopt;
}

/// Whether the input is of the kind that such a sensor can feed.
bool Fits(SensorKind sensor, InputKind input) {
    switch (sensor) {
        case SensorKind::Bumper: return input == InputKind::Digital || input == InputKind::Button;
        case SensorKind::Wheel: return input == InputKind::Pulses;
        case SensorKind::Floor:
        case SensorKind::Distance:
        case SensorKind::Light: break;
    }
    return input == InputKind::Analog;
}

/// Whether one of the things has that name (or input).
template <typename Things, typename Name, typename Field>
bool Names(const Things& things, const Name& name, Field field) {
    return std::ranges::find(things, name, field) != things.end();
}

class Reader {
  public:
    LoadedWorld Read(std::string_view text) {
        if (text.size() > kMostBytes) return {{}, "the file is larger than a million bytes"};
        const std::optional<nlohmann::json> json = ParseJson(text, mistake_);
        if (json) ReadAll(*json);
        if (mistake_.Found()) return {{}, mistake_.Text()};
        return {std::move(world_), {}};
    }

  private:
    void ReadAll(const nlohmann::json& json) {
        Fields fields(json, "", mistake_);
        fields.Take("name", world_.name);
        fields.TakeObject("floor", [this](Fields& floor) { ReadFloor(floor); });
        fields.TakeLines("picture", kMostPictureSide,
                         [this](const std::string& row) { return AddRow(world_.picture, row); });
        if (world_.picture.Rows() == 1) fields.Complain("picture", "must have at least 2 rows");
        fields.TakeObject("robot", [this](Fields& robot) { ReadRobot(robot); });
        fields.Require("start");
        fields.TakeObject("start", [this](Fields& start) { ReadStart(start); });
        fields.TakeEach("lines", kMostThings, [this](Fields& line) { ReadLine(line); });
        fields.TakeEach("areas", kMostThings, [this](Fields& area) { ReadArea(area); });
        fields.TakeEach("walls", kMostThings, [this](Fields& wall) { ReadWall(wall); });
        fields.TakeEach("boxes", kMostThings, [this](Fields& box) { ReadBox(box); });
        fields.TakeEach("lamps", kMostThings, [this](Fields& lamp) { ReadLamp(lamp); });
        fields.TakeEach("sensors", kMostSensors, [this](Fields& sensor) { ReadSensor(sensor); });
        fields.TakeEach("goals", kMostGoals, [this](Fields& goal) { ReadGoal(goal); });
        fields.End();
        if (!mistake_.Found() && !IsFree(MakeMap(world_), world_.start.place))
            mistake_.Note("start", "the robot has no room there");
    }

    NumberRange Across() const { return {0, world_.floor.width}; }
    NumberRange Along() const { return {0, world_.floor.height}; }

    void TakeAngle(Fields& fields, std::string_view name, double& radians, NumberRange range) {
        if (!fields.Has(name)) return;
        double degrees = 0;
        fields.Take(name, degrees, range);
        radians = Radians(degrees);
    }

    void ReadFloor(Fields& fields) {
        constexpr NumberRange kFloor{50, 1000};
        fields.Take("width", world_.floor.width, kFloor);
        fields.Take("height", world_.floor.height, kFloor);
        fields.Take("brightness", world_.floor.brightness, kBrightness);
    }

    void ReadRobot(Fields& fields) {
        fields.Take("radius", world_.robot.radius, {4, 20});
        fields.Take("wheelDistance", world_.robot.wheelDistance, {4, 40});
        fields.Take("wheelDiameter", world_.robot.wheelDiameter, {1, 20});
        // Not so fast that it could be through a wall within a tick.
        fields.Take("fullSpeed", world_.robot.fullSpeed, {1, 200});
    }

    void ReadStart(Fields& fields) {
        fields.Require("at");
        fields.Take("at", world_.start.place, Across(), Along());
        TakeAngle(fields, "heading", world_.start.heading, kAngle);
        world_.start.heading = Unwound(world_.start.heading);
    }

    void ReadLine(Fields& fields) {
        Line line;
        fields.Take("name", line.name);
        fields.Take("width", line.width, {0.1, 100});
        fields.Take("darkness", line.darkness, kBrightness);
        if (fields.Has("center") == fields.Has("points"))
            fields.Complain("points", "a line has either points or a center with a radius");
        if (fields.Has("center")) {
            Arc arc{{}, 0, 0, 2 * kPi};
            fields.Require("radius");
            fields.Take("center", arc.centre, Across(), Along());
            fields.Take("radius", arc.radius, kSize);
            TakeAngle(fields, "from", arc.begin, kAngle);
            TakeAngle(fields, "turn", arc.turn, {1, 360});
            line.arc = arc;
        }
        fields.Take("points", line.points, Across(), Along(), kMostThings);
        strokes_ += line.points.size();
        if (strokes_ > kMostThings)
            fields.Complain("points", "all lines together must have at most " +
                                          std::to_string(kMostThings) + " points");
        world_.lines.push_back(std::move(line));
    }

    void ReadArea(Fields& fields) {
        Area area;
        fields.Take("name", area.name);
        fields.Take("darkness", area.darkness, kBrightness);
        if (fields.Has("center") == fields.Has("corner"))
            fields.Complain("corner",
                            "an area has either a corner with a size or a center with a radius");
        if (fields.Has("center")) {
            fields.Require("radius");
            fields.Take("center", area.corner, Across(), Along());
            fields.Take("radius", area.radius, kSize);
        } else {
            ReadRectangle(fields, area.corner, area.size);
        }
        world_.areas.push_back(std::move(area));
    }

    void ReadRectangle(Fields& fields, Point& corner, Point& size) {
        fields.Require("corner");
        fields.Require("size");
        fields.Take("corner", corner, Across(), Along());
        fields.Take("size", size, kSize, kSize);
    }

    void ReadWall(Fields& fields) {
        Segment wall;
        fields.Require("from");
        fields.Require("to");
        fields.Take("from", wall.from, Across(), Along());
        fields.Take("to", wall.to, Across(), Along());
        world_.walls.push_back(wall);
    }

    void ReadBox(Fields& fields) {
        Box box;
        ReadRectangle(fields, box.corner, box.size);
        world_.boxes.push_back(box);
    }

    void ReadLamp(Fields& fields) {
        Lamp lamp;
        fields.Require("at");
        fields.Take("at", lamp.place, Across(), Along());
        fields.Take("brightness", lamp.brightness, kBrightness);
        fields.Take("halfAt", lamp.halfAt, kSize);
        world_.lamps.push_back(lamp);
    }

    void ReadSensor(Fields& fields) {
        Sensor sensor;
        std::string word;
        fields.Require("kind");
        fields.Take("kind", word);
        const auto* found = std::ranges::find(kSensorNames, word, &SensorName::word);
        if (found == kSensorNames.end()) {
            fields.Complain("kind", "must be " + WordsOf(kSensorNames));
            return;
        }
        sensor.kind = found->kind;
        sensor.cone = Radians(found->cone);
        ReadInput(fields, sensor);
        ReadSensorDetails(fields, sensor);
        world_.sensors.push_back(sensor);
    }

    void ReadInput(Fields& fields, Sensor& sensor) {
        std::string word;
        fields.Require("input");
        fields.Take("input", word);
        const std::optional<InputId> input = InputOf(word);
        if (!input) {
            fields.Complain("input",
                            "must be digital1 to 4, button1 to 6, analog1 to 6 or "
                            "pulses1 to 4");
            return;
        }
        sensor.input = *input;
        if (!Fits(sensor.kind, input->kind))
            fields.Complain("input", "that sensor cannot feed " + word);
        if (Names(world_.sensors, *input, &Sensor::input))
            fields.Complain("input", word + " has another sensor already");
    }

    void ReadSensorDetails(Fields& fields, Sensor& sensor) {
        if (sensor.kind == SensorKind::Wheel) {
            std::string wheel;
            fields.Require("wheel");
            fields.Take("wheel", wheel);
            if (wheel != "left" && wheel != "right")
                fields.Complain("wheel", "must be left or right");
            sensor.rightWheel = wheel == "right";
            fields.Take("pulses", sensor.pulses, {1, 1000});
            return;
        }
        if (sensor.kind != SensorKind::Floor) TakeAngle(fields, "heading", sensor.heading, kAngle);
        if (sensor.kind == SensorKind::Bumper || sensor.kind == SensorKind::Distance)
            TakeAngle(fields, "cone", sensor.cone, {0, 360});
        if (sensor.kind == SensorKind::Distance) fields.Take("range", sensor.range, {1, 1000});
        if (sensor.kind == SensorKind::Bumper) return;
        constexpr NumberRange kOnRobot{-30, 30};
        fields.Take("at", sensor.place, kOnRobot, kOnRobot);
        fields.Take("noise", sensor.noise, {0, 100});
    }

    void ReadGoal(Fields& fields) {
        constexpr double kMostSeconds = 3600;
        Goal goal;
        const int kinds = fields.Has("reach") + fields.Has("follow") + fields.Has("clear");
        if (kinds != 1) fields.Complain("reach", "a goal has one of reach, follow and clear");
        fields.Take("seconds", goal.seconds, {1, kMostSeconds});
        if (fields.Has("reach")) {
            goal.kind = GoalKind::Reach;
            fields.Take("reach", goal.target);
            fields.Take("stand", goal.stand, {0, kMostSeconds});
            if (!Names(world_.areas, goal.target, &Area::name))
                fields.Complain("reach", "there is no area of that name");
        } else if (fields.Has("follow")) {
            goal.kind = GoalKind::Follow;
            fields.Take("follow", goal.target);
            fields.Take("tolerance", goal.tolerance, {1, 100});
            if (!Names(world_.lines, goal.target, &Line::name))
                fields.Complain("follow", "there is no line of that name");
        } else {
            goal.kind = GoalKind::Clear;
            std::string of;
            fields.Take("clear", of);
            if (of != "walls") fields.Complain("clear", "must be walls");
        }
        world_.goals.push_back(std::move(goal));
    }

    World world_;
    Mistake mistake_;
    std::size_t strokes_ = 0;  ///< points of all lines so far
};

}  // namespace

LoadedWorld LoadWorld(std::string_view text) {
    return Reader().Read(text);
}

}  // namespace zentro::world
