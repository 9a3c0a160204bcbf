#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTextBlock>

#include "desktop/compile_service.h"
#include "model/address.h"
#include "tests/ui/ui_fixture.h"
#include "ui/output/compiler_output_window.h"
#include "ui/output/object_code_window.h"
#include "ui/support/colours.h"

namespace zentro {
namespace {

QPlainTextEdit& TextOf(QWidget& window) {
    return *window.findChild<QPlainTextEdit*>();
}

/// Brings the line, from 0, into view and double-clicks on it.
void DoubleClick(QPlainTextEdit& text, int line) {
    text.setTextCursor(QTextCursor(text.document()->findBlockByNumber(line)));
    const QPoint place = text.cursorRect().center() + QPoint(10, 0);
    QTest::mouseDClick(text.viewport(), Qt::LeftButton, {}, place);
}

QColor ColourOfLine(const QPlainTextEdit& text, int line) {
    QTextCursor cursor(text.document()->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::EndOfBlock);
    return cursor.charFormat().foreground().color();
}

class NoPrompts : public Prompts {
  public:
    void ShowMessage(std::string_view) override {}
    std::optional<std::string> FindMissingFile(std::string_view, std::string_view,
                                               std::string_view) override {
        return std::nullopt;
    }
};

class CompileWindows : public UiTest {
  protected:
    CompileWindows()
        : service(configuration, *settings, programs, prompts),
          output(*workbench),
          listing(*workbench) {
        settings->SaveSetting(SettingNumber::SourceFolder, folder_.path().toStdString());
        settings->SaveSetting(SettingNumber::ObjectFolder, folder_.path().toStdString());
        output.resize(700, 400);
        listing.show();
        output.show();
        QObject::connect(&output, &CompilerOutputWindow::ShowLineWithError,
                         [this](const LineXref& line) {
                             shown += QString::fromStdString(line.fileName) + ':' +
                                      QString::number(line.sourceLineNo);
                         });
    }

    bool Compile(const QString& folder, const QString& name, ListingSink* sink = nullptr) {
        output.InitFile(folder, name);
        const FileId id = programs.Add(folder, name, [] { return QString(); });
        const auto program = service.Compile(*programs.File(id), output, sink);
        output.FinishCompile();
        return program != nullptr && !program->objectText.empty();
    }
    QString MessageText(MessageCode code) {
        const std::string_view text = configuration.messages.GetMessageText(code);
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }

