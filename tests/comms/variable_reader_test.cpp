// Reading variables from boards that answer in every way, or not at all.
#include "comms/variable_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

#include "tests/comms/board_fixture.h"
#include "tests/comms/recording_link.h"

namespace zentro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<DebugVariable> TwoVariables() {
    DebugVariable count;
    count.name = count.resolvedName = "Count";
    count.parentName = "Program";
    count.address = 0x1A;
    DebugVariable far = count;
    far.name = far.resolvedName = "Far";
    far.type = DataType::Word;
    far.address = 0x12ABC;  // is sent as its last four digits
    return {count, far};
}

const std::string kPrompt(kSentPrompt);
const std::string kFirstReply = "M001A\r\n[001A] 2A 00 00 00 00 00 00 00\r\n" + kPrompt;
const std::string kSecondReply = "M2ABC\r\n[2ABC] 01 02 00 00 00 00 00 00\r\n" + kPrompt;

/// A reader at a board that the test plays and that stands at its debug prompt.
class VariableReaderTest : public testing::Test {
  protected:
    VariableReaderTest() {
        session_->OpenConnection("port");
        session_->WriteToScreen(kPrompt);
        link_.written.clear();
        QObject::connect(&reader_, &VariableReader::ReadingFinished,
                         [this](bool complete) { finished_.push_back(complete); });
        reader_.SetTerminal(session_.get());
        reader_.LoadVariableList(TwoVariables());
    }

    bool Sends(std::string_view command) {
        const bool sent = WaitUntil([&] { return !link_.written.empty(); }, 2s);
        return sent && std::exchange(link_.written, {}) == command;
    }
    bool Finishes() {
        return WaitUntil([this] { return !finished_.empty(); }, 2s);
    }
    void ExpectScreenOn() {
        EXPECT_FALSE(reader_.IsReading());
        EXPECT_FALSE(session_->ScreenOff());
    }

    RecordingLink link_;
    std::vector<std::string> messages_;
    std::vector<bool> finished_;
    TerminalSession::MessageSink keep_ = [this](const std::string& text) {
        messages_.push_back(text);
    };
    std::unique_ptr<TerminalSession> session_ = std::make_unique<TerminalSession>(
        link_, keep_, [] { return std::vector<PortDescription>(); });
    VariableReader reader_{keep_, 50ms};
};

TEST_F(VariableReaderTest, AsksForOneVariableAfterTheOther) {
    reader_.RefreshVariables();
    EXPECT_TRUE(session_->ScreenOff());
    EXPECT_TRUE(Sends("M001A\r"));
    reader_.RefreshVariables();  // is not begun anew
    link_.toRead = kFirstReply;
    EXPECT_TRUE(Sends("M2ABC\r"));
    // A step of a second program would end here; the marker comes in pieces.
    link_.toRead = kSecondReply.substr(0, kSecondReply.size() - 2);
    WaitUntil([this] { return link_.toRead.empty(); });
    EXPECT_TRUE(reader_.IsReading());
    link_.toRead = kSecondReply.substr(kSecondReply.size() - 2);
    ASSERT_TRUE(Finishes());
    EXPECT_THAT(finished_, ElementsAre(true));
    EXPECT_THAT(reader_.ShowVariableList(),
                ElementsAre("   Count\t42\t(2Ah)", "     Far\t258\t(0102h)"));
    ExpectScreenOn();
    EXPECT_TRUE(session_->IsDebugging());
    EXPECT_THAT(messages_, IsEmpty());
}

TEST_F(VariableReaderTest, TakesRepliesByteByByte) {
    VariableReader reader(keep_);
    reader.SetTerminal(session_.get());
    reader.LoadVariableList(TwoVariables());
    reader.RefreshVariables();
    for (const std::string& reply : {kFirstReply, kSecondReply}) {
        for (const char byte : reply)
            emit session_->CharsReceived(std::string(1, byte));
    }
    EXPECT_EQ(link_.written, "M001A\rM2ABC\r");
    EXPECT_FALSE(reader.IsReading());
    EXPECT_EQ(reader.Variables()[1].debugValue, "258\t(0102h)");
    EXPECT_THAT(reader.Variables()[1].bytes, ElementsAre(1, 2, 0, 0, 0, 0, 0, 0));
}

