// Wall drawing of a storey: each room's wall faces, interrupted where a door
// opening passes through them, plus the jambs that close the wall at the
// sides of each opening. Two neighbouring rooms thus give the pair of lines
// of the wall between them.
#pragma once

#include "floor_layout.h"

namespace floorgen {

// Fills Room::wall_lines of every room from its wall face and the openings.
void BuildWallLines(FloorLayout& layout);

}  // namespace floorgen
