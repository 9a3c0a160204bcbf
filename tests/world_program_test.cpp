// The real zentro-board drives compiled examples in the shipped worlds.
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <png.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class WorldProgramTest : public testing::Test {
  protected:
    WorldProgramTest() { fs::create_directories(folder_); }
    ~WorldProgramTest() override { fs::remove_all(folder_); }

    std::string Write(const std::string& name, const std::string& text) {
        std::ofstream(folder_ / name, std::ios::binary) << text;
        return folder_ / name;
    }

    /// Runs a command in the test's folder and keeps what it wrote. Returns its exit status.
    int Run(const std::string& command) {
        FILE* pipe = popen(("cd " + folder_.string() + "; " + command + " 2>&1").c_str(), "r");
        output_.clear();
        std::array<char, 4096> part{};
        while (const std::size_t count = fread(part.data(), 1, part.size(), pipe)) {
            output_.append(part.data(), count);
        }
        const int status = pclose(pipe);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    void Compile(const std::string& example) {
        ASSERT_EQ(Run(ZENTRO_ZENTROC " -q -o . " ZENTRO_EXAMPLES_FOLDER "/" + example + ".txt"), 0)
            << output_;
    }

    int Drive(const std::string& program, const std::string& world,
              const std::string& options = "") {
        const std::string path =
            world.find('/') == std::string::npos ? ZENTRO_WORLDS_FOLDER "/" + world : world;
        return Run(ZENTRO_BOARD_PROGRAM " run " + program + " --world " + path + " " + options);
    }

    std::string Read(const std::string& name) {
        std::ifstream stream(folder_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// A run that is recorded and replayed prints the same, and ends in the same way.
    void ExpectReplayed(const std::string& program, const std::string& world,
                        const std::string& options) {
        const int status = Drive(program, world, options + " --events --record tape");
        const std::string output = output_;
        EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " replay tape --events"), status) << output_;
        EXPECT_EQ(output_, output) << program << options;
    }

    fs::path folder_ = fs::path(testing::TempDir()) / ("world-" + std::to_string(getpid()));
    std::string output_;
};

TEST_F(WorldProgramTest, TheExamplesMeetTheGoalsOfTheirWorlds) {
    const std::array<std::array<const char*, 2>, 8> pairs{{{"line_follower", "oval.world"},
                                                           {"line_follower", "eight.world"},
                                                           {"wall_follower", "maze.world"},
                                                           {"patrol", "room.world"},
                                                           {"parking", "parking.world"},
                                                           {"ring", "ring.world"},
                                                           {"sumo", "sumo.world"},
                                                           {"light_seeker", "lamp.world"}}};
    Write("press", "10 button1 1\n20 button1 0\n");
    for (const auto& [example, world] : pairs) {
        Compile(example);
        const bool waits = std::string(example) == "line_follower";
        const std::string options = waits ? "--inputs press" : "";
        // Exact sensors and sensors with three kinds of noise.
        for (const std::string noise : {"", " --noise 1", " --noise 2", " --noise 3"}) {
            EXPECT_EQ(Drive(std::string(example) + ".obj", world, options + noise), 0)
                << example << noise << output_;
            EXPECT_THAT(output_, HasSubstr("goal 1 met: ")) << example;
            EXPECT_THAT(output_, HasSubstr("\nverdict\tpassed, ")) << example;
            ExpectReplayed(std::string(example) + ".obj", world, options + noise);
        }
    }
}

TEST_F(WorldProgramTest, TellsPlacesGoalsAndVerdict) {
    // SET MOTOR 1 and 2, FORWARD, [17] = 50; WAIT [15] = 200; STOP MOTORS; END.
    const std::string program =
        Write("ahead.obj", "21,1,70,0,17\n21,2,70,0,17\n70,0,15\n20\n5\n0,200\n50\n");
    const std::string world = Write("short.world", R"({"start": {"at": [20, 75]},
        "areas": [{"name": "near", "corner": [40, 60], "size": [10, 30]},
                  {"name": "end", "corner": [60, 60], "size": [20, 30]}],
        "goals": [{"reach": "near"}, {"reach": "end", "stand": 0.5}, {"clear": "walls"}]})");
    EXPECT_EQ(Drive(program, world, "--events"), 0);
    EXPECT_THAT(output_, HasSubstr("0 motor1 F 50\n"));
    EXPECT_THAT(output_, HasSubstr("\n10 robot 22.5 75.0 0.0\n20 robot 25.0 75.0 0.0\n"));
    EXPECT_THAT(output_, HasSubstr("\n80 goal 1 met: reach near\n"));
    EXPECT_THAT(output_, HasSubstr("goal 2 met: reach end and stand still\n"))
        << "the program ends before, and the robot goes on standing";
    EXPECT_THAT(output_, HasSubstr("goal 3 met: touch nothing\n"));
    EXPECT_THAT(output_, EndsWith("\nverdict\tpassed, 3 of 3 goals met after 2.50 s\n"));

    const std::string far = Write("far.world", R"({"start": {"at": [20, 75]},
        "areas": [{"name": "far", "corner": [140, 60], "size": [10, 30]}],
        "goals": [{"reach": "far"}, {"clear": "walls"}]})");
    EXPECT_EQ(Drive(program, far), 5);
    EXPECT_THAT(output_, HasSubstr("goal 1 missed: reach far\n"));
    EXPECT_THAT(output_, EndsWith("verdict\tfailed, 1 of 2 goals met after 3.00 s\n"));

    const std::string plain = Write("plain.world", R"({"start": {"at": [20, 75]}})");
    EXPECT_EQ(Drive(program, plain), 0);
    EXPECT_THAT(output_, EndsWith("verdict\tno goals after 2.00 s\n"));
}