    Programs programs{*workbench->disk};
    NoPrompts prompts;
    CompileService service;
    CompilerOutputWindow output;
    ObjectCodeWindow listing;
    QStringList shown;  ///< the source lines that the log led to
};

TEST_F(CompileWindows, EachMessageLeadsToItsOwnLine) {
    WriteFile("main.txt", "INCLUDE \"part.txt\"\r\nBEGIN PROGRAM\r\nWrong = 1\r\nWrong = 2\r\n");
    WriteFile("part.txt", "DEFINE ROUTINE Part()\r\n\r\nWrong = 3\r\nEND ROUTINE\r\n");
    EXPECT_FALSE(Compile(folder_.path(), "main.txt"));
    QPlainTextEdit& text = TextOf(output);
    QStringList expected;
    for (int line = 0; line < text.blockCount(); ++line) {
        const QString shownLine = text.document()->findBlockByNumber(line).text();
        const bool isMessage = shownLine.size() > 4 && shownLine[0].isDigit();
        if (isMessage) expected += QString::number(shownLine.left(4).toInt());
        DoubleClick(text, line);
    }
    ASSERT_GE(expected.size(), 3);
    const QStringList clicked = std::exchange(shown, {});
    ASSERT_EQ(clicked.size(), expected.size());
    for (qsizetype i = 0; i < clicked.size(); ++i) {
        EXPECT_EQ(clicked[i].section(':', 1), expected[i]);
    }
    EXPECT_EQ(text.toPlainText().count("\nIn 'part.txt':\n0003\tERROR: "), 1);
    EXPECT_EQ(text.toPlainText().count("\nIn 'main.txt':\n0003\tERROR: "), 1);
    EXPECT_TRUE(clicked.contains("part.txt:3"));
    EXPECT_TRUE(clicked.contains("main.txt:3"));
    ASSERT_EQ(output.Messages().size(), static_cast<std::size_t>(clicked.size()));
    EXPECT_EQ(output.Messages()[0].place.pathName, folder_.path().toStdString());

    text.moveCursor(QTextCursor::End);
    for (qsizetype i = 0; i <= clicked.size(); ++i)
        QTest::keyClick(&text, Qt::Key_F4);
    EXPECT_EQ(std::exchange(shown, {}), clicked + QStringList{clicked[0]});
    QTest::keyClick(&text, Qt::Key_F4, Qt::ShiftModifier);
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(shown, (QStringList{clicked.last(), clicked.last()}));
}

TEST_F(CompileWindows, TheFirstErrorIsInViewWhenTheRunIsOver) {
    QByteArray program = "DEFINE BYTE Count = 0\r\nBEGIN PROGRAM\r\nIF Count = 0 THEN 5\r\n";
    WriteFile("main.txt", program + QByteArray("    Wrong = 1\r\n").repeated(60));
    QPlainTextEdit& text = TextOf(output);
    for (const auto& key : {Qt::Key_Return, Qt::Key_F4}) {
        EXPECT_FALSE(Compile(folder_.path(), "main.txt"));
        const QString selected = text.textCursor().selectedText();
        EXPECT_TRUE(selected.startsWith("0003\tERROR: ")) << selected.toStdString();
        EXPECT_TRUE(text.viewport()->rect().contains(text.cursorRect()));
        QTest::keyClick(&text, key);
        EXPECT_EQ(std::exchange(shown, {}), QStringList{"main.txt:3"});
    }
    QTest::keyClick(&text, Qt::Key_F4);
    EXPECT_EQ(shown, QStringList{"main.txt:4"});
}

// Their messages stand at lines 9999 and 0; what opens the block and what runs first is shown.
TEST_F(CompileWindows, MessagesWithoutALineLeadToTheOneThatMatters) {
    const std::vector<std::pair<QByteArray, QString>> rows{
        {"\r\nDEFINE ROUTINE Open()\r\n", "main.txt:2"},
        {"DEFINE BYTE Speed = 1\r\n\r\nDISPLAY Speed\r\n", "main.txt:3"}};
    for (const auto& [text, line] : rows) {
        WriteFile("main.txt", text);
        EXPECT_FALSE(Compile(folder_.path(), "main.txt"));
        TextOf(output).moveCursor(QTextCursor::End);
        QTest::keyClick(&TextOf(output), Qt::Key_F4, Qt::ShiftModifier);
        EXPECT_EQ(std::exchange(shown, {}), QStringList{line});
    }
}

TEST_F(CompileWindows, TheLogShowsEverySeverityInItsLayoutAndColour) {
    struct Line {
        QString text;
        QColor colour;
    };
    SourceFile file{"main.txt", "/here", {}};
    SourceLine line;
    line.file = &file;
    line.fileLineNo = 12345;
    line.parsedLine = "1234567890123456789012345";
    SourceLine shorter = line;
    shorter.fileLineNo = 7;
    shorter.parsedLine = "123456789012345678901234";
    class NoPrompts : public Prompts {
        void ShowMessage(std::string_view) override { ADD_FAILURE(); }
        std::optional<std::string> FindMissingFile(std::string_view, std::string_view,
                                                   std::string_view) override {
            return std::nullopt;
        }
    } prompts;
    Diagnostics diagnostics(configuration.messages, output, prompts);
    diagnostics.StartCompile("main.txt");
    diagnostics.StartCompileStage(MessageCode::ParseStarts);
    diagnostics.LogSourceFileOpen("/here/main.txt");
    diagnostics.PostError(MessageCode::TypeMismatch, &line, "Extra");
    diagnostics.PostError(MessageCode::EventNotEndedBefore, &shorter);
    diagnostics.PostError(MessageCode::RunEnds, &shorter);
    diagnostics.PostError(MessageCode::NoProgram, nullptr);
    diagnostics.EndCompile(MessageCode::RunEnds);
    output.FinishCompile();

    const QColor red(255, 0, 0), blue(0, 0, 255), green(0, 127, 0), black(0, 0, 0),
        grey(109, 109, 109);
    const QPlainTextEdit& text = TextOf(output);

    const Line expected[]{
        {"*** Begining to compile 'main.txt' ***", black},
        {"\t" + MessageText(MessageCode::ParseStarts), grey},
        {"     \tOpening Source File '/here/main.txt'........", green},
        {"\t(Double Click on any error message to have related source line highlighted)", green},
        {"Line:\tMessage:", green},
        {"12345\tERROR:   1234567890123456789012345... E24: Extra - " +
             MessageText(MessageCode::TypeMismatch),
         red},
        {"0007\tWARNING: 123456789012345678901234     E509: " +
             MessageText(MessageCode::EventNotEndedBefore),
         blue},
        {"0007\t123456789012345678901234     E1012: " + MessageText(MessageCode::RunEnds), green},
        {"0000\tERROR:   \t\t E26: " + MessageText(MessageCode::NoProgram), red},
        {"\t" + MessageText(MessageCode::RunEnds), black},
        {"*** Compile Completed with 2 Errors and 1 Warnings. ***", red},
    };
    ASSERT_EQ(text.blockCount(), static_cast<int>(std::size(expected)));
    for (int i = 0; i < text.blockCount(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(text.document()->findBlockByNumber(i).text(), expected[i].text);
        EXPECT_EQ(ColourOfLine(text, i), expected[i].colour);
    }
    EXPECT_EQ(output.GetErrorCount(), 2);
    EXPECT_FALSE(text.toPlainText().endsWith('\n'));

    settings->SaveSetting(SettingNumber::EditorPageColour, 0x202020);
    settings->SaveSetting(SettingNumber::EditorTextColour, 0xF0F0F0);
    output.SetFormColours();
    for (int i = 0; i < text.blockCount(); ++i) {
        const QColor colour = ColourOfLine(text, i);
        EXPECT_EQ(ReadableOn(colour, QColor(0x20, 0x20, 0x20)), colour) << i;
    }
}

/// What a screen reader says of the run.
QString SpokenSummary(QWidget& window) {
    auto* const summary = window.findChild<QLabel*>("lblSummary");
    return QAccessible::queryAccessibleInterface(summary)->text(QAccessible::Name);
}

TEST_F(CompileWindows, TellsWhatCameOfARun) {
    output.InitFile("/here", "main.txt");
    output.InitFile("/there", "");
    EXPECT_EQ(output.windowTitle(), "main.txt (Compiler Output)");
    auto& progress = *output.findChild<QProgressBar*>();
    EXPECT_FALSE(progress.isVisible());
    output.Clear();
    EXPECT_TRUE(progress.isVisible());
    progress.setValue(96);
    for (const int value : {99, 100, 0, 3}) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return progress.value() == value; })) << value;
    }
    PostedMessage message{MessageCode::TypeMismatch, Severity::Error, {}, {}};
    output.Write("one\n", LogColour::Red, &message);
    message.severity = Severity::Warning;
    output.Write("two\n", LogColour::Blue, &message);
    output.Write("three\n", LogColour::Blue, &message);
    output.FinishCompile();
    EXPECT_FALSE(progress.isVisible());
    EXPECT_EQ(SpokenSummary(output), "1 error, 2 warnings");
    output.Clear();
    output.FinishCompile();
    EXPECT_EQ(SpokenSummary(output), "No errors, no warnings");
    EXPECT_EQ(TextOf(output).toPlainText(), "");
    EXPECT_EQ(output.GetErrorCount(), 0);
}

