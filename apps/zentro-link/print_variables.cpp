#include "apps/zentro-link/print_variables.h"

#include <algorithm>
#include <iostream>
#include <memory>

#include "apps/zentro-board/symbol_file.h"
#include "apps/zentro-link/answers.h"
#include "apps/zentro-link/console.h"
#include "apps/zentro-link/failures.h"
#include "comms/variable_reader.h"
#include "model/address.h"

namespace zentro {

namespace {

constexpr auto kNoLimit = std::chrono::hours(24);  // each reply has one of its own

struct TypePair {
    VariableType inFile;
    DataType type;
};

constexpr TypePair kTypePairs[] = {
    {VariableType::Byte, DataType::Byte},   {VariableType::Word, DataType::Word},
    {VariableType::Flag, DataType::Flag},   {VariableType::Pointer, DataType::Pointer},
    {VariableType::Table, DataType::Table},
};

DataType TypeOf(const Variable& variable) {
    return std::ranges::find(kTypePairs, variable.type, &TypePair::inFile)->type;
}

/// The variable as it stood in the file, no longer than what was read of it.
Variable AsRead(const DebugVariable& variable) {
    const std::uint32_t size =
        std::min(variable.size, static_cast<std::uint32_t>(variable.bytes.size()));
    return {variable.resolvedName,
            std::ranges::find(kTypePairs, variable.type, &TypePair::type)->inFile, variable.address,
            size};
}

void Print(const std::vector<DebugVariable>& variables) {
    const auto memory = std::make_unique<Memory>();
    for (const DebugVariable& variable : variables) {
        const Variable read = AsRead(variable);
        for (std::uint32_t i = 0; i < read.size; ++i)
            memory->StoreByte(read.address + i, variable.bytes[i]);
        std::cout << FormatVariable(*memory, read) << '\n';
    }
}

/// A board in debug mode shows its prompt at once, or when its program has waited. One in another
/// mode refuses to show memory, which tells the two apart.
ExitStatus ReachPrompt(BoardLine& line, const Options& options, std::uint32_t address) {
    line.Send("M" + AddressDigits(address) + "\r");
    Answer answer;
    line.WaitForAnswer([&] {
        answer = MemoryAnswer(line.Received(), address);
        return answer.state != Answer::State::Unfinished;
    });
    if (answer.state == Answer::State::Done) return ExitStatus::Done;
    if (answer.state == Answer::State::Refused) {
        if (line.Session().IsDebugging()) return TellRefusal(answer.words);
        return ExitStatus::Done;  // the reader tells it
    }
    if (line.IsLost() || !IsMemoryShown(line.Received(), address))
        return TellNoAnswer(line, options);
    TellFailure(
        "the program waits and shows no debug prompt. Read its variables when it has gone on");
    return ExitStatus::Refused;
}

}  // namespace

bool ReadVariables(const std::string& path, std::string_view text,
                   std::vector<DebugVariable>& variables) {
    SymbolFile file = ParseSymbolFile(text);
    if (file.error.empty() && file.variables.empty()) file.error = "there are no variables";
    if (!file.error.empty()) {
        TellFailure("'" + path + "': " + file.error);
        return false;
    }
    for (const Variable& variable : file.variables) {
        DebugVariable added;
        added.name = added.resolvedName = variable.name;
        added.type = TypeOf(variable);
        added.address = variable.address;
        added.size = variable.size;
        variables.push_back(std::move(added));
    }
    return true;
}

ExitStatus PrintVariables(BoardLine& line, const Options& options,
                          std::vector<DebugVariable> variables) {
    const ExitStatus prompt = ReachPrompt(line, options, variables.front().address);
    if (prompt != ExitStatus::Done) return prompt;
    VariableReader reader(TellFailure);
    bool complete = false;
    QObject::connect(&reader, &VariableReader::ReadingFinished,
                     [&](bool isComplete) { complete = isComplete; });
    reader.SetTerminal(&line.Session());
    reader.LoadVariableList(std::move(variables));
    reader.RefreshVariables();
    line.WaitUntil([&] { return !reader.IsReading(); }, kNoLimit);
    if (line.IsLost()) return TellLost(options);
    if (!complete) return ExitStatus::Refused;
    for (const DebugVariable& variable : reader.Variables()) {
        const std::size_t needed = std::min<std::size_t>(variable.size, kBytesInReply);
        if (variable.readableBytes >= needed) continue;
        TellFailure("the board does not show the memory of " + variable.resolvedName);
        return ExitStatus::Refused;
    }
    Print(reader.Variables());
    return ExitStatus::Done;
}

}  // namespace zentro
