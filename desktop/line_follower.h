#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

#include "desktop/board_state.h"
#include "desktop/break_condition.h"
#include "desktop/breakpoints.h"
#include "desktop/program_lines.h"
#include "desktop/programs.h"

namespace zentro {

/// A line of a file as its text stands now.
struct SourcePlace {
    QString file;    ///< its key
    QString folder;  ///< and name, to open it
    QString name;
    int line = 0;           ///< from 1
    bool isCertain = true;  ///< false: the line was edited away since, and this is where it stood
};

/// Brings the lines of the texts and the virtual board together: which instruction a line begins
/// with, which line an instruction belongs to although the text has been edited since, and before
/// which instructions the board is to be held. The board knows addresses, the breakpoints know
/// lines.
class LineFollower : public QObject {
    Q_OBJECT

  public:
    /// All of them outlive the object.
    LineFollower(Programs& programs, BoardState& board, Breakpoints& breakpoints,
                 const InstructionConfiguration& configuration, QObject* parent = nullptr);

    /// The line of an instruction; nothing: it has none.
    std::optional<SourcePlace> PlaceOf(const CompiledProgram& program, std::uint16_t address) const;

    /// Where a line of the text begins in the program on the virtual board, or else the next line
    /// with code. Nothing: the board holds no such line.
    std::optional<std::uint16_t> StartOf(const OpenFile& file, int line) const;
    /// Whether the virtual board would be held at the breakpoint.
    bool IsOnBoard(const Breakpoint& breakpoint) const;
    /// Why the condition of a breakpoint cannot be asked of the program on the board, which is then
    /// held every time; empty: it can.
    QString ProblemOf(const Breakpoint& breakpoint) const;

    /// What is wrong with a condition that a breakpoint in a line of the text is to get, as far as
    /// it is known; empty: nothing.
    QString ProblemWith(const OpenFile& file, int line, const QString& condition) const;

    /// "Count = 5" of a variable that is named in a line of the text, as the virtual board holds it
    /// now; empty: it does not hold this program, or there is no such variable.
    QString ValueOf(const OpenFile& file, int line, const QString& name) const;

  signals:
    /// Other breakpoints are on the board.
    void Changed();
    /// A breakpoint stood at a line without code.
    void BreakpointMoved(int from, int to);

  private:
    void Follow();
    void Bind();
    void BindOne(const Breakpoint& breakpoint,
                 std::map<std::uint16_t, ProgramStops::Condition>& stops);
    /// A line of a file in the program on the board.
    struct LineOnBoard {
        QString file;  ///< the key that it had when the program was compiled
        int line = 0;
    };
    std::optional<LineOnBoard> LineThen(const QString& file, int line) const;
    ProgramStops::Condition ConditionOf(const Breakpoint& breakpoint,
                                        const LineOnBoard& then) const;
    BoundCondition BoundConditionOf(const Breakpoint& breakpoint, const LineOnBoard& then) const;

    Programs& programs_;
    BoardState& board_;
    Breakpoints& breakpoints_;
    const InstructionConfiguration& configuration_;
    std::shared_ptr<const CompiledProgram> program_;  ///< on the virtual board; null: unknown
    std::optional<ProgramLines> lines_;               ///< of the program
    bool isVirtual_ = false;                          ///< the windows are about the virtual board
    bool isBinding_ = false;
};

}  // namespace zentro
