#pragma once

#include <QString>
#include <filesystem>
#include <memory>

#include "config/configuration.h"
#include "desktop/disk.h"
#include "settings/settings_store.h"

namespace zentro {

class Dialogs;

/// What every window of the program works with. Made once at the start; it and all that it refers
/// to outlive the windows.
struct Workbench {
    SettingsStore& settings;
    const InstructionConfiguration& configuration;
    Dialogs& dialogs;
    std::filesystem::path programFolder;  ///< of the help, the language and the examples
    std::filesystem::path dataFolder;     ///< the user's own: recovery copies
    /// Through it windows read, write and ask for the files that users name.
    std::shared_ptr<Disk> disk = std::make_shared<Disk>();

    QString ExamplesFolder() const {
        return QString::fromStdString((programFolder / "examples").string());
    }
};

/// What stands above message boxes and in captions.
inline constexpr const char* kProgramTitle = "ZentroCompiler";

}  // namespace zentro
