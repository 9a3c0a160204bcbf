#pragma once

#include "compiler/compile.h"
#include "desktop/programs.h"
#include "settings/settings_store.h"

namespace zentro {

/// Where a compile of an open file reads and writes: included files come from the source folder of
/// the settings, the object file goes to the object folder of the settings under the source file's
/// name. A setting that is empty stands for the source file's own folder.
ProgramFiles ProgramFilesOf(const OpenFile& file, const SettingsStore& settings);

/// Whether writing the object file would destroy the source file.
bool WouldOverwriteSource(const ProgramFiles& files);

}  // namespace zentro
