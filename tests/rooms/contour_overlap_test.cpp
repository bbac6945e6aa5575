// Which polylines are contours, and intersecting contour pairs: the overlap
// test case by case, and the indexed search against the all-pairs definition
// on random floors.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "../svg/svg_test_support.h"
#include "host/database.h"
#include "rooms/contour_overlap.h"

namespace fx::rooms {
namespace {

ContourGeometry Polygon(std::vector<AcGePoint2d> vertices, bool closed = true) {
  ContourGeometry contour;
  for (const AcGePoint2d& v : vertices) contour.extents.addPoint({v.x, v.y, 0});
  contour.vertices = std::move(vertices);
  contour.closed = closed;
  return contour;
}

ContourGeometry Box(double x0, double y0, double x1, double y1) {
  return Polygon({{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}});
}

// A heavy 2D polyline whose only arc bends right (a negative bulge) has
// arcs; a 3D polyline is no contour.
TEST(ContourGeometryTest, HeavyPolylines) {
  const char* const kVertices = "0 VERTEX|8 0|10 0|20 0|70 32|42 -0.5\n0 VERTEX|8 0|10 10|20 0|70 32\n"
                                "0 VERTEX|8 0|10 10|20 10|70 32\n0 SEQEND|8 0\n";
  std::unique_ptr<AcDbDatabase> db = fx::svg_test::LoadDrawing(
      fx::svg_test::R12("", "", std::string("0 POLYLINE|8 0|66 1|70 1\n") + kVertices + "0 POLYLINE|8 0|66 1|70 9\n" +
                                    kVertices),
      "heavy.dxf");
  ASSERT_NE(db, nullptr);
  const std::vector<AcDbObjectId> ids =
      AcDbObjectPointer<AcDbBlockTableRecord>(db->modelSpaceId(), AcDb::kForRead)->entityIds();
  ASSERT_EQ(ids.size(), 2u);
  ContourGeometry geometry;
  ASSERT_TRUE(ReadContourGeometry(*AcDbEntityPointer(ids[0], AcDb::kForRead).object(), &geometry));
  EXPECT_TRUE(geometry.has_bulges);
  EXPECT_FALSE(ReadContourGeometry(*AcDbEntityPointer(ids[1], AcDb::kForRead).object(), &geometry));
}

struct PairCase {
  const char* what;
  ContourGeometry a;
  ContourGeometry b;
  bool a_against_b;
  bool b_against_a;
};

const PairCase kPairs[] = {
    {"rooms sharing a wall", Box(0, 0, 10, 10), Box(10, 0, 20, 10), false, false},
    {"a corner inside the neighbour", Box(0, 0, 10, 10), Box(8, 8, 18, 18), true, true},
    {"a wall pushed into the neighbour", Box(0, 0, 10, 10), Box(5, -5, 15, 5), true, true},
    {"overlap within the box tolerance", Box(0, 0, 10, 10), Box(9.9995, 9.9995, 20, 20), false, false},
    {"overlap just beyond it", Box(0, 0, 10, 10), Box(9.998, 9.998, 20, 20), true, true},
    // The pre-check wants a corner strictly inside the other box in y too.
    {"rooms of one height overlapping sideways", Box(0, 0, 10, 10), Box(8, 0, 18, 10), false, false},
    {"the same rectangle twice", Box(0, 0, 10, 10), Box(0, 0, 10, 10), false, false},
    // Overlap tests, not crossing tests: no vertex inside the other.
    {"one room inside another", Box(0, 0, 10, 10), Box(2, 2, 4, 4), false, false},
    {"two bars across each other", Box(0, 4, 10, 6), Box(4, 0, 6, 10), false, false},
    // b's box holds a corner of a's, and b's tip is inside a; a's box
    // holds no corner of b's: listed in one order only.
    {"a spike into the room", Box(0, 0, 10, 10), Polygon({{5, 5}, {20, -5}, {20, 15}}), true, false},
    {"an open contour's end point counts", Box(0, 0, 10, 10), Polygon({{20, 20}, {20, 5}, {5, 5}}, false), true, true},
};

TEST(ContourOverlapTest, TestsOneContourAgainstAnother) {
  for (const PairCase& c : kPairs) {
    EXPECT_EQ(ContoursOverlap(c.a, c.b), c.a_against_b) << c.what;
    EXPECT_EQ(ContoursOverlap(c.b, c.a), c.b_against_a) << c.what << " (other order)";
  }
}

TEST(ContourOverlapTest, TheListHasEachPairInTheOrdersThatPass) {
  std::vector<ContourGeometry> contours = {Box(0, 0, 10, 10), Box(10, 0, 20, 10), Box(8, 8, 18, 18),
                                           Polygon({{5, 5}, {20, -5}, {20, 15}})};
  const std::vector<ContourPair> expected = {{0, 2}, {0, 3}, {1, 2}, {2, 0}, {2, 1}};
  EXPECT_EQ(FindOverlappingPairs(contours), expected);
  EXPECT_EQ(FindOverlappingPairsBruteForce(contours), expected);
}

TEST(ContourOverlapTest, ContoursWithArcsAndWithoutExtentsOverlapNothing) {
  std::vector<ContourGeometry> contours = {Box(0, 0, 10, 10), Box(8, 8, 18, 18), ContourGeometry()};
  contours[1].has_bulges = true;
  EXPECT_TRUE(FindOverlappingPairs(contours).empty());
  EXPECT_TRUE(FindOverlappingPairsBruteForce(contours).empty());
}

// Rooms on a jittered grid, some enlarged into their neighbours, some
// nested, duplicated, degenerate, open or with arcs.
std::vector<ContourGeometry> RandomFloor(unsigned seed, int rooms) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> unit(0, 1);
  const int columns = std::max(1, static_cast<int>(std::sqrt(rooms)));
  std::vector<ContourGeometry> contours;
  for (int i = 0; i < rooms; ++i) {
    const double x = (i % columns) * 10 + (unit(random) < 0.3 ? unit(random) * 3 : 0);
    const double y = (i / columns) * 10;
    const double grow = unit(random) < 0.3 ? unit(random) * 6 : 0;
    const double roll = unit(random);
    if (roll < 0.05) {
      contours.push_back(Box(x + 2, y + 2, x + 5, y + 5));  // nested in its cell
    } else if (roll < 0.1 && !contours.empty()) {
      contours.push_back(contours.back());  // a copy
    } else if (roll < 0.13) {
      contours.push_back(Box(x, y, x, y + 10));  // no area
    } else if (roll < 0.2) {
      contours.push_back(Polygon({{x, y}, {x + 10 + grow, y + 3}, {x + 4, y + 10 + grow}}, unit(random) < 0.5));
    } else {
      contours.push_back(Box(x, y, x + 10 + grow, y + 10 + grow));
    }
    contours.back().has_bulges = unit(random) < 0.03;
  }
  return contours;
}

TEST(ContourOverlapTest, TheIndexFindsWhatTestingEveryPairFinds) {
  size_t pairs = 0;
  for (unsigned seed = 1; seed <= 30; ++seed) {
    for (int rooms : {1, 2, 17, 150, 600}) {
      const std::vector<ContourGeometry> floor = RandomFloor(seed, rooms);
      const std::vector<ContourPair> expected = FindOverlappingPairsBruteForce(floor);
      EXPECT_EQ(FindOverlappingPairs(floor), expected) << "seed " << seed << ", " << rooms << " rooms";
      pairs += expected.size();
    }
  }
  EXPECT_GT(pairs, 1000u);  // not equal by being empty
}

}  // namespace
}  // namespace fx::rooms
