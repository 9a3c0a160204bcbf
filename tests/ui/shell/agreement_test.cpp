// Whatever a user does after whatever else: all windows agree on the program in front and on the
// board.
#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTabBar>
#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "comms/debug_variables.h"
#include "comms/virtual_board_link.h"
#include "compiler/line_starts.h"
#include "compiler/source_of_address.h"
#include "desktop/board_state.h"
#include "desktop/file_watcher.h"
#include "desktop/line_follower.h"
#include "desktop/live_check.h"
#include "desktop/text_file.h"
#include "tests/comms/board_fixture.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/shell/board_windows.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/source_files.h"

namespace zentro {
namespace {

constexpr const char* kLoops =
    "INCLUDE \"part.txt\"\nDEFINE BYTE Count = 0\nBEGIN PROGRAM\n    LOOP\n        Count = Count + "
    "1\n"
    "        CALL Rest()\n    END LOOP\nEND PROGRAM\n";
constexpr const char* kPart = "DEFINE ROUTINE Rest()\n    WAIT 1\nEND ROUTINE\n";
constexpr const char* kEnds =
    "DEFINE WORD Sum = 3\nBEGIN PROGRAM\n    Sum = Sum + 4\nEND PROGRAM\n";
constexpr const char* kFaulty =
    "DEFINE BYTE Total = 9\nDEFINE BYTE Parts = 0\nBEGIN PROGRAM\n    Total = Total / Parts\n"
    "END PROGRAM\n";
constexpr int kHereBit = 1 << 2;
constexpr int kMistakeBits = 0b11;
constexpr int kFilledBit = 1 << 7;
constexpr int kHollowBit = 1 << 9;

class AgreementTest : public MainWindowTest {
  protected:
    struct Step {
        const char* name;
        std::function<void()> take;
    };

    AgreementTest() {
        WriteFile("loops.txt", kLoops);
        WriteFile("part.txt", kPart);
        WriteFile("ends.txt", kEnds);
        WriteFile("faulty.txt", kFaulty);
        settings->SaveSetting(SettingNumber::SerialPort, std::string(kVirtualBoardPort));
        settings->SaveSetting(SettingNumber::SaveWithoutAsking, 1);
        silent_.answer = [](const std::string&) { return std::string(); };
        const auto answer = dialogs.run;
        dialogs.run = [answer](QDialog& dialog) { return answer(dialog); };
    }

    std::vector<Step> Steps();
    void Trigger(CommandId id) {
        if (window->Action(id)->isEnabled()) window->Action(id)->trigger();
    }
    void ClickIfThere(const char* name) {
        auto* button = Child<QAbstractButton>(name);
        if (button != nullptr && button->isEnabled()) QTest::mouseClick(button, Qt::LeftButton);
    }
    QTabBar& Tabs() { return *Child<QTabBar>("TabStripFiles"); }
    void Open(const QString& name) { window->Files().Open(FilePath(name)); }
    /// Chooses the file, compiles it and sends it to the virtual board.
    void RunOnBoard(const QString& name);
    void WriteOutside(const QString& name, const QByteArray& text) {
        WriteFile(name, text);
        LookAtDisk();
    }
    void LookAtDisk() { window->findChild<FileWatcher*>()->CheckNow(); }
    void Settle();

    void ExpectAgreement();
    void ExpectTabsAgree();
    void ExpectFrontAgrees();
    void ExpectMarksAgree();
    QStringList Arrows();
    QStringList WhereItStands();
    void ExpectArrowAgrees();
    void ExpectBreakpointsAgree();
    void ExpectValuesAgree();
    void ExpectBoardAgrees();

    ScriptedBoard silent_;  ///< a port on which nobody answers
    int turn_ = 0;          ///< for steps that have several answers
};

void AgreementTest::RunOnBoard(const QString& name) {
    Open(name);
    window->OpenPrograms().SetMain(window->Files().Front()->Id());
    Trigger(CommandId::CompileSource);
    Trigger(CommandId::OpenVirtualBoard);
    Trigger(CommandId::DownloadCurrent);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->Board().IsSending(); }));
}

