// Model space entities of one storey, and those drawn once per drawing.
#pragma once

#include "dxf_entities.h"
#include "floor_layout.h"

namespace floorgen {

// Writes storey `storey` (0 for the first) of the drawing: the layout moved
// by `storey` times the storey pitch, with room names "<storey + 1>.<number>".
void WriteStorey(EntityWriter& writer, const FloorLayout& layout, int storey);

// The dimension along the first storey and the title below it.
void WriteDrawingAnnotations(EntityWriter& writer, const FloorLayout& layout, int storeys, int rooms_per_storey);

}  // namespace floorgen
