#pragma once

#include <QWidget>

#include "board/devices.h"

namespace zentro {

/// A motor with its wheel, which turns as fast as the motor.
class MotorWidget : public QWidget {
    Q_OBJECT

  public:
    MotorWidget(int number, QWidget* parent);

    /// The wheel turns on for so many ticks; negative ones turn it back.
    void Show(const Drive& motor, int ticks);

    QSize sizeHint() const override { return {104, 118}; }
    QSize minimumSizeHint() const override { return {50, 84}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Drive motor_;
    double angle_ = 0;  ///< degrees
};

/// A servo with its arm at the angle that is set.
class ServoWidget : public QWidget {
    Q_OBJECT

  public:
    ServoWidget(int number, QWidget* parent);

    void Show(const Drive& servo);

    QSize sizeHint() const override { return {92, 100}; }
    QSize minimumSizeHint() const override { return {44, 76}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Drive servo_;
};

}  // namespace zentro
