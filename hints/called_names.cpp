#include "hints/called_names.h"

#include "config/text.h"
#include "frontend/words.h"

namespace zentro {

const Symbol* SymbolOf(const HintQuestion& question, std::string_view name) {
    return question.compilation.symbols.FindSymbol(name, question.line.parent);
}

const SourceLine& HeaderOf(const HintQuestion& question, const Symbol& routine) {
    return question.compilation.GetSourceLine(routine.declareLineNo);
}

bool GivesResult(const HintQuestion& question, const Symbol& routine) {
    return !HeaderOf(question, routine).parsedLine.ends_with(')');
}

std::string ParametersOf(const HintQuestion& question, const Symbol& routine) {
    const std::string_view header = HeaderOf(question, routine).parsedLine;
    const std::size_t open = FindOutsideQuotes(header, '(');
    const std::size_t close =
        open == std::string_view::npos ? open : FindClosingParenthesis(header, open);
    std::string names;
    if (close == std::string_view::npos) return names;
    for (const std::string_view one : SplitCommaList(header.substr(open + 1, close - open - 1)))
        names.append(names.empty() ? "" : ", ").append(SplitFirstWord(one).first);
    return names;
}

std::optional<NamedWord> LastNamed(const HintQuestion& question, SymbolClass wanted) {
    std::optional<NamedWord> found;
    for (const PlacedWord& word :
         WordsInLine(question.compilation.configuration.commands, question.line.text)) {
        const std::string_view text = word.In(question.line.text);
        const Symbol* symbol = SymbolOf(question, text);
        if (symbol != nullptr && symbol->symbolClass == wanted) found = NamedWord{text, symbol};
    }
    return found;
}

}  // namespace zentro
