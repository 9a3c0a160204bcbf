#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <span>

#include "sound/tone_generator.h"

namespace zentro {

/// Ticks come in as the board passes them, samples go out as a device wants them. Between the two
/// lies a short lead, so that a tick that comes late is not missed; what piles up beyond that is
/// left out, so that one hears what one sees. Where no tick is left there is silence. May be used
/// by two threads.
class SoundQueue {
  public:
    static constexpr std::size_t kLead = 5;   ///< ticks, before samples are made of them
    static constexpr std::size_t kMost = 20;  ///< that wait; the oldest are left out

    void Add(const SoundTick& tick);
    void SetVolume(unsigned percent);

    /// Makes the next samples. Returns how many ticks began in them.
    std::size_t Take(std::span<std::int16_t> samples);

    /// Whether nothing waits and the last tone is out.
    bool IsSilent() const;

  private:
    bool MayFlow(std::size_t samples);

    mutable std::mutex mutex_;
    ToneGenerator generator_;
    std::deque<SoundTick> waiting_;
    SoundTick present_;
    std::size_t left_ = 0;    ///< samples of the present tick
    std::size_t waited_ = 0;  ///< samples of silence while too few ticks were there
    bool flows_ = false;
};

}  // namespace zentro
