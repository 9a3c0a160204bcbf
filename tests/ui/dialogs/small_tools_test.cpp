#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <sys/stat.h>

#include "tests/ui/ui_fixture.h"
#include "ui/dialogs/about_dialog.h"
#include "ui/dialogs/calculator.h"
#include "ui/dialogs/help_address.h"
#include "ui/dialogs/help_browser.h"
#include "ui/dialogs/splash_window.h"

namespace zentro {
namespace {

TEST(Calculator, ConvertsBothWays) {
    constexpr const char* rows[][2] = {
        {"255", "Dec to Hex: FF|Hex to Dec: 597"},
        {" fF ", "Hex to Dec: 255"},
        {"0x10", "Hex to Dec: 16"},
        {"-1", "Dec to Hex: FFFFFFFF"},
        {"-2147483648", "Dec to Hex: 80000000"},
        {"-2147483649", "Dec to Hex: -2147483649 Number too Big for Hex"},
        {"4294967295", "Dec to Hex: FFFFFFFF|Hex to Dec: Sorry - can't convert"},
        {"4294967296",
         "Dec to Hex: 4294967296 Number too Big for Hex|Hex to Dec: Sorry - can't convert"},
        {"99999999999999999999999",
         "Dec to Hex: 99999999999999999999999 Number too Big for Hex|"
         "Hex to Dec: Sorry - can't convert"},
        {"FFFFFFFF", "Hex to Dec: 4294967295"},
        {"00", "Zero is Zero in all bases"},
        {"-0", "Zero is Zero in all bases"},
        {"0x0", "Zero is Zero in all bases"},
        {"0x", "Sorry - can't convert"},
        {"", "Sorry - can't convert"},
        {"12.5", "Sorry - can't convert"},
        {"-FF", "Sorry - can't convert"},
    };
    for (const auto& [number, lines] : rows) {
        EXPECT_EQ(ConvertNumber(number).join('|'),
                  "Converting: " + QString(number).trimmed() + '|' + lines);
    }
    Calculator window;
    auto* field = window.findChild<QLineEdit*>("txtNumber");
    QTest::keyClicks(field, "16\r");
    QTest::keyClicks(field, "a\r");
    EXPECT_EQ(window.findChild<QPlainTextEdit*>("txtResult")->toPlainText(),
              "Converting: 16\nDec to Hex: 10\nHex to Dec: 22\n\nConverting: a\nHex to Dec: 10");
}

TEST(HelpAddress, FilesAreShownAndWebAddressesHandedOn) {
    struct Row {
        const char* text;
        AddressKind kind;
        const char* shown;
    };
    constexpr Row rows[] = {
        {"/a b/help.htm#Motor 1", AddressKind::LocalPage, "/a b/help.htm#Motor 1"},
        {"/a%20/100%.htm", AddressKind::LocalPage, "/a%20/100%.htm"},
        {"http://zentro.example/", AddressKind::WebAddress, "http://zentro.example/"},
        {"www.zentro.example", AddressKind::WebAddress, "https://www.zentro.example"},
        {"javascript:alert(1)", AddressKind::Unknown, "javascript:alert(1)"},
    };
    for (const Row& row : rows) {
        const QUrl address = AddressFromText(row.text);
        EXPECT_EQ(KindOf(address), row.kind) << row.text;
        EXPECT_EQ(AddressText(address), row.shown);
        EXPECT_EQ(AddressFromText(AddressText(address)), address);
    }
}

class HelpTest : public UiTest {
  protected:
    HelpTest()
        : browser_(dialogs, *workbench->disk, [this](const QUrl& url) {
              opened_ += url.toString();
              return canOpen_;
          }) {
        WriteFile("one.htm", "<title>One</title><p><a href='two.htm'>second</a></p>" +
                                 QByteArray("<p>line</p>").repeated(200) +
                                 "<h2><a name='Motor 1'>Motors</a></h2><p>caf\xE9</p>");
        WriteFile("two.htm", "<title>Two</title><p><a href='https://zentro.example/'>web</a></p>");
        browser_.show();
    }

