// HATCH entities: a solid fill with a polyline boundary and a line pattern
// fill with an edge boundary.
#pragma once

#include <span>
#include <string_view>

#include "dxf_entities.h"
#include "floor_layout.h"

namespace floorgen {

void WriteSolidHatch(EntityWriter& writer, std::string_view layer, int color, const Polygon& boundary);

// The ANSI31 pattern (lines at 45 degrees, 3.175 units apart) times `scale`,
// inside the closed loop of `edges`.
void WriteAnsi31Hatch(EntityWriter& writer, std::string_view layer, std::span<const HatchEdge> edges,
                      double scale);

}  // namespace floorgen
