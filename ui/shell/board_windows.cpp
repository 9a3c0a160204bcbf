#include "ui/shell/board_windows.h"

#include <QFileInfo>
#include <utility>

#include "comms/virtual_board_link.h"
#include "config/encoding.h"
#include "config/file.h"
#include "desktop/compile_service.h"
#include "desktop/scene_changes.h"
#include "desktop/sound_output.h"
#include "desktop/text_file.h"
#include "desktop/used_inputs.h"
#include "ui/board/plot_window.h"
#include "ui/board/sound_controls.h"
#include "ui/board/virtual_board_window.h"
#include "ui/board/world_commands.h"
#include "ui/support/dialogs.h"
#include "ui/terminal/terminal_window.h"
#include "ui/terminal/variables_window.h"
#include "world/named_world.h"

namespace zentro {

BoardWindows::BoardWindows(Workbench& workbench, Programs& programs, BoardState& board,
                           Surroundings surroundings, QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      programs_(programs),
      board_(board),
      surroundings_(std::move(surroundings)),
      world_(new WorldDocument(
          board.VirtualBoard(),
          QString::fromStdString((workbench.programFolder / "worlds").string()), this)),
      worldCommands_(
          new WorldCommands(workbench, board.VirtualBoard(), *world_,
                            {[this] { return ProgramFolder(); },
                             [this] {
                                 const OpenFile* front = programs_.Front();
                                 return front == nullptr ? QString() : front->name;
                             },
                             [this](const QString& world) { surroundings_.rememberWorld(world); }},
                            this)),
      sound_(new SoundOutput(SoundProgram(), SoundOutput::kPatience, this)) {
    sound_->SetVolume(SoundVolume(workbench.settings));
    board.VirtualBoard().SetSoundListener([sound = QPointer(sound_)](const SoundTick& tick) {
        if (sound != nullptr) sound->Pass(tick);  // whichever of the two is gone first
    });
    connect(&board_, &BoardState::Changed, this, &BoardWindows::Follow);
    connect(&board_, &BoardState::ConversationOver, this, &BoardWindows::CloseTerminal);
    connect(&programs_, &Programs::Changed, this, &BoardWindows::Follow);
}

BoardWindows::~BoardWindows() = default;

void BoardWindows::OpenComms() {
    if (terminal_ == nullptr) {
        MakeTerminal(QString::fromStdString(
            AsText(workbench_.settings.GetSetting(SettingNumber::SerialPort))));
    }
    if (terminal_ != nullptr) surroundings_.bringToFront(terminal_);
}

void BoardWindows::MakeTerminal(const QString& portName) {
    terminal_ = new TerminalWindow(workbench_, board_.Begin(portName));
    surroundings_.addChild(terminal_);
    connect(terminal_, &TerminalWindow::FormClosing, this, &BoardWindows::CloseTerminal,
            Qt::QueuedConnection);
    terminal_->OpenConnection(portName);
}

void BoardWindows::CloseTerminal() {
    TerminalWindow* window = terminal_;
    terminal_ = nullptr;
    // The windows work with the session to its end.
    if (variables_ != nullptr) variables_->SetTerminal(nullptr);
    shown_.session = nullptr;
    if (window != nullptr) {
        disconnect(window, nullptr, this, nullptr);
        QWidget* frame = window->parentWidget();
        window->close();
        delete window;
        if (frame != nullptr) frame->deleteLater();
    }
    board_.End();
}

void BoardWindows::MakeBoardWindow() {
    if (boardWindow_ != nullptr) return;
    boardWindow_ = new VirtualBoardWindow(board_.VirtualBoard(), *worldCommands_, *sound_,
                                          workbench_.settings);
    usedInputsOf_.reset();
    surroundings_.addChild(boardWindow_);
    connect(boardWindow_, &VirtualBoardWindow::FormClosing, &board_,
            [this] { board_.SetVirtualBoardSeen(false); });
    boardWindow_->SetMayRun([this] { return MayRun(); });
    board_.SetVirtualBoardSeen(true);
}

void BoardWindows::OpenVirtualBoard() {
    MakeBoardWindow();
    if (terminal_ != nullptr && board_.Kind() != BoardKind::Virtual) CloseTerminal();
    if (terminal_ == nullptr) MakeTerminal(kVirtualBoardPort);
    surroundings_.bringToFront(boardWindow_);
}

bool BoardWindows::DownloadCurrent() {
    const QString path = surroundings_.objectFile();
    const auto refuse = [this](const QString& text) {
        workbench_.dialogs.ShowMessage(terminal_, text);
        return false;
    };
    if (path.isEmpty()) return refuse(tr("Nothing Compiled to Download!"));
    if (board_.Connection() != ConnectionState::Connected)
        return refuse(tr("Please open a connection to the kinetron before attempting a download."));
    if (!surroundings_.objectWindowOpen())
        return refuse(
            tr("Please use the download saved when you have no source file open and compiled"));
    // Nobody need press RUN on a board that is on the screen.
    Send(path, board_.Kind() == BoardKind::Virtual);
    return true;
}

void BoardWindows::DownloadSaved() {
    FileChoice choice;
    choice.title = tr("Download Saved Program");
    choice.folder =
        QString::fromStdString(AsText(workbench_.settings.GetSetting(SettingNumber::ObjectFolder)));
    choice.filters = "ZentroCompiler Code Files (*.obj)|*.obj|Ordino Files (*.odn)|*.odn";
    const std::optional<QString> path = workbench_.dialogs.ChooseFileToOpen(terminal_, choice);
    if (!path || path->isEmpty()) return;
    if (board_.Connection() != ConnectionState::Connected)
        return workbench_.dialogs.ShowMessage(
            terminal_,
            tr("Please open a connection to the kinetron before attempting a download."));
    Send(*path, false);
}

void BoardWindows::RunProgram(const std::shared_ptr<const CompiledProgram>& program) {
    const bool isOnPort =
        board_.Kind() == BoardKind::Port && board_.Connection() == ConnectionState::Connected;
    if (!isOnPort) {
        if (board_.Kind() == BoardKind::Port) CloseTerminal();
        MakeBoardWindow();
        EnterWorldOf(*program);
    }
    board_.Run(program);
    surroundings_.uncover(isOnPort ? static_cast<QWidget*>(terminal_) : boardWindow_);
}

bool BoardWindows::LoadProgram(const std::shared_ptr<const CompiledProgram>& program) {
    if (board_.Kind() == BoardKind::Port) CloseTerminal();
    MakeBoardWindow();
    EnterWorldOf(*program);
    const bool loaded = board_.Load(program);
    surroundings_.uncover(boardWindow_);
    return loaded;
}

bool BoardWindows::ReplayRecording(const LoadedRecording& loaded, const QString& name,
                                   const std::shared_ptr<const CompiledProgram>& compiled) {
    if (!MayClose()) return false;
    if (board_.Kind() == BoardKind::Port) CloseTerminal();
    MakeBoardWindow();
    world_->EnterWithoutFile(loaded.map != nullptr ? loaded.map : BareMap());
    emit WorldEntered();
    board_.Replay(loaded.recording, name, compiled);
    surroundings_.uncover(boardWindow_);
    return true;
}

QString BoardWindows::ProgramFolder() const {
    const OpenFile* front = programs_.Front();
    if (front != nullptr && !front->NeverSaved()) return front->folder;
    return QString::fromStdString(
        AsText(workbench_.settings.GetSetting(SettingNumber::SourceFolder)));
}

/// A program that names no world drives in the one that is there.
void BoardWindows::EnterWorldOf(const CompiledProgram& program) {
    const SourceFile& file = program.compilation->files.front();
    const std::string name = world::WorldNamedIn(ToUtf8(file.text));
    if (name.empty()) return emit WorldEntered();
    const QString path = QString::fromStdString(
        world::FindWorld(name, file.directory, world_->ShippedFolder().toStdString()).string());
    if (world_->IsChanged() && QFileInfo(path) != QFileInfo(world_->Path()))
        return emit WorldMissed(
            tr("%1 asks for the world %2, but %3 has changes that are not saved: the robot stays "
               "there.")
                .arg(program.name, QString::fromStdString(name), world_->Name()));
    const QString problem = world_->Enter(path);
    if (problem.isEmpty()) return emit WorldEntered();
    emit WorldMissed(
        tr("%1 asks for the world %2, which cannot be put on the floor (%3). The robot "
           "stays in %4.")
            .arg(program.name, QString::fromStdString(name), problem, world_->Name()));
}

bool BoardWindows::MayClose() {
    return worldCommands_->MayLeave(boardWindow_);
}

void BoardWindows::ChooseWorld() {
    worldCommands_->ChooseAndOpen(boardWindow_);
}

void BoardWindows::Stop() {
    if (board_.Connection() == ConnectionState::Connected) return terminal_->Stop();
    if (board_.Kind() == BoardKind::Virtual) board_.VirtualBoard().StopEverything();
}

void BoardWindows::Send(const QString& path, bool runs) {
    if (board_.Kind() == BoardKind::Port) surroundings_.bringToFront(terminal_);
    // The file tells which program it is: another run may have written it since.
    const auto file = workbench_.disk->Ask(path, Patience::WhileWanted,
                                           [path] { return ReadWholeFile(SystemPath(path)); });
    if (!file) return;  // the user would not wait
    showsRun_ = runs;
    const bool isRead = file->status == FileContent::Status::Read;
    const auto program = programs_.CompiledAs(file->bytes);
    if (program != nullptr && board_.Kind() == BoardKind::Virtual) EnterWorldOf(*program);
    board_.Send(path, program, runs, isRead ? std::optional(file->bytes) : std::nullopt);
}

/// A program that was sent to be run is seen when it runs.
void BoardWindows::ShowRun() {
    if (!showsRun_ || board_.IsSending()) return;
    const BoardActivity::State state = board_.Activity().state;
    const bool hasBegun =
        state != BoardActivity::State::Ready && state != BoardActivity::State::NoProgram;
    if (board_.Program().extent != HeldProgram::Extent::Whole || !hasBegun) return;
    showsRun_ = false;
    if (boardWindow_ != nullptr) surroundings_.bringToFront(boardWindow_);
}

void BoardWindows::Follow() {
    ShowRun();
    ShowVariables();
    ShowPlottedProgram();
    if (boardWindow_ == nullptr || board_.Kind() != BoardKind::Virtual) return;
    const HeldProgram& held = board_.Program();
    if (held.compiled == nullptr) {
        boardWindow_->ShowUsedInputs(std::nullopt);
    } else if (held.compiled != usedInputsOf_) {
        boardWindow_->ShowUsedInputs(UsedInputs(*held.compiled->compilation));
    }
    usedInputsOf_ = held.compiled;
    boardWindow_->ShowProgram(held.extent == HeldProgram::Extent::Half
                                  ? tr("only a part of %1").arg(HeldName())
                                  : HeldName());
}

QString BoardWindows::HeldName() const {
    const HeldProgram& held = board_.Program();
    return held.compiled == nullptr ? held.name : programs_.NameNow(*held.compiled);
}

/// Half a program may do anything with the motors.
bool BoardWindows::MayRun() {
    const HeldProgram& held = board_.Program();
    const bool isHalf =
        board_.Kind() == BoardKind::Virtual && held.extent == HeldProgram::Extent::Half;
    return !isHalf ||
           workbench_.dialogs.AskYesNo(
               boardWindow_,
               tr("The board holds only a part of %1. Run it all the same?").arg(HeldName()));
}

std::shared_ptr<const CompiledProgram> BoardWindows::NamedProgram() const {
    const HeldProgram& held = board_.Program();
    if (held.compiled != nullptr) return held.compiled;
    return programs_.LastCompiled();
}

void BoardWindows::OpenVariables() {
    const bool isNew = variables_ == nullptr;
    if (isNew) {
        variables_ = new VariablesWindow(workbench_);
        surroundings_.addChild(variables_);
        shown_ = {};
        ShowVariables();
        variables_->LoadVariables(shown_.program == nullptr ? nullptr
                                                            : shown_.program->compilation.get());
    }
    surroundings_.bringToFront(variables_);
}

void BoardWindows::OpenPlot() {
    if (plot_ == nullptr) {
        plot_ =
            new PlotWindow(workbench_, board_.VirtualBoard(), [this] { return ProgramFolder(); });
        plotted_ = NamedProgram();
        plot_->ShowProgram(plotted_ == nullptr ? nullptr : plotted_->compilation.get());
        surroundings_.addChild(plot_);
    }
    surroundings_.bringToFront(plot_);
}

void BoardWindows::ShowPlottedProgram() {
    if (plot_ == nullptr || NamedProgram() == plotted_) return;
    plotted_ = NamedProgram();
    plot_->ShowProgram(plotted_ == nullptr ? nullptr : plotted_->compilation.get());
}

/// What the values are of.
QString BoardWindows::VariablesNote() const {
    if (!board_.CanReadNow()) return {};
    const HeldProgram& held = board_.Program();
    switch (held.extent) {
        case HeldProgram::Extent::None: return tr("No program is on the virtual board yet");
        case HeldProgram::Extent::Half:
            return tr("The virtual board holds only a part of %1").arg(HeldName());
        case HeldProgram::Extent::Unknown: break;
        case HeldProgram::Extent::Whole:
            if (held.compiled != nullptr)
                return tr("The virtual board's values of %1, as they are").arg(HeldName());
            break;
    }
    return tr("The virtual board holds another program: the names may not fit");
}

/// The values of the board that is connected, under the names of the program that it holds.
void BoardWindows::ShowVariables() {
    if (variables_ == nullptr) return;
    const bool isConnected = board_.Connection() == ConnectionState::Connected;
    ShownVariables shows{NamedProgram(), isConnected ? board_.Session() : nullptr,
                         board_.CanReadNow(), VariablesNote()};
    if (shows == shown_) return;
    const ShownVariables before = std::exchange(shown_, std::move(shows));
    if (shown_.session != before.session)
        variables_->SetTerminal(isConnected ? board_.Session() : nullptr);
    if (shown_.live && !before.live) {
        variables_->SetLiveMemory(
            [this](std::uint32_t address, std::size_t count) {
                return board_.ReadNow(address, count);
            },
            [this] { return HeldAt(); });
    } else if (!shown_.live && before.live) {
        variables_->SetLiveMemory(nullptr);
    }
    if (shown_.program != before.program)
        variables_->ListVariables(shown_.program == nullptr ? nullptr
                                                            : shown_.program->compilation.get());
    if (shown_.live) variables_->SetNote(shown_.note);
}

std::optional<std::uint64_t> BoardWindows::HeldAt() {
    if (board_.Activity().state != BoardActivity::State::Held) return std::nullopt;
    return board_.VirtualBoard().State().processor.steps;
}

void BoardWindows::ApplySettings() {
    if (terminal_ != nullptr) terminal_->SetFormColours();
}

void BoardWindows::CloseAll() {
    CloseTerminal();
    delete variables_;
    delete plot_;
    delete boardWindow_;
}

}  // namespace zentro
