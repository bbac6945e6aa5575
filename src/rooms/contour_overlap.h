// Which room contours overlap: the intersecting pairs of room
// identification.
//
// ContoursOverlap(a, b) tests `a` against `b`. It passes when the extents
// boxes pass the corner pre-check (one of the four corners of a's box lies
// inside b's box by more than kOverlapBoxTolerance in both x and y) and then
// one of b's vertices is inside `a` by the inside test (inside_test.h): the
// start point of each of b's segments and, for an open `b`, its end point,
// which together are all of b's vertices. A vertex on a's edge does not
// count, so contours that only share an edge do not overlap. The test is an
// overlap test, not an edge-crossing test: two bars laid across each other
// with no vertex inside the other do not overlap. Contours with arcs are not
// tested and overlap nothing.
#ifndef FLOORXPORT_ROOMS_CONTOUR_OVERLAP_H_
#define FLOORXPORT_ROOMS_CONTOUR_OVERLAP_H_

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "rooms/contour_geometry.h"

namespace fx::rooms {

inline constexpr double kOverlapBoxTolerance = 0.001;

// The pre-check alone: one of the corners of a's box lies inside b's box by
// more than kOverlapBoxTolerance in x and in y.
bool BoxCornerInside(const AcDbExtents& a, const AcDbExtents& b);

// `a` against `b` as above; the caller passes two different contours.
bool ContoursOverlap(const ContourGeometry& a, const ContourGeometry& b);

using ContourPair = std::pair<size_t, size_t>;  // indices into the contour list

// Every ordered pair (i, j), i != j, of contours without arcs for which
// ContoursOverlap(contours[i], contours[j]) holds, ordered by i and then j:
// the list that testing every ordered pair gives, found through a spatial
// index of the extents boxes (only boxes that meet can pass the pre-check).
std::vector<ContourPair> FindOverlappingPairs(std::span<const ContourGeometry> contours);

// The same by testing every ordered pair: the definition, quadratic; for
// tests and benchmarks.
std::vector<ContourPair> FindOverlappingPairsBruteForce(std::span<const ContourGeometry> contours);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_CONTOUR_OVERLAP_H_
