#include "frontend/line_normalizer.h"

#include <algorithm>
#include <cstddef>

#include "config/text.h"

namespace zentro {

namespace {

/// True when an operator needs a blank between itself and the neighbour.
bool NeedsBlank(CharacterClass neighbour) {
    return neighbour != CharacterClass::Blank && neighbour != CharacterClass::Operator;
}

/// A line without the blanks at its beginning, up to its comment.
struct Statement {
    std::string_view text;
    bool isNormal = true;  ///< normalising would change nothing: most lines are typed that way
};

Statement CutStatement(const CommandCatalogue& commands, std::string_view line) {
    while (!line.empty() && IsBlank(line.front()))
        line.remove_prefix(1);
    Statement statement;
    CharacterClass previous = CharacterClass::Blank;
    std::size_t i = 0;
    for (; i < line.size(); ++i) {
        if (previous == CharacterClass::Plain) {
            while (i < line.size() && commands.ClassOf(line[i]) == CharacterClass::Plain)
                ++i;
            if (i == line.size()) break;
        }
        const CharacterClass current = commands.ClassOf(line[i]);
        if (current == CharacterClass::Comment) break;
        const bool isRun = current == CharacterClass::Blank &&
                           (previous == CharacterClass::Blank || line[i] != ' ');
        const bool isTight = (current == CharacterClass::Operator && NeedsBlank(previous)) ||
                             (previous == CharacterClass::Operator && NeedsBlank(current));
        if (isRun || isTight) statement.isNormal = false;
        if (current == CharacterClass::Quote) {
            i = std::min(line.find('"', i + 1), line.size());
            if (i == line.size()) statement.isNormal = false;  // the closing quote is missing
        }
        previous = current;
    }
    statement.text = line.substr(0, i);
    return statement;
}

/// Writes a normalised text.
class LineWriter {
  public:
    LineWriter(const CommandCatalogue& commands, std::string_view source, char* target)
        : commands_(commands), source_(source), start_(target), end_(target) {}

    void Write() {
        for (std::size_t i = 0; i < source_.size(); ++i) {
            const CharacterClass current = commands_.ClassOf(source_[i]);
            if (inQuotes_ || current == CharacterClass::Quote) {
                Copy(source_[i]);
                if (current == CharacterClass::Quote) inQuotes_ = !inQuotes_;
            } else if (current == CharacterClass::Blank) {
                WriteBlank();
            } else if (current == CharacterClass::Operator) {
                WriteOperator(i);
            } else {
                Copy(source_[i]);
            }
        }
    }

    bool EndsInQuotes() const { return inQuotes_; }
    void CloseQuotes() { Copy('"'); }
    std::string_view Result() const { return {start_, static_cast<std::size_t>(end_ - start_)}; }

  private:
    void Copy(char c) {
        *end_++ = c;
        lastWasBlank_ = false;
    }

    void WriteBlank() {
        if (!lastWasBlank_) *end_++ = ' ';
        lastWasBlank_ = true;
    }

    void WriteOperator(std::size_t position) {
        const bool hasNext = position + 1 < source_.size();
        if (position > 0 && NeedsBlank(commands_.ClassOf(source_[position - 1]))) WriteBlank();
        Copy(source_[position]);
        if (hasNext && NeedsBlank(commands_.ClassOf(source_[position + 1]))) WriteBlank();
    }

    const CommandCatalogue& commands_;
    std::string_view source_;
    char* start_;
    char* end_;
    bool inQuotes_ = false;
    bool lastWasBlank_ = false;
};

/// How long the normalised text can be.
std::size_t LongestResult(const CommandCatalogue& commands, std::string_view text) {
    const auto operators = std::count_if(text.begin(), text.end(), [&](char c) {
        return commands.ClassOf(c) == CharacterClass::Operator;
    });
    const std::size_t closingQuote = 1;
    return text.size() + 2 * static_cast<std::size_t>(operators) + closingQuote;
}

}  // namespace

std::string NormalizedText(const CommandCatalogue& commands, std::string_view text) {
    const Statement statement = CutStatement(commands, text);
    std::string room(LongestResult(commands, statement.text), '\0');
    LineWriter writer(commands, statement.text, room.data());
    writer.Write();
    return std::string(Trim(writer.Result()));
}

void PrepareLine(Compilation& compilation, SourceLine& line) {
    const CommandCatalogue& commands = compilation.configuration.commands;
    const Statement statement = CutStatement(commands, line.text);
    if (statement.isNormal) {
        line.parsedLine = TrimBlanks(statement.text);
        return;
    }
    const std::size_t longest = LongestResult(commands, statement.text);
    LineWriter writer(commands, statement.text, compilation.texts.Allocate(longest));
    writer.Write();
    const bool unclosed = writer.EndsInQuotes();
    if (unclosed) writer.CloseQuotes();
    line.parsedLine = Trim(writer.Result());
    if (unclosed) compilation.diagnostics.PostError(MessageCode::QuoteNotClosed, &line);
}

}  // namespace zentro