    bool WaitFor(const QString& title) {
        EXPECT_EQ(browser_.windowTitle(), "Working...");
        return QTest::qWaitFor([&] { return browser_.windowTitle() == title; });
    }
    void Press(const char* name) {
        QTest::mouseClick(browser_.findChild<QToolButton*>(name), Qt::LeftButton);
    }
    void ClickLink() {
        // A link begins the page; its first letter lies within the margin of the document.
        QTest::mouseClick(page_.viewport(), Qt::LeftButton, {},
                          page_.cursorRect(QTextCursor(page_.document())).center() + QPoint(4, 0));
    }
    QString Label(const char* name) { return browser_.findChild<QLabel*>(name)->text(); }

    QStringList opened_;
    bool canOpen_ = true;
    HelpBrowser browser_;
    QTextBrowser& page_ = *browser_.findChild<QTextBrowser*>();
    QComboBox& address_ = *browser_.findChild<QComboBox*>("cboAddress");
    QLineEdit& field_ = *browser_.findChild<QLineEdit*>("txtSearch");
};

TEST_F(HelpTest, APictureThatIsAPipeStopsNothing) {
    QImage dot(7, 5, QImage::Format_RGB32);
    dot.fill(Qt::red);
    ASSERT_TRUE(dot.save(FilePath("dot.png")));
    ASSERT_EQ(mkfifo(PathOf("pipe.png").c_str(), S_IRUSR | S_IWUSR), 0);
    WriteFile("pictures.htm",
              "<title>Pictures</title><p>seen<img src='dot.png'>"
              "<img src='pipe.png'><img src='gone.png'></p>");
    browser_.SetStartingAddress(FilePath("pictures.htm"));
    ASSERT_TRUE(WaitFor("Pictures"));
    browser_.grab();
    EXPECT_TRUE(page_.toPlainText().startsWith("seen"));
    const QVariant seen = page_.document()->resource(QTextDocument::ImageResource, {"dot.png"});
    EXPECT_EQ(seen.value<QImage>().size(), dot.size()) << seen.typeName();
}

TEST_F(HelpTest, PagesLinksHistoryAndTopics) {
    browser_.SetStartingAddress(FilePath("one.htm"));
    ASSERT_TRUE(WaitFor("One"));
    EXPECT_TRUE(page_.toPlainText().endsWith("café"));
    ClickLink();
    ASSERT_TRUE(WaitFor("Two"));
    ClickLink();
    EXPECT_EQ(opened_, QStringList("https://zentro.example/"));
    EXPECT_EQ(browser_.windowTitle(), "Two") << "a link to the web leaves the page";
    Press("Back");
    ASSERT_TRUE(WaitFor("One"));
    Press("Forward");
    ASSERT_TRUE(WaitFor("Two"));
    Press("Home");
    ASSERT_TRUE(WaitFor("One"));
    EXPECT_EQ(page_.verticalScrollBar()->value(), 0);

    browser_.SearchForHelp("Motor 1");
    EXPECT_EQ(Label("lblSearching"), "Searching for: Motor 1");
    ASSERT_TRUE(WaitFor("One"));
    EXPECT_EQ(address_.currentText(), FilePath("one.htm#Motor 1"));
    EXPECT_GT(page_.verticalScrollBar()->value(), 0);
    EXPECT_EQ(Label("lblStatus"), "");
    browser_.SearchForHelp("caf");
    ASSERT_TRUE(WaitFor("One"));
    EXPECT_EQ(Label("lblStatus"), "There is no page for \"caf\" in this book.");
    EXPECT_EQ(field_.text(), "caf");
    EXPECT_EQ(field_.selectedText(), "caf");
    EXPECT_EQ(QApplication::focusWidget(), &field_);
    EXPECT_EQ(address_.count(), 4) << "every address once";
    EXPECT_EQ(address_.itemText(3), FilePath("two.htm"));
}

TEST_F(HelpTest, TopicsOpenTheFirstPlaceThatThereIs) {
    browser_.ShowTopic(FilePath("one.htm"), {"motor", {"SET MOTOR 1", "motor 1", "line"}});
    ASSERT_TRUE(WaitFor("One"));
    EXPECT_EQ(address_.currentText(), FilePath("one.htm#Motor 1"));
    EXPECT_EQ(Label("lblSearching"), "Searching for: Motor 1");
    EXPECT_GT(page_.verticalScrollBar()->value(), 0);
    browser_.ShowTopic(FilePath("one.htm"), {"Speed", {}});
    ASSERT_TRUE(WaitFor("One"));
    EXPECT_EQ(Label("lblStatus"), "There is no page for \"Speed\" in this book.");
    EXPECT_EQ(field_.text(), "Speed");
    QTest::keyClicks(&field_, "Motor");
    EXPECT_EQ(Label("lblStatus"), "") << "that was about another word";
    browser_.ShowTopic("https://zentro.example/book", {"motor", {"SET MOTOR"}});
    ASSERT_TRUE(WaitFor("Shown in your web browser"));
    EXPECT_EQ(opened_, QStringList("https://zentro.example/book#SET MOTOR"));
    EXPECT_EQ(Label("lblStatus"), "");
    browser_.ShowTopic(FilePath("one.htm"), {});
    ASSERT_TRUE(WaitFor("One"));
    EXPECT_EQ(page_.verticalScrollBar()->value(), 0);
    EXPECT_EQ(Label("lblStatus"), "");
}

TEST_F(HelpTest, TheSearchCountsAndGoesRound) {
    WriteFile("song.htm", "<title>Song</title><p>One bottle</p>" +
                              QByteArray("<p>filler</p>").repeated(100) +
                              "<p>two Bottles</p><p><a name='LAST'></a>the last bottle</p>");
    browser_.SetStartingAddress(FilePath("song.htm"));
    ASSERT_TRUE(WaitFor("Song"));
    const auto selected = [&] { return page_.textCursor().block().text(); };
    page_.setFocus();
    QTest::keyClick(&page_, Qt::Key_F, Qt::ControlModifier);
    ASSERT_EQ(QApplication::focusWidget(), &field_);
    QTest::keyClicks(&field_, "bottle");
    EXPECT_EQ(Label("lblMatches"), "3 found");
    // What is pressed, what is selected then, and what the count says.
    struct Step {
        QWidget* focus;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        QString block;
        QString count;
    };
    for (const Step& step : std::vector<Step>{
             {&field_, Qt::Key_Return, Qt::NoModifier, "One bottle", "1 of 3"},
             {&field_, Qt::Key_Return, Qt::NoModifier, "two Bottles", "2 of 3"},
             {&page_, Qt::Key_F3, Qt::NoModifier, "the last bottle", "3 of 3"},
             {&page_, Qt::Key_F3, Qt::NoModifier, "One bottle", "1 of 3, again from the top"},
             {address_.lineEdit(), Qt::Key_F3, Qt::ShiftModifier, "the last bottle",
              "3 of 3, again from the bottom"},
             {&field_, Qt::Key_F3, Qt::ShiftModifier, "two Bottles", "2 of 3"},
             {&field_, Qt::Key_Enter, Qt::ShiftModifier, "One bottle", "1 of 3"},
         }) {
        step.focus->setFocus();
        QTest::keyClick(step.focus, step.key, step.modifiers);
        EXPECT_EQ(selected(), step.block);
        EXPECT_EQ(Label("lblMatches"), step.count) << step.block.toStdString();
        EXPECT_TRUE(page_.viewport()->rect().intersects(page_.cursorRect()));
    }
    Press("SearchNext");
    EXPECT_EQ(selected(), "two Bottles");
    Press("SearchPrevious");
    EXPECT_EQ(selected(), "One bottle");
    EXPECT_EQ(page_.extraSelections().size(), 3);
    field_.setFocus();
    QTest::keyClick(&field_, Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &page_);
    EXPECT_TRUE(page_.extraSelections().isEmpty());
    EXPECT_EQ(Label("lblMatches"), "");
    QTest::keyClick(&page_, Qt::Key_F3);
    EXPECT_EQ(QApplication::focusWidget(), &field_) << "nothing to look for yet";
}

TEST_F(HelpTest, TheSearchGoesToAPlaceBeforeItGoesToMentions) {
    WriteFile("words.htm", "<title>Words</title><p>print this</p>" +
                               QByteArray("<p>filler</p>").repeated(100) +
                               "<p><a name='PRINT'></a>print</p><p><a name='s19'></a>motors</p>" +
                               QByteArray("<p>filler</p>").repeated(100));
    browser_.SetStartingAddress(FilePath("words.htm"));
    ASSERT_TRUE(WaitFor("Words"));
    Press("Search");
    QTest::keyClicks(&field_, "print\r");
    EXPECT_EQ(page_.textCursor().block().text(), "print");
    EXPECT_EQ(Label("lblMatches"), "2 of 2");
    EXPECT_EQ(address_.currentText(), FilePath("words.htm#PRINT"));
    QTest::keyClick(&field_, Qt::Key_Return);
    EXPECT_EQ(page_.textCursor().block().text(), "print this");
    field_.clear();
    QTest::keyClicks(&field_, "S19\r");
    EXPECT_EQ(address_.currentText(), FilePath("words.htm#s19"));
    EXPECT_EQ(Label("lblMatches"), "") << "the place is there, the text is not";
    field_.clear();
    QTest::keyClicks(&field_, "gearbox\r");
    EXPECT_EQ(Label("lblMatches"), "Not found");
    EXPECT_TRUE(field_.hasFocus());
    Press("Home");
    ASSERT_TRUE(WaitFor("Words"));
    EXPECT_EQ(field_.text(), "gearbox") << "the text stays for the next page";
}

TEST_F(HelpTest, StopRefreshAndWhatCannotBeShown) {
    browser_.SetStartingAddress(FilePath("one.htm"));
    ASSERT_TRUE(WaitFor("One"));
    Press("Refresh");
    Press("Stop");
    EXPECT_EQ(browser_.windowTitle(), "One");
    WriteFile("one.htm", "<title>New</title>");
    Press("Refresh");
    ASSERT_TRUE(WaitFor("New"));
    address_.lineEdit()->selectAll();
    QTest::keyClicks(address_.lineEdit(), FilePath("gone.htm") + '\r');
    ASSERT_TRUE(WaitFor("This page cannot be shown"));
    EXPECT_TRUE(page_.toPlainText().contains("gone.htm"));
    EXPECT_TRUE(page_.toPlainText().contains("No such file"));

    browser_.SetStartingAddress("http://zentro.example/");
    ASSERT_TRUE(WaitFor("Shown in your web browser"));
    EXPECT_EQ(opened_, QStringList("http://zentro.example/"));
    canOpen_ = false;
    Press("Home");
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_TRUE(dialogs.shown[0].startsWith("http://zentro.example/"));
}

class AboutTest : public UiTest {};

TEST_F(AboutTest, TellsTheVersionAndCopiesTheSystemDetails) {
    QString shown;
    dialogs.run = [&](QDialog& dialog) {
        shown = dialog.findChild<QPlainTextEdit*>()->toPlainText();
        QTest::mouseClick(dialog.findChild<QPushButton*>("cmdCopy"), Qt::LeftButton);
        return true;
    };
    AboutDialog about(dialogs);
    EXPECT_EQ(about.windowTitle(), "About ZentroCompiler");
    EXPECT_TRUE(about.findChild<QLabel*>("lblVersion")->text().startsWith("Version "));
    QTest::mouseClick(about.findChild<QPushButton*>("cmdSysInfo"), Qt::LeftButton);
    EXPECT_TRUE(shown.contains(QString("\nQt: ") + qVersion())) << shown.toStdString();
    EXPECT_EQ(QApplication::clipboard()->text(), shown);
    EXPECT_EQ(SystemDetailsText({}), "System Information Is Unavailable At This Time");
}

TEST(Splash, AsksForTheMainWindowAtTheFirstTickAndClosesAtTheSecond) {
    EXPECT_EQ(VersionText("2.1.37"), "Version 2.1 Build 37");
    QPointer<SplashWindow> splash = new SplashWindow;
    QSignalSpy asked(splash, &SplashWindow::ShowMainWindow);
    QElapsedTimer time;
    time.start();
    splash->show();
    ASSERT_TRUE(asked.wait(5000));
    EXPECT_GE(time.elapsed(), 450);
    EXPECT_TRUE(splash && splash->isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return splash.isNull(); }));
    EXPECT_GE(time.elapsed(), 950);
    EXPECT_EQ(asked.count(), 1);
}

TEST(Splash, AKeyOrAClickClosesItAtOnce) {
    for (const bool key : {true, false}) {
        QPointer<SplashWindow> splash = new SplashWindow;
        QSignalSpy asked(splash, &SplashWindow::ShowMainWindow);
        splash->show();
        if (key)
            QTest::keyClick(splash, Qt::Key_Space);
        else
            QTest::mouseClick(splash->findChild<QLabel*>("lblVersion"), Qt::LeftButton);
        ASSERT_TRUE(splash);
        EXPECT_FALSE(splash->isVisible());
        EXPECT_EQ(asked.count(), 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

}  // namespace
}  // namespace zentro
