#pragma once

#include <string>
#include <string_view>

#include "compiler/compile.h"
#include "model/environment.h"

namespace zentro {

/// Tells a failure of the surroundings on standard error.
void TellFailure(std::string_view text);

/// Writes to standard output and remembers whether all of it got there.
class StandardOutput {
  public:
    void Write(std::string_view text);
    /// Sends on what is still held back. Returns the system's text for a failure, now or earlier;
    /// empty when all was written.
    std::string Finish();
    bool IsTerminal() const;

  private:
    int error_ = 0;
};

/// A person at a command line is told, not asked.
class ConsolePrompts : public Prompts {
  public:
    void ShowMessage(std::string_view text) override;
    std::optional<std::string> FindMissingFile(std::string_view title, std::string_view directory,
                                               std::string_view fileName) override;
};

/// Reads source files from disk and tells why one cannot be read.
class DiskReader : public FileReader {
  public:
    FileContent Read(const std::string& path) override;
    /// True when the first file of all, the main file, could not be read.
    bool MainFileFailed() const { return mainFileFailed_; }

  private:
    bool isFirst_ = true;
    bool mainFileFailed_ = false;
};

/// Writes to disk and tells why a file cannot be written.
class DiskWriter : public FileWriter {
  public:
    std::string Write(const std::string& path, std::string_view bytes) override;
    bool Failed() const { return failed_; }

  private:
    bool failed_ = false;
};

/// Nothing else runs beside a compilation here.
class NoProgress : public Progress {
  public:
    void LetEventsRun() override {}
};

}  // namespace zentro
