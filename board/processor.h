#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "board/memory.h"

namespace zentro {

struct Board;

inline constexpr std::uint16_t kReturnStackSize = 256;

/// How the last program came to its end.
enum class EndReason : std::uint8_t {
    None,  ///< none has run, or one is running
    End,
    EmergencyStop,
    PowerOff,
    Escape,
    Fault,
    Stopped,  ///< from outside
};

/// What a program waits for before its next instruction.
struct Wait {
    enum class Kind : std::uint8_t { None, Time, Event };

    Kind kind = Kind::None;
    std::uint64_t until = 0;  ///< the tick at which a wait for time ends

    bool operator==(const Wait&) const = default;
};

/// Where a program stands in the board's debug mode.
enum class DebugState : std::uint8_t {
    Off,
    BeforePrompt,  ///< the next instruction has not been shown yet
    AtPrompt,      ///< it was shown, and the board waits for a command
    Stepping,      ///< it is to be carried out
};

/// The part of the board that runs programs.
struct Processor {
    bool running = false;
    DebugState debug = DebugState::Off;
    EndReason end = EndReason::None;
    Fault fault = Fault::None;  ///< the last fault of the program
    Wait wait;
    std::uint32_t address = 0;             ///< of the next instruction; may lie just behind memory
    std::uint32_t instruction = 0;         ///< where the program failed, ended or drove a device
    std::uint32_t programSize = 0;         ///< bytes loaded from address 0 on
    std::uint32_t stackTop = kMemorySize;  ///< of the data stack, which grows down
    std::array<std::uint16_t, kReturnStackSize> returnStack{};
    std::uint16_t returnDepth = 0;
    std::optional<std::uint16_t> errorRoutine;  ///< of ON ERROR CALL
    std::uint64_t steps = 0;                    ///< instructions since the start of the program

    bool operator==(const Processor&) const = default;
};

/// Starts the loaded program at address 0, or says on the serial line that there is none.
void StartProgram(Board& board, DebugState debug = DebugState::Off);

/// Goes back to address 0 with both stacks and all events cleared; memory and outputs stay.
void RestartProgram(Board& board);

/// Ends the program, if one runs, and says so on the serial line.
void EndProgram(Board& board, EndReason reason);

/// The present instruction cannot be carried out: its program ends, or calls its error routine.
void Fail(Board& board, Fault fault);

/// Whether something other than the next instruction comes first: a wait, an event, the end.
bool MustPause(const Board& board);

/// Ends a wait whose time has come and enters the handler of an event whose turn it is. Returns
/// whether an instruction can be carried out now.
bool ReadyForInstruction(Board& board);

/// Carries out at most `budget` instructions without looking at debug mode, fewer if it must pause.
/// Returns how many.
std::uint64_t ExecuteInstructions(Board& board, std::uint64_t budget);

/// Runs the program, in debug mode or not, for at most `budget` instructions of the present tick.
/// Returns how many were carried out; fewer than the budget when the program waits or has ended.
std::uint64_t RunInstructions(Board& board, std::uint64_t budget);

}  // namespace zentro
