#include "ui/terminal/variables_window.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <optional>

#include "tests/support/compile_fixture.h"
#include "tests/ui/terminal/terminal_fixture.h"
#include "ui/terminal/variable_list.h"

namespace zentro {
namespace {

constexpr const char* kProgramText = R"(DEFINE BYTE Lap
DEFINE WORD Way
DEFINE ROUTINE Drive()
    DEFINE BYTE Pace
    Pace = 7
END ROUTINE
BEGIN PROGRAM
    Lap = 42
    Way = 1000
    CALL Drive()
    Lap = 43
END PROGRAM
)";

class VariablesWindowTest : public TerminalTest {
  protected:
    VariablesWindowTest() {
        EXPECT_TRUE(program.Compile()) << program.output.log;
        window.emplace(*workbench);
        window->show();
    }

    QStringList Lines() const {
        QStringList lines;
        const auto* list = window->findChild<QListWidget*>("ListVars");
        for (int row = 0; row < list->count(); ++row)
            lines += list->item(row)->text();
        return lines;
    }
    QString Value(const QString& name) const {
        for (const QString& line : Lines()) {
            if (line.section(u'\t', 0, 0).endsWith(name)) return line.section(u'\t', 1);
        }
        return "no such line";
    }
    QListWidgetItem& Item(const QString& name) {
        auto* list = window->findChild<QListWidget*>("ListVars");
        return *list->findItems(name + "\t", Qt::MatchContains).value(0);
    }
    QPushButton& Refresh() { return *window->findChild<QPushButton*>("cmdRefresh"); }
    QString Status() { return window->findChild<QLabel*>("lblStatus")->text(); }
    void Press(std::string_view keys) {
        for (const char key : keys)
            session.PressKey(key);
    }
    /// Steps until the variable at hand has the value.
    void StepUntil(const QString& name, unsigned value) {
        for (const DebugVariable& variable : VariablesOf(program.compilation)) {
            if (QString::fromStdString(variable.name) != name) continue;
            for (int step = 0; step < 50 && board.memory.Byte(variable.address) != value; ++step)
                Press("\r");
        }
        EXPECT_TRUE(QTest::qWaitFor([this] { return session.IsDebugging(); }));
    }

    test::Program program{kProgramText};
    std::optional<VariablesWindow> window;
};

TEST_F(VariablesWindowTest, SaysWhyItCannotRead) {
    window->LoadVariables(nullptr);
    window->LoadVariables(&program.compilation);
    session.OpenConnection(kVirtualBoardPort);
    window->SetTerminal(&session);
    QTest::mouseClick(&Refresh(), Qt::LeftButton);
    EXPECT_EQ(
        dialogs.shown,
        (QStringList{"No Variable Information found. Have you compiled the program?",
                     "Terminal Window is not open",
                     "Note: KineTron is not in debug mode. Variable Values cannot be gathered"}));
    EXPECT_EQ(Value("Lap"), "");
}

TEST_F(VariablesWindowTest, ReadsTheVariablesOfAProgramInDebugMode) {
    session.OpenConnection(kVirtualBoardPort);
    Load(program.object.text);
    Press("D\r");
    StepUntil("Pace", 7);
    const std::string screen = session.Screen().Text();
    window->SetTerminal(&session);
    window->LoadVariables(&program.compilation);
    EXPECT_EQ(Refresh().text(), "Refreshing........");
    EXPECT_EQ(window->cursor().shape(), Qt::WaitCursor);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Refresh().text() == "Refresh Variables"; }));
    EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(Value("Lap"), "42\t(2Ah)");
    EXPECT_EQ(Value("Way"), "1000\t(03E8h)");
    EXPECT_TRUE(Item("Pace").text().startsWith("Drive()")) << Item("Pace").text().toStdString();
    EXPECT_EQ(Value("Pace"), "7\t(07h)");
    EXPECT_EQ(session.Screen().Text(), screen);
    EXPECT_FALSE(Item("Lap").font().bold());

    StepUntil("Lap", 43);
    QTest::mouseClick(&Refresh(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Value("Lap") == "43\t(2Bh)"; }));
    EXPECT_TRUE(Item("Lap").font().bold());
    EXPECT_EQ(Item("Lap").data(Qt::AccessibleDescriptionRole), "changed");
    EXPECT_FALSE(Item("Way").font().bold());

    QTest::keyClicks(window->findChild<QLineEdit*>("txtFilter"), "wa");
    EXPECT_TRUE(Item("Lap").isHidden());
    EXPECT_FALSE(Item("Way").isHidden());

    QTest::mouseClick(&Refresh(), Qt::LeftButton);
    Unplug();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Refresh().isEnabled(); }));
    EXPECT_EQ(Status(), "Not all values were read");
    EXPECT_EQ(Value("Way"), "1000\t(03E8h)");
}

TEST_F(VariablesWindowTest, FollowsAVirtualBoardWithoutTheDebugPrompt) {
    window->SetLiveMemory([this](std::uint32_t address, std::size_t count) {
        std::string bytes;
        for (std::size_t i = 0; i < count; ++i)
            bytes += static_cast<char>(board.memory.Byte(address + static_cast<std::uint32_t>(i)));
        return bytes;
    });
    window->LoadVariables(&program.compilation);
    EXPECT_EQ(dialogs.shown, QStringList{});
    EXPECT_EQ(Value("Way"), "0\t(0000h)");
    Load(program.object.text + "\r\n");
    ReceiveCharacters(board, "G\r");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Value("Way") == "1000\t(03E8h)"; }));
    EXPECT_EQ(Value("Lap"), "43\t(2Bh)");

    EXPECT_TRUE(Item("Lap").font().bold());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Item("Lap").font().bold(); }));

    window->ListVariables(nullptr);  // the next compile failed
    EXPECT_EQ(dialogs.shown, QStringList{});
    EXPECT_EQ(Lines(), QStringList{});
    QSignalSpy closing(&*window, &VariablesWindow::FormClosing);
    window->close();
    EXPECT_EQ(closing.count(), 1);
}

TEST(VariableList, KeepsTheColumnsOfItsLines) {
    EXPECT_EQ(ExpandTabs("   Lap\t42\t(2Ah)"), "   Lap  42      (2Ah)");
    EXPECT_EQ(ExpandTabs("12345678\t1"), "12345678        1");
}

}  // namespace
}  // namespace zentro
