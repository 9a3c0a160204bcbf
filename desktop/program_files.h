#pragma once

#include "compiler/compile.h"
#include "desktop/programs.h"
#include "model/environment.h"
#include "settings/settings_store.h"

namespace zentro {

/// Where a compile of an open file reads and writes: included files come from the source folder of
/// the settings, the object file goes to the object folder of the settings under the source file's
/// name. A setting that is empty stands for the source file's own folder.
ProgramFiles ProgramFilesOf(const OpenFile& file, const SettingsStore& settings);

/// Reads open files as they stand in their editors, saved or not, and the others from the disk.
class OpenTextReader : public FileReader {
  public:
    /// The programs outlive the reader.
    explicit OpenTextReader(const Programs& programs) : programs_(programs) {}

    FileContent Read(const std::string& path) override;

  private:
    const Programs& programs_;
};

/// Whether writing the object file would destroy the source file.
bool WouldOverwriteSource(const ProgramFiles& files);

}  // namespace zentro
