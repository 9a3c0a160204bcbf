#include "ui/board/feed_button.h"

#include <QCoreApplication>
#include <algorithm>
#include <utility>

namespace zentro {

namespace {

const world::Sensor* SensorOf(const world::WorldMap& map, const world::InputId& input) {
    const std::vector<world::Sensor>& sensors = map.world.sensors;
    const auto found = std::ranges::find(sensors, input, &world::Sensor::input);
    return found == sensors.end() ? nullptr : &*found;
}

QString ObjectName(const world::InputId& input) {
    const auto name = [&] {
        switch (input.kind) {
            case world::InputKind::Digital: return "FeedDigital%1";
            case world::InputKind::Button: return "FeedButton%1";
            case world::InputKind::Analog: return "FeedAnalog%1";
            case world::InputKind::Pulses: break;
        }
        return "FeedPulses%1";
    }();
    return QString(name).arg(input.index + 1);
}

}  // namespace

QString SensorWords(world::SensorKind kind) {
    const auto say = [](const char* text) {
        return QCoreApplication::translate("zentro::FeedButton", text);
    };
    switch (kind) {
        case world::SensorKind::Floor: return say(QT_TR_NOOP("an eye that looks at the floor"));
        case world::SensorKind::Distance: return say(QT_TR_NOOP("a distance sensor"));
        case world::SensorKind::Light: return say(QT_TR_NOOP("a light sensor"));
        case world::SensorKind::Bumper: return say(QT_TR_NOOP("a bumper"));
        case world::SensorKind::Wheel: break;
    }
    return say(QT_TR_NOOP("a wheel that gives pulses as it turns"));
}

FeedButton::FeedButton(const world::InputId& input, QString inputName, QWidget* parent)
    : QToolButton(parent), input_(input), inputName_(std::move(inputName)) {
    setObjectName(ObjectName(input));
    setAccessibleName(inputName_);
    setCheckable(true);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setMinimumWidth(fontMetrics().horizontalAdvance(tr("robot")) + 6);
    connect(this, &QToolButton::clicked, this,
            [this](bool held) { emit HoldWanted(input_, held); });
}

void FeedButton::Show(const Scene& scene) {
    const world::Sensor* sensor = SensorOf(*scene.map, input_);
    setVisible(sensor != nullptr);
    if (sensor == nullptr) return;
    const bool held = IsTakenOver(scene.state, input_);
    if (isChecked() != held) setChecked(held);
    const QString text = held ? tr("hand") : tr("robot");
    if (text != this->text()) setText(text);
    const QString words = SensorWords(sensor->kind);
    const QString name =
        held ? tr("%1 is held by hand. Press to give it back to the robot: %2")
                   .arg(inputName_, words)
             : tr("%1 is fed by the robot: %2. Press to hold it by hand").arg(inputName_, words);
    if (name == accessibleName()) return;
    setAccessibleName(name);
    setToolTip(name);
}

}  // namespace zentro
