// What single entities draw where their extents cannot tell, recorded by a
// test sink: invisible parts left out, hatches filled or patterned.
#include <gtest/gtest.h>

#include <cstdio>

#include "entity_test_support.h"
#include "host/db_entities.h"
#include "host/dxf/entity_support.h"

namespace {

using fx::testing::Make;
using fx::testing::Primitive;
using fx::testing::RecordingDraw;

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
