#include "host/dxf/draw_outline.h"

#include <cmath>

#include "host/dxf/draw_curves.h"
#include "host/world_draw.h"

namespace fx::dxf {
namespace {

size_t SegmentCount(const BulgedOutline& outline) {
  size_t n = outline.points.size();
  if (n < 2) return 0;
  return outline.closed ? n : n - 1;
}

double BulgeAt(const BulgedOutline& outline, size_t i) {
  return i < outline.bulges.size() ? outline.bulges[i] : 0;
}

AcGePoint3d Lift(const AcGeMatrix3d& transform, const AcGePoint2d& p) {
  return transform * AcGePoint3d(p.x, p.y, 0);
}

}  // namespace

bool DrawBulgedOutline(AcGiWorldGeometry& geometry, const BulgedOutline& outline,
                       const AcGeMatrix3d& plane_to_world) {
  const size_t n = outline.points.size();
  const AcGeVector3d normal = (plane_to_world * AcGeVector3d::kZAxis).normal();
  std::vector<AcGePoint3d> run;
  auto flush = [&]() {
    bool stop = run.size() >= 2 &&
                geometry.polyline(static_cast<uint32_t>(run.size()), run.data(), &normal);
    run.clear();
    return stop;
  };
  if (n == 1) {
    // A single vertex draws as a point: a polyline of no length.
    AcGePoint3d p = Lift(plane_to_world, outline.points[0]);
    const AcGePoint3d points[2] = {p, p};
    return geometry.polyline(2, points, &normal);
  }
  for (size_t i = 0; i < SegmentCount(outline); ++i) {
    const AcGePoint2d& a = outline.points[i];
    const AcGePoint2d& b = outline.points[(i + 1) % n];
    double bulge = BulgeAt(outline, i);
    if (bulge == 0 || a == b) {
      if (run.empty()) run.push_back(Lift(plane_to_world, a));
      run.push_back(Lift(plane_to_world, b));
      continue;
    }
    if (flush()) return true;
    Arc2d arc = BulgeToArc(a, b, bulge);
    AcGeVector3d start_vector =
        plane_to_world * AcGeVector3d(std::cos(arc.start_angle), std::sin(arc.start_angle), 0);
    if (geometry.circularArc(Lift(plane_to_world, arc.center), arc.radius,
                             arc.sweep > 0 ? normal : -normal, start_vector, std::abs(arc.sweep)))
      return true;
  }
  return flush();
}

void AddBulgedOutlineExtents(AcDbExtents& box, const BulgedOutline& outline,
                             const AcGeMatrix3d& plane_to_space) {
  const size_t n = outline.points.size();
  for (const AcGePoint2d& p : outline.points) box.addPoint(Lift(plane_to_space, p));
  for (size_t i = 0; i < SegmentCount(outline); ++i) {
    const AcGePoint2d& a = outline.points[i];
    const AcGePoint2d& b = outline.points[(i + 1) % n];
    double bulge = BulgeAt(outline, i);
    if (bulge == 0 || a == b) continue;
    Arc2d arc = BulgeToArc(a, b, bulge);
    AcGeVector3d u = plane_to_space * AcGeVector3d(arc.radius, 0, 0);
    AcGeVector3d v = plane_to_space * AcGeVector3d(0, arc.radius, 0);
    // The same points for a clockwise sweep, taken counter-clockwise from its end.
    double start = arc.sweep > 0 ? arc.start_angle : arc.start_angle + arc.sweep;
    AddEllipticArcExtents(box, Lift(plane_to_space, arc.center), u, v, start, std::abs(arc.sweep));
  }
}

std::vector<AcGePoint2d> FlattenBulgedOutline(const BulgedOutline& outline, double max_deviation) {
  const size_t n = outline.points.size();
  std::vector<AcGePoint2d> out;
  if (n == 0) return out;
  out.push_back(outline.points[0]);
  for (size_t i = 0; i < SegmentCount(outline); ++i) {
    const AcGePoint2d& a = outline.points[i];
    const AcGePoint2d& b = outline.points[(i + 1) % n];
    double bulge = BulgeAt(outline, i);
    if (bulge != 0 && a != b) {
      Arc2d arc = BulgeToArc(a, b, bulge);
      int segments = ArcSegments(arc.radius, arc.sweep, max_deviation);
      for (int k = 1; k < segments; ++k) {
        double t = arc.start_angle + arc.sweep * k / segments;
        out.push_back({arc.center.x + arc.radius * std::cos(t), arc.center.y + arc.radius * std::sin(t)});
      }
    }
    out.push_back(b);
  }
  // The closing segment ends where the outline started.
  if (outline.closed && out.size() > 1) out.pop_back();
  return out;
}

}  // namespace fx::dxf