TEST_F(WorldProgramTest, AHandOnAnInputHoldsItUntilItIsLetGo) {
    // READ ANALOG INPUT 1, [15]; DISPLAY NUMBER [15]; WAIT [13] = 10; JUMP 0.
    const std::string program = Write("look.obj", "32,1,0,15\n39,0,15\n70,0,13\n53,0,0\n0,10\n0\n");
    const std::string inputs = Write("hand", "20 analog1 77\n40 analog1 world\n");
    const std::string world = Write("bright.world", R"({"start": {"at": [20, 75]},
        "sensors": [{"kind": "floor", "input": "analog1"}]})");
    EXPECT_EQ(Drive(program, world, "--events --seconds 1 --inputs " + inputs), 0) << output_;
    EXPECT_THAT(output_, HasSubstr("0 display 225\n20 display 77\n40 display 225\nsteps"));
}

TEST_F(WorldProgramTest, DrawsTheWay) {
    Compile("parking");
    EXPECT_EQ(Drive("parking.obj", "parking.world", "--picture way.svg"), 0) << output_;
    std::ifstream stream(folder_ / "way.svg");
    const std::string picture(std::istreambuf_iterator<char>(stream), {});
    EXPECT_THAT(picture, testing::StartsWith("<svg xmlns="));
    EXPECT_THAT(picture, HasSubstr("points=\"30.00,60.00 "));
    EXPECT_THAT(picture, EndsWith("</svg>\n"));
}

TEST_F(WorldProgramTest, DrawsTheWayInPixels) {
    // SET MOTOR 1 and 2, FORWARD, [17] = 50; WAIT [15] = 200; STOP MOTORS; END.
    const std::string program =
        Write("ahead.obj", "21,1,70,0,17\n21,2,70,0,17\n70,0,15\n20\n5\n0,200\n50\n");
    const std::string world = Write("short.world", R"({"start": {"at": [20, 75]},
        "floor": {"width": 100, "height": 150, "brightness": 210},
        "lines": [{"points": [[20, 30], [60, 30]], "width": 10, "darkness": 200}]})");
    ASSERT_EQ(Drive(program, world, "--picture way.png"), 0) << output_;
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&png, (folder_ / "way.png").c_str()));
    png.format = PNG_FORMAT_GRAY;
    std::vector<unsigned char> pixels(PNG_IMAGE_SIZE(png));
    ASSERT_TRUE(png_image_finish_read(&png, nullptr, pixels.data(), 0, nullptr));
    EXPECT_EQ(png.width, 400U);
    EXPECT_EQ(png.height, 600U);
    // In centimetres from the lower left corner.
    const auto grey = [&](unsigned x, unsigned y) { return pixels[(599 - 4 * y) * 400 + 4 * x]; };
    EXPECT_EQ(grey(50, 120), 210) << "the floor";
    EXPECT_EQ(grey(40, 33), 10) << "the line";
    EXPECT_EQ(grey(40, 37), 210) << "beside it";
    EXPECT_NE(grey(45, 75), 210) << "its way of 50 cm";
    EXPECT_NE(grey(70, 80), 210) << "the robot at its end";
    EXPECT_EQ(grey(70, 90), 210);
}

TEST_F(WorldProgramTest, RefusesWrongWorldsAndOptions) {
    const std::string program = Write("end.obj", "5");
    const std::string wrong = Write("wrong.world", R"({"start": {"at": [1, 1]}})");
    EXPECT_EQ(Drive(program, wrong), 2);
    EXPECT_THAT(output_, HasSubstr("wrong.world: start: the robot has no room there"));
    EXPECT_EQ(Drive(program, folder_ / "none.world"), 2);
    EXPECT_THAT(output_, HasSubstr("none.world: cannot be read"));
    EXPECT_EQ(Drive(program, "oval.world", "--picture way.jpg"), 2);
    EXPECT_THAT(output_, HasSubstr("pictures are SVG or PNG files"));
    EXPECT_EQ(Drive(program, "oval.world", "--picture /none/way.svg"), 2);
    EXPECT_THAT(output_, HasSubstr("/none/way.svg: cannot be written"));
    EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " run " + program + " --picture way.svg"), 2);
    EXPECT_THAT(output_, HasSubstr("--picture: needs --world"));
    EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " run " + program + " --noise 1"), 2);
}

