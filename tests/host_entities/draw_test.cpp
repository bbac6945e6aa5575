// What single entities draw, recorded by a test sink: the primitives, their
// geometry in world coordinates, and the traits and fill set for them.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "entity_test_support.h"
#include "host/db_entities.h"
#include "host/dxf/draw_text_box.h"
#include "host/dxf/entity_support.h"

namespace {

using fx::testing::Make;
using fx::testing::Primitive;
using fx::testing::RecordingDraw;
constexpr double kPi = std::numbers::pi;

bool Near(const AcGePoint3d& a, const AcGePoint3d& b, double tolerance = 1e-9) {
  return a.distanceTo(b) <= tolerance;
}

// The end point of a recorded arc.
AcGePoint3d ArcEnd(const Primitive& arc) { return arc.points.back(); }

TEST(EntityDraw, LineSetsTraitsThenDrawsTwoPoints) {
  auto line = Make<AcDbLine>("0 LINE\n8 0\n62 3\n10 1\n20 2\n30 0\n11 4\n21 6\n31 0\n");
  RecordingDraw draw;
  EXPECT_TRUE(line->worldDraw(&draw));
  ASSERT_EQ(draw.primitives().size(), 1u);
  const Primitive& p = draw.primitives()[0];
  EXPECT_EQ(p.kind, Primitive::kPolyline);
  EXPECT_EQ(p.color, 3);
  ASSERT_EQ(p.points.size(), 2u);
  EXPECT_TRUE(Near(p.points[1], {4, 6, 0}));
}

// Straight runs stay one polyline; each bulge is an exact arc that starts
// where the run before it ends and keeps the outline's direction.
TEST(EntityDraw, BulgedPolylineDrawsRunsAndArcs) {
  auto polyline = Make<AcDbPolyline>(
      "0 LWPOLYLINE\n100 AcDbEntity\n8 0\n100 AcDbPolyline\n90 5\n70 1\n"
      "10 0\n20 0\n10 10\n20 0\n10 10\n20 4\n42 1\n10 10\n20 8\n10 0\n20 8\n42 -0.5\n");
  RecordingDraw draw;
  EXPECT_TRUE(polyline->worldDraw(&draw));
  ASSERT_EQ(draw.Count(Primitive::kArc), 2u);
  ASSERT_EQ(draw.Count(Primitive::kPolyline), 2u);
  const std::vector<Primitive>& ps = draw.primitives();
  ASSERT_EQ(ps.size(), 4u);
  EXPECT_EQ(ps[0].kind, Primitive::kPolyline);  // (0,0) (10,0) (10,4)
  EXPECT_EQ(ps[0].points.size(), 3u);
  EXPECT_EQ(ps[1].kind, Primitive::kArc);       // (10,4) to (10,8), bulging right
  EXPECT_TRUE(Near(ps[1].points.front(), {10, 4, 0}));
  EXPECT_TRUE(Near(ArcEnd(ps[1]), {10, 8, 0}));
  EXPECT_NEAR(ps[1].sweep, kPi, 1e-12);
  EXPECT_GT(ps[1].points[2048].x, 11.9);
  EXPECT_EQ(ps[2].kind, Primitive::kPolyline);  // (10,8) (0,8)
  EXPECT_EQ(ps[3].kind, Primitive::kArc);       // clockwise closing arc back to (0,0)
  EXPECT_NEAR(ps[3].normal.z, -1, 1e-12);
  EXPECT_TRUE(Near(ps[3].points.front(), {0, 8, 0}));
  EXPECT_TRUE(Near(ArcEnd(ps[3]), {0, 0, 0}));
}

TEST(EntityDraw, ArcAboutNegativeZ) {
  auto arc = Make<AcDbArc>("0 ARC\n8 0\n10 0\n20 0\n30 0\n40 2\n50 0\n51 90\n210 0\n220 0\n230 -1\n");
  RecordingDraw draw;
  arc->worldDraw(&draw);
  ASSERT_EQ(draw.Count(Primitive::kArc), 1u);
  const Primitive& p = draw.primitives()[0];
  // Object angle 0 is world -x; a quarter turn about -Z ends at world +y.
  EXPECT_TRUE(Near(p.points.front(), {-2, 0, 0}));
  EXPECT_TRUE(Near(ArcEnd(p), {0, 2, 0}));
}

TEST(EntityDraw, TextStartsItsBaselineByAlignment) {
  const double w = 4 * fx::dxf::kAverageAdvance * 2;
  struct Case {
    const char* name;
    const char* tags;
    AcGePoint3d start;
    AcGeVector3d direction;
  } cases[] = {
      {"left", "", {10, 10, 0}, {1, 0, 0}},
      {"centre", "72 1\n11 20\n21 10\n31 0\n", {20 - w / 2, 10, 0}, {1, 0, 0}},
      {"right top rotated", "72 2\n73 3\n50 90\n11 20\n21 10\n31 0\n", {22, 10 - w, 0}, {0, 1, 0}},
      {"backwards", "71 2\n", {10, 10, 0}, {-1, 0, 0}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    auto text = Make<AcDbText>(std::string("0 TEXT\n8 0\n10 10\n20 10\n30 0\n40 2\n41 1\n1 %%dRM1\n") + c.tags);
    RecordingDraw draw;
    text->worldDraw(&draw);
    ASSERT_EQ(draw.Count(Primitive::kText), 1u);
    const Primitive& p = draw.primitives()[0];
    EXPECT_EQ(p.text, "\xC2\xB0RM1");
    EXPECT_TRUE(Near(p.points[0], c.start));
    EXPECT_TRUE(p.direction.isEqualTo(c.direction));
    EXPECT_EQ(p.style.text_size, 2);
    // Up is normal x direction: always +Y of the text, even written backwards.
    AcGeVector3d up = p.normal.crossProduct(p.direction);
    AcGeVector3d expected_up = AcGeVector3d::kZAxis.crossProduct(c.direction) * (c.direction.x < 0 ? -1 : 1);
    EXPECT_TRUE(up.isEqualTo(expected_up, AcGeTol(1e-9, 1e-9)));
  }
}

TEST(EntityDraw, FitTextStretchesOverItsPoints) {
  auto text = Make<AcDbText>("0 TEXT\n8 0\n10 0\n20 0\n30 0\n40 1\n1 ABCD\n72 5\n11 13\n21 0\n31 0\n");
  RecordingDraw draw;
  text->worldDraw(&draw);
  ASSERT_EQ(draw.Count(Primitive::kText), 1u);
  EXPECT_NEAR(draw.primitives()[0].style.x_scale * 4 * fx::dxf::kAverageAdvance, 13, 1e-12);
}

TEST(EntityDraw, InvisibleAttributesAndDefinitionTags) {
  auto hidden = Make<AcDbAttribute>("0 ATTRIB\n8 0\n10 0\n20 0\n30 0\n40 1\n1 101\n2 NO\n70 1\n");
  RecordingDraw draw;
  EXPECT_TRUE(hidden->worldDraw(&draw));
  EXPECT_TRUE(draw.primitives().empty());
  auto definition = Make<AcDbAttributeDefinition>("0 ATTDEF\n8 0\n10 0\n20 0\n30 0\n40 1\n1 101\n3 Number?\n2 NO\n70 0\n");
  definition->worldDraw(&draw);
  ASSERT_EQ(draw.Count(Primitive::kText), 1u);
  EXPECT_EQ(draw.primitives()[0].text, "NO");
}

TEST(EntityDraw, MTextDrawsOneTextPerLine) {
  auto mtext = Make<AcDbMText>("0 MTEXT\n100 AcDbEntity\n8 0\n100 AcDbMText\n10 0\n20 0\n30 0\n40 1\n41 5\n71 1\n"
                               "1 {\\fArial;Room} 12\\PTeam office area\n");
  RecordingDraw draw;
  mtext->worldDraw(&draw);
  // At height 1 "Room 12" is 4.55 wide and fits in 5; "Team office area" wraps into three lines.
  ASSERT_EQ(draw.Count(Primitive::kText), 4u);
  const std::vector<Primitive>& ps = draw.primitives();
  EXPECT_EQ(ps[0].text, "Room 12");
  EXPECT_EQ(ps[1].text, "Team");
  EXPECT_EQ(ps[3].text, "area");
  EXPECT_TRUE(Near(ps[0].points[0], {0, -1, 0}));
  EXPECT_NEAR(ps[1].points[0].y, -1 - 5.0 / 3.0, 1e-12);
}

TEST(EntityDraw, SolidFillsInOutlineOrder) {
  auto solid = Make<AcDbSolid>("0 SOLID\n8 0\n10 0\n20 0\n30 0\n11 1\n21 0\n31 0\n12 0\n22 1\n32 0\n13 1\n23 1\n33 0\n");
  RecordingDraw draw;
  solid->worldDraw(&draw);
  ASSERT_EQ(draw.Count(Primitive::kPolygon), 1u);
  const Primitive& p = draw.primitives()[0];
  EXPECT_EQ(p.fill, kAcGiFillAlways);
  ASSERT_EQ(p.points.size(), 4u);
  EXPECT_TRUE(Near(p.points[2], {1, 1, 0}));  // corner 4 before corner 3
  EXPECT_TRUE(Near(p.points[3], {0, 1, 0}));
  EXPECT_EQ(draw.subEntityTraits().fillType(), kAcGiFillNever);
}

TEST(EntityDraw, FaceDrawsItsVisibleEdges) {
  struct Case {
    int flags;
    size_t polylines;
    size_t points;
  } cases[] = {{0, 1, 5}, {1, 1, 4}, {5, 2, 4}, {15, 0, 0}};
  for (const Case& c : cases) {
    auto face = Make<AcDbFace>("0 3DFACE\n8 0\n10 0\n20 0\n30 0\n11 1\n21 0\n31 0\n12 1\n22 1\n32 0\n13 0\n23 1\n33 0\n70 " +
                               std::to_string(c.flags) + "\n");
    RecordingDraw draw;
    face->worldDraw(&draw);
    EXPECT_EQ(draw.Count(Primitive::kPolyline), c.polylines) << c.flags;
    size_t points = 0;
    for (const Primitive& p : draw.primitives()) points += p.points.size();
    EXPECT_EQ(points, c.points) << c.flags;
  }
}

TEST(EntityDraw, PointsXlinesAndRays) {
  RecordingDraw draw;
  Make<AcDbPoint>("0 POINT\n8 0\n10 1\n20 2\n30 3\n")->worldDraw(&draw);
  Make<AcDbXline>("0 XLINE\n8 0\n10 1\n20 1\n30 0\n11 0\n21 1\n31 0\n")->worldDraw(&draw);
  Make<AcDbXline>("0 RAY\n8 0\n10 1\n20 1\n30 0\n11 1\n21 0\n31 0\n")->worldDraw(&draw);
  ASSERT_EQ(draw.primitives().size(), 3u);
  EXPECT_EQ(draw.primitives()[0].points[0], draw.primitives()[0].points[1]);
  EXPECT_EQ(draw.primitives()[1].kind, Primitive::kXline);
  EXPECT_EQ(draw.primitives()[2].kind, Primitive::kRay);
  EXPECT_TRUE(Near(draw.primitives()[2].points[1], {2, 1, 0}));
}

const char* const kSquareHatch =
    "0 HATCH\n100 AcDbEntity\n8 0\n100 AcDbHatch\n10 0\n20 0\n30 0\n210 0\n220 0\n230 1\n2 %s\n70 %d\n71 0\n91 2\n"
    "92 3\n72 0\n73 1\n93 4\n10 0\n20 0\n10 10\n20 0\n10 10\n20 10\n10 0\n20 10\n97 0\n"
    "92 2\n72 0\n73 1\n93 4\n10 4\n20 4\n10 6\n20 4\n10 6\n20 6\n10 4\n20 6\n97 0\n"
    "75 0\n76 1\n52 0\n41 1\n77 0\n78 1\n53 0\n43 0\n44 0.5\n45 0\n46 %s\n79 0\n98 0\n";

std::string SquareHatch(const char* name, int solid, const char* spacing) {
  char buffer[1024];
  std::snprintf(buffer, sizeof buffer, kSquareHatch, name, solid, spacing);
  return buffer;
}

TEST(EntityDraw, HatchOffersItsLoopsToTheSinkFirst) {
  auto hatch = Make<AcDbHatch>(SquareHatch("SOLID", 1, "1"));
  RecordingDraw taken;
  taken.set_take_hatches(true);
  hatch->worldDraw(&taken);
  EXPECT_EQ(taken.hatch_hooks(), 1);
  EXPECT_TRUE(taken.primitives().empty());

  RecordingDraw filled;
  hatch->worldDraw(&filled);
  ASSERT_EQ(filled.Count(Primitive::kPolygon), 2u);
  EXPECT_EQ(filled.primitives()[0].fill, kAcGiFillAlways);
}

// Lines y = 0.5, 1.5, ... 9.5 through a 10 x 10 square with a 2 x 2 hole:
// ten lines, two of them split by the hole, 96 units long in all.
TEST(EntityDraw, HatchPatternIsClippedByTheEvenOddRule) {
  auto hatch = Make<AcDbHatch>(SquareHatch("LINES", 0, "1"));
  RecordingDraw draw;
  hatch->worldDraw(&draw);
  EXPECT_EQ(draw.Count(Primitive::kPolyline), 12u);
  double length = 0;
  for (const Primitive& p : draw.primitives()) length += p.points[0].distanceTo(p.points[1]);
  EXPECT_NEAR(length, 96, 1e-9);
}

TEST(EntityDraw, TooDenseHatchDrawsItsBoundaryAndIsReported) {
  std::vector<std::string> warnings;
  fx::dxf::SetDrawWarningHandler([&](const std::string& message) { warnings.push_back(message); });
  auto hatch = Make<AcDbHatch>(SquareHatch("DENSE", 0, "0.0001"));
  RecordingDraw draw;
  hatch->worldDraw(&draw);
  fx::dxf::SetDrawWarningHandler(nullptr);
  EXPECT_EQ(draw.Count(Primitive::kPolyline), 2u);  // the two loops
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_NE(warnings[0].find("too dense"), std::string::npos);
}

}  // namespace
