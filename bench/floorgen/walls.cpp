#include "walls.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace floorgen {

namespace {

constexpr double kTolerance = 1e-6;

using Interval = std::pair<double, double>;

// Parts of the axis-parallel edge a -> b outside the openings it passes through.
void AddEdgeWithGaps(Point a, Point b, const std::vector<const Box*>& openings,
                     std::vector<Segment>& lines) {
  const bool horizontal = std::abs(b.y - a.y) < std::abs(b.x - a.x);
  const double across = horizontal ? a.y : a.x;
  const double from = horizontal ? a.x : a.y;
  const double to = horizontal ? b.x : b.y;
  const double low = std::min(from, to);
  const double high = std::max(from, to);

  std::vector<Interval> gaps;
  for (const Box* opening : openings) {
    const double across_min = horizontal ? opening->Min().y : opening->Min().x;
    const double across_max = horizontal ? opening->Max().y : opening->Max().x;
    if (across < across_min - kTolerance || across > across_max + kTolerance) continue;
    const double along_min = std::max(low, horizontal ? opening->Min().x : opening->Min().y);
    const double along_max = std::min(high, horizontal ? opening->Max().x : opening->Max().y);
    if (along_max - along_min > kTolerance) gaps.emplace_back(along_min, along_max);
  }
  std::sort(gaps.begin(), gaps.end());

  auto emit = [&](double start, double end) {
    if (end - start <= kTolerance) return;
    if (from > to) std::swap(start, end);  // keep the edge's direction
    lines.push_back(horizontal ? Segment{{start, across}, {end, across}}
                               : Segment{{across, start}, {across, end}});
  };
  double cursor = low;
  for (const Interval& gap : gaps) {
    emit(cursor, gap.first);
    cursor = std::max(cursor, gap.second);
  }
  emit(cursor, high);
}

// The two short sides of the opening, across the wall.
void AddJambs(const Box& opening, std::vector<Segment>& lines) {
  const Point low = opening.Min();
  const Point high = opening.Max();
  if (opening.Width() > opening.Height()) {
    lines.push_back({{low.x, low.y}, {low.x, high.y}});
    lines.push_back({{high.x, low.y}, {high.x, high.y}});
  } else {
    lines.push_back({{low.x, low.y}, {high.x, low.y}});
    lines.push_back({{low.x, high.y}, {high.x, high.y}});
  }
}

}  // namespace

void BuildWallLines(FloorLayout& layout) {
  std::vector<std::vector<const Box*>> openings_of_room(layout.rooms.size());
  for (const DoorOpening& opening : layout.openings) {
    openings_of_room[opening.room].push_back(&opening.area);
    openings_of_room[opening.corridor].push_back(&opening.area);
  }
  for (std::size_t i = 0; i < layout.rooms.size(); ++i) {
    Room& room = layout.rooms[i];
    room.wall_lines.clear();
    const Polygon& face = room.wall_face;
    for (std::size_t k = 0; k < face.size(); ++k) {
      AddEdgeWithGaps(face[k], face[(k + 1) % face.size()], openings_of_room[i], room.wall_lines);
    }
  }
  // Jambs belong to the room the door leads into.
  for (const DoorOpening& opening : layout.openings) {
    AddJambs(opening.area, layout.rooms[opening.room].wall_lines);
  }
}

}  // namespace floorgen
