// Whole programs, compiled with the real zentroc and run on the real zentro-board. Below its first
// line, which says what it is about, a program of tests/runs tells in comments what is expected:
//
//   ; run OPTIONS               more options for zentro-board
//   ; input TICK NAME VALUE     a line of the input script
//   ; event TICK OUTPUT VALUE   an output that changes: all of them, in their order
//   ; value NAME VALUE          a variable at the end (of the program, or ROUTINE_NAME), "steps" or
//                               "dropped"
//   ; status N                  the exit status, 0 otherwise
//   ; stderr TEXT               part of what zentro-board says on standard error, nothing otherwise
//   ; warnings CODE...          what the compiler warns of, in its order
//   ;; a remark
//
// Those for examples/NAME.txt stand in tests/runs/examples/NAME.expect.
#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// What stands behind each keyword, a line each.
using Directives = std::map<std::string, std::string>;

Directives ReadDirectives(const fs::path& file) {
    Directives found{{"run", ""},    {"input", ""},  {"event", ""},   {"value", ""},
                     {"status", ""}, {"stderr", ""}, {"warnings", ""}};
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    while (std::getline(stream, line) && line.starts_with(';')) {
        if (line.starts_with(";;")) continue;
        const std::size_t blank = std::min(line.find(' ', 2), line.size() - 1);
        const auto directive = found.find(line.substr(2, blank - 2));
        if (directive == found.end()) {
            ADD_FAILURE() << file << ": no directive: " << line;
        } else {
            directive->second += line.substr(blank + 1) + "\n";
        }
    }
    return found;
}

std::string ReadAll(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What a run printed: the outputs as they changed, and the values behind the names.
struct Printed {
    std::string events;
    std::map<std::string, std::string> values;
};

Printed Sort(const std::string& output) {
    Printed printed;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t tab = line.find('\t');
        if (tab == std::string::npos) {
            printed.events += line + "\n";
        } else {
            printed.values[line.substr(0, tab)] = line.substr(line.rfind('\t') + 1);
        }
    }
    return printed;
}

/// The codes of the messages in zentroc's JSON lines.
std::string Codes(const std::string& output) {
    const std::string field = "\"code\":\"";
    std::string codes;
    for (std::size_t at = output.find(field); at != std::string::npos;
         at = output.find(field, at)) {
        at += field.size();
        codes += (codes.empty() ? "" : " ") + output.substr(at, output.find('"', at) - at);
    }
    return codes.empty() ? codes : codes + "\n";
}

class ProgramRun : public testing::Test {
  protected:
    ProgramRun() { fs::create_directories(folder_); }
    ~ProgramRun() override { fs::remove_all(folder_); }

