#include "frontend/line_normalizer.h"

#include <algorithm>
#include <cstddef>

#include "config/text.h"

namespace zentro {

namespace {

/// True when the operator at the position needs a blank written between itself and a neighbour.
bool NeedsBlank(const CommandCatalogue& commands, char neighbour) {
    return !IsBlank(neighbour) && !commands.IsOperatorCharacter(neighbour);
}

/// True when normalising would change nothing: most lines are typed that way.
bool IsNormal(const CommandCatalogue& commands, std::string_view text) {
    bool inQuotes = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"') inQuotes = !inQuotes;
        if (inQuotes) continue;
        const bool hasNext = i + 1 < text.size();
        if (IsBlank(c)) {
            if (c != ' ' || (hasNext && IsBlank(text[i + 1]))) return false;
        } else if (commands.IsOperatorCharacter(c)) {
            if (i > 0 && NeedsBlank(commands, text[i - 1])) return false;
            if (hasNext && NeedsBlank(commands, text[i + 1])) return false;
        }
    }
    return !inQuotes;
}

/// Writes a normalised text.
class LineWriter {
  public:
    LineWriter(const CommandCatalogue& commands, std::string_view source, char* target)
        : commands_(commands), source_(source), start_(target), end_(target) {}

    void Write() {
        for (std::size_t i = 0; i < source_.size(); ++i) {
            const char c = source_[i];
            if (inQuotes_ || c == '"') {
                Copy(c);
                if (c == '"') inQuotes_ = !inQuotes_;
            } else if (IsBlank(c)) {
                WriteBlank();
            } else if (commands_.IsOperatorCharacter(c)) {
                WriteOperator(i);
            } else {
                Copy(c);
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
        if (position > 0 && NeedsBlank(commands_, source_[position - 1])) WriteBlank();
        Copy(source_[position]);
        if (hasNext && NeedsBlank(commands_, source_[position + 1])) WriteBlank();
    }

    const CommandCatalogue& commands_;
    std::string_view source_;
    char* start_;
    char* end_;
    bool inQuotes_ = false;
    bool lastWasBlank_ = false;
};

}  // namespace

void PrepareLine(Compilation& compilation, SourceLine& line) {
    const CommandCatalogue& commands = compilation.configuration.commands;
    const std::size_t commentStart = FindComment(line.text);
    const std::string_view statement = line.text.substr(0, commentStart);
    line.parsedLine = TrimBlanks(statement);
    if (IsNormal(commands, line.parsedLine)) return;

    const auto operators = std::count_if(statement.begin(), statement.end(),
                                         [&](char c) { return commands.IsOperatorCharacter(c); });
    const std::size_t closingQuote = 1;
    const std::size_t longest =
        statement.size() + 2 * static_cast<std::size_t>(operators) + closingQuote;
    LineWriter writer(commands, statement, compilation.texts.Allocate(longest));
    writer.Write();
    const bool unclosed = writer.EndsInQuotes();
    if (unclosed) writer.CloseQuotes();
    line.parsedLine = Trim(writer.Result());
    if (unclosed) compilation.diagnostics.PostError(MessageCode::QuoteNotClosed, &line);
}

}  // namespace zentro
