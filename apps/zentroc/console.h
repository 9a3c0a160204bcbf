#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "apps/zentroc/outputs.h"
#include "compiler/compile.h"
#include "config/input_files.h"
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
    /// What is read joins the inputs, which outlive the reader.
    explicit DiskReader(InputFiles& inputs) : inputs_(inputs) {}
    FileContent Read(const std::string& path) override;
    /// True when the first file of all, the main file, could not be read.
    bool MainFileFailed() const { return mainFileFailed_; }

  private:
    InputFiles& inputs_;
    bool isFirst_ = true;
    bool mainFileFailed_ = false;
};

/// Writes to disk and tells why a file cannot be written. Nothing is written at all when one of the
/// outputs would replace a file that was read.
class DiskWriter : public FileWriter {
  public:
    /// The outputs and the inputs outlive the writer.
    DiskWriter(const std::vector<Output>& outputs, const InputFiles& inputs)
        : outputs_(outputs), inputs_(inputs) {}
    std::string Write(const std::string& path, std::string_view bytes) override;
    bool Failed() const { return failed_; }

  private:
    const std::vector<Output>& outputs_;
    const InputFiles& inputs_;
    bool failed_ = false;
};

/// Nothing else runs beside a compilation here.
class NoProgress : public Progress {
  public:
    void LetEventsRun() override {}
};

}  // namespace zentro
