// The inside test of room identification: is a point inside a contour.
//
// The rule, in this order: a point whose x or y lies outside the contour's
// extents box is outside (the box's bounds count as inside); a contour with
// an arc segment is refused; a point on one of the contour's segments,
// within the tolerance's equalPoint(), is outside; otherwise the even-odd
// crossing count decides, over the edges (vertex i, vertex j) with j the
// vertex before i, starting from the last one, so an open polyline is
// closed by its last edge. An edge counts when y lies in [y_i, y_j) or
// [y_j, y_i) and the crossing abscissa lies strictly to the right of x.
#ifndef FLOORXPORT_ROOMS_INSIDE_TEST_H_
#define FLOORXPORT_ROOMS_INSIDE_TEST_H_

#include "host/geometry.h"
#include "rooms/contour_geometry.h"

namespace fx::rooms {

enum class InsideResult {
  kInside,
  kOutside,
  kRefusedArcs,  // the contour has arcs: the caller reports it, the point is outside
};

InsideResult TestPointInContour(const AcGePoint2d& point, const ContourGeometry& contour,
                                const AcGeTol& tol = AcGeContext::gTol);

// The host's on-curve test of a line segment: the point is within
// tol.equalPoint() of the segment from `start` to `end`.
bool IsOnSegment(const AcGePoint2d& point, const AcGePoint2d& start, const AcGePoint2d& end,
                 const AcGeTol& tol = AcGeContext::gTol);

// The message printed when a contour with arcs is refused.
inline constexpr const char* kArcsRefused =
    "\npContour polyline contains arcs. Such type is not supported";

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_INSIDE_TEST_H_
