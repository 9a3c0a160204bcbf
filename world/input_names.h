#pragma once

#include <array>
#include <string>
#include <string_view>

#include "world/world.h"

namespace zentro::world {

// The words of a *.world file for sensors and inputs.

struct InputName {
    std::string_view word;
    InputKind kind;
    std::size_t count;
};
inline constexpr std::array<InputName, 4> kInputNames{{{"digital", InputKind::Digital, 4},
                                                       {"button", InputKind::Button, 6},
                                                       {"analog", InputKind::Analog, 6},
                                                       {"pulses", InputKind::Pulses, 4}}};

struct SensorName {
    std::string_view word;
    SensorKind kind;
    double cone;  ///< in degrees, unless the file says otherwise
};
inline constexpr std::array<SensorName, 5> kSensorNames{{{"floor", SensorKind::Floor, 0},
                                                         {"distance", SensorKind::Distance, 20},
                                                         {"light", SensorKind::Light, 0},
                                                         {"bumper", SensorKind::Bumper, 90},
                                                         {"wheel", SensorKind::Wheel, 0}}};

/// "analog2"
inline std::string WordFor(const InputId& input) {
    for (const InputName& name : kInputNames) {
        if (name.kind == input.kind)
            return std::string(name.word) + std::to_string(input.index + 1);
    }
    return {};
}

inline std::string WordFor(SensorKind kind) {
    for (const SensorName& name : kSensorNames) {
        if (name.kind == kind) return std::string(name.word);
    }
    return {};
}

}  // namespace zentro::world
