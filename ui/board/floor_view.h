#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QTransform>

#include "world/geometry.h"

namespace zentro {

/// Which part of a floor is seen, and how large. Floors are in centimetres with y upwards, pictures
/// in pixels.
class FloorView {
  public:
    /// Another floor is seen as a whole; the same one stays as it is.
    void SetFloor(const QSizeF& centimetres);
    void SetRoom(const QRectF& pixels);

    /// Larger above 1, smaller below; what is at the place in the picture stays there. Never
    /// smaller than the whole floor.
    void ZoomBy(double factor, const QPointF& at);
    void PanBy(const QPointF& pixels);
    void ShowAll();
    bool ShowsAll() const { return zoom_ == 1; }

    QTransform ToPixels() const;
    QPointF ToPixels(const world::Point& point) const;
    world::Point ToFloor(const QPointF& pixels) const;
    double PixelsPerCentimetre() const;

  private:
    void KeepInside();

    QSizeF floor_{240, 150};
    QRectF room_{0, 0, 240, 150};
    double zoom_ = 1;
    QPointF middle_{120, 75};  ///< of the picture, on the floor
};

}  // namespace zentro
