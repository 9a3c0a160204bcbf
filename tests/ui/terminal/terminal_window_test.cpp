#include "ui/terminal/terminal_window.h"

#include <QAbstractButton>
#include <QDate>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTextBlock>
#include <gmock/gmock.h>
#include <optional>

#include "tests/ui/terminal/terminal_fixture.h"
#include "ui/support/window_place.h"

namespace zentro {
namespace {

using ::testing::HasSubstr;

constexpr const char* kRefused = "KineTron in Debug Mode and cannot alter hardware";

class TerminalWindowTest : public TerminalTest {
  protected:
    TerminalWindowTest() {
        window.emplace(*workbench, session);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*window));
        window->OpenConnection(kVirtualBoardPort);
        EXPECT_TRUE(QTest::qWaitFor([this] { return Shows("Kinetron"); }));
    }

    template <typename Widget = QAbstractButton>
    Widget& Find(const char* name) {
        Widget* found = window->findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    /// At the left, where check boxes have their box.
    void Click(const char* name) {
        auto& button = Find<>(name);
        QTest::mouseClick(&button, Qt::LeftButton, {}, {8, button.height() / 2});
    }
    void Slide(const char* name, int value) { Find<QSlider>(name).setValue(value); }
    QString ShownText() { return Find<QPlainTextEdit>("txtTerminal").toPlainText(); }
    void Type(const char* text) {
        QTest::keyClicks(&Find<QPlainTextEdit>("txtTerminal"), text);
        QTest::keyClick(&Find<QPlainTextEdit>("txtTerminal"), Qt::Key_Return);
    }
    void EnterDebugMode() {
        Load("56,0,16,56,0,16,5");
        Type("d");
        EXPECT_TRUE(QTest::qWaitFor([this] { return session.IsDebugging(); }));
    }
    QPoint PlaceOf(const QString& text, int offset) {
        auto& view = Find<QPlainTextEdit>("txtTerminal");
        QTextCursor cursor = view.document()->find(text);
        EXPECT_FALSE(cursor.isNull()) << text.toStdString();
        cursor.setPosition(cursor.selectionStart() + offset);
        return view.cursorRect(cursor).center() + QPoint(2, 0);
    }

    std::optional<TerminalWindow> window;
};

TEST_F(TerminalWindowTest, ShowsWhatTheBoardSaysAndSendsKeysWithoutTypingThem) {
    const QString greeting = "]\nW\nKinetron\n\n";
    EXPECT_TRUE(QTest::qWaitFor([&] { return ShownText() == greeting; }));
    auto& view = Find<QPlainTextEdit>("txtTerminal");
    QTest::keyClicks(&view, "wx");
    QTest::keyClick(&view, Qt::Key_Backspace);
    EXPECT_EQ(ShownText(), greeting);  // nothing is there before the board has echoed it
    EXPECT_TRUE(QTest::qWaitFor([&] { return ShownText() == greeting + "w"; }));
    EXPECT_TRUE(view.textCursor().atEnd());
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ShownText() == greeting + "Kinetron\n"; }));

    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(window->CopySelectedText(), greeting + "Kinetron\n");
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(board.serial.line, "") << "keys of the clipboard do not go to the board";
}

TEST_F(TerminalWindowTest, KeepsTheSelectionWhileTheBoardWrites) {
    auto& view = Find<QPlainTextEdit>("txtTerminal");
    EXPECT_TRUE(QTest::qWaitFor([this] { return ShownText().contains("Kinetron"); }));
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, PlaceOf("Kinetron", 2));
    for (int i = 0; i < 22; ++i)
        session.WriteToScreen("next\r\n");  // two lines leave at the top: the name stays
    EXPECT_TRUE(QTest::qWaitFor([this] { return ShownText().endsWith("next\nnext\n"); }));
    EXPECT_EQ(window->CopySelectedText(), "Kinetron");
    session.WriteToScreen(
        "\x1b"
        "cgone");
    EXPECT_TRUE(QTest::qWaitFor([this] { return ShownText() == "gone"; }));
    EXPECT_EQ(window->CopySelectedText(), "");
}

