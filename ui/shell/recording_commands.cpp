#include "ui/shell/recording_commands.h"

#include <QFileInfo>
#include <utility>

#include "config/file.h"
#include "desktop/text_file.h"
#include "recording/recording_file.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

constexpr const char* kFilters = "Recordings|*.recording|All Files (*.*)|*.*";
constexpr const char* kSuffix = "recording";

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
    : QObject(parent), workbench_(workbench), host_(host), surroundings_(std::move(surroundings)) {}

void RecordingCommands::Save() {
    const RunRecorder::Made made = host_.Record();
    if (made.refusal != RunRecorder::Refusal::None)
        return workbench_.dialogs.ShowMessage(surroundings_.window, RefusalText(made.refusal));
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

}  // namespace zentro
