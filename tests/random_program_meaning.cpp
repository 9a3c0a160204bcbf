#include "tests/random_program_meaning.h"

#include <algorithm>

namespace zentro::test {

const std::vector<Melody>& Melodies() {
    static const std::vector<Melody> kMelodies{
        {"Song", {{60, 2}, {64, 0}, {67, 30}, {67, 1}}},
        {"Beep", {{255, 255}}},
        {"Silence", {}},
    };
    return kMelodies;
}

std::uint8_t State::PopByte() {
    const std::uint8_t byte = stack.back();
    stack.pop_back();
    return byte;
}

void State::Push(Type type, unsigned value) {
    if (type == Type::Pointer) return pointerStack.push_back(value);
    stack.push_back(static_cast<std::uint8_t>(value));
    if (type == Type::Word) stack.push_back(static_cast<std::uint8_t>(value / 256));
}

unsigned State::Pop(Type type) {
    if (type == Type::Pointer) {
        const unsigned pointer = pointerStack.back();
        pointerStack.pop_back();
        return pointer;
    }
    const unsigned first = PopByte();
    return type == Type::Word ? first * 256 + PopByte() : first;
}

void State::HappenEvent(unsigned number) {
    constexpr std::size_t kMostThatWait = 32;
    if (!handlers.contains(number) || mode == EventMode::Disabled) return;
    if (waiting.size() == kMostThatWait) {
        ++dropped;
        return;
    }
    waiting.push_back(number);
}

void State::RaiseEvent(unsigned number) {
    HappenEvent(number);
    TakeEvents();
}

void State::SetMode(EventMode next) {
    modeAfterHandler = next;
    if (!isInHandler) mode = next;
    TakeEvents();
}

/// What happens during a handler comes after it.
void State::TakeEvents() {
    while (mode == EventMode::Enabled && !isInHandler && !waiting.empty()) {
        const unsigned number = waiting.front();
        waiting.pop_front();
        if (!handlers.contains(number)) continue;
        isInHandler = true;
        calls.emplace_back();
        (*handlers[number])(*this);
        calls.pop_back();
        isInHandler = false;
        mode = modeAfterHandler;
    }
}

/// A note that begins is told even if the one before was the same; silence only once.
void State::StartNote(unsigned note, unsigned length) {
    if (note != 0) outputs["note"].clear();
    SetOutput("note", std::to_string(note) + " " + std::to_string(length));
    noteEnd = clock + length;
}

void State::PlayNote(unsigned note, unsigned length) {
    melody = nullptr;
    const bool sounds = note != 0 && length != 0;
    StartNote(sounds ? note : 0, sounds ? length : 0);
}

void State::PlayMelody(const Melody& tune) {
    melody = &tune;
    nextNote = 0;
    ContinueMelody();
}

void State::ContinueMelody() {
    if (melody == nullptr || nextNote == melody->notes.size()) return PlayNote(0, 0);
    const auto& [note, length] = melody->notes[nextNote++];
    StartNote(note, std::max(length, 1U));
}

void State::Tick() {
    constexpr std::array<std::pair<unsigned, unsigned>, 3> kTimeEvents{
        {{25, 100}, {26, 1000}, {27, 6000}}};
    ++clock;
    if (outputs["note"] != "0 0" && clock >= noteEnd) ContinueMelody();
    for (const auto& [number, ticks] : kTimeEvents) {
        if (clock % ticks == 0) HappenEvent(number);
    }
    TakeEvents();
}

void State::Wait(unsigned ticks) {
    const unsigned end = clock + ticks;
    while (clock < end)
        Tick();
}

void State::PutOutputsToRest() {
    for (const char* motor : {"motor 1", "motor 2", "motor 3", "motor 4"})
        SetOutput(motor, "F 0");
    for (const char* servo : {"servo 1", "servo 2", "servo 3"})
        SetOutput(servo, "F 0");
    for (const char* output : {"port 1", "port 2", "port 3", "led 1", "led 2"})
        SetOutput(output, "0");
    SetOutput("display", "dark");
    PlayNote(0, 0);
}

}  // namespace zentro::test
