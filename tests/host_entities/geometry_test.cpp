// The host's geometry routines: elliptic arcs, splines and the text width
// rule, checked by invariants. (The corpus test checks them on real
// drawings, the SVG tests hatch pattern clipping.)
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "entity_test_support.h"
#include "host/dxf/draw_curves.h"
#include "host/dxf/draw_spline.h"
#include "host/dxf/draw_text_box.h"

namespace {

using namespace fx::dxf;
using fx::testing::ExpectBox;
constexpr double kPi = std::numbers::pi;

// The box of a curve by brute force: `samples` points.
template <class F>
AcDbExtents SampledBox(F point_at, double start, double sweep, int samples) {
  AcDbExtents box;
  for (int i = 0; i <= samples; ++i) box.addPoint(point_at(start + sweep * i / samples));
  return box;
}

// A tilted, sheared ellipse arc: the analytic box against 200000 samples.
TEST(CurveGeometry, EllipticArcExtentsMatchDenseSampling) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> coordinate(-3, 3), angle(0, 2 * kPi);
  for (int trial = 0; trial < 20; ++trial) {
    AcGePoint3d c{coordinate(random), coordinate(random), coordinate(random)};
    AcGeVector3d u{coordinate(random), coordinate(random), coordinate(random)};
    AcGeVector3d v{coordinate(random), coordinate(random), coordinate(random)};
    double start = angle(random), sweep = angle(random);
    AcDbExtents box;
    AddEllipticArcExtents(box, c, u, v, start, sweep);
    AcDbExtents sampled = SampledBox(
        [&](double t) { return c + u * std::cos(t) + v * std::sin(t); }, start, sweep, 200000);
    ExpectBox(box, sampled, 1e-8);
  }
}

TEST(CurveGeometry, TessellationStaysWithinDeviation) {
  // Down to where kMaxCurveSegments caps the count (about 3e-5 here).
  for (double deviation : {1.0, 1e-2, 1e-4}) {
    std::vector<AcGePoint3d> points =
        TessellateEllipticArc(AcGePoint3d::kOrigin, {100, 0, 0}, {0, 40, 0}, 0.3, 5, deviation);
    for (size_t i = 0; i + 1 < points.size(); ++i) {
      // The chord's midpoint lies within the deviation of the ellipse.
      AcGePoint3d mid = points[i] + (points[i + 1] - points[i]) * 0.5;
      double t = std::atan2(mid.y / 40, mid.x / 100);
      AcGePoint3d on{100 * std::cos(t), 40 * std::sin(t), 0};
      EXPECT_LE(mid.distanceTo(on), deviation * 1.0001);
    }
  }
  EXPECT_EQ(TessellateEllipticArc(AcGePoint3d::kOrigin, {100, 0, 0}, {0, 40, 0}, 0, 5, 1e-9).size(),
            static_cast<size_t>(kMaxCurveSegments) + 1);
}

// A cubic B-spline sampled within the deviation asked for: every point of
// the curve lies near the polyline.
TEST(SplineGeometry, SamplesWithinDeviation) {
  SplineCurve curve(3, {0, 0, 0, 0, 2, 2, 2, 2}, {{0, 0, 0}, {1, 3, 0}, {3, -2, 1}, {4, 1, 0}}, {});
  ASSERT_TRUE(curve.valid());
  std::vector<AcGePoint3d> points = curve.Sample(1e-4);
  for (int k = 0; k <= 20000; ++k) {
    AcGePoint3d q = curve.Evaluate(2.0 * k / 20000);
    double best = 1e300;
    for (size_t i = 0; i + 1 < points.size(); ++i) {
      AcGeVector3d ab = points[i + 1] - points[i];
      double s = std::clamp((q - points[i]).dotProduct(ab) / ab.dotProduct(ab), 0.0, 1.0);
      best = std::min(best, q.distanceTo(points[i] + ab * s));
    }
    EXPECT_LE(best, 1.2e-4);
  }
}

TEST(SplineGeometry, ExtentsAreTightWhereTheControlHullIsNot) {
  // A rational quadratic quarter circle: its hull reaches (1, 1), the curve does not.
  double w = std::sqrt(0.5);
  SplineCurve arc(2, {0, 0, 0, 1, 1, 1}, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {1, w, 1});
  for (double t : {0.0, 0.3, 0.7, 1.0}) EXPECT_NEAR(arc.Evaluate(t).distanceTo(AcGePoint3d::kOrigin), 1, 1e-14);
  // Rotated 45 degrees the quarter circle's top is the point (0, 1) of the arc's middle.
  SplineCurve rotated = arc.Transformed(AcGeMatrix3d::rotation(kPi / 4, AcGeVector3d::kZAxis));
  AcDbExtents box;
  rotated.AddExtents(box);
  ExpectBox(box, AcDbExtents({-std::sqrt(0.5), std::sqrt(0.5), 0}, {std::sqrt(0.5), 1, 0}), 1e-12);
}

TEST(SplineGeometry, PeriodicKnotsAreUnwrapped) {
  // Four control points of a square, one period of uniform knots: a closed
  // curve symmetric about both axes.
  SplineCurve closed(3, {0, 1, 2, 3, 4}, {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}}, {});
  ASSERT_TRUE(closed.valid());
  EXPECT_TRUE(closed.Evaluate(closed.start()).isEqualTo(closed.Evaluate(closed.end()), AcGeTol(1e-12, 1e-12)));
  AcDbExtents box;
  closed.AddExtents(box);
  EXPECT_NEAR(box.maxPoint().x, -box.minPoint().x, 1e-12);
  EXPECT_NEAR(box.maxPoint().y, -box.minPoint().y, 1e-12);
  EXPECT_NEAR(box.maxPoint().x, 2.0 / 3.0, 1e-12);  // (P3 + 4 P0 + P1) / 6 at the knots
}

TEST(TextRule, WidthEstimateAndPercentCodes) {
  EXPECT_DOUBLE_EQ(TextAdvance("Room"), 4 * kAverageAdvance);
  EXPECT_DOUBLE_EQ(TextAdvance("\xE6\x88\xBF\xE9\x97\xB4" "101"), 2 * kWideAdvance + 3 * kAverageAdvance);
  bool underlined = false;
  EXPECT_EQ(ExpandPercentCodes("%%uA%%u %%C %%d %%%%%p %%065 %%x", &underlined),
            "A \xE2\x8C\x80 \xC2\xB0 %\xC2\xB1 A %%x");
  EXPECT_TRUE(underlined);
}

}  // namespace
