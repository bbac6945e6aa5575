// Single entities: their extents, checked against geometry worked out by
// hand and against what the same entity draws (arcs sampled by the recording
// sink), two independent routes to the same box; and what they draw where
// extents cannot tell (invisible parts, hatch fill and pattern). The corpus
// test compares the common cases with ezdxf; these are the ones it cannot reach.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <numbers>

#include "entity_test_support.h"
#include "host/db_entities.h"
#include "host/dxf/draw_text_box.h"
#include "host/dxf/entity_support.h"

namespace {

using fx::testing::ExpectBox;
using fx::testing::Make;
using fx::testing::Primitive;
using fx::testing::RecordingDraw;
constexpr double kPi = std::numbers::pi;

AcDbExtents ExtentsOf(const AcDbEntity& entity) {
  AcDbExtents box;
  EXPECT_EQ(entity.getGeomExtents(box), Acad::eOk);
  return box;
}

// The extents contain what the entity draws and exceed it by no more than
// the sink's sampling of arcs (4096 points a turn).
void ExpectExtentsMatchDrawing(AcDbEntity& entity, double size) {
  RecordingDraw draw;
  draw.set_deviation(size * 1e-9);
  entity.worldDraw(&draw);
  AcDbExtents drawn = fx::testing::BoxOfDrawing(draw);
  ExpectBox(ExtentsOf(entity), drawn.minPoint(), drawn.maxPoint(), size * 1e-6);
}

// With normal -Z the object x axis points to world -x: an arc from 0 to 90
// degrees about (2, 0) in object coordinates spans world x from -3 to -2.
TEST(EntityExtents, ArcWithNegativeExtrusion) {
  auto arc = Make<AcDbArc>("0 ARC\n100 AcDbEntity\n8 0\n100 AcDbCircle\n10 2\n20 0\n30 4\n40 1\n"
                           "210 0\n220 0\n230 -1\n100 AcDbArc\n50 0\n51 90\n");
  ExpectBox(ExtentsOf(*arc), {-3, 0, -4}, {-2, 1, -4});
  ExpectExtentsMatchDrawing(*arc, 1);
}

// A circle about a tilted normal n spans r sqrt(1 - n_i^2) along each axis.
TEST(EntityExtents, CircleAboutATiltedNormal) {
  auto circle = Make<AcDbCircle>("0 CIRCLE\n8 0\n10 1\n20 2\n30 3\n40 2\n210 1\n220 1\n230 1\n");
  AcGePoint3d c = circle->center();
  double half = 2 * std::sqrt(1 - 1.0 / 3);
  ExpectBox(ExtentsOf(*circle), c - AcGeVector3d(half, half, half), c + AcGeVector3d(half, half, half));
  ExpectExtentsMatchDrawing(*circle, 4);
}

// A room outline in the plane of -Z at elevation 3: a straight bottom, a
// half circle out of its right side, a clockwise quarter bowing in on its left.
TEST(EntityExtents, BulgedPolylineInObjectCoordinates) {
  auto polyline = Make<AcDbPolyline>(
      "0 LWPOLYLINE\n100 AcDbEntity\n8 0\n100 AcDbPolyline\n90 4\n70 1\n38 3\n"
      "10 0\n20 0\n10 10\n20 0\n42 1\n10 10\n20 4\n10 0\n20 4\n42 -0.41421356237309503\n210 0\n220 0\n230 -1\n");
  // Object x runs to world -x, and the elevation to world -z.
  ExpectBox(ExtentsOf(*polyline), {-12, 0, -3}, {0, 4, -3});
  ExpectExtentsMatchDrawing(*polyline, 12);
  double area = 0;
  ASSERT_EQ(polyline->getArea(area), Acad::eOk);
  double r = 4 / std::sqrt(2.0);
  EXPECT_NEAR(area, 40 + 2 * kPi - r * r / 2 * (kPi / 2 - 1), 1e-9);
}

// TEXT by alignment, in the layout before R13 and in R2018's (where the
// vertical alignment follows a second subclass marker): the box by the width
// rule (0.65 x height x width factor per character), and the glyph box of
// the text it draws (from the baseline's start along its direction, up from
// it by the normal).
TEST(EntityExtents, TextBoxesAndDrawnTextFollowAlignment) {
  const double w = 4 * fx::dxf::kAverageAdvance * 2;  // "°RM1" at height 2
  struct Case {
    const char* name;
    const char* alignment;
    AcGePoint3d min, max;
  } cases[] = {
      {"left baseline", "", {10, 10, 0}, {10 + w, 12, 0}},
      {"centre", "72 1\n11 20\n21 10\n31 0\n", {20 - w / 2, 10, 0}, {20 + w / 2, 12, 0}},
      {"right top", "72 2\n11 20\n21 10\n31 0\n73 3\n", {20 - w, 8, 0}, {20, 10, 0}},
      {"middle", "72 4\n11 20\n21 10\n31 0\n", {20 - w / 2, 9, 0}, {20 + w / 2, 11, 0}},
      {"bottom", "72 0\n11 20\n21 10\n31 0\n73 1\n", {20, 10 + 0.6, 0}, {20 + w, 12.6, 0}},
      {"fit", "72 5\n11 30\n21 10\n31 0\n", {10, 10, 0}, {30, 12, 0}},
      {"rotated 90", "50 90\n", {8, 10, 0}, {10, 10 + w, 0}},
      {"right top rotated 90", "72 2\n50 90\n11 20\n21 10\n31 0\n73 3\n", {20, 10 - w, 0}, {22, 10, 0}},
      {"backwards", "71 2\n", {10 - w, 10, 0}, {10, 12, 0}},
      {"upside down", "71 4\n", {10, 8, 0}, {10 + w, 10, 0}},
  };
  const std::string body = "10 10\n20 10\n30 0\n40 2\n1 %%dRM1\n";
  for (const Case& c : cases) {
    for (bool subclassed : {false, true}) {
      SCOPED_TRACE(std::string(c.name) + (subclassed ? " R2018" : " R12"));
      const std::string alignment = c.alignment;
      const size_t vertical = alignment.find("73 ");
      auto text = Make<AcDbText>(
          subclassed ? "0 TEXT\n100 AcDbEntity\n8 0\n100 AcDbText\n" + body + alignment.substr(0, vertical) +
                           "100 AcDbText\n" + (vertical == std::string::npos ? "" : alignment.substr(vertical))
                     : "0 TEXT\n8 0\n" + body + alignment);
      ExpectBox(ExtentsOf(*text), c.min, c.max);
      RecordingDraw draw;
      text->worldDraw(&draw);
      ASSERT_EQ(draw.Count(Primitive::kText), 1u);
      const Primitive& p = draw.primitives()[0];
      EXPECT_EQ(p.text, "\xC2\xB0RM1");
      const double h = p.style.text_size;
      const AcGeVector3d along = p.direction.normal() * (fx::dxf::TextAdvance(p.text) * h * p.style.x_scale);
      const AcGeVector3d up = p.normal.crossProduct(p.direction).normal() * h;
      AcDbExtents glyphs;
      for (const AcGePoint3d& corner : {p.points[0], p.points[0] + along, p.points[0] + up, p.points[0] + along + up})
        glyphs.addPoint(corner);
      ExpectBox(glyphs, c.min, c.max);
    }
  }
}

TEST(EntityExtents, EmptyTextAndInfiniteLinesHaveNoExtents) {
  AcDbExtents box;
  EXPECT_EQ(Make<AcDbText>("0 TEXT\n8 0\n10 0\n20 0\n40 1\n1 \n")->getGeomExtents(box), Acad::eInvalidExtents);
  EXPECT_EQ(Make<AcDbXline>("0 XLINE\n8 0\n10 0\n20 0\n30 0\n11 1\n21 0\n31 0\n")->getGeomExtents(box),
            Acad::eInvalidExtents);
  EXPECT_EQ(Make<AcDbMText>("0 MTEXT\n8 0\n10 0\n20 0\n30 0\n40 1\n1 {}\n")->getGeomExtents(box),
            Acad::eInvalidExtents);
}

// The size the editor measured (42, 43) wins over the layout's; bottom
// right attachment, rotated 90.
TEST(EntityExtents, MTextStoredSizeWins) {
  auto measured = Make<AcDbMText>(
      "0 MTEXT\n100 AcDbEntity\n8 0\n100 AcDbMText\n10 5\n20 5\n30 0\n40 1\n41 0\n71 9\n1 Office\\P12\n"
      "11 0\n21 1\n31 0\n42 3.5\n43 2.75\n");
  ExpectBox(ExtentsOf(*measured), {5 - 2.75, 5 - 3.5, 0}, {5, 5, 0});
}

// Without a dimension style the arrowhead is 0.18 long and a third as
// wide: as wide as the leader's box is high.
TEST(EntityExtents, LeaderWithAndWithoutArrowhead) {
  const std::string tags = "0 LEADER\n100 AcDbEntity\n8 0\n100 AcDbLeader\n76 2\n10 0\n20 0\n30 0\n10 5\n20 0\n30 0\n";
  ExpectBox(ExtentsOf(*Make<AcDbLeader>(tags + "71 0\n")), {0, 0, 0}, {5, 0, 0});
  auto arrowed = Make<AcDbLeader>(tags + "71 1\n");
  ExpectBox(ExtentsOf(*arrowed), {0, -0.03, 0}, {5, 0.03, 0});
  RecordingDraw draw;
  arrowed->worldDraw(&draw);
  ASSERT_EQ(draw.Count(Primitive::kPolygon), 1u);
}

// A hatch's extents are its boundary's: a clockwise arc edge and an
// elliptic edge, at an elevation, exact.
TEST(EntityExtents, HatchBoundaryWithArcs) {
  auto hatch = Make<AcDbHatch>(
      "0 HATCH\n100 AcDbEntity\n8 0\n100 AcDbHatch\n10 0\n20 0\n30 2\n210 0\n220 0\n230 1\n2 SOLID\n70 1\n71 0\n91 1\n"
      "92 1\n93 3\n72 1\n10 0\n20 0\n11 4\n21 0\n"
      "72 2\n10 4\n20 2\n40 2\n50 270\n51 90\n73 0\n"            // clockwise from (4,4) through (6,2)
      "72 3\n10 2\n20 4\n11 2\n21 0\n40 0.5\n50 0\n51 180\n73 1\n"  // from (4,4) over (2,5) to (0,4)
      "97 0\n75 0\n76 1\n98 0\n");
  ExpectBox(ExtentsOf(*hatch), {0, 0, 2}, {6, 5, 2}, 1e-12);
  ExpectExtentsMatchDrawing(*hatch, 6);
}

// ---- What entities draw where their extents cannot tell ----

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

// A 10 x 10 square with a 2 x 2 hole, solid or hatched with lines `spacing` apart.
std::unique_ptr<AcDbHatch> SquareHatch(const char* name, int solid, const char* spacing) {
  char tags[1024];
  std::snprintf(tags, sizeof tags,
                "0 HATCH\n100 AcDbEntity\n8 0\n100 AcDbHatch\n10 0\n20 0\n30 0\n210 0\n220 0\n230 1\n2 %s\n70 %d\n"
                "71 0\n91 2\n92 3\n72 0\n73 1\n93 4\n10 0\n20 0\n10 10\n20 0\n10 10\n20 10\n10 0\n20 10\n97 0\n"
                "92 2\n72 0\n73 1\n93 4\n10 4\n20 4\n10 6\n20 4\n10 6\n20 6\n10 4\n20 6\n97 0\n"
                "75 0\n76 1\n52 0\n41 1\n77 0\n78 1\n53 0\n43 0\n44 0.5\n45 0\n46 %s\n79 0\n98 0\n",
                name, solid, spacing);
  return Make<AcDbHatch>(tags);
}

// The sink may take a hatch over; if not, a solid one fills its loops and
// a patterned one draws its lines clipped by the even-odd rule: y = 0.5,
// 1.5, ... 9.5, two of them split by the hole, 96 units long in all.
TEST(EntityDraw, HatchIsOfferedToTheSinkThenFilledOrPatterned) {
  auto solid = SquareHatch("SOLID", 1, "1");
  RecordingDraw taken;
  taken.set_take_hatches(true);
  solid->worldDraw(&taken);
  EXPECT_EQ(taken.hatch_hooks(), 1);
  EXPECT_TRUE(taken.primitives().empty());

  RecordingDraw filled;
  solid->worldDraw(&filled);
  ASSERT_EQ(filled.Count(Primitive::kPolygon), 2u);
  EXPECT_EQ(filled.primitives()[0].fill, kAcGiFillAlways);

  RecordingDraw lines;
  SquareHatch("LINES", 0, "1")->worldDraw(&lines);
  EXPECT_EQ(lines.Count(Primitive::kPolyline), 12u);
  double length = 0;
  for (const Primitive& p : lines.primitives()) length += p.points[0].distanceTo(p.points[1]);
  EXPECT_NEAR(length, 96, 1e-9);
}

TEST(EntityDraw, TooDenseHatchDrawsItsBoundaryAndIsReported) {
  std::vector<std::string> warnings;
  fx::dxf::SetDrawWarningHandler([&](const std::string& message) { warnings.push_back(message); });
  RecordingDraw draw;
  SquareHatch("DENSE", 0, "0.0001")->worldDraw(&draw);
  fx::dxf::SetDrawWarningHandler(nullptr);
  EXPECT_EQ(draw.Count(Primitive::kPolyline), 2u);  // the two loops
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_NE(warnings[0].find("too dense"), std::string::npos);
}

}  // namespace
