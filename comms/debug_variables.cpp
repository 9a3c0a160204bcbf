#include "comms/debug_variables.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <optional>

#include "compiler/resolve_labels.h"
#include "compiler/symbols_file.h"
#include "config/encoding.h"
#include "config/text.h"

namespace zentro {

namespace {

constexpr const char* kTableEnd = "(1st 8 bytes only)";
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

constexpr std::string_view kSeparators = " \t";
constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kSeparatorsAndLineEnds = " \t\r\n";

/// From the first pair behind the "]" to the end of its line.
std::string_view DataOf(std::string_view reply) {
    const std::size_t bracket = reply.find(']');
    if (bracket == std::string_view::npos) return {};
    const std::size_t start = reply.find_first_not_of(kSeparatorsAndLineEnds, bracket + 1);
    if (start == std::string_view::npos) return {};
    reply.remove_prefix(start);
    return reply.substr(0, reply.find_first_of(kLineEnds));
}

/// The pairs of digits in the data, as they are.
std::vector<std::string_view> PairsOf(std::string_view data) {
    std::vector<std::string_view> pairs;
    std::size_t start = data.find_first_not_of(kSeparators);
    while (start != std::string_view::npos && pairs.size() < kBytesInReply) {
        const std::size_t end = std::min(data.find_first_of(kSeparators, start), data.size());
        pairs.push_back(data.substr(start, end - start));
        start = data.find_first_not_of(kSeparators, end);
    }
    return pairs;
}

std::optional<std::uint8_t> ReadPair(std::string_view pair) {
    std::uint8_t value = 0;
    const char* const end = pair.data() + pair.size();
    const auto [stop, error] = std::from_chars(pair.data(), end, value, 16);
    if (pair.size() != 2 || error != std::errc{} || stop != end) return std::nullopt;
    return value;
}

/// "42", a tab, "(2Ah)".
std::string FormatNumber(unsigned value, int hexDigits) {
    std::array<char, 32> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%u\t(%0*Xh)", value, hexDigits, value);
    return {text.data(), static_cast<std::size_t>(length)};
}

/// The bytes as they were read, without what stands behind the eighth.
std::string FormatTable(std::string_view data) {
    const std::vector<std::string_view> pairs = PairsOf(data);
    if (!pairs.empty()) {
        const std::string_view last = pairs.back();
        data = data.substr(0, static_cast<std::size_t>(last.data() + last.size() - data.data()));
    }
    return ToUtf8(data) + kTableEnd;
}

/// The text at the left of its field, cut or filled up with blanks.
std::string AtLeft(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

/// The text at the right of its field; a longer one loses its first characters.
std::string AtRight(const std::string& text, std::size_t width) {
    if (text.size() >= width) return text.substr(text.size() - width);
    return std::string(width - text.size(), ' ') + text;
}

std::string NameColumn(const DebugVariable& variable, std::size_t width) {
    if (EqualsIgnoreCase(variable.parentName, kProgram)) return AtRight(variable.name, width);
    const std::size_t routineWidth = width - std::min(width, variable.name.size());
    return AtLeft(variable.parentName + "()", routineWidth) + variable.name;
}

}  // namespace

std::vector<DebugVariable> VariablesOf(const Compilation& compilation) {
    const LabelTable labels = BuildLabelTable(compilation);
    std::vector<DebugVariable> variables;
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        if (symbol.symbolClass != SymbolClass::Variable) continue;
        const auto address = LookupLabel(labels, symbol.ResolvedName());
        if (!address) continue;
        DebugVariable variable;
        variable.name = ToUtf8(symbol.name);
        variable.resolvedName = ToUtf8(symbol.ResolvedName());
        variable.parentName = ToUtf8(compilation.symbols.NameOf(symbol.parent));
        variable.type = symbol.type;
        variable.address = static_cast<std::uint32_t>(*address);
        variable.size = static_cast<std::uint32_t>(SizeInMemory(symbol));
        variable.isOfCompiler = symbol.declareLineNo == 0;
        variables.push_back(std::move(variable));
    }
    return variables;
}

std::vector<std::uint8_t> ReplyBytes(std::string_view reply) {
    std::vector<std::uint8_t> bytes;
    for (const std::string_view pair : PairsOf(DataOf(reply)))
        bytes.push_back(ReadPair(pair).value_or(0));
    return bytes;
}

std::size_t CountReadablePairs(std::string_view reply) {
    const std::vector<std::string_view> pairs = PairsOf(DataOf(reply));
    const auto unreadable =
        std::ranges::find_if(pairs, [](std::string_view pair) { return !ReadPair(pair); });
    return static_cast<std::size_t>(unreadable - pairs.begin());
}

std::string FormatBytes(std::span<const std::uint8_t> bytes, DataType type) {
    if (type == DataType::Table) {
        std::string text;
        for (const std::uint8_t byte : bytes.first(std::min(bytes.size(), kBytesInReply))) {
            if (!text.empty()) text += ' ';
            text += {kHexDigits[byte / 16], kHexDigits[byte % 16]};
        }
        return text + kTableEnd;
    }
    const auto at = [&](std::size_t index) {
        return index < bytes.size() ? std::uint32_t{bytes[index]} : 0U;
    };
    return IsWordSized(type) ? FormatNumber(at(0) * 256 + at(1), 4) : FormatNumber(at(0), 2);
}

std::string FormatDebugValue(std::string_view reply, DataType type) {
    if (reply.find(']') == std::string_view::npos) return {};
    if (type == DataType::Table) return FormatTable(DataOf(reply));
    return FormatBytes(ReplyBytes(reply), type);
}

std::vector<std::string> VariableLines(const std::vector<DebugVariable>& variables) {
    constexpr std::size_t kGap = 3;
    std::size_t width = 0;
    for (const DebugVariable& variable : variables)
        width = std::max(width, variable.resolvedName.size());
    std::vector<std::string> lines;
    lines.reserve(variables.size());
    for (const DebugVariable& variable : variables)
        lines.push_back(NameColumn(variable, width + kGap) + '\t' + variable.debugValue);
    return lines;
}

}  // namespace zentro
