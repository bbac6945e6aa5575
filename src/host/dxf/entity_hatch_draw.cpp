// How a hatch draws and measures itself: extents are those of its boundary;
// drawing offers the loops to the sink's hatch hook first, and otherwise
// fills each loop as a polygon (solid fill) or draws the pattern's dashes
// clipped to the loops. Hatch style 2 ("ignore") hatches only the outer
// loops (type bit 1), where there are any; the other styles hatch by the
// even-odd rule over all loops.
#include <cmath>
#include <numbers>
#include <string>

#include "host/db_entities.h"
#include "host/dxf/draw_curves.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/draw_hatch.h"
#include "host/dxf/draw_outline.h"
#include "host/dxf/entity_support.h"
#include "host/world_draw.h"

namespace fx::dxf {
namespace {

constexpr int kOuterLoop = 1;
constexpr int kStyleIgnore = 2;

BulgedOutline OutlineOf(const AcDbHatchLoop& loop) { return {loop.vertices, loop.bulges, loop.closed}; }

// An arc edge as center + u cos t + v sin t from `start` over a
// non-negative `sweep`, in the plane.
void ArcForm(const AcDbHatchEdge& edge, AcGeVector2d& u, AcGeVector2d& v, double& start, double& sweep) {
  if (edge.kind == AcDbHatchEdge::kCircArc) {
    u = {edge.radius, 0};
    v = {0, edge.radius};
  } else {
    u = edge.major_axis;
    v = AcGeVector2d(-edge.major_axis.y, edge.major_axis.x) * edge.minor_ratio;
  }
  if (edge.counter_clockwise) {
    start = edge.start_angle;
    sweep = CcwSweep(edge.start_angle, edge.end_angle);
  } else {
    // Clockwise from start to end covers the same points as counter-clockwise from end to start.
    start = edge.end_angle;
    sweep = CcwSweep(edge.end_angle, edge.start_angle);
  }
}

AcGePoint3d Lift(const AcGePoint2d& p) { return {p.x, p.y, 0}; }
AcGeVector3d Lift(const AcGeVector2d& v) { return {v.x, v.y, 0}; }

void AppendPoint(std::vector<AcGePoint2d>& out, const AcGePoint2d& p) {
  if (out.empty() || !(out.back() == p)) out.push_back(p);
}

}  // namespace

std::vector<AcGePoint2d> FlattenLoop(const AcDbHatchLoop& loop, const std::vector<SplineCurve>& splines,
                                     double max_deviation) {
  if (loop.is_polyline) return FlattenBulgedOutline(OutlineOf(loop), max_deviation);
  std::vector<AcGePoint2d> out;
  size_t spline = 0;
  for (const AcDbHatchEdge& edge : loop.edges) {
    switch (edge.kind) {
      case AcDbHatchEdge::kLine:
        AppendPoint(out, edge.start);
        AppendPoint(out, edge.end);
        break;
      case AcDbHatchEdge::kCircArc:
      case AcDbHatchEdge::kEllipArc: {
        AcGeVector2d u, v;
        double start, sweep;
        ArcForm(edge, u, v, start, sweep);
        std::vector<AcGePoint3d> points =
            TessellateEllipticArc(Lift(edge.center), Lift(u), Lift(v), start, sweep, max_deviation);
        if (!edge.counter_clockwise) std::reverse(points.begin(), points.end());
        for (const AcGePoint3d& p : points) AppendPoint(out, p.to2d());
        break;
      }
      case AcDbHatchEdge::kSpline:
        if (spline < splines.size()) {
          for (const AcGePoint3d& p : splines[spline].Sample(max_deviation)) AppendPoint(out, p.to2d());
        }
        ++spline;
        break;
    }
  }
  if (out.size() > 1 && out.front() == out.back()) out.pop_back();
  return out;
}

void AddLoopExtents(AcDbExtents& box, const AcDbHatchLoop& loop, const std::vector<SplineCurve>& splines,
                    const AcGeMatrix3d& plane_to_space) {
  if (loop.is_polyline) {
    AddBulgedOutlineExtents(box, OutlineOf(loop), plane_to_space);
    return;
  }
  size_t spline = 0;
  for (const AcDbHatchEdge& edge : loop.edges) {
    switch (edge.kind) {
      case AcDbHatchEdge::kLine:
        box.addPoint(plane_to_space * Lift(edge.start));
        box.addPoint(plane_to_space * Lift(edge.end));
        break;
      case AcDbHatchEdge::kCircArc:
      case AcDbHatchEdge::kEllipArc: {
        AcGeVector2d u, v;
        double start, sweep;
        ArcForm(edge, u, v, start, sweep);
        AddEllipticArcExtents(box, plane_to_space * Lift(edge.center), plane_to_space * Lift(u),
                              plane_to_space * Lift(v), start, sweep);
        break;
      }
      case AcDbHatchEdge::kSpline:
        if (spline < splines.size()) splines[spline].Transformed(plane_to_space).AddExtents(box);
        ++spline;
        break;
    }
  }
}

void AddExtents(const AcDbHatch& hatch, const AcGeMatrix3d& transform, AcDbExtents& box) {
  HatchBoundary boundary = ReadHatchBoundary(hatch, 0);
  AcGeMatrix3d plane_to_space = transform * hatch.planeToWorld();
  for (size_t i = 0; i < boundary.loops.size(); ++i)
    AddLoopExtents(box, boundary.loops[i], boundary.splines[i], plane_to_space);
}

}  // namespace fx::dxf

