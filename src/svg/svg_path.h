// Path and point data in output (SVG) coordinates: the "d" of a path and
// the "points" of a polyline, every coordinate written with the
// renderer's precision; elliptic arcs as SVG arc commands or as chords.
#ifndef FLOORXPORT_SVG_SVG_PATH_H_
#define FLOORXPORT_SVG_SVG_PATH_H_

#include <limits>
#include <string>
#include <vector>

namespace fx::svg {

struct Point2 {
  double x = 0, y = 0;
};

// An axis-aligned box; empty until a point is added.
struct Box2 {
  double min_x = std::numeric_limits<double>::infinity();
  double min_y = std::numeric_limits<double>::infinity();
  double max_x = -std::numeric_limits<double>::infinity();
  double max_y = -std::numeric_limits<double>::infinity();
  void Add(Point2 p);
  void Merge(const Box2& other);
  bool empty() const { return !(min_x <= max_x); }
  // Touching counts as intersecting.
  bool Intersects(const Box2& other) const;
};

// C + U cos t + V sin t for t from `start` over `sweep` radians; the sweep
// may be negative. Any affine image of a circular or elliptic arc has this
// form with the images of its axes as U and V.
struct EllipticArc {
  Point2 center, u, v;
  double start = 0, sweep = 0;
  Point2 At(double t) const;
  Box2 Bounds() const;  // of the whole ellipse: a cover of the arc
};

// The semi-axes of the ellipse with conjugate semi-diameters u and v, and
// the angle of the first axis from the x axis towards the y axis, in degrees.
struct EllipseAxes {
  double rx = 0, ry = 0, rotation = 0;
};
EllipseAxes AxesOf(Point2 u, Point2 v);

// Points along the arc, its ends included, no further than `deviation`
// from it.
std::vector<Point2> ArcPoints(const EllipticArc& arc, double deviation);

class PathWriter {
 public:
  explicit PathWriter(int decimals) : decimals_(decimals) {}
  void Clear() { text_.clear(); }
  bool empty() const { return text_.empty(); }
  const std::string& text() const { return text_; }

  // "M%s,%s", "L%s,%s", "Z".
  void MoveTo(Point2 p);
  void LineTo(Point2 p);
  void Close();
  // Continues from the arc's start (which must be the current point, or is
  // moved to first when `move` is set) along the arc: SVG arc commands
  // "A%s,%s %s %u,%u %s,%s", one per half turn at most, or chords within
  // `deviation` when `approximate` is set or the ellipse is flat.
  void Arc(const EllipticArc& arc, bool move, bool approximate, double deviation);
  // "%s,%s" with a blank before all but the first pair: polyline points.
  void Pair(Point2 p);
  // One coordinate.
  void Number(double value);

 private:
  int decimals_;
  std::string text_;
};

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_SVG_PATH_H_
