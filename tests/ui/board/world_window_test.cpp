// The world on the floor, through the windows: chosen, changed, saved, asked for by programs.
#include <QDir>
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
    EXPECT_TRUE(GoalsBecome("Reach \"exit\" within 180 s: open"));

    dialogs.fileToOpen = FilePath("small.world");
    Choose("Open World...");
    EXPECT_EQ(WorldName(), "Small");
    Write("ahead.txt", kAhead);
    Press(CommandId::Run);
    // After the end of the program the stand in the bay still takes its time.
    EXPECT_TRUE(QTest::qWaitFor([&] { return Goals().count("met after") == 2; }, 10'000));
    EXPECT_THAT(Goals().toStdString(), testing::HasSubstr("20 s: ✔ met after 1."));
    EXPECT_THAT(Goals().toStdString(), testing::HasSubstr("nothing for 9 s: ✔ met after 1."));
    Write("stand.txt", kStand);
    Press(CommandId::Run);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Goals().contains("20 s: ✘ missed"); }, 10'000))
        << Goals().toStdString();

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

}  // namespace
}  // namespace zentro
