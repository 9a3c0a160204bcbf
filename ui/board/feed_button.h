#pragma once

#include <QToolButton>

#include "recording/scene.h"

namespace zentro {

/// Says whether the robot's sensor or a hand feeds an input, and changes it. Not seen beside inputs
/// that no sensor feeds.
class FeedButton : public QToolButton {
    Q_OBJECT

  public:
    /// `inputName` as a sentence begins with it.
    FeedButton(const world::InputId& input, QString inputName, QWidget* parent);

    const world::InputId& Input() const { return input_; }
    void Show(const Scene& scene);

  signals:
    void HoldWanted(const zentro::world::InputId& input, bool held);

  private:
    const world::InputId input_;
    const QString inputName_;
};

/// What a person calls the sensor.
QString SensorWords(world::SensorKind kind);

}  // namespace zentro
