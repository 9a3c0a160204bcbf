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

/// Reads files from a disk that may hang. A file that was not waited for counts as one that cannot
/// be read, and then nobody waits for the others.
class PatientReader : public FileReader {
  public:
    /// The disk outlives the reader.
    PatientReader(Disk& disk, Patience patience) : disk_(disk), patience_(patience) {}

    FileContent Read(const std::string& path) override;
    /// Of the file read last.
    bool GotNoAnswer() const { return gotNoAnswer_; }

  private:
    Disk& disk_;
    Patience patience_;
    bool gotNoAnswer_ = false;
};

/// Reads open files as they stand in their editors, saved or not, and the others from the disk.
class OpenTextReader : public FileReader {
  public:
    /// The programs outlive the reader.
    OpenTextReader(const Programs& programs, Patience patience)
        : programs_(programs), reader_(programs.FileDisk(), patience) {}

    FileContent Read(const std::string& path) override;
    /// Of the file read last from the disk.
    bool GotNoAnswer() const { return reader_.GotNoAnswer(); }

  private:
    const Programs& programs_;
    PatientReader reader_;
};

/// Whether writing the object file would destroy the source file.
bool WouldOverwriteSource(const ProgramFiles& files);

}  // namespace zentro
