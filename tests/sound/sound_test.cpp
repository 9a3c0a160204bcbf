// What a loudspeaker would be given, sample by sample.
#include <cmath>
#include <cstdlib>

#include "sound/sound_message.h"
#include "sound/sound_queue.h"
#include "sound/tone_generator.h"

namespace zentro {
namespace {

using Samples = std::vector<std::int16_t>;
constexpr unsigned kFull = 100;

/// At full volume from the first sample on.
Samples Play(const std::vector<SoundTick>& ticks) {
    ToneGenerator generator;
    generator.SetVolume(kFull);
    Samples settling(kSamplesPerSecond);
    generator.Render({}, settling);
    Samples samples(ticks.size() * kSamplesPerTick);
    for (std::size_t index = 0; index < ticks.size(); ++index)
        generator.Render(ticks[index],
                         std::span(samples).subspan(index * kSamplesPerTick, kSamplesPerTick));
    return samples;
}

std::vector<SoundTick> Ticks(std::size_t count, std::uint8_t note, std::uint64_t end = 1) {
    return std::vector<SoundTick>(count, {note, end});
}

std::vector<SoundTick> operator+(std::vector<SoundTick> first,
                                 const std::vector<SoundTick>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// In hertz, from the first to the last rise through zero.
double PitchOf(std::span<const std::int16_t> samples) {
    double first = -1;
    double last = 0;
    int rises = 0;
    for (std::size_t index = 1; index < samples.size(); ++index) {
        const double before = samples[index - 1];
        const double after = samples[index];
        if (before >= 0 || after < 0) continue;
        last = static_cast<double>(index) - after / (after - before);
        if (first < 0) first = last;
        ++rises;
    }
    return rises < 2 ? 0 : (rises - 1) * double{kSamplesPerSecond} / (last - first);
}

int LoudestOf(std::span<const std::int16_t> samples) {
    int loudest = 0;
    for (const std::int16_t sample : samples)
        loudest = std::max(loudest, std::abs(int{sample}));
    return loudest;
}

/// The samples from the first to the last that are no silence.
std::size_t LengthOf(const Samples& samples) {
    const auto sounds = [](std::int16_t sample) { return sample != 0; };
    const auto first = std::ranges::find_if(samples, sounds);
    const auto last = std::find_if(samples.rbegin(), samples.rend(), sounds);
    return first == samples.end() ? 0 : static_cast<std::size_t>(last.base() - first);
}

TEST(ToneTest, EachNoteHasItsPitch) {
    for (const auto& [note, hertz] : {std::pair{24, 32.703},
                                      {57, 220.0},
                                      {60, 261.626},
                                      {69, 440.0},
                                      {81, 880.0},
                                      {127, 12543.854}}) {
        const Samples samples = Play(Ticks(100, static_cast<std::uint8_t>(note)));
        EXPECT_NEAR(PitchOf(samples), hertz, hertz * 1e-3) << note;
    }
}

TEST(ToneTest, WhatNobodyHearsIsSilence) {
    for (const int note : {0, 1, 11, 136, 200, 255})
        EXPECT_EQ(LoudestOf(Play(Ticks(10, static_cast<std::uint8_t>(note)))), 0) << note;
    EXPECT_GT(LoudestOf(Play(Ticks(10, 12))), 0);
    EXPECT_GT(LoudestOf(Play(Ticks(10, 135))), 0);
}

TEST(ToneTest, ANoteLastsAsLongAsItsTicks) {
    for (const std::size_t ticks : {1U, 7U, 255U}) {
        const auto length =
            static_cast<double>(LengthOf(Play(Ticks(5, 0) + Ticks(ticks, 69) + Ticks(5, 0))));
        constexpr double kFading = 0.004 * kSamplesPerSecond;
        EXPECT_NEAR(length, static_cast<double>(ticks * kSamplesPerTick), kFading) << ticks;
    }
}

TEST(ToneTest, NothingClicks) {
    const auto largestStep = [](const Samples& samples) {
        int largest = 0;
        for (std::size_t index = 1; index < samples.size(); ++index)
            largest = std::max(largest, std::abs(samples[index] - samples[index - 1]));
        return largest;
    };
    const int ofATone = largestStep(Play(Ticks(50, 69)));
    // Notes that begin, follow each other, end in the middle of a wave, and are cut off at once.
    for (const auto& ticks :
         {Ticks(3, 69) + Ticks(3, 0), Ticks(3, 69) + Ticks(3, 40, 2) + Ticks(3, 69, 3),
          Ticks(1, 69) + Ticks(1, 60, 2) + Ticks(1, 69, 3) + Ticks(1, 0)})
        EXPECT_LE(largestStep(Play(ticks)), ofATone * 1.3);
}

TEST(ToneTest, TheSameNoteOnceMoreIsHeardAsAnother) {
    const Samples samples = Play(Ticks(20, 69, 20) + Ticks(20, 69, 40));
    const auto piece = [&](std::size_t milliseconds) {
        return LoudestOf(std::span(samples).subspan(milliseconds * 48, 48));
    };
    EXPECT_LT(piece(202), piece(150) / 2);
    EXPECT_GT(piece(215), piece(150) / 2);
}

TEST(ToneTest, TheVolumeIsTheAmplitude) {
    ToneGenerator generator;
    Samples samples(kSamplesPerSecond / 5);
    int before = 0;
    for (const unsigned volume : {0U, 10U, 50U, 100U}) {
        generator.SetVolume(volume);
        generator.Render({69, 1}, samples);
        generator.Render({69, 1}, samples);
        const int now = LoudestOf(samples);
        EXPECT_EQ(now == 0, volume == 0);
        EXPECT_GE(now, before);
        before = now;
    }
    EXPECT_GT(before, 8000);
    EXPECT_LT(before, 32767);
}

struct QueueTest : testing::Test {
    QueueTest() { queue.SetVolume(kFull); }

    /// The loudest sample of so many milliseconds.
    int Take(std::size_t milliseconds) {
        Samples samples(milliseconds * kSamplesPerSecond / 1000);
        taken += queue.Take(samples);
        return LoudestOf(samples);
    }

    void Add(std::size_t count, std::uint8_t note) {
        for (std::size_t tick = 0; tick < count; ++tick)
            queue.Add({note, 1});
    }

    SoundQueue queue;
    std::size_t taken = 0;
};

TEST_F(QueueTest, UnevenTicksMakeAnEvenTone) {
    Take(1000);
    Add(SoundQueue::kLead, 69);
    Take(20);
    // They come in bunches, as from a window that is busy; none is missed.
    for (int bunch = 0; bunch < 20; ++bunch) {
        Add(3, 69);
        for (int piece = 0; piece < 3; ++piece)
            EXPECT_GT(Take(10), 5000) << bunch;
    }
    EXPECT_EQ(taken, 62U);
}

TEST_F(QueueTest, AShortToneIsPlayedThoughNothingFollows) {
    Add(1, 69);
    EXPECT_GT(Take(200), 0);
    EXPECT_EQ(Take(10), 0);
    EXPECT_EQ(taken, 1U);
    EXPECT_TRUE(queue.IsSilent());
}

TEST_F(QueueTest, NothingIsHeardWhileTheBoardIsHeld) {
    Add(10, 69);
    EXPECT_GT(Take(100), 0);
    Take(10);
    EXPECT_EQ(Take(1000), 0);
    Add(10, 69);
    EXPECT_GT(Take(100), 0);
}

TEST_F(QueueTest, WhatHasPiledUpIsLeftOut) {
    Add(1000, 69);
    Add(1, 0);
    Take(10 * SoundQueue::kMost);
    EXPECT_EQ(taken, SoundQueue::kMost);
    EXPECT_EQ(Take(100), 0);
}

TEST(SoundMessageTest, LinesAreReadAsTheyWereWritten) {
    for (const SoundMessage& message :
         {SoundMessage{}, SoundMessage{.tick = {255, ~std::uint64_t{0}}},
          SoundMessage{.kind = SoundMessage::Kind::Volume, .tick = {}, .volume = 100}})
        EXPECT_EQ(ReadSoundMessage(FormatSoundMessage(message)), message);
    for (const char* line : {"", "tick", "tick 1", "tick 256 1", "tick -1 1", "tick 1 2 3",
                             "tick 1 2 ", "volume", "volume 101", "volume x", "tock 1 2"})
        EXPECT_EQ(ReadSoundMessage(line), std::nullopt) << line;
}

}  // namespace
}  // namespace zentro
