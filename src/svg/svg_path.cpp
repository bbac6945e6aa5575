#include "svg/svg_path.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "svg/svg_number.h"

namespace fx::svg {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kMaxArcPoints = 4096;
// Decimals of the rotation angle of an arc command, in degrees.
constexpr int kAngleDecimals = 3;
// An ellipse whose minor axis is this small against its major one is drawn
// as chords: an arc command would be a flat line with nothing to bend.
constexpr double kFlatRatio = 1e-9;

}  // namespace

void Box2::Add(Point2 p) {
  min_x = std::min(min_x, p.x);
  min_y = std::min(min_y, p.y);
  max_x = std::max(max_x, p.x);
  max_y = std::max(max_y, p.y);
}

void Box2::Merge(const Box2& other) {
  if (other.empty()) return;
  Add({other.min_x, other.min_y});
  Add({other.max_x, other.max_y});
}

bool Box2::Intersects(const Box2& other) const {
  return !empty() && !other.empty() && min_x <= other.max_x && other.min_x <= max_x &&
         min_y <= other.max_y && other.min_y <= max_y;
}

Point2 EllipticArc::At(double t) const {
  const double c = std::cos(t), s = std::sin(t);
  return {center.x + u.x * c + v.x * s, center.y + u.y * c + v.y * s};
}

Box2 EllipticArc::Bounds() const {
  const double dx = std::hypot(u.x, v.x), dy = std::hypot(u.y, v.y);
  Box2 box;
  box.Add({center.x - dx, center.y - dy});
  box.Add({center.x + dx, center.y + dy});
  return box;
}

EllipseAxes AxesOf(Point2 u, Point2 v) {
  // The singular values of the 2x2 matrix [u v] (columns) are the semi-axes;
  // its left singular vectors give their directions.
  const double e = (u.x + v.y) / 2, f = (u.x - v.y) / 2;
  const double g = (u.y + v.x) / 2, h = (u.y - v.x) / 2;
  const double q = std::hypot(e, h), r = std::hypot(f, g);
  EllipseAxes axes;
  axes.rx = q + r;
  axes.ry = std::abs(q - r);
  const double a1 = std::atan2(g, f), a2 = std::atan2(h, e);
  axes.rotation = (a2 + a1) / 2 * 180 / kPi;
  if (axes.rx - axes.ry <= 1e-9 * axes.rx) {  // a circle: no rotation to write
    axes.ry = axes.rx;
    axes.rotation = 0;
  }
  return axes;
}

std::vector<Point2> ArcPoints(const EllipticArc& arc, double deviation) {
  const EllipseAxes axes = AxesOf(arc.u, arc.v);
  const double sweep = std::abs(arc.sweep);
  // The chord of an angle step a deviates by r (1 - cos(a/2)) from a circle.
  double step = kPi / 2;
  if (deviation > 0 && deviation < axes.rx) step = std::min(step, 2 * std::acos(1 - deviation / axes.rx));
  int count = static_cast<int>(std::ceil(sweep / step));
  count = std::clamp(count, 1, kMaxArcPoints);
  std::vector<Point2> points;
  points.reserve(static_cast<size_t>(count) + 1);
  for (int i = 0; i <= count; ++i) points.push_back(arc.At(arc.start + arc.sweep * i / count));
  return points;
}

void PathWriter::Number(double value) { AppendCoordinate(text_, value, decimals_); }

void PathWriter::MoveTo(Point2 p) {
  text_ += 'M';
  Number(p.x);
  text_ += ',';
  Number(p.y);
}

void PathWriter::LineTo(Point2 p) {
  text_ += 'L';
  Number(p.x);
  text_ += ',';
  Number(p.y);
}

void PathWriter::Close() { text_ += 'Z'; }

void PathWriter::Pair(Point2 p) {
  if (!text_.empty()) text_ += ' ';
  Number(p.x);
  text_ += ',';
  Number(p.y);
}

void PathWriter::Arc(const EllipticArc& arc, bool move, bool approximate, double deviation) {
  if (move) MoveTo(arc.At(arc.start));
  const EllipseAxes axes = AxesOf(arc.u, arc.v);
  if (approximate || axes.ry <= kFlatRatio * axes.rx) {
    const std::vector<Point2> points = ArcPoints(arc, deviation);
    for (size_t i = 1; i < points.size(); ++i) LineTo(points[i]);
    return;
  }
  // Sweep flag 1 is the direction of increasing angle in output
  // coordinates: from u towards v when u x v > 0, for a positive sweep.
  const double cross = arc.u.x * arc.v.y - arc.u.y * arc.v.x;
  const bool positive = (cross > 0) == (arc.sweep > 0);
  const double sweep = std::clamp(arc.sweep, -2 * kPi, 2 * kPi);
  // Pieces of at most half a turn: the large-arc flag is then 0, and a
  // full turn (whose ends coincide) still draws.
  const int pieces = std::abs(sweep) > kPi ? 2 : 1;
  for (int i = 1; i <= pieces; ++i) {
    const Point2 end = arc.At(arc.start + sweep * i / pieces);
    text_ += 'A';
    Number(axes.rx);
    text_ += ',';
    Number(axes.ry);
    text_ += ' ';
    AppendCoordinate(text_, axes.rotation, kAngleDecimals);
    text_ += positive ? " 0,1 " : " 0,0 ";
    Number(end.x);
    text_ += ',';
    Number(end.y);
  }
}

}  // namespace fx::svg
