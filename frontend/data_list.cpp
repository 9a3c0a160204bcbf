#include "frontend/data_list.h"

#include <string>

#include "config/text.h"
#include "frontend/literal.h"

namespace zentro {

namespace {

constexpr std::int32_t kLargestByte = 255;

/// Turns one item at a time into bytes.
class DataList {
  public:
    DataList(Compilation& compilation, SourceLine& line, TableData& table)
        : compilation_(compilation), line_(line), table_(table) {}

    void AddItem(const std::string& item, bool isQuoted) {
        if (item.empty()) {
            compilation_.diagnostics.PostError(MessageCode::TableEntryMissing, &line_);
        } else if (isQuoted) {
            table_.Add(std::string_view(item));
        } else if (IsHexadecimal(item)) {
            if (const auto number = ParseHexadecimal(compilation_, item, line_)) AddValue(*number);
        } else if (IsNumeric(item)) {
            AddValue(item);
        } else {
            AddName(item);
        }
    }

    void Post(MessageCode code, std::string_view text) {
        compilation_.diagnostics.PostError(code, &line_, Shorten(text));
    }

  private:
    void AddName(std::string_view name) {
        const SymbolTable& symbols = compilation_.symbols;
        if (const Constant* constant = symbols.FindConstant(name)) return AddValue(constant->value);
        const bool isDeclared = symbols.FindOwn(name, ParentId::Program) != nullptr;
        const Command* constant = FindCatalogueConstant(compilation_, name);
        if (!isDeclared && constant != nullptr) return AddValue(constant->description);
        if (isDeclared || compilation_.FindCommand(name) != nullptr) {
            return Post(MessageCode::NotAConstant, name);
        }
        Post(MessageCode::TextWithoutQuotes, name);
        table_.Add(name);
    }

    void AddValue(std::string_view value) {
        if (!IsNumeric(value)) return table_.Add(value);
        const std::optional<std::int32_t> number = ParseNumber(value);
        if (!number || *number < 0 || *number > kLargestByte) {
            return Post(MessageCode::ValueOutOfRange, value);
        }
        table_.Add(static_cast<std::uint8_t>(*number));
    }

    Compilation& compilation_;
    SourceLine& line_;
    TableData& table_;
};

/// One item as it is gathered.
struct Item {
    std::string text;  ///< without quotes, and without the blanks outside them
    std::size_t start = 0;
    bool isQuoted = false;
    bool standsTogether = false;  ///< of values that no comma separates
    char last = '\0';             ///< the character before, other than a blank; none yet
    bool blankSince = false;      ///< and a blank behind it
};

/// Whether a character begins another value without a comma in front: 1 2, "A" "B", 5 "C". The
/// normaliser puts blanks around signs, so those separate no values.
bool BeginsAnother(const CommandCatalogue& commands, const Item& item, char c) {
    const auto isSign = [&](char sign) {
        return commands.ClassOf(sign) == CharacterClass::Operator;
    };
    if (item.last == '\0') return false;
    if (item.last == '"' || c == '"') return true;
    return item.blankSince && !isSign(item.last) && !isSign(c);
}

}  // namespace

void ExpandDataList(Compilation& compilation, std::string_view data, SourceLine& line,
                    TableData& table) {
    DataList list(compilation, line, table);
    const CommandCatalogue& commands = compilation.configuration.commands;
    Item item;
    bool inQuotes = false;
    const auto finishItem = [&](std::size_t end) {
        if (item.standsTogether) {
            const std::string_view written = data.substr(item.start, end - item.start);
            list.Post(MessageCode::CommaMissing, Trim(written));
        }
        list.AddItem(item.text, item.isQuoted);
        item = Item{};
        item.start = end + 1;
    };
    for (std::size_t i = 0; i < data.size(); ++i) {
        const char c = data[i];
        if (inQuotes && c != '"') {
            item.text += c;
        } else if (c == ',') {
            finishItem(i);
        } else if (IsBlank(c)) {
            item.blankSince = true;
        } else {
            const bool closesQuotes = inQuotes;
            if (!closesQuotes && BeginsAnother(commands, item, c)) item.standsTogether = true;
            item.last = c;
            item.blankSince = false;
            inQuotes = c == '"' && !inQuotes;
            item.isQuoted = item.isQuoted || c == '"';
            if (c != '"') item.text += c;
        }
    }
    finishItem(data.size());
}

}  // namespace zentro
