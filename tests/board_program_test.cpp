// The real zentro-board: run with real files, serve on a real pseudo-terminal.
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// A folder of its own for each test.
class BoardProgramTest : public testing::Test {
  protected:
    BoardProgramTest() { fs::create_directories(folder_); }
    ~BoardProgramTest() override { fs::remove_all(folder_); }

    std::string write(const std::string& name, const std::string& text) {
        std::ofstream(folder_ / name, std::ios::binary) << text;
        return folder_ / name;
    }

    /// Runs the program with these arguments. `errors` keeps what it wrote to standard error.
    int run(const std::string& arguments) {
        const std::string errorFile = folder_ / "errors";
        const std::string command =
            std::string(ZENTRO_BOARD_PROGRAM) + " " + arguments + " 2>" + errorFile;
        FILE* pipe = popen(command.c_str(), "r");
        output_.clear();
        std::array<char, 4096> part{};
        for (std::size_t count = 0; (count = fread(part.data(), 1, part.size(), pipe)) > 0;) {
            output_.append(part.data(), count);
        }
        const int status = pclose(pipe);
        std::ifstream stream(errorFile);
        errors_.assign(std::istreambuf_iterator<char>(stream), {});
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    fs::path folder_ = fs::path(testing::TempDir()) /
                       ("board-" + std::to_string(getpid()) +
                        testing::UnitTest::GetInstance()->current_test_info()->name());
    std::string output_;
    std::string errors_;
};

TEST_F(BoardProgramTest, PrintsVariablesAndSteps) {
    // INCREMENT BYTE [0008]; JUMP [0007]; 0; END, then the variables; lines as the compiler cuts
    // them.
    const std::string object =
        write("a.obj", "56,0,8\r\n53,0,7\r\n0\r\n5\r\n\r\n41,\r\n1,44\r\n255\r\n9\r\n8\r\n");
    const std::string symbols =
        write("a.sym",
              "Count\tbyte\t8\t1\nDrive.Far\tword\t9\t2\r\nWhere\tpointer\t9\t2\n"
              "Lost\tflag\t11\t1\nTune\ttable\t11\t3\n");
    EXPECT_EQ(run("run " + object + " --symbols " + symbols), 0);
    EXPECT_EQ(output_,
              "Count\tbyte\t42\nDrive.Far\tword\t300\nWhere\tpointer\t300\nLost\tflag\t255\n"
              "Tune\ttable\t255 9 8\nsteps\t3\n");
    EXPECT_EQ(errors_, "");
}

TEST_F(BoardProgramTest, ExitStatusTellsHowItEnded) {
    EXPECT_EQ(run("run " + write("end.obj", "5")), 0);
    EXPECT_EQ(run("run " + write("off.obj", "2")), 0);
    EXPECT_EQ(run("run " + write("escape.obj", "3")), 0);
    EXPECT_EQ(run("run " + write("fault.obj", "0\r\n52")), 3);
    EXPECT_EQ(errors_, "Fault: return stack underflow at [0001]\n");
    EXPECT_EQ(output_, "steps\t2\n");
    const std::string loop = write("loop.obj", "0\r\n53,0,0");
    EXPECT_EQ(run("run --max-steps 1001 " + loop), 4);
    EXPECT_EQ(output_, "steps\t1001\n");
    EXPECT_EQ(run("run --max-steps 1 " + write("end.obj", "5")), 0);
    EXPECT_EQ(run("run --seconds 1 " + loop), 0);
    EXPECT_EQ(output_, "steps\t1000000\n");
    EXPECT_EQ(run("run " + write("sleep.obj", "4")), 0);
    EXPECT_THAT(errors_, HasSubstr("no event can wake it"));
}

TEST_F(BoardProgramTest, ExplainsAFaultInTheWordsOfTheProgram) {
    const std::string source = write(
        "deep.txt",
        "DEFINE BYTE Mean = 3\nDEFINE FLAG Done = TRUE\nDEFINE ROUTINE Share(Parts BYTE)\n"
        "    IF Done = TRUE THEN\n        Mean\t= Mean / Parts\n    END IF\nEND ROUTINE\n"
        "DEFINE ROUTINE Work()\n    CALL Share(0)\nEND ROUTINE\nBEGIN PROGRAM\n    CALL Work()\n"
        "END PROGRAM\n");
    const std::string known = (folder_ / "deep.dbg").string();
    ASSERT_EQ(std::system((ZENTRO_ZENTROC " -q " + source + " --debug-info " + known).c_str()), 0);
    EXPECT_EQ(run("run " + (folder_ / "deep.obj").string() + " --debug-info " + known), 3);
    EXPECT_THAT(errors_, testing::ContainsRegex(
                             "^Fault: division by zero at .*\n"
                             "Division by zero in line 5, Mean = Mean / Parts: Parts of Share is 0 "
                             "when Mean is divided by it\n"
                             "Mean = 3, Parts of Share = 0\n"
                             "Share was called in line 9, Work in line 12\n$"));
    const std::string good = write("good.obj", "5");
    for (const char* bad :
         {"statement\tline 1\tA\t\n", "statement\tline 1\tA\t\t0\n", "instruction\t0\t5\t-\t\t\t\n",
          "flag\t256\tTRUE\n", "flag\t1\tA\nflag\t1\tB\n", "variable\tA\tbyte\t1\n",
          "variable\tA\tbit\t1\t1\n", "variable\tA\tbyte\t-1\t1\n",
          "statement\tline 1\tA\t\t\ninstruction\t0\t256\t-\t\t\t\n",
          "statement\tline 1\tA\t\t\ninstruction\t0\t5\tx\t\t\t\n", "\n", "5"}) {
        EXPECT_EQ(run("run " + good + " --debug-info " + write("bad.dbg", bad)), 2) << bad;
        EXPECT_THAT(errors_, testing::ContainsRegex("bad.dbg: line [12]: this is no debug")) << bad;
    }
}

TEST_F(BoardProgramTest, RefusesBadFilesAndOptions) {
    const std::string good = write("good.obj", "5");
    const std::array<std::array<std::string, 2>, 16> cases{{
        {"", "subcommand"},
        {"run", "FILE"},
        {"run " + good + " --nonsense", "nonsense"},
        {"run " + good + " --max-steps 0", "max-steps"},
        {"run " + good + " --max-steps 12x", "'12x' is not a whole number of at least 1"},
        {"run " + good + " --seed 4294967296", "'4294967296' is not a whole number from 0 to "},
        {"serve --baud 1", "--baud: '1' is not a whole number from 50 to 4000000"},
        {"serve --baud 4000001", "baud"},
        {"run " + (folder_ / "none.obj").string(), "none.obj: cannot be read"},
        {"run " + folder_.string(), "cannot be read"},
        {"run " + write("empty.obj", "\r\n"), "empty.obj: there is no program"},
        {"run " + write("bad.obj", "5\r\n5;"), "bad.obj: line 2 is not made of numbers"},
        {"run " + good + " --symbols " + write("bad.sym", "A\tbyte\t32768\t1\n"),
         "bad.sym: line 1"},
        {"run " + good + " --inputs " + write("a.in", "\n; x\n5 digital5 1\n"),
         "a.in: line 3: there is no input digital5"},
        {"run " + good + " --inputs " + write("b.in", "5 analog1 256\n"),
         "b.in: line 1: analog1 must be a number from 0 to 255"},
        {"run " + good + " >/dev/full", "cannot write to standard output"},
    }};
    const std::string pipe = (folder_ / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const char* option : {"run ", "run --symbols ", "run --inputs "}) {
        EXPECT_EQ(run(option + pipe + (std::string(option) == "run " ? "" : " " + good)), 2);
        EXPECT_THAT(errors_, HasSubstr("pipe: cannot be read: It is no regular file")) << option;
    }
    for (const auto& [arguments, message] : cases) {
        EXPECT_EQ(run(arguments), 2) << arguments;
        EXPECT_THAT(errors_, HasSubstr(message)) << arguments;
        EXPECT_EQ(output_, "") << arguments;
    }
    EXPECT_EQ(run("serve --link " + good), 2);
    EXPECT_THAT(errors_, HasSubstr("good.obj"));
}

TEST_F(BoardProgramTest, ShowsOutputsThatFollowFromScriptedInputs) {
    // READ BUTTON 2 to [0017]; IF BYTE EQUAL [0017], 0 back to 0; SET LEFT LED; WAIT 5; SET MOTOR;
    // END
    const std::string object =
        write("a.obj",
              "35,2,0,23\r\n80,0,23,0,26,0,0\r\n44,0,23\r\n70,0,24\r\n21,1,66,0,23\r\n5\r\n"
              "0\r\n0,5\r\n0\r\n");
    const std::string inputs = write("a.in", "; a press\n\n12  button2 1\n3 analog1 9\n");
    EXPECT_EQ(run("run --events --inputs " + inputs + " " + object), 0);
    EXPECT_THAT(output_, StartsWith("12 leftled 1\n17 motor1 B 255\nsteps\t"));
}

TEST_F(BoardProgramTest, TracesEachInstruction) {
    EXPECT_EQ(run("run --trace --events " + write("a.obj", "56,0,7\r\n44,0,7\r\n5\r\n8")), 0);
    EXPECT_EQ(output_,
              "[0000] INCREMENT BYTE [0007] : [0007] = 9\n[0003] SET LEFT LED [0007]\n0 leftled 1\n"
              "[0006] END\nsteps\t3\n");
}

/// zentro-board serve in a process of its own, and the client's end of its line.
class BoardServeTest : public BoardProgramTest {
  protected:
    ~BoardServeTest() override {
        hangUp();
        if (process_ > 0) stop();
    }

