#pragma once

#include <QLabel>
#include <cstdint>
#include <optional>

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

    std::optional<std::uint64_t> end_;  ///< the tick at which the program was seen to have ended
};

/// "Follow track within 60 s"
QString GoalWords(const world::Goal& goal);

}  // namespace zentro
