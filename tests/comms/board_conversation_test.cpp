// Whole conversations with a board on a pseudo-terminal: load, run, stop, step, look at variables,
// drive outputs, scan inputs; and boards that are slow, silent or suddenly gone.
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <unistd.h>

#include "board/board.h"
#include "board/loader.h"
#include "comms/manual_controls.h"
#include "comms/serial_link.h"
#include "comms/variable_reader.h"
#include "config/file.h"
#include "tests/comms/board_fixture.h"
#include "tests/comms/examples_support.h"
#include "tests/comms/recording_link.h"

namespace zentro {
namespace {

using namespace std::chrono_literals;
using test::CompileExample;
using testing::ElementsAre;

/// All that a terminal window has, on a serial line.
struct Terminal {
    explicit Terminal(const std::string& port) { session.OpenConnection(port); }

    bool Shows(std::string_view text) {
        return WaitUntil([&] { return session.Screen().Text().find(text) != std::string::npos; });
    }
    void Type(std::string_view keys) {
        for (const char key : keys)
            session.PressKey(key);
    }
    bool Prompts() {
        return WaitUntil([this] { return session.IsDebugging(); });
    }

    std::vector<std::string> messages;
    TerminalSession::MessageSink keep = [this](const std::string& text) {
        messages.push_back(text);
    };
    SerialLink link;
    TerminalSession session{link, keep};
    ManualControls controls{session};
};

/// A model of the board, made as the one on the line.
std::unique_ptr<Board> ModelOf(const std::string& object) {
    auto board = std::make_unique<Board>();
    EXPECT_EQ(LoadObjectText(*board, object), "");
    return board;
}

/// The model carries out a debug command and goes on to its next prompt.
void Debug(Board& model, std::string_view command) {
    ReceiveCharacters(model, command);
    for (int tick = 0; model.processor.debug != DebugState::AtPrompt && tick < 10'000; ++tick)
        RunTicks(model, 1, 10'000);
}

/// Whether what comes next depends on how fast this computer is, or takes longer than a test
/// should.
bool DependsOnTime(const Board& model) {
    constexpr unsigned kTooLong = 100;
    if (model.events.mode != EventMode::Disabled) return true;
    const std::uint32_t address = model.processor.address;
    const Opcode opcode{model.memory.Byte(address)};
    if (opcode == Opcode::GetClockTicks) return true;
    return opcode == Opcode::WaitForTime &&
           model.memory.Word(model.memory.Word(address + 1)) > kTooLong;
}

/// What the window is to show of a variable.
std::string ValueIn(const Board& model, const DebugVariable& variable) {
    char text[64];
    const auto byte = [&](std::uint32_t offset) {
        return unsigned{model.memory.Byte(variable.address + offset)};
    };
    if (variable.type == DataType::Table) {
        std::string bytes;
        for (std::uint32_t offset = 0; offset < 8; ++offset) {
            std::snprintf(text, sizeof text, offset == 0 ? "%02X" : " %02X", byte(offset));
            bytes += text;
        }
        return bytes + "(1st 8 bytes only)";
    }
    const bool isWord = IsWordSized(variable.type);
    const unsigned value = isWord ? byte(0) << 8 | byte(1) : byte(0);
    std::snprintf(text, sizeof text, isWord ? "%u\t(%04Xh)" : "%u\t(%02Xh)", value, value);
    return text;
}

class ExampleOnBoard : public testing::TestWithParam<std::string> {};

TEST_P(ExampleOnBoard, LoadsStepsShowsItsVariablesRunsAndStops) {
    const auto program = CompileExample(GetParam());
    const std::string path = testing::TempDir() + "/" + GetParam() + std::to_string(getpid());
    ASSERT_EQ(WriteWholeFile(path, program->object.text), "");
    const auto model = ModelOf(program->object.text);
    ServedBoard board;
    Terminal terminal(board.PortName());
    ASSERT_TRUE(terminal.Shows("Kinetron"));

    terminal.session.DownloadSource(path);
    ASSERT_TRUE(WaitUntil([&] { return !terminal.session.IsDownloading(); }, 60s));
    std::filesystem::remove(path);
    ASSERT_TRUE(
        terminal.Shows("Loaded " + std::to_string(model->processor.programSize) + " bytes\r\n"));

    terminal.Type("D\r");
    ASSERT_TRUE(terminal.Prompts());
    Debug(*model, "D\r");
    for (int step = 0; step < 30 && !DependsOnTime(*model); ++step) {
        terminal.Type("\r");
        ASSERT_TRUE(terminal.Prompts()) << step << terminal.session.Screen().Text();
        Debug(*model, "\r");
    }
    VariableReader reader(terminal.keep);
    reader.SetTerminal(&terminal.session);
    ASSERT_TRUE(reader.LoadVariableList(VariablesOf(program->compilation)));
    reader.RefreshVariables();
    ASSERT_TRUE(WaitUntil([&] { return !reader.IsReading(); }));
    for (const DebugVariable& variable : reader.Variables())
        EXPECT_EQ(variable.debugValue, ValueIn(*model, variable)) << variable.resolvedName;

    terminal.controls.ChooseMotor(1, DriveOption::Forward);
    EXPECT_THAT(terminal.messages, ElementsAre("KineTron in Debug Mode and cannot alter hardware"));
    terminal.Type("X\r");
    EXPECT_TRUE(terminal.Shows("Stopped at ["));
    terminal.session.WriteToScreen(
        "\x1b"
        "c");
    terminal.controls.Run();
    EXPECT_TRUE(terminal.Shows("G\r\n"));
    terminal.controls.Stop();
    EXPECT_TRUE(terminal.Shows("Z\r\n"));
    EXPECT_TRUE(terminal.Shows("Stopped at [")) << terminal.session.Screen().Text();
    EXPECT_EQ(terminal.messages.size(), 1U);
}

std::string NameOfTest(const testing::TestParamInfo<std::string>& info) {
    std::string name = info.param;
    std::erase(name, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, ExampleOnBoard, testing::ValuesIn(test::ExampleNames()), NameOfTest);

// INCREMENT BYTE [0009]; INCREMENT WORD [000A]; JUMP [0000]; then the variables.
const std::string kObject = "56,0,9\r\n64,0,10\r\n53,0,0\r\n7\r\n1,255\r\n1,2,3,4,5,6,7,8,9\r\n";

std::vector<DebugVariable> VariablesOfObject() {
    const struct {
        const char* name;
        DataType type;
        std::uint32_t address;
    } rows[] = {
        {"Count", DataType::Byte, 9}, {"Far", DataType::Word, 10}, {"Tune", DataType::Table, 12}};
    std::vector<DebugVariable> variables;
    for (const auto& row : rows) {
        DebugVariable variable;
        variable.name = variable.resolvedName = row.name;
        variable.parentName = "Program";
        variable.type = row.type;
        variable.address = row.address;
        variables.push_back(variable);
    }
    return variables;
}

/// A board of the test's own on a pseudo-terminal, whose inputs and outputs can be reached.
class OwnBoard : public testing::Test {
  protected:
    OwnBoard() {
        line_.answer = [this](const std::string& received) {
            ReceiveCharacters(*board_, received);
            return TakeOutput(*board_);
        };
        QObject::connect(&time_, &QTimer::timeout, [this] {
            RunTicks(*board_, 1, 10'000);
            line_.Send(TakeOutput(*board_));
        });
        time_.start(10);
    }

    void StartDebugging() {
        terminal_.Type("D\r");
        ASSERT_TRUE(terminal_.Prompts());
        reader_.SetTerminal(&terminal_.session);
        reader_.LoadVariableList(VariablesOfObject());
    }

    std::unique_ptr<Board> board_ = ModelOf(kObject);
    ScriptedBoard line_;
    QTimer time_;
    Terminal terminal_{line_.PortName()};
    VariableReader reader_{terminal_.keep, 3s};
};

TEST_F(OwnBoard, DrivesEveryOutputAndShowsTheInputs) {
    using enum DriveOption;
    Outputs expected;
    for (int number = 1; number <= 4; ++number) {
        terminal_.controls.ChooseMotor(number, number == 3 ? Back : Forward);
        terminal_.controls.ChangeMotorSpeed(number, 100 - number);
    }
    expected.motors = {{{'F', 99}, {'F', 98}, {'B', 97}, {'F', 96}}};
    terminal_.controls.ChooseServo(1, Back);
    terminal_.controls.ChangeServoPosition(1, 45);
    terminal_.controls.ChooseServo(2, Forward);
    terminal_.controls.ChangeServoPosition(2, 90);
    expected.servos = {{{'B', 45}, {'F', 90}, {}}};
    for (int number = 1; number <= 3; ++number)
        terminal_.controls.SwitchAction(number, true);
    expected.ports = {true, true, true};
    EXPECT_TRUE(WaitUntil([&] { return board_->outputs == expected; }));
    terminal_.controls.Stop();
    EXPECT_TRUE(WaitUntil([&] { return board_->outputs == Outputs{}; }));

    terminal_.controls.ToggleScan();
    EXPECT_TRUE(terminal_.Shows("Buttons    0 0 0 0 0 0\r\n"));
    board_->inputs.buttons[5] = true;
    board_->inputs.battery = 99;
    EXPECT_TRUE(terminal_.Shows("Buttons    0 0 0 0 0 1\r\n"));
    EXPECT_TRUE(terminal_.Shows("Battery    99\r\n"));
    terminal_.controls.ToggleScan();
    EXPECT_TRUE(WaitUntil([&] { return !board_->serial.reporting; }));
}

TEST_F(OwnBoard, MayAnswerOneByteAtATime) {
    StartDebugging();
    line_.SendSlowly("", 1ms);
    reader_.RefreshVariables();
    ASSERT_TRUE(WaitUntil([&] { return !reader_.IsReading(); }));
    for (const DebugVariable& variable : reader_.Variables())
        EXPECT_EQ(variable.debugValue, ValueIn(*board_, variable)) << variable.name;
    EXPECT_FALSE(terminal_.session.ScreenOff());
}

TEST_F(OwnBoard, MayNeverAnswer) {
    StartDebugging();
    line_.answer = nullptr;
    VariableReader reader(terminal_.keep, 50ms);
    reader.SetTerminal(&terminal_.session);
    reader.LoadVariableList(VariablesOfObject());
    reader.RefreshVariables();
    EXPECT_TRUE(terminal_.session.ScreenOff());
    ASSERT_TRUE(WaitUntil([&] { return !reader.IsReading(); }));
    EXPECT_THAT(terminal_.messages,
                ElementsAre("KineTron does not answer. Variable Values cannot be gathered"));
    EXPECT_FALSE(terminal_.session.ScreenOff());
}

/// The cable is pulled in the middle of something.
class PulledCable : public OwnBoard {
  protected:
    PulledCable() {
        QObject::connect(&terminal_.session, &TerminalSession::ConnectionLost, [this] { ++lost_; });
    }
    bool IsLost() {
        return WaitUntil([this] { return lost_ > 0; });
    }
    int lost_ = 0;
};

TEST_F(PulledCable, WhileVariablesAreRead) {
    StartDebugging();
    line_.SendSlowly("", 1ms);
    reader_.RefreshVariables();
    const auto asksForSecond = [this] { return line_.Received().ends_with("M000A\r"); };
    ASSERT_TRUE(WaitUntil(asksForSecond));
    line_.HangUp();
    ASSERT_TRUE(IsLost());
    EXPECT_FALSE(reader_.IsReading());
    EXPECT_FALSE(terminal_.session.ScreenOff());
    EXPECT_EQ(reader_.Variables()[0].debugValue, "7\t(07h)");
    EXPECT_EQ(reader_.Variables()[1].debugValue, "");
    reader_.RefreshVariables();
    EXPECT_EQ(terminal_.messages.back(), "Terminal Window is not open");
}

TEST_F(PulledCable, WhileInputsAreScanned) {
    terminal_.controls.ToggleScan();
    ASSERT_TRUE(terminal_.Shows("Program    1\r\n"));
    line_.HangUp();
    ASSERT_TRUE(IsLost());
    EXPECT_FALSE(terminal_.session.IsConnected());
    const std::string shown = terminal_.session.Screen().Text();
    terminal_.controls.ToggleScan();
    terminal_.controls.Stop();
    EXPECT_EQ(terminal_.session.Screen().Text(), shown);
}

}  // namespace
}  // namespace zentro
