#pragma once

#include <QString>

#include "world/world.h"

class QImage;

namespace zentro {

struct LoadedPicture {
    world::FloorPicture picture;  ///< only if there is no problem
    QString problem;              ///< as the user is told, or empty
};

/// What file dialogs offer.
inline constexpr const char* kPictureFilters =
    "Pictures|*.png *.jpg *.jpeg *.bmp *.gif|All Files (*.*)|*.*";

/// Reads a file with a picture for that floor. The picture keeps its proportions and lies in the
/// middle; beside it the floor is as bright as ever.
LoadedPicture LoadFloorPicture(const QString& path, const world::Floor& floor);

/// The picture as what it takes from a floor of that colour: opaque where it is black, clear where
/// it leaves the floor as it is.
QImage ShadowOf(const world::FloorPicture& picture, const QColor& ink);

}  // namespace zentro
