#pragma once

#include <QPolygonF>
#include <QTransform>
#include <QWidget>

#include "board/devices.h"
#include "desktop/robot_model.h"

namespace zentro {

/// The floor seen from above, with its dark line, the robot and the way that it has come.
class FloorWidget : public QWidget {
    Q_OBJECT

  public:
    explicit FloorWidget(QWidget* parent);

    void Show(const RobotModel& robot, const Outputs& outputs);

    QSize sizeHint() const override { return {480, 300}; }
    QSize minimumSizeHint() const override { return {240, 150}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QTransform FromMetres() const;
    void PaintFloor(QPainter& painter) const;
    void PaintRobot(QPainter& painter) const;
    void FollowRobot();

    RobotModel robot_;
    std::array<bool, 2> leds_{};
    QPolygonF trail_;  ///< in metres
};

}  // namespace zentro
