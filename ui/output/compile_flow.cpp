#include "ui/output/compile_flow.h"

#include "ui/output/save_warning_dialog.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

std::optional<int> ChooseMainFile(OpenFiles& files, const Workbench& workbench, QWidget* parent) {
    if (const std::optional<int> present = files.MainFile()) return present;
    CompileSelectDialog dialog(workbench, files.Names(), files.FrontFile(), parent);
    if (!workbench.dialogs.Run(dialog)) return std::nullopt;
    const std::optional<int> chosen =
        dialog.IsAlreadyOpen()
            ? dialog.ChosenIndex()
            : files.OpenFromDisk(dialog.ChosenPathName(), dialog.ChosenFileName());
    if (chosen) files.SetMainFile(*chosen);
    return chosen;
}

/// What is to be done with a changed file.
SaveWarningAnswer AskToSave(const QString& fileName, bool isOnDisk, const Workbench& workbench,
                            QWidget* parent) {
    if (AsBoolean(workbench.settings.GetSetting(SettingNumber::SaveWithoutAsking)))
        return SaveWarningAnswer::Save;
    SaveWarningDialog dialog(fileName, isOnDisk, parent);
    workbench.dialogs.Run(dialog);
    if (dialog.Answer() != SaveWarningAnswer::Neither && dialog.DontShowAgain()) {
        workbench.settings.SaveSetting(SettingNumber::SaveWithoutAsking, std::int16_t{1});
    }
    return dialog.Answer();
}

/// False when there is nothing on disk to compile, or not what the user meant to compile.
bool BringToDisk(int file, OpenFiles& files, const Workbench& workbench, QWidget* parent) {
    const bool isOnDisk = !files.WasNeverSaved(file);
    if (!files.HasChanged(file)) return isOnDisk || files.Save(file);
    switch (AskToSave(files.Names()[file].name, isOnDisk, workbench, parent)) {
        case SaveWarningAnswer::Save: return files.Save(file);
        case SaveWarningAnswer::CompileAsSaved: return isOnDisk;
        case SaveWarningAnswer::Neither: break;
    }
    return false;
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
