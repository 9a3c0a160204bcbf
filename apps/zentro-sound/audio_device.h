#pragma once

#include <QAudioFormat>
#include <QAudioSink>
#include <cstdint>
#include <memory>
#include <span>

#include "sound/sound_message.h"

namespace zentro {

/// The computer's sound output. Whatever it does may take for ever.
class AudioDevice {
  public:
    /// Opens the one that the user has chosen for the computer. Playing, NoDevice or Refused.
    SoundAnswer Open();

    /// How many samples it would take at once.
    std::size_t Room() const;
    /// At most so many. False: it does not play any more.
    bool Write(std::span<const std::int16_t> samples);

  private:
    std::unique_ptr<QAudioSink> sink_;
    QIODevice* input_ = nullptr;  ///< the sink's
    int channels_ = 1;
};

}  // namespace zentro
