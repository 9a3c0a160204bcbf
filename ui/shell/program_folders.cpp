#include "ui/shell/program_folders.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <array>
#include <system_error>

#include "desktop/recovery_store.h"

namespace zentro {

namespace {

namespace fs = std::filesystem;

constexpr const char* kLanguageFile = "ZentroCompiler.cfg";

fs::path Standard(QStandardPaths::StandardLocation location) {
    return QStandardPaths::writableLocation(location).toStdString();
}

/// The program's files lie beside it in a portable copy, and elsewhere where a package puts them.
fs::path FindDataFiles(const fs::path& executable) {
    const std::array<fs::path, 2> candidates{executable,
                                             executable.parent_path() / "share" / "zentrocompiler"};
    for (const fs::path& candidate : candidates) {
        std::error_code error;
        if (fs::exists(candidate / kLanguageFile, error)) return candidate;
    }
    return executable;
}

/// A copy in one folder with everything; whoever deleted its language file keeps the settings
/// there.
bool IsPortable(const ProgramFolders& folders, const fs::path& executable) {
    std::error_code error;
    return folders.program == executable && (fs::exists(executable / kLanguageFile, error) ||
                                             fs::exists(executable / kSettingsFileName, error));
}

/// In a portable copy that several users share only the first one can keep copies there.
bool HoldsAnothersCopies(const fs::path& folder) {
    const QFileInfo copies(QString::fromStdString((folder / kRecoveryFolder).string()));
    return copies.exists() && !copies.isWritable();
}

bool HasMoved(const fs::path& languageFile, const ProgramFolders& folders) {
    std::error_code error;
    return folders.settings == folders.program && languageFile.filename() == kLanguageFile &&
           !fs::exists(languageFile, error) && fs::exists(folders.program / kLanguageFile, error);
}

}  // namespace

ProgramFolders FindProgramFolders(const fs::path& executable) {
    ProgramFolders folders;
    folders.program = FindDataFiles(executable);
    const fs::path userFolder = Standard(QStandardPaths::AppConfigLocation);
    // An installed program is for everybody; settings are one user's, the administrator's too.
    folders.settings = IsPortable(folders, executable)
                           ? ChooseSettingsFolder(folders.program, userFolder)
                           : userFolder;
    // Whoever carries a copy about leaves no text behind.
    folders.data = folders.settings == folders.program && !HoldsAnothersCopies(folders.program)
                       ? folders.program
                       : Standard(QStandardPaths::AppLocalDataLocation);
    folders.documents = Standard(QStandardPaths::DocumentsLocation) / "ZentroCompiler";
    return folders;
}

void UseDocumentsFolder(SettingsStore& settings, const ProgramFolders& folders) {
    if (folders.settings == folders.program) return;
    std::error_code error;
    fs::create_directories(folders.documents, error);
    if (error) return;
    const std::string folder = (folders.documents / "").string();
    settings.SaveSetting(SettingNumber::SourceFolder, folder);
    settings.SaveSetting(SettingNumber::ObjectFolder, folder);
}

void FollowMovedProgram(SettingsStore& settings, const ProgramFolders& folders) {
    const fs::path languageFile = AsText(settings.GetSetting(SettingNumber::InstructionFile));
    if (!HasMoved(languageFile, folders)) return;
    const std::string oldFolder = (languageFile.parent_path() / "").string();
    const std::string newFolder = (folders.program / "").string();
    for (const Setting& setting : Settings()) {
        if (setting.kind != SettingKind::ProgramPath && setting.kind != SettingKind::Text) continue;
        const std::string path = AsText(settings.GetSetting(setting.number));
        if (!path.starts_with(oldFolder)) continue;
        settings.SaveSetting(setting.number, newFolder + path.substr(oldFolder.size()));
    }
}

}  // namespace zentro