TEST_F(TerminalWindowTest, DrivesTheOutputsFromThePanel) {
    struct Row {
        const char* forward;
        const char* back;
        const char* slider;
        const char* label;
        const Drive& output;
    };
    const Row rows[] = {
        {"Mtr1Fwd", "Mtr1BCK", "Mtr1SP", "Mtr1Speed", board.outputs.motors[0]},
        {"Mtr2FWD", "Mtr2BCk", "Mtr2SP", "Mtr2Speed", board.outputs.motors[1]},
        {"Mtr3fwd", "Mtr3Bck", "Mtr3SP", "Mtr3Speed", board.outputs.motors[2]},
        {"Mtr4Fwd", "Mtr4BCK", "MTR4SP", "Mtr4Speed", board.outputs.motors[3]},
        {"Svo1Fwd", "Svo1BCK", "Svo1Pos", "Svo1Position", board.outputs.servos[0]},
        {"Svo2Fwd", "Svo2Bck", "Svo2Pos", "Svo2Position", board.outputs.servos[1]},
    };
    std::uint8_t value = 20;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.slider);
        Click(row.forward);
        Slide(row.slider, ++value);
        EXPECT_EQ(row.output, (Drive{kForward, value}));
        EXPECT_EQ(Find<QLabel>(row.label).text().toInt(), value);
        const QString spoken =
            Find<QSlider>(row.slider).accessibleName() + ": " + QString::number(value);
        EXPECT_EQ(Find<QLabel>(row.label).accessibleName(), spoken) << "name and value both";
        Click(row.back);
        EXPECT_EQ(row.output, (Drive{kBackward, value}));
    }
    // One group's choice is nothing to another's.
    EXPECT_TRUE(Find<>("Mtr1BCK").isChecked() && Find<>("Svo2Bck").isChecked());
    for (const char* name : {"Action1", "Action2", "Action3"})
        Click(name);
    Click("Action2");
    EXPECT_EQ(board.outputs.ports, (std::array{true, false, true}));
    Find<>("Mtr1BCK").setFocus();
    QTest::keyClick(&Find<>("Mtr1BCK"), Qt::Key_Up);
    EXPECT_EQ(board.outputs.motors[0], (Drive{kForward, 21}));
    QTest::keyClick(&Find<>("Mtr1Fwd"), Qt::Key_Tab);
    EXPECT_TRUE(Find<QSlider>("Mtr1SP").hasFocus());
    QTest::keyClick(&Find<QSlider>("Mtr1SP"), Qt::Key_Tab);
    EXPECT_TRUE(Find<>("Mtr2BCk").hasFocus()) << "the chosen one of the next group";
    Click("MTr1Off");
    EXPECT_EQ(board.outputs.motors[0], Drive{});
    EXPECT_EQ(Find<QSlider>("Mtr1SP").value(), 21);

    Click("BtnStop");
    EXPECT_EQ(board.outputs, Outputs{});
    for (const Row& row : rows) {
        EXPECT_FALSE(Find<>(row.back).isChecked()) << row.back;
        EXPECT_EQ(Find<QSlider>(row.slider).value(), 0) << row.slider;
    }
    for (const char* name : {"MTr1Off", "Mtr2Off", "MTr3Off", "Mtr4Off", "SVo1Ctr", "Svo2OFf"})
        EXPECT_TRUE(Find<>(name).isChecked()) << name;
    EXPECT_FALSE(Find<>("Action1").isChecked());
}

TEST_F(TerminalWindowTest, RunsAndScans) {
    Load("56,0,16,5");  // INCREMENT BYTE [16], END
    Click("BtnRun");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shows("End at [0003]"); }));
    EXPECT_EQ(Find<>("BtnScanAllInputs").text(), "Scan Inputs");
    Click("BtnScanAllInputs");
    EXPECT_EQ(Find<>("BtnScanAllInputs").text(), "Stop Scan");
    EXPECT_TRUE(QTest::qWaitFor([this] { return ShownText().contains("Battery    255"); }));
    QTest::keyClick(&*window, Qt::Key_N, Qt::AltModifier);
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return Find<>("BtnScanAllInputs").text() == "Scan Inputs"; }));
    EXPECT_FALSE(board.serial.reporting);
}

TEST_F(TerminalWindowTest, KeepsALog) {
    const QDate today = QDate::currentDate();
    const QByteArray start =
        "Log Started " + QLocale::system().toString(today, QLocale::LongFormat).toUtf8() + "\r\n";
    dialogs.fileToSave = FilePath("session.Log");
    Click("BtnLog");  // the file is not to be created
    EXPECT_EQ(dialogs.questions.size(), 1);
    EXPECT_EQ(Find<>("BtnLog").text(), "Start Log");
    dialogs.yes = true;
    Click("BtnLog");
    EXPECT_EQ(Find<>("BtnLog").text(), "End Log");
    EXPECT_EQ(dialogs.lastChoice.title, "Select where to Log KineTron session");
    EXPECT_EQ(dialogs.lastChoice.suggestedName,
              "KineTronLog" + today.toString("yyyyMMdd") + ".Log");
    EXPECT_EQ(dialogs.lastChoice.filters,
              "ZentroCompiler KineTron Logs (*.Log)|*.Log|All Files (*.*)|*.*");
    EXPECT_EQ(dialogs.lastChoice.folder.toStdString(),
              AsText(settings->GetSetting(SettingNumber::SourceFolder)));
    session.WriteToScreen(
        "\x1b"
        "cone\r\n");
    Click("BtnLog");
    EXPECT_EQ(Find<>("BtnLog").text(), "Start Log");
    EXPECT_EQ(ReadFile("session.Log"), start + "]\r\nW\r\nKinetron\r\n\r\none\r\n\r\n");

    Click("BtnLog");  // the old file is replaced; the window is closed while the log is open
    QSignalSpy closing(&*window, &TerminalWindow::FormClosing);
    window->close();
    EXPECT_EQ(closing.count(), 1);
    EXPECT_EQ(ReadFile("session.Log"), start + "one\r\n\r\n");
    EXPECT_FALSE(link.IsOpen());

    dialogs.fileToSave = FilePath("no such folder/session.Log");
    dialogs.shown.clear();
    Click("BtnLog");
    EXPECT_EQ(dialogs.shown.size(), 1);
    EXPECT_EQ(Find<>("BtnLog").text(), "Start Log");
}

