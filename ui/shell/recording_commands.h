#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

#include "desktop/compile_service.h"
#include "desktop/virtual_board_host.h"
#include "recording/recording_file.h"
#include "ui/shell/notice_bar.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

/// Keeps runs of the virtual board in files.
class RecordingCommands : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        QWidget* window;                         ///< over which boxes stand
        std::function<QString()> programFolder;  ///< where recordings are kept at first
        std::function<QString()> programName;    ///< of the program on the board; empty: none
        std::function<QString()> sourceName;     ///< of its source file; empty: unknown
        std::function<void(const QString&)> showStatus;
        /// Opens a source file and compiles it, with nothing told. Null: that failed.
        std::function<std::shared_ptr<const CompiledProgram>(const QString& path)> compile;
        /// Puts a recording of the program with that name on the virtual board. False: the user
        /// does not want that after all.
        std::function<bool(const LoadedRecording&, const QString& name,
                           const std::shared_ptr<const CompiledProgram>&)>
            replay;
        std::function<void(Notice)> tell;
    };

    /// All of them outlive the object.
    RecordingCommands(Workbench& workbench, VirtualBoardHost& host, Surroundings surroundings,
                      QObject* parent);

    /// The run up to the moment in which it was asked for.
    void Save();
    /// Lets the user choose a recording and replays it.
    void Open();

  private:
    /// The source of what a recording holds, as far as it was found.
    struct FoundSource {
        QString name;                                    ///< of its file; empty: nobody knows it
        std::shared_ptr<const CompiledProgram> program;  ///< null: there is none that fits
        bool isThere = false;
    };

    void Replay(const QString& path);
    FoundSource FindSource(const Recording& recording, const QString& path);
    void Tell(const QString& text, const QString& button, std::function<void()> accepted);
    void TellBeginning(const FoundSource& source);
    void TellEnd(const QString& difference);
    void TellLeft(bool beyondItsEnd);

    Workbench& workbench_;
    VirtualBoardHost& host_;
    Surroundings surroundings_;
    QString replayed_;         ///< the path of the recording that was opened last
    QString replayedAs_;       ///< what its program is called on the board
    bool hasOutputs_ = false;  ///< it tells what they were
};

}  // namespace zentro
