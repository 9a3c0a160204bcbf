#include "ui/support/window_place.h"

#include <QMdiSubWindow>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <array>

namespace zentro {

namespace {

constexpr int kLeastWidth = 160;
constexpr int kLeastHeight = 100;

int Twips(const SettingsStore& settings, const PlaceSetting& setting) {
    return AsInteger(settings.GetSetting(setting.number, setting.subKey));
}

int Pixels(const SettingsStore& settings, const PlaceSetting& setting) {
    return Twips(settings, setting) / kTwipsPerPixel;
}

void Save(SettingsStore& settings, const PlaceSetting& setting, int twips) {
    settings.SaveSetting(setting.number, twips, setting.subKey);
}

/// In twips.
int FactoryValue(const PlaceSetting& setting) {
    if (*setting.subKey != '\0') return 0;
    return static_cast<int>(
        std::ranges::find(Settings(), setting.number, &Setting::number)->defaultNumber);
}

constexpr std::array kParts{&PlaceSettings::left, &PlaceSettings::top, &PlaceSettings::width,
                            &PlaceSettings::height};

/// What moves when the window is moved: inside a frame of many windows, its own frame.
template <typename Widget>
Widget& FrameOf(Widget& window) {
    QWidget* parent = window.parentWidget();
    if (qobject_cast<QMdiSubWindow*>(parent) != nullptr) return *parent;
    return window;
}

/// The area in which a window can be seen.
QRect VisibleArea(const QWidget& window) {
    const QWidget* parent = window.parentWidget();
    if (parent != nullptr && !window.isWindow()) return parent->rect();
    return window.screen()->availableGeometry();
}

}  // namespace

QRect LoadPlace(const SettingsStore& settings, const PlaceSettings& place) {
    return {Pixels(settings, place.left), Pixels(settings, place.top),
            std::max(Pixels(settings, place.width), kLeastWidth),
            std::max(Pixels(settings, place.height), kLeastHeight)};
}

void SavePlace(SettingsStore& settings, const PlaceSettings& place, const QRect& pixels) {
    Save(settings, place.left, pixels.left() * kTwipsPerPixel);
    Save(settings, place.top, pixels.top() * kTwipsPerPixel);
    Save(settings, place.width, pixels.width() * kTwipsPerPixel);
    Save(settings, place.height, pixels.height() * kTwipsPerPixel);
}

bool IsFactoryPlace(const SettingsStore& settings, const PlaceSettings& place) {
    return std::ranges::all_of(kParts, [&](auto part) {
        return Twips(settings, place.*part) == FactoryValue(place.*part);
    });
}

void ForgetPlace(SettingsStore& settings, const PlaceSettings& place) {
    for (const auto part : kParts)
        Save(settings, place.*part, FactoryValue(place.*part));
}

QRect KeepWithin(const QRect& place, const QRect& area) {
    QRect kept = place;
    kept.setSize(place.size().boundedTo(area.size()));
    kept.moveLeft(std::clamp(kept.left(), area.left(), area.right() - kept.width() + 1));
    kept.moveTop(std::clamp(kept.top(), area.top(), area.bottom() - kept.height() + 1));
    return kept;
}

void RestorePlace(QWidget& window, const SettingsStore& settings, const PlaceSettings& place) {
    QWidget& frame = FrameOf(window);
    frame.setGeometry(KeepWithin(LoadPlace(settings, place), VisibleArea(frame)));
}

void RememberPlace(const QWidget& window, SettingsStore& settings, const PlaceSettings& place) {
    const QWidget& frame = FrameOf(window);
    if (frame.isMinimized() || frame.isMaximized()) return;
    SavePlace(settings, place, frame.geometry());
}

}  // namespace zentro
