#include "world/save_world.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <vector>

#include "world/arithmetic.h"
#include "world/floor_picture.h"
#include "world/input_names.h"

namespace zentro::world {

namespace {

using Json = nlohmann::ordered_json;

/// As people write it: an angle that was read as 45 degrees is not 45.00000000000001.
double Rounded(double value) {
    constexpr double kParts = 1e6;
    return std::round(value * kParts) / kParts;
}

Json Angle(double radians) {
    return Rounded(Degrees(radians));
}

Json At(const Point& point) {
    return {Rounded(point.x), Rounded(point.y)};
}

void AddName(Json& thing, const std::string& name) {
    if (!name.empty()) thing["name"] = name;
}

Json Saved(const Floor& floor) {
    return {{"width", Rounded(floor.width)},
            {"height", Rounded(floor.height)},
            {"brightness", Rounded(floor.brightness)}};
}

/// A row of a picture.
Json Saved(const std::string& row) {
    return row;
}

Json Saved(const RobotMeasures& robot) {
    return {{"radius", Rounded(robot.radius)},
            {"wheelDistance", Rounded(robot.wheelDistance)},
            {"wheelDiameter", Rounded(robot.wheelDiameter)},
            {"fullSpeed", Rounded(robot.fullSpeed)}};
}

Json Saved(const Line& line) {
    Json saved = Json::object();
    AddName(saved, line.name);
    if (line.arc) {
        saved["center"] = At(line.arc->centre);
        saved["radius"] = Rounded(line.arc->radius);
        saved["from"] = Angle(line.arc->begin);
        saved["turn"] = Angle(line.arc->turn);
    } else {
        saved["points"] = Json::array();
        for (const Point& point : line.points)
            saved["points"].push_back(At(point));
    }
    saved["width"] = Rounded(line.width);
    saved["darkness"] = Rounded(line.darkness);
    return saved;
}

Json Saved(const Area& area) {
    Json saved = Json::object();
    AddName(saved, area.name);
    if (area.radius > 0) {
        saved["center"] = At(area.corner);
        saved["radius"] = Rounded(area.radius);
    } else {
        saved["corner"] = At(area.corner);
        saved["size"] = At(area.size);
    }
    saved["darkness"] = Rounded(area.darkness);
    return saved;
}

Json Saved(const Segment& wall) {
    return {{"from", At(wall.from)}, {"to", At(wall.to)}};
}

Json Saved(const Box& box) {
    return {{"corner", At(box.corner)}, {"size", At(box.size)}};
}

Json Saved(const Lamp& lamp) {
    return {{"at", At(lamp.place)},
            {"brightness", Rounded(lamp.brightness)},
            {"halfAt", Rounded(lamp.halfAt)}};
}

Json Saved(const Sensor& sensor) {
    Json saved{{"kind", WordFor(sensor.kind)}, {"input", WordFor(sensor.input)}};
    if (sensor.kind == SensorKind::Wheel) {
        saved["wheel"] = sensor.rightWheel ? "right" : "left";
        saved["pulses"] = Rounded(sensor.pulses);
        return saved;
    }
    if (sensor.kind != SensorKind::Bumper) saved["at"] = At(sensor.place);
    if (sensor.kind != SensorKind::Floor) saved["heading"] = Angle(sensor.heading);
    if (sensor.kind == SensorKind::Bumper || sensor.kind == SensorKind::Distance)
        saved["cone"] = Angle(sensor.cone);
    if (sensor.kind == SensorKind::Distance) saved["range"] = Rounded(sensor.range);
    if (sensor.noise > 0) saved["noise"] = Rounded(sensor.noise);
    return saved;
}

Json Saved(const Goal& goal) {
    Json saved = Json::object();
    switch (goal.kind) {
        case GoalKind::Reach:
            saved["reach"] = goal.target;
            if (goal.stand > 0) saved["stand"] = Rounded(goal.stand);
            break;
        case GoalKind::Follow:
            saved["follow"] = goal.target;
            saved["tolerance"] = Rounded(goal.tolerance);
            break;
        case GoalKind::Clear: saved["clear"] = "walls"; break;
    }
    saved["seconds"] = Rounded(goal.seconds);
    return saved;
}

/// A line for each thing, so that a person can read the file and change it.
class Writer {
  public:
    void Add(const std::string& name, const Json& value) {
        Begin(name);
        text_ += value.dump();
    }

    template <typename Thing>
    void AddEach(const std::string& name, const std::vector<Thing>& things) {
        if (things.empty()) return;
        Begin(name);
        const char* before = "[\n    ";
        for (const Thing& thing : things) {
            text_ += before + Saved(thing).dump();
            before = ",\n    ";
        }
        text_ += "\n  ]";
    }

    std::string Text() const { return text_ + "\n}\n"; }

  private:
    void Begin(const std::string& name) {
        text_ += (text_.size() > 1 ? ",\n  \"" : "\n  \"") + name + "\": ";
    }

    std::string text_ = "{";
};

}  // namespace

std::string SaveWorld(const World& world) {
    Writer writer;
    if (!world.name.empty()) writer.Add("name", world.name);
    writer.Add("floor", Saved(world.floor));
    writer.AddEach("picture", RowsOf(world.picture));
    if (world.robot != RobotMeasures{}) writer.Add("robot", Saved(world.robot));
    writer.Add("start", {{"at", At(world.start.place)}, {"heading", Angle(world.start.heading)}});
    writer.AddEach("lines", world.lines);
    writer.AddEach("areas", world.areas);
    writer.AddEach("walls", world.walls);
    writer.AddEach("boxes", world.boxes);
    writer.AddEach("lamps", world.lamps);
    writer.AddEach("sensors", world.sensors);
    writer.AddEach("goals", world.goals);
    return writer.Text();
}

}  // namespace zentro::world
