#include "overlap.h"

#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

#include "random.h"

namespace floorgen {

namespace {

// Beyond the wall axis, i.e. well past the neighbour's contour on the other
// side of a wall, and far less than any room is wide or deep.
constexpr double kGrowthBeyondAxis = 600.0;
constexpr std::uint64_t kStreamSalt = 0x6f7665726c6170ULL;

}  // namespace

void EnlargeSomeContours(FloorLayout& layout, double fraction, std::uint64_t seed) {
  const std::size_t room_count = layout.rooms.size();
  const auto chosen_count = static_cast<std::size_t>(std::lround(fraction * static_cast<double>(room_count)));
  std::vector<std::size_t> order(room_count);
  std::iota(order.begin(), order.end(), std::size_t{0});
  Random random(seed ^ kStreamSalt);
  const Box interior = layout.wall_axes.Shrunk(kContourInset);
  for (std::size_t i = 0; i < chosen_count; ++i) {
    // Partial Fisher-Yates shuffle: order[0..i] are the rooms chosen so far.
    const auto pick = i + static_cast<std::size_t>(random.Between(0, static_cast<int>(room_count - i - 1)));
    std::swap(order[i], order[pick]);
    Room& room = layout.rooms[order[i]];
    room.contour = ClampToBox(OffsetOrthogonalPolygon(room.axis_outline, -kGrowthBeyondAxis), interior);
  }
}

}  // namespace floorgen