TEST_F(TerminalWindowTest, DebugModeStepsRefusesHardwareAndLeadsToTheSource) {
    Click("Mtr1BCK");
    EnterDebugMode();
    Type("");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shows("[0003]") && session.IsDebugging(); }));
    EXPECT_EQ(board.memory.Byte(16), 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return ShownText().contains("[0003]"); }));
    // The step's line stands right below the last one.
    EXPECT_THAT(ShownText().toStdString(),
                HasSubstr("[0000] INCREMENT BYTE [0010]\n[0003] INCREMENT BYTE [0010]\n*Debug"));

    Click("Mtr1Fwd");
    Click("Action1");
    EXPECT_EQ(dialogs.shown, (QStringList{kRefused, kRefused}));
    EXPECT_TRUE(Find<>("Mtr1BCK").isChecked()) << "the board was told nothing else";
    EXPECT_FALSE(Find<>("Action1").isChecked());
    EXPECT_EQ(board.outputs.motors[0], (Drive{kBackward, 0}));
    auto& slider = Find<QSlider>("Mtr1SP");  // dragged, it would send at each step
    slider.setSliderDown(true);
    slider.setSliderPosition(50);
    slider.setSliderPosition(60);
    EXPECT_EQ(Find<QLabel>("Mtr1Speed").text(), "60");
    slider.setSliderDown(false);
    EXPECT_EQ(dialogs.shown.size(), 3);

    QSignalSpy sync(&session, &TerminalSession::SyncToCodeLine);
    auto& view = Find<QPlainTextEdit>("txtTerminal");
    for (const int offset : {0, 3, 5})
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, PlaceOf("[0003]", offset));
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, PlaceOf("INCREMENT", 3));
    ASSERT_EQ(sync.count(), 3);
    for (const QList<QVariant>& arguments : sync)
        EXPECT_EQ(arguments[0].value<std::uint16_t>(), 3);

    Click("BtnStop");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shows("Stopped at [0003]"); }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Find<>("MTr1Off").isChecked(); }));
    EXPECT_EQ(board.outputs, Outputs{});
}

TEST_F(TerminalWindowTest, ShowsThePromptAndTheAddressBesideEachOther) {
    auto& view = Find<QPlainTextEdit>("txtTerminal");
    const auto linesOf = [&](const QString& text) {
        return view.document()->find(text).block().layout()->lineCount();
    };
    const auto isSeen = [&](const QTextCursor& cursor) {
        return view.viewport()->rect().contains(view.cursorRect(cursor).center());
    };
    EnterDebugMode();
    EXPECT_TRUE(QTest::qWaitFor([this] { return ShownText().contains("[0000]"); }));
    EXPECT_EQ(linesOf("*Debug Mode*"), 1);
    for (const int width : {1000, 400, 300}) {
        SCOPED_TRACE(width);
        window->resize(width, window->height());
        Type("");
        EXPECT_TRUE(QTest::qWaitFor([&] { return ShownText().endsWith("Step ->"); }));
        QTextCursor address = view.document()->find("[0000]");
        address.setPosition(address.selectionStart());
        EXPECT_TRUE(isSeen(address));
        EXPECT_TRUE(isSeen(view.textCursor()));
    }
}

