#include "desktop/line_follower.h"

#include <QDir>
#include <QScopedValueRollback>
#include <utility>
#include <vector>

#include "compiler/line_starts.h"
#include "compiler/source_of_address.h"
#include "desktop/variable_values.h"

namespace zentro {

LineFollower::LineFollower(Programs& programs, BoardState& board, Breakpoints& breakpoints,
                           const InstructionConfiguration& configuration, QObject* parent)
    : QObject(parent),
      programs_(programs),
      board_(board),
      breakpoints_(breakpoints),
      configuration_(configuration) {
    connect(&board, &BoardState::Changed, this, &LineFollower::Follow);
    connect(&breakpoints, &Breakpoints::Changed, this, &LineFollower::Bind);
}

/// Another program may be on the virtual board.
void LineFollower::Follow() {
    const bool isVirtual = board_.Kind() == BoardKind::Virtual && board_.HasVirtualBoard();
    if (std::exchange(isVirtual_, isVirtual) != isVirtual) emit Changed();
    if (!isVirtual || board_.Program().compiled == program_) return;
    program_ = board_.Program().compiled;
    lines_.reset();
    if (program_ != nullptr) lines_.emplace(*program_->compilation, KeysOf(programs_));
    board_.VirtualBoard().SetLines(lines_ ? lines_->Starts() : nullptr);
    Bind();
}

void LineFollower::Bind() {
    if (isBinding_) return;
    const QScopedValueRollback binding(isBinding_, true);
    std::map<std::uint16_t, ProgramStops::Condition> stops;
    const std::vector<Breakpoint> all = breakpoints_.All();
    for (const Breakpoint& breakpoint : all)
        BindOne(breakpoint, stops);
    if (board_.HasVirtualBoard()) board_.VirtualBoard().SetBreakpoints(std::move(stops));
    emit Changed();
}

/// A line of the text that the board's program was made from, and that has no code, gives its
/// breakpoint to the next one.
void LineFollower::BindOne(const Breakpoint& breakpoint,
                           std::map<std::uint16_t, ProgramStops::Condition>& stops) {
    const std::optional<LineOnBoard> then = LineThen(breakpoint.file, breakpoint.line);
    if (!then) return;
    LineOnBoard stop = *then;
    if (!lines_->StartOf(then->file, then->line)) {
        const auto next = lines_->LineWithCode(then->file, then->line);
        if (!next || !programs_.IsUpToDate(*program_)) return;
        stop.line = *next;
        breakpoints_.Move(breakpoint.file, breakpoint.line, stop.line);
        emit BreakpointMoved(breakpoint.line, stop.line);
    }
    stops[*lines_->StartOf(stop.file, stop.line)] = ConditionOf(breakpoint, stop);
}

/// Where the line stood in the program on the board; nothing: nowhere. A file that is not open has
/// the name and the lines that it had then.
std::optional<LineFollower::LineOnBoard> LineFollower::LineThen(const QString& file,
                                                                int line) const {
    if (program_ == nullptr) return std::nullopt;
    const OpenFile* open = programs_.Find(file);
    const auto read =
        open == nullptr ? program_->texts.find(file) : programs_.ReadOf(program_->texts, *open);
    if (read == program_->texts.end()) return std::nullopt;
    if (open == nullptr) return LineOnBoard{file, line};
    if (read->second == kOtherText) return std::nullopt;
    const std::optional<int> then = programs_.LineThen(*open, line, read->second);
    return then ? std::optional(LineOnBoard{read->first, *then}) : std::nullopt;
}

BoundCondition LineFollower::BoundConditionOf(const Breakpoint& breakpoint,
                                              const LineOnBoard& then) const {
    if (breakpoint.condition.isEmpty()) return {};
    ReadCondition read = ReadBreakCondition(breakpoint.condition, configuration_.commands);
    if (!read.condition) return {{}, read.problem};
    return BindCondition(*read.condition, *program_->compilation,
                         lines_->ScopeOf(then.file, then.line));
}

ProgramStops::Condition LineFollower::ConditionOf(const Breakpoint& breakpoint,
                                                  const LineOnBoard& then) const {
    return BoundConditionOf(breakpoint, then).holds;
}

QString LineFollower::ProblemOf(const Breakpoint& breakpoint) const {
    const std::optional<LineOnBoard> then = LineThen(breakpoint.file, breakpoint.line);
    return then ? BoundConditionOf(breakpoint, *then).problem : QString();
}

bool LineFollower::IsOnBoard(const Breakpoint& breakpoint) const {
    if (board_.Kind() != BoardKind::Virtual) return false;
    const std::optional<LineOnBoard> then = LineThen(breakpoint.file, breakpoint.line);
    return then && lines_->StartOf(then->file, then->line);
}

QString LineFollower::ProblemWith(const OpenFile& file, int line, const QString& condition) const {
    if (condition.trimmed().isEmpty()) return {};
    const ReadCondition read = ReadBreakCondition(condition, configuration_.commands);
    if (!read.condition) return read.problem;
    const std::vector<ProgramName> known = programs_.NamesFor(file);
    for (const std::string& name : NamesIn(*read.condition, configuration_.commands)) {
        const ProgramName* declared = FindName(known, name);
        if (declared == nullptr && !known.empty())
            return tr("The program declares no variable and no constant %1.")
                .arg(QString::fromStdString(name));
        if (declared != nullptr && declared->isRoutine)
            return tr("%1 is a routine, and a condition compares values.")
                .arg(QString::fromStdString(name));
    }
    const Breakpoint asked{file.key, line, condition};
    const bool isKnown = IsOnBoard(asked) && programs_.IsUpToDate(*program_);
    return isKnown ? ProblemOf(asked) : QString();
}

std::optional<SourcePlace> LineFollower::PlaceOf(const CompiledProgram& program,
                                                 std::uint16_t address) const {
    const Compilation& compilation = *program.compilation;
    const auto place = SourceOfAddress(compilation, BehindJumpToProgram(compilation, address));
    if (!place) return std::nullopt;
    SourcePlace found;
    found.folder = QString::fromStdString(place->pathName);
    found.name = QString::fromStdString(place->fileName);
    found.file = programs_.KeyOf(found.folder, found.name);
    found.line = place->sourceLineNo;
    const auto read = program.texts.find(found.file);
    if (read == program.texts.end()) return found;
    const OpenFile* open = programs_.OpenedAs(found.file, read->second);
    if (open == nullptr) return found;
    found.file = open->key;
    found.folder = open->folder;
    found.name = open->name;
    const auto now = read->second == kOtherText
                         ? std::nullopt
                         : programs_.LineNow(*open, found.line, read->second);
    if (now) {
        found.line = *now;
    } else {
        found.isCertain = false;
    }
    return found;
}

std::optional<std::uint16_t> LineFollower::StartOf(const OpenFile& file, int line) const {
    const std::optional<LineOnBoard> then = LineThen(file.key, line);
    const auto withCode = then ? lines_->LineWithCode(then->file, then->line) : std::nullopt;
    return withCode ? lines_->StartOf(then->file, *withCode) : std::nullopt;
}

QString LineFollower::ValueOf(const OpenFile& file, int line, const QString& name) const {
    if (board_.Kind() != BoardKind::Virtual || program_ == nullptr) return {};
    if (board_.Program().extent != HeldProgram::Extent::Whole) return {};
    const auto read = programs_.ReadOf(program_->texts, file);
    if (read == program_->texts.end()) return {};
    const LineOnBoard then = LineThen(file.key, line).value_or(LineOnBoard{read->first, line});
    const Symbol* variable = FindVariable(*program_->compilation, name.toStdString(),
                                          lines_->ScopeOf(then.file, then.line));
    if (variable == nullptr) return {};
    QString value = DescribeVariable(*program_->compilation, *variable,
                                     [this](std::uint32_t address, std::size_t count) {
                                         return board_.ReadNow(address, count);
                                     });
    if (programs_.IsUpToDate(*program_)) return value;
    return tr("%1 (in the program on the board, which is older than this text)").arg(value);
}

}  // namespace zentro