std::vector<AgreementTest::Step> AgreementTest::Steps() {
    const auto trigger = [this](CommandId id) { return [this, id] { Trigger(id); }; };
    const auto click = [this](const char* name) { return [this, name] { ClickIfThere(name); }; };
    return {
        {"open", [this] { Open(++turn_ % 2 == 0 ? "loops.txt" : "part.txt"); }},
        {"new", trigger(CommandId::NewSource)},
        {"click tab",
         [this] {
             if (Tabs().count() == 0) return;
             QTest::mouseClick(&Tabs(), Qt::LeftButton, {},
                               Tabs().tabRect(++turn_ % Tabs().count()).center());
         }},
        {"next window", trigger(CommandId::NextWindow)},
        {"right click on a tab",
         [this] {
             if (Tabs().count() == 0) return;
             QTest::mouseClick(&Tabs(), Qt::RightButton, {},
                               Tabs().tabRect(++turn_ % Tabs().count()).center());
         }},
        {"save",
         [this] {
             dialogs.fileToSave.reset();
             Trigger(CommandId::Save);
         }},
        {"save as",
         [this] {
             dialogs.fileToSave = FilePath(QString("saved%1.txt").arg(++turn_ % 5));
             Trigger(CommandId::SaveSourceAs);
         }},
        {"close",
         [this] {
             dialogs.fileToSave.reset();
             dialogs.yesNoAnswer = ++turn_ % 3 == 0
                                       ? YesNoAnswer::Neither
                                       : (turn_ % 3 == 1 ? YesNoAnswer::No : YesNoAnswer::Yes);
             Trigger(CommandId::CloseSource);
         }},
        {"changed outside",
         [this] {
             dialogs.yes = ++turn_ % 2 == 0;
             WriteOutside("loops.txt", kLoops + QByteArray("; ") + QByteArray::number(turn_));
         }},
        {"deleted outside",
         [this] {
             QFile::remove(FilePath("part.txt"));
             LookAtDisk();
         }},
        {"brought back outside", [this] { WriteOutside("part.txt", kPart); }},
        {"edit",
         [this] {
             if (FrontSource() == nullptr) return;
             FrontSource()->PutCaretAt(1);
             Type(++turn_ % 2 == 0 ? "x" : "; ");
         }},
        {"undo", trigger(CommandId::Undo)},
        {"compile", trigger(CommandId::CompileSource)},
        {"reset main file", trigger(CommandId::ResetMain)},
        {"terminal", trigger(CommandId::OpenComms)},
        {"download", trigger(CommandId::DownloadCurrent)},
        {"virtual board", trigger(CommandId::OpenVirtualBoard)},
        {"run what is in front", trigger(CommandId::Run)},
        {"stop everything", trigger(CommandId::Stop)},
        {"variables", trigger(CommandId::Variables)},
        {"pause", click("BtnBoardPause")},
        {"run", click("BtnBoardRun")},
        {"stop", click("BtnBoardStop")},
        {"step", click("BtnBoardStep")},
        {"step back", click("BtnBoardStepBack")},
        {"line", trigger(CommandId::StepLine)},
        {"line back", trigger(CommandId::StepLineBack)},
        {"breakpoint",
         [this] {
             if (FrontSource() == nullptr) return;
             FrontSource()->PutCaretAt(++turn_ % FrontSource()->Editor()->lines() + 1);
             Trigger(CommandId::ToggleBreakpoint);
         }},
        {"a program that loops", [this] { RunOnBoard("loops.txt"); }},
        {"a program that ends", [this] { RunOnBoard("ends.txt"); }},
        {"a fault", [this] { RunOnBoard("faulty.txt"); }},
        {"cable cut",
         [this] {
             if (window->Board().Kind() == BoardKind::Virtual)
                 window->Board().VirtualBoard().Link().Unplug();
         }},
        {"open again", click("BtnOpenAgain")},
        {"switch ports",
         [this] {
             const bool toBoard = ++turn_ % 2 == 0;
             settings->SaveSetting(SettingNumber::SerialPort,
                                   toBoard ? std::string(kVirtualBoardPort) : silent_.PortName());
             if (QWidget* terminal = Child("frmTerminal")) terminal->close();
             QTest::qWait(0);
             Trigger(CommandId::OpenComms);
         }},
        {"close terminal",
         [this] {
             if (QWidget* terminal = Child("frmTerminal")) terminal->close();
         }},
        {"close board",
         [this] {
             auto* board = Child("frmVirtualBoard");
             if (board != nullptr) board->parentWidget()->close();
         }},
    };
}

