#include "desktop/used_inputs.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "model/instruction.h"
#include "model/object_line.h"

namespace zentro {

namespace {

struct ReadingInstruction {
    Opcode opcode;
    InputGroup group;
};

constexpr std::array kReadings{
    ReadingInstruction{Opcode::ReadButton, InputGroup::Buttons},
    ReadingInstruction{Opcode::ReadJoystickOne, InputGroup::Joysticks},
    ReadingInstruction{Opcode::ReadJoystickTwo, InputGroup::Joysticks},
    ReadingInstruction{Opcode::ReadAnalogInput, InputGroup::Analog},
    ReadingInstruction{Opcode::ReadDigitalInput, InputGroup::Digital},
    ReadingInstruction{Opcode::ReadTimedInput, InputGroup::PulseAndTimed},
    ReadingInstruction{Opcode::ReadPulseCountDigital, InputGroup::PulseAndTimed},
    ReadingInstruction{Opcode::ReadPulseCountTimed, InputGroup::PulseAndTimed},
    ReadingInstruction{Opcode::ReadBattery, InputGroup::BatteryAndNumber},
    ReadingInstruction{Opcode::GetProgramNumber, InputGroup::BatteryAndNumber},
};

/// The numbers of the events that an input makes happen.
struct InputEvents {
    int first;
    int last;
    InputGroup group;
};

constexpr std::array kEvents{
    InputEvents{3, 6, InputGroup::Digital},
    InputEvents{9, 14, InputGroup::Buttons},
    InputEvents{15, 20, InputGroup::Analog},
    InputEvents{21, 24, InputGroup::PulseAndTimed},
};

/// Of "83,9,0,20" the 9.
std::optional<int> FirstArgument(const ObjectLine& line) {
    const ObjectCodeText code(line);
    const std::string_view text = code.View();
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos) return std::nullopt;
    int value = 0;
    const auto [end, error] =
        std::from_chars(text.data() + comma + 1, text.data() + text.size(), value);
    return error == std::errc{} ? std::optional(value) : std::nullopt;
}

/// The input that the instruction reads or watches, with its number, or what stands in its place.
std::optional<std::pair<InputGroup, int>> InputOf(const ObjectLine& line) {
    if (line.purpose != ObjectPurpose::Instruction) return std::nullopt;
    const int argument = FirstArgument(line).value_or(0);
    if (line.opcode == Opcode::SetEventWatch) {
        const auto* found = std::ranges::find_if(kEvents, [&](const InputEvents& events) {
            return argument >= events.first && argument <= events.last;
        });
        if (found == kEvents.end()) return std::nullopt;
        return std::pair(found->group, argument - found->first + 1);
    }
    const auto* found = std::ranges::find(kReadings, line.opcode, &ReadingInstruction::opcode);
    if (found == kReadings.end()) return std::nullopt;
    return std::pair(found->group, argument);
}

bool IsNumbered(InputGroup group) {
    return group == InputGroup::Buttons || group == InputGroup::Analog ||
           group == InputGroup::Digital;
}

}  // namespace

InputUse UsedInputs(const Compilation& compilation) {
    InputUse used;
    for (const ObjectLine& line : compilation.objectLines) {
        const auto input = InputOf(line);
        if (!input) continue;
        std::set<int>& numbers = used[input->first];
        if (IsNumbered(input->first)) numbers.insert(input->second);
    }
    return used;
}

}  // namespace zentro
