#include "model/object_line.h"

#include <algorithm>
#include <cassert>
#include <charconv>

namespace zentro {

namespace {

constexpr std::int32_t kByteValues = 256;

std::int32_t EncodableAddress(const Label& label) {
    const bool isEncodable = label.address >= 0 && label.address <= kLargestAddress;
    return isEncodable ? label.address : 0;
}

}  // namespace

ObjectLine CreateObjectLine(Opcode opcode, const SourceLine& line, ObjectComment comment,
                            std::span<const Label* const> arguments) {
    const Instruction& instruction = InstructionFor(opcode);
    assert(instruction.support == InstructionSupport::Available);
    assert(static_cast<std::size_t>(instruction.ArgumentCount()) == arguments.size());
    ObjectLine object;
    object.opcode = opcode;
    object.argCount = static_cast<std::uint8_t>(arguments.size());
    object.byteCount = static_cast<std::uint8_t>(instruction.Size());
    object.sourceLineNo = line.lineNumber;
    object.comment = comment;
    std::copy(arguments.begin(), arguments.end(), object.arguments.begin());
    return object;
}

ObjectLine CreateVariableLocation(Label& label, DataType type, std::uint16_t initialValue,
                                  ObjectComment comment) {
    ObjectLine object;
    object.purpose = ObjectPurpose::VariableLocation;
    object.byteCount = IsWordSized(type) ? 2 : 1;
    object.label = &label;
    object.type = type;
    object.initialValue = initialValue;
    object.comment = comment;
    return object;
}

ObjectCodeText::ObjectCodeText(const ObjectLine& line) {
    if (line.purpose == ObjectPurpose::VariableLocation) {
        line.byteCount == 1 ? AppendNumber(line.initialValue) : AppendWord(line.initialValue);
        return;
    }
    const Instruction& instruction = InstructionFor(line.opcode);
    AppendNumber(static_cast<std::int32_t>(line.opcode));
    for (std::size_t slot = 0; slot < line.argCount; ++slot) {
        text_[length_++] = ',';
        if (instruction.arguments[slot] == ArgumentType::Byte) {
            AppendNumber(line.arguments[slot]->address);
        } else {
            AppendWord(EncodableAddress(*line.arguments[slot]));
        }
    }
}

void ObjectCodeText::AppendNumber(std::int32_t number) {
    char* const start = text_.data() + length_;
    length_ = static_cast<std::size_t>(
        std::to_chars(start, text_.data() + text_.size(), number).ptr - text_.data());
}

void ObjectCodeText::AppendWord(std::int32_t word) {
    AppendNumber(word / kByteValues);
    text_[length_++] = ',';
    AppendNumber(word % kByteValues);
}

}  // namespace zentro
