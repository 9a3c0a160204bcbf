#include "model/object_line.h"

#include <algorithm>
#include <cassert>
#include <charconv>

#include "model/value_bounds.h"

namespace zentro {

namespace {

/// A value in a byte slot; of two characters the first counts.
std::uint8_t ByteOf(std::string_view value) {
    return static_cast<std::uint8_t>(NumberOf(value).value_or(0));
}

void AppendNumber(std::int32_t number, std::string& text) {
    std::array<char, 12> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    text.append(digits.begin(), end);
}

void AppendWord(std::int32_t word, std::string& text) {
    AppendNumber(word / 256, text);
    text += ',';
    AppendNumber(word % 256, text);
}

std::int32_t EncodableAddress(const Label* label) {
    if (label == nullptr || label->address == Label::kNowhere) return 0;
    return label->address > kLargestAddress ? 0 : label->address;
}

}  // namespace

ObjectArgument AddressArgument(const Label& label) {
    return {label.name, &label, 0};
}

ObjectArgument AddressArgument(const LineElement& element) {
    assert(element.location != nullptr);
    return AddressArgument(*element.location);
}

ObjectArgument ValueArgument(const LineElement& element) {
    return {element.value, nullptr, ByteOf(element.value)};
}

ObjectArgument NamedValueArgument(const LineElement& element) {
    return {element.Name(), nullptr, ByteOf(element.value)};
}

ObjectLine CreateObjectLine(Opcode opcode, const SourceLine& line, std::string_view comment,
                            std::span<const ObjectArgument> arguments) {
    const Instruction& instruction = InstructionFor(opcode);
    assert(instruction.support == InstructionSupport::Available);
    assert(static_cast<std::size_t>(instruction.ArgumentCount()) == arguments.size());
    ObjectLine object;
    object.opcode = opcode;
    object.argCount = static_cast<std::uint8_t>(arguments.size());
    object.byteCount = instruction.Size();
    object.sourceLineNo = line.lineNumber;
    object.comment = comment;
    std::copy(arguments.begin(), arguments.end(), object.arguments.begin());
    return object;
}

ObjectLine CreateVariableLocation(Label& label, std::string_view value, int byteCount,
                                  std::string_view comment) {
    ObjectLine object;
    object.purpose = ObjectPurpose::VariableLocation;
    object.byteCount = byteCount;
    object.label = &label;
    object.comment = comment;
    object.value = value;
    return object;
}

void AppendObjectCode(const ObjectLine& line, std::string& text) {
    if (line.purpose == ObjectPurpose::VariableLocation) {
        text += line.value;
        return;
    }
    const Instruction& instruction = InstructionFor(line.opcode);
    AppendNumber(static_cast<std::int32_t>(line.opcode), text);
    for (std::size_t slot = 0; slot < line.argCount; ++slot) {
        text += ',';
        if (instruction.arguments[slot] == ArgumentType::Byte) {
            AppendNumber(line.arguments[slot].byte, text);
        } else {
            AppendWord(EncodableAddress(line.arguments[slot].label), text);
        }
    }
}

}  // namespace zentro
