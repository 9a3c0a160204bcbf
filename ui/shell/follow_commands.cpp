#include "ui/shell/follow_commands.h"

#include <algorithm>
#include <array>
#include <utility>

#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/shell/send_commands.h"
#include "ui/shell/source_files.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

constexpr std::array kKnown{
    CommandId::StepLine,     CommandId::StepInto,         CommandId::StepLineBack,
    CommandId::PauseProgram, CommandId::RunToCaret,       CommandId::ToggleBreakpoint,
    CommandId::SetCondition, CommandId::ClearBreakpoints,
};

constexpr std::array kNeeds{CommandNeed::LineToStep, CommandNeed::StepToTakeBack,
                            CommandNeed::RunningProgram, CommandNeed::Breakpoint};

}  // namespace

FollowCommands::FollowCommands(Workbench& workbench, Programs& programs, BoardState& board,
                               LineFollower& lines, Breakpoints& breakpoints, SourceFiles& files,
                               SendCommands& sending, Surroundings surroundings, QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      programs_(programs),
      board_(board),
      lines_(lines),
      breakpoints_(breakpoints),
      files_(files),
      sending_(sending),
      surroundings_(std::move(surroundings)) {
    later_.setSingleShot(true);
    later_.setInterval(0);
    const auto showLater = [this] { later_.start(); };
    connect(&later_, &QTimer::timeout, this, &FollowCommands::ShowBreakpoints);
    connect(&lines, &LineFollower::Changed, this, showLater);
    connect(&programs, &Programs::Changed, this, [this, showLater] {
        Attach();
        showLater();
    });
    connect(&board, &BoardState::Changed, this, &FollowCommands::FollowBoard);
    connect(&lines, &LineFollower::BreakpointMoved, this, [this](int from, int to) {
        surroundings_.showStatus(
            tr("Line %1 has no code, so the breakpoint stands in line %2.").arg(from).arg(to));
    });
}

bool FollowCommands::Knows(CommandId id) {
    return std::ranges::find(kKnown, id) != kKnown.end();
}

void FollowCommands::Do(CommandId id) {
    switch (id) {
        case CommandId::StepLine: return StepLine(LineStep::Over);
        case CommandId::StepInto: return StepLine(LineStep::Into);
        case CommandId::StepLineBack: return StepLineBack();
        case CommandId::PauseProgram: return PauseOrGoOn();
        case CommandId::RunToCaret: return RunToCaret();
        case CommandId::ToggleBreakpoint: return AtCaret(&FollowCommands::ToggleBreakpoint);
        case CommandId::SetCondition: return AtCaret(&FollowCommands::AskCondition);
        case CommandId::ClearBreakpoints: return ClearBreakpoints();
        default: return;
    }
}

bool FollowCommands::IsMet(CommandNeed need) const {
    const VirtualBoardHost* host =
        board_.Kind() == BoardKind::Virtual ? board_.VirtualBoardIfMade() : nullptr;
    const bool isRunning = host != nullptr && host->State().processor.running;
    switch (need) {
        case CommandNeed::LineToStep:
            return programs_.Front() != nullptr || (isRunning && host->KnowsLines());
        case CommandNeed::StepToTakeBack:
            return host != nullptr && host->KnowsLines() && host->CanStepBack();
        case CommandNeed::RunningProgram: return isRunning;
        case CommandNeed::Breakpoint: return !breakpoints_.All().empty();
        default: return true;
    }
}

/// The board tells of itself sixty times a second, the needs change now and then.
void FollowCommands::FollowBoard() {
    if (board_.HasVirtualBoard() && host_ == nullptr) {
        host_ = &board_.VirtualBoard();
        connect(host_, &VirtualBoardHost::StopReached, this, &FollowCommands::ShowStop);
    }
    unsigned needs = 0;
    for (const CommandNeed need : kNeeds)
        needs = needs * 2 + (IsMet(need) ? 1 : 0);
    if (std::exchange(needs_, needs) != needs) emit NeedsChanged();
}

/// A real board can only be stepped by its own debug mode.
bool FollowCommands::TellOfPort() {
    if (board_.Kind() != BoardKind::Port) return false;
    surroundings_.showStatus(
        tr("Only the virtual board can be followed line by line. On the board at %1 type D in the "
           "terminal.")
            .arg(board_.PortName()));
    return true;
}

void FollowCommands::StepLine(LineStep step) {
    if (TellOfPort()) return;
    const bool isRunning =
        board_.HasVirtualBoard() && board_.VirtualBoard().State().processor.running;
    if (!isRunning) {
        if (sending_.Load()) board_.VirtualBoard().StepLine(step);
        return;
    }
    if (!board_.VirtualBoard().KnowsLines())
        return surroundings_.showStatus(
            tr("The program on the board was compiled elsewhere, so its lines are not known. Stop "
               "it first; then the program in front is stepped."));
    board_.VirtualBoard().StepLine(step);
    if (board_.VirtualBoard().IsSteppingLine())
        surroundings_.showStatus(
            tr("This line takes its time and goes on. Kinetron, Pause or Go On holds it."));
}

void FollowCommands::StepLineBack() {
    if (!IsMet(CommandNeed::StepToTakeBack)) return;
    if (board_.VirtualBoard().StepLineBack()) return ShowStop();
    surroundings_.showStatus(tr("Nothing before this line can be taken back."));
}

void FollowCommands::PauseOrGoOn() {
    if (!IsMet(CommandNeed::RunningProgram)) return;
    VirtualBoardHost& host = board_.VirtualBoard();
    if (!host.IsPaused()) {
        host.Pause();
        ShowStop();
    } else {
        host.Run();
    }
}

void FollowCommands::RunToCaret() {
    const OpenFile* front = programs_.Front();
    if (front == nullptr || TellOfPort()) return;
    const bool isRunning =
        board_.HasVirtualBoard() && board_.VirtualBoard().State().processor.running;
    if (!isRunning && !sending_.Load()) return;
    const auto address = lines_.StartOf(*front, files_.Front()->CaretLine());
    if (!address)
        return surroundings_.showStatus(
            tr("The program on the board has no code from the caret's line on."));
    board_.VirtualBoard().RunTo(*address);
}

void FollowCommands::AtCaret(void (FollowCommands::*run)(FileId, int)) {
    if (const SourceWindow* source = files_.Front())
        (this->*run)(source->Id(), source->CaretLine());
}

void FollowCommands::ToggleBreakpoint(FileId id, int line) {
    using What = Breakpoints::Toggled::What;
    const OpenFile* file = programs_.File(id);
    if (file == nullptr) return;
    const Breakpoints::Toggled toggled = breakpoints_.Toggle(*file, line);
    if (toggled.what == What::NoCode) {
        surroundings_.showStatus(
            tr("From line %1 on there is no code that the board could be held at.").arg(line));
    } else if (toggled.what == What::Set && toggled.line != line) {
        surroundings_.showStatus(tr("Line %1 has no code, so the breakpoint stands in line %2.")
                                     .arg(line)
                                     .arg(toggled.line));
    }
    emit NeedsChanged();
}

/// Asks until it is a condition, or the question is cancelled. None: that was so.
std::optional<QString> FollowCommands::TypedCondition(FileId id, int line, QString condition) {
    const QString question =
        tr("Hold the program before line %1 only when this is true, for example Count > 10 (leave "
           "it empty to hold it every time):")
            .arg(line);
    QString problem;
    while (true) {
        const std::optional<QString> answer = workbench_.dialogs.AskText(
            surroundings_.dialogParent, problem.isEmpty() ? question : problem + "\n\n" + question,
            condition);
        const OpenFile* file = programs_.File(id);
        if (!answer || file == nullptr) return std::nullopt;
        condition = answer->trimmed();
        problem = lines_.ProblemWith(*file, line, condition);
        if (problem.isEmpty()) return condition;
    }
}

void FollowCommands::AskCondition(FileId id, int line) {
    const OpenFile* file = programs_.File(id);
    if (file == nullptr) return;
    const Breakpoint* present = breakpoints_.At(file->key, line);
    const std::optional<QString> condition =
        TypedCondition(id, line, present == nullptr ? QString() : present->condition);
    file = programs_.File(id);
    if (!condition || file == nullptr) return;
    if (breakpoints_.At(file->key, line) == nullptr) ToggleBreakpoint(id, line);
    const int placed = programs_.LineWithCode(*file, line).value_or(line);
    breakpoints_.SetCondition(
        file->key, breakpoints_.At(file->key, line) != nullptr ? line : placed, *condition);
}

void FollowCommands::ClearBreakpoints() {
    breakpoints_.Clear();
    emit NeedsChanged();
}

/// The program is held: its line is to be seen, in whichever file it stands.
void FollowCommands::ShowStop() {
    const BoardActivity activity = board_.Activity();
    const auto program = board_.Program().compiled;
    if (activity.state != BoardActivity::State::Held || !activity.address || program == nullptr)
        return;
    const auto place = lines_.PlaceOf(*program, *activity.address);
    if (!place) return;
    SourceWindow* window = files_.Find(place->file);
    if (window == nullptr) window = files_.OpenFile(place->folder, place->name);
    if (window == nullptr) return;
    if (programs_.Front() == nullptr || programs_.Front()->id != window->Id())
        files_.BringToFront(window->Id());
    surroundings_.uncover(window);
    window->ShowLine(place->line);
}

/// Windows that are new are listened to and told values.
void FollowCommands::Attach() {
    for (SourceWindow* window : files_.Windows()) {
        connect(window, &SourceWindow::BreakpointWanted, this, &FollowCommands::ToggleBreakpoint,
                Qt::UniqueConnection);
        connect(window, &SourceWindow::ConditionWanted, this, &FollowCommands::AskCondition,
                Qt::UniqueConnection);
        window->Editor()->SetValueSource([this, id = window->Id()](int line, const QString& word) {
            const OpenFile* file = programs_.File(id);
            return file == nullptr ? QString() : lines_.ValueOf(*file, line, word);
        });
    }
}

void FollowCommands::ShowBreakpoints() {
    Attach();
    for (SourceWindow* window : files_.Windows())
        ShowIn(*window);
    FollowBoard();
}

void FollowCommands::ShowIn(SourceWindow& window) {
    std::vector<BreakpointMark> marks;
    for (const Breakpoint& breakpoint : breakpoints_.All()) {
        if (breakpoint.file == window.File().key) marks.push_back(MarkOf(breakpoint));
    }
    window.ShowBreakpoints(marks);
}

BreakpointMark FollowCommands::MarkOf(const Breakpoint& breakpoint) const {
    using Look = BreakpointMark::Look;
    const bool isAlways = breakpoint.condition.isEmpty();
    if (!lines_.IsOnBoard(breakpoint)) {
        return {breakpoint.line,
                isAlways ? tr("Breakpoint. This line is not on the virtual board now.")
                         : tr("Breakpoint, when %1. This line is not on the virtual board now.")
                               .arg(breakpoint.condition),
                Look::Hollow};
    }
    if (isAlways)
        return {breakpoint.line,
                tr("Breakpoint in line %1: the program is held before it.").arg(breakpoint.line),
                Look::Full};
    const QString problem = lines_.ProblemOf(breakpoint);
    if (problem.isEmpty())
        return {breakpoint.line,
                tr("Breakpoint in line %1: the program is held before it when %2.")
                    .arg(QString::number(breakpoint.line), breakpoint.condition),
                Look::Conditional};
    return {
        breakpoint.line,
        tr("Breakpoint in line %1: the program is held before it every time, because the condition "
           "%2 cannot be told. %3")
            .arg(QString::number(breakpoint.line), breakpoint.condition, problem),
        Look::Conditional};
}

}  // namespace zentro