bool AcDbHatch::worldDraw(AcGiWorldDraw* world_draw) {
  using namespace fx::dxf;
  SetEntityTraits(*this, *world_draw);
  AcGiWorldGeometry& geometry = world_draw->geometry();
  const AcGeMatrix3d to_world = planeToWorld();
  const double deviation = ModelDeviation(*world_draw);
  HatchBoundary boundary = ReadHatchBoundary(*this, deviation);
  if (geometry.hatch(*this, boundary.loops, to_world)) return true;

  bool any_outer = false;
  for (const AcDbHatchLoop& loop : boundary.loops) any_outer = any_outer || (loop.loop_type & kOuterLoop);
  std::vector<std::vector<AcGePoint2d>> polygons;
  for (size_t i = 0; i < boundary.loops.size(); ++i) {
    if (hatchStyle() == kStyleIgnore && any_outer && !(boundary.loops[i].loop_type & kOuterLoop)) continue;
    polygons.push_back(FlattenLoop(boundary.loops[i], boundary.splines[i], deviation));
  }
  auto draw_polygons = [&](bool filled) {
    world_draw->subEntityTraits().setFillType(filled ? kAcGiFillAlways : kAcGiFillNever);
    bool stop = false;
    for (const std::vector<AcGePoint2d>& polygon : polygons) {
      if (polygon.size() < 3 || stop) continue;
      std::vector<AcGePoint3d> points;
      for (const AcGePoint2d& p : polygon) points.push_back(to_world * AcGePoint3d(p.x, p.y, 0));
      if (filled) {
        stop = geometry.polygon(static_cast<uint32_t>(points.size()), points.data());
      } else {
        points.push_back(points.front());
        stop = geometry.polyline(static_cast<uint32_t>(points.size()), points.data());
      }
    }
    world_draw->subEntityTraits().setFillType(kAcGiFillNever);
    return stop;
  };
  if (isSolidFill()) return !draw_polygons(true);

  std::vector<PatternDash> dashes;
  if (!ClipPattern(polygons, patternLines(), dashes)) {
    ReportDrawWarning("Hatch " + handle().ascii() + ": pattern \"" + patternName() +
                      "\" is too dense to draw; its boundary is drawn instead");
    return !draw_polygons(false);
  }
  for (const PatternDash& dash : dashes) {
    const AcGePoint3d points[2] = {to_world * AcGePoint3d(dash.start.x, dash.start.y, 0),
                                   to_world * AcGePoint3d(dash.end.x, dash.end.y, 0)};
    if (geometry.polyline(2, points)) return false;
  }
  return true;
}
