#include "board/text.h"

#include "board/board.h"

namespace zentro {

namespace {

std::string Hex(std::uint32_t value, std::size_t digits) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text(digits, '0');
    for (std::size_t place = digits; place-- > 0; value /= 16) {
        text[place] = kDigits[value % 16];
    }
    return text;
}

std::string FormatArguments(const Memory& memory, std::uint32_t at,
                            const Instruction& instruction) {
    std::string text;
    for (ArgumentRole role : instruction.roles) {
        const int size = ArgumentSize(TypeOf(role));
        if (size == 0) break;
        text += text.empty() ? " " : ", ";
        text += size == 1 ? std::to_string(memory.Byte(at)) : FormatAddress(memory.Word(at));
        at += static_cast<std::uint32_t>(size);
    }
    return text;
}

std::string FormatDisplay(const OutputChange& change) {
    switch (change.form) {
        case Display::Form::Dark: return "display dark";
        case Display::Form::Number:
            return std::string("display ").append(std::to_string(change.value));
        case Display::Form::Hex:
            return std::string("displayhex ").append(FormatHexByte(change.value));
    }
    return {};
}

std::string FormatOutput(const OutputChange& change) {
    const std::string number = std::to_string(change.number);
    const std::string value = std::to_string(change.value);
    const std::string drive = number + " " + change.direction + " " + value;
    switch (change.kind) {
        case OutputKind::Motor: return "motor" + drive;
        case OutputKind::Servo: return "servo" + drive;
        case OutputKind::Port: return "port" + number + ' ' + value;
        case OutputKind::Led: return (change.number == 1 ? "leftled " : "rightled ") + value;
        case OutputKind::Display: return FormatDisplay(change);
        case OutputKind::Note: return "note " + value + ' ' + std::to_string(change.length);
        case OutputKind::Transmit: return "transmit " + value;
    }
    return {};
}

}  // namespace

std::string FormatHexByte(std::uint8_t value) {
    return Hex(value, 2);
}

std::string FormatInstruction(const Memory& memory, std::uint32_t address) {
    std::string text = FormatAddress(address);
    text += ' ';
    if (address >= kMemorySize) return text.append(FaultText(Fault::AddressOutsideMemory));
    const std::uint8_t code = memory.Byte(address);
    if (code >= kInstructionCount)
        return text.append(FaultText(Fault::UnknownOpcode))
            .append(" ")
            .append(std::to_string(code));
    const Instruction& instruction = InstructionFor(Opcode{code});
    text += instruction.name;
    if (address + static_cast<std::uint32_t>(instruction.Size()) > kMemorySize) return text;
    return text.append(FormatArguments(memory, address + 1, instruction));
}

std::string_view FaultText(Fault fault) {
    switch (fault) {
        case Fault::None: return "no fault";
        case Fault::UnknownOpcode: return "unknown opcode";
        case Fault::AddressOutsideMemory: return "address outside memory";
        case Fault::DataStackOverflow: return "data stack overflow";
        case Fault::DataStackUnderflow: return "data stack underflow";
        case Fault::ReturnStackOverflow: return "return stack overflow";
        case Fault::ReturnStackUnderflow: return "return stack underflow";
        case Fault::DivisionByZero: return "division by zero";
        case Fault::NoEventToComplete: return "COMPLETE EVENT outside an event";
    }
    return {};
}

std::string FaultLine(Fault fault, std::uint32_t address) {
    return std::string("Fault: ")
        .append(FaultText(fault))
        .append(" at ")
        .append(FormatAddress(address));
}

std::string FormatChange(const OutputChange& change) {
    return std::to_string(change.tick) + ' ' + FormatOutput(change);
}

}  // namespace zentro