TEST_F(TerminalWindowTest, DownloadsWithProgressUntilCancelled) {
    QByteArray program;
    for (int line = 0; line < 60; ++line)
        program += "56,0,250\n";
    WriteFile("program.obj", program);
    auto& view = Find<QPlainTextEdit>("txtTerminal");
    auto& bar = Find<QWidget>("downloadBar");
    const auto isWaiting = [&] {
        return bar.isVisible() && !view.isEnabled() && !Find<>("Mtr1Fwd").isEnabled() &&
               window->cursor().shape() == Qt::WaitCursor;
    };
    const auto isRestored = [&] {
        return !bar.isVisible() && view.isEnabled() && Find<>("Mtr1Fwd").isEnabled() &&
               window->cursor().shape() == Qt::ArrowCursor;
    };
    EXPECT_TRUE(isRestored());
    Click("Action2");
    Click("BtnScanAllInputs");
    view.setFocus();
    window->DownloadSource(FilePath("program.obj"));
    EXPECT_TRUE(isWaiting());
    EXPECT_TRUE(Find<>("BtnCancelDownload").hasFocus());
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shows("Downloading Program"); }));
    Click("BtnCancelDownload");
    EXPECT_TRUE(isRestored());
    EXPECT_TRUE(view.hasFocus());
    EXPECT_FALSE(Find<>("Action2").isChecked()) << "a download puts everything to rest";
    EXPECT_EQ(Find<>("BtnScanAllInputs").text(), "Scan Inputs");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board.serial.loader.active; }));
    Click("BtnRun");  // asks whether to run half a program
    EXPECT_EQ(dialogs.questions.size(), 1);
    EXPECT_FALSE(board.processor.running);

    window->DownloadSource(FilePath("program.obj"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shows("Working.... 25  Lines Sent"); }));
    EXPECT_TRUE(isWaiting());
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shows("Loaded 180 bytes"); }));
    EXPECT_TRUE(isRestored());
    Click("BtnRun");
    EXPECT_EQ(dialogs.questions.size(), 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board.processor.steps > 0; }));

    window->DownloadSource(FilePath("program.obj"));
    Click("BtnStop");  // ends the download before it stops the board
    EXPECT_TRUE(isRestored());
    EXPECT_FALSE(board.serial.loader.active);

    window->DownloadSource(FilePath("missing.obj"));
    EXPECT_TRUE(isRestored());
    EXPECT_THAT(dialogs.shown.join(" ").toStdString(),
                HasSubstr("Error Dowloading file. Error text is: "));
}

TEST_F(TerminalWindowTest, OffersALostPortAgain) {
    auto& banner = Find<QWidget>("connectionBanner");
    EXPECT_FALSE(banner.isVisible());
    Unplug();
    EXPECT_TRUE(QTest::qWaitFor([&] { return banner.isVisible(); }));
    EXPECT_THAT(Find<QLabel>("connectionText").text().toStdString(),
                HasSubstr("The connection to VIRTUAL BOARD was lost."));
    EXPECT_FALSE(Find<>("BtnOpenAgain").isEnabled());
    EXPECT_TRUE(Find<QPlainTextEdit>("txtTerminal").isEnabled());
    PlugIn();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Find<>("BtnOpenAgain").isEnabled(); }));
    Click("BtnOpenAgain");
    EXPECT_FALSE(banner.isVisible());
    Click("Action3");
    EXPECT_TRUE(board.outputs.ports[2]);

    settings->SaveSetting(SettingNumber::ReopenPortWhenBack, 1);
    Unplug();
    EXPECT_TRUE(QTest::qWaitFor([&] { return banner.isVisible(); }));
    PlugIn();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !banner.isVisible(); }));
    EXPECT_TRUE(session.IsConnected());
}

TEST_F(TerminalWindowTest, SaysThatACutCableHasKeptTheProgramFromTheBoard) {
    WriteFile("program.obj", QByteArray("56,0,250\n").repeated(60));
    const auto text = [&] { return Find<QLabel>("connectionText").text(); };
    window->DownloadSource(FilePath("program.obj"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shows("Working.... 25  Lines Sent"); }));
    Unplug();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shows("Sent 60 Lines in total. "); }));
    EXPECT_TRUE(Shows("The connection was lost.\r\nThe board does not hold the program."));
    EXPECT_TRUE(QTest::qWaitFor([&] { return text().contains("does not hold the program"); }));
    PlugIn();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Find<>("BtnOpenAgain").isEnabled(); }));
    EXPECT_TRUE(text().contains("does not hold the program"));
    Click("BtnOpenAgain");
    Click("BtnRun");
    EXPECT_EQ(dialogs.questions.size(), 1);
}

TEST_F(TerminalWindowTest, TakesColoursFromTheSettings) {
    settings->SaveSetting(SettingNumber::TerminalTextColour, 0x0000FF);  // red
    settings->SaveSetting(SettingNumber::TerminalBackColour, 0xFFFFFF);
    window->SetFormColours();
    const QPalette colours = Find<QPlainTextEdit>("txtTerminal").palette();
    EXPECT_EQ(colours.color(QPalette::Text), QColor(Qt::red));
    EXPECT_EQ(colours.color(QPalette::Base), QColor(Qt::white));
}

}  // namespace
}  // namespace zentro
