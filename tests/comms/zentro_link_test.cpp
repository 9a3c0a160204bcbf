// The real zentro-link with the real zentro-board on a pseudo-terminal.
#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <termios.h>
#include <unistd.h>

#include "apps/zentro-board/pseudo_terminal.h"
#include "compiler/symbols_file.h"
#include "config/file.h"
#include "tests/comms/board_fixture.h"
#include "tests/comms/examples_support.h"

namespace zentro {
namespace {

using namespace std::chrono_literals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class ZentroLink : public BoardFixture {
  protected:
    std::string Path(const std::string& name) {
        return folder_.filePath(QString::fromStdString(name)).toStdString();
    }
    std::string Write(const std::string& name, const std::string& text) {
        EXPECT_EQ(WriteWholeFile(Path(name), text), "");
        return Path(name);
    }
    /// Compiles an example to NAME.obj and NAME.sym.
    void Compile(const std::string& name) {
        const auto program = test::CompileExample(name);
        Write(name + ".obj", program->object.text);
        Write(name + ".sym", SymbolsFileText(program->compilation));
    }

    void Start(const QString& program, const std::vector<std::string>& arguments,
               const std::string& input = {}) {
        QStringList list;
        for (const std::string& argument : arguments)
            list << QString::fromStdString(argument);
        process_.start(program, list);
        ASSERT_TRUE(process_.waitForStarted());
        if (input.empty()) return;
        process_.write(input.c_str());
        process_.closeWriteChannel();
    }
    /// Its exit status; the event loop runs meanwhile. Keeps what it wrote.
    int Finish() {
        const bool ended =
            WaitUntil([this] { return process_.state() == QProcess::NotRunning; }, 30s);
        EXPECT_TRUE(ended);
        if (!ended) process_.kill();
        out_ = process_.readAllStandardOutput().toStdString();
        err_ = process_.readAllStandardError().toStdString();
        return process_.exitCode();
    }
    int Run(const std::vector<std::string>& arguments, const std::string& input = {}) {
        Start(ZENTRO_LINK_PROGRAM, arguments, input);
        return Finish();
    }

    QTemporaryDir folder_;
    QProcess process_;
    std::string out_;
    std::string err_;
};

TEST_F(ZentroLink, LoadsRunsAndStops) {
    StartBoard();
    const std::string object = Write("a.obj", "53,0,3\r\n53,0,0\r\n");
    EXPECT_EQ(Run({PortName(), "run"}), 1);
    EXPECT_EQ(err_, "zentro-link: the board answers: No program\n");
    EXPECT_EQ(Run({PortName(), "download", object}), 0) << err_;
    EXPECT_EQ(out_, "Loaded 6 bytes\n");
    EXPECT_EQ(err_, "");
    EXPECT_EQ(Run({PortName(), "run"}), 0) << err_;
    EXPECT_EQ(Run({PortName(), "terminal"}, "x\n"), 0);
    EXPECT_THAT(out_, HasSubstr("Stopped at ["));
    EXPECT_EQ(Run({PortName(), "run", "-q"}), 0) << err_;
    EXPECT_EQ(Run({PortName(), "stop"}), 0) << err_;
    EXPECT_EQ(out_ + err_, "");
    EXPECT_EQ(Run({PortName(), "terminal"}, "x\n"), 0);
    EXPECT_THAT(out_, testing::Not(HasSubstr("Stopped")));

    EXPECT_EQ(Run({PortName(), "--quiet", "download", Write("b.obj", "1,256\r\n")}), 1);
    EXPECT_THAT(err_, StartsWith("zentro-link: the board answers: Not loaded: line 1 "));
}

TEST_F(ZentroLink, PrintsVariablesAsTheVirtualBoardDoes) {
    Compile("sort_table");
    StartBoard();
    ASSERT_EQ(Run({PortName(), "download", Path("sort_table.obj")}), 0) << err_;
    ASSERT_EQ(Run({PortName(), "variables", "--symbols", Path("sort_table.sym")}), 1);
    EXPECT_THAT(err_, HasSubstr("KineTron is not in debug mode"));
    ASSERT_EQ(Run({PortName(), "debug"}), 0) << err_;
    EXPECT_THAT(out_, StartsWith("[0000] "));
    constexpr int kSteps = 60;
    ASSERT_EQ(Run({PortName(), "terminal"}, std::string(kSteps, '\r')), 0);
    // No connection carries out an instruction by itself.
    ASSERT_EQ(Run({PortName(), "variables", "--symbols", Path("sort_table.sym")}), 0) << err_;
    ASSERT_EQ(Run({PortName(), "variables", "--symbols", Path("sort_table.sym")}), 0) << err_;
    const auto shown = test::Split(out_, '\n');

    Start(ZENTRO_BOARD_PROGRAM, {"run", Path("sort_table.obj"), "--symbols", Path("sort_table.sym"),
                                 "--max-steps", std::to_string(kSteps)});
    ASSERT_EQ(Finish(), 4) << err_;
    auto expected = test::Split(out_, '\n');
    ASSERT_EQ(expected.back(), "steps\t" + std::to_string(kSteps));
    expected.pop_back();
    ASSERT_EQ(shown.size(), expected.size());
    bool cut = false;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        // Of the table the first eight of ten.
        cut = cut || shown[i] != expected[i];
        const bool isTable = shown[i].find("\ttable\t") != std::string::npos;
        EXPECT_EQ(isTable ? expected[i].substr(0, shown[i].size()) : expected[i], shown[i]);
    }
    EXPECT_TRUE(cut);
    EXPECT_THAT(expected, testing::Not(testing::Contains("Program_Left\tbyte\t0")));
}

TEST_F(ZentroLink, RefusesWhatItCannotDo) {
    StartBoard();
    const std::string symbols = Write("a.sym", "Count byte\n");
    const std::string empty = Write("b.sym", "");
    const std::string missing = Path("missing.obj");
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string error;
    } rows[] = {
        {{"/dev/no-such-port", "run"}, 3, "/dev/no-such-port"},
        {{PortName(), "download", missing}, 2, "cannot read '" + missing + "': No such file"},
        {{PortName(), "download", "/dev/zero"},
         2,
         "cannot read '/dev/zero': It is no regular file"},
        {{PortName(), "download"}, 2, "FILE is required"},
        {{PortName(), "variables", "--symbols", missing}, 2, "No such file"},
        {{PortName(), "variables", "--symbols", symbols}, 2, "line 1: this is no name"},
        {{PortName(), "variables", "--symbols", empty}, 2, "there are no variables"},
        {{PortName()}, 2, "say what to do"},
        {{}, 2, "--list shows"},
        {{"run"}, 2, "--list shows"},
        {{PortName(), "--list"}, 2, "--list stands alone"},
        {{PortName(), "jump"}, 2, "jump"},
        {{PortName(), "run", "stop"}, 2, "stop"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Run(row.arguments), row.status) << testing::PrintToString(row.arguments);
        EXPECT_THAT(err_, HasSubstr(row.error));
        EXPECT_EQ(out_, "");
    }
    EXPECT_EQ(Run({"--list"}), 0) << err_;
    EXPECT_THAT(out_, EndsWith("\n"));
    EXPECT_EQ(Run({"--help"}), 0);
    EXPECT_THAT(out_, HasSubstr("zentro-link PORT COMMAND"));
}

