#pragma once

#include <QGroupBox>

#include "comms/manual_controls.h"

class QButtonGroup;
class QLabel;
class QSlider;

namespace zentro {

/// The names and captions of one motor's or servo's controls.
struct DriveFrameNames {
    const char* caption;
    const char* forward;
    const char* back;
    const char* rest;
    const char* restCaption;
    const char* restSpoken;
    const char* slider;
    const char* label;
    const char* measure;  ///< what the slider sets: "Speed"
    int maximum;
};

/// The controls of one motor or servo.
class DriveFrame : public QGroupBox {
    Q_OBJECT

  public:
    DriveFrame(const DriveFrameNames& names, QWidget* parent);

    /// Shows a state without telling anybody.
    void Show(const DriveControl& control);

    /// While the slider is dragged its value is told at every step, or only where it is let go.
    void SetFollowing(bool following);

  signals:
    void OptionChosen(DriveOption option);
    void ValueChanged(int value);
    void DragBegun();

  private:
    void AddOption(const DriveFrameNames& names, const char* name, const char* caption,
                   const char* spoken, DriveOption option);
    void AddSlider(const DriveFrameNames& names);
    void ShowValue(int value);

    QButtonGroup* options_;
    QSlider* slider_ = nullptr;
    QLabel* value_ = nullptr;
};

}  // namespace zentro