TEST_F(WorldProgramTest, ARecordingEndsAsTheRunDid) {
    // READ ANALOG INPUT 1, [15]; DISPLAY NUMBER [15]; WAIT [13] = 10; JUMP 0.
    const std::string look = Write("look.obj", "32,1,0,15\n39,0,15\n70,0,13\n53,0,0\n0,10\n0\n");
    const std::string inputs = Write("hand",
                                     "0 analog1 5\n20 analog1 77\n20 pace 2\n"
                                     "40 analog1 world\n45 step 1\n900 analog1 1\n");
    const std::string world = Write("bright.world", R"({"start": {"at": [20, 75]},
        "sensors": [{"kind": "floor", "input": "analog1", "noise": 9}]})");
    // Time or steps run out in the middle of something.
    for (const std::string end : {"--seconds 1", "--max-steps 1", "--max-steps 20"}) {
        std::string how = " --noise 5 --seed 3 --inputs " + inputs;
        how += " " + end;
        Drive(look, world, " --events --record tape" + how);
        const std::string output = output_;
        EXPECT_THAT(output, HasSubstr(end == "--seconds 1" ? "21 display 77" : "steps"));
        EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " replay tape --events"), 0) << end << output_;
        EXPECT_EQ(output_, output) << end;
    }
    // DISPLAY NUMBER [9]; CLEAR BYTE [9]; a fault. Without a world.
    const std::string fault = Write("fault.obj", "39,0,9\n200\n");
    EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " run " + fault + " --events --record tape"), 3);
    const std::string output = output_;
    EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " replay tape --events"), 3);
    EXPECT_EQ(output_, output);
}

TEST_F(WorldProgramTest, AReplayThatComesOutOtherwiseSaysWhere) {
    const std::string look = Write("look.obj", "32,1,0,15\n39,0,15\n70,0,13\n53,0,0\n0,10\n0\n");
    const std::string inputs = Write("hand", "20 analog1 77\n");
    EXPECT_EQ(
        Run(ZENTRO_BOARD_PROGRAM " run " + look + " --seconds 1 --record tape --inputs " + inputs),
        0);
    std::string tape = Read("tape");
    const std::size_t at = tape.find("20 analog1 77");
    ASSERT_NE(at, std::string::npos);
    Write("other", tape.replace(at, 13, "20 analog1 78"));
    EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " replay other"), 6);
    EXPECT_THAT(output_,
                HasSubstr("zentro-board: other: output 2 was \"20 display 77\" when it was "
                          "recorded, and is \"20 display 78\" now"));

    // What a person may write.
    Write("hand.recording", R"({"recording": 1, "program": ["39,0,4", "5", "42"], "ticks": 3})");
    EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " replay hand.recording --events"), 0);
    EXPECT_EQ(output_, "0 display 42\nsteps\t2\n");

    Write("wrong", R"({"recording": 1, "program": ["5"], "ticks": 3, "inputs": ["x"]})");
    EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " replay wrong"), 2);
    EXPECT_THAT(output_, HasSubstr("wrong: inputs[0]: write a time in ticks"));
    EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " replay none"), 2);
    EXPECT_THAT(output_, HasSubstr("none: cannot be read"));
    EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " replay hand.recording --picture way.svg"), 2);
    EXPECT_THAT(output_, HasSubstr("there is no world in the recording"));
    EXPECT_EQ(Run(ZENTRO_BOARD_PROGRAM " run " + look + " --seconds 1 --record /none/tape"), 2);
    EXPECT_THAT(output_, HasSubstr("/none/tape: cannot be written"));
}

TEST_F(WorldProgramTest, AProgramNamesItsWorld) {
    const std::string program =
        "BEGIN PROGRAM\nSET MOTOR 1, FORWARD, 60\nWAIT 20\nSTOP MOTORS\nEND PROGRAM\n";
    const auto run = [this, &program](const std::string& comment, const std::string& options) {
        Write("a.txt", comment + program);
        EXPECT_EQ(Run(ZENTRO_ZENTROC " -q a.txt"), 0) << output_;
        return Run(ZENTRO_BOARD_PROGRAM " run a.obj " + options);
    };
    EXPECT_EQ(run("", ""), 0);
    EXPECT_THAT(output_, Not(HasSubstr("verdict")));
    EXPECT_EQ(run("; world: parking.world\n", ""), 5) << "a shipped one";
    EXPECT_THAT(output_, HasSubstr("goal 1 missed: reach bay"));
    EXPECT_EQ(run("; world: parking.world\n", "--world none"), 0);
    EXPECT_THAT(output_, Not(HasSubstr("verdict")));
    EXPECT_EQ(run("; world: parking.world\n", "--world " ZENTRO_WORLDS_FOLDER "/maze.world"), 5);
    EXPECT_THAT(output_, HasSubstr("reach exit"));
    Write("parking.world", R"({"start": {"at": [100, 100]}})");
    EXPECT_EQ(run("; world: parking.world\n", ""), 0) << "the one beside it counts first";
    EXPECT_THAT(output_, HasSubstr("verdict\tno goals"));
    EXPECT_EQ(run("; world: nowhere.world\n", ""), 2);
    EXPECT_THAT(output_, HasSubstr("nowhere.world: cannot be read"));
}

}  // namespace
