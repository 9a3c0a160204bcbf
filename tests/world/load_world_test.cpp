// *.world files: what is read from them, and what is said of those that are wrong.
#include "world/load_world.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

#include "world/arithmetic.h"
#include "world/named_world.h"
#include "world/save_world.h"

namespace zentro::world {
namespace {

std::string WithField(const std::string& field) {
    return R"({"start": {"at": [100, 100]}, )" + field + "}";
}

TEST(LoadWorld, ReadsEveryField) {
    const LoadedWorld loaded = LoadWorld(R"({
        // a remark
        "name": "All",
        "floor": {"width": 300, "height": 200, "brightness": 210},
        "robot": {"radius": 9, "wheelDistance": 14, "wheelDiameter": 5, "fullSpeed": 40},
        "start": {"at": [100, 90], "heading": 90},
        "lines": [{"name": "a", "points": [[1, 2], [3, 4]], "width": 5, "darkness": 150},
                  {"center": [50, 60], "radius": 20, "from": -90, "turn": 180}],
        "areas": [{"name": "b", "corner": [5, 6], "size": [7, 8], "darkness": 40},
                  {"center": [9, 10], "radius": 11}],
        "walls": [{"from": [1, 1], "to": [2, 3]}],
        "boxes": [{"corner": [200, 100], "size": [10, 20]}],
        "lamps": [{"at": [250, 150], "brightness": 100, "halfAt": 30}],
        "sensors": [{"kind": "floor", "input": "analog6", "at": [9, -2], "noise": 3},
                    {"kind": "distance", "input": "analog1", "heading": 45, "cone": 30, "range": 80},
                    {"kind": "light", "input": "analog2", "heading": -45},
                    {"kind": "bumper", "input": "button6", "cone": 180},
                    {"kind": "wheel", "input": "pulses4", "wheel": "right", "pulses": 12}],
        "goals": [{"reach": "b", "stand": 2, "seconds": 30}, {"follow": "a", "tolerance": 5},
                  {"clear": "walls"}]
    })");
    ASSERT_EQ(loaded.error, "");
    World expected;
    expected.name = "All";
    expected.floor = {300, 200, 210};
    expected.robot = {9, 14, 5, 40};
    expected.start = {{100, 90}, kPi / 2};
    expected.lines = {{"a", {{1, 2}, {3, 4}}, {}, 5, 150},
                      {"", {}, Arc{{50, 60}, 20, -kPi / 2, kPi}, 8, 200}};
    expected.areas = {{"b", {5, 6}, {7, 8}, 0, 40}, {"", {9, 10}, {}, 11, 0}};
    expected.walls = {{{1, 1}, {2, 3}}};
    expected.boxes = {{{200, 100}, {10, 20}}};
    expected.lamps = {{{250, 150}, 100, 30}};
    expected.sensors.resize(5);
    expected.sensors[0] = {SensorKind::Floor, {InputKind::Analog, 5}, {9, -2}};
    expected.sensors[0].noise = 3;
    expected.sensors[1] = {SensorKind::Distance, {InputKind::Analog, 0}, {}, kPi / 4, kPi / 6, 80};
    expected.sensors[2] = {SensorKind::Light, {InputKind::Analog, 1}, {}, -kPi / 4};
    expected.sensors[3] = {SensorKind::Bumper, {InputKind::Button, 5}, {}, 0, kPi};
    expected.sensors[4] = {SensorKind::Wheel, {InputKind::Pulses, 3}, {}, 0, 0, 100, true, 12};
    expected.goals = {{GoalKind::Reach, "b", 30, 2, 10},
                      {GoalKind::Follow, "a", 300, 0, 5},
                      {GoalKind::Clear, "", 300, 0, 10}};
    EXPECT_EQ(loaded.world.name, expected.name);
    EXPECT_EQ(loaded.world.floor, expected.floor);
    EXPECT_EQ(loaded.world.robot, expected.robot);
    EXPECT_EQ(loaded.world.start, expected.start);
    EXPECT_EQ(loaded.world.lines, expected.lines);
    EXPECT_EQ(loaded.world.areas, expected.areas);
    EXPECT_EQ(loaded.world.walls, expected.walls);
    EXPECT_EQ(loaded.world.boxes, expected.boxes);
    EXPECT_EQ(loaded.world.lamps, expected.lamps);
    EXPECT_EQ(loaded.world.goals, expected.goals);
    ASSERT_EQ(loaded.world.sensors.size(), expected.sensors.size());
    for (std::size_t index = 0; index < expected.sensors.size(); ++index) {
        EXPECT_EQ(loaded.world.sensors[index], expected.sensors[index]) << index;
    }
}

TEST(LoadWorld, NamesWhatIsWrongAndWhere) {
    struct Case {
        std::string text;
        std::string error;  ///< a part of it
    };
    const Case cases[] = {
        {"", "parse error"},
        {"{\n\n  \"start\": }", "line 3"},
        {"\xFF\xFE", "parse error"},
        {"[1, 2]", "must be an object"},
        {"{}", "start: is missing"},
        {R"({"start": {}})", "start.at: is missing"},
        {R"({"start": {"at": [100]}})", "start.at: must be two numbers"},
        {R"({"start": {"at": [100, "up"]}})", "start.at[1]: must be a number"},
        {R"({"start": {"at": [100, 1000]}})", "start.at[1]: must be from 0 to 150"},
        {R"({"start": {"at": [5, 100]}})", "start: the robot has no room there"},
        {R"({"start": {"at": [100, 100]}, "start": {"at": [90, 90]}})", "\"start\" stands twice"},
        {WithField(R"("flor": {})"), "there is no field \"flor\""},
        {WithField(R"("floor": {"colour": 1})"), "floor: there is no field \"colour\""},
        {WithField(R"("floor": [])"), "floor: must be an object"},
        {WithField(R"("floor": {"width": 1e9})"), "floor.width: must be from 50 to 1000"},
        {WithField(R"("floor": {"width": 1e999})"), "1e999"},
        {WithField(R"("floor": {"width": NaN})"), "parse error"},
        {WithField(R"("floor": {"width": -240})"), "floor.width: must be from"},
        {WithField(R"("floor": {"width": null})"), "floor.width: must be a number"},
        {WithField(R"("picture": "ff")"), "picture: must be a list"},
        {WithField(R"("picture": ["ff"])"), "picture: must have at least 2 rows"},
        {WithField(R"("picture": ["f", "f"])"), "picture[0]: must be 2 to 500 digits"},
        {WithField(R"("picture": [")" + std::string(501, 'f') + R"("])"), "picture[0]: must be 2"},
        {WithField(R"("picture": ["ff", "fff"])"), "picture[1]: must have as many digits"},
        {WithField(R"("picture": ["ff", "0g"])"), "picture[1]: must be digits from 0"},
        {WithField(R"("picture": ["ff", 12])"), "picture[1]: must be a text in quotes"},
        {WithField(R"("robot": {"fullSpeed": 100000})"), "robot.fullSpeed: must be from 1 to 200"},
        {WithField(R"("walls": {})"), "walls: must be a list"},
        {WithField(R"("walls": [{"from": [1, 1], "to": [2, 2]}, 7])"),
         "walls[1]: must be an object"},
        {WithField(R"("walls": [{"from": [1, 1]}])"), "walls[0].to: is missing"},
        {WithField(R"("walls": [{"from": [90, 100], "to": [110, 100]}])"), "start: the robot"},
        {WithField(R"("boxes": [{"corner": [50, 50], "size": [99, 99]}])"), "start: the robot"},
        {WithField(R"("boxes": [{"corner": [50, 50], "size": [0, 9]}])"),
         "boxes[0].size[0]: must be from 0.1 to 1000"},
        {WithField(R"("lines": [{"points": [[1, 1]]}])"), "lines[0].points: must be 2 to 500"},
        {WithField(R"("lines": [{"width": 3}])"), "lines[0].points: a line has either"},
        {WithField(R"("lines": [{"center": [9, 9]}])"), "lines[0].radius: is missing"},
        {WithField(R"("lines": [{"points": [[1, 1], [2, 2]], "radius": 3}])"),
         "lines[0]: there is no field \"radius\""},
        {WithField(R"("areas": [{"name": ""}])"), "areas[0].name: must be 1 to 40 characters"},
        {WithField(R"("sensors": [{"kind": "nose", "input": "analog1"}])"),
         "sensors[0].kind: must be floor, distance, light, bumper or wheel"},
        {WithField(R"("sensors": [{"kind": "floor", "input": "analog7"}])"),
         "sensors[0].input: must be digital1 to 4"},
        {WithField(R"("sensors": [{"kind": "floor", "input": "digital1"}])"),
         "sensors[0].input: that sensor cannot feed digital1"},
        {WithField(R"("sensors": [{"kind": "floor", "input": "analog1"},
                                  {"kind": "light", "input": "analog1"}])"),
         "sensors[1].input: analog1 has another sensor already"},
        {WithField(R"("sensors": [{"kind": "wheel", "input": "pulses1", "wheel": "third"}])"),
         "sensors[0].wheel: must be left or right"},
        {WithField(R"("goals": [{"reach": "nowhere"}])"), "goals[0].reach: there is no area"},
        {WithField(R"("goals": [{"follow": "nothing"}])"), "goals[0].follow: there is no line"},
        {WithField(R"("goals": [{"seconds": 9}])"), "a goal has one of reach, follow and clear"},
        {WithField(R"("goals": [{"clear": "walls", "seconds": 0}])"), "goals[0].seconds"},
    };
    for (const Case& test : cases) {
        EXPECT_THAT(LoadWorld(test.text).error, testing::HasSubstr(test.error)) << test.text;
    }
}

