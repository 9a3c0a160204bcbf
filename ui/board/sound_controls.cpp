#include "ui/board/sound_controls.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QToolButton>
#include <algorithm>

#include "settings/settings_store.h"
#include "ui/support/icons.h"
#include "ui/support/spoken_label.h"

namespace zentro {

namespace {

constexpr int kLoudest = 100;
constexpr int kVolumeOfNewUsers = 60;
constexpr int kVolumeStep = 10;

int VolumeOf(const SettingsStore& settings) {
    const SettingValue value = settings.GetSetting(SettingNumber::SoundVolume);
    return IsEmpty(value) ? kVolumeOfNewUsers : std::clamp(AsInteger(value), 0, kLoudest);
}

}  // namespace

unsigned SoundVolume(const SettingsStore& settings) {
    return FlagIsOn(settings, SettingNumber::SoundMuted)
               ? 0
               : static_cast<unsigned>(VolumeOf(settings));
}

SoundControls::SoundControls(VirtualBoardHost& host, SoundOutput& sound, SettingsStore& settings,
                             QWidget* parent)
    : QWidget(parent),
      host_(host),
      sound_(sound),
      settings_(settings),
      mute_(new QToolButton(this)),
      volume_(new QSlider(Qt::Horizontal, this)),
      problem_(new QLabel),
      problemRow_(MakeProblemRow()) {
    mute_->setObjectName("BtnMute");
    mute_->setText(tr("&Mute"));
    mute_->setAccessibleName(tr("Mute"));
    mute_->setCheckable(true);
    mute_->setFocusPolicy(Qt::StrongFocus);
    mute_->setChecked(FlagIsOn(settings, SettingNumber::SoundMuted));
    volume_->setObjectName("SoundVolume");
    volume_->setAccessibleName(tr("Volume"));
    volume_->setToolTip(tr("How loud the board is"));
    volume_->setRange(0, kLoudest);
    volume_->setSingleStep(kVolumeStep);
    volume_->setPageStep(2 * kVolumeStep);
    volume_->setFixedWidth(64);
    volume_->setValue(VolumeOf(settings));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 0, 0, 0);
    row->addWidget(mute_);
    row->addWidget(volume_);
    connect(mute_, &QToolButton::toggled, this, &SoundControls::Mute);
    connect(volume_, &QSlider::valueChanged, this, &SoundControls::ChooseVolume);
    connect(&sound_, &SoundOutput::ProblemChanged, this, &SoundControls::Refresh);
    ShowButton();
}

QWidget* SoundControls::MakeProblemRow() {
    auto* const whole = new QWidget(this);
    problem_->setObjectName("SoundProblem");
    problem_->setAccessibleName(tr("Sound"));
    problem_->setWordWrap(true);
    problem_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const close = new QToolButton(whole);
    close->setObjectName("BtnCloseSoundProblem");
    close->setText(QStringLiteral("\u00d7"));
    close->setAutoRaise(true);
    close->setAccessibleName(tr("Close"));
    close->setToolTip(tr("Close; the button for the sound goes on telling it"));
    connect(close, &QToolButton::clicked, this, [this] {
        closedProblem_ = problem_->text();
        ShowProblem();
    });
    auto* const row = new QHBoxLayout(whole);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(problem_, 1);
    row->addWidget(close);
    whole->hide();
    return whole;
}

void SoundControls::Mute(bool muted) {
    settings_.SaveSetting(SettingNumber::SoundMuted, std::int32_t{muted ? 1 : 0});
    ApplyVolume();
}

/// Whoever turns the volume up wants to hear it.
void SoundControls::ChooseVolume(int percent) {
    settings_.SaveSetting(SettingNumber::SoundVolume, std::int32_t{percent});
    mute_->setChecked(false);
    ApplyVolume();
}

void SoundControls::ApplyVolume() {
    sound_.SetVolume(SoundVolume(settings_));
    sound_.ForgetProblem();
    closedProblem_.clear();
    Refresh();
    ShowButton();
}

void SoundControls::ShowButton() {
    const bool isHeard = SoundVolume(settings_) > 0 && problem_->text().isEmpty();
    mute_->setIcon(ThemedIcon(isHeard ? "sound" : "sound-off"));
    const QString help = tr("Let the board be heard, or not (Alt+M)");
    mute_->setToolTip(problem_->text().isEmpty() ? help : problem_->text() + '\n' + help);
}

void SoundControls::ShowProblem() {
    const QString text = problem_->text();
    problemRow_->setVisible(!text.isEmpty() && text != closedProblem_);
}

void SoundControls::Refresh() {
    const bool isFast = host_.Speed().kind == BoardSpeed::Kind::FullSpeed;
    const bool isNote = host_.State().outputs.note != 0;
    // A program without notes lacks nothing.
    hasNotes_ = isNote || (hasNotes_ && host_.State().clock > 0);
    passesUnheard_ = isFast && (passesUnheard_ || isNote);
    const QString text = ProblemText();
    if (text == problem_->text()) return;
    problem_->setText(text);
    SayWithCaption(*problem_, tr("Sound"));
    ShowButton();
    ShowProblem();
}

QString SoundControls::ProblemText() const {
    if (SoundVolume(settings_) == 0 || !hasNotes_) return {};
    if (passesUnheard_)
        return tr(
            "The board is not heard while it goes as fast as it can: its notes would be over "
            "before one hears them.");
    switch (sound_.Problem()) {
        case SoundProblem::None: break;
        case SoundProblem::NotInstalled:
            return tr(
                "No sound can be heard, because zentro-sound, a part of this program, is "
                "missing or cannot be started. The note is shown on the board.");
        case SoundProblem::NoDevice:
            return tr(
                "No sound can be heard, because this computer has no sound output. The note "
                "is shown on the board.");
        case SoundProblem::Refused:
            return tr(
                "No sound can be heard, because the sound output cannot be opened; another "
                "program may be using it. The note is shown on the board.");
        case SoundProblem::Lost:
            return tr(
                "No sound can be heard, because the sound output is gone. The note is shown "
                "on the board.");
        case SoundProblem::NoAnswer:
            return tr(
                "No sound can be heard, because the computer's sound system does not answer. "
                "The note is shown on the board.");
    }
    return {};
}

}  // namespace zentro
