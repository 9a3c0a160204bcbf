// The plot, through the windows: chosen, looked at, moved in time, saved.
#include <QImage>
#include <QLabel>
#include <QToolButton>
#include <QTreeWidget>
#include <gmock/gmock.h>

#include "desktop/board_state.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/board/plot_view.h"
#include "ui/support/colours.h"

namespace zentro {
namespace {

using testing::HasSubstr;

constexpr auto kStairs =
    "DEFINE BYTE Count\nBEGIN PROGRAM\nCount = 0\nLOOP\nINCREMENT Count\n"
    "SET MOTOR 1, BACKWARD, Count\nWAIT 10\nEND LOOP\nEND PROGRAM\n";
/// The same variable at another address.
constexpr auto kOtherStairs =
    "DEFINE WORD Other\nDEFINE WORD Another\nDEFINE BYTE Count\nBEGIN PROGRAM\nOther = 900\n"
    "Another = 800\nCount = 77\nWAIT 100\nEND PROGRAM\n";

class PlotWindowTest : public MainWindowTest {
  protected:
    VirtualBoardHost& Host() { return window->Board().VirtualBoard(); }
    QTreeWidget& List() { return *Child<QTreeWidget>("PlotList"); }
    PlotView& View() { return *Child<PlotView>("PlotView"); }
    QString Status() { return Child<QLabel>("PlotStatus")->text(); }
    QTreeWidgetItem* Item(const QString& name) {
        const auto found = List().findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
        EXPECT_EQ(found.size(), 1) << name.toStdString();
        return found.value(0);
    }
    /// With the keys alone.
    void Tick(const QString& name) {
        List().setFocus();
        List().setCurrentItem(Item(name));
        QTest::keyClick(&List(), Qt::Key_Space);
    }
    QString Value(const QString& name) { return Item(name)->text(1); }
    QByteArray Table() {
        dialogs.fileToSave = FilePath("plot.csv");
        Click("BtnPlotTable");
        return ReadFile("plot.csv");
    }
    /// A second of the program, held.
    void RunASecond(const QString& text) {
        Write(QString("stairs%1.txt").arg(++programs_), text);
        Press(CommandId::Run);
        Host().Pause();
        Host().Resume();
        Host().Advance(1000);
        Host().Pause();
        QTest::qWait(30);
    }