TEST(SaveWorld, WhatIsSavedIsReadAsTheSame) {
    std::size_t worlds = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZENTRO_WORLDS_FOLDER)) {
        std::ifstream stream(entry.path(), std::ios::binary);
        const World world =
            LoadWorld(std::string(std::istreambuf_iterator<char>(stream), {})).world;
        EXPECT_EQ(LoadWorld(SaveWorld(world)).world, world) << entry.path();
        ++worlds;
    }
    EXPECT_GE(worlds, 6U);
    // Every kind of thing, with what is seldom written.
    const World all = LoadWorld(WithField(R"("name": "A \"B\" ü", "robot": {"radius": 5.125},
        "picture": ["0123456789", "fedcba9876", "0f0f0f0f0f"],
        "lines": [{"name": "a", "center": [50, 60], "radius": 20, "from": -90, "turn": 33.3}],
        "areas": [{"center": [9, 10], "radius": 11, "darkness": 3}],
        "lamps": [{"at": [25, 15], "brightness": 100, "halfAt": 30}],
        "sensors": [{"kind": "light", "input": "analog2", "heading": -45.7, "at": [1, 2]},
                    {"kind": "distance", "input": "analog1", "cone": 0, "range": 80, "noise": 2},
                    {"kind": "bumper", "input": "button6", "cone": 180},
                    {"kind": "wheel", "input": "pulses4", "wheel": "right", "pulses": 12}],
        "goals": [{"follow": "a", "tolerance": 5}, {"clear": "walls", "seconds": 7}])"))
                          .world;
    ASSERT_EQ(all.sensors.size(), 4U);
    ASSERT_EQ(all.picture.shades.size(), 30U);
    const World again = LoadWorld(SaveWorld(all)).world;
    EXPECT_EQ(again, all) << SaveWorld(all);
    const World least = LoadWorld(R"({"start": {"at": [50, 50]}})").world;
    EXPECT_EQ(LoadWorld(SaveWorld(least)).error, "") << SaveWorld(least);
}

