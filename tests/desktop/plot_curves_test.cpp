// Curves of what a board has shown: taken tick by tick, shortened by steps back, thinned to be
// drawn.
#include "desktop/plot_curves.h"

#include <gtest/gtest.h>
#include <random>

#include "desktop/plot_sources.h"
#include "desktop/virtual_board_host.h"
#include "tests/support/compile_fixture.h"
#include "tests/ui/board/board_programs.h"

namespace zentro {
namespace {

constexpr PlotSource kMotor1{PlotKind::Motor, 0};
constexpr PlotSource kAnalog2{PlotKind::Analog, 1};
constexpr PlotSource kDisplay{PlotKind::Display};

using Points = std::deque<PlotPoint>;

class PlotCurvesTest : public ::testing::Test {
  protected:
    void At(std::uint64_t clock) {
        board->clock = clock;
        curves.Look(*board);
    }
    void SetAnalog2(std::uint8_t value) { board->inputs.analog[1] = value; }
    const Points& PointsOf(std::size_t curve) { return curves.Curves().at(curve).points; }

    std::unique_ptr<Board> board = std::make_unique<Board>();
    PlotCurves curves;
};

TEST_F(PlotCurvesTest, EveryKindHasTheValueThatPeopleRead) {
    board->memory.StoreWord(100, 40'000);
    board->inputs.digital[3] = true;
    board->inputs.buttons[5] = true;
    board->inputs.analog[1] = 200;
    board->inputs.timed[2] = 60'000;
    board->inputs.pulses[0] = 3;
    board->devices.pulsesAtStart[0] = 65'534;
    board->inputs.joysticks[1] = {7, 9};
    board->outputs.motors[0] = {kBackward, 60};
    board->outputs.servos[2] = {kForward, 12};
    board->outputs.ports[1] = true;
    board->outputs.leds[0] = true;
    board->outputs.note = 64;
    struct Case {
        PlotSource source;
        std::optional<std::int32_t> value;
    };
    const Case cases[] = {
        {{PlotKind::Variable, 100, DataType::Word}, 40'000},
        {{PlotKind::Variable, 100, DataType::Byte}, 40'000 / 256},
        {{PlotKind::Variable, 100, DataType::Flag}, 1},
        {{PlotKind::Variable, 99, DataType::Flag}, 0},
        {{PlotKind::Variable, kMemorySize, DataType::Word}, 0},
        {{PlotKind::Digital, 3}, 1},
        {{PlotKind::Digital, 0}, 0},
        {{PlotKind::Button, 5}, 1},
        {{PlotKind::Analog, 1}, 200},
        {{PlotKind::Timed, 2}, 60'000},
        {{PlotKind::Pulses, 0}, 5},
        {{PlotKind::StickX, 1}, 7},
        {{PlotKind::StickY, 1}, 9},
        {{PlotKind::Battery}, 255},
        {{PlotKind::Motor, 0}, -60},
        {{PlotKind::Servo, 2}, 12},
        {{PlotKind::Port, 1}, 1},
        {{PlotKind::Led, 0}, 1},
        {{PlotKind::Led, 1}, 0},
        {{PlotKind::Display}, std::nullopt},
        {{PlotKind::Note}, 64},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(ValueOf(one.source, *board), one.value) << static_cast<int>(one.source.kind);
    }
    board->outputs.display = {Display::Form::Number, 0};
    EXPECT_EQ(ValueOf(kDisplay, *board), 0) << "it shows something";
}

TEST_F(PlotCurvesTest, AStepBackShortensThemAndARunBeginsThemAnew) {
    curves.Choose({kAnalog2, kMotor1}, *board);
    At(10);
    SetAnalog2(5);
    At(12);
    SetAnalog2(6);
    At(12);  // within a tick the last value counts
    SetAnalog2(7);
    At(20);
    EXPECT_EQ(PointsOf(0), (Points{{0, 0}, {12, 6}, {20, 7}}));
    EXPECT_EQ(PointsOf(1), (Points{{0, 0}}));
    SetAnalog2(6);
    At(15);
    EXPECT_EQ(PointsOf(0), (Points{{0, 0}, {12, 6}}));
    EXPECT_EQ(curves.Now(), 15U);
    SetAnalog2(0);
    At(12);
    EXPECT_EQ(PointsOf(0), (Points{{0, 0}}));

    At(500);
    curves.Choose({kMotor1, kDisplay}, *board);
    EXPECT_EQ(PointsOf(0), (Points{{0, 0}})) << "it goes on";
    EXPECT_EQ(PointsOf(1), (Points{{500, std::nullopt}}));
    EXPECT_EQ(ValueAt(curves.Curves()[1], 499), std::nullopt);
    curves.BeginRun(*board);
    EXPECT_EQ(curves.Now(), 0U);
    EXPECT_EQ(PointsOf(1), (Points{{0, std::nullopt}}));
    At(507);
    EXPECT_EQ(curves.Now(), 7U);

    curves.Choose(std::vector<PlotSource>(20, kMotor1), *board);
    EXPECT_EQ(curves.Curves().size(), PlotCurves::kMost);
}

TEST_F(PlotCurvesTest, TenMinutesAreKept) {
    curves.Choose({kAnalog2}, *board);
    SetAnalog2(1);
    for (std::uint32_t tick = 1; tick <= 3 * PlotCurves::kKeptTicks; ++tick) {
        SetAnalog2(static_cast<std::uint8_t>(tick % 251));
        At(tick);
    }
    EXPECT_EQ(curves.First(), 2 * PlotCurves::kKeptTicks);
    ASSERT_EQ(PointsOf(0).size(), PlotCurves::kKeptTicks + 1);
    EXPECT_EQ(ValueAt(curves.Curves()[0], curves.First()), curves.First() % 251);
    SetAnalog2(9);
    At(6 * PlotCurves::kKeptTicks);
    EXPECT_EQ(PointsOf(0).size(), 2U) << "the value that it had before";
}

/// What a line through the points shows: in each column its lowest and highest value.
std::vector<std::pair<int, int>> Picture(const std::vector<PlotPoint>& points, std::uint32_t from,
                                         std::uint32_t to, std::uint32_t columns) {
    std::vector<std::pair<int, int>> picture;
    PlotCurve curve;
    curve.points.assign(points.begin(), points.end());
    for (std::uint32_t column = 0; column < columns; ++column) {
        std::pair<int, int> seen{1000, -1000};
        for (std::uint32_t tick = from; tick <= to; ++tick) {
            if (std::uint64_t{tick - from} * columns / (to - from + 1) != column) continue;
            const int value = ValueAt(curve, tick).value_or(0);
            seen = {std::min(seen.first, value), std::max(seen.second, value)};
        }
        picture.push_back(seen);
    }
    return picture;
}

TEST_F(PlotCurvesTest, ThinnedTheyLookTheSame) {
    std::mt19937 random(4);
    curves.Choose({kAnalog2}, *board);
    for (std::uint32_t tick = 1; tick <= 6000; ++tick) {
        if (random() % 3 != 0) SetAnalog2(static_cast<std::uint8_t>(random() % 200));
        if (random() % 400 == 0) SetAnalog2(250);
        At(tick);
    }
    const PlotCurve& curve = curves.Curves()[0];
    const std::vector<PlotPoint> all(curve.points.begin(), curve.points.end());
    struct Case {
        std::uint32_t from;
        std::uint32_t to;
        std::uint32_t columns;
    };
    for (const Case& one : {Case{0, 6000, 100}, Case{0, 6000, 7}, Case{1003, 4999, 64},
                            Case{0, 90'000, 300}, Case{5000, 5100, 200}}) {
        const auto thinned = PointsToDraw(curve, one.from, one.to, one.columns);
        EXPECT_LE(thinned.size(), 4 * one.columns + 1);
        EXPECT_EQ(Picture(thinned, one.from, one.to, one.columns),
                  Picture(all, one.from, one.to, one.columns))
            << one.from << " to " << one.to;
    }
    EXPECT_TRUE(PointsToDraw({}, 0, 100, 10).empty());
}

TEST_F(PlotCurvesTest, TheTableHasALineForEachChange) {
    curves.Choose({kAnalog2}, *board);
    At(5);
    curves.Choose({kAnalog2, kDisplay, kMotor1}, *board);
    board->outputs.motors[0] = {kBackward, 7};
    At(110);
    board->outputs.display = {Display::Form::Number, 42};
    At(111);
    At(6000);
    EXPECT_EQ(CsvOf(curves, {"Analogue input 2", "Display", "The \"left\", 1"}),
              "seconds,\"Analogue input 2\",\"Display\",\"The \"\"left\"\", 1\"\n"
              "0.00,0,,\n"
              "0.05,0,,0\n"
              "1.10,0,,-7\n"
              "1.11,0,42,-7\n"
              "60.00,0,42,-7\n");
}

/// The board's own host, tick by tick, through a run, a step back and another run.
TEST(PlotOfHostTest, IsExactWhateverTheHostDoesAtOnce) {
    VirtualBoardHost host;
    test::Program program(
        "DEFINE BYTE Count\nBEGIN PROGRAM\nCount = 0\nLOOP\n"
        "INCREMENT Count\nSET MOTOR 1, FORWARD, Count\nWAIT 3\nEND LOOP\n"
        "END PROGRAM\n");
    ASSERT_TRUE(program.Compile()) << program.output.log;
    const auto sources = PlotSources(&program.compilation);
    ASSERT_EQ(sources.front().name, "Count");
    ASSERT_EQ(host.LoadProgram(program.object.text), "");
    host.Plot({sources.front().source, kMotor1});
    host.Run();
    host.Advance(905);  // many ticks at once
    const Points expected = [] {
        Points points;
        for (std::uint32_t tick = 0; tick < 90; ++tick) {
            if (tick % 3 == 0) points.push_back({tick, static_cast<std::int32_t>(tick / 3 + 1)});
        }
        return points;
    }();
    EXPECT_EQ(host.Curves().Curves()[1].points, expected);
    EXPECT_EQ(host.Curves().Curves()[0].points, expected);
    while (host.State().clock > 40 && host.StepBack()) {
    }
    EXPECT_EQ(host.Curves().Now(), host.State().clock);
    EXPECT_LE(host.Curves().Curves()[1].points.back().tick, 40U);
    EXPECT_EQ(host.Curves().Curves()[1].points.back().value, host.State().outputs.motors[0].value);
    const std::uint64_t before = host.State().clock;
    host.Stop();
    host.Run();
    EXPECT_EQ(host.State().clock, before);
    EXPECT_EQ(host.Curves().Now(), 0U);
}

}  // namespace
}  // namespace zentro
