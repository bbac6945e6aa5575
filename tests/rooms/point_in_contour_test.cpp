// The inside test: its rule case by case (in general position the analysis
// of the sample and the corpus floors shows it), and its answers far from
// the origin.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "rooms/inside_test.h"

namespace fx::rooms {
namespace {

ContourGeometry Contour(std::vector<AcGePoint2d> vertices, bool closed = true, bool bulges = false) {
  ContourGeometry contour;
  for (const AcGePoint2d& v : vertices) contour.extents.addPoint({v.x, v.y, 0});
  contour.vertices = std::move(vertices);
  contour.closed = closed;
  contour.has_bulges = bulges;
  return contour;
}

const ContourGeometry kSquare = Contour({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
// An L: the square without its upper right quarter (4..10 x 4..10).
const ContourGeometry kEll = Contour({{0, 0}, {10, 0}, {10, 4}, {4, 4}, {4, 10}, {0, 10}});
const ContourGeometry kOpenSquare = Contour({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, false);
const ContourGeometry kArcSquare = Contour({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true, true);
const ContourGeometry kTriangle = Contour({{0, 0}, {10, 5}, {0, 10}});
const ContourGeometry kClockwiseTriangle = Contour({{0, 10}, {10, 5}, {0, 0}});
const ContourGeometry kNoVertices;

struct Case {
  const char* what;
  const ContourGeometry* contour;
  AcGePoint2d point;
  InsideResult expected;
};

constexpr InsideResult kIn = InsideResult::kInside;
constexpr InsideResult kOut = InsideResult::kOutside;

const Case kCases[] = {
    {"middle", &kSquare, {5, 5}, kIn},
    {"beyond the box", &kSquare, {15, 5}, kOut},
    {"on the right edge (box bound)", &kSquare, {10, 5}, kOut},
    {"on the left edge", &kSquare, {0, 5}, kOut},
    {"on a vertex", &kSquare, {0, 0}, kOut},
    {"within the global tolerance of an edge", &kSquare, {5, 1e-11}, kOut},
    {"just beyond the tolerance", &kSquare, {5, 1e-6}, kIn},
    {"just inside the right edge", &kSquare, {10 - 1e-6, 5}, kIn},
    {"in the box, in the L's notch", &kEll, {7, 7}, kOut},
    {"in the L's upright", &kEll, {2, 7}, kIn},
    {"at the height of the inner corner", &kEll, {2, 4}, kIn},
    {"on the inner horizontal edge", &kEll, {5, 4}, kOut},
    {"on the inner corner", &kEll, {4, 4}, kOut},
    {"open polyline: closed by its last edge", &kOpenSquare, {5, 5}, kIn},
    {"open polyline: on a segment", &kOpenSquare, {10, 5}, kOut},
    // The last edge of an open polyline is no segment of it: the crossing
    // rule decides, and the edge itself (x_c == x) is not crossed.
    {"open polyline: on the edge that closes it", &kOpenSquare, {0, 5}, kIn},
    {"ray through a vertex counts once", &kTriangle, {5, 5}, kIn},
    {"ray through a vertex counts once, clockwise", &kClockwiseTriangle, {5, 5}, kIn},
    {"ray along a horizontal edge", &kEll, {1, 4}, kIn},
    {"beside the apex", &kTriangle, {9, 8}, kOut},
    {"arcs: refused inside the box", &kArcSquare, {5, 5}, InsideResult::kRefusedArcs},
    {"arcs: outside the box first", &kArcSquare, {50, 5}, kOut},
    {"no vertices", &kNoVertices, {0, 0}, kOut},
};

TEST(PointInContourTest, FollowsTheRuleCaseByCase) {
  for (const Case& c : kCases) {
    EXPECT_EQ(TestPointInContour(c.point, *c.contour), c.expected) << c.what;
  }
}

TEST(PointInContourTest, TheToleranceGivenDecidesWhatIsOnAnEdge) {
  const AcGeTol coarse(1e-3, 1e-3);
  EXPECT_EQ(TestPointInContour({5, 1e-4}, kSquare, coarse), kOut);
  EXPECT_EQ(TestPointInContour({5, 1e-2}, kSquare, coarse), kIn);
  EXPECT_TRUE(IsOnSegment({5, 5e-4}, {0, 0}, {10, 0}, coarse));
  EXPECT_FALSE(IsOnSegment({10.01, 0}, {0, 0}, {10, 0}, coarse));  // beyond the end
  EXPECT_TRUE(IsOnSegment({3, 3}, {3, 3}, {3, 3}));                 // a zero-length segment
}

// Coordinates on a grid of 2^-33 stay exact when moved by whole numbers to
// site-plan coordinates, so moving a contour and a point there must change
// no answer, also for points a fraction of the tolerance from an edge.
TEST(PointInContourTest, AnswersDoNotChangeFarFromTheOrigin) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> unit(0, 1);
  const auto on_grid = [](double v) { return std::ldexp(std::round(std::ldexp(v, 33)), -33); };
  const AcGeVector2d far(164517, 477455);
  int tested = 0;
  for (int polygon = 0; polygon < 100; ++polygon) {
    // A star-shaped polygon: simple by construction.
    const int count = 3 + static_cast<int>(unit(random) * 8);
    std::vector<AcGePoint2d> near_vertices, far_vertices;
    for (int i = 0; i < count; ++i) {
      const double angle = 2 * M_PI * (i + 0.8 * unit(random)) / count;
      const double radius = 1 + 9 * unit(random);
      near_vertices.emplace_back(on_grid(radius * std::cos(angle)), on_grid(radius * std::sin(angle)));
      far_vertices.push_back(near_vertices.back() + far);
    }
    const ContourGeometry near_contour = Contour(near_vertices), far_contour = Contour(far_vertices);
    for (int i = 0; i < count; ++i) {
      const AcGePoint2d& a = near_vertices[i];
      const AcGeVector2d edge = near_vertices[(i + 1) % count] - a;
      const AcGeVector2d normal = AcGeVector2d(-edge.y, edge.x) * (1 / edge.length());
      for (int step = -5; step <= 5; ++step) {
        const AcGePoint2d along = a + edge * unit(random) + normal * (step * 3e-11);
        const AcGePoint2d point(on_grid(along.x), on_grid(along.y));
        EXPECT_EQ(TestPointInContour(point, near_contour), TestPointInContour(point + far, far_contour))
            << "polygon " << polygon << " edge " << i << " step " << step;
        ++tested;
      }
    }
  }
  EXPECT_GT(tested, 5000);
}

}  // namespace
}  // namespace fx::rooms
