// A spatial index of the extents boxes of a contour list, so that room
// identification asks only the contours whose box can matter instead of
// walking the whole list for every point and every contour.
#ifndef FLOORXPORT_ROOMS_CONTOUR_INDEX_H_
#define FLOORXPORT_ROOMS_CONTOUR_INDEX_H_

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "host/geometry.h"
#include "rooms/contour_geometry.h"

namespace fx::rooms {

class ContourIndex {
 public:
  // Indexes the contours with a non-empty box; `contours` need not outlive
  // the index (the boxes are copied).
  explicit ContourIndex(std::span<const ContourGeometry> contours);
  ~ContourIndex();
  ContourIndex(const ContourIndex&) = delete;
  ContourIndex& operator=(const ContourIndex&) = delete;

  // The contours whose box holds `point` (bounds included), in list order:
  // every contour that can pass the inside test's extents check.
  std::vector<size_t> ContoursAt(const AcGePoint2d& point) const;
  // The contours whose box meets `box` (bounds included), in list order.
  std::vector<size_t> ContoursMeeting(const AcDbExtents& box) const;

 private:
  struct Tree;
  std::unique_ptr<Tree> tree_;
};

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_CONTOUR_INDEX_H_
