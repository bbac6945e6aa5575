// Deliberately faulty contours for benchmarks of overlap searches.
#pragma once

#include <cstdint>

#include "floor_layout.h"

namespace floorgen {

// Enlarges the contours of round(fraction * room count) rooms, chosen at
// random, so that each reaches into its neighbours, while staying inside the
// exterior walls. Walls, doors and annotations keep their places. The choice
// uses its own random stream, so the rest of the layout does not depend on
// the fraction.
void EnlargeSomeContours(FloorLayout& layout, double fraction, std::uint64_t seed);

}  // namespace floorgen
