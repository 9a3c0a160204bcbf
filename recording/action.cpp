#include "recording/action.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "config/text_lines.h"

namespace zentro {

namespace {

/// The inputs of one kind. A count of 0 stands for one input whose name has no number.
struct InputRow {
    std::string_view name;
    std::size_t count;
    void (*set)(Inputs& inputs, std::size_t index, unsigned value);
    unsigned (*get)(const Inputs& inputs, std::size_t index);
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

using In = const Inputs&;

constexpr InputRow kInputs[] = {
    {"digital", 4, [](Inputs& in, std::size_t i, unsigned v) { in.digital[i] = v != 0; },
     [](In in, std::size_t i) { return in.digital[i] ? 1U : 0U; }, 1, InputField::Digital,
     world::InputKind::Digital},
    {"button", 6, [](Inputs& in, std::size_t i, unsigned v) { in.buttons[i] = v != 0; },
     [](In in, std::size_t i) { return in.buttons[i] ? 1U : 0U; }, 1, InputField::Button,
     world::InputKind::Button},
    {"analog", 6, [](Inputs& in, std::size_t i, unsigned v) { in.analog[i] = Byte(v); },
     [](In in, std::size_t i) { return unsigned{in.analog[i]}; }, 255, InputField::Analog,
     world::InputKind::Analog},
    {"timed", 4, [](Inputs& in, std::size_t i, unsigned v) { in.timed[i] = Word(v); },
     [](In in, std::size_t i) { return unsigned{in.timed[i]}; }, 65535, InputField::Timed},
    {"pulses", 4,
     [](Inputs& in, std::size_t i, unsigned v) { in.pulses[i] = Word(in.pulses[i] + v); },
     [](In in, std::size_t i) { return unsigned{in.pulses[i]}; }, 65535, InputField::Pulses,
     world::InputKind::Pulses},
    {"stickx", 2, [](Inputs& in, std::size_t i, unsigned v) { in.joysticks[i].x = Byte(v); },
     [](In in, std::size_t i) { return unsigned{in.joysticks[i].x}; }, 255, InputField::StickX},
    {"sticky", 2, [](Inputs& in, std::size_t i, unsigned v) { in.joysticks[i].y = Byte(v); },
     [](In in, std::size_t i) { return unsigned{in.joysticks[i].y}; }, 255, InputField::StickY},
    {"battery", 0, [](Inputs& in, std::size_t, unsigned v) { in.battery = Byte(v); },
     [](In in, std::size_t) { return unsigned{in.battery}; }, 255, InputField::Battery},
    {"program", 0, [](Inputs& in, std::size_t, unsigned v) { in.programNumber = Byte(v); },
     [](In in, std::size_t) { return unsigned{in.programNumber}; }, 255, InputField::Program},
};

/// What is done with a number to the whole board instead of to one input.
struct NumberRow {
    std::string_view name;
    ActionKind kind;
    std::uint32_t largest;
};

constexpr std::array<NumberRow, 3> kNumbers{{{"pace", ActionKind::Pace, kLargestPace},
                                             {"step", ActionKind::Step, kLargestPace},
                                             {"receive", ActionKind::Receive, 255}}};

/// What is done at once, in two words.
struct WordRow {
    std::string_view name;
    std::string_view value;
    ActionKind kind;
};

constexpr std::array<WordRow, 3> kWords{{{"stop", "program", ActionKind::StopProgram},
                                         {"stop", "all", ActionKind::StopAll},
                                         {"robot", "start", ActionKind::RobotToStart}}};

constexpr std::string_view kRobot = "robot";
constexpr double kFarthest = 100'000;  // of a robot; what is farther is no place

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

bool ReadPlace(std::string_view word, world::Pose& robot) {
    const std::vector<std::string_view> fields = SplitFields(word, ',');
    const std::array<double*, 3> parts{&robot.place.x, &robot.place.y, &robot.heading};
    if (fields.size() != parts.size()) return false;
    for (std::size_t index = 0; index < parts.size(); ++index) {
        const char* const end = fields[index].data() + fields[index].size();
        const auto [stop, error] = std::from_chars(fields[index].data(), end, *parts[index]);
        if (error != std::errc{} || stop != end || !(std::abs(*parts[index]) <= kFarthest))
            return false;
    }
    return true;
}

/// Gives the action what two words say. False: they are none of its.
bool ReadWords(std::string_view name, std::string_view value, Action& action, std::string& error) {
    const auto* const word = std::ranges::find_if(
        kWords, [&](const WordRow& row) { return row.name == name && row.value == value; });
    if (word != kWords.end()) {
        action.kind = word->kind;
        return true;
    }
    if (name != kRobot) return false;
    action.kind = ActionKind::PlaceRobot;
    if (!ReadPlace(value, action.robot))
        error = "a robot is put to its start, or to x,y,heading in centimetres and radians";
    return true;
}

std::string ReadWhat(std::string_view name, std::string_view value, Action& action) {
    const auto* const number = std::ranges::find(kNumbers, name, &NumberRow::name);
    if (number != kNumbers.end()) {
        action.kind = number->kind;
        return ReadValue(name, value, number->largest, action);
    }
    std::string error;
    if (ReadWords(name, value, action, error)) return error;
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

/// The shortest text that is read as the same number.
std::string Exactly(double number) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
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

unsigned InputValue(const Inputs& inputs, const InputPlace& place) {
    return RowOf(place).get(inputs, place.index);
}

std::vector<InputPlace> AllInputs() {
    std::vector<InputPlace> places;
    for (const InputRow& row : kInputs) {
        for (std::size_t index = 0; index < std::max<std::size_t>(row.count, 1); ++index) {
            places.push_back({row.field, index});
        }
    }
    return places;
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
    const auto* const number = std::ranges::find(kNumbers, action.kind, &NumberRow::kind);
    if (number != kNumbers.end()) return tick + std::string(number->name) + value;
    const auto* const word = std::ranges::find(kWords, action.kind, &WordRow::kind);
    if (word != kWords.end())
        return tick + std::string(word->name) + ' ' + std::string(word->value);
    if (action.kind == ActionKind::PlaceRobot) {
        const world::Pose& robot = action.robot;
        return tick + std::string(kRobot) + ' ' + Exactly(robot.place.x) + ',' +
               Exactly(robot.place.y) + ',' + Exactly(robot.heading);
    }
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
