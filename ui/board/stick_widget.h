#pragma once

#include <QWidget>

#include "board/devices.h"

namespace zentro {

/// A joystick: dragged with the mouse or pushed with the arrow keys, it springs back to its middle
/// when it is let go.
class StickWidget : public QWidget {
    Q_OBJECT

  public:
    StickWidget(int number, QWidget* parent);

    /// Shows a position without Moved.
    void Show(const StickPosition& position);
    const StickPosition& Position() const { return position_; }

    QSize sizeHint() const override { return {108, 108}; }
    QSize minimumSizeHint() const override { return {76, 76}; }

  signals:
    void Moved(const zentro::StickPosition& position);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    QRectF Field() const;
    void MoveTo(const StickPosition& position);

    StickPosition position_;
};

}  // namespace zentro
