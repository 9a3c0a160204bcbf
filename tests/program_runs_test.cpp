// Whole programs, compiled with the real zentroc and run on the real zentro-board. Below its first
// line, which says what it is about, a program of tests/runs tells in comments what is expected:
//
//   ; run OPTIONS               more options for zentro-board
//   ; input TICK NAME VALUE     a line of the input script
//   ; event TICK OUTPUT VALUE   an output that changes: all of them, in their order
//   ; value NAME VALUE          a variable at the end (NAME, or ROUTINE_NAME), "steps" or "dropped"
//   ; status N                  the exit status, 0 otherwise
//   ; stderr TEXT               the end of a line on standard error, on which nothing is otherwise
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
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

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
        if (directive == found.end()) throw std::runtime_error(file.string() + ": " + line);
        directive->second += line.substr(blank + 1) + "\n";
    }
    return found;
}

std::string ReadAll(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The codes of the messages in zentroc's JSON lines.
std::string Codes(const std::string& output) {
    const std::regex field("\"code\":\"(\\w+)\"");
    std::string codes;
    for (std::sregex_iterator at(output.begin(), output.end(), field), end; at != end; ++at) {
        codes += (codes.empty() ? "" : " ") + at->str(1);
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
        std::string run = ZENTRO_BOARD_PROGRAM " run --events --symbols symbols --inputs inputs ";
        run += program.stem().string() + ".obj --max-steps 100000000 ";  // none may run for ever
        run += expected["run"].empty() ? "--seconds 1000" : expected["run"];
        std::replace(run.begin(), run.end(), '\n', ' ');
        const int status = Run(run);
        EXPECT_EQ(status, expected["status"].empty() ? 0 : std::stoi(expected["status"]));
        EXPECT_THAT(errors_, testing::HasSubstr(expected["stderr"]));
        EXPECT_EQ(errors_.empty(), expected["stderr"].empty()) << errors_;
        CheckOutput(expected["event"], expected["value"]);
    }

    /// The board prints events with blanks, and names and values with tabs between.
    void CheckOutput(const std::string& expectedEvents, const std::string& expectedValues) {
        std::string events;
        std::map<std::string, std::string> values;
        std::istringstream lines(output_);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t tab = line.find('\t');
            if (tab == std::string::npos)
                events += line + "\n";
            else
                values[line.substr(0, tab)] = line.substr(line.rfind('\t') + 1);
        }
        EXPECT_EQ(events, expectedEvents);
        std::istringstream expected(expectedValues);
        for (std::string name, value; expected >> name >> std::ws && getline(expected, value);) {
            if (!values.contains(name)) name.insert(0, "Program_");
            EXPECT_EQ(values[name], value) << name;
        }
    }

    fs::path folder_ = fs::path(testing::TempDir()) / ("runs-" + std::to_string(getpid()));
    std::string output_;
    std::string errors_;
};

class ProgramFile : public ProgramRun, public testing::WithParamInterface<fs::path> {};

std::vector<fs::path> ProgramFiles() {
    std::vector<fs::path> files;
    for (const char* folder : {ZENTRO_RUNS_FOLDER, ZENTRO_EXAMPLES_FOLDER}) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".txt") files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

TEST_P(ProgramFile, DoesWhatItsCommentsSay) {
    const fs::path& program = GetParam();
    const bool isExample = program.parent_path() == ZENTRO_EXAMPLES_FOLDER;
    const std::string expectations = program.stem().string() + ".expect";
    Check(program, isExample ? ZENTRO_RUNS_FOLDER "/examples" / fs::path(expectations) : program);
}
INSTANTIATE_TEST_SUITE_P(Runs, ProgramFile, testing::ValuesIn(ProgramFiles()),
                         [](const auto& info) { return info.param.stem().string(); });

// Each block has 31 bytes: IF 7, ADD WORD 7, PUSH WORD and CALL 6, ELSE 4, INCREMENT 3, END IF 1,
// INCREMENT 3. It takes 11 instructions, or 5 the other way: more than one tick in all.
TEST_F(ProgramRun, LargeProgramsJumpAndCallFromOneEndToTheOther) {
    std::ostringstream program;
    program << "; 650 blocks, run twice. From the 1000th time on they go the other way: the last\n"
               ";; 300 of the second round. The sum is 2 * (649 * 650 / 2 + 349 * 350 / 2) - 8 * "
               "65536.\n; event 1 display 7\n; value Blocks 1300\n; value Skipped 300\n"
               "; value Total 19712\n"
               "DEFINE WORD Blocks = 0\nDEFINE WORD Total = 0\nDEFINE WORD Skipped = 0\n"
               "DEFINE ROUTINE AddOn(Value WORD)\nTotal = Total + Value\nEND ROUTINE\n"
               "BEGIN PROGRAM\nWHILE Blocks < 1000\n";
    for (int block = 0; block < 650; ++block) {
        program << "IF Blocks < 1000 THEN\nTotal = Total + " << block << "\nCALL AddOn(" << block
                << ")\nELSE\nINCREMENT Skipped\nEND IF\nINCREMENT Blocks\n";
    }
    program << "END WHILE\nDISPLAY 7\nEND PROGRAM\n";
    std::ofstream(folder_ / "large.txt") << program.str();
    Check(folder_ / "large.txt", folder_ / "large.txt");
    const std::string symbols = ReadAll(folder_ / "symbols");  // the first variable ends the code
    EXPECT_GT(std::stoi(symbols.substr(symbols.find("word\t") + 5)), 20000) << symbols;
}

}  // namespace
