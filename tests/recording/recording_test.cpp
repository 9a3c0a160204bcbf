// *.recording files: what is read from them, what is said of those that are wrong, and runs that
// are done again.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>

#include "recording/recording_file.h"

namespace zentro {
namespace {

using testing::HasSubstr;

// READ ANALOG INPUT 1, [15]; DISPLAY NUMBER [15]; WAIT [13] = 10; JUMP 0.
constexpr const char* kLook = R"("program": ["32,1,0,15", "39,0,15,70, 0,13", "53,0,0,0,10,0"])";
constexpr const char* kWorld = R"("world": {"name": "Café", "start": {"at": [20.125, 75]},
    "sensors": [{"kind": "floor", "input": "analog1", "noise": 9}]})";

std::string With(const std::string& fields) {
    return std::string(R"({"recording": 1, "ticks": 90, )") + kLook + ", " + fields + "}";
}

std::string ErrorOf(const std::string& text) {
    return LoadRecording(text).error;
}

TEST(Recording, ReadsEveryField) {
    const LoadedRecording loaded = LoadRecording(With(std::string(kWorld) + R"(, "seed": 7,
        "noise": 4294967295,
        "inputs": ["0 analog1 77", "5 pace 3", "5 step 0", "40 analog1 world",
                   "90 battery 200"],   // a remark
        "steps": 27, "outputs": ["0 display 77", "40 display 225"],
        "moreOutputs": {"count": 3, "digest": "00ff00000000000A"})"));
    ASSERT_EQ(loaded.error, "");
    const Recording& recording = loaded.recording;
    EXPECT_EQ(recording.program,
              (std::vector<std::uint8_t>{32, 1, 0, 15, 39, 0, 15, 70, 0, 13, 53, 0, 0, 0, 10, 0}));
    EXPECT_EQ(loaded.map->world.name, "Café");
    EXPECT_EQ(loaded.map->world.start.place.x, 20.125);
    EXPECT_EQ(recording.seed, 7U);
    EXPECT_EQ(recording.noise, 4294967295U);
    EXPECT_EQ(recording.ticks, 90U);
    const InputPlace analog1{InputField::Analog, 0};
    const std::vector<Action> actions{{0, ActionKind::SetInput, analog1, 77},
                                      {5, ActionKind::Pace, {}, 3},
                                      {5, ActionKind::Step, {}, 0},
                                      {40, ActionKind::LetGo, analog1, 0},
                                      {90, ActionKind::SetInput, {InputField::Battery, 0}, 200}};
    EXPECT_EQ(recording.actions, actions);
    ASSERT_TRUE(recording.outcome);
    EXPECT_EQ(recording.outcome->steps, 27U);
    EXPECT_THAT(recording.outcome->outputs.lines,
                testing::ElementsAre("0 display 77", "40 display 225"));
    EXPECT_EQ(recording.outcome->outputs.more, 3U);
    EXPECT_EQ(recording.outcome->outputs.digest, 0x00ff00000000000AU);

    const LoadedRecording again = LoadRecording(SaveRecording(recording));
    ASSERT_EQ(again.error, "");
    EXPECT_EQ(again.map->world, loaded.map->world);
    Recording same = again.recording;
    same.world = recording.world;  // the fields may come in another order
    EXPECT_EQ(same, recording);
}

TEST(Recording, SaysWhatAUsedBoardHadAndWhatElseHandsDid) {
    const LoadedRecording loaded = LoadRecording(With(std::string(kWorld) + R"(, "clock": 1234,
        "memory": ["1000 1,2", "32767 9"], "eeprom": ["0 7", "254 8, 9"], "sticks": ["1,2", "130,255"],
        "inputs": ["1234 receive 65", "1240 robot 20.1,30,0.1", "1250 robot start",
                   "1260 stop program", "1324 stop all"])"));
    ASSERT_EQ(loaded.error, "");
    const LoadedRecording again = LoadRecording(SaveRecording(loaded.recording));
    ASSERT_EQ(again.error, "");
    EXPECT_EQ(again.recording.actions, loaded.recording.actions);
    EXPECT_EQ(again.recording.eeprom, loaded.recording.eeprom);
    auto scene = std::make_unique<Scene>();
    Prepare(again.recording, again.map, *scene);
    EXPECT_EQ(scene->board.clock, 1234U);
    EXPECT_EQ(scene->board.memory.Byte(1001), 2);
    EXPECT_EQ(scene->board.memory.Byte(32767), 9);
    EXPECT_EQ(scene->board.eeprom[0], 7);
    EXPECT_EQ(scene->board.eeprom[1], 255);
    EXPECT_EQ(scene->board.eeprom[255], 9);
    EXPECT_EQ(scene->board.devices.stickRest[1], (StickPosition{130, 255}));
    Replay(again.recording, *scene, 16);  // to the tick in which the robot is at its start again
    EXPECT_EQ(scene->board.clock, 1251U);
    EXPECT_EQ(scene->state.robot, again.map->world.start);
    Prepare(again.recording, again.map, *scene);
    Replay(again.recording, *scene, 10);
    EXPECT_EQ(scene->state.robot.place, (world::Point{20.1, 30}));
    EXPECT_EQ(scene->state.robot.heading, 0.1);
    EXPECT_TRUE(scene->board.processor.running);
    Prepare(again.recording, again.map, *scene);
    Replay(again.recording, *scene, 90);
    EXPECT_EQ(scene->board.clock, 1324U);
    EXPECT_EQ(scene->board.processor.end, EndReason::Stopped);
    EXPECT_EQ(scene->board.outputs, Outputs{});
}

/// The shortest text of a number is read as that number.
TEST(Recording, PlacesOfRobotsLoseNoBit) {
    for (const double number : {0.1, 1.0 / 3, -2.5e-9, 87'654.321, 3.141592653589793}) {
        Action action{7, ActionKind::PlaceRobot};
        action.robot = {{number, -number}, number / 7};
        std::string error;
        EXPECT_EQ(ParseAction(FormatAction(action), error), action) << FormatAction(action);
    }
}

TEST(Recording, NamesWhatIsWrongAndWhere) {
    struct Case {
        std::string text;
        std::string error;  ///< a part of it
    };
    const std::string tooLong = std::string(kMostRecordingBytes + 1, ' ');
    std::string many = R"("inputs": [)";
    for (std::size_t count = 0; count <= kMostActions; ++count) {
        many += R"("1 battery 1",)";
    }
    many.back() = ']';
    const Case cases[] = {
        {"", "parse error"},
        {tooLong, "larger than 20 million bytes"},
        {"{}", "recording: is missing"},
        {R"({"recording": 2, "ticks": 1, "program": ["5"]})", "recording: this program reads"},
        {R"({"recording": 1, "ticks": 1})", "program: is missing"},
        {R"({"recording": 1, "program": ["5"]})", "ticks: is missing"},
        {R"({"recording": 1, "ticks": 1, "program": []})", "program: there is no program"},
        {R"({"recording": 1, "ticks": 1, "program": "5"})", "program: must be a list"},
        {R"({"recording": 1, "ticks": 1, "program": [5]})", "program[0]: must be a text"},
        {R"({"recording": 1, "ticks": 1, "program": ["5", "1,256"]})", "program[1]: must be num"},
        {R"({"recording": 1, "ticks": 1, "program": ["5,"]})", "program[0]: must be numbers"},
        {R"({"recording": 1, "ticks": 1, "program": ["5\n6"]})", "program[0]: must be numbers"},
        {R"({"recording": 1, "ticks": -1, "program": ["5"]})", "ticks: must be a whole number"},
        {R"({"recording": 1, "ticks": 1.5, "program": ["5"]})", "ticks: must be a whole number"},
        {R"({"recording": 1, "ticks": 8640001, "program": ["5"]})", "from 0 to 8640000"},
        {With(R"("seed": 4294967296)"), "seed: must be a whole number from 0 to 4294967295"},
        {With(R"("seed": "x")"), "seed: must be a whole number"},
        {With(R"("noise": 3)"), "noise: without a world"},
        {With(R"("world": [])"), "world: must be an object"},
        {With(R"("world": {"start": {"at": [1, 1]}})"), "world: start: the robot has no room"},
        {With(R"("world": {})"), "world: start: is missing"},
        {With(R"("input": [])"), "there is no field \"input\""},
        {With(R"("inputs": ["1 analog9 1"])"), "inputs[0]: there is no input analog9"},
        {With(R"("inputs": ["1 analog1 256"])"), "inputs[0]: analog1 must be a number from 0"},
        {With(R"("inputs": ["1 battery world"])"), "inputs[0]: battery must be a number"},
        {With(R"("inputs": ["1 pace 100001"])"), "inputs[0]: pace must be a number from 0 to 1"},
        {With(R"("inputs": ["1 robot 1,2"])"), "inputs[0]: a robot is put to its start, or to x,"},
        {With(R"("inputs": ["1 robot 1,nan,2"])"), "inputs[0]: a robot is put"},
        {With(R"("inputs": ["1 robot 1,2,1e9"])"), "inputs[0]: a robot is put"},
        {With(R"("inputs": ["1 stop motors"])"), "inputs[0]: there is no input stop"},
        {With(R"("inputs": ["1 receive 256"])"), "inputs[0]: receive must be a number from 0"},
        {With(R"("clock": -1)"), "clock: must be a whole number"},
        {With(R"("clock": 9, "inputs": ["100 battery 1"])"), "inputs: the last one comes after"},
        {With(R"("eeprom": ["255 1,2"])"), "eeprom[0]: must be an address, a blank, and bytes"},
        {With(R"("eeprom": ["256 1"])"), "eeprom[0]: must be"},
        {With(R"("memory": ["7"])"), "memory[0]: must be an address"},
        {With(R"("memory": ["7 256"])"), "memory[0]: must be an address"},
        {With(R"("sticks": ["1,2,3"])"), "sticks[0]: must be two numbers from 0 to 255"},
        {With(R"("sticks": ["1,2", "1,2", "1,2"])"), "sticks: must have at most 2"},
        {With(R"("inputs": ["2 battery 1", "1 battery 1"])"), "inputs[1]: stands behind a later"},
        {With(R"("inputs": ["91 battery 1"])"), "inputs: the last one comes after the end"},
        {With(many), "inputs: must have at most 100000 entries"},
        {With(R"("outputs": ["0 display 7"])"), "steps: is missing"},
        {With(R"("steps": 1)"), "there is no field \"steps\""},
        {With(R"("steps": 1, "outputs": [""])"), "outputs[0]: must be an output"},
        {With(R"("steps": 1, "outputs": ["\u001b"])"), "outputs[0]: must be an output"},
        {With(R"("steps": 1, "outputs": [], "moreOutputs": {"count": 1})"),
         "moreOutputs.digest: is missing"},
        {With(R"("steps": 1, "outputs": [], "moreOutputs": {"count": 1, "digest": "xyz"})"),
         "moreOutputs.digest: must be 16 hexadecimal digits"},
    };
    for (const Case& wrong : cases) {
        EXPECT_THAT(ErrorOf(wrong.text), HasSubstr(wrong.error)) << wrong.text.substr(0, 200);
    }
}

TEST(Recording, CutOrDamagedAnywhereItIsRefusedOrReplayed) {
    const LoadedRecording whole = LoadRecording(With(std::string(kWorld) + R"(, "noise": 3,
        "inputs": ["5 analog1 9"], "steps": 30, "outputs": ["0 display 216"],
        "moreOutputs": {"count": 3, "digest": "00ff00000000000a"})"));
    ASSERT_EQ(whole.error, "");
    const std::string text = SaveRecording(whole.recording);
    const std::size_t end = text.rfind('}');
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_EQ(ErrorOf(text.substr(0, length)).empty(), length > end) << length;
        for (const char damage : {'"', '{', '9', ' ', '\0', '\xFF'}) {
            std::string damaged = text;
            damaged[length] = damage;
            const LoadedRecording loaded = LoadRecording(damaged);
            if (!loaded.error.empty()) continue;
            Scene scene;
            Prepare(loaded.recording, loaded.map, scene);
            Replay(loaded.recording, scene, 20);
        }
    }
}

TEST(Recording, ReplaysHandsPacesAndSteps) {
    const LoadedRecording loaded = LoadRecording(With(std::string(kWorld) + R"(,
        "inputs": ["0 analog1 77", "15 analog1 88", "35 analog1 world", "41 pace 1",
                   "90 analog1 5", "90 step 1", "90 analog1 6", "90 step 1"])"));
    ASSERT_EQ(loaded.error, "");
    EXPECT_FALSE(loaded.recording.outcome);
    auto scene = std::make_unique<Scene>();
    Prepare(loaded.recording, loaded.map, *scene);
    const Outcome outcome = Replay(loaded.recording, *scene, kMostRecordedTicks);
    EXPECT_EQ(scene->board.clock, 90U);
    EXPECT_THAT(outcome.outputs.lines, testing::ElementsAre("0 display 77", "20 display 88",
                                                            "40 display 225", "90 display 5"))
        << "held by a hand before the program starts, let go, read before the last change";

    // Once more: nothing of the former run is left.
    Prepare(loaded.recording, loaded.map, *scene);
    EXPECT_EQ(Replay(loaded.recording, *scene, kMostRecordedTicks), outcome);
    Recording recording = loaded.recording;
    recording.outcome = outcome;
    EXPECT_EQ(Difference(*recording.outcome, outcome), "");
    recording.outcome->steps += 1;
    EXPECT_THAT(Difference(*recording.outcome, outcome), HasSubstr("instructions"));
}

TEST(Recording, TellsWhereOutputsPart) {
    const OutputChange lit{.tick = 7, .kind = OutputKind::Led, .number = 1, .value = 1};
    OutputChange dark = lit;
    dark.value = 0;
    OutputLog a;
    OutputLog b;
    a.Add(lit);
    EXPECT_EQ(Difference(a, b),
              "output 1 was \"7 leftled 1\" when it was recorded, and is nothing "
              "now");
    b.Add(dark);
    EXPECT_THAT(Difference(a, b), HasSubstr("and is \"7 leftled 0\" now"));

    // Behind the lines that are kept every one counts, and their order.
    a = b = {};
    for (std::size_t count = 0; count < OutputLog::kMostLines; ++count) {
        a.Add(lit);
        b.Add(lit);
    }
    for (const auto& [first, second] : {std::pair{&a, &b}, std::pair{&b, &a}}) {
        first->Add(lit);
        EXPECT_THAT(Difference(a, b), HasSubstr("behind the first 100000"));
        second->Add(lit);
        EXPECT_EQ(Difference(a, b), "");
    }
    a.Add(lit);
    a.Add(dark);
    b.Add(dark);
    b.Add(lit);
    EXPECT_THAT(Difference(a, b), HasSubstr("behind the first 100000"));
    Recording recording;
    recording.program = {5};
    recording.outcome = {.outputs = a};
    const LoadedRecording loaded = LoadRecording(SaveRecording(recording));
    EXPECT_EQ(loaded.error, "");
    EXPECT_EQ(loaded.recording, recording) << "the largest file that is written can be read";
}

}  // namespace
}  // namespace zentro
