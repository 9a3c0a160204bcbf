#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiler/compile.h"
#include "compiler/editor_check.h"
#include "config/configuration.h"
#include "model/compilation.h"

namespace zentro::test {

/// The language as shipped, loaded once.
const InstructionConfiguration& ShippedLanguage();

/// The content of a file below tests/ or of an absolute path. Fails the test when it is missing.
std::string ReadFile(const std::string& path);

/// The text cut at the separator. An empty text has no pieces.
std::vector<std::string> Split(std::string_view text, char separator);

/// Source files in memory, by path. Paths in `unreadable` exist and cannot be read.
struct MemoryFiles : FileReader {
    std::map<std::string, std::string> texts;
    std::set<std::string> unreadable;
    std::vector<std::string> asked;
    FileContent Read(const std::string& path) override;
};

/// Keeps the log.
struct CapturedOutput : OutputSink {
    std::string log;
    std::vector<std::pair<std::string, LogColour>> pieces;
    std::vector<PostedMessage> messages;
    int beeps = 0;
    void Write(std::string_view text, LogColour colour, const PostedMessage* message) override;
    void Clear() override { log.clear(); }
    void Beep() override { ++beeps; }
};

/// Answers the question for a missing file with the paths in `answers`, one after the other.
struct ScriptedPrompts : Prompts {
    std::vector<std::string> shown;
    std::vector<std::string> questions;
    std::vector<std::string> answers;
    void ShowMessage(std::string_view text) override { shown.emplace_back(text); }
    std::optional<std::string> FindMissingFile(std::string_view title, std::string_view directory,
                                               std::string_view fileName) override;
};

/// Keeps what is written, or fails with `problem` when that is not empty.
struct CapturedFile : FileWriter {
    std::string problem;
    std::string path;
    std::string text;
    std::string Write(const std::string& to, std::string_view bytes) override;
};

struct CapturedListing : ListingSink {
    std::vector<std::string> lines;
    void AddCodeLine(std::string_view text) override { lines.emplace_back(text); }
};

struct CountedProgress : Progress {
    int calls = 0;
    void LetEventsRun() override { ++calls; }
};

/// One run of the compiler over main.txt and the files that it includes, all in memory.
struct Program {
    explicit Program(std::string mainText,
                     const InstructionConfiguration& language = ShippedLanguage());

    Program& WithFile(const std::string& name, std::string text);
    bool Compile();
    bool Check();
    /// Returns what the included files hold.
    std::vector<IncludedMistakes> CheckForEditor();

    /// Errors and warnings in the order of posting: "E24 main.txt:3", "E26" without a line.
    std::vector<std::string> Messages() const;
    /// The advice in the same way: "E600 main.txt:3".
    std::vector<std::string> Advice() const;
    /// The text of the first message with the code; empty when there is none.
    std::string TextOf(std::string_view code) const;

    /// The instructions of the source lines from first to last, joined by " | ", each written
    /// "Label: NAME argument, argument ;comment", the comment only when it is not the source line.
    std::string Code(int firstLineNo, int lastLineNo) const;
    std::string Code(int lineNo) const { return Code(lineNo, lineNo); }
    /// The data area: "Label: value ;comment" joined by " | ".
    std::string DataArea() const;

    MemoryFiles files;
    CapturedOutput output;
    ScriptedPrompts prompts;
    CountedProgress progress;
    CapturedFile object;
    CapturedListing listing;
    Compilation compilation;
};

}  // namespace zentro::test