/// What comes soon after a step has come: signals in the queue, the check of the text, the screen.
void AgreementTest::Settle() {
    QTest::qWait(25);
    window->findChild<LiveCheck*>()->CheckNow();
    QTest::qWait(0);
}

void AgreementTest::ExpectAgreement() {
    ExpectTabsAgree();
    ExpectFrontAgrees();
    ExpectMarksAgree();
    ExpectArrowAgrees();
    ExpectBreakpointsAgree();
    ExpectValuesAgree();
    ExpectBoardAgrees();
}

/// A tab for each window; a star where the text is not the one on the disk; one key at most.
void AgreementTest::ExpectTabsAgree() {
    const QList<SourceWindow*> windows = window->Files().Windows();
    ASSERT_EQ(Tabs().count(), windows.size());
    std::set<QString> paths;
    int keys = 0;
    for (int i = 0; i < Tabs().count(); ++i) {
        const SourceWindow& source = *windows[i];
        bool differs = source.Editor()->isModified();
        if (!source.File().NeverSaved()) {
            const LoadedText disk = LoadText(source.File().Path());
            differs = !disk.problem.empty() ||
                      QString::fromStdString(disk.file.text) != source.Text() || differs;
            EXPECT_TRUE(paths.insert(source.File().Path()).second) << "two tabs of one file";
        }
        EXPECT_EQ(Tabs().tabText(i), source.FileName() + (differs ? "*" : ""));
        EXPECT_EQ(source.isWindowModified(), differs) << source.FileName().toStdString();
        EXPECT_TRUE(source.windowTitle().startsWith(source.FileName()));
        if (!Tabs().tabIcon(i).isNull()) ++keys;
    }
    const OpenFile* main = window->OpenPrograms().Main();
    EXPECT_EQ(keys, main == nullptr ? 0 : 1);
    if (keys == 1) {
        const int tab = static_cast<int>(windows.indexOf(window->Files().WindowOf(main->id)));
        EXPECT_FALSE(Tabs().tabIcon(tab).isNull()) << main->name.toStdString();
    }
}

/// The status bar is about the file whose tab is selected, which is the source window in front.
void AgreementTest::ExpectFrontAgrees() {
    const QList<SourceWindow*> windows = window->Files().Windows();
    // It is told when the caret has come to rest.
    const auto isTold = [&] {
        const SourceWindow* front = window->Files().Front();
        return front == nullptr || Child<QLabel>("panelLine")->text() == front->DocStats();
    };
    EXPECT_TRUE(QTest::qWaitFor(isTold, 2000));
    const QString line = Child<QLabel>("panelLine")->text();
    const QString changed = Child<QLabel>("panelChanged")->text();
    if (windows.isEmpty()) {
        EXPECT_EQ(line + changed, "");
        return;
    }
    const int tab = Tabs().currentIndex();
    ASSERT_GE(tab, 0);
    const SourceWindow* front = windows[tab];
    EXPECT_EQ(front, window->Files().Front());
    EXPECT_EQ(line, front->DocStats());
    EXPECT_EQ(changed != "Saved" && changed != "New", Tabs().tabText(tab).endsWith('*'));
    const QMdiSubWindow* active = window->findChild<QMdiArea*>()->activeSubWindow();
    auto* source = active == nullptr ? nullptr : qobject_cast<SourceWindow*>(active->widget());
    if (source != nullptr) {
        EXPECT_EQ(source, front);
    }
}

