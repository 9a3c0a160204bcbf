#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <pty.h>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string kGood = "BEGIN PROGRAM\nSTOP MOTORS\nEND PROGRAM\n";
const std::string kGoodObject = "0\r\n66,0,9\r\n66,0,11\r\n20\r\n5\r\n0,0\r\n0,0\r\n";
const std::string kWrong = "BEGIN PROGRAM\nJUMP\nEND PROGRAM now\n";

struct Result {
    int status = 0;
    std::string out;
    std::string err;
};

/// Runs the real program through the shell in a folder of its own.
class Zentroc : public testing::Test {
  protected:
    Zentroc() {
        folder_ = fs::temp_directory_path() / ("zentroc_test_" + std::to_string(getpid()));
        fs::remove_all(folder_);
        fs::create_directories(folder_ / "in");
        Write("main.txt", kGood);
    }
    ~Zentroc() override { fs::remove_all(folder_); }

    void Write(const std::string& name, const std::string& text) {
        std::ofstream(folder_ / "in" / name, std::ios::binary) << text;
    }
    std::string Read(const std::string& name) {
        std::ifstream stream(folder_ / "in" / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::vector<std::string> Files() {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_ / "in")) {
            names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    /// What the shell makes of the words behind the program's name.
    Result Run(const std::string& arguments, const std::string& before = "") {
        const std::string errors = (folder_ / "errors").string();
        const std::string command = "cd " + (folder_ / "in").string() + "; { " + before +
                                    " " ZENTRO_ZENTROC " " + arguments + "; } 2>" + errors;
        std::FILE* pipe = popen(command.c_str(), "r");
        Result result;
        std::array<char, 4096> buffer{};
        while (const std::size_t got = fread(buffer.data(), 1, buffer.size(), pipe)) {
            result.out.append(buffer.data(), got);
        }
        result.status = WEXITSTATUS(pclose(pipe));
        std::ifstream stream(errors, std::ios::binary);
        result.err.assign(std::istreambuf_iterator<char>(stream), {});
        return result;
    }

    /// Makes changed.cfg from the shipped configuration with a script of sed.
    void Configure(const std::string& change) {
        const std::string to = (folder_ / "in/changed.cfg").string();
        const std::string command = "sed '" + change + "' " ZENTRO_SHIPPED_CONFIG " >" + to;
        ASSERT_EQ(std::system(command.c_str()), 0);  // NOLINT(cert-env33-c): a fixed command
    }

    fs::path folder_;
};

TEST_F(Zentroc, CompilesBesideTheSource) {
    const Result result = Run("main.txt");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, HasSubstr("*** Compile Completed with 0 Errors and 0 Warnings. ***\n"));
    EXPECT_EQ(Read("main.obj"), kGoodObject);
    EXPECT_THAT(Files(), ElementsAre("main.obj", "main.txt"));
}

TEST_F(Zentroc, FoldersAreThoseOfTheSourceUnlessGiven) {
    fs::create_directories(folder_ / "in/source");
    fs::create_directories(folder_ / "in/parts");
    fs::create_directories(folder_ / "in/objects");
    Write("source/my.robot.txt", "INCLUDE \"part.txt\"\n" + kGood);
    Write("source/part.txt", "");
    EXPECT_EQ(Run("source/my.robot.txt").status, 0);
    EXPECT_EQ(Read("source/my.obj"), kGoodObject);
    Write("parts/part.txt", "DEFINE BYTE AB = 1\n");
    const Result result = Run("-I parts -o objects source/my.robot.txt");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("parts/part.txt"));
    EXPECT_TRUE(fs::is_empty(folder_ / "in/objects"));
    Write("parts/part.txt", "");
    EXPECT_EQ(Run("--include=parts/ --output=objects/ source/my.robot.txt").status, 0);
    EXPECT_EQ(Read("objects/my.obj"), kGoodObject);
}

TEST_F(Zentroc, ErrorsAreStatusOneAndLeaveTheOldObjectFile) {
    Write("main.obj", "old");
    Write("main.txt", kWrong);
    const Result result = Run("main.txt");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, AllOf(HasSubstr("0002\tERROR:   JUMP"), HasSubstr("1 Errors and 1 W")));
    EXPECT_EQ(Read("main.obj"), "old");
}

