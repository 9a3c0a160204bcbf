#pragma once

#include <QLabel>

#include "recording/scene.h"

namespace zentro {

/// What the world asks for and how far the robot has come with it.
class GoalsLabel : public QLabel {
    Q_OBJECT

  public:
    explicit GoalsLabel(QWidget* parent);

    /// Once the run is over, what is still open is missed.
    void Show(const Scene& scene, bool isOver);
};

/// "Follow track within 60 s"
QString GoalWords(const world::Goal& goal);

}  // namespace zentro
