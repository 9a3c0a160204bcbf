#pragma once

#include <QPolygonF>
#include <QTransform>
#include <QWidget>

#include "board/devices.h"
#include "desktop/robot_model.h"

class QPushButton;

namespace zentro {

/// The floor seen from above, with its dark line, the robot and the way that it has come.
class FloorWidget : public QWidget {
    Q_OBJECT

  public:
    explicit FloorWidget(QWidget* parent);

    void Show(const RobotModel& robot, const Outputs& outputs);

    QSize sizeHint() const override { return {480, 300}; }
    QSize minimumSizeHint() const override { return {240, 150}; }

  signals:
    /// The user wants the robot back at its start.
    void PutBackClicked();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QTransform FromMetres() const;
    void PaintFloor(QPainter& painter) const;
    void PaintRobot(QPainter& painter) const;
    void FollowRobot();

    QPushButton* putBack_;
    RobotModel robot_;
    std::array<bool, 2> leds_{};
    QPolygonF trail_;  ///< in metres
};

}  // namespace zentro