class KeptListing : public ListingSink {
  public:
    void AddCodeLine(std::string_view text) override {
        lines += QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    QStringList lines;
};

TEST_F(CompileWindows, TheListingIsWholeAndFoundByAddress) {
    QByteArray large = "DEFINE BYTE Count = 0\r\nBEGIN PROGRAM\r\n";
    for (int i = 0; i < 4500; ++i)
        large += "Count = Count + 1\r\n";
    WriteFile("large.txt", large + "END PROGRAM\r\n");
    settings->SaveSetting(SettingNumber::SourceFolder, ZENTRO_EXAMPLES_FOLDER);
    const std::pair<QString, QString> programs[]{{ZENTRO_EXAMPLES_FOLDER, "vending_machine.txt"},
                                                 {ZENTRO_EXAMPLES_FOLDER, "patrol.txt"},
                                                 {folder_.path(), "large.txt"}};
    for (const auto& [folder, name] : programs) {
        SCOPED_TRACE(name.toStdString());
        KeptListing kept;
        EXPECT_TRUE(Compile(folder, name, &kept)) << TextOf(output).toPlainText().toStdString();
        ObjectCodeWindow window(*workbench);
        window.show();
        EXPECT_TRUE(window.IsEmpty());
        EXPECT_TRUE(Compile(folder, name, &window));
        EXPECT_FALSE(window.IsEmpty());
        const int lines = static_cast<int>(kept.lines.size());
        EXPECT_TRUE(QTest::qWaitFor([&] { return TextOf(window).blockCount() > lines; }));
        EXPECT_EQ(TextOf(window).toPlainText(), kept.lines.join('\n') + '\n');
        const qsizetype step = kept.lines.size() > 1000 ? 997 : 1;
        for (qsizetype i = 0; i < kept.lines.size(); i += step) {
            const QString& line = kept.lines[i];
            if (!line.startsWith('[')) continue;
            ASSERT_TRUE(window.SelectLineByAddresss(
                *ParseAddress(line.mid(1, kAddressDigits).toStdString())));
            EXPECT_EQ(TextOf(window).textCursor().selectedText(), line);
        }
        window.CopySelectedText();
        const QString selected = TextOf(window).textCursor().selectedText();
        EXPECT_EQ(QGuiApplication::clipboard()->text(), selected);
        EXPECT_FALSE(window.SelectLineByAddresss(0xFFFF));
        EXPECT_EQ(TextOf(window).textCursor().selectedText(), selected);
    }
}

TEST_F(CompileWindows, ALineOfTheListingLeadsToItsAddress) {
    QList<int> addresses;
    QObject::connect(&listing, &ObjectCodeWindow::AddressActivated,
                     [&](std::uint16_t address) { addresses += address; });
    listing.AddCodeLine("[00A0]/0160                      NOP");
    listing.AddCodeLine("            Table:               1,2,3");
    listing.AddCodeLine("[01FF]/0511                      NOP\t\t\tsee [00A0]");
    ASSERT_TRUE(listing.SelectLineByAddresss(0x1FF));
    const QPalette colours = TextOf(listing).palette();
    EXPECT_EQ(colours.color(QPalette::Inactive, QPalette::Highlight),
              colours.color(QPalette::Active, QPalette::Highlight));
    for (int line = 0; line < 3; ++line)
        DoubleClick(TextOf(listing), line);
    EXPECT_EQ(addresses, (QList<int>{0xA0, 0x1FF}));
}

}  // namespace
}  // namespace zentro
