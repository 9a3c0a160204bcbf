#pragma once

#include <QObject>
#include <array>
#include <cstdint>
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

/// The panel that drives the board's outputs by hand: the commands that follow from what is
/// clicked, and its state, which is what the board was told. Numbers count from 1.
class ManualControls : public QObject {
    Q_OBJECT

  public:
    /// The session outlives this object.
    explicit ManualControls(TerminalSession& session);

    void ChooseMotor(int number, DriveOption option);
    void ChangeMotorSpeed(int number, int speed);
    void ChooseServo(int number, DriveOption option);
    void ChangeServoPosition(int number, int position);
    void SwitchAction(int number, bool on);
    void Run();
    /// Starts or ends the report of the inputs.
    void ToggleScan();
    /// Stops the program and puts every control to rest. What a board in debug mode is not told it
    /// is told when its prompt has gone.
    void Stop();

    const DriveControl& Motor(int number) const {
        return motors_.at(static_cast<std::size_t>(number) - 1);
    }
    const DriveControl& Servo(int number) const {
        return servos_.at(static_cast<std::size_t>(number) - 1);
    }
    bool Action(int number) const { return actions_.at(static_cast<std::size_t>(number) - 1); }
    bool IsScanning() const { return scanning_; }

  signals:
    /// The board was told something by somebody else, or later than it was asked for.
    void Changed();

  private:
    void PutAllToRest();
    void RestWhenPromptHasGone();
    void HearLine(const std::string& line);
    void EndScan();

    TerminalSession& session_;
    std::array<DriveControl, kMotors> motors_{};
    std::array<DriveControl, kServos> servos_{};
    std::array<bool, kActionPorts> actions_{};
    bool scanning_ = false;
    bool stopping_ = false;
    bool restWanted_ = false;  ///< after a stop, until every control is at rest
};

}  // namespace zentro
