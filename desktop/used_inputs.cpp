#include "desktop/used_inputs.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

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

std::optional<InputGroup> GroupOf(const ObjectLine& line) {
    if (line.purpose != ObjectPurpose::Instruction) return std::nullopt;
    if (line.opcode == Opcode::SetEventWatch) {
        const std::optional<int> event = FirstArgument(line);
        const auto* found = std::ranges::find_if(kEvents, [&](const InputEvents& events) {
            return event && *event >= events.first && *event <= events.last;
        });
        return found == kEvents.end() ? std::nullopt : std::optional(found->group);
    }
    const auto* found = std::ranges::find(kReadings, line.opcode, &ReadingInstruction::opcode);
    return found == kReadings.end() ? std::nullopt : std::optional(found->group);
}

}  // namespace

std::set<InputGroup> UsedInputs(const Compilation& compilation) {
    std::set<InputGroup> used;
    for (const ObjectLine& line : compilation.objectLines) {
        if (const auto group = GroupOf(line)) used.insert(*group);
    }
    return used;
}

}  // namespace zentro