    void serve(const std::vector<std::string>& options = {}) {
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        process_ = fork();
        if (process_ == 0) {
            dup2(pipe[1], STDOUT_FILENO);
            std::vector<const char*> arguments{ZENTRO_BOARD_PROGRAM, "serve"};
            for (const std::string& option : options) {
                arguments.push_back(option.c_str());
            }
            arguments.push_back(nullptr);
            execv(arguments[0], const_cast<char**>(arguments.data()));
            _exit(127);
        }
        close(pipe[1]);
        for (char character = 0; read(pipe[0], &character, 1) == 1 && character != '\n';) {
            name_ += character;
        }
        close(pipe[0]);
    }

    /// Ends the board as Ctrl+C does. Returns its exit status.
    int stop() {
        kill(process_, SIGINT);
        int status = 0;
        waitpid(process_, &status, 0);
        process_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    void connect(const std::string& name) {
        line_ = open(name.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        ASSERT_GE(line_, 0) << name;
        std::this_thread::sleep_for(50ms);  // the board looks for a client at each tick
    }
    void hangUp() {
        if (line_ >= 0) close(line_);
        line_ = -1;
    }

    void send(const std::string& text) {
        ASSERT_EQ(write(line_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    /// What the board says until `end` has come, or what came in five seconds.
    std::string hear(const std::string& end) {
        std::string heard;
        const auto deadline = std::chrono::steady_clock::now() + 5s;
        while (heard.find(end) == std::string::npos &&
               std::chrono::steady_clock::now() < deadline) {
            pollfd entry{line_, POLLIN, 0};
            poll(&entry, 1, 100);
            char character = 0;
            if (::read(line_, &character, 1) == 1) heard += character;
        }
        return heard;
    }
    std::string ask(const std::string& text, const std::string& end) {
        send(text);
        return hear(end);
    }

    using BoardProgramTest::write;
    static ssize_t write(int line, const void* data, std::size_t size) {
        return ::write(line, data, size);
    }

    pid_t process_ = 0;
    int line_ = -1;
    std::string name_;
};

const std::string kPromptEnd = "-> \x1b[D";
const std::string kAttention = "]\rW\r\r";

TEST_F(BoardServeTest, LoadsRunsStopsAndStepsAProgram) {
    serve();
    ASSERT_THAT(name_, StartsWith("/dev/pts/"));
    connect(name_);
    EXPECT_EQ(ask(kAttention, "Kinetron\r\n\r\n"), "]\r\nW\r\nKinetron\r\n\r\n");
    // INCREMENT BYTE [0006]; JUMP [0000]; 7
    EXPECT_EQ(ask("X\rZ\rL56,0,6\r\n53,0,0\r\n7\r\n]\r", "bytes\r\n\r\n"),
              "X\r\nZ\r\nL\r\nLoaded 7 bytes\r\n\r\n");
    EXPECT_EQ(ask("G\r", "G\r\n"), "G\r\n");
    EXPECT_THAT(ask("X\r", "]\r\n"), StartsWith("X\r\nStopped at [000"));
    EXPECT_THAT(ask("D\r", kPromptEnd), StartsWith("D\r\n[0000] INCREMENT BYTE [0006]\r\n*Debug"));
    EXPECT_THAT(ask("A0006 28\r", kPromptEnd), StartsWith("A0006 28\r\n*Debug"));
    EXPECT_THAT(ask("\r", kPromptEnd), StartsWith("\r\n[0003] JUMP [0000]\r\n*Debug"));
    EXPECT_THAT(ask("M0006\r", kPromptEnd),
                StartsWith("M0006\r\n[0006] 29 00 00 00 00 00 00 00\r\n*Debug"));
    EXPECT_THAT(ask("J0000\r", kPromptEnd), StartsWith("J0000\r\n[0000] INCREMENT"));
    EXPECT_THAT(ask("X\rZ\r\r", "Z\r\n\r\n"), StartsWith("X\r\nStopped at [0000]\r\n"));
    EXPECT_EQ(ask("M1F045\rA11\rA14\r", "?"), "M1F045\r\nA11\r\nA14\r\n?");
    EXPECT_EQ(stop(), 0);
}

TEST_F(BoardServeTest, ReportsInputsInRealTimeUntilCr) {
    serve();
    connect(name_);
    send("R\r");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(hear("\x1b[8A"), StartsWith("R\r\nDigital    0 0 0 0\r\n"));
    hear("\x1b[8A");
    hear("\x1b[8A");
    const auto taken = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(taken, 200ms);
    EXPECT_LE(taken, 2s);
    EXPECT_THAT(ask("\rW\r", "Kinetron\r\n"), EndsWith("\r\nW\r\nKinetron\r\n"));
}

TEST_F(BoardServeTest, SurvivesClientsThatComeAndGo) {
    const std::string link = folder_ / "board";
    fs::create_symlink("/dev/pts/nothing", link);  // as a board that was killed leaves it
    serve({"--link", link});
    connect(link);
    // The client disappears in the middle of a load, without reading.
    send("W\rL56,0,6\r\n53,");
    hangUp();
    std::this_thread::sleep_for(100ms);
    connect(link);
    EXPECT_EQ(ask("X\rZ\rL5\r\n]\r", "bytes\r\n\r\n"), "\r\nLoaded 1 bytes\r\n\r\n");
    hangUp();
    connect(name_);
    EXPECT_EQ(ask(kAttention, "Kinetron\r\n\r\n"), "]\r\nW\r\nKinetron\r\n\r\n");
    EXPECT_EQ(ask("G\r", "]\r\n"), "G\r\nEnd at [0000]\r\n");
    EXPECT_EQ(stop(), 0);
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

TEST_F(BoardServeTest, StaysAliveWhenAClientNeverReads) {
    serve();
    connect(name_);
    // TRANSMIT [0006] for ever, and then garbage.
    send("L13,0,6\r\n53,0,0\r\n65\r\n]\rG\r");
    std::string garbage;
    for (int code = 0; code < 2000; ++code) {
        garbage += static_cast<char>(code * 73);
    }
    std::this_thread::sleep_for(200ms);
    const ssize_t ignored = write(line_, garbage.data(), garbage.size());
    static_cast<void>(ignored);
    std::this_thread::sleep_for(200ms);
    hangUp();
    std::this_thread::sleep_for(100ms);
    connect(name_);
    EXPECT_THAT(ask("]\rX\rZ\rW\r", "Kinetron\r\n"), EndsWith("W\r\nKinetron\r\n"));
    EXPECT_EQ(stop(), 0);
}

TEST_F(BoardServeTest, AProgramThatSendsWithoutEndCanBeStopped) {
    serve({"--baud", "115200"});
    connect(name_);
    send("L13,0,6\r\n53,0,0\r\n65\r\n]\rG\r");
    EXPECT_THAT(hear(std::string(5000, 'A')), EndsWith(std::string(5000, 'A')));
    EXPECT_THAT(ask("X\r", "Stopped at"), EndsWith("X\r\nStopped at"));
}

TEST_F(BoardServeTest, KeepsThePaceOfItsLine) {
    serve({"--baud", "9600"});
    connect(name_);
    const auto begin = std::chrono::steady_clock::now();
    std::string typed;
    std::string echo;
    for (int line = 0; line < 150; ++line) {
        typed += "]\r";
        echo += "]\r\n";
    }
    // 450 characters at 960 a second.
    EXPECT_EQ(ask(typed, echo), echo);
    const auto taken = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(taken, 450ms);
    EXPECT_LE(taken, 4s);
}

}  // namespace
