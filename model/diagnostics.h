#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "config/message_catalogue.h"
#include "model/environment.h"
#include "model/source_line.h"
#include "model/symbol.h"

namespace zentro {

/// One side of a type mismatch: a kind of thing and its type.
struct RangeDescription {
    SymbolClass symbolClass = SymbolClass::Variable;
    DataType type = DataType::Any;
};

/// Keeps messages against lines from being posted.
class MessageFilter {
  public:
    virtual ~MessageFilter() = default;
    /// True when the message must not be posted. The line counts as one with a mistake all the
    /// same.
    virtual bool HoldsBack(const PostedMessage& message, const SourceLine& line) = 0;
};

/// Knows what may have been meant by a line with a mistake.
class HintSource {
  public:
    virtual ~HintSource() = default;
    /// The hint behind a message; an empty one where none fits. The extra is what the message shows
    /// before its text, UTF-8.
    virtual Hint HintFor(MessageCode code, const SourceLine& line, std::string_view extra) = 0;
    /// The hint behind a message that belongs to no line.
    virtual Hint HintForProgram(MessageCode code) = 0;
};

/// Turns message codes into lines of the log and counts them.
class Diagnostics {
  public:
    Diagnostics(const MessageCatalogue& catalogue, OutputSink& output, Prompts& prompts)
        : catalogue_(catalogue), output_(output), prompts_(prompts) {}

    void StartCompile(std::string_view fileName);
    void StartCompileStage(MessageCode code);
    /// True when no error has been counted so far.
    bool EndCompileStage(MessageCode code);
    void LogSourceFileOpen(std::string_view path);
    void EndCompile(MessageCode code);

    /// Posts a message against a line; nullptr where there is none. The extra, in the program's own
    /// character set, is shown before the text.
    void PostError(MessageCode code, SourceLine* line, std::string_view extra = {});

    /// Posts a message about a file, whose name is UTF-8, against the line that includes it;
    /// nullptr for the main file. The reason is the system's, without a full stop; empty: there is
    /// no more to say.
    void PostAboutFile(MessageCode code, SourceLine* line, std::string_view fileName,
                       std::string_view reason = {});

    /// Posts a message with an extra that is UTF-8 already: a character of the file.
    void PostShown(MessageCode code, SourceLine& line, std::string_view extra);

    /// Posts that something of one type stands where another is needed.
    void PostRangeError(SourceLine& line, RangeDescription needed, std::string_view valueText,
                        RangeDescription found);

    /// Posts a stage line: the message's text and, where there is one, a number.
    void PostInfo(MessageCode code, std::optional<std::int64_t> value = std::nullopt);

    /// The filter is asked until another one, or none, is set.
    void SetFilter(MessageFilter* filter) { filter_ = filter; }

    /// The hints are asked for, once a message is posted, until others, or none, are set.
    void SetHints(HintSource* hints) { hints_ = hints; }

    int ErrorCount() const { return errorCount_; }
    int WarningCount() const { return warningCount_; }
    /// False once a line has been refused, of whatever severity the language makes the message.
    bool ObjectCodeIsPossible() const { return objectCodeIsPossible_; }

  private:
    const ErrorMessage* Find(MessageCode code);
    void Post(MessageCode code, SourceLine* line, const std::string& shownExtra, Hint hint = {});
    void PostMessage(const PostedMessage& message, std::string_view lineText);
    void PostAgainst(SourceLine& line, PostedMessage message, std::string_view shownExtra);
    Hint HintFor(const SourceLine& line, MessageCode code, std::string_view shownExtra) const;
    std::string TypographicHint(const SourceLine& line, MessageCode code) const;
    void WriteHeaderOnce();
    void WriteStageLine(MessageCode code, const std::string& text);

    const MessageCatalogue& catalogue_;
    OutputSink& output_;
    Prompts& prompts_;
    MessageFilter* filter_ = nullptr;
    HintSource* hints_ = nullptr;
    int errorCount_ = 0;
    int warningCount_ = 0;
    bool headerWritten_ = false;
    bool objectCodeIsPossible_ = true;
};

}  // namespace zentro
