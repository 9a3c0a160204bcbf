#pragma once

#include "world/world_map.h"

class QPrinter;

namespace zentro {

/// How many sheets a floor takes at its true size.
struct SheetCount {
    int across = 1;
    int down = 1;

    int Total() const { return across * down; }
};

SheetCount SheetsFor(const QPrinter& printer, const world::WorldMap& map);

/// Prints the floor at its true size, row by row from its upper left corner. A thin frame shows
/// where a sheet is cut, and its name stands in it.
void PrintWorld(QPrinter& printer, const world::WorldMap& map);

}  // namespace zentro
