// The whole drawing, section by section, and the planning pass that fixes
// what the HEADER section must state before the rest is written.
#pragma once

#include <cstdint>
#include <cstdio>

#include "dxf_stream.h"
#include "floor_layout.h"
#include "geometry.h"

namespace floorgen {

struct DrawingPlan {
  int storeys = 1;
  Handle handle_seed = 0;  // one more than the largest handle in the drawing
  Box extents;
};

// Decides the number of storeys — one, or as many as it takes for their
// entities alone to reach `target_bytes` — by writing the drawing to a byte
// counter, and records the handle seed and extents that go with it.
DrawingPlan PlanDrawing(const FloorLayout& layout, int rooms_per_storey, std::uint64_t target_bytes);

// Writes the planned drawing to `file`, flushing the stream but not the file.
void WriteDrawing(std::FILE* file, const FloorLayout& layout, int rooms_per_storey, const DrawingPlan& plan);

}  // namespace floorgen
