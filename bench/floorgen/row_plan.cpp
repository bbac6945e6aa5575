#include "row_plan.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace floorgen {

namespace {

constexpr int kMinRoomsPerRow = 12;
constexpr int kMeanRoomWidth = 5600;
// Widths are first drawn from this narrower range, then adjusted to the row.
constexpr int kDrawnWidthLow = 3600;
constexpr int kDrawnWidthHigh = 7600;
constexpr int kWidthStep = 100;

// Rows get one room more than others in this order; the stair row comes last
// because its fixed-size stair leaves less room for extra rooms.
std::vector<int> ExtraRoomOrder(int row_count) {
  std::vector<int> order;
  for (int row = 0; row < row_count; ++row) {
    if (row != kStairRow) order.push_back(row);
  }
  order.push_back(kStairRow);
  return order;
}

int MinWidthOfPlace(int row, int place) {
  return row == kStairRow && place == 0 ? kStairWidth : kMinRoomWidth;
}

int RowMinLength(int row, int rooms) { return MinWidthOfPlace(row, 0) + (rooms - 1) * kMinRoomWidth; }

int RowMaxLength(int rooms) { return rooms * kMaxRoomWidth; }

// Widths are drawn freely, then nudged in steps, room by room, until they add up
// to the row length while each stays within its bounds.
std::vector<int> DrawRowWidths(int row, int rooms, int row_length, Random& random) {
  std::vector<int> widths(static_cast<std::size_t>(rooms));
  int total = 0;
  for (int place = 0; place < rooms; ++place) {
    const int low = std::max(MinWidthOfPlace(row, place), kDrawnWidthLow) / kWidthStep;
    widths[static_cast<std::size_t>(place)] = random.Between(low, kDrawnWidthHigh / kWidthStep) * kWidthStep;
    total += widths[static_cast<std::size_t>(place)];
  }
  while (total != row_length) {
    const int step = total < row_length ? kWidthStep : -kWidthStep;
    for (int place = 0; place < rooms && total != row_length; ++place) {
      int& width = widths[static_cast<std::size_t>(place)];
      if (width + step < MinWidthOfPlace(row, place) || width + step > kMaxRoomWidth) continue;
      width += step;
      total += step;
    }
  }
  return widths;
}

}  // namespace

RowPlan PlanRows(int room_count, Random& random) {
  if (room_count < 3) throw std::invalid_argument("a storey needs at least 3 rooms");
  RowPlan plan;
  // Rows about as long as the stack of bands is high keep the storey roughly
  // square; small storeys get one band with a usual office row length.
  const int rooms_per_row = std::max(kMinRoomsPerRow, static_cast<int>(std::ceil(std::sqrt(room_count))));
  plan.band_count = (room_count + 2 * rooms_per_row) / (2 * rooms_per_row + 1);
  const int row_count = 2 * plan.band_count;
  const int rooms_in_rows = room_count - plan.band_count;  // one corridor per band
  plan.rooms_per_row.assign(static_cast<std::size_t>(row_count), rooms_in_rows / row_count);
  const std::vector<int> order = ExtraRoomOrder(row_count);
  for (int i = 0; i < rooms_in_rows % row_count; ++i) {
    ++plan.rooms_per_row[static_cast<std::size_t>(order[static_cast<std::size_t>(i)])];
  }

  int shortest = 0;
  int longest = RowMaxLength(plan.rooms_per_row[0]);
  int most_rooms = 0;
  for (int row = 0; row < row_count; ++row) {
    const int rooms = plan.rooms_per_row[static_cast<std::size_t>(row)];
    shortest = std::max(shortest, RowMinLength(row, rooms));
    longest = std::min(longest, RowMaxLength(rooms));
    most_rooms = std::max(most_rooms, rooms);
  }
  if (shortest > longest) throw std::logic_error("rows cannot share one length");
  plan.row_length = std::clamp(most_rooms * kMeanRoomWidth, shortest, longest);

  for (int row = 0; row < row_count; ++row) {
    plan.room_widths.push_back(
        DrawRowWidths(row, plan.rooms_per_row[static_cast<std::size_t>(row)], plan.row_length, random));
  }
  return plan;
}

}  // namespace floorgen
