// Planar outlines of straight and bulged segments (LWPOLYLINE, 2D POLYLINE,
// polyline loops of hatches): drawing with exact arcs, exact extents, and
// flattening into points.
#ifndef FLOORXPORT_HOST_DXF_DRAW_OUTLINE_H_
#define FLOORXPORT_HOST_DXF_DRAW_OUTLINE_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <vector>

#include "host/geometry.h"

class AcGiWorldGeometry;

namespace fx::dxf {

// Segment i runs from points[i] to points[i + 1] (for a closed outline the
// last runs back to the first) with bulges[i]; missing bulges are 0.
struct BulgedOutline {
  std::vector<AcGePoint2d> points;
  std::vector<double> bulges;
  bool closed = false;
};

// Draws an outline lying in the plane that `plane_to_world` (an orthonormal
// frame, possibly lifted by an elevation) maps into space: each run of
// straight segments as one polyline, each bulged segment as a circular arc
// about the plane's normal (about the reversed normal for a clockwise
// bulge, so that the arc keeps the outline's direction). Returns true when
// the sink asked to stop.
bool DrawBulgedOutline(AcGiWorldGeometry& geometry, const BulgedOutline& outline,
                       const AcGeMatrix3d& plane_to_world);

// Adds the exact box of the outline mapped by `plane_to_space` (any affine
// transform).
void AddBulgedOutlineExtents(AcDbExtents& box, const BulgedOutline& outline,
                             const AcGeMatrix3d& plane_to_space);

// The outline's points in the plane with each bulged segment replaced by
// chords within `max_deviation`; a closed outline does not repeat its first
// point.
std::vector<AcGePoint2d> FlattenBulgedOutline(const BulgedOutline& outline, double max_deviation);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAW_OUTLINE_H_
