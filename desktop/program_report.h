#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "config/message_catalogue.h"
#include "desktop/program_names.h"
#include "model/environment.h"

namespace zentro {

/// Counts the states of a text: every edit makes a new one, and undoing back to the saved text, or
/// to one before lines were taken out, gives back the revision of that.
using Revision = std::uint64_t;

/// Stands for the text of a file that was read from the disk because it was not open.
inline constexpr Revision kTextOnDisk = 0;
/// Stands for a text that no editor holds.
inline constexpr Revision kOtherText = ~Revision{0};

/// What the compiler has to say about a line of one file.
struct LineMessage {
    int line = 0;  ///< from 1
    Severity severity = Severity::Error;
    QString text;                 ///< with the hint behind it
    bool isAboutInclude = false;  ///< tells of the mistakes in the file that the line includes
    std::string code{};           ///< "E15", under which the handbook explains it; empty: none
    QString hint{};               ///< what may have been meant; empty: nothing is known
    std::optional<Fix> fix{};     ///< of this file, where the mend is certain
    QString sourceLine{};         ///< what the hint is about, as it stood in the file
    QString subject{};            ///< the piece of the line that it is about; empty: all of it

    bool operator==(const LineMessage&) const = default;
};

/// What a check or a compile has found in a program, and in which texts.
struct ProgramReport {
    std::uint64_t serial = 0;           ///< counts the reports of all programs
    QString root;                       ///< key of the file that it began with
    std::map<QString, Revision> texts;  ///< what was read, by the key of the file
    std::vector<QString> files;         ///< their keys, in the order of reading
    std::map<QString, std::vector<LineMessage>> messages;  ///< by the key of the file
    std::map<QString, std::vector<int>> codeLines;  ///< that do something, in ascending order
    std::vector<ProgramName> names;
    std::size_t lines = 0;    ///< of all files together
    bool lacksFiles = false;  ///< a disk did not answer in time
    bool succeeded = false;
};

/// The same for every spelling of a file's path; of a file that was never saved (no folder) its
/// name.
/// It asks the disk itself; where a disk may hang, Programs::KeyOf does.
QString FileKey(const QString& folder, const QString& name);
/// FileKey, or somebody who asks it.
using FileKeys = std::function<QString(const QString& folder, const QString& name)>;

/// Gathers the messages of a run by file.
class MessageCollector {
  public:
    /// Errors and warnings about a line are kept.
    void Add(const PostedMessage& message);
    /// What is to be said of a line that includes a file with mistakes.
    void AddInclude(const LineXref& place, Severity severity, const QString& text);
    bool HasErrors() const { return hasErrors_; }

    /// The report about a run over the program that begins with `root`. `openTexts` tells what was
    /// read of the open files.
    ProgramReport Report(const QString& root, const Compilation& compilation, const FileKeys& keys,
                         const std::map<QString, Revision>& openTexts, bool succeeded) const;

  private:
    using Place = std::pair<std::string, std::string>;  ///< folder and name

    void Add(const LineXref& place, LineMessage message);

    std::map<Place, std::vector<LineMessage>> messages_;
    bool hasErrors_ = false;
};

}  // namespace zentro
