// The real zentro-link at boards that answer late, early, twice, wrongly or not at all, and lines
// that are cut at every step: what it says and its exit status are what happened.
#include <QProcess>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <span>

#include "comms/terminal_session.h"
#include "config/file.h"
#include "tests/comms/played_board.h"

namespace zentro {
namespace {

using namespace std::chrono_literals;
using enum Deed::Kind;

constexpr auto kLate = 400ms;
const std::string kPrompt = std::string(kDebugPrompt) + " \x1b[D";
const std::string kFirst = "[0000] JUMP [0003]\r\n";
const std::string kMemory = "[001A] 2A 01 00 00 00 00 00 00\r\n";

using Answers = std::map<std::string, std::string>;

// The program of 6 bytes that is sent, and the variables that are read.
const Answers kResting{{"end", "Loaded 6 bytes\r\n"}, {"D", kFirst + kPrompt}};
const Answers kEmpty{{"G", "No program\r\n"}, {"D", "No program\r\n"}, {"M001A", "?\r\n"}};
const Answers kDebugging{{"]", kPrompt},
                         {"W", "Kinetron\r\n" + kPrompt},
                         {"M001A", kMemory + kPrompt},
                         {"M001C", "[001C] 07 00 00 00 00 00 00 00\r\n" + kPrompt}};

struct Case {
    const char* name;
    const char* command;
    Answers answers;
    std::vector<Deed> deeds;
    int status;
    const char* says;  ///< standard error contains it; nothing: it is empty
    const char* out = "";
};

constexpr const char* kLost = "the connection to PORT was lost\n";
constexpr const char* kSilent = "the board on PORT does not answer\n";
constexpr const char* kOdd = "the board on PORT does not answer; what it says is not understood\n";
constexpr const char* kNoProgram = "the board answers: No program\n";
constexpr const char* kLoaded = "Loaded 6 bytes\n";
constexpr const char* kUnsaid = "does not answer whether it holds the program";
constexpr const char* kValues = "Count\tbyte\t42\nTotal\tword\t1792\n";

const Case kGreetings[] = {
    {"a silent board", "run", {}, {{"", Mute}, {"]", Mute}, {"W", Mute}}, 1, kSilent},
    {"another speed",
     "run",
     {},
     {{"]", Instead, "\x80\xfe~"}, {"W", Mute}, {"G", NoEcho}, {"G", Instead, "\xfe"}},
     1,
     kOdd},
    {"no name, but it understands",
     "debug",
     kResting,
     {{"W", Instead, ""}},
     0,
     "",
     "[0000] JUMP [0003]\n"},
    {"a late name", "stop", {}, {{"W", AnswerLate, "", kLate}}, 0, ""},
    {"another name",
     "debug",
     kResting,
     {{"W", Instead, "Robot 2\r\n"}},
     0,
     "",
     "[0000] JUMP [0003]\n"},
    {"cut at once", "run", {}, {{"]", CutBefore}}, 3, kLost},
    {"cut before the name", "debug", {}, {{"W", CutBetween}}, 3, kLost},
    {"a load broken off",
     "run",
     kEmpty,
     {{"]", Instead, "\r\nNot loaded: line 3 is bad\r\n"}},
     1,
     "the board answers: No program. A download was broken off, so send the program again\n"},
    {"a part of a program",
     "run",
     kResting,
     {{"]", Instead, "\r\nLoaded 3 bytes\r\n"}},
     1,
     "the board holds only a part of a program: Loaded 3 bytes. A download was broken off, so"},
    {"a part of a program",
     "debug",
     kResting,
     {{"]", Instead, "\r\nLoaded 3 bytes\r\n"}},
     1,
     "the board holds only a part of a program: Loaded 3 bytes. A download was broken off, so"},
};

const Case kDownloads[] = {
    {"as it should be", "download", kResting, {}, 0, "", kLoaded},
    {"a late verdict", "download", kResting, {{"end", AnswerLate, "", 3500ms}}, 0, "", kLoaded},
    {"a verdict in a late pair", "download", kResting, {{"end", Twice, "", kLate}}, 0, "", kLoaded},
    {"no echo at all",
     "download",
     kResting,
     {{"X", NoEcho}, {"Z", NoEcho}, {"L", NoEcho}},
     0,
     "",
     kLoaded},
    {"no verdict", "download", kResting, {{"end", Mute}}, 1, kUnsaid},
    {"half a verdict", "download", kResting, {{"end", Instead, "Loaded 6 by"}}, 1, kUnsaid},
    {"a garbled verdict",
     "download",
     kResting,
     {{"end", Instead, "Loaded 6 bxtes\r\n"}},
     1,
     kUnsaid},
    {"a garbled count",
     "download",
     kResting,
     {{"end", Instead, "Loaded 6x bytes\r\n"}},
     1,
     kUnsaid},
    {"too few",
     "download",
     kResting,
     {{"end", Instead, "Loaded 5 bytes\r\n"}},
     1,
     "the board answers: Loaded 5 bytes, but the program has 6\n"},
    {"too many",
     "download",
     kResting,
     {{"end", Instead, "Loaded 66 bytes\r\n"}},
     1,
     "the board answers: Loaded 66 bytes, but the program has 6\n"},
    {"refused",
     "download",
     kResting,
     {{"end", Instead, "Not loaded: line 1 is bad\r\n"}},
     1,
     "the board answers: Not loaded: line 1 is bad\n"},
    {"an earlier load's verdict before the loader starts",
     "download",
     kResting,
     {{"L", Before, "\r\nLoaded 6 bytes\r\n"}, {"end", Instead, "Not loaded: it is bad\r\n"}},
     1,
     "the board answers: Not loaded: it is bad\n"},
    {"an earlier load's verdict between the lines",
     "download",
     kResting,
     {{"L", After, "\r\nLoaded 6 bytes\r\n"}, {"end", Instead, "Not loaded: it is bad\r\n"}},
     1,
     "the board answers: Not loaded: it is bad\n"},
    {"an earlier load's verdict after the last line, then the echo",
     "download",
     kResting,
     {{"X", EchoLate, "", 1500ms},
      {"X", Before, "\r\nLoaded 6 bytes\r\n"},
      {"end", Instead, "Not loaded: it is bad\r\n"}},
     1,
     "the board answers: Not loaded: it is bad\n"},
    {"an earlier load's verdict without any echo",
     "download",
     kResting,
     {{"X", NoEcho},
      {"Z", NoEcho},
      {"L", NoEcho},
      {"end", Instead, "Loaded 6 bytes\r\n\r\nNot loaded: it is bad\r\n"}},
     1,
     "the board answers: Not loaded: it is bad\n"},
    {"cut before the load", "download", kResting, {{"X", CutBefore}}, 3, kLost},
    {"cut at the loader", "download", kResting, {{"L", CutBefore}}, 3, kLost},
    {"cut before the verdict", "download", kResting, {{"end", CutBefore}}, 3, kLost},
    {"cut in the verdict",
     "download",
     kResting,
     {{"end", Instead, "Loaded 6"}, {"end", CutAfter}},
     3,
     kLost},
};

const Case kStarts[] = {
    {"as it should be", "run", kResting, {}, 0, ""},
    {"a program that ends at once", "run", {{"G", "End at [0003]\r\n"}}, {}, 0, ""},
    {"a late refusal", "run", kEmpty, {{"G", AnswerLate, "", kLate}}, 1, kNoProgram},
    {"a very late refusal", "run", kEmpty, {{"G", AnswerLate, "", 1800ms}}, 1, kNoProgram},
    {"a late echo", "run", kEmpty, {{"G", EchoLate, "", kLate}}, 1, kNoProgram},
    {"a refusal in a late pair", "run", kEmpty, {{"G", Twice}}, 1, kNoProgram},
    {"a refusal that comes early", "run", kResting, {{"G", Before, "No program\r\n"}}, 0, ""},
    {"not understood", "run", kResting, {{"G", Instead, "?\r\n"}}, 1, "the board answers: ?\n"},
    {"silence", "run", kResting, {{"G", Mute}}, 1, kSilent},
    {"garbage", "run", kResting, {{"G", NoEcho}, {"G", Instead, "\x01zz\xff"}}, 1, kOdd},
    {"cut before the echo", "run", kResting, {{"G", CutBefore}}, 3, kLost},
    {"cut after the echo", "run", kResting, {{"G", CutBetween}}, 3, kLost},
    {"as it should be", "debug", kResting, {}, 0, "", "[0000] JUMP [0003]\n"},
    {"a late prompt",
     "debug",
     kResting,
     {{"D", AnswerLate, "", kLate}},
     0,
     "",
     "[0000] JUMP [0003]\n"},
    {"an earlier prompt",
     "debug",
     kEmpty,
     {{"D", Before, "[0007] END\r\n" + kPrompt}},
     1,
     kNoProgram},
    {"a late refusal", "debug", kEmpty, {{"D", AnswerLate, "", kLate}}, 1, kNoProgram},
    {"no prompt",
     "debug",
     kResting,
     {{"D", Instead, kFirst}},
     1,
     "the board on PORT shows no debug prompt\n"},
    {"silence", "debug", kResting, {{"X", Mute}, {"D", Mute}}, 1, kSilent},
    {"cut before the prompt",
     "debug",
     kResting,
     {{"D", Instead, kFirst}, {"D", CutAfter}},
     3,
     kLost},
    {"as it should be", "stop", kResting, {{"X", Instead, "Stopped at [0003]\r\n"}}, 0, ""},
    {"all late", "stop", kResting, {{"X", EchoLate, "", kLate}, {"Z", EchoLate, "", kLate}}, 0, ""},
    {"refused", "stop", kResting, {{"Z", Instead, "?\r\n"}}, 1, "the board answers: ?\n"},
    {"deaf after its greeting", "stop", kResting, {{"X", Mute}, {"Z", Mute}, {"", Mute}}, 1, kOdd},
    {"cut", "stop", kResting, {{"Z", CutBefore}}, 3, kLost},
};

const Case kReadings[] = {
    {"as it should be", "variables", kDebugging, {}, 0, "", kValues},
    {"late", "variables", kDebugging, {{"M001A", AnswerLate, "", kLate}}, 0, "", kValues},
    {"a late prompt of the greeting",
     "variables",
     kDebugging,
     {{"W", Instead, "Kinetron\r\n"}, {"M001A", Before, kPrompt}},
     0,
     "",
     kValues},
    {"prompts that come twice",
     "variables",
     kDebugging,
     {{"M001A", After, kPrompt}},
     0,
     "",
     kValues},
    {"answers that come twice",
     "variables",
     kDebugging,
     {{"M001A", Twice}, {"M001C", Twice}},
     0,
     "",
     kValues},
    {"first those of another place",
     "variables",
     kDebugging,
     {{"M001C", Before, "[0030] 99 99 99 99 99 99 99 99\r\n" + kPrompt}},
     0,
     "",
     kValues},
    {"only those of another place",
     "variables",
     kDebugging,
     {{"M001C", Instead, "[0030] 99 99 99 99 99 99 99 99\r\n" + kPrompt}},
     1,
     "KineTron does not answer. Variable Values cannot be gathered\n"},
    {"no debug mode",
     "variables",
     kEmpty,
     {{"M001A", AnswerLate, "", kLate}},
     1,
     "KineTron is not in debug mode. Variable Values cannot be gathered\n"},
    {"a program that waits",
     "variables",
     {{"M001A", kMemory}},
     {},
     1,
     "the program waits and shows no debug prompt. Read its variables when it has gone on\n"},
    {"a program that has waited",
     "variables",
     kDebugging,
     {{"W", Instead, "Kinetron\r\n"}, {"]", Instead, ""}, {"M001A", AnswerLate, "", 1500ms}},
     0,
     "",
     kValues},
    {"a garbled digit",
     "variables",
     kDebugging,
     {{"M001C", Instead, "[001C] 07 0x 00 00 00 00 00 00\r\n" + kPrompt}},
     1,
     "the board does not show the memory of Total\n"},
    {"too few bytes",
     "variables",
     kDebugging,
     {{"M001C", Instead, "[001C] 07\r\n" + kPrompt}},
     1,
     "the board does not show the memory of Total\n"},
    {"silence", "variables", kDebugging, {{"M001A", Mute}}, 1, kSilent},
    {"silence half-way",
     "variables",
     kDebugging,
     {{"M001C", Mute}},
     1,
     "KineTron does not answer. Variable Values cannot be gathered\n"},
    {"cut before", "variables", kDebugging, {{"M001A", CutBetween}}, 3, kLost},
    {"cut half-way", "variables", kDebugging, {{"M001C", CutBetween}}, 3, kLost},
    {"a silent board",
     "terminal",
     {},
     {{"", Mute}, {"]", Mute}, {"W", Mute}, {"A11", Mute}},
     1,
     kSilent},
    {"cut", "terminal", {}, {{"A11", CutBetween}}, 3, kLost},
};

/// One zentro-link at its board.
class Trial {
  public:
    Trial(const Case& row, const QTemporaryDir& folder)
        : row_(row), board_(row.answers, row.deeds) {
        QStringList arguments{QString::fromStdString(board_.PortName()), row.command};
        const std::string command = row.command;
        isTerminal_ = command == "terminal";
        if (command == "download") arguments << folder.filePath("a.obj");
        if (command == "variables") arguments << "--symbols" << folder.filePath("a.sym");
        process_.start(ZENTRO_LINK_PROGRAM, arguments);
        if (isTerminal_) process_.write("A11\n");
        process_.closeWriteChannel();
    }

