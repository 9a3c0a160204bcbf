#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zentro {

struct Board;

/// The ways of a joystick, each 0 to 255; 128 is the middle.
struct StickPosition {
    std::uint8_t x = 128;
    std::uint8_t y = 128;

    bool operator==(const StickPosition&) const = default;
};

/// What the world does to the board. Input 1 stands at index 0.
struct Inputs {
    std::array<bool, 4> digital{};
    std::array<bool, 6> buttons{};
    std::array<std::uint8_t, 6> analog{};
    std::array<std::uint16_t, 4> timed{};   ///< the length of the last pulse, in ticks
    std::array<std::uint16_t, 4> pulses{};  ///< all pulses so far; only the difference counts
    std::array<StickPosition, 2> joysticks{};
    std::uint8_t battery = 255;  ///< full
    std::uint8_t programNumber = 1;

    bool operator==(const Inputs&) const = default;
};

inline constexpr char kForward = 'F';
inline constexpr char kBackward = 'B';

/// A motor (value: speed in percent) or a servo (value: degrees away from its centre).
struct Drive {
    char direction = kForward;
    std::uint8_t value = 0;

    bool operator==(const Drive&) const = default;
};

struct Display {
    enum class Form : std::uint8_t { Dark, Number, Hex };

    Form form = Form::Dark;
    std::uint8_t value = 0;

    bool operator==(const Display&) const = default;
};

/// What the board does to the world. Output 1 stands at index 0.
struct Outputs {
    std::array<Drive, 4> motors{};
    std::array<Drive, 3> servos{};
    std::array<bool, 3> ports{};
    std::array<bool, 2> leds{};  ///< left, right
    Display display;
    std::uint8_t note = 0;  ///< 0 is silence

    bool operator==(const Outputs&) const = default;
};

enum class OutputKind : std::uint8_t { Motor, Servo, Port, Led, Display, Note, Transmit };

/// One change of an output. The fields that its kind does not need are 0.
struct OutputChange {
    std::uint64_t tick = 0;
    OutputKind kind{};
    std::uint8_t number = 0;  ///< of the motor, servo, port or LED (1 left, 2 right)
    std::uint8_t value = 0;   ///< speed, position, 0 or 1, number shown, note, character
    char direction = 0;       ///< of a motor or servo
    std::uint8_t length = 0;  ///< of a note, in ticks
    Display::Form form{};     ///< of the display

    bool operator==(const OutputChange&) const = default;
};

/// What the board remembers of its inputs and of its sound.
struct Devices {
    std::array<StickPosition, 2> stickRest{};        ///< where the joysticks stand at rest
    std::array<std::uint8_t, 6> analogReference{};   ///< at the last change that was an event
    std::array<std::uint16_t, 4> pulsesAtStart{};    ///< of the program
    std::array<std::uint16_t, 4> pulsesAtSecond{};   ///< when the present second began
    std::array<std::uint8_t, 4> pulsesLastSecond{};  ///< at most 255
    std::array<bool, 6> buttonsSeen{};  ///< the program has read it since it was pressed
    std::uint64_t noteEnd = 0;          ///< the tick at which the note ends
    std::optional<std::uint32_t> tune;  ///< where the tune goes on

    bool operator==(const Devices&) const = default;
};

/// Takes over new inputs and makes the events happen that follow, in the order of their numbers.
void SetInputs(Board& board, const Inputs& inputs);

/// A program starts: its pulse counts begin at 0 and analogue changes count from here.
void ForgetInputHistory(Board& board);

// Outputs. A number or direction that does not exist changes nothing. A change that changes
// something is added to the board's queue of changes.

void SetMotor(Board& board, unsigned number, unsigned direction, unsigned speed);
void SetServo(Board& board, unsigned number, unsigned direction, unsigned position);
void SetPort(Board& board, unsigned number, bool on);
void SetLed(Board& board, unsigned number, bool on);
void ShowOnDisplay(Board& board, Display display);

/// Starts a note, which ends a tune; no note or no length gives silence.
void PlayNote(Board& board, unsigned note, unsigned length);
/// Starts the tune at an address: pairs of note and length up to a note of 0.
void PlayTune(Board& board, std::uint32_t address);

void StopMotors(Board& board);
/// Motors off, servos to their centre, ports and LEDs off, display dark, no sound.
void PutOutputsToRest(Board& board);

/// What passes with a tick: notes end, tunes go on, the pulses of a second are counted.
void AdvanceDevices(Board& board);

}  // namespace zentro
