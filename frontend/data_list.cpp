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
    DataList(Compilation& compilation, SourceLine& line, std::vector<std::uint8_t>& bytes)
        : compilation_(compilation), line_(line), bytes_(bytes) {}

    void AddItem(const std::string& item, bool isQuoted) {
        if (item.empty()) {
            compilation_.diagnostics.PostError(MessageCode::TableEntryMissing, &line_);
        } else if (isQuoted) {
            AddText(item);
        } else if (IsHexadecimal(item)) {
            if (const auto number = ParseHexadecimal(compilation_, item, line_)) AddValue(*number);
        } else if (IsNumeric(item)) {
            AddValue(item);
        } else {
            AddName(item);
        }
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
        AddText(name);
    }

    void AddValue(std::string_view value) {
        if (!IsNumeric(value)) return AddText(value);
        const std::optional<std::int32_t> number = ParseNumber(value);
        if (!number || *number < 0 || *number > kLargestByte) {
            return Post(MessageCode::ValueOutOfRange, value);
        }
        bytes_.push_back(static_cast<std::uint8_t>(*number));
    }

    void AddText(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }

    void Post(MessageCode code, std::string_view text) {
        compilation_.diagnostics.PostError(code, &line_, Shorten(text));
    }

    Compilation& compilation_;
    SourceLine& line_;
    std::vector<std::uint8_t>& bytes_;
};

}  // namespace

void ExpandDataList(Compilation& compilation, std::string_view data, SourceLine& line,
                    std::vector<std::uint8_t>& bytes) {
    DataList list(compilation, line, bytes);
    std::string item;
    bool inQuotes = false;
    bool isQuoted = false;
    const auto finishItem = [&] {
        list.AddItem(item, isQuoted);
        item.clear();
        isQuoted = false;
    };
    for (const char c : data) {
        if (c == '"') {
            inQuotes = !inQuotes;
            isQuoted = true;
        } else if (c == ',' && !inQuotes) {
            finishItem();
        } else if (inQuotes || !IsBlank(c)) {
            item += c;
        }
    }
    finishItem();
}

}  // namespace zentro
