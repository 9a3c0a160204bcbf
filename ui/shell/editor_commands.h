#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

#include "desktop/message_walk.h"
#include "desktop/programs.h"
#include "ui/shell/commands.h"
#include "ui/shell/fix_commands.h"
#include "ui/shell/name_commands.h"
#include "ui/support/workbench.h"

namespace zentro {

class CompilerOutputWindow;
class LiveCheck;
class SourceEditor;
class SourceFiles;
class SourceSearch;
class SourceWindow;

/// The commands of the Edit menu that know about lines, messages and names. They work on the source
/// file in front.
class EditorCommands : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        NameCommands::Tell tell;
        std::function<CompilerOutputWindow*()> output;  ///< null: not open
        /// A line with messages is shown; the log is to show the same.
        std::function<void(FileId file, int line)> selectInLog;
    };

    /// All of them outlive the object.
    EditorCommands(Workbench& workbench, Programs& programs, SourceFiles& files, LiveCheck& checks,
                   SourceSearch& search, Surroundings surroundings, QObject* parent);
    ~EditorCommands() override;

    /// The commands that it carries out.
    static std::vector<CommandId> Ids();
    void Run(CommandId id);

    /// Fixes what a message of the log told about the file in the window.
    void FixAsTold(SourceWindow& source, const Fix& fix) { fixes_.FixAsTold(source, fix); }

  private:
    struct Row;
    static const std::vector<Row>& Rows();

    void Edit(void (*edit)(SourceEditor&));
    void ShowMessage(Direction direction);
    void FixLine();
    void TellNoMessage(const ProgramReport* report);
    void OpenFindBar();
    void OpenOutline();

    Programs& programs_;
    SourceFiles& files_;
    LiveCheck& checks_;
    SourceSearch& search_;
    Surroundings surroundings_;
    NameCommands names_;
    FixCommands fixes_;
    QPointer<SourceWindow> told_;  ///< where a message was shown below its line last
};

}  // namespace zentro
