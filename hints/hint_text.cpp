#include "hints/hint_text.h"

#include "config/encoding.h"
#include "config/text.h"
#include "model/foreign_characters.h"

namespace zentro {

Hint MakeHint(const HintQuestion& question, MessageCode text,
              std::initializer_list<std::string_view> words) {
    const std::string pattern =
        ToUtf8(question.compilation.configuration.messages.GetMessageText(text));
    Hint hint;
    hint.kind = MessageCodeText(text);
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool isPlace = pattern[i] == '%' && i + 1 < pattern.size() && IsDigit(pattern[i + 1]);
        const std::size_t number = isPlace ? static_cast<std::size_t>(pattern[i + 1] - '0') : 0;
        if (number == 0 || number > words.size()) {
            hint.text += pattern[i];
            continue;
        }
        hint.text += words.begin()[number - 1];
        ++i;
    }
    return hint;
}

Fix FixOf(const SourceLine& line, std::size_t begin, std::size_t length, std::string_view text) {
    Fix fix;
    fix.fileName = line.file->name;
    fix.pathName = line.file->directory;
    fix.line = line.fileLineNo;
    fix.column = static_cast<std::int32_t>(begin) + 1;
    fix.length = static_cast<std::int32_t>(length);
    fix.text = ToUtf8(text);
    return fix;
}

std::string_view StatementOf(const SourceLine& line) {
    return TrimBlanks(line.text.substr(0, FindComment(line.text)));
}

void LeadTo(Hint& hint, const SourceLine& line) {
    hint.place = {line.file->name, line.file->directory, line.fileLineNo};
    hint.sourceLine = LineOfFile(line);
}

std::string ShownStatement(const SourceLine& line) {
    constexpr std::size_t kShownWhole = 100;
    const std::string_view statement = StatementOf(line);
    return statement.size() <= kShownWhole ? std::string(statement) : Shorten(statement);
}

std::size_t PlaceInLine(const SourceLine& line, std::string_view piece) {
    return static_cast<std::size_t>(piece.data() - line.text.data());
}

Hint RewritePiece(const HintQuestion& question, std::string_view piece,
                  const std::string& instead) {
    Hint hint = MakeHint(question, MessageCode::WriteInstead, {ToUtf8(piece), ToUtf8(instead)});
    hint.fix = FixOf(question.line, PlaceInLine(question.line, piece), piece.size(), instead);
    return hint;
}

Hint RewriteStatement(const HintQuestion& question, const std::string& instead) {
    return RewritePiece(question, StatementOf(question.line), instead);
}

std::string WithoutQuotes(const SourceLine& line) {
    std::string text(line.text.substr(0, FindComment(line.text)));
    bool inQuotes = false;
    for (char& c : text) {
        const bool isQuote = c == '"';
        if (isQuote) inQuotes = !inQuotes;
        if (isQuote || inQuotes) c = ' ';
    }
    return text;
}

}  // namespace zentro