TEST_F(Zentroc, WarningsAreStatusZero) {
    Write("main.txt", "BEGIN PROGRAM\nEND PROGRAM now\n");
    EXPECT_EQ(Run("main.txt").status, 0);
    EXPECT_THAT(Files(), ElementsAre("main.obj", "main.txt"));
}

struct UsageRow {
    const char* arguments;
    int status;
    const char* says;  ///< on standard output for status 0, else on standard error
};

TEST_F(Zentroc, Usage) {
    for (const UsageRow& row : {UsageRow{"--help", 0, "--symbols"},
                                {"-h", 0, "Exit status"},
                                {"--version", 0, "zentroc 0.1.0\n"},
                                {"", 2, "FILE"},
                                {"--nonsense main.txt", 2, "--nonsense"},
                                {"--format xml main.txt", 2, "xml"},
                                {"main.txt other.txt", 2, "other.txt"},
                                {"main.txt -o", 2, "output"}}) {
        const Result result = Run(row.arguments);
        EXPECT_EQ(result.status, row.status) << row.arguments;
        EXPECT_THAT(row.status == 0 ? result.out : result.err, HasSubstr(row.says));
        EXPECT_THAT(Files(), ElementsAre("main.txt"));
    }
}

TEST_F(Zentroc, SourceFilesThatCannotBeReadAreStatusTwo) {
    fs::create_directories(folder_ / "in/folder.txt");
    std::vector<std::string> names{"nowhere.txt", "folder.txt", "main.txt/more.txt", "''",
                                   "/dev/zero"};
    if (geteuid() != 0) {
        Write("locked.txt", kGood);
        fs::permissions(folder_ / "in/locked.txt", fs::perms::none);
        names.emplace_back("locked.txt");
    }
    for (const std::string& name : names) {
        const Result result = Run(name);
        EXPECT_EQ(result.status, 2) << name;
        EXPECT_THAT(result.err, StartsWith("zentroc: cannot read '")) << name;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
    Write("main.txt", "");
    EXPECT_EQ(Run("main.txt").status, 1);
    for (const std::string& name :
         {std::string("nowhere.txt"), std::string(300, 'n'), std::string("no\0where", 8)}) {
        Write("main.txt", "INCLUDE \"" + name + "\"\n");
        EXPECT_EQ(Run("main.txt").status, 1);
    }
    EXPECT_FALSE(fs::exists(folder_ / "in/main.obj"));
}

TEST_F(Zentroc, FilesThatCannotBeWrittenAreStatusTwo) {
    fs::create_directories(folder_ / "in/main.obj");
    for (const char* arguments :
         {"-o nowhere main.txt", "-o main.txt main.txt", "main.txt", "-o . main.txt"}) {
        const Result result = Run(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_THAT(result.err, StartsWith("zentroc: cannot write '")) << arguments;
        EXPECT_THAT(result.out, HasSubstr("E3003")) << arguments;
    }
    fs::remove(folder_ / "in/main.obj");
    EXPECT_THAT(Files(), ElementsAre("main.txt"));
    for (const char* arguments :
         {"--listing /dev/full main.txt", "--symbols /dev/full main.txt",
          "--listing nowhere/list main.txt", "--symbols . main.txt", "main.txt >/dev/full",
          "--format json main.txt >/dev/full", "--listing - main.txt >/dev/full",
          "--help >/dev/full", "--version >/dev/full"}) {
        const Result result = Run(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_THAT(result.err, StartsWith("zentroc: cannot write")) << arguments;
    }
}

TEST_F(Zentroc, AFullDiskLeavesTheOldObjectFile) {
    Write("main.obj", "old");
    // The shell's limit lets no file grow; the pipes to this test are no files.
    const Result result = Run("main.txt 2>&1", "trap '' XFSZ; ulimit -f 0;");
    EXPECT_EQ(result.status, 2) << result.out;
    EXPECT_THAT(result.out, AllOf(HasSubstr("cannot write 'main.obj'"), HasSubstr("E3003")));
    EXPECT_EQ(Read("main.obj"), "old");
    EXPECT_THAT(Files(), ElementsAre("main.obj", "main.txt"));
}

TEST_F(Zentroc, RefusesToReplaceItsSource) {
    Write("main.obj", kGood);
    Write("linked.txt", kGood);
    fs::create_symlink("linked.txt", folder_ / "in/linked.obj");
    for (const char* arguments : {"main.obj", "./main.obj", "-o . main.obj", "linked.txt"}) {
        const Result result = Run(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_THAT(result.err, HasSubstr("would replace the source file"));
        EXPECT_EQ(Read("main.obj"), kGood);
    }
}

/// By whatever name or link, for every file that is read and every file that is written.
TEST_F(Zentroc, NoOutputReplacesWhatIsReadOrAnotherOutput) {
    Configure("");
    Write("in.obj", "DEFINE BYTE Speed = 1\n");
    Write("includes.txt", "INCLUDE \"in.obj\"\n" + kGood);
    Write("in.txt", "INCLUDE \"in.obj\"\n" + kGood);
    fs::create_symlink("in.obj", folder_ / "in/linked");
    fs::create_hard_link(folder_ / "in/in.obj", folder_ / "in/hard");
    const std::vector<std::string> before = Files();
    for (const char* arguments :
         {"main.txt --listing main.txt", "main.txt --symbols ./main.txt",
          "main.txt --listing ../in/main.txt",
          "main.txt --config changed.cfg --listing changed.cfg", "includes.txt --listing in.obj",
          "includes.txt --symbols linked", "includes.txt --listing hard", "in.txt",
          "main.txt --listing list --symbols list", "main.txt --listing main.obj",
          "main.txt --symbols ../in/main.obj"}) {
        const Result result = Run(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_THAT(result.err, AllOf(StartsWith("zentroc: the "), HasSubstr(" would replace ")))
            << arguments;
        EXPECT_EQ(Files(), before) << arguments;
        EXPECT_EQ(Read("main.txt"), kGood) << arguments;
        EXPECT_EQ(Read("in.obj"), "DEFINE BYTE Speed = 1\n") << arguments;
        EXPECT_FALSE(Read("changed.cfg").starts_with("[")) << arguments;
    }
    EXPECT_EQ(Run("main.txt --listing /dev/null --symbols /dev/null").status, 0);
}

/// A pipe that nobody writes to would keep the program waiting for ever.
TEST_F(Zentroc, OnlyRegularFilesAreRead) {
    ASSERT_EQ(mkfifo((folder_ / "in/pipe").c_str(), 0600), 0);
    Write("main.txt", "INCLUDE \"pipe\"\n");
    Write("device.txt", "INCLUDE \"/dev/zero\"\n");
    for (const char* arguments :
         {"main.txt", "device.txt", "pipe", "--config pipe main.txt", "/dev/tty"}) {
        const Result result = Run(arguments);
        EXPECT_NE(result.status, 0) << arguments;
        EXPECT_THAT(result.err, HasSubstr("no regular file")) << arguments;
    }
    Write("main.txt", "");
    fs::resize_file(folder_ / "in/main.txt", std::uintmax_t{1} << 40);  // takes no room on the disk
    const Result result = Run("main.txt");
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("larger than 256 MB"));
}

TEST_F(Zentroc, CheckWritesNothing) {
    EXPECT_EQ(Run("--check main.txt --listing list --symbols symbols").status, 0);
    EXPECT_THAT(Files(), ElementsAre("main.txt"));
    Write("main.txt", kWrong);
    EXPECT_EQ(Run("--check main.txt").status, 1);
}

TEST_F(Zentroc, QuietShowsErrorsAndWarningsOnly) {
    EXPECT_EQ(Run("-q main.txt").out, "");
    Write("main.txt", kWrong);
    const std::string out = Run("--quiet main.txt").out;
    EXPECT_THAT(out, AllOf(StartsWith("0002\tERROR:   "), HasSubstr("\n0003\tWARNING: ")));
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 2);
}

TEST_F(Zentroc, AdviceIsNeitherCountedNorInTheWay) {
    Write("main.txt", "DEFINE BYTE Speed = 1\nBEGIN PROGRAM\nSTOP MOTORS\nEND PROGRAM\n");
    const Result told = Run("main.txt");
    EXPECT_EQ(told.status, 0);
    EXPECT_THAT(told.out, AllOf(HasSubstr("0001\t"), HasSubstr(" E603: Speed - "),
                                HasSubstr("0 Errors and 0 Warnings")));
    EXPECT_THAT(Run("--format json main.txt").out, HasSubstr("\"severity\":\"advice\""));
    const Result untold = Run("--no-advice main.txt");
    EXPECT_EQ(untold.status, 0);
    EXPECT_THAT(untold.out, testing::Not(HasSubstr("E603")));
    EXPECT_EQ(Run("-q main.txt").out, "");
}

TEST_F(Zentroc, JsonHoldsHintsAndFixes) {
    Write("main.txt",
          "INCLUDE \"part.txt\"\nBEGIN PROGRAM\n  print \"HI\"\nSTOP MOTORS 1\nEND PROGRAM\n");
    Write("part.txt", "\n\tdefine bite Speed = 1\n");
    std::vector<nlohmann::json> mistakes;
    std::istringstream lines(Run("--format json --quiet main.txt").out);
    for (std::string line; std::getline(lines, line);)
        mistakes.push_back(nlohmann::json::parse(line));
    ASSERT_EQ(mistakes.size(), 1U);
    const std::string hint = mistakes[0]["hint"];
    EXPECT_EQ(hint, "bite is not a word of the language. Did you mean BYTE?");
    EXPECT_THAT(std::string(mistakes[0]["text"]), testing::EndsWith(" " + hint));
    const nlohmann::json fix{{"file", "part.txt"}, {"path", mistakes[0]["path"]},
                             {"line", 2},          {"column", 9},
                             {"length", 4},        {"text", "BYTE"}};
    EXPECT_EQ(mistakes[0]["fix"], fix);

    Write("part.txt", "");
    mistakes.clear();
    std::istringstream more(Run("--format json --quiet main.txt").out);
    for (std::string line; std::getline(more, line);)
        mistakes.push_back(nlohmann::json::parse(line));
    ASSERT_EQ(mistakes.size(), 2U);
    EXPECT_TRUE(mistakes[0].contains("hint"));
    EXPECT_FALSE(mistakes[0].contains("fix"));
    EXPECT_FALSE(mistakes[1].contains("hint"));
}

/// A message at the end of the program, or at no line, tells which line has to be changed.
TEST_F(Zentroc, JsonNamesTheLineThatMatters) {
    const auto told = [&] {
        const std::string out = Run("--format json --quiet main.txt").out;
        return nlohmann::json::parse(out.substr(0, out.find('\n')));
    };
    Write("main.txt", "BEGIN PROGRAM\nSTOP MOTORS\nLOOP\nEND PROGRAM\n");
    EXPECT_FALSE(told().contains("about")) << "it stands at its line";
    Write("main.txt", "DEFINE ROUTINE Halt()\nSTOP MOTORS\n");
    const nlohmann::json notEnded = told();
    EXPECT_EQ(notEnded["line"], 9999);
    const nlohmann::json first{
        {"file", "main.txt"}, {"path", notEnded["about"]["path"]}, {"line", 1}};
    EXPECT_EQ(notEnded["about"], first);
    Write("main.txt", "DEFINE BYTE Speed = 1\nSTOP MOTORS\n");
    const std::string out = Run("--format json main.txt").out;
    const std::size_t begin = out.find("{\"code\":\"E26\"");
    const auto noProgram = nlohmann::json::parse(out.substr(begin, out.find('\n', begin) - begin));
    EXPECT_EQ(noProgram["line"], 0);
    EXPECT_EQ(noProgram["file"], "");
    EXPECT_EQ(noProgram["about"]["line"], 2);
    EXPECT_EQ(noProgram["about"]["file"], "main.txt");
}

TEST_F(Zentroc, JsonIsOneObjectALine) {
    Write("main.txt", "INCLUDE \"part.txt\"\n" + kWrong);
    Write("part.txt", "\nHop\"\xC3\xA9\"\n");
    std::vector<nlohmann::json> mistakes;
    const Result result = Run("--format json main.txt");
    EXPECT_EQ(result.status, 1);
    std::istringstream lines(result.out);
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        const auto object = nlohmann::json::parse(line);
        for (const char* field : {"code", "severity", "file", "line", "text"}) {
            EXPECT_TRUE(object.contains(field)) << line;
        }
        if (object["severity"] != "information") mistakes.push_back(object);
    }
    EXPECT_GT(count, 3);
    ASSERT_EQ(mistakes.size(), 3U) << result.out;
    EXPECT_EQ(mistakes[0]["code"], "E15");
    EXPECT_EQ(mistakes[0]["severity"], "error");
    EXPECT_EQ(mistakes[0]["file"], "part.txt");
    EXPECT_EQ(mistakes[0]["line"], 2);
    EXPECT_EQ(mistakes[2]["code"], "E510");
    EXPECT_EQ(mistakes[2]["severity"], "warning");
    EXPECT_EQ(mistakes[2]["file"], "main.txt");
    EXPECT_EQ(mistakes[2]["line"], 4);
    EXPECT_THAT(std::string(mistakes[2]["text"]), HasSubstr("does nothing"));
}

TEST_F(Zentroc, MessagesOfIncludedFilesNameTheFile) {
    Write("main.txt", "INCLUDE \"part.txt\"\n" + kWrong);
    Write("part.txt", "JUMP\n");
    const std::string out = Run("-q main.txt").out;
    const std::size_t part = out.find("part.txt");
    const std::size_t main = out.find("main.txt");
    EXPECT_LT(part, out.find("0001\tERROR"));
    EXPECT_LT(out.find("0001\tERROR"), main);
    EXPECT_LT(main, out.find("0003\tERROR"));
}

TEST_F(Zentroc, ListingGoesToAFileOrToStandardOutput) {
    EXPECT_EQ(Run("main.txt --listing list").status, 0);
    const std::string listing = Read("list");
    EXPECT_THAT(listing, StartsWith("[0000]/0000 BEGIN PROGRAM:       NOP    "));
    EXPECT_EQ(std::count(listing.begin(), listing.end(), '\n'), 7);
    EXPECT_THAT(Run("main.txt --listing -").out, HasSubstr(listing));
}

TEST_F(Zentroc, SymbolsAreOneVariableALine) {
    Write(
        "main.txt",
        "DEFINE BYTE Small = 5\nDEFINE FLAG Lost\nDEFINE POINTER Reader\nDEFINE CONSTANT One = 1\n"
        "DEFINE TABLE Tune = 1, 2, 3\nEND TABLE\nDEFINE ROUTINE Halt(Value WORD)\nEND ROUTINE\n"
        "BEGIN PROGRAM\nEND PROGRAM\n");
    EXPECT_EQ(Run("main.txt --symbols symbols").status, 0);
    // JUMP 0, NOP 3, POP WORD 4, RETURN 7, NOP 8, CLEAR WORD 9 and 12, MOVE BYTE 15, END 20.
    EXPECT_EQ(Read("symbols"),
              "%SysTemp\tword\t21\t2\n%SysTemp2\tword\t23\t2\nProgram_Small\tbyte\t25\t1\n"
              "Program_Lost\tflag\t26\t1\nProgram_Reader\tpointer\t27\t2\n"
              "Program_Tune\ttable\t29\t3\nHalt_Value\tword\t32\t2\n");
}

struct ConfigurationRow {
    const char* change;  ///< a sed script over the shipped file
    const char* says;
};

TEST_F(Zentroc, TheWordsOfTheLanguageComeFromItsConfiguration) {
    Configure("s/\"STOP MOTORS\"/\"HALT ALL\"/");
    EXPECT_EQ(Run("--config changed.cfg main.txt").status, 1);
    Write("main.txt", "BEGIN PROGRAM\nHALT ALL\nEND PROGRAM\n");
    EXPECT_EQ(Run("--config changed.cfg main.txt").status, 0);
    EXPECT_EQ(Read("main.obj"), kGoodObject);
}

TEST_F(Zentroc, BadConfigurationsGetOneMessage) {
    for (const ConfigurationRow& row : {ConfigurationRow{"3s/D2/D1/", "line 3"},
                                        {"5s/\"D4\"/\"D4/", "line 5"},
                                        {"s/^\\(\"E26\".*\\)\"0\"$/\\1\"none\"/", "not a number"},
                                        {"40q", "entries are missing"},
                                        {"/^\"E3002\"/d", "the entry E3002 is missing"},
                                        {"1,$d", "entries are missing"}}) {
        Configure(row.change);
        const Result result = Run("--config changed.cfg main.txt");
        EXPECT_EQ(result.status, 2) << row.change;
        EXPECT_THAT(result.err, AllOf(StartsWith("zentroc: changed.cfg: "), HasSubstr(row.says)));
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_EQ(result.out, "");
    }
    const Result missing = Run("--config nowhere.cfg main.txt");
    EXPECT_EQ(missing.status, 2);
    EXPECT_THAT(missing.err, AllOf(StartsWith("zentroc: nowhere.cfg: "), HasSubstr("missing")));
    EXPECT_THAT(Files(), ElementsAre("changed.cfg", "main.txt"));
}

TEST_F(Zentroc, TellsWhatIsWrongWithALanguageAndGoesOnWhereItCan) {
    // A word that cannot be used leaves the others as they are.
    Configure("s/\"WAIT\"/\"WAIT;NOW\"/");
    const Result usable = Run("--config changed.cfg main.txt");
    EXPECT_EQ(usable.status, 0);
    EXPECT_EQ(usable.err,
              "zentroc: changed.cfg: record s34, \"WAIT;NOW\": these words are never "
              "found, because the compiler reads them as \"WAIT\"\n");
    EXPECT_EQ(Read("main.obj"), kGoodObject);
    fs::remove(folder_ / "in/main.obj");
    // Programs that define tables would be read otherwise than they are meant.
    Configure("s/\"DEFINE TABLE\"/\"TABLE\"/");
    const Result unusable = Run("--config changed.cfg main.txt");
    EXPECT_EQ(unusable.status, 2);
    EXPECT_THAT(unusable.err, StartsWith("zentroc: changed.cfg: record D4, \"TABLE\": it must "));
    EXPECT_EQ(std::count(unusable.err.begin(), unusable.err.end(), '\n'), 1) << unusable.err;
    EXPECT_FALSE(fs::exists(folder_ / "in/main.obj"));
}

/// What the program writes to a terminal.
std::string OnATerminal(const std::string& command) {
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
    std::string text;
    std::array<char, 4096> buffer{};
    for (ssize_t got = 0; (got = read(terminal, buffer.data(), buffer.size())) > 0;) {
        text.append(buffer.data(), static_cast<std::size_t>(got));
    }
    close(terminal);
    waitpid(child, nullptr, 0);
    return text;
}

TEST_F(Zentroc, ColoursAreForTerminalsOnly) {
    Write("main.txt", kWrong);
    const std::string program = "cd " + (folder_ / "in").string() + "; ";
    const std::string coloured =
        OnATerminal(program + "unset NO_COLOR; " ZENTRO_ZENTROC " main.txt");
    EXPECT_THAT(coloured, AllOf(HasSubstr("\033[31m0002\tERROR"), HasSubstr("\033[34m0003\tWARN")));
    const std::string plain = OnATerminal(program + "NO_COLOR=1 " ZENTRO_ZENTROC " main.txt");
    EXPECT_THAT(plain, AllOf(HasSubstr("0002\tERROR"), Not(HasSubstr("\033"))));
    EXPECT_THAT(Run("main.txt").out, Not(HasSubstr("\033")));
}

}  // namespace
