#include <QFontDatabase>
#include <QFontInfo>
#include <QHelpEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTextDocument>
#include <QToolTip>

#include "tests/ui/ui_fixture.h"
#include "ui/support/colours.h"
#include "ui/support/icons.h"
#include "ui/support/message_bar.h"
#include "ui/support/readable_style.h"
#include "ui/support/source_font.h"
#include "ui/support/window_place.h"

namespace zentro {

class SupportTest : public UiTest {};

TEST_F(SupportTest, PlacesAreKeptInTwipsAndStayVisible) {
    const QRect area(0, 0, 1000, 700);
    struct Case {
        QRect place;
        QRect kept;
    };
    for (const Case& c :
         {Case{{10, 20, 300, 200}, {10, 20, 300, 200}}, Case{{-50, -5, 300, 200}, {0, 0, 300, 200}},
          Case{{900, 650, 300, 200}, {700, 500, 300, 200}},
          Case{{5000, 9000, 3000, 2000}, {0, 0, 1000, 700}}}) {
        EXPECT_EQ(KeepWithin(c.place, area), c.kept);
    }
    SavePlace(*settings, kTerminalWindowPlace, {40, 30, 500, 400});
    EXPECT_EQ(AsInteger(settings->GetSetting(SettingNumber::TerminalWindowWidth)), 7500);
    EXPECT_EQ(LoadPlace(*settings, kTerminalWindowPlace), QRect(40, 30, 500, 400));
}

TEST_F(SupportTest, AFontThatIsMissingHasAMonospacedOneInItsPlace) {
    ASSERT_FALSE(QFontDatabase::hasFamily("No Such Font"));
    EXPECT_TRUE(QFontInfo(SourceFont("No Such Font", 9.75)).fixedPitch());
    EXPECT_TRUE(QFontInfo(ColumnFont("No Such Font", 9.75)).fixedPitch());
    const QStringList families = QFontDatabase::families();
    const auto proportional =
        std::find_if(families.begin(), families.end(),
                     [](const QString& name) { return !QFontInfo(QFont(name)).fixedPitch(); });
    ASSERT_NE(proportional, families.end());
    EXPECT_EQ(SourceFont(*proportional, 20).family(), *proportional) << "as it was chosen";
    EXPECT_TRUE(QFontInfo(ColumnFont(*proportional, 20)).fixedPitch());
    EXPECT_EQ(ColumnFont(*proportional, 20).pointSizeF(), 20);
}

TEST_F(SupportTest, AChildWindowMovesWithItsFrame) {
    QMdiArea area;
    area.resize(1200, 900);
    area.show();
    auto* window = new QWidget;
    QMdiSubWindow* frame = area.addSubWindow(window);
    frame->show();
    RestorePlace(*window, *settings, kObjectWindowPlace);  // 6300, 0, 6300, 6000 twips
    EXPECT_EQ(frame->geometry(), QRect(420, 0, 420, 400));
    frame->setGeometry(30, 45, 333, 222);
    RememberPlace(*window, *settings, kObjectWindowPlace);
    EXPECT_EQ(LoadPlace(*settings, kObjectWindowPlace), QRect(30, 45, 333, 222));
    frame->showMaximized();
    RememberPlace(*window, *settings, kObjectWindowPlace);
    EXPECT_EQ(LoadPlace(*settings, kObjectWindowPlace), QRect(30, 45, 333, 222));
}

TEST_F(SupportTest, ColoursOfTheSettingsFollowTheDesktop) {
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(20, 20, 20));
    palette.setColor(QPalette::Text, QColor(230, 230, 230));
    EXPECT_EQ(ToColour(0x00C000, palette), QColor(0, 192, 0));
    EXPECT_EQ(ToColour(0x000000FF, palette), QColor(255, 0, 0));
    EXPECT_EQ(FromColour(QColor(1, 2, 3)), 0x030201);
    EXPECT_EQ(ToColour(static_cast<std::int32_t>(0x80000005U), palette), QColor(20, 20, 20));
    EXPECT_EQ(ToColour(static_cast<std::int32_t>(0x80000008U), palette), QColor(230, 230, 230));
    EXPECT_TRUE(IsDark(palette));
    // Blue cannot be read on black; on white it stays as it is.
    EXPECT_NE(ReadableOn(Qt::blue, QColor(20, 20, 20)), QColor(Qt::blue));
    EXPECT_EQ(ReadableOn(Qt::blue, Qt::white), QColor(Qt::blue));
}

