#pragma once

#include <string>
#include <string_view>

#include "apps/zentroc/console.h"
#include "compiler/file_headings.h"
#include "model/environment.h"

namespace zentro {

/// Writes the log as the compiler output window shows it, in colour on a terminal.
class TextLog : public OutputSink {
  public:
    TextLog(StandardOutput& output, std::string mainFileName, bool inColour, bool quiet);
    void Write(std::string_view text, LogColour colour, const PostedMessage* message) override;

  private:
    StandardOutput& output_;
    FileHeadings headings_;
    bool inColour_;
    bool quiet_;
};

/// Writes each message as a JSON object on a line of its own: code, severity, file, path (the
/// file's folder), line and text.
class JsonLog : public OutputSink {
  public:
    JsonLog(StandardOutput& output, bool quiet) : output_(output), quiet_(quiet) {}
    void Write(std::string_view text, LogColour colour, const PostedMessage* message) override;

  private:
    StandardOutput& output_;
    bool quiet_;
};

}  // namespace zentro