TEST_F(VariableReaderTest, GivesUpABoardThatDoesNotAnswer) {
    reader_.RefreshVariables();
    emit session_->CharsReceived("Fault: x");
    ASSERT_TRUE(Finishes());
    EXPECT_THAT(finished_, ElementsAre(false));
    EXPECT_THAT(messages_,
                ElementsAre("KineTron does not answer. Variable Values cannot be gathered"));
    ExpectScreenOn();
    EXPECT_THAT(session_->Screen().Text(), testing::EndsWith("Fault: x"));
}

/// The board shows the memory at once, but no prompt before the program's WAIT is over.
TEST_F(VariableReaderTest, SaysThatTheProgramWaits) {
    reader_.RefreshVariables();
    emit session_->CharsReceived("M001A\r\n[001A] 2A 00 00 00 00 00 00 00\r\n");
    ASSERT_TRUE(Finishes());
    EXPECT_THAT(messages_,
                ElementsAre("The program waits, and KineTron shows no debug prompt until "
                            "it goes on. Variable Values can be gathered then"));
    ExpectScreenOn();
}

TEST_F(VariableReaderTest, PutsALateReplyToNoOtherVariable) {
    reader_.RefreshVariables();
    emit session_->CharsReceived(kFirstReply);
    ASSERT_TRUE(Finishes());  // without the second one
    link_.written.clear();
    reader_.RefreshVariables();
    emit session_->CharsReceived(kSecondReply + kFirstReply);
    EXPECT_EQ(link_.written, "M001A\rM2ABC\r");
    emit session_->CharsReceived(kSecondReply);
    EXPECT_THAT(finished_, ElementsAre(false, true));
    EXPECT_EQ(reader_.Variables()[0].debugValue, "42\t(2Ah)");
    EXPECT_EQ(reader_.Variables()[1].debugValue, "258\t(0102h)");
}

/// A reply of another place, a step's prompt that comes late, what a program says in between.
TEST_F(VariableReaderTest, NeverShowsWhatStandsElsewhere) {
    const std::string others[] = {
        kSecondReply,
        "[0020] 07 00 00 00 00 00 00 00\r\n" + kPrompt,
        "\r\n[0003] MOVE BYTE [001A], [0020]\r\n" + kPrompt,
        "[0003] MOVE BYTE [001A], [0020]\r\n" + kPrompt + "[0004] END\r\n" + kPrompt,
        kPrompt,
        "\r\n" + kPrompt + kPrompt,
    };
    for (const std::string& other : others) {
        for (const bool isWhole : {true, false}) {
            finished_.clear();
            link_.written.clear();
            reader_.RefreshVariables();
            const std::string line = other.substr(0, other.find("*Debug"));
            emit session_->CharsReceived((isWhole ? other : line) + kFirstReply);
            EXPECT_EQ(link_.written, "M001A\rM2ABC\r") << other;
            emit session_->CharsReceived(kSecondReply);
            EXPECT_THAT(finished_, ElementsAre(true)) << other;
            EXPECT_EQ(reader_.Variables()[0].debugValue, "42\t(2Ah)") << other;
        }
    }
    reader_.RefreshVariables();
    emit session_->CharsReceived(kSecondReply);  // and nothing else comes
    finished_.clear();
    ASSERT_TRUE(Finishes());
    EXPECT_THAT(finished_, ElementsAre(false));
    EXPECT_EQ(reader_.Variables()[0].debugValue, "42\t(2Ah)");
}

