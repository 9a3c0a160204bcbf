#include "sound/tone_generator.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace zentro {

namespace {

constexpr double kStrengthStep = 1.0 / (0.003 * kSamplesPerSecond);
constexpr double kVolumeStep = 1.0 / (0.05 * kSamplesPerSecond);
constexpr double kLowest = 16;  // hertz
constexpr double kHighest = 20'000;
constexpr double kThird = 0.25;    // lends low notes a voice that small loudspeakers have
constexpr double kLoudest = 0.35;  // of the largest sample; the third harmonic comes on top

double Towards(double value, double wanted, double step) {
    return value < wanted ? std::min(wanted, value + step) : std::max(wanted, value - step);
}

double Wave(double turn) {
    return std::sin(2 * std::numbers::pi * turn);
}

}  // namespace

double FrequencyOf(std::uint8_t note) {
    return note == 0 ? 0 : 440 * std::exp2((note - 69) / 12.0);
}

bool IsAudible(std::uint8_t note) {
    const double frequency = FrequencyOf(note);
    return frequency >= kLowest && frequency <= kHighest;
}

/// Ears tell ratios: half the way is a quarter of the amplitude.
void ToneGenerator::SetVolume(unsigned percent) {
    const double share = std::min(percent, 100U) / 100.0;
    wantedVolume_ = share * share;
}

void ToneGenerator::Render(const SoundTick& tick, std::span<std::int16_t> samples) {
    if (tick != tick_) {
        tick_ = tick;
        isChanging_ = true;
    }
    constexpr double kLargest = std::numeric_limits<std::int16_t>::max();
    for (std::int16_t& sample : samples)
        sample = static_cast<std::int16_t>(std::lround(NextSample() * kLoudest * kLargest));
}

double ToneGenerator::NextSample() {
    if (isChanging_ && strength_ == 0) {
        isChanging_ = false;
        const double frequency = IsAudible(tick_.note) ? FrequencyOf(tick_.note) : 0;
        perSample_ = frequency / kSamplesPerSecond;
        hasThird_ = 3 * frequency <= kHighest;
        turn_ = 0;
    }
    const bool sounds = perSample_ != 0 && !isChanging_;
    strength_ = Towards(strength_, sounds ? 1 : 0, kStrengthStep);
    volume_ = Towards(volume_, wantedVolume_, kVolumeStep);
    turn_ += perSample_;
    turn_ -= std::floor(turn_);
    const double third = hasThird_ ? kThird * Wave(3 * turn_) : 0;
    return volume_ * strength_ * (Wave(turn_) + third);
}

}  // namespace zentro
