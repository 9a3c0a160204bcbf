#include "faults/program_words_file.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <span>

#include "board/memory.h"
#include "config/text_lines.h"

namespace zentro {

namespace {

constexpr std::string_view kFlag = "flag";
constexpr std::string_view kVariable = "variable";
constexpr std::string_view kStatement = "statement";
constexpr std::string_view kInstruction = "instruction";
constexpr std::string_view kCall = "call";
constexpr std::string_view kNoCall = "-";
constexpr unsigned long kMostFlagValue = std::numeric_limits<std::uint8_t>::max();

using Fields = std::span<const std::string_view>;

/// A line of the file. A text is one field, whatever is in it.
class Line {
  public:
    explicit Line(std::string_view kind) : text_(kind) {}

    Line& Add(std::string_view field) {
        text_ += '\t';
        for (const char c : field)
            text_ += c == '\t' ? ' ' : c;
        return *this;
    }

    Line& Add(std::size_t number) { return Add(std::string_view(std::to_string(number))); }

    template <typename Numbers>
    Line& AddAll(const Numbers& numbers) {
        std::string field;
        for (const auto number : numbers)
            field += (field.empty() ? "" : " ") + std::to_string(number);
        return Add(std::string_view(field));
    }

    std::string Text() const { return text_ + '\n'; }

  private:
    std::string text_;
};

std::string InstructionLine(std::uint32_t address, const InstructionWords& instruction) {
    Line line(kInstruction);
    line.Add(std::size_t{address}).AddAll(instruction.bytes);
    line.Add(instruction.preparesCall ? kCall : kNoCall);
    for (const std::string& operand : instruction.operands)
        line.Add(std::string_view(operand));
    return line.Text();
}

std::optional<std::vector<unsigned long>> ReadNumbers(std::string_view text,
                                                      unsigned long largest) {
    std::vector<unsigned long> numbers;
    if (text.empty()) return numbers;
    for (const std::string_view one : SplitFields(text, ' ')) {
        const auto number = ReadNumber(one, largest);
        if (!number) return std::nullopt;
        numbers.push_back(*number);
    }
    return numbers;
}

bool ReadFlag(Fields fields, ProgramWords& words) {
    if (fields.size() != 2) return false;
    const auto value = ReadNumber(fields[0], kMostFlagValue);
    return value && words.flagWords.emplace(*value, fields[1]).second;
}

bool ReadVariable(Fields fields, ProgramWords& words) {
    if (fields.size() != 4) return false;
    const auto* const type = std::ranges::find(kTypeNames, fields[1]);
    const auto address = ReadNumber(fields[2], kMemorySize);
    const auto size = ReadNumber(fields[3], kMemorySize);
    if (type == kTypeNames.end() || !address || !size) return false;
    words.variables.push_back({std::string(fields[0]), static_cast<std::uint32_t>(*address),
                               static_cast<DataType>(type - kTypeNames.begin()), *size});
    return true;
}

bool ReadStatement(Fields fields, ProgramWords& words) {
    if (fields.size() != 4) return false;
    const auto variables = ReadNumbers(fields[3], kMemorySize);
    const auto isKnown = [&](unsigned long place) { return place < words.variables.size(); };
    if (!variables || !std::ranges::all_of(*variables, isKnown)) return false;
    words.statements.push_back({std::string(fields[0]),
                                std::string(fields[1]),
                                std::string(fields[2]),
                                {variables->begin(), variables->end()}});
    return true;
}

/// It belongs to the statement that was read last.
bool ReadInstruction(Fields fields, ProgramWords& words) {
    if (fields.size() != 3 + kMaxArguments || words.statements.empty()) return false;
    const auto address = ReadNumber(fields[0], kMemorySize);
    const auto bytes = ReadNumbers(fields[1], std::numeric_limits<std::uint8_t>::max());
    const bool isCall = fields[2] == kCall;
    if (!address || !bytes || (!isCall && fields[2] != kNoCall)) return false;
    InstructionWords instruction;
    for (const unsigned long byte : *bytes)
        instruction.bytes.push_back(static_cast<std::uint8_t>(byte));
    instruction.statement = words.statements.size() - 1;
    instruction.preparesCall = isCall;
    std::ranges::copy(fields.subspan(3), instruction.operands.begin());
    return words.instructions.emplace(static_cast<std::uint32_t>(*address), std::move(instruction))
        .second;
}

bool ReadLine(std::string_view line, ProgramWords& words) {
    const std::vector<std::string_view> all = SplitFields(line, '\t');
    const Fields fields = Fields(all).subspan(1);
    if (all[0] == kFlag) return ReadFlag(fields, words);
    if (all[0] == kVariable) return ReadVariable(fields, words);
    if (all[0] == kStatement) return ReadStatement(fields, words);
    return all[0] == kInstruction && ReadInstruction(fields, words);
}

}  // namespace

std::string ProgramWordsText(const ProgramWords& words) {
    std::string text;
    for (const auto& [value, word] : words.flagWords)
        text += Line(kFlag).Add(static_cast<std::size_t>(value)).Add(std::string_view(word)).Text();
    for (const VariableWords& variable : words.variables) {
        Line line(kVariable);
        line.Add(std::string_view(variable.name));
        line.Add(kTypeNames[static_cast<std::size_t>(variable.type)]);
        text += line.Add(std::size_t{variable.address}).Add(variable.size).Text();
    }
    std::optional<std::size_t> shown;
    for (const auto& [address, instruction] : words.instructions) {
        if (shown != instruction.statement) {
            const StatementWords& statement = words.statements[instruction.statement];
            Line line(kStatement);
            line.Add(std::string_view(statement.place)).Add(std::string_view(statement.text));
            line.Add(std::string_view(statement.routine)).AddAll(statement.variables);
            text += line.Text();
            shown = instruction.statement;
        }
        text += InstructionLine(address, instruction);
    }
    return text;
}

LoadedProgramWords ParseProgramWords(std::string_view text) {
    LoadedProgramWords loaded;
    std::size_t number = 0;
    for (const std::string_view line : SplitLines(text)) {
        ++number;
        if (ReadLine(line, loaded.words)) continue;
        loaded.error = "line " + std::to_string(number) + ": this is no debug information";
        return loaded;
    }
    return loaded;
}

}  // namespace zentro
