#include "ui/shell/program_marks.h"

#include <utility>

#include "ui/editor/source_window.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/source_files.h"

namespace zentro {

namespace {

constexpr qint64 kSoftInterval = 50;  // milliseconds between marks of a program at full pace

}  // namespace

ProgramMarks::ProgramMarks(Programs& programs, const BoardState& board, const LineFollower& lines,
                           SourceFiles& files, CompileCommands& compiler, QObject* parent)
    : QObject(parent),
      programs_(programs),
      board_(board),
      lines_(lines),
      files_(files),
      compiler_(compiler) {
    later_.setSingleShot(true);
    connect(&later_, &QTimer::timeout, this, &ProgramMarks::Follow);
    connect(&board, &BoardState::Changed, this, &ProgramMarks::Follow);
    connect(&lines, &LineFollower::Changed, this, &ProgramMarks::FollowProgram);
    // A file that is opened gets its mark too, and edits move it.
    connect(&programs, &Programs::Changed, this, &ProgramMarks::Show);
}

/// What a board on a port holds from before may well be what was compiled last.
const CompiledProgram* ProgramMarks::Program() const {
    const HeldProgram& held = board_.Program();
    const bool isUnknown = held.extent == HeldProgram::Extent::Unknown && held.name.isEmpty();
    if (held.compiled == nullptr && isUnknown && board_.Kind() == BoardKind::Port)
        return programs_.LastCompiled().get();
    return held.compiled.get();
}

void ProgramMarks::Follow() {
    using State = BoardActivity::State;
    const BoardActivity activity = board_.Activity();
    if (activity == activity_) return;
    const bool stays = activity.passing && activity_.passing;
    if (stays && sinceFollowed_.isValid() && sinceFollowed_.elapsed() < kSoftInterval) {
        if (!later_.isActive())
            later_.start(static_cast<int>(kSoftInterval - sinceFollowed_.elapsed()));
        return;
    }
    sinceFollowed_.start();
    const BoardActivity before = std::exchange(activity_, activity);
    const CompiledProgram* program = Program();
    const bool stands = activity.state == State::Held || activity.state == State::Fault;
    if (stands && activity.address) compiler_.SelectInListing(program, *activity.address);
    if (activity.state == State::Fault && before.state != State::Fault && activity.address)
        compiler_.ShowAddress(program, *activity.address);
    Show();
    Reveal();
}

/// A board may stand where it stood, with another program: a recording is opened, whose lines are
/// known only after the board has been put at its beginning.
void ProgramMarks::FollowProgram() {
    const auto program = board_.Program().compiled;
    if (std::exchange(followed_, program) == program) return;
    Show();
    Reveal();
}

std::optional<ProgramMarks::Mark> ProgramMarks::MarkFor(const BoardActivity& activity) const {
    const auto address = activity.address ? activity.address : activity.passing;
    if (!address || Program() == nullptr) return std::nullopt;
    const auto place = lines_.PlaceOf(*Program(), *address);
    if (!place) return std::nullopt;
    const auto mark = [&](const QString& text, LineMark::Kind kind) {
        if (!place->isCertain)
            return Mark{place->file,
                        {place->line,
                         tr("%1 The text has been changed since the board got it, so the line may "
                            "be another one.")
                             .arg(text),
                         kind}};
        if (!programs_.IsUpToDate(*Program()))
            return Mark{
                place->file,
                {place->line, tr("%1 The text has been changed since the board got it.").arg(text),
                 kind}};
        return Mark{place->file, {place->line, text, kind}};
    };
    using Kind = LineMark::Kind;
    const Kind kind = activity.passing ? Kind::Soft : Kind::Lit;
    switch (activity.state) {
        case BoardActivity::State::Held: return mark(tr("The program is held here."), kind);
        case BoardActivity::State::Fault: return mark(activity.text + '.', Kind::Fault);
        case BoardActivity::State::Running: return mark(tr("The program is here."), kind);
        case BoardActivity::State::Waiting: return mark(tr("The program waits here."), kind);
        case BoardActivity::State::Unknown:
        case BoardActivity::State::NoProgram:
        case BoardActivity::State::Ready:
        case BoardActivity::State::Ended: break;
    }
    return std::nullopt;
}

/// There is one mark at most, and it is where the program stands.
void ProgramMarks::Show() {
    const auto mark = MarkFor(activity_);
    SourceWindow* window = mark ? files_.Find(mark->file) : nullptr;
    const auto file = window == nullptr ? std::nullopt : std::optional(window->Id());
    if (markedFile_ && markedFile_ != file) {
        if (SourceWindow* before = files_.WindowOf(*markedFile_)) before->MarkLine(std::nullopt);
    }
    markedFile_ = file;
    if (window != nullptr) window->MarkLine(mark->mark);
}

/// Text that is being read or written stays where it is while the program only comes by.
void ProgramMarks::Reveal() {
    const auto mark = MarkFor(activity_);
    SourceWindow* window = mark ? files_.Find(mark->file) : nullptr;
    if (window != nullptr && mark->mark.kind != LineMark::Kind::Soft)
        window->ShowLine(mark->mark.line);
}

}  // namespace zentro
