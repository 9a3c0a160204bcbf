#include "sound/sound_queue.h"

#include <algorithm>

namespace zentro {

void SoundQueue::Add(const SoundTick& tick) {
    const std::scoped_lock lock(mutex_);
    waiting_.push_back(tick);
    if (waiting_.size() > kMost) waiting_.pop_front();
}

void SoundQueue::SetVolume(unsigned percent) {
    const std::scoped_lock lock(mutex_);
    generator_.SetVolume(percent);
}

/// Whether the ticks that wait are played. When no others come the few that are there are the last.
bool SoundQueue::MayFlow(std::size_t samples) {
    if (waiting_.empty()) {
        flows_ = false;
        waited_ = 0;
    } else if (!flows_) {
        flows_ = waiting_.size() >= kLead || waited_ >= kLead * kSamplesPerTick;
        waited_ += samples;
    }
    return flows_;
}

std::size_t SoundQueue::Take(std::span<std::int16_t> samples) {
    const std::scoped_lock lock(mutex_);
    std::size_t begun = 0;
    while (!samples.empty()) {
        if (left_ == 0 && MayFlow(std::min<std::size_t>(samples.size(), kSamplesPerTick))) {
            present_ = waiting_.front();
            waiting_.pop_front();
            left_ = kSamplesPerTick;
            ++begun;
        }
        const bool isThere = left_ > 0;
        const std::size_t count =
            std::min<std::size_t>(samples.size(), isThere ? left_ : kSamplesPerTick);
        generator_.Render(isThere ? present_ : SoundTick{}, samples.first(count));
        if (isThere) left_ -= count;
        samples = samples.subspan(count);
    }
    return begun;
}

bool SoundQueue::IsSilent() const {
    const std::scoped_lock lock(mutex_);
    return waiting_.empty() && left_ == 0 && generator_.IsSilent();
}

}  // namespace zentro