    bool IsOver() const { return process_.state() == QProcess::NotRunning; }

    void Check() {
        SCOPED_TRACE(std::string(row_.command) + ": " + row_.name);
        const std::string says = Own(process_.readAllStandardError().toStdString());
        EXPECT_EQ(process_.exitCode(), row_.status) << says;
        EXPECT_THAT(says, testing::HasSubstr(row_.says));
        EXPECT_EQ(says.empty(), row_.says[0] == '\0') << says;
        const std::string out = process_.readAllStandardOutput().toStdString();
        EXPECT_EQ(isTerminal_ ? "" : out, row_.out);
    }

  private:
    /// With PORT for the port's name.
    std::string Own(std::string text) const {
        const std::string& name = board_.PortName();
        for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name))
            text.replace(at, name.size(), "PORT");
        return text;
    }

    const Case& row_;
    PlayedBoard board_;
    QProcess process_;
    bool isTerminal_ = false;  ///< whose output is what the board says
};

/// All cases, so many at a time as the waiting of most leaves room for.
class BadBoard : public testing::Test {
  protected:
    BadBoard() {
        EXPECT_EQ(WriteWholeFile(Path("a.obj"), "53,0,3\r\n53,0,0\r\n"), "");
        EXPECT_EQ(WriteWholeFile(Path("a.sym"), "Count\tbyte\t26\t1\nTotal\tword\t28\t2\n"), "");
    }

    void Try(std::span<const Case> rows) {
        constexpr std::size_t kAtOnce = 16;
        std::list<Trial> trials;
        const auto goOn = [&] {
            for (auto trial = trials.begin(); trial != trials.end();) {
                const auto next = std::next(trial);
                if (trial->IsOver()) {
                    trial->Check();
                    trials.erase(trial);
                }
                trial = next;
            }
            for (; !rows.empty() && trials.size() < kAtOnce; rows = rows.subspan(1))
                trials.emplace_back(rows.front(), folder_);
            return trials.empty();
        };
        EXPECT_TRUE(WaitUntil(goOn, 60s));
    }

  private:
    std::string Path(const char* name) const { return folder_.filePath(name).toStdString(); }

    QTemporaryDir folder_;
};

TEST_F(BadBoard, IsReportedForWhatItDid) {
    std::vector<Case> rows;  // those that take longest first
    for (const std::span<const Case> table :
         {std::span<const Case>(kDownloads), std::span<const Case>(kReadings),
          std::span<const Case>(kStarts), std::span<const Case>(kGreetings)})
        rows.insert(rows.end(), table.begin(), table.end());
    Try(rows);
}

}  // namespace
}  // namespace zentro