TEST_F(SupportTest, IconsTakeTheColourOfTheText) {
    EXPECT_TRUE(ThemedIcon("no such picture").isNull());
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::ButtonText, QColor(250, 10, 10));
    QApplication::setPalette(palette);
    const QImage image = ThemedIcon("stop").pixmap(16, 16).toImage();
    int reddest = 0;
    for (int x = 0; x < 16; ++x) {
        reddest = std::max(reddest, qAlpha(image.pixel(x, 4)) > 200 ? qRed(image.pixel(x, 4)) : 0);
    }
    EXPECT_GT(reddest, 200);
    EXPECT_EQ(DesktopFilters("Source (Text) Files|*.txt|All Files (*.*)|*.*"),
              "Source (Text) Files (*.txt);;All Files (*.*)");
}

/// The lightest pixel of the buttons in the title bar of a child window.
int LightestOfTitleButtons(QMdiSubWindow& frame) {
    const QImage image = frame.grab().toImage();
    int lightest = 0;
    for (int x = image.width() - 70; x < image.width() - 6; ++x) {
        for (int y = 6; y < 18; ++y)
            lightest = std::max(lightest, image.pixelColor(x, y).lightness());
    }
    return lightest;
}

TEST_F(SupportTest, InactiveWindowsAndHintsCanBeReadOnADarkDesktop) {
    const QPalette before = QApplication::palette();
    QPalette dark(QColor(50, 50, 50), QColor(40, 40, 40));
    dark.setColor(QPalette::PlaceholderText, Qt::black);
    QApplication::setPalette(dark);
    ReadableStyle style;
    style.polish(dark);
    EXPECT_EQ(dark.color(QPalette::PlaceholderText).lightness(),
              dark.color(QPalette::Text).lightness());
    QMdiArea area;
    area.resize(700, 400);
    QMdiSubWindow* inactive = area.addSubWindow(new QLabel("one"));
    QMdiSubWindow* active = area.addSubWindow(new QLabel("two"));
    for (QMdiSubWindow* frame : {inactive, active}) {
        frame->setStyle(&style);
        frame->resize(300, 200);
    }
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
    area.setActiveSubWindow(active);
    EXPECT_GT(LightestOfTitleButtons(*active), 180);
    EXPECT_GT(LightestOfTitleButtons(*inactive), 180);
    EXPECT_NE(inactive->grab().toImage().pixel(100, 5), active->grab().toImage().pixel(100, 5));
    QApplication::setPalette(before);
}

TEST_F(SupportTest, ALongMessageEndsBeforeThePanelsAndIsWholeInItsToolTip) {
    MessageBar bar;
    auto* panel = new QLabel("Line 1/9", &bar);
    bar.addPermanentWidget(panel);
    bar.resize(300, 24);
    bar.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&bar));
    bar.showMessage("short");
    EXPECT_EQ(bar.ShownMessage(), "short");
    const QString whole =
        "Error: IF <Count> has a value that does not come from a byte\nWarning: two";
    bar.showMessage(whole);
    const QString shown = bar.ShownMessage();
    EXPECT_TRUE(shown.startsWith("Error: IF <")) << shown.toStdString();
    EXPECT_TRUE(shown.endsWith(QChar(0x2026))) << shown.toStdString();
    EXPECT_LT(6 + bar.fontMetrics().horizontalAdvance(shown), panel->x() - 6);
    // Nothing is painted between the message and the panel.
    const QImage image = bar.grab().toImage();
    for (int x = panel->x() - 8; x < panel->x(); ++x)
        EXPECT_EQ(image.pixel(x, 12), image.pixel(panel->x() - 8, 12));

    QHelpEvent help(QEvent::ToolTip, QPoint(20, 10), bar.mapToGlobal(QPoint(20, 10)));
    QApplication::sendEvent(&bar, &help);
    QTextDocument tip;
    tip.setHtml(QToolTip::text());
    EXPECT_EQ(tip.toPlainText(), whole);
}

TEST_F(SupportTest, NewsGiveWayToWhatLastsAndHintsToBoth) {
    MessageBar bar(nullptr, std::chrono::milliseconds(1));
    bar.ShowLasting("lasting");
    bar.ShowHint("hint");
    bar.ShowNews("news");
    EXPECT_EQ(bar.currentMessage(), "hint");
    bar.ShowHint({});
    EXPECT_EQ(bar.currentMessage(), "news");
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.currentMessage() == "lasting"; }));
    bar.ShowNews("news");
    bar.ShowLasting({});
    EXPECT_EQ(bar.currentMessage(), "news");
    bar.ShowLasting("another");
    EXPECT_EQ(bar.currentMessage(), "another");
}

}  // namespace zentro
