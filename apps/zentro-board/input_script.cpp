#include "apps/zentro-board/input_script.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "apps/zentro-board/text_file.h"

namespace zentro {

namespace {

/// The inputs of one kind: "digital1" to "digital4" and so on. A count of 0 stands for one input
/// whose name has no number.
struct InputKind {
    std::string_view name;
    std::size_t count;
    unsigned largest;
    void (*set)(Inputs& inputs, std::size_t index, unsigned value);
    std::optional<world::InputKind> fed = {};  ///< what a world calls it
};

std::uint8_t Byte(unsigned value) {
    return static_cast<std::uint8_t>(value);
}

std::uint16_t Word(unsigned value) {
    return static_cast<std::uint16_t>(value);
}

constexpr InputKind kInputKinds[] = {
    {"digital", 4, 1, [](Inputs& in, std::size_t i, unsigned v) { in.digital[i] = v != 0; },
     world::InputKind::Digital},
    {"button", 6, 1, [](Inputs& in, std::size_t i, unsigned v) { in.buttons[i] = v != 0; },
     world::InputKind::Button},
    {"analog", 6, 255, [](Inputs& in, std::size_t i, unsigned v) { in.analog[i] = Byte(v); },
     world::InputKind::Analog},
    {"timed", 4, 65535, [](Inputs& in, std::size_t i, unsigned v) { in.timed[i] = Word(v); }},
    {"pulses", 4, 65535,
     [](Inputs& in, std::size_t i, unsigned v) { in.pulses[i] = Word(in.pulses[i] + v); },
     world::InputKind::Pulses},
    {"stickx", 2, 255, [](Inputs& in, std::size_t i, unsigned v) { in.joysticks[i].x = Byte(v); }},
    {"sticky", 2, 255, [](Inputs& in, std::size_t i, unsigned v) { in.joysticks[i].y = Byte(v); }},
    {"battery", 0, 255, [](Inputs& in, std::size_t, unsigned v) { in.battery = Byte(v); }},
    {"program", 0, 255, [](Inputs& in, std::size_t, unsigned v) { in.programNumber = Byte(v); }},
};

struct NamedInput {
    const InputKind* kind;
    std::size_t index;
};

std::optional<NamedInput> FindInput(std::string_view name) {
    for (const InputKind& kind : kInputKinds) {
        if (!name.starts_with(kind.name)) continue;
        const std::string_view rest = name.substr(kind.name.size());
        if (kind.count == 0 && rest.empty()) return NamedInput{&kind, 0};
        const auto number = ReadNumber(rest, kind.count);
        if (number && *number > 0) return NamedInput{&kind, *number - 1};
    }
    return std::nullopt;
}

std::vector<std::string_view> SplitWords(std::string_view line) {
    std::vector<std::string_view> words = SplitFields(line, ' ');
    std::erase_if(words, [](std::string_view word) { return word.empty(); });
    return words;
}

/// Adds what a line says. Returns what is wrong with it.
std::string ParseLine(std::string_view line, std::vector<InputChange>& changes) {
    const std::vector<std::string_view> words = SplitWords(line);
    if (words.empty() || words[0].starts_with(';')) return {};
    if (words.size() != 3) return "write a time in ticks, an input and its value";
    const auto tick = ReadNumber(words[0], std::numeric_limits<std::uint32_t>::max());
    if (!tick) return std::string(words[0]) + " is no time in ticks";
    const auto input = FindInput(words[1]);
    if (!input) return std::string("there is no input ").append(words[1]);
    std::optional<world::InputId> fed;
    if (input->kind->fed) fed = world::InputId{*input->kind->fed, input->index};
    if (fed && words[2] == "world") {
        changes.push_back({*tick, input->kind->set, input->index, 0, fed, true});
        return {};
    }
    const auto value = ReadNumber(words[2], input->kind->largest);
    if (!value)
        return std::string(words[1]) + " must be a number from 0 to " +
               std::to_string(input->kind->largest);
    changes.push_back({*tick, input->kind->set, input->index, static_cast<unsigned>(*value), fed});
    return {};
}

}  // namespace

InputScript ParseInputScript(std::string_view text) {
    InputScript script;
    std::size_t number = 0;
    for (std::string_view line : SplitLines(text)) {
        ++number;
        const std::string wrong = ParseLine(line, script.changes);
        if (wrong.empty()) continue;
        script.error = "line " + std::to_string(number) + ": " + wrong;
        return script;
    }
    std::ranges::stable_sort(script.changes, {}, &InputChange::tick);
    return script;
}

}  // namespace zentro
