#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <optional>

#include "desktop/line_follower.h"
#include "ui/editor/editor_marks.h"
#include "ui/shell/commands.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

class SendCommands;
class SourceFiles;
class SourceWindow;

/// Line by line through a program on the virtual board, breakpoints, and values under the mouse:
/// what the commands for them do, and what source windows show of it.
class FollowCommands : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        std::function<void(const QString&)> showStatus;
        std::function<void(QWidget*)>
            uncover;  ///< shows a child window without giving it the focus
        QWidget* dialogParent = nullptr;
    };

    /// All of them outlive the object.
    FollowCommands(Workbench& workbench, Programs& programs, BoardState& board, LineFollower& lines,
                   Breakpoints& breakpoints, SourceFiles& files, SendCommands& sending,
                   Surroundings surroundings, QObject* parent);

    static bool Knows(CommandId id);
    void Do(CommandId id);
    /// Whether a need is met that has to do with following a program.
    bool IsMet(CommandNeed need) const;

  signals:
    /// Needs may be met that were not, or the other way round.
    void NeedsChanged();

  private:
    void StepLine(LineStep step);
    void StepLineBack();
    void PauseOrGoOn();
    void RunToCaret();
    void ToggleBreakpoint(FileId id, int line);
    std::optional<QString> TypedCondition(FileId id, int line, QString condition);
    void AskCondition(FileId id, int line);
    void AtCaret(void (FollowCommands::*run)(FileId, int));
    void ClearBreakpoints();

    bool TellOfPort();
    void FollowBoard();
    void ShowStop();
    void ShowBreakpoints();
    void Attach();
    void ShowIn(SourceWindow& window);
    BreakpointMark MarkOf(const Breakpoint& breakpoint) const;

    Workbench& workbench_;
    Programs& programs_;
    BoardState& board_;
    LineFollower& lines_;
    Breakpoints& breakpoints_;
    SourceFiles& files_;
    SendCommands& sending_;
    Surroundings surroundings_;
    QPointer<VirtualBoardHost> host_;  ///< which is listened to
    QTimer later_;                     ///< shows breakpoints when an edit is done
    unsigned needs_ = 0;               ///< those that were met
};

}  // namespace zentro
