#include <array>
#include <span>
#include <stdexcept>

#include "codegen/generators.h"
#include "model/statement.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

using Source = ArgumentSource;

const LineElement& ElementFrom(const Compilation& compilation, const SourceLine& line,
                               Source source) {
    switch (source) {
        case Source::Target: return Target(compilation, line);
        case Source::Operand1:
        case Source::Value1:
        case Source::NamedValue1: return Operand(compilation, line, 0);
        case Source::Operand2:
        case Source::Value2:
        case Source::NamedValue2: return Operand(compilation, line, 1);
        case Source::Operand3: return Operand(compilation, line, 2);
        case Source::None:
        case Source::Scratch: break;
    }
    throw std::logic_error("no element stands behind this argument");
}

/// A constant's value as part of an instruction; of two characters the first would count.
const Label* ValueArgument(Compilation& compilation, const Constant& constant,
                           std::string_view shownAs) {
    constexpr std::uint32_t kByteValues = 256;
    Label& value = compilation.AddLabel(shownAs);
    const auto number = static_cast<std::uint32_t>(NumberOf(constant.value).value_or(0));
    value.address = static_cast<std::int32_t>(number % kByteValues);
    return &value;
}

/// The argument that an element makes for an instruction.
const Label* ArgumentOf(Compilation& compilation, const LineElement& element, Source source) {
    switch (source) {
        case Source::Value1:
        case Source::Value2:
            return ValueArgument(compilation, *element.constant, element.constant->value);
        case Source::NamedValue1:
        case Source::NamedValue2:
            return ValueArgument(compilation, *element.constant, element.Name());
        case Source::None:
        case Source::Target:
        case Source::Operand1:
        case Source::Operand2:
        case Source::Operand3:
        case Source::Scratch: break;
    }
    return element.location;
}

/// The code of a line's statement.
const StatementCode& CodeOf(const SourceLine& line) {
    return FindStatement(line.token)->code;
}

}  // namespace

void GenerateInstruction(Compilation& compilation, SourceLine& line) {
    const StatementCode& code = CodeOf(line);
    std::array<const Label*, kMaxArguments> arguments{};
    std::size_t count = 0;
    bool isByte = true;
    for (; count < kMaxArguments && code.arguments[count] != Source::None; ++count) {
        if (code.arguments[count] == Source::Scratch) {
            arguments[count] = &compilation.symbols.ScratchOne();
            continue;
        }
        const LineElement& element = ElementFrom(compilation, line, code.arguments[count]);
        arguments[count] = ArgumentOf(compilation, element, code.arguments[count]);
        isByte = IsByteSized(element.type);
    }
    compilation.objectLines.push_back(CreateObjectLine(isByte ? code.byteForm : code.wordForm, line,
                                                       ObjectComment::SourceLine,
                                                       std::span(arguments).first(count)));
}

void GenerateJoystick(Compilation& compilation, SourceLine& line) {
    const StatementCode& code = CodeOf(line);
    const bool isFirst = NumberOf(Operand(compilation, line, 0).constant->value) == 1;
    Append(compilation, line, isFirst ? code.byteForm : code.wordForm, ObjectComment::SourceLine,
           {ArgumentOf(compilation, Operand(compilation, line, 1), Source::NamedValue2),
            Target(compilation, line).location, &compilation.symbols.ScratchOne()});
}

void GenerateSetLeds(Compilation& compilation, SourceLine& line) {
    const StatementCode& code = CodeOf(line);
    Append(compilation, line, code.byteForm, ObjectComment::SourceLine,
           {Operand(compilation, line, 0).location});
    Append(compilation, line, code.wordForm, ObjectComment::SourceLine,
           {Operand(compilation, line, 1).location});
}

void GenerateComplement(Compilation& compilation, SourceLine& line) {
    const Label* target = Target(compilation, line).location;
    Append(compilation, line, Opcode::MoveByte, ObjectComment::SourceLine,
           {Operand(compilation, line, 0).location, target});
    Append(compilation, line, Opcode::ComplimentByte, ObjectComment::SourceLine, {target});
}

/// Silence is a note of no pitch and no length; both are the language's FALSE.
void GenerateStopSound(Compilation& compilation, SourceLine& line) {
    const Command* entry = compilation.configuration.commands.ByToken(Token::False);
    if (entry == nullptr) {
        compilation.environment.prompts.ShowMessage(
            "Could not locate Constant C2 Config file may be corrupt or wrong version.");
        return;
    }
    const Constant& silence = compilation.symbols.AddConstant(entry->command, entry->description,
                                                              ConstantKind::NamedOrNumber);
    const Label* value =
        ValueArgument(compilation, silence, compilation.texts.Concat("B_", entry->command));
    Append(compilation, line, Opcode::PlaySound, ObjectComment::SourceLine, {value, value});
}

}  // namespace zentro