TEST(NamedWorld, IsACommentBeforeTheFirstStatement) {
    struct Case {
        const char* source;
        const char* name;
    };
    for (const Case& one : std::initializer_list<Case>{
             {"; world: maze.world\nBEGIN PROGRAM\n", "maze.world"},
             {"\xEF\xBB\xBF\r\n  ;a title\r\n\r\n;WORLD:my maze.world \r\n", "my maze.world"},
             {"BEGIN PROGRAM\n; world: maze.world\n", ""},
             {"; the world: is round\n", ""},
             {"; world:", ""},
             {"", ""}}) {
        EXPECT_EQ(WorldNamedIn(one.source), one.name) << one.source;
    }
    EXPECT_EQ(LineOfWorld("; a\n\n; world: b\n"), 2U);
}

TEST(LoadWorld, RefusesHugeFiles) {
    std::string walls = R"("walls": [)";
    for (int wall = 0; wall < 10'000; ++wall)
        walls += R"({"from": [1, 1], "to": [2, 2]},)";
    walls.back() = ']';
    EXPECT_EQ(LoadWorld(WithField(walls)).error, "walls: must have at most 500 entries");
    EXPECT_NE(LoadWorld(std::string(kMostBytes + 1, ' ')).error, "");
    EXPECT_NE(LoadWorld(std::string(500'000, '[')).error, "");
    EXPECT_THAT(
        LoadWorld(WithField(R"("x": )" + std::string(50, '[') + std::string(50, ']'))).error,
        testing::HasSubstr("too many brackets"));
    std::string lines = R"("lines": [)";
    for (int line = 0; line < 300; ++line)
        lines += R"({"points": [[1, 1], [2, 2]]},)";
    lines.back() = ']';
    EXPECT_THAT(LoadWorld(WithField(lines)).error, testing::HasSubstr("all lines together"));
}

TEST(LoadWorld, EveryShippedWorldIsRight) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZENTRO_WORLDS_FOLDER)) {
        std::ifstream stream(entry.path());
        const std::string text(std::istreambuf_iterator<char>(stream), {});
        const LoadedWorld loaded = LoadWorld(text);
        EXPECT_EQ(loaded.error, "") << entry.path();
        EXPECT_FALSE(loaded.world.goals.empty()) << entry.path();
        EXPECT_FALSE(loaded.world.name.empty()) << entry.path();
        ++count;
    }
    EXPECT_EQ(count, 8);
}

}  // namespace
}  // namespace zentro::world
