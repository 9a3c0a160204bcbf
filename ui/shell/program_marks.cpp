#include "ui/shell/program_marks.h"

#include <QDir>
#include <utility>

#include "ui/editor/source_window.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/source_files.h"

namespace zentro {

ProgramMarks::ProgramMarks(Programs& programs, const BoardState& board, SourceFiles& files,
                           CompileCommands& compiler, QObject* parent)
    : QObject(parent), programs_(programs), board_(board), files_(files), compiler_(compiler) {
    connect(&board, &BoardState::Changed, this, &ProgramMarks::Follow);
    // A file that is opened gets its mark too.
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
    const BoardActivity before = std::exchange(activity_, activity);
    const CompiledProgram* program = Program();
    const bool stands = activity.state == State::Held || activity.state == State::Fault;
    if (stands && activity.address) compiler_.SelectInListing(program, *activity.address);
    if (activity.state == State::Fault && before.state != State::Fault && activity.address)
        compiler_.ShowAddress(program, *activity.address);
    mark_ = MarkFor(activity);
    Show();
}

std::optional<ProgramMarks::Mark> ProgramMarks::MarkFor(const BoardActivity& activity) const {
    if (!activity.address) return std::nullopt;
    const auto place = CompileCommands::PlaceOf(Program(), *activity.address);
    if (!place) return std::nullopt;
    const QString path = QDir(QString::fromStdString(place->pathName))
                             .filePath(QString::fromStdString(place->fileName));
    const auto mark = [&](const QString& text) {
        if (programs_.IsUpToDate(*Program())) return Mark{path, place->sourceLineNo, text};
        return Mark{path, place->sourceLineNo,
                    tr("%1 The text has been changed since the board got it, so the line may be "
                       "another one.")
                        .arg(text)};
    };
    switch (activity.state) {
        case BoardActivity::State::Held: return mark(tr("The program is held here."));
        case BoardActivity::State::Fault: return mark(activity.text);
        case BoardActivity::State::Running: return mark(tr("The program is here."));
        case BoardActivity::State::Waiting: return mark(tr("The program waits here."));
        case BoardActivity::State::Unknown:
        case BoardActivity::State::NoProgram:
        case BoardActivity::State::Ready:
        case BoardActivity::State::Ended: break;
    }
    return std::nullopt;
}

/// There is one mark at most, and it is where the program stands.
void ProgramMarks::Show() {
    SourceWindow* window = mark_ ? files_.Find(mark_->path) : nullptr;
    const auto file = window == nullptr ? std::nullopt : std::optional(window->Id());
    if (markedFile_ && markedFile_ != file) {
        if (SourceWindow* before = files_.WindowOf(*markedFile_)) before->MarkLine(std::nullopt);
    }
    markedFile_ = file;
    if (window != nullptr) window->MarkLine(LineMark{mark_->line, mark_->text});
}

}  // namespace zentro
