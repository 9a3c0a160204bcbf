#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zentro {

inline constexpr unsigned kSamplesPerSecond = 48'000;
inline constexpr unsigned kSamplesPerTick = kSamplesPerSecond / 100;

/// What sounds in one tick of the board. The end tells a note from the same one played once more.
struct SoundTick {
    std::uint8_t note = 0;  ///< 0 is silence
    std::uint64_t end = 0;  ///< the tick at which the note ends, by the board's clock

    bool operator==(const SoundTick&) const = default;
};

/// In hertz; note 69 is the A of 440. 0 for silence.
double FrequencyOf(std::uint8_t note);

/// Whether a note lies within what people hear and samples can hold.
bool IsAudible(std::uint8_t note);

/// From the notes of a board to samples of one channel. A tone begins and ends within a few
/// milliseconds rather than at once, so that nothing clicks; a note that follows another is set
/// apart from it in the same way.
class ToneGenerator {
  public:
    /// 0 to 100; reached gradually, too.
    void SetVolume(unsigned percent);

    /// The next samples, within a tick.
    void Render(const SoundTick& tick, std::span<std::int16_t> samples);

    /// Whether the last sample was silence and no tone is going out.
    bool IsSilent() const { return strength_ == 0; }

  private:
    double NextSample();

    SoundTick tick_;
    double perSample_ = 0;     ///< turns of the present tone
    double turn_ = 0;          ///< where it is, 0 to 1
    bool hasThird_ = false;    ///< its third harmonic can be held by the samples
    double strength_ = 0;      ///< of the tone, 0 to 1, on its way up or down
    bool isChanging_ = false;  ///< the tone ends before that of `tick_` begins
    double volume_ = 0;        ///< amplitude, on its way to the wanted one
    double wantedVolume_ = 0;
};

}  // namespace zentro
