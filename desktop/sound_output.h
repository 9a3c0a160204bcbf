#pragma once

#include <QObject>
#include <QProcess>
#include <QString>
#include <QTimer>
#include <chrono>
#include <cstddef>
#include <cstdint>

#include "sound/sound_message.h"

namespace zentro {

/// Why nobody can hear the virtual board.
enum class SoundProblem : std::uint8_t {
    None,
    NotInstalled,  ///< zentro-sound is missing or does not start
    NoDevice,
    Refused,   ///< the device cannot be opened
    Lost,      ///< the device, or zentro-sound, is gone
    NoAnswer,  ///< the computer's sound system hangs
};

/// Lets the virtual board be heard, through zentro-sound, which is started for the first note and
/// ended when all has been quiet for a while. Whatever happens to it, nobody here waits.
class SoundOutput : public QObject {
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds kPatience{3000};

    /// The program, and for how long it may say nothing.
    explicit SoundOutput(QString program, std::chrono::milliseconds patience = kPatience,
                         QObject* parent = nullptr);
    /// Ends zentro-sound.
    ~SoundOutput() override;

    /// What sounds in the next tick of the board.
    void Pass(const SoundTick& tick);
    /// 0 to 100. With 0 nothing is started.
    void SetVolume(unsigned percent);

    /// Of the last note that was to be heard.
    SoundProblem Problem() const { return problem_; }
    /// Nothing was wrong, until the next note; it is tried again then.
    void ForgetProblem();

  signals:
    void ProblemChanged();

  private:
    bool IsRunning() const { return process_ != nullptr; }
    bool MayStart(const SoundTick& tick) const;
    void Start();
    void Send(const SoundMessage& message);
    void Read();
    void Hear(SoundAnswer answer);
    void End();
    void Fail(SoundProblem problem);
    void SetProblem(SoundProblem problem);

    QString program_;
    std::chrono::milliseconds patience_;
    QProcess* process_ = nullptr;
    unsigned volume_ = 0;
    SoundProblem problem_ = SoundProblem::None;
    std::chrono::steady_clock::time_point failedAt_;
    std::size_t unanswered_ = 0;  ///< ticks since the last answer
    std::size_t quietTicks_ = 0;  ///< since the last note
    QTimer opening_;              ///< runs until the first answer
    QTimer idle_;                 ///< runs while no ticks come
};

/// Where the programs' own folder, or the one beside it, has zentro-sound.
QString SoundProgram();

}  // namespace zentro