TEST_F(ZentroLink, SaysThatTheBoardWentAwayHalfWay) {
    Compile("explorer");
    StartBoard();
    Start(ZENTRO_LINK_PROGRAM, {PortName(), "download", Path("explorer.obj")});
    WaitUntil([] { return false; }, 1500ms);  // it takes seven seconds
    ASSERT_EQ(process_.state(), QProcess::Running);
    ClosePort();
    EXPECT_EQ(Finish(), 3);
    EXPECT_THAT(err_, HasSubstr("the connection to " + PortName() + " was lost\n"));
    EXPECT_EQ(out_, "");
}

/// Ctrl+C, and an end that nobody can do anything about.
TEST_F(ZentroLink, LeavesNoPartOfAProgramOnTheBoard) {
    Compile("explorer");
    for (const bool isKilled : {false, true}) {
        StartBoard();
        Start(ZENTRO_LINK_PROGRAM, {PortName(), "download", Path("explorer.obj")});
        WaitUntil([] { return false; }, 1500ms);  // it takes seven seconds
        ASSERT_EQ(process_.state(), QProcess::Running);
        kill(static_cast<pid_t>(process_.processId()), isKilled ? SIGKILL : SIGINT);
        Finish();
        EXPECT_EQ(process_.exitStatus(), QProcess::CrashExit) << "its caller sees the signal";
        EXPECT_EQ(err_, isKilled ? "" : "zentro-link: cancelled; the board holds no program now\n");
        EXPECT_EQ(out_, "");
        for (const bool isFirst : {true, false}) {
            EXPECT_EQ(Run({PortName(), "run"}), 1);
            EXPECT_THAT(err_, StartsWith("zentro-link: the board answers: No program"));
            EXPECT_EQ(err_.find("A download was broken off") != std::string::npos,
                      isKilled && isFirst);
        }
    }
}

TEST_F(ZentroLink, SendsAllOfItsInputAtTheSpeedOfTheLine) {
    constexpr int kLines = 400;
    StartBoard({"--baud", "9600"});
    std::string input;
    for (int line = 0; line < kLines; ++line)
        input += "a" + std::to_string(line % 3 + 1) + "1\n";
    EXPECT_EQ(Run({PortName(), "terminal"}, input), 0) << err_;
    std::string echoes = test::Split(out_, '\n').size() > 3 ? out_.substr(out_.find("a11")) : "";
    std::erase(echoes, '\r');
    EXPECT_EQ(echoes, input);
}

