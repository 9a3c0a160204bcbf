#include <algorithm>
#include <array>
#include <cassert>
#include <span>
#include <stdexcept>

#include "codegen/generators.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

/// Where an argument of a device instruction comes from.
enum class Source : std::uint8_t {
    None,
    Target,    ///< the variable that receives a reading
    Operand1,  ///< an operand by its place in memory
    Operand2,
    Operand3,
    Value1,  ///< an operand's value, shown as the value
    Value2,
    NamedValue1,  ///< an operand's value, shown under its name
    NamedValue2,
    Scratch,  ///< the first scratch variable, for a result that nobody asked for
};

struct DeviceRow {
    Token token;
    Opcode opcode;
    std::array<Source, kMaxArguments> arguments{};
};

constexpr std::array kDevices{
    DeviceRow{Token::EmergencyStop, Opcode::EmergencyStop},
    DeviceRow{Token::PowerOff, Opcode::PowerOff},
    DeviceRow{Token::Escape, Opcode::Escape},
    DeviceRow{Token::DisableEvents, Opcode::DisableEvents},
    DeviceRow{Token::EnableEvents, Opcode::EnableEvents},
    DeviceRow{Token::DeferEvents, Opcode::DeferEvents},
    DeviceRow{Token::StopMotors, Opcode::StopMotors},
    DeviceRow{
        Token::SetMotor, Opcode::SetMotor, {Source::Value1, Source::Value2, Source::Operand3}},
    DeviceRow{
        Token::SetServo, Opcode::SetServo, {Source::Value1, Source::Value2, Source::Operand3}},
    DeviceRow{Token::SetServoPercent,
              Opcode::SetServoPercent,
              {Source::Value1, Source::Value2, Source::Operand3}},
    DeviceRow{Token::CalibrateJoystick,
              Opcode::CalibrateJoystick,
              {Source::NamedValue1, Source::NamedValue2, Source::Operand3}},
    DeviceRow{Token::SetPort, Opcode::SetActionPort, {Source::NamedValue1, Source::NamedValue2}},
    DeviceRow{Token::PlaySound, Opcode::PlaySound, {Source::Value1, Source::Value2}},
    DeviceRow{Token::PlayTune, Opcode::PlayTune, {Source::Operand1}},
    DeviceRow{Token::DisplayHex, Opcode::DisplayHex, {Source::Operand1}},
    DeviceRow{Token::Display, Opcode::DisplayNumber, {Source::Operand1}},
    DeviceRow{Token::Wait, Opcode::WaitForTime, {Source::Operand1}},
    DeviceRow{Token::SetEvent, Opcode::SetEventWatch, {Source::Value1, Source::Operand2}},
    DeviceRow{Token::ClearEvent, Opcode::RemoveEventWatch, {Source::Operand1}},
    DeviceRow{Token::RaiseEvent, Opcode::RaiseEvent, {Source::NamedValue1}},
    DeviceRow{Token::Battery, Opcode::ReadBattery, {Source::Target}},
    DeviceRow{Token::AddressOf, Opcode::SetDataPointer, {Source::Target, Source::Operand1}},
    DeviceRow{Token::Digital, Opcode::ReadDigitalInput, {Source::Value1, Source::Target}},
    DeviceRow{Token::Analog, Opcode::ReadAnalogInput, {Source::NamedValue1, Source::Target}},
    DeviceRow{Token::Timed,
              Opcode::ReadTimedInput,
              {Source::NamedValue1, Source::Target, Source::Scratch}},
    DeviceRow{Token::PulseLength,
              Opcode::ReadTimedInput,
              {Source::NamedValue1, Source::Target, Source::Scratch}},
    DeviceRow{Token::ProgramNumber, Opcode::GetProgramNumber, {Source::Target}},
    DeviceRow{Token::Button, Opcode::ReadButton, {Source::NamedValue1, Source::Target}},
    DeviceRow{
        Token::PulseCount, Opcode::ReadPulseCountDigital, {Source::NamedValue1, Source::Target}},
    DeviceRow{
        Token::TimedPulseCount, Opcode::ReadPulseCountTimed, {Source::NamedValue1, Source::Target}},
    DeviceRow{
        Token::ToByte, Opcode::ConvertWord, {Source::Operand1, Source::Target, Source::Scratch}},
    DeviceRow{
        Token::LowByte, Opcode::ConvertWord, {Source::Operand1, Source::Target, Source::Scratch}},
    DeviceRow{Token::ToWord, Opcode::ConvertByte, {Source::Operand1, Source::Target}},
    DeviceRow{Token::Random, Opcode::RandomizeByte, {Source::Target}},
    DeviceRow{Token::Clock, Opcode::GetClockTicks, {Source::Target}},
};

