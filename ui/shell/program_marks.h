#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>
#include <optional>

#include "desktop/line_follower.h"
#include "ui/editor/editor_marks.h"

namespace zentro {

class CompileCommands;
class SourceFiles;

/// Marks the line at which the board's program stands, in whichever open file it is, and leads to
/// the line of a fault. The mark of a program at full pace is a soft one.
class ProgramMarks : public QObject {
    Q_OBJECT

  public:
    /// All of them outlive the object.
    ProgramMarks(Programs& programs, const BoardState& board, const LineFollower& lines,
                 SourceFiles& files, CompileCommands& compiler, QObject* parent);

  private:
    /// A mark in a file, named by its key.
    struct Mark {
        QString file;
        LineMark mark;
    };

    void Follow();
    void FollowProgram();
    const CompiledProgram* Program() const;
    std::optional<Mark> MarkFor(const BoardActivity& activity) const;
    void Show();
    void Reveal();

    const Programs& programs_;
    const BoardState& board_;
    const LineFollower& lines_;
    SourceFiles& files_;
    CompileCommands& compiler_;
    BoardActivity activity_;                           ///< as it was followed last
    std::shared_ptr<const CompiledProgram> followed_;  ///< the board's
    std::optional<FileId> markedFile_;
    QElapsedTimer sinceFollowed_;
    QTimer later_;  ///< for a program at full pace
};

}  // namespace zentro
