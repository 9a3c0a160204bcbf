#include "apps/zentro-sound/audio_device.h"

#include <QAudioDevice>
#include <QMediaDevices>
#include <vector>

#include "sound/tone_generator.h"

namespace zentro {

namespace {

constexpr unsigned kBufferedTicks = 6;  // short, as one hears what one sees

QAudioFormat FormatOf(int channels) {
    QAudioFormat format;
    format.setSampleRate(kSamplesPerSecond);
    format.setSampleFormat(QAudioFormat::Int16);
    format.setChannelCount(channels);
    return format;
}

}  // namespace

SoundAnswer AudioDevice::Open() {
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull()) return SoundAnswer::NoDevice;
    channels_ = device.isFormatSupported(FormatOf(1)) ? 1 : 2;
    const QAudioFormat format = FormatOf(channels_);
    if (!device.isFormatSupported(format)) return SoundAnswer::Refused;
    sink_ = std::make_unique<QAudioSink>(device, format);
    sink_->setBufferSize(format.bytesForFrames(kBufferedTicks * kSamplesPerTick));
    input_ = sink_->start();
    const bool isOpen = input_ != nullptr && sink_->error() == QAudio::NoError;
    return isOpen ? SoundAnswer::Playing : SoundAnswer::Refused;
}

std::size_t AudioDevice::Room() const {
    const auto bytes = static_cast<std::size_t>(std::max<qsizetype>(0, sink_->bytesFree()));
    return bytes / sizeof(std::int16_t) / static_cast<std::size_t>(channels_);
}

bool AudioDevice::Write(std::span<const std::int16_t> samples) {
    std::vector<std::int16_t> frames;
    frames.reserve(samples.size() * static_cast<std::size_t>(channels_));
    for (const std::int16_t sample : samples)
        frames.insert(frames.end(), static_cast<std::size_t>(channels_), sample);
    const auto bytes = static_cast<qint64>(frames.size() * sizeof(std::int16_t));
    const bool isTaken = input_->write(reinterpret_cast<const char*>(frames.data()), bytes) >= 0;
    return isTaken &&
           (sink_->error() == QAudio::NoError || sink_->error() == QAudio::UnderrunError);
}

}  // namespace zentro