TEST_F(ZentroLink, StopsABoardThatNeverStopsTalking) {
    StartBoard();
    const std::string object = Write("a.obj", "13,0,6\r\n53,0,0\r\n65\r\n");
    ASSERT_EQ(Run({PortName(), "download", object}), 0) << err_;
    ASSERT_EQ(Run({PortName(), "terminal"}, "g\n"), 0) << err_;
    EXPECT_THAT(out_, EndsWith("AAA"));
    ASSERT_EQ(Run({PortName(), "run"}), 0) << err_;
    ASSERT_EQ(Run({PortName(), "stop"}), 0) << err_;
    ASSERT_EQ(Run({PortName(), "terminal"}, "x\n"), 0) << err_;
    EXPECT_THAT(out_, testing::Not(HasSubstr("AAA")));
}

TEST_F(ZentroLink, NamesAPortOfTheCurrentFolder) {
    StartBoard();
    process_.setWorkingDirectory(folder_.path());
    ASSERT_EQ(symlink(PortName().c_str(), Path("b1").c_str()), 0);
    EXPECT_EQ(Run({"b1", "stop"}), 3);
    EXPECT_THAT(err_, HasSubstr("There is no /dev/b1, but there is ./b1. To use that, name it "));
    EXPECT_EQ(Run({"./b1", "stop"}), 0) << err_;
    Write("b2", "no port");
    EXPECT_EQ(Run({"b2", "stop"}), 3);
    EXPECT_THAT(err_, HasSubstr("There is no /dev/b2 at present. "));
}

/// zentro-link on a terminal of its own.
class ZentroLinkTerminal : public ZentroLink {
  protected:
    ZentroLinkTerminal() {
        EXPECT_TRUE(keyboard_) << error_;
        termios settings = Settings();
        settings.c_lflag |= ICANON | ECHO | ISIG;
        settings.c_iflag |= ICRNL;
        settings.c_oflag |= OPOST | ONLCR;
        tcsetattr(keyboard_->Descriptor(), TCSANOW, &settings);
        before_ = Settings();
        StartBoard();
        const QString name = QString::fromStdString(keyboard_->Name());
        process_.setStandardInputFile(name);
        process_.setStandardOutputFile(name);
        Start(ZENTRO_LINK_PROGRAM, {PortName(), "terminal"});
        EXPECT_TRUE(
            WaitUntil([this] { return (Settings().c_lflag & (ICANON | ECHO | ISIG)) == 0; }));
    }

    termios Settings() {
        termios settings{};
        tcgetattr(keyboard_->Descriptor(), &settings);
        return settings;
    }
    void Type(std::string_view keys) { keyboard_->Write(keys); }
    bool Shows(std::string_view text) {
        return WaitUntil([&] {
            screen_ += keyboard_->Read(4096);
            return screen_.find(text) != std::string::npos;
        });
    }
    void ExpectSettingsAsBefore() {
        const termios now = Settings();
        EXPECT_EQ(now.c_lflag, before_.c_lflag);
        EXPECT_EQ(now.c_iflag, before_.c_iflag);
        EXPECT_EQ(now.c_oflag, before_.c_oflag);
    }

    std::string error_;
    std::optional<PseudoTerminal> keyboard_ = PseudoTerminal::Open(error_);
    termios before_{};
    std::string screen_;
};

TEST_F(ZentroLinkTerminal, PassesEveryKeyUntilItsEndKey) {
    EXPECT_TRUE(Shows("Kinetron"));
    Type("a21\r");
    EXPECT_TRUE(Shows("a21"));
    Type("\x03\x1a\x04q\r");  // Ctrl+C, Ctrl+Z and Ctrl+D are keys like any others
    EXPECT_TRUE(Shows("q\r\r\n?"));
    EXPECT_EQ(process_.state(), QProcess::Running);
    Type("\x1d");
    EXPECT_EQ(Finish(), 0);
    EXPECT_EQ(process_.exitStatus(), QProcess::NormalExit);
    ExpectSettingsAsBefore();
}

TEST_F(ZentroLinkTerminal, RestoresTheTerminalWhenASignalEndsIt) {
    process_.terminate();
    Finish();
    EXPECT_EQ(process_.exitStatus(), QProcess::CrashExit);
    ExpectSettingsAsBefore();
}

TEST_F(ZentroLinkTerminal, RestoresTheTerminalWhenTheBoardGoes) {
    EXPECT_TRUE(Shows("Kinetron"));
    ClosePort();
    EXPECT_EQ(Finish(), 3);
    EXPECT_THAT(err_, HasSubstr("was lost"));
    ExpectSettingsAsBefore();
}

}  // namespace
}  // namespace zentro
