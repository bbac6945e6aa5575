// The linear dimension: its DIMENSION entity and the graphics of its
// anonymous block (what CAD programs display for it).
#pragma once

#include <string_view>

#include "annotations.h"
#include "dxf_entities.h"

namespace floorgen {

// Extension lines, dimension line, arrowheads, measurement text and
// definition points, drawn as the dimension style describes.
void WriteDimensionBlockContent(EntityWriter& writer, const LinearDimension& dimension);

void WriteRotatedDimension(EntityWriter& writer, std::string_view layer, const LinearDimension& dimension,
                           std::string_view block, std::string_view dimension_style);

}  // namespace floorgen
