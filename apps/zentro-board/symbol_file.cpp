#include "apps/zentro-board/symbol_file.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

#include "config/text_lines.h"

namespace zentro {

namespace {

struct TypeRow {
    VariableType type;
    std::string_view name;
    std::uint32_t size;  ///< 0: any
};

constexpr std::array<TypeRow, 5> kTypes{{
    {VariableType::Byte, "byte", 1},
    {VariableType::Word, "word", 2},
    {VariableType::Flag, "flag", 1},
    {VariableType::Pointer, "pointer", 2},
    {VariableType::Table, "table", 0},
}};

const TypeRow& RowOf(VariableType type) {
    return kTypes[static_cast<std::size_t>(type)];
}

std::optional<Variable> ParseVariable(std::string_view line) {
    const std::vector<std::string_view> fields = SplitFields(line, '\t');
    if (fields.size() != 4 || fields[0].empty()) return std::nullopt;
    const auto* const row = std::ranges::find(kTypes, fields[1], &TypeRow::name);
    const auto address = ReadNumber(fields[2], kMemorySize);
    const auto size = ReadNumber(fields[3], kMemorySize);
    if (row == kTypes.end() || !address || !size) return std::nullopt;
    if (*address + *size > kMemorySize || (row->size != 0 && row->size != *size))
        return std::nullopt;
    return Variable{std::string(fields[0]), row->type, static_cast<std::uint32_t>(*address),
                    static_cast<std::uint32_t>(*size)};
}

std::string FormatBytes(const Memory& memory, const Variable& variable) {
    std::string text;
    for (std::uint32_t offset = 0; offset < variable.size; ++offset) {
        if (offset > 0) text += ' ';
        text += std::to_string(memory.Byte(variable.address + offset));
    }
    return text;
}

}  // namespace

SymbolFile ParseSymbolFile(std::string_view text) {
    SymbolFile file;
    std::size_t number = 0;
    for (std::string_view line : SplitLines(text)) {
        ++number;
        if (const auto variable = ParseVariable(line)) {
            file.variables.push_back(*variable);
            continue;
        }
        file.error = "line " + std::to_string(number) +
                     ": this is no name, type, address and size of a variable";
        return file;
    }
    return file;
}

std::string FormatVariable(const Memory& memory, const Variable& variable) {
    const TypeRow& row = RowOf(variable.type);
    const std::string value = row.size == 2 ? std::to_string(memory.Word(variable.address))
                                            : FormatBytes(memory, variable);
    return variable.name + '\t' + std::string(row.name) + '\t' + value;
}

}  // namespace zentro