    /// Runs a command in the test's folder and keeps what it wrote. Returns its exit status.
    int Run(const std::string& command) {
        const std::string redirected = "cd " + folder_.string() + "; " + command + " 2>errors";
        std::FILE* pipe = popen(redirected.c_str(), "r");
        output_.clear();
        std::array<char, 4096> part{};
        while (const std::size_t count = fread(part.data(), 1, part.size(), pipe)) {
            output_.append(part.data(), count);
        }
        const int status = pclose(pipe);
        errors_ = ReadAll(folder_ / "errors");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    void Check(const fs::path& program, const fs::path& expectations) {
        Directives expected = ReadDirectives(expectations);
        ASSERT_NE(expected["event"] + expected["value"] + expected["stderr"], "") << expectations;
        const std::string compile = ZENTRO_ZENTROC " -q --format json -o . --symbols symbols ";
        ASSERT_EQ(Run(compile + program.string()), 0) << output_ << errors_;
        ASSERT_EQ(Codes(output_), expected["warnings"]) << output_;

        std::ofstream(folder_ / "inputs") << expected["input"];
        std::replace(expected["run"].begin(), expected["run"].end(), '\n', ' ');
        const std::string run =
            ZENTRO_BOARD_PROGRAM " run --events --symbols symbols --inputs inputs ";
        const int status = Run(run + expected["run"] + program.stem().string() + ".obj");
        EXPECT_EQ(status, expected["status"].empty() ? 0 : std::stoi(expected["status"]));
        CheckOutput(expected);
    }

    void CheckOutput(Directives& expected) {
        const Printed printed = Sort(output_);
        EXPECT_EQ(printed.events, expected["event"]);
        std::istringstream values(expected["value"]);
        for (std::string name, value; values >> name >> std::ws && std::getline(values, value);) {
            auto found = printed.values.find(name);
            if (found == printed.values.end()) found = printed.values.find("Program_" + name);
            ASSERT_NE(found, printed.values.end()) << name << " is not in\n" << output_;
            EXPECT_EQ(found->second, value) << name;
        }
        EXPECT_THAT(errors_, HasSubstr(expected["stderr"]));
        EXPECT_EQ(errors_.empty(), expected["stderr"].empty()) << errors_;
    }

    fs::path folder_ = fs::path(testing::TempDir()) / ("runs-" + std::to_string(getpid()));
    std::string output_;
    std::string errors_;
};

class ProgramFile : public ProgramRun, public testing::WithParamInterface<fs::path> {};

std::vector<fs::path> TextFiles(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".txt") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string StemOf(const testing::TestParamInfo<fs::path>& info) {
    return info.param.stem().string();
}

TEST_P(ProgramFile, DoesWhatItsCommentsSay) {
    Check(GetParam(), GetParam());
}
INSTANTIATE_TEST_SUITE_P(Runs, ProgramFile, testing::ValuesIn(TextFiles(ZENTRO_RUNS_FOLDER)),
                         StemOf);

class Example : public ProgramFile {};

TEST_P(Example, DoesWhatIsExpectedOfIt) {
    const std::string name = GetParam().stem().string() + ".expect";
    Check(GetParam(), fs::path(ZENTRO_RUNS_FOLDER) / "examples" / name);
}
INSTANTIATE_TEST_SUITE_P(Examples, Example, testing::ValuesIn(TextFiles(ZENTRO_EXAMPLES_FOLDER)),
                         StemOf);

TEST_F(ProgramRun, LargeProgramsJumpAndCallFromOneEndToTheOther) {
    // Each block has 31 bytes: IF 7, ADD WORD 7, PUSH WORD and CALL 6, ELSE 4, INCREMENT 3, END IF
    // 1, INCREMENT 3. It takes 11 instructions, or 5 the other way: more than one tick in all.
    constexpr int kBlocks = 650;
    std::ostringstream program;
    int sum = 0;
    program << "DEFINE WORD Blocks = 0\nDEFINE WORD Total = 0\nDEFINE WORD Skipped = 0\n"
               "DEFINE ROUTINE AddOn(Value WORD)\nTotal = Total + Value\nEND ROUTINE\n"
               "BEGIN PROGRAM\nWHILE Blocks < 1000\n";
    for (int block = 0; block < kBlocks; ++block) {
        program << "IF Blocks < 1000 THEN\nTotal = Total + " << block << "\nCALL AddOn(" << block
                << ")\nELSE\nINCREMENT Skipped\nEND IF\nINCREMENT Blocks\n";
        if (block < 1000 - kBlocks) sum += 2 * block;
        sum += 2 * block;
    }
    program << "END WHILE\nDISPLAY 7\nEND PROGRAM\n";
    std::ofstream(folder_ / "large.txt")
        << "; A program of 20,000 bytes; its loop comes round a second time, and then the blocks "
           "from the 350th on take their other branch.\n; event 1 display 7\n; value Blocks "
        << 2 * kBlocks << "\n; value Skipped " << 2 * kBlocks - 1000 << "\n; value Total "
        << sum % 65536 << "\n"
        << program.str();
    Check(folder_ / "large.txt", folder_ / "large.txt");
    const std::string symbols = ReadAll(folder_ / "symbols");  // the first variable ends the code
    EXPECT_GT(std::stoi(symbols.substr(symbols.find("word\t") + 5)), 20000) << symbols;
}

}  // namespace
