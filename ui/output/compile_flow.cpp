#include "ui/output/compile_flow.h"

#include "ui/output/save_warning_dialog.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

std::optional<int> ChooseMainFile(OpenFiles& files, const Workbench& workbench, QWidget* parent) {
    if (const std::optional<int> present = files.MainFile()) return present;
    CompileSelectDialog dialog(workbench, files.Names(), parent);
    if (!workbench.dialogs.Run(dialog)) return std::nullopt;
    const std::optional<int> chosen =
        dialog.IsAlreadyOpen()
            ? dialog.ChosenIndex()
            : files.OpenFromDisk(dialog.ChosenPathName(), dialog.ChosenFileName());
    if (chosen) files.SetMainFile(*chosen);
    return chosen;
}

/// Whether the user wants the changed file saved.
bool MaySave(const QString& fileName, const Workbench& workbench, QWidget* parent) {
    if (AsBoolean(workbench.settings.GetSetting(SettingNumber::SaveWithoutAsking))) return true;
    SaveWarningDialog dialog(fileName, parent);
    const bool mayBeSaved = workbench.dialogs.Run(dialog);
    if (dialog.DontShowAgain()) {
        workbench.settings.SaveSetting(SettingNumber::SaveWithoutAsking, std::int16_t{1});
    }
    return mayBeSaved;
}

/// False when there is nothing on disk to compile, or not what the user meant to compile.
bool BringToDisk(int file, OpenFiles& files, const Workbench& workbench, QWidget* parent) {
    if (!files.HasChanged(file)) return !files.WasNeverSaved(file) || files.Save(file);
    if (MaySave(files.Names()[file].name, workbench, parent)) return files.Save(file);
    return !files.WasNeverSaved(file);
}

}  // namespace

std::optional<int> PrepareMainFile(CompileCommand command, OpenFiles& files,
                                   const Workbench& workbench, QWidget* parent) {
    const std::optional<int> file = ChooseMainFile(files, workbench, parent);
    if (file && BringToDisk(*file, files, workbench, parent)) return file;
    if (command == CompileCommand::SyntaxCheck) {
        workbench.dialogs.ShowMessage(parent, "Compile Cancelled");
    }
    return std::nullopt;
}

}  // namespace zentro
