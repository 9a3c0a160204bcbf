#include "ui/board/floor_view.h"

#include <algorithm>

namespace zentro {

namespace {

constexpr double kLargest = 16;  // times the size at which the whole floor is seen

/// Half of what is seen may be so far from the floor's edge; all of it in the middle.
double Inside(double middle, double seen, double whole) {
    if (seen >= whole) return whole / 2;
    return std::clamp(middle, seen / 2, whole - seen / 2);
}

}  // namespace

void FloorView::SetFloor(const QSizeF& centimetres) {
    if (centimetres == floor_) return;
    floor_ = centimetres;
    ShowAll();
}

void FloorView::SetRoom(const QRectF& pixels) {
    room_ = pixels;
    KeepInside();
}

void FloorView::ZoomBy(double factor, const QPointF& at) {
    const world::Point before = ToFloor(at);
    zoom_ = std::clamp(zoom_ * factor, 1.0, kLargest);
    const world::Point after = ToFloor(at);
    middle_ += QPointF(before.x - after.x, before.y - after.y);
    KeepInside();
}

void FloorView::PanBy(const QPointF& pixels) {
    const double scale = PixelsPerCentimetre();
    middle_ += QPointF(-pixels.x() / scale, pixels.y() / scale);
    KeepInside();
}

void FloorView::ShowAll() {
    zoom_ = 1;
    KeepInside();
}

void FloorView::KeepInside() {
    const double scale = PixelsPerCentimetre();
    middle_ = {Inside(middle_.x(), room_.width() / scale, floor_.width()),
               Inside(middle_.y(), room_.height() / scale, floor_.height())};
}

double FloorView::PixelsPerCentimetre() const {
    constexpr double kLeast = 0.01;  // a window without any room has none to divide by
    const double whole = std::min(room_.width() / floor_.width(), room_.height() / floor_.height());
    return std::max(kLeast, whole) * zoom_;
}

QTransform FloorView::ToPixels() const {
    const double scale = PixelsPerCentimetre();
    QTransform transform;
    transform.translate(room_.center().x(), room_.center().y());
    transform.scale(scale, -scale);
    transform.translate(-middle_.x(), -middle_.y());
    return transform;
}

QPointF FloorView::ToPixels(const world::Point& point) const {
    return ToPixels().map(QPointF(point.x, point.y));
}

world::Point FloorView::ToFloor(const QPointF& pixels) const {
    const QPointF point = ToPixels().inverted().map(pixels);
    return {point.x(), point.y()};
}

}  // namespace zentro
