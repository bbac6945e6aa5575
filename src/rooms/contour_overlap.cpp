#include "rooms/contour_overlap.h"

#include "rooms/contour_index.h"
#include "rooms/inside_test.h"

namespace fx::rooms {
namespace {

// By differences, so that the answer does not depend on where the boxes lie.
bool Strictly(double value, double low, double high) {
  return value - low > kOverlapBoxTolerance && high - value > kOverlapBoxTolerance;
}

bool Testable(const ContourGeometry& contour) { return !contour.has_bulges; }

}  // namespace

bool BoxCornerInside(const AcDbExtents& a, const AcDbExtents& b) {
  if (a.isEmpty() || b.isEmpty()) return false;
  const double xs[] = {a.minPoint().x, a.maxPoint().x};
  const double ys[] = {a.minPoint().y, a.maxPoint().y};
  for (double x : xs) {
    for (double y : ys) {
      if (Strictly(x, b.minPoint().x, b.maxPoint().x) && Strictly(y, b.minPoint().y, b.maxPoint().y)) {
        return true;
      }
    }
  }
  return false;
}

bool ContoursOverlap(const ContourGeometry& a, const ContourGeometry& b) {
  if (!BoxCornerInside(a.extents, b.extents)) return false;
  // The start points of b's segments, and its end point when it is open:
  // every vertex either way.
  for (const AcGePoint2d& vertex : b.vertices) {
    if (TestPointInContour(vertex, a) == InsideResult::kInside) return true;
  }
  return false;
}

std::vector<ContourPair> FindOverlappingPairs(std::span<const ContourGeometry> contours) {
  // Only a box that meets a's box (bounds included) can hold one of its
  // corners strictly inside, so the index keeps every pair the pre-check
  // would pass; the candidates come in list order, as the loops give them.
  const ContourIndex index(contours);
  std::vector<ContourPair> pairs;
  for (size_t i = 0; i < contours.size(); ++i) {
    if (!Testable(contours[i])) continue;
    for (size_t j : index.ContoursMeeting(contours[i].extents)) {
      if (j != i && Testable(contours[j]) && ContoursOverlap(contours[i], contours[j])) {
        pairs.emplace_back(i, j);
      }
    }
  }
  return pairs;
}

std::vector<ContourPair> FindOverlappingPairsBruteForce(std::span<const ContourGeometry> contours) {
  std::vector<ContourPair> pairs;
  for (size_t i = 0; i < contours.size(); ++i) {
    if (!Testable(contours[i])) continue;
    for (size_t j = 0; j < contours.size(); ++j) {
      if (j != i && Testable(contours[j]) && ContoursOverlap(contours[i], contours[j])) {
        pairs.emplace_back(i, j);
      }
    }
  }
  return pairs;
}

}  // namespace fx::rooms
