#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace zentro::test {

// What a program of the language means, told without the compiler and the board.

enum class Type : std::uint8_t { Byte, Word, Flag, Pointer };

inline bool IsByteSized(Type type) {
    return type == Type::Byte || type == Type::Flag;
}

/// What a variable of the type keeps of a value.
inline unsigned Fit(Type type, unsigned value) {
    if (type == Type::Pointer) return value;
    return value & (IsByteSized(type) ? 0xFFU : 0xFFFFU);
}

struct State;
using Value = std::function<unsigned(State&)>;
using Action = std::function<void(State&)>;
using Names = std::vector<std::pair<std::string, Type>>;

/// A pointer's value: the number of a table and a place in it. Where the tables stand in the
/// board's memory is the compiler's business.
inline constexpr unsigned kTableStep = 0x10000;

/// What a call knows: its variables, and its result once it has returned.
struct Frame {
    std::map<std::string, unsigned> variables;
    bool hasReturned = false;
    unsigned result = 0;
};

enum class EventMode : std::uint8_t { Disabled, Enabled, Deferred };

enum class Ending : std::uint8_t { EndProgram, EmergencyStop, PowerOff, Escape, DivisionByZero };

/// Thrown by what ends a program, wherever it stands.
struct ProgramEnd {
    Ending ending;
};

/// The tables that tunes are played from: pairs of note and length, up to a note of 0.
struct Melody {
    const char* name;
    std::vector<std::pair<unsigned, unsigned>> notes;
};
const std::vector<Melody>& Melodies();

struct State {
    std::map<std::string, unsigned> globals;
    std::vector<Frame> calls;
    std::vector<std::vector<std::uint8_t>> tables;
    std::vector<std::uint8_t> stack;  ///< a word's low byte below its high byte
    std::vector<unsigned> pointerStack;

    std::map<std::string, std::string> outputs;  ///< as they are, by "motor 1"
    std::vector<std::string> changes;            ///< "motor 1 F 50", in order

    EventMode mode = EventMode::Disabled;
    EventMode modeAfterHandler = EventMode::Disabled;
    std::map<unsigned, const Action*> handlers;  ///< by event number
    std::deque<unsigned> waiting;
    unsigned dropped = 0;  ///< events, because too many waited
    bool isInHandler = false;
    Ending ending = Ending::EndProgram;

    unsigned clock = 0;  ///< ticks of 1/100 second
    unsigned noteEnd = 0;
    const Melody* melody = nullptr;  ///< while one is played
    std::size_t nextNote = 0;
    std::array<std::pair<unsigned, unsigned>, 2> stickRest{{{128, 128}, {128, 128}}};

    unsigned& At(const std::string& name) {
        if (!calls.empty() && calls.back().variables.contains(name))
            return calls.back().variables[name];
        return globals.at(name);
    }

    bool HasReturned() const { return !calls.empty() && calls.back().hasReturned; }

    std::uint8_t& Cell(unsigned pointer) {
        return tables.at(pointer / kTableStep).at(pointer % kTableStep);
    }

    /// An output that is given the value it has does not change.
    void SetOutput(const std::string& output, const std::string& value) {
        std::string& present = outputs[output];
        if (present == value) return;
        present = value;
        changes.push_back(output + " " + value);
    }

    void Push(Type type, unsigned value);
    unsigned Pop(Type type);

    void RaiseEvent(unsigned number);
    void SetMode(EventMode next);

    void PlayNote(unsigned note, unsigned length);
    void PlayMelody(const Melody& tune);
    /// The ticks pass, with all that happens meanwhile.
    void Wait(unsigned ticks);
    void PutOutputsToRest();

  private:
    std::uint8_t PopByte();
    void HappenEvent(unsigned number);
    void TakeEvents();
    void StartNote(unsigned note, unsigned length);
    void ContinueMelody();
    void Tick();
};

/// What the inputs show while a program runs; those not named show nothing.
struct SteadyInputs {
    static constexpr std::uint8_t kBattery = 201;
    static constexpr std::uint8_t kProgramNumber = 7;
    static constexpr std::uint8_t kAnalog6 = 133;
    static constexpr std::uint16_t kTimed4 = 300;
    static constexpr std::uint8_t kStick1X = 10;
    static constexpr std::uint8_t kStick2Y = 240;
    static constexpr std::uint8_t kPulses3 = 5;  ///< all of them before the program starts
};

/// What the outputs show before the program changes them.
inline std::map<std::string, std::string> OutputsAtRest() {
    return {{"motor 1", "F 0"},  {"motor 2", "F 0"}, {"motor 3", "F 0"}, {"motor 4", "F 0"},
            {"servo 1", "F 0"},  {"servo 2", "F 0"}, {"servo 3", "F 0"}, {"port 1", "0"},
            {"port 2", "0"},     {"port 3", "0"},    {"led 1", "0"},     {"led 2", "0"},
            {"display", "dark"}, {"note", "0 0"}};
}

}  // namespace zentro::test
