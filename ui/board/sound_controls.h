#pragma once

#include <QWidget>

#include "desktop/sound_output.h"
#include "desktop/virtual_board_host.h"

class QLabel;
class QSlider;
class QToolButton;

namespace zentro {

class SettingsStore;

/// How loud the virtual board is by the settings, 0 to 100; 0 when it is muted.
unsigned SoundVolume(const SettingsStore& settings);

/// How loud the virtual board is, and a sentence where it cannot be heard.
class SoundControls : public QWidget {
    Q_OBJECT

  public:
    /// All of them outlive the controls.
    SoundControls(VirtualBoardHost& host, SoundOutput& sound, SettingsStore& settings,
                  QWidget* parent);

    /// Why nothing can be heard; hidden while there is nothing to say, and once it was closed. For
    /// a row of its own.
    QWidget* ProblemRow() const { return problemRow_; }
    void Refresh();

  private:
    void Mute(bool muted);
    void ChooseVolume(int percent);
    void ApplyVolume();
    void ShowButton();
    QWidget* MakeProblemRow();
    void ShowProblem();
    QString ProblemText() const;

    VirtualBoardHost& host_;
    SoundOutput& sound_;
    SettingsStore& settings_;
    QToolButton* mute_;
    QSlider* volume_;
    QLabel* problem_;
    QWidget* problemRow_;
    QString closedProblem_;       ///< which has been read
    bool hasNotes_ = false;       ///< in this run
    bool passesUnheard_ = false;  ///< notes that come as fast as it goes
};

}  // namespace zentro
