#pragma once

#include <QColor>
#include <QPalette>
#include <array>
#include <vector>

#include "desktop/robot_trail.h"
#include "world/world_map.h"

class QPainter;

namespace zentro {

// Pictures of a world, for painters whose unit is a centimetre and whose y points upwards.

struct FloorLook {
    double pattern = 25;  ///< side of a field of its pattern, in centimetres: to judge distances by
    bool isPaper = false;  ///< white and without a pattern, for a printer
};

/// The floor with all that lies and stands on it.
void PaintWorld(QPainter& painter, const world::WorldMap& map, const QPalette& palette,
                const FloorLook& look = {});

/// The way that a robot has come.
void PaintTrail(QPainter& painter, const std::vector<TrailPiece>& pieces);

QColor ColourOf(Pen pen);

/// The robot with its sensors and its two lamps.
void PaintRobot(QPainter& painter, const world::WorldMap& map, const world::Pose& robot,
                const std::array<bool, 2>& leds);

/// What each sensor sees or feels from there.
void PaintSight(QPainter& painter, const world::WorldMap& map, const world::Pose& robot);

/// Where a robot starts.
void PaintStart(QPainter& painter, const world::WorldMap& map);

}  // namespace zentro