/// The marks of the file in front are those of its text as it stands, in its program.
void AgreementTest::ExpectMarksAgree() {
    const SourceWindow* front = window->Files().Front();
    if (front == nullptr) return;
    const Programs& programs = window->OpenPrograms();
    const OpenFile* root = programs.Find(programs.RootOf(front->File()));
    ASSERT_NE(root, nullptr);
    const ProgramReport report = CheckProgram(configuration, *root, *settings, programs);
    std::set<int> expected;
    const auto messages = report.messages.find(front->File().key);
    if (messages != report.messages.end()) {
        for (const LineMessage& message : messages->second)
            expected.insert(std::clamp(message.line, 1, front->Editor()->lines()));
    }
    std::set<int> marked;
    for (int line = 0; line < front->Editor()->lines(); ++line) {
        if ((front->Editor()->markersAtLine(line) & kMistakeBits) != 0) marked.insert(line + 1);
    }
    if (marked == expected) return;
    // A compile of this very text tells the consequences of a mistake too.
    const auto compiled = programs.MessagesOf(front->File());
    ASSERT_TRUE(compiled) << front->FileName().toStdString();
    std::set<int> told;
    for (const LineMessage& message : *compiled)
        told.insert(std::clamp(message.line, 1, front->Editor()->lines()));
    EXPECT_TRUE(std::ranges::includes(told, expected));
    EXPECT_EQ(marked, told) << front->FileName().toStdString();
}

/// The files in which an arrow stands, one entry for each.
QStringList AgreementTest::Arrows() {
    QStringList arrows;
    for (const SourceWindow* source : window->Files().Windows()) {
        for (int line = 0; line < source->Editor()->lines(); ++line) {
            if ((source->Editor()->markersAtLine(line) & kHereBit) != 0)
                arrows += source->FileName();
        }
    }
    return arrows;
}

/// Where the program of the board in front is held or has failed: the open file with that line.
QStringList AgreementTest::WhereItStands() {
    BoardState& board = window->Board();
    const auto compiled = board.Program().compiled;
    if (board.Kind() != BoardKind::Virtual || compiled == nullptr) return {};
    const VirtualBoardHost& host = board.VirtualBoard();
    const Processor& processor = host.State().processor;
    const bool isHeld = processor.running && host.IsPaused();
    const bool isFaulty = !processor.running && processor.end == EndReason::Fault;
    if (!isHeld && !isFaulty) return {};
    const std::uint32_t address =
        isHeld ? zentro::WhereItStands(host.State()) : processor.instruction;
    const auto place = SourceOfAddress(
        *compiled->compilation,
        BehindJumpToProgram(*compiled->compilation, static_cast<std::uint16_t>(address)));
    if (!place) return {};
    const QString key =
        FileKey(QString::fromStdString(place->pathName), QString::fromStdString(place->fileName));
    const auto read = compiled->texts.find(key);
    if (read == compiled->texts.end()) return {};
    const OpenFile* file = window->OpenPrograms().OpenedAs(key, read->second);
    return file == nullptr ? QStringList{} : QStringList{file->name};
}

/// There is an arrow just where the program of the board in front stands, and nowhere else.
void AgreementTest::ExpectArrowAgrees() {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Arrows() == WhereItStands(); }, 1000))
        << Arrows().join(' ').toStdString() << " instead of "
        << WhereItStands().join(' ').toStdString();
}

/// Each breakpoint has its mark, which is filled when the board is held there.
void AgreementTest::ExpectBreakpointsAgree() {
    const auto* breakpoints = window->findChild<Breakpoints*>();
    const auto* lines = window->findChild<LineFollower*>();
    for (const SourceWindow* source : window->Files().Windows()) {
        const auto expected = [&] {
            std::map<int, int> marks;
            for (const Breakpoint& breakpoint : breakpoints->All()) {
                if (breakpoint.file == source->File().key)
                    marks[std::clamp(breakpoint.line, 1, source->Editor()->lines())] =
                        lines->IsOnBoard(breakpoint) ? kFilledBit : kHollowBit;
            }
            return marks;
        };
        const auto shown = [&] {
            std::map<int, int> marks;
            for (int line = 0; line < source->Editor()->lines(); ++line) {
                const int mark = static_cast<int>(source->Editor()->markersAtLine(line)) &
                                 (kFilledBit | kHollowBit);
                if (mark != 0) marks[line + 1] = mark;
            }
            return marks;
        };
        // What the board does is told a little later.
        static_cast<void>(QTest::qWaitFor([&] { return shown() == expected(); }, 1000));
        EXPECT_EQ(shown(), expected()) << source->FileName().toStdString();
    }
}

