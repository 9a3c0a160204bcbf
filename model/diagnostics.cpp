#include "model/diagnostics.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "config/encoding.h"
#include "model/foreign_characters.h"

namespace zentro {

namespace {

/// The piece of a line that its messages show, padded so that the messages stand in a column.
std::string LineTextColumn(std::string_view parsedLine) {
    constexpr std::size_t kShown = 25;
    constexpr std::size_t kWidth = 28;
    std::string column(parsedLine.substr(0, kShown));
    if (column.size() == kShown) column += "...";
    column.resize(kWidth, ' ');
    return ToUtf8(column);
}

struct RangeRow {
    RangeDescription description;
    MessageCode needed;
    MessageCode found;
};

/// How the two sides of a type mismatch are told. Kinds other than variables have one row each.
constexpr std::array kRangeRows{
    RangeRow{{SymbolClass::Variable, DataType::Byte},
             MessageCode::NeededByteVariable,
             MessageCode::FoundByteVariable},
    RangeRow{{SymbolClass::Variable, DataType::Word},
             MessageCode::NeededWordVariable,
             MessageCode::FoundWordVariable},
    RangeRow{{SymbolClass::Variable, DataType::Flag},
             MessageCode::NeededFlagVariable,
             MessageCode::FoundFlagVariable},
    RangeRow{{SymbolClass::Variable, DataType::Pointer},
             MessageCode::NeededPointerVariable,
             MessageCode::FoundPointerVariable},
    RangeRow{{SymbolClass::Variable, DataType::Table},
             MessageCode::NeededTable,
             MessageCode::FoundTable},
    RangeRow{{SymbolClass::Constant, DataType::Any},
             MessageCode::NeededConstant,
             MessageCode::FoundConstant},
    RangeRow{{SymbolClass::Literal, DataType::Any},
             MessageCode::NeededConstant,
             MessageCode::FoundLiteral},
    RangeRow{{SymbolClass::Routine, DataType::Any},
             MessageCode::NeededRoutine,
             MessageCode::FoundRoutine},
    RangeRow{
        {SymbolClass::Event, DataType::Any}, MessageCode::NeededEvent, MessageCode::FoundEvent},
};

const RangeRow* FindRangeRow(RangeDescription wanted) {
    const bool typeCounts = wanted.symbolClass == SymbolClass::Variable;
    const auto* found =
        std::find_if(kRangeRows.begin(), kRangeRows.end(), [&](const RangeRow& row) {
            return row.description.symbolClass == wanted.symbolClass &&
                   (!typeCounts || row.description.type == wanted.type);
        });
    return found == kRangeRows.end() ? nullptr : found;
}

LogColour ColourOf(Severity severity) {
    switch (severity) {
        case Severity::Error: return LogColour::Red;
        case Severity::Warning: return LogColour::Blue;
        case Severity::Information:
        case Severity::Advice:
        case Severity::Box: return LogColour::Green;
    }
    return LogColour::Green;
}

std::string_view PrefixOf(Severity severity) {
    switch (severity) {
        case Severity::Error: return "ERROR:   ";
        case Severity::Warning: return "WARNING: ";
        case Severity::Information:
        case Severity::Advice:
        case Severity::Box: return "";
    }
    return "";
}

std::string FourDigits(std::int32_t number) {
    std::array<char, 16> digits{};
    const int length = std::snprintf(digits.data(), digits.size(), "%04d", number);
    return {digits.data(), static_cast<std::size_t>(length)};
}

}  // namespace

void Diagnostics::StartCompile(std::string_view fileName) {
    errorCount_ = 0;
    warningCount_ = 0;
    objectCodeIsPossible_ = true;
    headerWritten_ = false;
    output_.Clear();
    output_.Write("*** Begining to compile '" + std::string(fileName) + "' ***\n", LogColour::Black,
                  nullptr);
}

void Diagnostics::StartCompileStage(MessageCode code) {
    headerWritten_ = false;
    WriteStageLine(code, std::string(catalogue_.GetMessageText(code)));
}

bool Diagnostics::EndCompileStage(MessageCode code) {
    WriteStageLine(code, std::string(catalogue_.GetMessageText(code)));
    return errorCount_ == 0;
}

void Diagnostics::LogSourceFileOpen(std::string_view path) {
    output_.Write("     \tOpening Source File '" + std::string(path) + "'........\n",
                  LogColour::Green, nullptr);
}

void Diagnostics::EndCompile(MessageCode code) {
    const std::string text(catalogue_.GetMessageText(code));
    const PostedMessage message{code, Severity::Information, {}, text};
    output_.Write("\t" + ToUtf8(text) + "\n", LogColour::Black, &message);
    if (errorCount_ != 0) output_.Beep();
    output_.Write("*** Compile Completed with " + std::to_string(errorCount_) + " Errors and " +
                      std::to_string(warningCount_) + " Warnings. ***",
                  errorCount_ != 0 ? LogColour::Red : LogColour::Green, nullptr);
}

void Diagnostics::PostError(MessageCode code, SourceLine* line, std::string_view extra) {
    Post(code, line, ToUtf8(extra));
}

void Diagnostics::PostAboutFile(MessageCode code, SourceLine* line, std::string_view fileName,
                                std::string_view reason) {
    const std::string sentence = reason.empty() ? std::string() : std::string(reason) + '.';
    Post(code, line, std::string(fileName), {sentence, {}});
}

void Diagnostics::PostShown(MessageCode code, SourceLine& line, std::string_view extra) {
    Post(code, &line, std::string(extra));
}

void Diagnostics::Post(MessageCode code, SourceLine* line, const std::string& shownExtra,
                       Hint hint) {
    if (PreventsObjectCode(code)) objectCodeIsPossible_ = false;
    const ErrorMessage* entry = Find(code);
    if (entry == nullptr) return;
    const std::string text = ToUtf8(entry->errorMsg);
    if (entry->errorSeverity == Severity::Box) {
        const std::string more = shownExtra.empty() ? "" : "\r\n\r\n" + shownExtra;
        prompts_.ShowMessage(entry->token + ":" + text + more);
        return;
    }
    PostedMessage message{code, entry->errorSeverity, {}, text, std::move(hint)};
    if (line == nullptr) {
        const bool isMistake =
            entry->errorSeverity == Severity::Error || entry->errorSeverity == Severity::Warning;
        if (isMistake && message.hint.text.empty() && hints_ != nullptr)
            message.hint = hints_->HintForProgram(code);
        if (!message.hint.text.empty()) message.text += " " + message.hint.text;
        PostMessage(message, shownExtra);
        return;
    }
    if (!shownExtra.empty()) message.text = shownExtra + " - " + text;
    PostAgainst(*line, std::move(message), shownExtra);
}

void Diagnostics::PostRangeError(SourceLine& line, RangeDescription needed,
                                 std::string_view valueText, RangeDescription found) {
    objectCodeIsPossible_ = false;
    const ErrorMessage* entry = Find(MessageCode::TypeMismatch);
    if (entry == nullptr) return;
    const auto textOf = [&](RangeDescription side, MessageCode RangeRow::*which) {
        const RangeRow* row = FindRangeRow(side);
        return row == nullptr ? std::string() : std::string(catalogue_.GetMessageText(row->*which));
    };
    const std::string text = std::string(valueText) + " - " + entry->errorMsg + " " +
                             textOf(needed, &RangeRow::needed) + " " +
                             textOf(found, &RangeRow::found);
    PostAgainst(line, {MessageCode::TypeMismatch, entry->errorSeverity, {}, ToUtf8(text)},
                ToUtf8(valueText));
}

void Diagnostics::PostInfo(MessageCode code, std::optional<std::int64_t> value) {
    std::string text(catalogue_.GetMessageText(code));
    if (value) text += " " + std::to_string(*value);
    WriteStageLine(code, text);
}

const ErrorMessage* Diagnostics::Find(MessageCode code) {
    const ErrorMessage* entry = catalogue_.Find(code);
    if (entry == nullptr) prompts_.ShowMessage(TextNotFound(code));
    return entry;
}

void Diagnostics::PostAgainst(SourceLine& line, PostedMessage message,
                              std::string_view shownExtra) {
    if (message.severity == Severity::Error) line.hasErrors = true;
    if (message.severity == Severity::Warning) line.hasWarnings = true;
    message.place.sourceLineNo = line.fileLineNo;
    if (line.file != nullptr) {
        message.place.fileName = line.file->name;
        message.place.pathName = line.file->directory;
    }
    message.subject = shownExtra;
    const bool isMistake =
        message.severity == Severity::Error || message.severity == Severity::Warning;
    if (isMistake && message.hint.text.empty())
        message.hint = HintFor(line, message.code, shownExtra);
    if (!message.hint.text.empty() && message.hint.sourceLine.empty())
        message.hint.sourceLine = LineOfFile(line);
    if (!message.hint.text.empty()) message.text += " " + message.hint.text;
    if (filter_ != nullptr && filter_->HoldsBack(message, line)) return;
    PostMessage(message, LineTextColumn(line.parsedLine));
}

Hint Diagnostics::HintFor(const SourceLine& line, MessageCode code,
                          std::string_view shownExtra) const {
    if (std::string text = TypographicHint(line, code); !text.empty()) return {std::move(text), {}};
    return hints_ == nullptr ? Hint{} : hints_->HintFor(code, line, shownExtra);
}

/// What a message adds when a word processor has made the line's quotes or dashes, which it shows
/// as they stand in the file. Inside a text they may stand, but not instead of its last quote.
std::string Diagnostics::TypographicHint(const SourceLine& line, MessageCode code) const {
    const std::vector<ForeignCharacter> characters = ForeignCharactersIn(line);
    const auto hint = [&](TypographicSign kind, MessageCode text) {
        std::string found;
        for (const ForeignCharacter& one : characters) {
            const bool isMeant = !one.inQuotes || code == MessageCode::QuoteNotClosed;
            const std::string shown = ShownCharacter(one.character);
            const bool isNew = found.find(shown) == std::string::npos;
            if (TypographicSignOf(one.character) == kind && isMeant && isNew) found += " " + shown;
        }
        const std::string_view words = catalogue_.GetMessageText(text);
        return found.empty() || words.empty() ? "" : ToUtf8(words) + found;
    };
    const std::string quotes = hint(TypographicSign::Quote, MessageCode::TypographicQuotes);
    const std::string dashes = hint(TypographicSign::Dash, MessageCode::TypographicDashes);
    return quotes.empty() || dashes.empty() ? quotes + dashes : quotes + " " + dashes;
}

void Diagnostics::PostMessage(const PostedMessage& message, std::string_view lineText) {
    WriteHeaderOnce();
    std::string text = FourDigits(message.place.sourceLineNo) + "\t";
    text += PrefixOf(message.severity);
    text += lineText;
    if (lineText.size() < 15) text += '\t';
    if (lineText.size() < 25) text += '\t';
    text += " " + MessageCodeText(message.code) + ": " + message.text + "\n";
    if (message.severity == Severity::Error) ++errorCount_;
    if (message.severity == Severity::Warning) ++warningCount_;
    output_.Write(text, ColourOf(message.severity), &message);
}

void Diagnostics::WriteHeaderOnce() {
    if (headerWritten_) return;
    headerWritten_ = true;
    output_.Write(
        "\t(Double Click on any error message to have related source line highlighted)\n"
        "Line:\tMessage:\n",
        LogColour::Green, nullptr);
}

void Diagnostics::WriteStageLine(MessageCode code, const std::string& text) {
    const std::string shown = ToUtf8(text);
    const PostedMessage message{code, Severity::Information, {}, shown};
    output_.Write("\t" + shown + "\n", LogColour::Grey, &message);
}

}  // namespace zentro
