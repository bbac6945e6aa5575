// Geometry of circular and elliptic arcs and of bulged polyline segments:
// exact extents, areas, and tessellation within a chord deviation.
//
// Conventions: an elliptic arc is the curve center + u cos t + v sin t for t
// from `start` over `sweep` (u and v need not be perpendicular, so an arc
// mapped by any affine transform stays of this form). A circular arc in a
// plane runs counter-clockwise for a positive sweep. A bulge is the tangent
// of a quarter of a segment's included angle, positive when the segment
// turns counter-clockwise.
#ifndef FLOORXPORT_HOST_DXF_DRAW_CURVES_H_
#define FLOORXPORT_HOST_DXF_DRAW_CURVES_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <span>
#include <vector>

#include "host/geometry.h"

namespace fx::dxf {

// The largest number of segments a tessellation makes of one curve, whatever
// the deviation asked for.
inline constexpr int kMaxCurveSegments = 4096;

struct Arc2d {
  AcGePoint2d center;
  double radius = 0;
  double start_angle = 0;
  double sweep = 0;  // signed: negative runs clockwise
};

// The arc of the segment from `from` to `to` with `bulge` (not 0).
Arc2d BulgeToArc(const AcGePoint2d& from, const AcGePoint2d& to, double bulge);

// The counter-clockwise sweep from angle `start` to angle `end`, in (0, 2pi]:
// equal angles make a full turn.
double CcwSweep(double start, double end);

// The signed area of the closed outline through `points` whose segment i
// (from point i to point i+1, the last back to the first) has bulges[i];
// positive when the outline runs counter-clockwise. `bulges` may be empty.
double SignedBulgeArea(std::span<const AcGePoint2d> points, std::span<const double> bulges);

// Adds the exact box of an elliptic arc (sweep >= 0) to `box`: its end points
// and, per axis, the points where the coordinate is extreme.
void AddEllipticArcExtents(AcDbExtents& box, const AcGePoint3d& center, const AcGeVector3d& u,
                           const AcGeVector3d& v, double start, double sweep);

// The number of equal parameter steps that keep the chords of an elliptic
// arc with largest semi-axis `radius` within `max_deviation` of it:
// at least 1, at most kMaxCurveSegments.
int ArcSegments(double radius, double sweep, double max_deviation);

// Points along an elliptic arc (sweep >= 0), the first and last exactly at
// its ends, with chords within `max_deviation` of the arc.
std::vector<AcGePoint3d> TessellateEllipticArc(const AcGePoint3d& center, const AcGeVector3d& u,
                                               const AcGeVector3d& v, double start, double sweep,
                                               double max_deviation);

// The eccentric-anomaly parameter of the point at polar `angle` (measured
// from the major axis) on an ellipse of minor/major `ratio`.
double EllipseParamOfAngle(double angle, double ratio);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAW_CURVES_H_
