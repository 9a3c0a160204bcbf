#include "recording/action.h"

#include <algorithm>
#include <array>
#include <limits>

#include "config/text_lines.h"

namespace zentro {

namespace {

/// The inputs of one kind. A count of 0 stands for one input whose name has no number.
struct InputRow {
    std::string_view name;
    std::size_t count;
    void (*set)(Inputs& inputs, std::size_t index, unsigned value);
    unsigned largest;
    InputField field;
    std::optional<world::InputKind> fed = {};  ///< what a world calls it
};

std::uint8_t Byte(unsigned value) {
    return static_cast<std::uint8_t>(value);
}

std::uint16_t Word(unsigned value) {
    return static_cast<std::uint16_t>(value);
}

constexpr InputRow kInputs[] = {
    {"digital", 4, [](Inputs& in, std::size_t i, unsigned v) { in.digital[i] = v != 0; }, 1,
     InputField::Digital, world::InputKind::Digital},
    {"button", 6, [](Inputs& in, std::size_t i, unsigned v) { in.buttons[i] = v != 0; }, 1,
     InputField::Button, world::InputKind::Button},
    {"analog", 6, [](Inputs& in, std::size_t i, unsigned v) { in.analog[i] = Byte(v); }, 255,
     InputField::Analog, world::InputKind::Analog},
    {"timed", 4, [](Inputs& in, std::size_t i, unsigned v) { in.timed[i] = Word(v); }, 65535,
     InputField::Timed},
    {"pulses", 4,
     [](Inputs& in, std::size_t i, unsigned v) { in.pulses[i] = Word(in.pulses[i] + v); }, 65535,
     InputField::Pulses, world::InputKind::Pulses},
    {"stickx", 2, [](Inputs& in, std::size_t i, unsigned v) { in.joysticks[i].x = Byte(v); }, 255,
     InputField::StickX},
    {"sticky", 2, [](Inputs& in, std::size_t i, unsigned v) { in.joysticks[i].y = Byte(v); }, 255,
     InputField::StickY},
    {"battery", 0, [](Inputs& in, std::size_t, unsigned v) { in.battery = Byte(v); }, 255,
     InputField::Battery},
    {"program", 0, [](Inputs& in, std::size_t, unsigned v) { in.programNumber = Byte(v); }, 255,
     InputField::Program},
};

/// What is done to the whole board instead of to one input.
struct PaceRow {
    std::string_view name;
    ActionKind kind;
};

constexpr std::array<PaceRow, 2> kPaces{{{"pace", ActionKind::Pace}, {"step", ActionKind::Step}}};

const InputRow& RowOf(const InputPlace& place) {
    return kInputs[static_cast<std::size_t>(place.field)];
}

std::optional<InputPlace> InputNamed(std::string_view name) {
    for (const InputRow& row : kInputs) {
        if (!name.starts_with(row.name)) continue;
        const std::string_view rest = name.substr(row.name.size());
        if (row.count == 0 && rest.empty()) return InputPlace{row.field, 0};
        const auto number = ReadNumber(rest, row.count);
        if (number && *number > 0) return InputPlace{row.field, *number - 1};
    }
    return std::nullopt;
}

std::vector<std::string_view> SplitWords(std::string_view line) {
    std::vector<std::string_view> words = SplitFields(line, ' ');
    std::erase_if(words, [](std::string_view word) { return word.empty(); });
    return words;
}

/// Gives the action its value. Returns what is wrong with it.
std::string ReadValue(std::string_view name, std::string_view word, std::uint32_t largest,
                      Action& action) {
    const auto value = ReadNumber(word, largest);
    if (!value) return std::string(name) + " must be a number from 0 to " + std::to_string(largest);
    action.value = static_cast<std::uint32_t>(*value);
    return {};
}

std::string ReadWhat(std::string_view name, std::string_view value, Action& action) {
    const auto* const pace = std::ranges::find(kPaces, name, &PaceRow::name);
    if (pace != kPaces.end()) {
        action.kind = pace->kind;
        return ReadValue(name, value, kLargestPace, action);
    }
    const auto input = InputNamed(name);
    if (!input) return std::string("there is no input ").append(name);
    action.input = *input;
    if (value == "world" && FedInput(*input)) {
        action.kind = ActionKind::LetGo;
        return {};
    }
    action.kind = ActionKind::SetInput;
    return ReadValue(name, value, RowOf(*input).largest, action);
}

}  // namespace

std::string InputName(const InputPlace& place) {
    const InputRow& row = RowOf(place);
    std::string name(row.name);
    return row.count == 0 ? name : name + std::to_string(place.index + 1);
}

void SetInput(Inputs& inputs, const InputPlace& place, unsigned value) {
    RowOf(place).set(inputs, place.index, value);
}

std::optional<world::InputId> FedInput(const InputPlace& place) {
    const std::optional<world::InputKind> kind = RowOf(place).fed;
    if (!kind) return std::nullopt;
    return world::InputId{*kind, place.index};
}

std::optional<Action> ParseAction(std::string_view line, std::string& error) {
    const std::vector<std::string_view> words = SplitWords(line);
    if (words.size() != 3) {
        error = "write a time in ticks, an input and its value";
        return std::nullopt;
    }
    Action action;
    const auto tick = ReadNumber(words[0], std::numeric_limits<std::uint32_t>::max());
    if (tick) {
        action.tick = *tick;
        error = ReadWhat(words[1], words[2], action);
    } else {
        error = std::string(words[0]) + " is no time in ticks";
    }
    if (!error.empty()) return std::nullopt;
    return action;
}

std::string FormatAction(const Action& action) {
    const std::string tick = std::to_string(action.tick) + ' ';
    const std::string value = ' ' + std::to_string(action.value);
    const auto* const pace = std::ranges::find(kPaces, action.kind, &PaceRow::kind);
    if (pace != kPaces.end()) return tick + std::string(pace->name) + value;
    const bool letsGo = action.kind == ActionKind::LetGo;
    return tick + InputName(action.input) + (letsGo ? " world" : value);
}

InputScript ParseInputScript(std::string_view text) {
    InputScript script;
    std::size_t number = 0;
    for (std::string_view line : SplitLines(text)) {
        ++number;
        const std::vector<std::string_view> words = SplitWords(line);
        if (words.empty() || words[0].starts_with(';')) continue;
        std::string wrong;
        if (const auto action = ParseAction(line, wrong)) {
            script.actions.push_back(*action);
            continue;
        }
        script.error = "line " + std::to_string(number) + ": " + wrong;
        return script;
    }
    std::ranges::stable_sort(script.actions, {}, &Action::tick);
    return script;
}

}  // namespace zentro
