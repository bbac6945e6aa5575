#include "geometry.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace floorgen {

void Box::Include(Point p) {
  if (IsEmpty()) {
    min_ = max_ = p;
    return;
  }
  min_ = {std::min(min_.x, p.x), std::min(min_.y, p.y)};
  max_ = {std::max(max_.x, p.x), std::max(max_.y, p.y)};
}

void Box::Include(const Box& other) {
  if (other.IsEmpty()) return;
  Include(other.min_);
  Include(other.max_);
}

Box Box::Translated(Point offset) const {
  Box moved = *this;
  if (!IsEmpty()) {
    moved.min_ = min_ + offset;
    moved.max_ = max_ + offset;
  }
  return moved;
}

Box Box::Shrunk(double margin) const {
  Box smaller;
  smaller.Include(Point{min_.x + margin, min_.y + margin});
  smaller.Include(Point{max_.x - margin, max_.y - margin});
  return smaller;
}

Box BoundsOf(const Polygon& polygon) {
  Box box;
  for (Point p : polygon) box.Include(p);
  return box;
}

namespace {

// Unit normal to the left of the axis-parallel edge a -> b.
Point LeftNormal(Point a, Point b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  if (std::abs(dx) >= std::abs(dy)) return {0.0, dx > 0 ? 1.0 : -1.0};
  return {dy > 0 ? -1.0 : 1.0, 0.0};
}

}  // namespace

Polygon OffsetOrthogonalPolygon(const Polygon& polygon, double distance) {
  // Adjacent edges are perpendicular, so moving both by `distance` along their
  // normals moves the shared vertex by the sum of the two normals.
  const std::size_t n = polygon.size();
  Polygon result(n);
  for (std::size_t i = 0; i < n; ++i) {
    const Point previous = polygon[(i + n - 1) % n];
    const Point current = polygon[i];
    const Point next = polygon[(i + 1) % n];
    const Point normal_in = LeftNormal(previous, current);
    const Point normal_out = LeftNormal(current, next);
    result[i] = {current.x + distance * (normal_in.x + normal_out.x),
                 current.y + distance * (normal_in.y + normal_out.y)};
  }
  return result;
}

Polygon ClampToBox(const Polygon& polygon, const Box& box) {
  Polygon result;
  result.reserve(polygon.size());
  for (Point p : polygon) {
    result.push_back({std::clamp(p.x, box.Min().x, box.Max().x),
                      std::clamp(p.y, box.Min().y, box.Max().y)});
  }
  return result;
}

Frame::Frame(Point origin, int quarter_turns)
    : origin_(origin), quarter_turns_(((quarter_turns % 4) + 4) % 4) {}

Point Frame::ToWorld(Point local) const {
  switch (quarter_turns_) {
    case 1:
      return {origin_.x - local.y, origin_.y + local.x};
    case 2:
      return {origin_.x - local.x, origin_.y - local.y};
    case 3:
      return {origin_.x + local.y, origin_.y - local.x};
    default:
      return {origin_.x + local.x, origin_.y + local.y};
  }
}

Polygon Frame::ToWorld(const Polygon& local) const {
  Polygon world;
  world.reserve(local.size());
  for (Point p : local) world.push_back(ToWorld(p));
  return world;
}

}  // namespace floorgen
