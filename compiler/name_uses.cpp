#include "compiler/name_uses.h"

#include <algorithm>
#include <span>
#include <unordered_map>

#include "compiler/load_source.h"
#include "config/text.h"
#include "frontend/words.h"

namespace zentro {

namespace {

using Words = std::span<const PlacedWord>;

/// Goes through the lines of a program whose declarations are entered.
class UseFinder {
  public:
    explicit UseFinder(Compilation& compilation)
        : compilation_(compilation), commands_(compilation.configuration.commands) {
        EnterSymbols();
        EnterConstants();
    }

    std::vector<UsedName> Find() {
        for (const SourceLine& line : compilation_.sourceLines)
            ReadLine(line);
        return std::move(names_);
    }

  private:
    std::size_t WordCount(std::string_view text) const {
        return WordsInLine(commands_, text).size();
    }

    void EnterSymbols() {
        for (const Symbol& symbol : compilation_.symbols.Symbols()) {
            if (symbol.declareLineNo == 0) continue;  // the compiler's own
            bySymbol_.emplace(&symbol, names_.size());
            names_.push_back(
                {symbol.name, KindOf(symbol), symbol.parent, symbol.declareLineNo, {}});
        }
    }

    NameKind KindOf(const Symbol& symbol) const {
        if (symbol.symbolClass == SymbolClass::Routine) return NameKind::Routine;
        if (symbol.symbolClass == SymbolClass::Event) return NameKind::Event;
        if (symbol.type == DataType::Table) return NameKind::Table;
        const SourceLine& line = compilation_.GetSourceLine(symbol.declareLineNo);
        return line.purpose == Purpose::RoutineHeader ? NameKind::Parameter : NameKind::Variable;
    }

    /// A constant is no symbol; its name follows the words of its declaration.
    void EnterConstants() {
        const std::size_t skipped = WordCount(compilation_.GetCommandText(Token::DefineConstant));
        for (const SourceLine& line : compilation_.sourceLines) {
            if (line.purpose != Purpose::ConstantDeclaration) continue;
            const std::vector<PlacedWord> words = WordsInLine(commands_, line.text);
            if (words.size() <= skipped) continue;
            const std::string_view name = words[skipped].In(line.text);
            if (compilation_.symbols.FindConstant(name) == nullptr) continue;
            if (!byConstant_.emplace(name, names_.size()).second) continue;
            names_.push_back({name, NameKind::Constant, ParentId::Program, line.lineNumber, {}});
        }
    }

    void ReadLine(const SourceLine& line) {
        if (line.token == Token::Include || line.token == Token::SharedParameters) return;
        const std::vector<PlacedWord> words = WordsInLine(commands_, line.text);
        const Command* entry = compilation_.FindCommand(line.parsedLine);
        const std::size_t skipped =
            entry == nullptr ? 0 : std::min(WordCount(entry->command), words.size());
        const Words rest = Words(words).subspan(skipped);
        if (line.token == Token::EndTable) isInTable_ = false;
        if (isInTable_ && line.token != Token::Reserve) return ReadData(line, words);
        switch (line.token) {
            case Token::DefineTable: return ReadTableHeader(line, rest);
            case Token::DefineRoutine:
            case Token::DefineEvent: return ReadHeader(line, rest);
            default:
                for (const PlacedWord& word : rest)
                    ReadWord(line, word);
        }
    }

    void ReadTableHeader(const SourceLine& line, Words words) {
        isInTable_ = true;
        if (words.empty()) return;
        AddSymbol(line, words[0], ParentId::Program);
        ReadData(line, words.subspan(1));
    }