  private:
    int programs_ = 0;
};

TEST_F(PlotWindowTest, ShowsWhatIsTickedAndSavesIt) {
    Press(CommandId::Plot);
    EXPECT_TRUE(View().isVisible());
    EXPECT_FALSE(Child<QToolButton>("BtnPlotTable")->isEnabled());
    EXPECT_TRUE(List().findItems("Count", Qt::MatchExactly | Qt::MatchRecursive).isEmpty());
    Tick("Motor 1");
    RunASecond(kStairs);
    const std::uint64_t end = Host().Curves().Now();
    ASSERT_GE(end, 100U);
    Tick("Count");
    const int value = Host().State().outputs.motors[0].value;
    EXPECT_GE(value, 10);
    EXPECT_EQ(Value("Count"), QString::number(value));
    EXPECT_EQ(Value("Motor 1"), QString::number(-value));
    EXPECT_THAT(Status().toStdString(), HasSubstr("Values now, at " + std::to_string(end / 100)));

    const QByteArray table = Table();
    EXPECT_THAT(table.toStdString(), HasSubstr("seconds,\"Motor 1\",\"Count\"\n0.00,-1,\n"
                                               "0.10,-2,\n0.20,-3,\n"));
    EXPECT_THAT(Status().toStdString(), HasSubstr("Saved plot.csv"));
    EXPECT_EQ(dialogs.lastChoice.defaultSuffix, "csv");

    dialogs.fileToSave = FilePath("missing/plot.csv");
    Click("BtnPlotTable");
    EXPECT_THAT(LastShown().toStdString(), HasSubstr("plot.csv was not saved: "));

    dialogs.fileToSave = FilePath("plot.png");
    Click("BtnPlotPicture");
    QImage picture;
    ASSERT_TRUE(picture.loadFromData(ReadFile("plot.png"), "PNG"));
    EXPECT_GE(picture.width(), 1600);
    const QRgb colour = Item("Motor 1")->icon(0).pixmap(8, 8).toImage().pixel(4, 4);
    int coloured = 0;
    for (int y = picture.height() / 4; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            coloured += picture.pixel(x, y) == colour ? 1 : 0;
    }
    EXPECT_GT(coloured, 50) << "the curve is in the picture";
}

TEST_F(PlotWindowTest, TheCursorAndTheTimeMoveByKeys) {
    Press(CommandId::Plot);
    Tick("Motor 1");
    RunASecond(kStairs);
    View().setFocus();
    QTest::keyClick(&View(), Qt::Key_Home);
    EXPECT_TRUE(Child<QToolButton>("BtnPlotAll")->isChecked());
    EXPECT_EQ(View().From(), 0);
    EXPECT_EQ(View().To(), Host().Curves().Now() / 100.0);
    QTest::keyClick(&View(), Qt::Key_Right);
    ASSERT_TRUE(View().Cursor());
    for (int step = 0; step < 500 && *View().Cursor() > 25; ++step)
        QTest::keyClick(&View(), Qt::Key_Left);
    EXPECT_EQ(View().Cursor(), 25U);
    EXPECT_EQ(Value("Motor 1"), "-3");
    EXPECT_EQ(Status(), "Values at 0.25 s");
    EXPECT_THAT(View().accessibleDescription().toStdString(),
                HasSubstr("Values at 0.25 s. Motor 1: -3"));

    QTest::keyClick(&View(), Qt::Key_Plus);
    EXPECT_FALSE(Child<QToolButton>("BtnPlotAll")->isChecked());
    EXPECT_NEAR(View().To() - View().From(), Host().Curves().Now() / 200.0, 0.001);
    EXPECT_TRUE(View().From() <= 0.25 && View().To() >= 0.25) << "where the cursor is";
    const double from = View().From();
    Host().Resume();
    Host().Advance(1000);
    Host().Pause();
    EXPECT_EQ(View().From(), from) << "it stands";
    QTest::keyClick(&View(), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_GT(View().From(), from);
    QTest::keyClick(&View(), Qt::Key_End);
    EXPECT_TRUE(Child<QToolButton>("BtnPlotLatest")->isChecked());
    QTest::keyClick(&View(), Qt::Key_Escape);
    EXPECT_FALSE(View().Cursor());

    const std::uint32_t last = Host().Curves().Now();
    View().setFocus();
    QTest::keyClick(&View(), Qt::Key_Right);
    for (int step = 0; step < 500 && *View().Cursor() < last; ++step)
        QTest::keyClick(&View(), Qt::Key_Right);
    ASSERT_TRUE(Host().StepBack() && Host().StepBack());
    EXPECT_LT(Host().Curves().Now(), last);
    QTest::qWait(40);
    EXPECT_FALSE(View().Cursor()) << "its time has been taken back";
    EXPECT_EQ(Value("Motor 1"), QString::number(-Host().State().outputs.motors[0].value));
}

TEST_F(PlotWindowTest, TheMouseMovesTheCursorAndTheTime) {
    Press(CommandId::Plot);
    Tick("Motor 1");
    RunASecond(kStairs);
    auto* picture = View().findChild<QWidget*>("PlotPicture");
    ASSERT_NE(picture, nullptr);
    const auto move = [&](const QPoint& at, Qt::MouseButtons buttons) {
        QMouseEvent event(QEvent::MouseMove, at, picture->mapToGlobal(at), Qt::NoButton, buttons,
                          {});
        QApplication::sendEvent(picture, &event);
    };
    const QPoint middle = picture->rect().center();
    move(middle, Qt::NoButton);
    EXPECT_EQ(View().Cursor(), Host().Curves().Now()) << "behind the end, the end";
    const double span = View().To() - View().From();
    QWheelEvent wheel(middle, picture->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(picture, &wheel);
    EXPECT_LT(View().To() - View().From(), span);
    EXPECT_EQ(View().Followed(), PlotView::Following::Nothing);
    const double from = View().From();
    QTest::mousePress(picture, Qt::LeftButton, {}, middle);
    move(middle + QPoint(-40, 0), Qt::LeftButton);
    QTest::mouseRelease(picture, Qt::LeftButton, {}, middle + QPoint(-40, 0));
    EXPECT_GT(View().From(), from);
    EXPECT_TRUE(View().hasFocus());
}

TEST_F(PlotWindowTest, TicksStayWithTheirNamesAndColours) {
    Press(CommandId::Plot);
    RunASecond(kStairs);
    Tick("Count");
    Tick("Analogue input 2");
    const auto colour = [this](const QString& name) {
        return Item(name)->icon(0).pixmap(8, 8).toImage().pixel(4, 4);
    };
    const QRgb first = colour("Count");
    const QRgb second = colour("Analogue input 2");
    EXPECT_NE(first, second);
    Child("frmPlot")->parentWidget()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(Child("frmPlot"), nullptr);
    EXPECT_EQ(Host().Curves().Curves().size(), 2U) << "they go on unseen";
    Press(CommandId::Plot);
    EXPECT_EQ(Item("Count")->checkState(0), Qt::Checked);
    EXPECT_EQ(colour("Count"), first);
    Tick("Count");
    EXPECT_EQ(colour("Analogue input 2"), second) << "though it is the first now";
    EXPECT_EQ(Value("Count"), "");
    Tick("Count");

    RunASecond(kOtherStairs);
    EXPECT_EQ(Value("Count"), "77") << "at its new address";
    RunASecond("BEGIN PROGRAM\nWAIT 100\nEND PROGRAM\n");
    EXPECT_EQ(Host().Curves().Curves().size(), 1U);
    RunASecond(kOtherStairs);
    EXPECT_EQ(Item("Count")->checkState(0), Qt::Checked) << "it is back";

    Click("BtnPlotSeparate");
    for (const char* name : {"Motor 1", "Motor 2", "Motor 3", "Motor 4", "Servo 1", "Servo 2"})
        Tick(name);
    EXPECT_EQ(Host().Curves().Curves().size(), 8U);
    Tick("Display");
    EXPECT_EQ(Item("Display")->checkState(0), Qt::Unchecked);
    EXPECT_EQ(Status(), "There is room for 8 curves: take a tick away first.");
    for (int row = 0; row < 8; ++row) {
        for (int other = 0; other < row; ++other) {
            const auto name = [this](int at) {
                const QString names[] = {"Count",   "Analogue input 2", "Motor 1", "Motor 2",
                                         "Motor 3", "Motor 4",          "Servo 1", "Servo 2"};
                return names[at];
            };
            EXPECT_NE(colour(name(row)), colour(name(other)));
        }
    }
}

}  // namespace
}  // namespace zentro