TEST_F(VariableReaderTest, TakesAReplyThatNamesNoPlaceForTheAnswer) {
    const std::string end{kReplyEndMarker};
    for (const std::string reply : {"2A", "2A", "1A] 2A", "001A] 2A", "x001A] 2A", "[00G0] 2A"}) {
        reader_.RefreshVariables();
        emit session_->CharsReceived(reply + end);
        EXPECT_EQ(std::exchange(link_.written, {}), "M001A\rM2ABC\r") << reply;
        finished_.clear();
        ASSERT_TRUE(Finishes()) << reply;  // without the second one: late replies are expected
    }
}

TEST_F(VariableReaderTest, EndsWithItsTerminalAndSwitchesTheScreenOn) {
    const std::pair<const char*, std::function<void()>> endings[] = {
        {"terminal taken away", [&] { reader_.SetTerminal(nullptr); }},
        {"other variables", [&] { reader_.LoadVariableList(TwoVariables()); }},
        {"terminal closing", [&] { emit session_->FormClosing(); }},
        {"link lost while reading", [&] { link_.lost = true; }},
        {"link lost while writing",
         [&] {
             link_.lost = true;
             session_->SendCmd("X\r");
         }},
    };
    for (const auto& [name, end] : endings) {
        SCOPED_TRACE(name);
        link_.lost = false;
        session_->OpenConnection("port");
        session_->WriteToScreen(kPrompt);
        reader_.SetTerminal(session_.get());
        finished_.clear();
        reader_.RefreshVariables();
        ASSERT_TRUE(reader_.IsReading());
        end();
        ASSERT_TRUE(Finishes());
        EXPECT_THAT(finished_, ElementsAre(false));
        ExpectScreenOn();
    }
    messages_.clear();
    reader_.RefreshVariables();
    EXPECT_THAT(messages_, ElementsAre("Terminal Window is not open"));
}

TEST_F(VariableReaderTest, OutlivesItsTerminalAndTheOtherWayRound) {
    reader_.RefreshVariables();
    session_.reset();
    EXPECT_THAT(finished_, ElementsAre(false));
    session_ = std::make_unique<TerminalSession>(link_, keep_);
    session_->OpenConnection("port");
    session_->WriteToScreen(kPrompt);
    {
        VariableReader reader(keep_);
        reader.SetTerminal(session_.get());
        reader.LoadVariableList(TwoVariables());
        reader.RefreshVariables();
        EXPECT_TRUE(session_->ScreenOff());
    }
    EXPECT_FALSE(session_->ScreenOff());
}

/// What waits at the port when the read begins was said before.
TEST_F(VariableReaderTest, LooksFirstWhatTheBoardHasSaid) {
    link_.toRead = "\r\nStopped at [0003]\r\n";
    reader_.RefreshVariables();
    EXPECT_THAT(messages_,
                ElementsAre("Note: KineTron is not in debug mode. Variable Values cannot "
                            "be gathered"));
    EXPECT_EQ(link_.written, "");
    ExpectScreenOn();
    link_.lost = true;
    reader_.RefreshVariables();
    EXPECT_FALSE(reader_.IsReading());
}

TEST_F(VariableReaderTest, SaysWhyItCannotRead) {
    EXPECT_FALSE(reader_.LoadVariableList({}));
    reader_.RefreshVariables();  // at the prompt, but there is nothing to read
    EXPECT_TRUE(reader_.LoadVariableList(TwoVariables()));
    session_->WriteToScreen(" ");  // no prompt any more
    reader_.RefreshVariables();
    reader_.SetTerminal(nullptr);
    reader_.RefreshVariables();
    EXPECT_THAT(
        messages_,
        ElementsAre("No Variable Information found. Have you compiled the program?",
                    "Note: KineTron is not in debug mode. Variable Values cannot be gathered",
                    "Terminal Window is not open"));
    EXPECT_EQ(link_.written, "");
    ExpectScreenOn();
}

}  // namespace
}  // namespace zentro