/// The variables are those of the program on the board, with the values in its memory.
void AgreementTest::ExpectValuesAgree() {
    const auto* list = Child<QListWidget>("ListVars");
    if (list == nullptr) return;
    const auto named = window->Boards().NamedProgram();
    const auto held = window->Board().Program().compiled;
    if (held != nullptr) {
        EXPECT_EQ(named, held);
    }
    const std::vector<DebugVariable> variables =
        named == nullptr ? std::vector<DebugVariable>{} : VariablesOf(*named->compilation);
    ASSERT_EQ(list->count(), static_cast<int>(variables.size()));
    const auto* status = Child<QLabel>("lblStatus");
    const bool isLive = window->Board().CanReadNow();
    EXPECT_EQ(status->text().contains("irtual board"), isLive) << status->text().toStdString();
    if (!isLive || !window->Board().VirtualBoard().IsPaused() || variables.empty()) return;
    const auto shows = [&] {
        for (int row = 0; row < list->count(); ++row) {
            const DebugVariable& variable = variables[static_cast<std::size_t>(row)];
            const std::string bytes = window->Board().ReadNow(variable.address, kBytesInReply);
            const std::vector<std::uint8_t> numbers(bytes.begin(), bytes.end());
            const QString value = QString::fromStdString(FormatBytes(numbers, variable.type));
            if (!list->item(row)->text().simplified().endsWith(value.simplified())) return false;
        }
        return true;
    };
    EXPECT_TRUE(QTest::qWaitFor(shows, 1000)) << list->item(0)->text().toStdString();
}

/// Commands, buttons and status bar say the same of the connection and of the board.
void AgreementTest::ExpectBoardAgrees() {
    const TerminalSession* session = window->Board().Session();
    const bool isConnected = session != nullptr && session->IsConnected();
    EXPECT_EQ(session != nullptr, Child("frmTerminal") != nullptr);
    for (const CommandId id : {CommandId::DownloadCurrent, CommandId::DownloadSaved}) {
        EXPECT_EQ(window->Action(id)->isEnabled(), isConnected);
    }
    EXPECT_EQ(window->Action(CommandId::CancelDownload)->isEnabled(),
              session != nullptr && session->IsDownloading());
    const QString panel = Child<QLabel>("panelConnection")->text();
    EXPECT_EQ(panel.startsWith("Connected to "), isConnected) << panel.toStdString();
    if (session == nullptr) {
        const bool isOnScreen = Child("frmVirtualBoard") != nullptr;
        EXPECT_EQ(panel, isOnScreen ? "Virtual board" : "Not connected");
    }
    EXPECT_EQ(window->Action(CommandId::Stop)->isEnabled(),
              isConnected || window->Board().Kind() == BoardKind::Virtual);
    if (const auto* run = Child<QAbstractButton>("BtnRun")) {
        EXPECT_EQ(run->isEnabled(), !session->IsDownloading());
    }
    const auto* pause = Child<QAbstractButton>("BtnBoardPause");
    if (!window->Board().HasVirtualBoard()) return;
    const VirtualBoardHost& host = window->Board().VirtualBoard();
    if (pause != nullptr) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return pause->isChecked() == host.IsPaused(); }, 1000));
    } else if (session == nullptr || window->Board().Kind() == BoardKind::Port) {
        EXPECT_TRUE(!host.State().processor.running || host.IsPaused()) << "it runs unseen";
    }
}

TEST_F(AgreementTest, WindowsAgreeAfterEveryPairOfSteps) {
    const std::vector<Step> steps = Steps();
    // A walk in which every step follows every other once.
    std::vector<std::size_t> walk;
    for (std::size_t first = 0; first < steps.size(); ++first) {
        walk.push_back(first);
        for (std::size_t second = first + 1; second < steps.size(); ++second)
            walk.insert(walk.end(), {first, second});
    }
    std::string taken;
    for (std::size_t i = 0; i < walk.size(); ++i) {
        taken += std::string(taken.empty() ? "" : ", ") + steps[walk[i]].name;
        steps[walk[i]].take();
        Settle();
        ExpectAgreement();
        if (HasFailure()) {
            const std::size_t begin = taken.size() > 400 ? taken.size() - 400 : 0;
            FAIL() << "after step " << i << ": ..." << taken.substr(begin);
        }
    }
}

}  // namespace
}  // namespace zentro
