#pragma once

#include "board/decoded_instruction.h"

namespace zentro {

struct Board;

/// The instructions that need more of the board than its memory and stacks, one function each. The
/// processor already stands at the next instruction. They may fail, start a wait, move the
/// processor or end the program.
namespace handle {

using InstructionHandler = void (*)(Board&, const DecodedInstruction&);

// flow_instructions.cpp
void EmergencyStop(Board& board, const DecodedInstruction& instruction);
void PowerOff(Board& board, const DecodedInstruction& instruction);
void Escape(Board& board, const DecodedInstruction& instruction);
void Sleep(Board& board, const DecodedInstruction& instruction);
void End(Board& board, const DecodedInstruction& instruction);
void Reset(Board& board, const DecodedInstruction& instruction);
void GetClockTicks(Board& board, const DecodedInstruction& instruction);
void WaitForTime(Board& board, const DecodedInstruction& instruction);
void OnErrorCall(Board& board, const DecodedInstruction& instruction);

// event_instructions.cpp
void DisableEvents(Board& board, const DecodedInstruction& instruction);
void EnableEvents(Board& board, const DecodedInstruction& instruction);
void DeferEvents(Board& board, const DecodedInstruction& instruction);
void SetEventWatch(Board& board, const DecodedInstruction& instruction);
void RemoveEventWatch(Board& board, const DecodedInstruction& instruction);
void RaiseEvent(Board& board, const DecodedInstruction& instruction);
void CompleteEvent(Board& board, const DecodedInstruction& instruction);

// data_instructions.cpp
void RandomizeByte(Board& board, const DecodedInstruction& instruction);
void ReadEeprom(Board& board, const DecodedInstruction& instruction);
void WriteEeprom(Board& board, const DecodedInstruction& instruction);

// device_instructions.cpp
void ReadBattery(Board& board, const DecodedInstruction& instruction);
void Transmit(Board& board, const DecodedInstruction& instruction);
void Receive(Board& board, const DecodedInstruction& instruction);
void StopMotors(Board& board, const DecodedInstruction& instruction);
void SetMotor(Board& board, const DecodedInstruction& instruction);
void ReadJoystickOne(Board& board, const DecodedInstruction& instruction);
void ReadJoystickTwo(Board& board, const DecodedInstruction& instruction);
void CalibrateJoystick(Board& board, const DecodedInstruction& instruction);
void SetActionPort(Board& board, const DecodedInstruction& instruction);
void ReadDigitalInput(Board& board, const DecodedInstruction& instruction);
void ReadAnalogInput(Board& board, const DecodedInstruction& instruction);
void ReadTimedInput(Board& board, const DecodedInstruction& instruction);
void GetProgramNumber(Board& board, const DecodedInstruction& instruction);
void ReadButton(Board& board, const DecodedInstruction& instruction);
void ReadPulseCountDigital(Board& board, const DecodedInstruction& instruction);
void ReadPulseCountTimed(Board& board, const DecodedInstruction& instruction);
void DisplayHex(Board& board, const DecodedInstruction& instruction);
void DisplayNumber(Board& board, const DecodedInstruction& instruction);
void SetServo(Board& board, const DecodedInstruction& instruction);
void SetServoPercent(Board& board, const DecodedInstruction& instruction);
void SetLeftLed(Board& board, const DecodedInstruction& instruction);
void SetRightLed(Board& board, const DecodedInstruction& instruction);
void PlaySound(Board& board, const DecodedInstruction& instruction);
void PlayTune(Board& board, const DecodedInstruction& instruction);
void SetMotorFromVars(Board& board, const DecodedInstruction& instruction);

}  // namespace handle

}  // namespace zentro
