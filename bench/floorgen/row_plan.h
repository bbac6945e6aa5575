// How the rooms of one storey are spread over rows, and how wide each room is.
//
// A storey is a stack of bands; each band is a corridor with a row of rooms on
// either side. Every row has the same length so that the storey is a rectangle.
#pragma once

#include <vector>

#include "random.h"

namespace floorgen {

inline constexpr int kMinRoomWidth = 3200;  // wall axis to wall axis, millimetres
inline constexpr int kMaxRoomWidth = 8000;
inline constexpr int kStairWidth = 6000;  // the stair core needs at least this much

struct RowPlan {
  int band_count = 0;
  // Row 2*b is the south row of band b, row 2*b+1 its north row. The stair core
  // takes the first place of row 1.
  std::vector<int> rooms_per_row;
  int row_length = 0;
  // Room widths along each row, in the order rooms are placed along it.
  std::vector<std::vector<int>> room_widths;
};

inline constexpr int kStairRow = 1;

// Splits `room_count` rooms (corridors included, at least 3) into bands and
// rows, then draws room widths between kMinRoomWidth and kMaxRoomWidth that add
// up to the common row length.
RowPlan PlanRows(int room_count, Random& random);

}  // namespace floorgen
