#include "ui/shell/recording_commands.h"

#include <QDir>
#include <QFileInfo>
#include <memory>
#include <utility>

#include "board/loader.h"
#include "config/file.h"
#include "desktop/text_file.h"
#include "recording/recording_file.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

constexpr const char* kFilters = "Recordings|*.recording|All Files (*.*)|*.*";
constexpr const char* kSuffix = "recording";
constexpr const char* kSourceSuffix = ".txt";
constexpr const char* kNotice = "replay";

/// What the board holds once the program is loaded.
std::vector<std::uint8_t> BytesOf(const CompiledProgram& program) {
    const auto board = std::make_unique<Board>();
    LoadObjectText(*board, program.objectText);
    return ProgramOf(*board);
}

/// What is in the way, and the way out.
QString RefusalText(RunRecorder::Refusal refusal) {
    using enum RunRecorder::Refusal;
    switch (refusal) {
        case None: break;
        case NoRun:
            return RecordingCommands::tr(
                "No program has run on the virtual board: there is nothing to record yet.");
        case WorldChanged:
            return RecordingCommands::tr(
                "The world was changed during the run, which a recording cannot tell. Run the "
                "program again, then save the recording.");
        case DebugMode:
            return RecordingCommands::tr(
                "The program was started in the board's own debug mode, which a recording cannot "
                "tell. Start it with Run; it can be held and stepped as well.");
        case OutputsOn:
            return RecordingCommands::tr(
                "Outputs were still on from an earlier run when this one began, which a recording "
                "cannot tell. Press Reset, then Run, and save the recording afterwards.");
        case CharactersWait:
            return RecordingCommands::tr(
                "The program sent characters faster than the terminal took them and had to wait, "
                "which a recording cannot tell. Run it at a lower speed or without the terminal.");
        case WorldTooFine:
            return RecordingCommands::tr(
                "The world's file holds numbers that are finer than a recording keeps. Save the "
                "world, then run the program again.");
        case TooLong: return RecordingCommands::tr("The run is too long for a recording.");
    }
    return {};
}

}  // namespace

RecordingCommands::RecordingCommands(Workbench& workbench, VirtualBoardHost& host,
                                     Surroundings surroundings, QObject* parent)
    : QObject(parent), workbench_(workbench), host_(host), surroundings_(std::move(surroundings)) {
    connect(&host_, &VirtualBoardHost::ReplayEnded, this, &RecordingCommands::TellEnd);
    connect(&host_, &VirtualBoardHost::ReplayLeft, this, &RecordingCommands::TellLeft);
}

void RecordingCommands::Save() {
    RunRecorder::Made made = host_.Record();
    if (made.refusal != RunRecorder::Refusal::None)
        return workbench_.dialogs.ShowMessage(surroundings_.window, RefusalText(made.refusal));
    made.recording.source = surroundings_.sourceName().toStdString();
    FileChoice choice;
    choice.title = tr("Save Recording");
    choice.folder = surroundings_.programFolder();
    choice.suggestedName = QFileInfo(surroundings_.programName()).completeBaseName();
    if (choice.suggestedName.isEmpty()) choice.suggestedName = tr("run");
    choice.suggestedName += QString(".") + kSuffix;
    choice.filters = kFilters;
    choice.defaultSuffix = kSuffix;
    const std::optional<QString> path =
        workbench_.dialogs.ChooseFileToSave(surroundings_.window, choice);
    if (!path || path->isEmpty()) return;
    const auto problem = workbench_.disk->Ask(
        *path, Patience::WhileWanted, [path = SystemPath(*path), recording = made.recording] {
            return WriteWholeFile(path, SaveRecording(recording));
        });
    const QString name = QFileInfo(*path).fileName();
    if (problem && problem->empty()) return surroundings_.showStatus(tr("Saved %1.").arg(name));
    workbench_.dialogs.ShowMessage(
        surroundings_.window,
        tr("%1 was not saved: %2")
            .arg(name, problem ? QString::fromStdString(*problem) : tr(kNoAnswer)));
}

void RecordingCommands::Open() {
    FileChoice choice;
    choice.title = tr("Open Recording");
    choice.folder = surroundings_.programFolder();
    choice.filters = kFilters;
    const std::optional<QString> path =
        workbench_.dialogs.ChooseFileToOpen(surroundings_.window, choice);
    if (path && !path->isEmpty()) Replay(*path);
}

