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

    /// A label whose height followed from its width would make everything around it as high, at
    /// the least, as it likes to be.
    bool hasHeightForWidth() const override { return false; }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void FitHeight();
};

/// "Follow track within 60 s"
QString GoalWords(const world::Goal& goal);

}  // namespace zentro
