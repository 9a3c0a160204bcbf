#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "config/file.h"
#include "config/message_catalogue.h"
#include "config/message_code.h"

namespace zentro {

/// Ties a message or a board address back to a source line.
struct LineXref {
    std::string fileName;  ///< UTF-8
    std::string pathName;  ///< the file's folder, UTF-8
    std::int32_t sourceLineNo = 0;
    std::int32_t address = 0;
};

/// A change of one line that mends what a message is about.
struct Fix {
    std::string fileName;  ///< UTF-8
    std::string pathName;  ///< the file's folder, UTF-8
    std::int32_t line = 0;
    std::int32_t column = 0;  ///< of the line as it stands in the file, in characters, from 1
    std::int32_t length = 0;  ///< how many characters go; 0: nothing does
    std::string text;         ///< what comes in their place, UTF-8
    std::string kind{};       ///< the same for fixes of the same mistake; no text for users

    bool operator==(const Fix&) const = default;
};

/// The most likely cause of a message in its very line, and what to write.
struct Hint {
    std::string text;        ///< a sentence, UTF-8; empty: there is no hint
    std::optional<Fix> fix;  ///< where the mend is certain
    std::string kind{};      ///< becomes that of the fix
    /// The line that matters, where the message stands at the end of the program or at none.
    std::optional<LineXref> place{};
    std::string sourceLine{};  ///< what it is about, as it stands in the file, UTF-8
};

/// A message as it was posted.
struct PostedMessage {
    MessageCode code{};
    Severity severity = Severity::Information;
    LineXref place;    ///< without a file and with line 0 when the message belongs to no line
    std::string text;  ///< UTF-8, without the code, with the hint's sentence behind it
    Hint hint{};
    std::string subject{};  ///< the piece of the line that it is about, UTF-8; empty: all of it
};

/// Where a user goes on who follows the message.
inline const LineXref& LineThatMatters(const PostedMessage& message) {
    return message.hint.place ? *message.hint.place : message.place;
}

/// The colours of the log, by meaning.
enum class LogColour : std::uint8_t {
    Black,  ///< beginning and end of a run
    Grey,   ///< stages
    Green,  ///< information
    Blue,   ///< warnings
    Red,    ///< errors
};

/// Receives the compiler's log.
class OutputSink {
  public:
    virtual ~OutputSink() = default;

    /// A piece of the log, UTF-8, with its line break where it has one. When it is a message of the
    /// catalogue, the message comes with it and has to be copied if it is to be kept.
    virtual void Write(std::string_view text, LogColour colour, const PostedMessage* message) = 0;

    /// A run has begun: what was logged before goes.
    virtual void Clear() {}

    /// A run has ended with errors.
    virtual void Beep() {}
};

/// Asks and tells the user at once.
class Prompts {
  public:
    virtual ~Prompts() = default;

    virtual void ShowMessage(std::string_view text) = 0;

    /// A source file is missing. Returns the path of the file to take in its place; nothing when
    /// the user has none.
    virtual std::optional<std::string> FindMissingFile(std::string_view title,
                                                       std::string_view directory,
                                                       std::string_view fileName) = 0;
};

/// Reads source files.
class FileReader {
  public:
    virtual ~FileReader() = default;
    virtual FileContent Read(const std::string& path) = 0;
};

/// Lets the rest of the program run while a compilation is busy; called once a line.
class Progress {
  public:
    virtual ~Progress() = default;
    virtual void LetEventsRun() = 0;
};

/// What a compilation needs from outside. All of it outlives the compilation.
struct Environment {
    OutputSink& output;
    Prompts& prompts;
    FileReader& files;
    Progress& progress;
};

}  // namespace zentro
