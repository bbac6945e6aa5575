// Plane geometry for the floor-plan generator: points, boxes and axis-parallel
// polygons. Lengths are millimetres; angles are degrees.
#pragma once

#include <vector>

namespace floorgen {

struct Point {
  double x = 0.0;
  double y = 0.0;
};

inline Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
inline Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }

struct Segment {
  Point a;
  Point b;
};

// Axis-aligned box; starts empty and grows with Include().
class Box {
 public:
  void Include(Point p);
  void Include(const Box& other);
  bool IsEmpty() const { return min_.x > max_.x; }
  Point Min() const { return min_; }
  Point Max() const { return max_; }
  Point Center() const { return {(min_.x + max_.x) / 2, (min_.y + max_.y) / 2}; }
  double Width() const { return max_.x - min_.x; }
  double Height() const { return max_.y - min_.y; }
  Box Translated(Point offset) const;
  Box Shrunk(double margin) const;

 private:
  Point min_{1.0, 1.0};
  Point max_{-1.0, -1.0};
};

// Counter-clockwise vertex list of a closed polygon, without a repeated first vertex.
using Polygon = std::vector<Point>;

Box BoundsOf(const Polygon& polygon);

// Moves every edge of a counter-clockwise polygon whose edges are all parallel
// to the axes `distance` to its left, i.e. inwards; a negative distance grows it.
// Consecutive edges must not be collinear.
Polygon OffsetOrthogonalPolygon(const Polygon& polygon, double distance);

// Clamps every vertex into `box`. An axis-parallel polygon stays axis-parallel.
Polygon ClampToBox(const Polygon& polygon, const Box& box);

// Rigid placement of a local (u, v) frame in the plane, turned by a multiple of
// 90 degrees so that axis-parallel geometry stays exactly axis-parallel.
class Frame {
 public:
  Frame(Point origin, int quarter_turns);
  Point ToWorld(Point local) const;
  Polygon ToWorld(const Polygon& local) const;
  double RotationDegrees() const { return 90.0 * quarter_turns_; }

 private:
  Point origin_;
  int quarter_turns_;
};

}  // namespace floorgen