    /// Only an item that is one word can be a name. The first item of a header begins behind its
    /// "=".
    void ReadData(const SourceLine& line, Words words) {
        const auto isCut = [&](std::size_t begin, std::size_t end) {
            return line.text.substr(begin, end - begin).find(',') != std::string_view::npos;
        };
        for (std::size_t i = 0; i < words.size(); ++i) {
            const bool begins = i == 0 || isCut(words[i - 1].End(), words[i].begin);
            const bool ends = i + 1 == words.size() || isCut(words[i].End(), words[i + 1].begin);
            if (!begins || !ends) continue;
            if (!AddConstant(line, words[i])) AddSymbol(line, words[i], ParentId::Program);
        }
    }

    /// A header: Name(Parameter TYPE, Parameter TYPE) and words that are no names.
    void ReadHeader(const SourceLine& line, Words words) {
        if (words.empty()) return;
        const std::string_view text = line.text;
        AddSymbol(line, words[0], ParentId::Program);
        const ParentId routine = compilation_.symbols.ParentWithName(words[0].In(text));
        const std::size_t open = text.find('(', words[0].End());
        if (open == std::string_view::npos) return;
        const std::size_t close = std::min(text.find(')', open), text.size());
        std::size_t separator = open;  // the sign behind which an item begins
        for (const PlacedWord& word : words.subspan(1)) {
            if (separator >= close) return;
            if (word.begin < separator) continue;
            AddSymbol(line, word, routine);
            separator = std::min(text.find(',', word.End()), close);
        }
    }

    /// What is called is a routine, even where a variable of the same name would come first.
    void ReadWord(const SourceLine& line, const PlacedWord& word) {
        const std::string_view rest = line.text.substr(word.End());
        const std::size_t next = std::min(rest.find_first_not_of(" \t"), rest.size());
        if (rest.substr(next).starts_with('(')) {
            const Symbol* called =
                compilation_.symbols.FindOwn(word.In(line.text), ParentId::Program);
            if (called != nullptr && called->symbolClass == SymbolClass::Routine) {
                AddSymbol(line, word, ParentId::Program);
                return;
            }
        }
        if (!AddSymbol(line, word, line.parent)) AddConstant(line, word);
    }

    bool AddSymbol(const SourceLine& line, const PlacedWord& word, ParentId seenFrom) {
        const Symbol* symbol = compilation_.symbols.FindSymbol(word.In(line.text), seenFrom);
        const auto found = bySymbol_.find(symbol);
        if (found == bySymbol_.end()) return false;
        Add(found->second, line, word, seenFrom);
        return true;
    }

    bool AddConstant(const SourceLine& line, const PlacedWord& word) {
        const auto found = byConstant_.find(word.In(line.text));
        if (found == byConstant_.end()) return false;
        Add(found->second, line, word, line.parent);
        return true;
    }

    void Add(std::size_t name, const SourceLine& line, const PlacedWord& word, ParentId seenFrom) {
        names_[name].uses.push_back({line.lineNumber, word.begin, word.length, seenFrom});
    }

    Compilation& compilation_;
    const CommandCatalogue& commands_;
    std::vector<UsedName> names_;
    std::unordered_map<const Symbol*, std::size_t> bySymbol_;
    std::unordered_map<std::string_view, std::size_t, FoldedHash, FoldedEqual> byConstant_;
    bool isInTable_ = false;
};

}  // namespace

const NameUse& UsedName::Declaration() const {
    const auto found = std::ranges::find(uses, declareLineNo, &NameUse::lineNo);
    return found == uses.end() ? uses.front() : *found;
}

NameUses FindNameUses(Compilation& compilation, const ProgramFiles& files) {
    compilation.diagnostics.StartCompile(files.sourceFileName);
    const bool isOpen = LoadSourceFiles(compilation, files);
    NameUses found;
    found.wasReadToTheEnd = isOpen && compilation.states.Current() != CompileState::Aborted;
    found.names = UseFinder(compilation).Find();
    // A name that no line holds as a word cannot be shown.
    std::erase_if(found.names, [](const UsedName& name) { return name.uses.empty(); });
    return found;
}

}  // namespace zentro
