#include "rooms/inside_test.h"

#include <cmath>
#include <vector>

#include "host/database.h"
#include "host/editor.h"
#include "rooms/doc_data.h"

namespace fx::rooms {
namespace {

bool InsideBox(const AcGePoint2d& point, const AcDbExtents& box) {
  return point.x >= box.minPoint().x && point.x <= box.maxPoint().x &&
         point.y >= box.minPoint().y && point.y <= box.maxPoint().y;
}

// A point on an edge is outside: deliberately, so that two rooms sharing a
// wall line never both hold a label placed on it.
bool OnAnySegment(const AcGePoint2d& point, const ContourGeometry& contour, const AcGeTol& tol) {
  const std::vector<AcGePoint2d>& v = contour.vertices;
  const size_t segments = contour.closed ? v.size() : (v.empty() ? 0 : v.size() - 1);
  for (size_t i = 0; i < segments; ++i) {
    if (IsOnSegment(point, v[i], v[(i + 1) % v.size()], tol)) return true;
  }
  return false;
}

// Even-odd crossing count, written as the rule states it (x <= x_c and
// x_c != x is x < x_c; kept in its two parts to read like the rule). The
// crossing is compared as an offset from vertex i, never rebuilt as an
// absolute abscissa, so that far from the origin it keeps the precision
// of the edge (see IsOnSegment).
bool CrossingsOdd(const AcGePoint2d& point, const std::vector<AcGePoint2d>& v) {
  bool inside = false;
  if (v.empty()) return false;
  for (size_t i = 0, j = v.size() - 1; i < v.size(); j = i++) {
    const bool spans = (v[i].y <= point.y && point.y < v[j].y) ||
                       (v[j].y <= point.y && point.y < v[i].y);
    if (!spans) continue;
    const double crossing = (v[j].x - v[i].x) * (point.y - v[i].y) / (v[j].y - v[i].y);
    const double x = point.x - v[i].x;
    if (x <= crossing && crossing != x) inside = !inside;
  }
  return inside;
}

}  // namespace

// The distance is measured from the segment itself: to the nearer end
// point, or across the segment by the cross product of differences. Each
// difference of nearby coordinates is exact or nearly so, wherever the
// drawing lies; a foot point rebuilt in absolute coordinates would be
// rounded to the spacing of doubles there (6e-11 at 500,000), which is of
// the order of the tolerance itself.
bool IsOnSegment(const AcGePoint2d& point, const AcGePoint2d& start, const AcGePoint2d& end,
                 const AcGeTol& tol) {
  const AcGeVector2d along = end - start;
  const AcGeVector2d to_point = point - start;
  const double length2 = along.x * along.x + along.y * along.y;
  const double projection = to_point.x * along.x + to_point.y * along.y;
  double distance = 0;
  if (length2 == 0 || projection <= 0) {
    distance = to_point.length();
  } else if (projection >= length2) {
    distance = (point - end).length();
  } else {
    distance = std::fabs(along.x * to_point.y - along.y * to_point.x) / std::sqrt(length2);
  }
  return distance <= tol.equalPoint();
}

InsideResult TestPointInContour(const AcGePoint2d& point, const ContourGeometry& contour,
                                const AcGeTol& tol) {
  if (!InsideBox(point, contour.extents)) return InsideResult::kOutside;
  if (contour.has_bulges) return InsideResult::kRefusedArcs;
  if (OnAnySegment(point, contour, tol)) return InsideResult::kOutside;
  return CrossingsOdd(point, contour.vertices) ? InsideResult::kInside : InsideResult::kOutside;
}

bool CDocData::CheckPointForPolylineNew(const AcGePoint3d& point, AcDbObjectId polyline) {
  AcDbEntityPointer entity(polyline, AcDb::kForRead);
  if (entity.openStatus() != Acad::eOk) {
    acutPrintf("\nacdbOpenObject = %s", Acad::acadErrorStatusText(entity.openStatus()));
    return false;
  }
  ContourGeometry contour;
  if (!ReadContourGeometry(*entity.object(), &contour)) return false;
  entity.close();
  const InsideResult result = TestPointInContour(point.to2d(), contour);
  if (result == InsideResult::kRefusedArcs) acutPrintf("%s", kArcsRefused);
  return result == InsideResult::kInside;
}

}  // namespace fx::rooms
