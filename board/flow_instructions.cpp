#include "board/board.h"
#include "board/handlers.h"

namespace zentro::handle {

void EmergencyStop(Board& board, const DecodedInstruction&) {
    PutOutputsToRest(board);
    EndProgram(board, EndReason::EmergencyStop);
}

void PowerOff(Board& board, const DecodedInstruction&) {
    EndProgram(board, EndReason::PowerOff);
    PutOutputsToRest(board);
    SwitchSerialLineOff(board);
}

void Escape(Board& board, const DecodedInstruction&) {
    EndProgram(board, EndReason::Escape);
}

void End(Board& board, const DecodedInstruction&) {
    EndProgram(board, EndReason::End);
}

void Reset(Board& board, const DecodedInstruction&) {
    RestartProgram(board);
}

void Sleep(Board& board, const DecodedInstruction&) {
    board.processor.wait = {Wait::Kind::Event, 0};
}

void WaitForTime(Board& board, const DecodedInstruction& instruction) {
    const std::uint16_t ticks = board.memory.Word(instruction.a);
    if (ticks > 0) board.processor.wait = {Wait::Kind::Time, board.clock + ticks};
}

void GetClockTicks(Board& board, const DecodedInstruction& instruction) {
    board.memory.StoreWord(instruction.a, static_cast<std::uint16_t>(board.clock));
}

void OnErrorCall(Board& board, const DecodedInstruction& instruction) {
    board.processor.errorRoutine = instruction.a;
}

}  // namespace zentro::handle
