#pragma once

#include <filesystem>

#include "settings/settings_store.h"

namespace zentro {

/// Where the program's own files lie and where it keeps what belongs to the user.
struct ProgramFolders {
    std::filesystem::path program;    ///< the language, the help, the examples
    std::filesystem::path settings;   ///< the settings file
    std::filesystem::path data;       ///< recovery copies
    std::filesystem::path documents;  ///< programs, where the program's folder cannot be written
};

/// `executable` is the folder of the program file.
ProgramFolders FindProgramFolders(const std::filesystem::path& executable);

/// A first start from a folder that the user cannot write: sources and object files go to a folder
/// among the user's documents, which is made.
void UseDocumentsFolder(SettingsStore& settings, const ProgramFolders& folders);

/// A portable copy that lies elsewhere since its last start, or on a stick that has another name
/// here: settings that name the old folder, which has no language file any more, name the new one
/// from now on.
void FollowMovedProgram(SettingsStore& settings, const ProgramFolders& folders);

}  // namespace zentro
