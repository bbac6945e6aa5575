#include "host/dxf/draw_curves.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace fx::dxf {
namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
// Tolerance for deciding whether an angle lies within a sweep: angles are
// read from files with about 15 digits.
constexpr double kAngleTolerance = 1e-12;

// Whether angle `t` lies on the sweep from `start` over `sweep` (>= 0).
bool OnSweep(double t, double start, double sweep) {
  if (sweep >= kTwoPi - kAngleTolerance) return true;
  double d = std::fmod(t - start, kTwoPi);
  if (d < 0) d += kTwoPi;
  return d <= sweep + kAngleTolerance;
}

AcGePoint3d PointAt(const AcGePoint3d& center, const AcGeVector3d& u, const AcGeVector3d& v,
                    double t) {
  return center + u * std::cos(t) + v * std::sin(t);
}

}  // namespace

Arc2d BulgeToArc(const AcGePoint2d& from, const AcGePoint2d& to, double bulge) {
  AcGeVector2d chord = to - from;
  double length = chord.length();
  Arc2d arc;
  arc.sweep = 4 * std::atan(bulge);
  arc.radius = length * (1 + bulge * bulge) / (4 * std::abs(bulge));
  // The centre lies on the chord's perpendicular bisector, to the left of
  // the chord for a counter-clockwise arc of less than half a turn; the
  // signed distance c(1 - b^2) / 4b covers every case.
  double offset = (1 - bulge * bulge) / (4 * bulge);
  AcGeVector2d left{-chord.y, chord.x};
  arc.center = from + chord * 0.5 + left * offset;
  arc.start_angle = std::atan2(from.y - arc.center.y, from.x - arc.center.x);
  return arc;
}

double CcwSweep(double start, double end) {
  double sweep = std::fmod(end - start, kTwoPi);
  if (sweep <= kAngleTolerance) sweep += kTwoPi;
  return sweep;
}

double SignedBulgeArea(std::span<const AcGePoint2d> points, std::span<const double> bulges) {
  size_t n = points.size();
  double twice_area = 0;
  double segments = 0;
  for (size_t i = 0; i < n; ++i) {
    const AcGePoint2d& a = points[i];
    const AcGePoint2d& b = points[(i + 1) % n];
    twice_area += a.x * b.y - b.x * a.y;
    double bulge = i < bulges.size() ? bulges[i] : 0;
    if (bulge == 0 || a == b) continue;
    // The circular segment between chord and arc: r^2/2 (theta - sin theta),
    // on the outline's left for a counter-clockwise (positive) bulge.
    Arc2d arc = BulgeToArc(a, b, bulge);
    double theta = std::abs(arc.sweep);
    double segment = arc.radius * arc.radius / 2 * (theta - std::sin(theta));
    segments += bulge > 0 ? segment : -segment;
  }
  return twice_area / 2 + segments;
}

void AddEllipticArcExtents(AcDbExtents& box, const AcGePoint3d& center, const AcGeVector3d& u,
                           const AcGeVector3d& v, double start, double sweep) {
  box.addPoint(PointAt(center, u, v, start));
  box.addPoint(PointAt(center, u, v, start + sweep));
  // Coordinate i is c_i + u_i cos t + v_i sin t, extreme where its
  // derivative -u_i sin t + v_i cos t vanishes: at atan2(v_i, u_i) and
  // half a turn on. The points themselves give the exact extremes.
  const double us[3] = {u.x, u.y, u.z};
  const double vs[3] = {v.x, v.y, v.z};
  for (int axis = 0; axis < 3; ++axis) {
    if (us[axis] == 0 && vs[axis] == 0) continue;
    double t = std::atan2(vs[axis], us[axis]);
    for (double candidate : {t, t + std::numbers::pi}) {
      if (OnSweep(candidate, start, sweep)) box.addPoint(PointAt(center, u, v, candidate));
    }
  }
}

int ArcSegments(double radius, double sweep, double max_deviation) {
  sweep = std::abs(sweep);
  if (radius <= 0 || sweep == 0) return 1;
  // A chord over the parameter step d is at most radius * (1 - cos(d/2))
  // from the arc; steps stay under an eighth of a turn so that coarse
  // deviations still give a recognisable shape.
  double step = std::numbers::pi / 4;
  if (max_deviation > 0 && max_deviation < radius)
    step = std::min(step, 2 * std::acos(1 - max_deviation / radius));
  double segments = std::ceil(sweep / step);
  return static_cast<int>(std::clamp(segments, 1.0, static_cast<double>(kMaxCurveSegments)));
}

std::vector<AcGePoint3d> TessellateEllipticArc(const AcGePoint3d& center, const AcGeVector3d& u,
                                               const AcGeVector3d& v, double start, double sweep,
                                               double max_deviation) {
  // The arc is an affine image of a unit circle arc: its largest stretch
  // bounds the deviation, and it is at most sqrt(|u|^2 + |v|^2).
  double radius = std::sqrt(u.dotProduct(u) + v.dotProduct(v));
  int segments = ArcSegments(radius, sweep, max_deviation);
  std::vector<AcGePoint3d> points;
  points.reserve(static_cast<size_t>(segments) + 1);
  for (int i = 0; i <= segments; ++i)
    points.push_back(PointAt(center, u, v, start + sweep * i / segments));
  return points;
}

double EllipseParamOfAngle(double angle, double ratio) {
  double param = std::atan2(std::sin(angle), ratio * std::cos(angle));
  // Keep the parameter in the same turn as the angle (2pi stays 2pi).
  return param + kTwoPi * std::round((angle - param) / kTwoPi);
}

}  // namespace fx::dxf
