#include "desktop/sound_output.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <utility>

namespace zentro {

namespace {

using namespace std::chrono_literals;

constexpr auto kQuiet = 10s;  // then the device is given back
constexpr std::size_t kQuietTicks = 1000;
constexpr auto kBetweenTries = 10s;
constexpr auto kTick = 10ms;
constexpr std::chrono::milliseconds kLastWait{200};  // for one that has been killed

SoundProblem ProblemOf(SoundAnswer answer) {
    switch (answer) {
        case SoundAnswer::Playing: break;
        case SoundAnswer::NoDevice: return SoundProblem::NoDevice;
        case SoundAnswer::Refused: return SoundProblem::Refused;
        case SoundAnswer::Lost: return SoundProblem::Lost;
    }
    return SoundProblem::None;
}

}  // namespace

SoundOutput::SoundOutput(QString program, std::chrono::milliseconds patience, QObject* parent)
    : QObject(parent), program_(std::move(program)), patience_(patience) {
    opening_.setSingleShot(true);
    opening_.setInterval(patience_);
    connect(&opening_, &QTimer::timeout, this, [this] { Fail(SoundProblem::NoAnswer); });
    idle_.setSingleShot(true);
    idle_.setInterval(kQuiet);
    connect(&idle_, &QTimer::timeout, this, &SoundOutput::End);
}

SoundOutput::~SoundOutput() {
    if (!IsRunning()) return;
    process_->disconnect(this);
    process_->kill();
    process_->waitForFinished(static_cast<int>(kLastWait.count()));
}

void SoundOutput::SetVolume(unsigned percent) {
    volume_ = percent;
    if (IsRunning()) Send({.kind = SoundMessage::Kind::Volume, .tick = {}, .volume = volume_});
}

void SoundOutput::ForgetProblem() {
    SetProblem(SoundProblem::None);
}

void SoundOutput::Pass(const SoundTick& tick) {
    if (!IsRunning() && MayStart(tick)) Start();
    if (!IsRunning()) return;
    Send({.kind = SoundMessage::Kind::Tick, .tick = tick});
    idle_.start();
    quietTicks_ = tick.note == 0 ? quietTicks_ + 1 : 0;
    ++unanswered_;
    if (quietTicks_ > kQuietTicks) return End();
    if (!opening_.isActive() && unanswered_ * kTick > patience_) Fail(SoundProblem::NoAnswer);
}

bool SoundOutput::MayStart(const SoundTick& tick) const {
    if (volume_ == 0 || !IsAudible(tick.note)) return false;
    return problem_ == SoundProblem::None ||
           std::chrono::steady_clock::now() - failedAt_ >= kBetweenTries;
}

void SoundOutput::Start() {
    process_ = new QProcess(this);
    process_->setStandardErrorFile(QProcess::nullDevice());
    connect(process_, &QProcess::readyReadStandardOutput, this, &SoundOutput::Read);
    connect(process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) Fail(SoundProblem::NotInstalled);
    });
    connect(process_, &QProcess::finished, this, [this] {
        Read();
        // One that has not answered lacks a library.
        if (IsRunning())
            Fail(opening_.isActive() ? SoundProblem::NotInstalled : SoundProblem::Lost);
    });
    unanswered_ = 0;
    quietTicks_ = 0;
    opening_.start();
    process_->start(program_, {});
    if (IsRunning()) SetVolume(volume_);
}

void SoundOutput::Send(const SoundMessage& message) {
    process_->write(QByteArray::fromStdString(FormatSoundMessage(message) + '\n'));
}

void SoundOutput::Read() {
    while (IsRunning() && process_->canReadLine()) {
        const std::string line = process_->readLine().trimmed().toStdString();
        if (const auto answer = ReadSoundAnswer(line)) Hear(*answer);
    }
}

void SoundOutput::Hear(SoundAnswer answer) {
    opening_.stop();
    unanswered_ = 0;
    if (answer == SoundAnswer::Playing) {
        SetProblem(SoundProblem::None);
    } else {
        Fail(ProblemOf(answer));
    }
}

/// It plays what it has, and ends by itself.
void SoundOutput::End() {
    opening_.stop();
    idle_.stop();
    if (!IsRunning()) return;
    QProcess* process = std::exchange(process_, nullptr);
    process->disconnect(this);
    connect(process, &QProcess::finished, process, &QObject::deleteLater);
    connect(process, &QProcess::errorOccurred, process, &QObject::deleteLater);
    process->closeWriteChannel();
    if (process->state() == QProcess::NotRunning) process->deleteLater();
}

void SoundOutput::Fail(SoundProblem problem) {
    if (process_ != nullptr) process_->kill();
    End();
    failedAt_ = std::chrono::steady_clock::now();
    SetProblem(problem);
}

void SoundOutput::SetProblem(SoundProblem problem) {
    if (problem == problem_) return;
    problem_ = problem;
    emit ProblemChanged();
}

QString SoundProgram() {
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString beside = programs.filePath("zentro-sound");
    if (QFileInfo::exists(beside)) return beside;
    return programs.filePath("../libexec/zentrocompiler/zentro-sound");
}

}  // namespace zentro
