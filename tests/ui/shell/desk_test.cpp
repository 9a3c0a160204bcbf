// The places of the child windows: the desk's, until the user chooses one.

#include "ui/shell/desk.h"

#include <QAbstractButton>
#include <QMdiSubWindow>
#include <QRegularExpression>
#include <QToolButton>
#include <algorithm>

#include "tests/ui/shell/main_window_fixture.h"
#include "ui/editor/source_window.h"
#include "ui/shell/source_files.h"
#include "ui/shell/start_page.h"
#include "ui/support/window_place.h"

namespace zentro {
namespace {

using enum DeskPart;

TEST(DeskLayout, CoversTheAreaAndNoWindowAnother) {
    const std::vector<std::set<DeskPart>> desks{
        {Source},
        {Board},
        {Output},
        {Source, Output},
        {Source, Output, Listing},
        {Source, Board},
        {Source, Output, Board},
        {Source, Output, Board, Terminal},
        {Source, Output, Board, Terminal, Listing},
        {Source, Output, Terminal, Listing, Variables},
        {Source, Output, Board, Terminal, Listing, Variables},
        {Variables, Terminal},
        {Plot},
        {Source, Plot},
        {Source, Output, Plot},
        {Source, Output, Board, Plot},
        {Source, Output, Board, Terminal, Listing, Variables, Plot},
        {Output, Board, Plot},
    };
    for (const QSize& size : {QSize(1280, 560), QSize(1366, 610), QSize(1920, 920)}) {
        for (const std::set<DeskPart>& open : desks) {
            const QRect area(QPoint(0, 0), size);
            const auto places = LayOutDesk(area, open);
            EXPECT_EQ(places.size(), open.size());
            int covered = 0;
            for (const auto& [part, place] : places) {
                EXPECT_TRUE(area.contains(place));
                EXPECT_GE(place.width(), 230) << static_cast<int>(part);
                // Of the compiler's messages the last lines are enough.
                EXPECT_GE(place.height(), part == Output ? 100 : 130) << static_cast<int>(part);
                covered += place.width() * place.height();
                for (const auto& [other, otherPlace] : places)
                    EXPECT_TRUE(part == other || !place.intersects(otherPlace));
            }
            EXPECT_EQ(covered, area.width() * area.height());
        }
    }
}

/// A screen of 1280 by 720 at twice the size.
TEST(DeskLayout, ALowAreaHidesNoMessageAndHalvesNoBoard) {
    const QRect area(0, 0, 640, 205);
    const auto places = LayOutDesk(area, {Source, Output, Board, Terminal, Listing, Help, Plot});
    EXPECT_GE(places.at(Output).height(), 100);
    EXPECT_GE(places.at(Source).height(), 100);
    EXPECT_FALSE(places.at(Source).intersects(places.at(Output)));
    for (const DeskPart part : {Board, Terminal, Listing, Help, Plot})
        EXPECT_EQ(places.at(part).height(), area.height()) << static_cast<int>(part);
}

TEST(DeskLayout, TheHandbookHasAColumnWhereThereIsRoom) {
    const std::set<DeskPart> open{Source, Board, Help};
    const auto narrow = LayOutDesk(QRect(0, 0, 1280, 560), open);
    EXPECT_FALSE(narrow.at(Help).intersects(narrow.at(Board)));
    EXPECT_EQ(narrow.at(Help).left(), narrow.at(Source).left());
    EXPECT_GE(narrow.at(Help).height(), 250);
    const auto wide = LayOutDesk(QRect(0, 0, 1920, 920), open);
    EXPECT_FALSE(wide.at(Help).intersects(wide.at(Board)));
}

class DeskTest : public MainWindowTest {
  protected:
    QMdiSubWindow& Frame(const char* name) {
        return *qobject_cast<QMdiSubWindow*>(Child<>(name)->parentWidget());
    }
    /// As somebody who drags the title bar.
    void Drag(QMdiSubWindow& frame, const QPoint& by) {
        const QPoint title(frame.width() / 2, 12);
        QMouseEvent hover(QEvent::MouseMove, title, frame.mapToGlobal(title), Qt::NoButton,
                          Qt::NoButton, {});
        QApplication::sendEvent(&frame, &hover);
        QTest::mousePress(&frame, Qt::LeftButton, {}, title);
        QMouseEvent move(QEvent::MouseMove, title + by, frame.mapToGlobal(title + by), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(&frame, &move);
        QTest::mouseRelease(&frame, Qt::LeftButton, {}, title + by);
    }
    void ExpectNothingCovered(const std::vector<const char*>& names) {
        for (const char* name : names) {
            const QRect place = Frame(name).geometry();
            for (const char* other : names)
                EXPECT_TRUE(name == other || !place.intersects(Frame(other).geometry()))
                    << name << " and " << other;
        }
    }
};

TEST_F(DeskTest, ARunShowsSourceBoardAndMessagesAtEverySize) {
    Write("a.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    Press(CommandId::Run);
    for (const QSize& size : {QSize(1280, 720), QSize(1366, 768), QSize(1920, 1080)}) {
        window->resize(size);
        QCoreApplication::processEvents();
        ExpectNothingCovered({"frmSource", "frmVirtualBoard", "frmCompilerOutput"});
        for (const char* name : {"frmSource", "frmVirtualBoard", "frmCompilerOutput"})
            EXPECT_TRUE(window->rect().contains(Frame(name).geometry())) << name;
    }
    Press(CommandId::OpenVirtualBoard);
    ExpectNothingCovered({"frmSource", "frmVirtualBoard", "frmCompilerOutput", "frmTerminal"});
}

TEST_F(DeskTest, WhatTheUserMovesStaysHisUntilHeGivesItBack) {
    window->resize(1400, 900);
    Write("a.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    Press(CommandId::Run);
    const QRect given = Frame("frmSource").geometry();
    Drag(Frame("frmSource"), {60, 40});
    const QRect chosen = given.translated(60, 40);
    EXPECT_EQ(Frame("frmSource").geometry(), chosen);
    Press(CommandId::OpenVirtualBoard);  // another window comes
    window->resize(1500, 950);
    EXPECT_EQ(Frame("frmSource").geometry(), chosen);

    Press(CommandId::CloseSource);
    window->Files().OpenFile(folder_.path(), "a.txt");
    EXPECT_EQ(Frame("frmSource").geometry(), chosen);
    window->close();
    Start();
    window->Files().OpenFile(folder_.path(), "a.txt");
    EXPECT_EQ(Frame("frmSource").geometry(), chosen) << "in the next run too";

    Press(CommandId::ArrangeAsWorkspace);
    EXPECT_NE(Frame("frmSource").geometry(), chosen);
    EXPECT_TRUE(IsFactoryPlace(*settings, kSourceWindowPlace));
    Press(CommandId::CloseSource);
    EXPECT_TRUE(IsFactoryPlace(*settings, kSourceWindowPlace)) << "the desk keeps nothing";
}

TEST_F(DeskTest, EveryChildWindowKeepsItsPlace) {
    struct Case {
        CommandId command;
        const char* name;
    };
    window->resize(1400, 900);
    for (const Case& c :
         {Case{CommandId::Variables, "frmVariables"}, Case{CommandId::Calculator, "frmCalc"},
          Case{CommandId::Plot, "frmPlot"}, Case{CommandId::OpenVirtualBoard, "frmVirtualBoard"},
          Case{CommandId::Help, "frmBrowser"}}) {
        Press(c.command);
        const QRect chosen(120, 80, 900, 600);
        Frame(c.name).setGeometry(chosen);
        Frame(c.name).close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Press(c.command);
        EXPECT_EQ(Frame(c.name).geometry(), chosen) << c.name;
    }
}

TEST_F(DeskTest, MaximisedAndMinimisedWindowsComeBackToTheirPlaces) {
    window->resize(1400, 900);
    Write("a.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    Press(CommandId::Run);
    QCoreApplication::processEvents();
    const QRect given = Frame("frmSource").geometry();
    Frame("frmSource").showMaximized();
    Frame("frmSource").showNormal();
    EXPECT_EQ(Frame("frmSource").geometry(), given);
    Frame("frmVirtualBoard").showMinimized();
    QCoreApplication::processEvents();
    EXPECT_GT(Frame("frmSource").width(), given.width()) << "its room is used";
    Frame("frmVirtualBoard").showNormal();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Frame("frmSource").geometry() == given; }));
}

TEST_F(DeskTest, TheStartPageBegins) {
    auto* page = Child<>("StartPage");
    const auto click = [&](const QString& name) {
        auto* button = page->findChild<QToolButton*>(name);
        ASSERT_NE(button, nullptr) << name.toStdString();
        QTest::mouseClick(button, Qt::LeftButton);
        QCoreApplication::processEvents();
    };
    EXPECT_TRUE(page->isVisible());
    click("StartNew");
    EXPECT_FALSE(page->isVisible());
    ASSERT_NE(FrontSource(), nullptr);
    Press(CommandId::CloseSource);
    QCoreApplication::processEvents();
    EXPECT_TRUE(page->isVisible());
    QDir(folder_.path()).mkdir("other");
    for (const char* name : {"other/two.txt", "one.txt", "two.txt"}) {
        WriteFile(name, "BEGIN PROGRAM\nEND PROGRAM\n");
        window->Files().OpenFile(folder_.path(), name);
    }
    QCoreApplication::processEvents();
    window->close();
    Start();
    page = Child<>("StartPage");
    const auto recent = [page](int number) {
        return page->findChild<QToolButton*>(QString("StartRecent%1").arg(number))->text();
    };
    EXPECT_EQ(recent(1), QDir(folder_.path()).dirName() + "/two.txt");
    EXPECT_EQ(recent(2), "one.txt");
    EXPECT_EQ(recent(3), "other/two.txt");
    click("StartSession");
    EXPECT_EQ(window->Files().Windows().size(), 3);
}

/// Each program that is shipped has a picture of its own, and none is out of sight to the side.
TEST_F(DeskTest, TheStartPageShowsEveryExampleAtAnyWidth) {
    const auto none = [] { return QStringList(); };
    StartPage page({}, ZENTRO_EXAMPLES_FOLDER, none, none);
    page.resize(1200, 700);
    page.show();
    const auto buttons = page.findChildren<QToolButton*>(QRegularExpression("^StartExample_"));
    ASSERT_GT(buttons.size(), 10);
    std::vector<std::vector<char>> pictures;
    for (QToolButton* button : buttons) {
        const QImage picture = button->icon().pixmap(48).toImage();
        pictures.emplace_back(picture.constBits(), picture.constBits() + picture.sizeInBytes());
    }
    std::ranges::sort(pictures);
    EXPECT_EQ(std::ranges::adjacent_find(pictures), pictures.end());
    for (const int width : {1200, 683, 640, 480}) {
        page.resize(width, 360);
        QCoreApplication::processEvents();
        for (const QToolButton* button : buttons) {
            const int left = button->mapTo(&page, QPoint()).x();
            EXPECT_LE(left + button->width(), page.width())
                << width << button->text().toStdString();
        }
    }
}

}  // namespace
}  // namespace zentro
