#include "model/object_line.h"

#include <algorithm>
#include <cassert>

namespace zentro {

namespace {

constexpr std::uint32_t kByteValues = 256;

/// The decimal digits of a byte. Object code is made of nothing else. There is room for a fourth
/// so that they are copied in one piece.
struct Digits {
    std::array<char, 4> text{};
    std::uint32_t length = 0;
};

constexpr std::array<Digits, kByteValues> MakeDigits() {
    std::array<Digits, kByteValues> all{};
    for (std::size_t byte = 0; byte < all.size(); ++byte) {
        Digits& digits = all[byte];
        for (std::size_t unit = 100; unit > 0; unit /= 10) {
            if (byte < unit && unit > 1) continue;
            digits.text[digits.length++] = static_cast<char>('0' + byte / unit % 10);
        }
    }
    return all;
}
constexpr std::array<Digits, kByteValues> kDigits = MakeDigits();

std::uint32_t EncodableAddress(const Label& label) {
    const auto address =
        static_cast<std::uint32_t>(label.address);  // of Nowhere the largest of all
    return address <= kLargestAddress ? address : 0;
}

}  // namespace

ObjectLine CreateObjectLine(Opcode opcode, const SourceLine& line, ObjectComment comment,
                            std::span<const Label* const> arguments) {
    const Instruction& instruction = InstructionFor(opcode);
    assert(instruction.support == InstructionSupport::Available);
    assert(instruction.ArgumentCount() == arguments.size());
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

ObjectLine CreateTableLocation(Label& label, const TableData& table) {
    ObjectLine object;
    object.purpose = ObjectPurpose::VariableLocation;
    object.label = &label;
    object.type = DataType::Table;
    object.table = &table;
    object.comment = ObjectComment::TableByte;
    return object;
}

ObjectCodeText::ObjectCodeText(const ObjectLine& line) {
    if (line.purpose == ObjectPurpose::VariableLocation) {
        line.byteCount == 1 ? AppendByte(line.initialValue) : AppendWord(line.initialValue);
        return;
    }
    const Instruction& instruction = InstructionFor(line.opcode);
    AppendByte(static_cast<std::uint32_t>(line.opcode));
    for (std::size_t slot = 0; slot < line.argCount; ++slot) {
        text_[length_++] = ',';
        if (instruction.Argument(slot) == ArgumentType::Byte) {
            AppendByte(static_cast<std::uint32_t>(line.arguments[slot]->address));
        } else {
            AppendWord(EncodableAddress(*line.arguments[slot]));
        }
    }
}

void ObjectCodeText::AppendByte(std::uint32_t byte) {
    const Digits& digits = kDigits[byte];
    std::copy(digits.text.begin(), digits.text.end(), text_.data() + length_);
    length_ += digits.length;
}

void ObjectCodeText::AppendWord(std::uint32_t word) {
    AppendByte(word / kByteValues);
    text_[length_++] = ',';
    AppendByte(word % kByteValues);
}

}  // namespace zentro