void RecordingCommands::Replay(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    const auto refuse = [&](const QString& problem) {
        workbench_.dialogs.ShowMessage(surroundings_.window,
                                       tr("%1 cannot be replayed: %2").arg(name, problem));
    };
    const auto file = workbench_.disk->Ask(path, Patience::WhileWanted, [path] {
        return ReadWholeFile(SystemPath(path), kMostRecordingBytes);
    });
    if (!file) return refuse(tr(kNoAnswer));
    if (file->status != FileContent::Status::Read)
        return refuse(QString::fromStdString(file->problem));
    const LoadedRecording loaded = LoadRecording(file->bytes);
    if (!loaded.error.empty()) return refuse(QString::fromStdString(loaded.error));
    const FoundSource source = FindSource(loaded.recording, path);
    replayed_ = path;
    replayedAs_ = source.program == nullptr ? name : source.name;
    hasOutputs_ = loaded.recording.outcome.has_value();
    if (surroundings_.replay(loaded, replayedAs_, source.program)) TellBeginning(source);
}

/// The source lies beside the recording or beside the programs that are worked with. A recording
/// that does not name it has its name.
RecordingCommands::FoundSource RecordingCommands::FindSource(const Recording& recording,
                                                             const QString& path) {
    FoundSource found;
    found.name = QString::fromStdString(recording.source);
    const QFileInfo file(path);
    const QString name =
        found.name.isEmpty() ? file.completeBaseName() + kSourceSuffix : found.name;
    for (const QString& folder : {file.absolutePath(), surroundings_.programFolder()}) {
        const QString candidate = QDir(folder).filePath(name);
        const auto isThere = workbench_.disk->Ask(candidate, Patience::WhileWanted, [candidate] {
            return QFileInfo(candidate).isFile();
        });
        if (!isThere.value_or(false)) continue;
        const auto program = surroundings_.compile(candidate);
        found.name = name;
        found.isThere = true;
        if (program == nullptr || BytesOf(*program) != recording.program) continue;
        found.program = program;
        break;
    }
    return found;
}

void RecordingCommands::Tell(const QString& text, const QString& button,
                             std::function<void()> accepted) {
    const auto isOnBoard = [this] { return surroundings_.programName() == replayedAs_; };
    surroundings_.tell({kNotice, text, button, std::move(accepted), isOnBoard});
}

void RecordingCommands::TellBeginning(const FoundSource& source) {
    QString text = tr("%1 stands at its beginning. Run and the steps, forward and back, go through "
                      "it as it was recorded; what you change by hand ends it there.")
                       .arg(QFileInfo(replayed_).fileName());
    if (source.program == nullptr && source.isThere) {
        text += ' ' + tr("%1 is not the program that was recorded any more: its lines cannot be "
                         "followed.")
                          .arg(source.name);
    } else if (source.program == nullptr && !source.name.isEmpty()) {
        text += ' ' + tr("Put %1 beside it to see its lines.").arg(source.name);
    }
    Tell(text, tr("&Run"), [this] {
        if (host_.IsReplaying()) host_.Run();
    });
}

void RecordingCommands::TellEnd(const QString& difference) {
    const QString name = QFileInfo(replayed_).fileName();
    QString text;
    if (!hasOutputs_) {
        text = tr("%1 has come to its end. It does not tell which outputs there were to be. Steps "
                  "back lead into it again; Run lets the program go on by itself.")
                   .arg(name);
    } else if (difference.isEmpty()) {
        text = tr("%1 has come to its end: the outputs were those that were recorded. Steps back "
                  "lead into it again; Run lets the program go on by itself.")
                   .arg(name);
    } else {
        text = tr("%1 has come to its end, but the outputs were not those that were recorded: %2.")
                   .arg(name, difference);
    }
    Tell(text, tr("Replay A&gain"), [this] { Replay(replayed_); });
}

void RecordingCommands::TellLeft(bool beyondItsEnd) {
    const QString text =
        beyondItsEnd ? tr("%1 is over: the program goes on by itself.")
                     : tr("%1 ends here, because something was done by hand that is not in it. The "
                          "program goes on by itself.");
    Tell(text.arg(QFileInfo(replayed_).fileName()), tr("Replay A&gain"),
         [this] { Replay(replayed_); });
}

}  // namespace zentro