/// The instructions that come in two sizes. The size is that of the last argument.
struct SizedRow {
    Token token;
    Opcode byteForm;
    Opcode wordForm;
    std::array<Source, 2> arguments{};
};

constexpr std::array kSized{
    SizedRow{Token::Push, Opcode::PushByte, Opcode::PushWord, {Source::Operand1}},
    SizedRow{Token::Pop, Opcode::PopByte, Opcode::PopWord, {Source::Target}},
    SizedRow{Token::Write,
             Opcode::WriteDataByte,
             Opcode::WriteDataWord,
             {Source::Operand1, Source::Operand2}},
    SizedRow{Token::Read,
             Opcode::ReadDataByte,
             Opcode::ReadDataWord,
             {Source::Operand1, Source::Target}},
    SizedRow{Token::Increment, Opcode::IncrementByte, Opcode::IncrementWord, {Source::Operand1}},
    SizedRow{Token::Decrement, Opcode::DecrementByte, Opcode::DecrementWord, {Source::Operand1}},
};

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

const Label* ArgumentFrom(Compilation& compilation, const SourceLine& line, Source source) {
    if (source == Source::Scratch) return &compilation.symbols.ScratchOne();
    const LineElement& element = ElementFrom(compilation, line, source);
    if (source == Source::Value1 || source == Source::Value2) {
        return ValueArgument(compilation, *element.constant, element.constant->value);
    }
    if (source == Source::NamedValue1 || source == Source::NamedValue2) {
        return ValueArgument(compilation, *element.constant, element.Name());
    }
    return element.location;
}

void AppendFrom(Compilation& compilation, SourceLine& line, Opcode opcode,
                std::span<const Source> sources) {
    std::array<const Label*, kMaxArguments> arguments{};
    std::size_t count = 0;
    while (count < sources.size() && sources[count] != Source::None) {
        arguments[count] = ArgumentFrom(compilation, line, sources[count]);
        ++count;
    }
    compilation.objectLines.push_back(CreateObjectLine(opcode, line, ObjectComment::SourceLine,
                                                       std::span(arguments).first(count)));
}

template <typename Table>
const auto& RowOf(const Table& table, Token token) {
    const auto* row = std::find_if(table.begin(), table.end(),
                                   [&](const auto& candidate) { return candidate.token == token; });
    assert(row != table.end());
    return *row;
}

}  // namespace

void GenerateDevice(Compilation& compilation, SourceLine& line) {
    const DeviceRow& row = RowOf(kDevices, line.token);
    AppendFrom(compilation, line, row.opcode, row.arguments);
}

void GenerateSized(Compilation& compilation, SourceLine& line) {
    const SizedRow& row = RowOf(kSized, line.token);
    const Source last = row.arguments[1] == Source::None ? row.arguments[0] : row.arguments[1];
    const bool isByte = IsByteSized(ElementFrom(compilation, line, last).type);
    AppendFrom(compilation, line, isByte ? row.byteForm : row.wordForm, row.arguments);
}

void GenerateJoystick(Compilation& compilation, SourceLine& line) {
    const bool isFirst = NumberOf(Operand(compilation, line, 0).constant->value) == 1;
    Append(compilation, line, isFirst ? Opcode::ReadJoystickOne : Opcode::ReadJoystickTwo,
           ObjectComment::SourceLine,
           {ArgumentFrom(compilation, line, Source::NamedValue2),
            Target(compilation, line).location, &compilation.symbols.ScratchOne()});
}

void GenerateSetLeds(Compilation& compilation, SourceLine& line) {
    Append(compilation, line, Opcode::SetLeftLed, ObjectComment::SourceLine,
           {Operand(compilation, line, 0).location});
    Append(compilation, line, Opcode::SetRightLed, ObjectComment::SourceLine,
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
