#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "comms/terminal_session.h"

namespace zentro {

inline constexpr std::size_t kMotors = 4;
inline constexpr std::size_t kServos = 2;
inline constexpr std::size_t kActionPorts = 3;
inline constexpr int kMaxSpeed = 100;
inline constexpr int kMaxPosition = 90;

/// Which option of a motor or servo is chosen. Rest is a motor's off, a servo's centre.
enum class DriveOption : std::uint8_t { Rest, Forward, Back };

struct DriveControl {
    DriveOption option = DriveOption::Rest;
    int value = 0;        ///< of the scroll bar: speed or position
    bool active = false;  ///< MotorActive, ServoActive: a forward or back command was the last one
};

/// The panel that drives the board's outputs by hand: its state and the commands that follow from
/// what is clicked. Numbers count from 1.
class ManualControls {
  public:
    /// The session outlives this object.
    explicit ManualControls(TerminalSession& session) : session_(session) {}

    void ChooseMotor(int number, DriveOption option);
    void ChangeMotorSpeed(int number, int speed);
    void ChooseServo(int number, DriveOption option);
    void ChangeServoPosition(int number, int position);
    void SwitchAction(int number, bool on);
    void Run();
    /// Starts or ends the report of the inputs.
    void ToggleScan();
    /// Stops the program and puts every control to rest.
    void Stop();

    const DriveControl& Motor(int number) const {
        return motors_.at(static_cast<std::size_t>(number) - 1);
    }
    const DriveControl& Servo(int number) const {
        return servos_.at(static_cast<std::size_t>(number) - 1);
    }
    bool Action(int number) const { return actions_.at(static_cast<std::size_t>(number) - 1); }
    bool IsScanning() const { return scanning_; }

  private:
    TerminalSession& session_;
    std::array<DriveControl, kMotors> motors_{};
    std::array<DriveControl, kServos> servos_{};
    std::array<bool, kActionPorts> actions_{};
    bool scanning_ = false;
};

}  // namespace zentro
