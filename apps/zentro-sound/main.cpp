// zentro-sound: lets the notes be heard that come in on its standard input, see
// sound/sound_message.h.

#include <QCoreApplication>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "apps/zentro-sound/audio_device.h"
#include "apps/zentro-sound/sample_file.h"
#include "sound/sound_queue.h"

namespace zentro {

namespace {

using namespace std::chrono_literals;

constexpr auto kInterval = 10ms;
constexpr auto kPatienceAtEnd = 1s;  // with a device that does not take the last samples
constexpr int kTrouble = 1;

void Carry(SoundQueue& queue, const std::string& line) {
    const std::optional<SoundMessage> message = ReadSoundMessage(line);
    if (!message) return;
    if (message->kind == SoundMessage::Kind::Volume) {
        queue.SetVolume(message->volume);
    } else {
        queue.Add(message->tick);
    }
}

/// Lines until nobody writes any more. The device may hang then, so the process does not wait for
/// it.
void ReadLines(SoundQueue& queue) {
    std::string line;
    while (std::getline(std::cin, line))
        Carry(queue, line);
    const auto last = std::chrono::steady_clock::now() + kPatienceAtEnd;
    while (!queue.IsSilent() && std::chrono::steady_clock::now() < last)
        std::this_thread::sleep_for(kInterval);
    std::this_thread::sleep_for(10 * kInterval);  // what the device still holds
    std::_Exit(EXIT_SUCCESS);
}

void Answer(SoundAnswer answer) {
    std::cout << WordOf(answer) << std::endl;
}

/// Plays until it is ended from outside, or the device does not play any more.
int Play(SoundQueue& queue) {
    AudioDevice device;
    const SoundAnswer opened = device.Open();
    Answer(opened);
    if (opened != SoundAnswer::Playing) return kTrouble;
    std::size_t ticks = 0;
    std::vector<std::int16_t> samples;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        samples.resize(device.Room());
        ticks += queue.Take(samples);
        if (!device.Write(samples)) {
            Answer(SoundAnswer::Lost);
            QCoreApplication::exit(kTrouble);
        }
        if (ticks < kTicksPerAnswer) return;
        ticks %= kTicksPerAnswer;
        Answer(SoundAnswer::Playing);
    });
    timer.start(kInterval);
    return QCoreApplication::exec();
}

/// What would be heard if each tick came at its time, as a file: for computers without sound.
int WriteFile(const std::string& path) {
    ToneGenerator generator;
    std::vector<std::int16_t> samples;
    std::string line;
    while (std::getline(std::cin, line)) {
        const std::optional<SoundMessage> message = ReadSoundMessage(line);
        if (!message) {
            std::cerr << "zentro-sound: not understood: " << line << '\n';
            return kTrouble;
        }
        if (message->kind == SoundMessage::Kind::Volume) generator.SetVolume(message->volume);
        if (message->kind != SoundMessage::Kind::Tick) continue;
        samples.resize(samples.size() + kSamplesPerTick);
        generator.Render(message->tick, std::span(samples).last(kSamplesPerTick));
    }
    if (WriteSampleFile(path, samples)) return EXIT_SUCCESS;
    std::cerr << "zentro-sound: cannot write " << path << '\n';
    return kTrouble;
}

}  // namespace

}  // namespace zentro

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 2 && arguments[0] == "--wav") return zentro::WriteFile(arguments[1]);
    if (!arguments.empty()) {
        std::cerr << "zentro-sound is started by zentro.\n"
                     "zentro-sound --wav FILE writes what it would play as a file.\n";
        return 2;
    }
    const QCoreApplication application(argc, argv);
    zentro::SoundQueue queue;
    // It reads until the process ends.
    std::thread([&queue] { zentro::ReadLines(queue); }).detach();
    const int status = zentro::Play(queue);
    std::cout.flush();
    std::_Exit(status);  // whatever hangs
}
