// The world on the floor, through the windows: chosen, changed, saved, asked for by programs.
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <Qsci/qsciscintilla.h>
#include <algorithm>
#include <gmock/gmock.h>

#include "desktop/board_state.h"
#include "desktop/world_document.h"
#include "tests/support/compile_fixture.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/board/floor_widget.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/shell/board_windows.h"

namespace zentro {
namespace {

constexpr auto kStand = "BEGIN PROGRAM\nWAIT 1\nEND PROGRAM\n";
constexpr auto kAhead =
    "BEGIN PROGRAM\nSET MOTOR 1, FORWARD, 100\nSET MOTOR 2, FORWARD, 100\nWAIT 120\n"
    "STOP MOTORS\nEND PROGRAM\n";
constexpr auto kSmall =
    R"({"name": "Small", "floor": {"width": 100, "height": 80}, "start": {"at": [20, 20]},
        "areas": [{"name": "bay", "corner": [60, 0], "size": [30, 40]}],
        "goals": [{"reach": "bay", "stand": 0.5, "seconds": 20}, {"clear": "walls", "seconds": 9}]})";

class WorldWindowTest : public MainWindowTest {
  protected:
    WorldWindowTest() {
        QDir(folder_.path()).mkdir("worlds");
        for (const char* name : {"maze.world", "oval.world", "room.world"})
            WriteFile(QString("worlds/%1").arg(name),
                      QByteArray::fromStdString(
                          test::ReadFile(std::string(ZENTRO_WORLDS_FOLDER) + "/" + name)));
        WriteFile("small.world", kSmall);
    }

    const Scene& Now() { return window->Board().VirtualBoard().World(); }
    std::string WorldName() { return Now().map->world.name; }
    QString Notice() {
        auto* bar = Child<QWidget>("noticeBar");
        return bar->isVisible() ? Child<QLabel>("noticeText")->text() : QString();
    }
    QString Goals() { return Child<QLabel>("Goals")->text(); }
    bool GoalsBecome(const QString& text) {
        const bool became = QTest::qWaitFor([&] { return Goals() == text; });
        EXPECT_TRUE(became) << Goals().toStdString();
        return became;
    }

    /// Chooses an entry of the world menu by its text.
    void Choose(const QString& text) {
        auto* menu = Child<QMenu>("WorldMenu");
        ASSERT_NE(menu, nullptr);
        emit menu->aboutToShow();
        for (QAction* action : menu->actions()) {
            if (action->text().remove('&') == text) return action->trigger();
        }
        ADD_FAILURE() << "no " << text.toStdString();
    }
    QToolButton* Button(const char* name) { return Child<QToolButton>(name); }
};

