#include "ui/shell/send_commands.h"

#include <utility>

#include "ui/shell/board_windows.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/notice_bar.h"

namespace zentro {

namespace {

// What the notices are about: one about the same takes the place of another.
constexpr auto kNoBoard = "no board";
constexpr auto kOldCode = "old object code";
constexpr auto kOtherProgram = "another program";
constexpr auto kMainFile = "main file";
constexpr auto kWorld = "world";

}  // namespace

SendCommands::SendCommands(Programs& programs, BoardState& board, CompileCommands& compiler,
                           BoardWindows& boards, NoticeBar& notices, Surroundings surroundings,
                           QObject* parent)
    : QObject(parent),
      programs_(programs),
      board_(board),
      compiler_(compiler),
      boards_(boards),
      notices_(notices),
      surroundings_(std::move(surroundings)) {
    connect(&board_, &BoardState::SendingOver, this, &SendCommands::FollowSending);
    connect(&board_, &BoardState::Changed, this, &SendCommands::FollowRun);
    connect(&boards_, &BoardWindows::WorldMissed, this, [this](const QString& problem) {
        notices_.Offer({kWorld, problem, tr("Open &World..."), [this] { boards_.ChooseWorld(); }});
    });
    connect(&boards_, &BoardWindows::WorldEntered, this, [this] { notices_.Withdraw(kWorld); });
}

/// Null: it cannot be run, which has been told.
std::shared_ptr<const CompiledProgram> SendCommands::CompileFront() {
    const OpenFile* front = programs_.Front();
    if (front == nullptr) {
        surroundings_.showStatus(tr("There is no program to run. Begin or open one first."));
        return nullptr;
    }
    if (TellOfLostLine()) return nullptr;
    const OpenFile* root = programs_.Find(programs_.RootOf(*front));
    auto program = compiler_.CompileTexts(root == nullptr ? *front : *root);
    for (const char* subject : {kOtherProgram, kOldCode, kNoBoard})
        notices_.Withdraw(subject);
    if (program == nullptr || program->succeeded) return program;
    surroundings_.showStatus(
        tr("%1 does not run yet: mend what the messages name, then run it again.")
            .arg(program->name));
    return nullptr;
}

void SendCommands::Run() {
    const auto program = CompileFront();
    if (program == nullptr) return;
    running_.reset();
    const bool beginsAgain = std::exchange(isHeld_, false) && board_.Kind() == BoardKind::Virtual &&
                             board_.Activity().state == BoardActivity::State::Held;
    boards_.RunProgram(program);
    const bool isVirtual = board_.Kind() == BoardKind::Virtual;
    if (isVirtual) {
        running_ = program;
    } else {
        sending_ = program->name;
    }
    // Elsewhere the key may go on with a program that is held.
    const QString status =
        beginsAgain ? tr("%1 runs from its beginning again. To go on where it is held instead, "
                         "use Pause or Go On (Ctrl+F8).")
        : isVirtual ? tr("%1 runs on the virtual board.")
                    : tr("%1 is being sent to the board.");
    surroundings_.showStatus(status.arg(program->name));
    surroundings_.backToSource();
}

void SendCommands::FollowSending(const DownloadResult& result) {
    const QString name = std::exchange(sending_, {});
    if (name.isEmpty()) return;
    if (result.IsWhole())
        return surroundings_.showStatus(tr("%1 was sent to the board and runs.").arg(name));
    surroundings_.showStatus(tr("%1 does not run: it has not arrived at the board.").arg(name));
    if (result.outcome != DownloadOutcome::NoVerdict) return;
    OfferVirtualBoard(tr("No board answers on %1. Look at the cable and at the board's switch, "
                         "choose another port in the options, or use the virtual board.")
                          .arg(board_.PortName()),
                      [this] { return board_.Kind() == BoardKind::Port; });
}

/// The virtual board tells when a program is held, goes on or is over.
void SendCommands::FollowRun() {
    if (running_ == nullptr || board_.Kind() != BoardKind::Virtual) return;
    const BoardActivity::State state = board_.Activity().state;
    const bool isHeld = state == BoardActivity::State::Held;
    if (std::exchange(isHeld_, isHeld) != isHeld) {
        surroundings_.showStatus((isHeld ? tr("%1 is held.") : tr("%1 runs on the virtual board."))
                                     .arg(programs_.NameNow(*running_)));
    }
    if (state != BoardActivity::State::Ended && state != BoardActivity::State::Fault) return;
    const QString text =
        state == BoardActivity::State::Ended ? tr("%1 has ended.") : tr("%1 was ended by a fault.");
    surroundings_.showStatus(text.arg(programs_.NameNow(*std::exchange(running_, nullptr))));
}

bool SendCommands::Load() {
    const auto program = CompileFront();
    if (program == nullptr || !boards_.LoadProgram(program)) return false;
    surroundings_.backToSource();
    return true;
}

/// Whoever works with a real board is not to find the program on another one without a word.
bool SendCommands::TellOfLostLine() {
    if (board_.Connection() != ConnectionState::Lost) return false;
    OfferVirtualBoard(tr("Nothing was run: the connection to %1 is lost. Plug the board in and "
                         "press Open Again, or use the virtual board.")
                          .arg(board_.PortName()),
                      [this] { return board_.Connection() == ConnectionState::Lost; });
    return true;
}

void SendCommands::OfferVirtualBoard(const QString& text, std::function<bool()> holds) {
    notices_.Offer({kNoBoard, text, tr("Run on &Virtual Board"),
                    [this] {
                        surroundings_.openVirtualBoard();
                        Run();
                    },
                    std::move(holds)});
}

void SendCommands::Stop() {
    boards_.Stop();
}

bool SendCommands::CanStop() const {
    return board_.Connection() == ConnectionState::Connected || board_.Kind() == BoardKind::Virtual;
}

void SendCommands::FollowCompile(FileId file, bool succeeded) {
    OfferFrontFile(file);
    if (succeeded) OfferToSend(file);
}

void SendCommands::CompileAsMain(FileId file) {
    if (programs_.File(file) == nullptr) return;
    programs_.SetMain(file);
    compiler_.CompileSource();
}

/// The board goes on with what it holds until it is sent something else.
void SendCommands::OfferToSend(FileId compiled) {
    const OpenFile* file = programs_.File(compiled);
    const auto program = file == nullptr ? nullptr : programs_.CompiledFrom(file->key);
    const auto isNews = [this, program] {
        const auto onBoard = board_.Program().compiled;
        const bool isSame = onBoard != nullptr && onBoard->objectText == program->objectText;
        return board_.Connection() == ConnectionState::Connected && !isSame &&
               programs_.LastCompiled() == program;
    };
    const HeldProgram& held = board_.Program();
    if (program == nullptr || held.name.isEmpty() || !isNews()) return;
    const QString text =
        held.extent == HeldProgram::Extent::Half
            ? tr("The board holds only a part of %1. %2 has been compiled and can be sent.")
            : tr("The board holds %1 as it was sent before. %2, as it was compiled now, is not on "
                 "it yet.");
    notices_.Offer({kOtherProgram, text.arg(held.name, program->name), tr("&Send (F7)"),
                    [this] { Download(); }, isNews});
}

/// The file to compile need not be the one that is looked at.
void SendCommands::OfferFrontFile(FileId compiled) {
    const OpenFile* front = programs_.Front();
    const OpenFile* file = programs_.File(compiled);
    if (front == nullptr || file == nullptr || programs_.RootOf(*front) == file->key)
        return notices_.Withdraw(kMainFile);
    const FileId id = front->id;
    notices_.Offer({kMainFile,
                    tr("%1 was compiled, the file with the key. %2, which is in front, does not "
                       "belong to it.")
                        .arg(file->name, front->name),
                    tr("&Compile %1").arg(front->name), [this, id] { CompileAsMain(id); },
                    [this, compiled, id] {
                        const OpenFile* main = programs_.Main();
                        return main != nullptr && main->id == compiled &&
                               programs_.File(id) != nullptr;
                    }});
}

void SendCommands::TellWhyNoDownload() {
    const auto hasNone = [this] { return board_.Connection() != ConnectionState::Connected; };
    if (board_.Connection() == ConnectionState::Lost) {
        return notices_.Offer({kNoBoard,
                               tr("The connection to %1 is lost. Plug the board in and press Open "
                                  "Again in the terminal, or use the virtual board.")
                                   .arg(board_.PortName()),
                               tr("Open &Virtual Board"), surroundings_.openVirtualBoard, hasNone});
    }
    if (board_.Kind() == BoardKind::Virtual) {
        return notices_.Offer({kNoBoard,
                               tr("F7 sends over the terminal, which is not open. Run (F9) brings "
                                  "the program in front to the virtual board at once."),
                               tr("&Run"), [this] { Run(); }, hasNone});
    }
    notices_.Offer({kNoBoard,
                    tr("No board is connected that the program could be sent to. F6 opens the "
                       "connection to a board."),
                    tr("Open &Virtual Board"), surroundings_.openVirtualBoard, hasNone});
}

/// What Run has compiled is not what the download sends.
void SendCommands::OfferToRun() {
    notices_.Offer(
        {kOldCode,
         tr("F7 sends what F5 has compiled last. Run (F9) compiles the program in front "
            "and brings it to the board at once."),
         tr("&Run"), [this] { Run(); },
         [this] { return programs_.Main() == nullptr && programs_.Front() != nullptr; }});
}

/// Without object code there is nothing to send.
void SendCommands::OfferToCompile(const OpenFile& file) {
    const FileId id = file.id;
    notices_.Offer({kOldCode,
                    tr("Nothing was sent: %1 has not been compiled without errors. Mend what is "
                       "marked, and compile it.")
                        .arg(file.name),
                    tr("&Compile %1").arg(file.name), [this, id] { CompileAsMain(id); },
                    [this, id] {
                        return programs_.File(id) != nullptr && compiler_.ObjectCode() == nullptr;
                    }});
}

void SendCommands::Download() {
    const OpenFile* main = programs_.Main();
    const auto compiled = main == nullptr ? nullptr : programs_.CompiledFrom(main->key);
    if (main != nullptr && compiler_.ObjectCode() == nullptr) OfferToCompile(*main);
    if (main == nullptr) OfferToRun();
    if (!boards_.DownloadCurrent() || main == nullptr) return;
    if (compiled != nullptr && programs_.IsUpToDate(*compiled)) return notices_.Withdraw(kOldCode);
    TellOfOldObjectCode(*main, compiled != nullptr);
}

void SendCommands::TellOfOldObjectCode(const OpenFile& file, bool compiledBefore) {
    const FileId id = file.id;
    const auto compileAndSend = [this, id] {
        CompileAsMain(id);
        const OpenFile* main = programs_.File(id);
        const auto now = main == nullptr ? nullptr : programs_.CompiledFrom(main->key);
        if (now != nullptr && programs_.IsUpToDate(*now)) Download();
    };
    const QString text =
        compiledBefore
            ? tr("The board got %1 as it was compiled last. The text has been changed since.")
            : tr("The board got what was compiled of %1 at an earlier time.");
    notices_.Offer({kOldCode, text.arg(file.name), tr("&Compile and Send"), compileAndSend,
                    [this, id] { return programs_.File(id) != nullptr; }});
}

}  // namespace zentro
