#pragma once

#include <QObject>
#include <QString>
#include <optional>

#include "desktop/board_state.h"
#include "desktop/programs.h"

namespace zentro {

class CompileCommands;
class SourceFiles;

/// Marks the line at which the board's program stands, in whichever open file it is, and leads to
/// the line of a fault.
class ProgramMarks : public QObject {
    Q_OBJECT

  public:
    /// All of them outlive the object.
    ProgramMarks(Programs& programs, const BoardState& board, SourceFiles& files,
                 CompileCommands& compiler, QObject* parent);

  private:
    /// A line and what its mark says.
    struct Mark {
        QString path;
        int line = 0;
        QString text;

        bool operator==(const Mark&) const = default;
    };

    void Follow();
    const CompiledProgram* Program() const;
    std::optional<Mark> MarkFor(const BoardActivity& activity) const;
    void Show();

    const Programs& programs_;
    const BoardState& board_;
    SourceFiles& files_;
    CompileCommands& compiler_;
    BoardActivity activity_;  ///< as it was followed last
    std::optional<Mark> mark_;
    std::optional<FileId> markedFile_;
};

}  // namespace zentro