TEST_F(WorldWindowTest, WorldsAreChosenFromAMenuAndTheirGoalsAreTold) {
    Press(CommandId::OpenVirtualBoard);
    EXPECT_EQ(WorldName(), "Oval line");
    EXPECT_EQ(Button("BtnWorld")->text(), "World: Oval line");
    Choose("Maze");
    EXPECT_EQ(WorldName(), "Maze");
    EXPECT_EQ(Button("BtnWorld")->text(), "World: Maze");
    EXPECT_TRUE(GoalsBecome("Task in this world: Reach \"exit\" within 180 s – open"));

    dialogs.fileToOpen = FilePath("small.world");
    Choose("Open World...");
    EXPECT_EQ(WorldName(), "Small");
    Write("ahead.txt", kAhead);
    Press(CommandId::Run);
    // After the end of the program the stand in the bay still takes its time.
    EXPECT_TRUE(QTest::qWaitFor([&] { return Goals().count("met after") == 2; }, 10'000));
    EXPECT_THAT(Goals().toStdString(), testing::HasSubstr("20 s – ✔ met after 1."));
    EXPECT_THAT(Goals().toStdString(), testing::HasSubstr("nothing for 9 s – ✔ met after 1."));
    Write("stand.txt", kStand);
    Press(CommandId::Run);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Goals().contains("20 s – not met yet"); }, 10'000))
        << Goals().toStdString();
    // Time that goes on after the end misses nothing.
    for (int wait = 0; wait < 1000 && Now().state.tick < 2100; ++wait)
        window->Board().VirtualBoard().Advance(1000);
    EXPECT_GE(Now().state.tick, 2100U);
    QTest::qWait(100);
    EXPECT_THAT(Goals().toStdString(), testing::HasSubstr("20 s – not met yet"));

    WriteFile("wrong.world", R"({"start": {"at": [1, 1]}})");
    dialogs.fileToOpen = FilePath("wrong.world");
    Choose("Open World...");
    EXPECT_THAT(LastShown().toStdString(), testing::HasSubstr("the robot has no room there"));
    EXPECT_EQ(WorldName(), "Small") << "the one before stays";
}

TEST_F(WorldWindowTest, AProgramThatNamesAWorldDrivesInIt) {
    Write("first.txt", QString("; a title\n; world: small.world\n") + kStand);
    Press(CommandId::Run);
    EXPECT_EQ(WorldName(), "Small");
    Write("second.txt", QString("; world: maze.world\n") + kStand);
    Press(CommandId::Run);
    EXPECT_EQ(WorldName(), "Maze") << "a shipped one";
    Write("third.txt", kStand);
    Press(CommandId::Run);
    EXPECT_EQ(WorldName(), "Maze") << "it does not mind";
    EXPECT_EQ(Notice(), "");
    Write("fourth.txt", QString("; world: lost.world\n") + kStand);
    Press(CommandId::Run);
    EXPECT_EQ(WorldName(), "Maze");
    EXPECT_THAT(Notice().toStdString(), testing::HasSubstr("lost.world"));
    // A world that somebody changes with another program is read again.
    Write("fifth.txt", QString("; world: small.world\n") + kStand);
    Press(CommandId::Run);
    EXPECT_EQ(Notice(), "");
    WriteFile("small.world", QByteArray(kSmall).replace("Small", "Other"));
    Press(CommandId::Run);
    EXPECT_EQ(WorldName(), "Other");

    Choose("Room with boxes");
    Choose("Let fifth.txt Remember This World");
    EXPECT_EQ(FrontSource()->Editor()->text(0).trimmed(), "; world: room.world");
    EXPECT_EQ(FrontSource()->Editor()->text(1).trimmed(), "BEGIN PROGRAM");
    Press(CommandId::Run);
    EXPECT_EQ(WorldName(), "Room with boxes");
}

TEST_F(WorldWindowTest, StartHereIsAChangeThatIsNotLostUnasked) {
    Write("first.txt", QString("; world: small.world\n") + kStand);
    Press(CommandId::Run);
    window->Board().VirtualBoard().PlaceRobot({{50, 60}, 1.5});
    Click("BtnStartHere");
    Click("BtnRobotToStart");
    EXPECT_EQ(Now().state.robot.place, (world::Point{50, 60}));
    EXPECT_EQ(Button("BtnWorld")->text(), "World: Small*");
    Write("second.txt", QString("; world: maze.world\n") + kStand);
    Press(CommandId::Run);
    EXPECT_EQ(WorldName(), "Small");
    EXPECT_THAT(Notice().toStdString(), testing::HasSubstr("changes that are not saved"));

    dialogs.saveAnswer = SaveAnswer::Cancel;
    Choose("Maze");
    EXPECT_EQ(WorldName(), "Small");
    window->close();
    EXPECT_TRUE(window->isVisible()) << "there is something to lose";
    EXPECT_EQ(dialogs.savesAsked.last(), "Small (world)");
    dialogs.saveAnswer = SaveAnswer::Save;
    Choose("Maze");
    EXPECT_EQ(WorldName(), "Maze");
    EXPECT_THAT(ReadFile("small.world").toStdString(), testing::HasSubstr("[50.0,60.0]"));

    // A shipped world is saved under another name, beside the program.
    Click("BtnStartHere");
    window->Board().VirtualBoard().PlaceRobot({{30, 30}, 0});
    Click("BtnStartHere");
    const QByteArray shipped = ReadFile("worlds/maze.world");
    dialogs.fileToSave = FilePath("worlds/maze.world");
    Choose("Save World");
    EXPECT_THAT(LastShown().toStdString(), testing::HasSubstr("choose another"));
    dialogs.fileToSave = FilePath("mine.world");
    Choose("Save World");
    EXPECT_EQ(dialogs.lastChoice.folder, folder_.path());
    EXPECT_EQ(ReadFile("worlds/maze.world"), shipped);
    EXPECT_EQ(Button("BtnWorld")->text(), "World: Maze");
    EXPECT_TRUE(window->close());
}

TEST_F(WorldWindowTest, APictureLiesOnTheFloorUntilItIsRemoved) {
    WriteFile("paper.world", R"({"floor": {"width": 100, "height": 80, "brightness": 200},
                                 "start": {"at": [20, 20]},
                                 "sensors": [{"kind": "floor", "input": "analog1"}]})");
    // A square of which the left half is black: on this floor it reaches from 10 to 90 cm.
    QImage square(300, 300, QImage::Format_ARGB32);
    square.fill(Qt::transparent);
    QPainter(&square).fillRect(0, 0, 150, 300, Qt::black);
    ASSERT_TRUE(square.save(FilePath("half.png")));
    Write("look.txt",
          "; world: paper.world\nDEFINE BYTE Seen = 0\nBEGIN PROGRAM\nSeen = ANALOG(1)\n"
          "DISPLAY Seen\nEND PROGRAM\n");
    const auto displays = [this](std::uint8_t number) {
        Press(CommandId::Run);
        const Display shown{Display::Form::Number, number};
        return QTest::qWaitFor([&] { return Now().board.outputs.display == shown; }, 10'000);
    };
    EXPECT_TRUE(displays(200));
    dialogs.fileToOpen = FilePath("half.png");
    Choose("Floor Picture...");
    EXPECT_TRUE(displays(0));
    const world::WorldMap map = *Now().map;
    EXPECT_EQ(BrightnessAt(map, {5, 40}), 200) << "beside the picture";
    EXPECT_EQ(BrightnessAt(map, {80, 40}), 200) << "where it shows nothing";

    // It is on the screen, and in the world's own file.
    auto* floor = Child<FloorWidget>("Floor");
    const auto lightness = [floor](const world::Point& place) {
        return floor->grab().toImage().pixelColor(floor->InPicture(place).toPoint()).lightness();
    };
    EXPECT_GT(lightness({80, 60}), lightness({30, 60}) + 50);
    dialogs.fileToSave = FilePath("pictured.world");
    Choose("Save World As...");
    Choose("Maze");
    dialogs.fileToOpen = FilePath("pictured.world");
    Choose("Open World...");
    EXPECT_EQ(Now().map->world, map.world);

    Choose("Remove Floor Picture");
    EXPECT_EQ(BrightnessAt(*Now().map, {20, 20}), 200);
    Click("BtnEdit");
    Click("BtnUndoWorld");
    EXPECT_EQ(BrightnessAt(*Now().map, {20, 20}), 0);

    dialogs.fileToOpen = FilePath("look.txt");
    Choose("Floor Picture...");
    EXPECT_THAT(LastShown().toStdString(), testing::HasSubstr("It is no picture that can be read"));
    dialogs.fileToOpen = FilePath("none.png");
    Choose("Floor Picture...");
    EXPECT_THAT(LastShown().toStdString(),
                testing::HasSubstr("none.png was not laid on the floor"));
    EXPECT_EQ(Now().map->world, map.world) << "the one before stays";
}

TEST_F(WorldWindowTest, TheFloorIsPrintedAsLargeAsItIs) {
    Press(CommandId::OpenVirtualBoard);
    dialogs.printToFile = FilePath("floor.pdf");
    Choose("Print at True Scale...");
    // 240 by 150 cm on sheets of at most 21 by 29.7 cm.
    EXPECT_THAT(dialogs.questions.last().toStdString(),
                testing::ContainsRegex("takes [0-9]+ sheets"));
    EXPECT_FALSE(QFile::exists(FilePath("floor.pdf"))) << "not yet asked for";
    dialogs.yes = true;
    Choose("Print at True Scale...");
    const QByteArray pdf = ReadFile("floor.pdf");
    const qsizetype pages = pdf.count("/Type /Page\n");
    EXPECT_GE(pages, 12 * 6);
    EXPECT_TRUE(dialogs.questions.last().contains(QString("takes %1 sheets").arg(pages)));
}

TEST_F(WorldWindowTest, AWorldIsDrawnWithTheMouse) {
    Press(CommandId::OpenVirtualBoard);
    dialogs.fileToOpen = FilePath("small.world");
    Choose("Open World...");
    Click("BtnEdit");
    auto* floor = Child<FloorWidget>("Floor");
    const auto drag = [&](const char* tool, const world::Point& from, const world::Point& to) {
        Click(tool);
        QTest::mousePress(floor, Qt::LeftButton, {}, floor->InPicture(from).toPoint());
        QTest::mouseMove(floor, floor->InPicture(to).toPoint());
        QTest::mouseRelease(floor, Qt::LeftButton, {}, floor->InPicture(to).toPoint());
    };
    const auto press = [&](const char* tool, const world::Point& at) { drag(tool, at, at); };
    const auto world = [&] { return Now().map->world; };
    const world::World before = world();
    drag("ToolLine", {10.7, 59}, {41, 60});
    drag("ToolLine", {40, 60}, {40, 70});
    ASSERT_EQ(world().lines.size(), 1U) << "the second goes on with the first";
    EXPECT_EQ(world().lines[0].points, (std::vector<world::Point>{{10, 60}, {40, 60}, {40, 70}}));
    drag("ToolWall", {50, 50}, {90, 50});
    drag("ToolBox", {90, 80}, {80, 70});
    drag("ToolArea", {5, 40}, {15, 50});
    press("ToolLamp", {60, 75});
    drag("ToolStart", {30, 40}, {30, 50});
    EXPECT_EQ(world().boxes, (std::vector<world::Box>{{{80, 70}, {10, 10}}}));
    EXPECT_NEAR(world().start.heading, 1.5708, 0.0001);
    press("ToolGoal", {20, 60});
    press("ToolGoal", {10, 45});
    press("ToolGoal", {70, 50});  // the wall: it need not be kept clear of any more
    ASSERT_EQ(world().goals.size(), 3U);
    EXPECT_EQ(world().goals[1].target, world().lines[0].name);
    EXPECT_EQ(world().goals[2].target, world().areas[1].name);
    EXPECT_TRUE(dialogs.shown.isEmpty()) << LastShown().toStdString();

    press("ToolErase", {25, 60});
    EXPECT_TRUE(world().lines.empty());
    EXPECT_EQ(world().goals.size(), 2U) << "the goal goes with its line";
    drag("ToolWall", {20, 40}, {40, 40});
    EXPECT_THAT(LastShown().toStdString(), testing::HasSubstr("no room"));
    const world::World drawn = world();
    drag("ToolRuler", {20, 20}, {60, 50});
    EXPECT_EQ(floor->accessibleDescription(), "The ruler shows 50.0 cm, 37°");
    EXPECT_EQ(world(), drawn);
    while (Button("BtnUndoWorld")->isEnabled())
        Click("BtnUndoWorld");
    EXPECT_EQ(world(), before);
    EXPECT_EQ(Button("BtnWorld")->text(), "World: Small");
    while (Button("BtnRedoWorld")->isEnabled())
        Click("BtnRedoWorld");
    EXPECT_EQ(world(), drawn);
    Click("BtnSaveWorld");
    EXPECT_FALSE(Button("BtnSaveWorld")->isEnabled());
    Choose("Maze");
    Choose("Open World...");
    EXPECT_EQ(world(), drawn) << "what was saved comes back";
}

TEST_F(WorldWindowTest, ThingsAreMovedWithMouseAndKeys) {
    WriteFile("things.world", R"({"floor": {"width": 100, "height": 80}, "start": {"at": [20, 20]},
        "lines": [{"points": [[12, 60], [42, 60], [42, 70]]}, {"center": [75, 55], "radius": 15}],
        "areas": [{"name": "bay", "corner": [60, 0], "size": [30, 30]}],
        "walls": [{"from": [50, 5], "to": [50, 25]}],
        "boxes": [{"corner": [3, 40], "size": [10, 10]}], "lamps": [{"at": [95, 75]}],
        "goals": [{"reach": "bay"}]})");
    Press(CommandId::OpenVirtualBoard);
    dialogs.fileToOpen = FilePath("things.world");
    Choose("Open World...");
    Click("BtnEdit");
    Click("ToolMove");
    auto* floor = Child<FloorWidget>("Floor");
    const auto world = [&] { return Now().map->world; };
    const world::World before = world();
    const auto drag = [&](const world::Point& from, const world::Point& to) {
        QTest::mousePress(floor, Qt::LeftButton, {}, floor->InPicture(from).toPoint());
        QTest::mouseMove(floor, floor->InPicture(to).toPoint());
        QTest::mouseRelease(floor, Qt::LeftButton, {}, floor->InPicture(to).toPoint());
    };
    drag({30, 60}, {36, 64});  // by steps of the grid
    EXPECT_TRUE(dialogs.shown.isEmpty()) << LastShown().toStdString();
    EXPECT_EQ(world().lines[0].points, (std::vector<world::Point>{{17, 65}, {47, 65}, {47, 75}}));
    drag({60, 55}, {55, 50});
    EXPECT_EQ(world().lines[1].arc->centre, (world::Point{70, 50}));
    drag({80, 10}, {99, 10});
    EXPECT_EQ(world().areas[0].corner, (world::Point{70, 0})) << "not beyond the floor";
    EXPECT_EQ(world().goals, before.goals);
    drag({50, 15}, {40, 25});
    EXPECT_EQ(world().walls[0], (world::Segment{{40, 15}, {40, 35}}));
    drag({8, 45}, {3, 45});
    EXPECT_EQ(world().boxes[0].corner, (world::Point{0, 40}));
    drag({95, 75}, {90, 70});
    EXPECT_EQ(world().lamps[0].place, (world::Point{90, 70}));
    drag({20, 20}, {15, 20});
    EXPECT_EQ(world().start.place, (world::Point{15, 20}));
    const world::World moved = world();
    drag({60, 70}, {20, 70});
    EXPECT_EQ(world(), moved) << "there was nothing to take";

    floor->setFocus();
    const auto go = [&](std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(floor, key);
    };
    go({Qt::Key_PageUp, Qt::Key_PageDown});
    EXPECT_EQ(floor->accessibleDescription(), "Move at 15 and 20 cm; there is the start");
    go({Qt::Key_PageUp});
    EXPECT_EQ(floor->accessibleDescription(), "Move at 90 and 70 cm; there is a lamp");
    go({Qt::Key_Space, Qt::Key_Left, Qt::Key_Left, Qt::Key_Down, Qt::Key_Return});
    EXPECT_EQ(world().lamps[0].place, (world::Point{80, 65}));
    go({Qt::Key_Space, Qt::Key_Left, Qt::Key_Escape});
    EXPECT_EQ(world().lamps[0].place, (world::Point{80, 65}));
    go({Qt::Key_PageUp, Qt::Key_Delete});
    EXPECT_TRUE(world().boxes.empty());
    for (int change = 0; change < 9; ++change)
        QTest::keyClick(floor, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(world(), before) << "each move is one change";
    EXPECT_FALSE(Button("BtnUndoWorld")->isEnabled());
}

TEST_F(WorldWindowTest, AWorldIsDrawnWithTheKeysWhileTheRobotDrives) {
    Write("ahead.txt", QString("; world: small.world\n") + kAhead);
    Press(CommandId::Run);
    Click("BtnEdit");
    auto* floor = Child<FloorWidget>("Floor");
    floor->setFocus();
    Child<QWidget>("ToolWall")->setFocus();
    QTest::keyClick(Child<QWidget>("ToolWall"), Qt::Key_Space);
    floor->setFocus();
    const auto go = [&](Qt::Key key, int times) {
        for (int time = 0; time < times; ++time)
            QTest::keyClick(floor, key);
    };
    const auto world = [&] { return Now().map->world; };
    go(Qt::Key_Left, 40);
    go(Qt::Key_Down, 40);
    go(Qt::Key_Up, 10);
    EXPECT_EQ(floor->accessibleDescription(), "Wall at 0 and 50 cm; there is nothing");
    go(Qt::Key_Return, 1);
    go(Qt::Key_Right, 40);
    EXPECT_EQ(floor->accessibleDescription(),
              "Wall from 0 and 50 cm to 100 and 50 cm; there is a wall");
    go(Qt::Key_Escape, 1);
    EXPECT_TRUE(world().walls.empty());
    go(Qt::Key_Return, 1);
    go(Qt::Key_Left, 3);
    go(Qt::Key_Return, 1);
    EXPECT_EQ(world().walls, (std::vector<world::Segment>{{{100, 50}, {85, 50}}}));
    EXPECT_TRUE(window->Board().VirtualBoard().State().processor.running) << "it goes on";
    // The keys of undo are those of the program elsewhere.
    QTest::keyClick(floor, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(world().walls.empty());
    EXPECT_FALSE(FrontSource()->SourceChanged());
    QTest::keyClick(floor, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(world().walls.size(), 1U);
    Click("BtnEdit");
    EXPECT_EQ(floor->accessibleName(), "Robot on the floor");
}

}  // namespace
}  // namespace zentro
