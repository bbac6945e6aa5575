// Block inserts and heavy polylines in a drawing loaded by the
// database: extents through nested blocks, MINSERT arrays and attributes,
// drawing with pushed transforms and the sink's hooks, and blocks that
// insert themselves.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "entity_test_support.h"
#include "host/db_entities.h"
#include "host/dxf/draw_text_box.h"
#include "host/dxf/entity_support.h"

namespace {

using fx::testing::ExpectBox;
using fx::testing::Primitive;
using fx::testing::RecordingDraw;
constexpr double kPi = std::numbers::pi;

// An R12 drawing, one record per line with '|' between its tags. CHAIR (base 1,1): a line and a half circle, an attribute
// definition. ROOM: a CHAIR at (10,0) scaled 2, a circle of radius 5. LOOP
// inserts itself; A inserts B, which inserts A.
const char* const kDrawing = R"(0 SECTION|2 HEADER|9 $ACADVER|1 AC1009
0 ENDSEC
0 SECTION|2 BLOCKS
0 BLOCK|8 0|2 CHAIR|70 2|10 1|20 1|30 0
0 LINE|8 0|10 1|20 1|30 0|11 3|21 1|31 0
0 ARC|8 0|10 2|20 2|30 0|40 1|50 0|51 180
0 ATTDEF|8 0|10 1|20 1|30 0|40 0.5|1 ?|3 Number|2 NO|70 0
0 ENDBLK|8 0
0 BLOCK|8 0|2 ROOM|70 0|10 0|20 0|30 0
0 INSERT|8 0|2 CHAIR|10 10|20 0|30 0|41 2|42 2|43 2
0 CIRCLE|8 0|10 0|20 0|30 0|40 5
0 ENDBLK|8 0
0 BLOCK|8 0|2 LOOP|70 0|10 0|20 0|30 0
0 LINE|8 0|10 0|20 0|30 0|11 1|21 0|31 0
0 INSERT|8 0|2 LOOP|10 5|20 0|30 0
0 ENDBLK|8 0
0 BLOCK|8 0|2 A|70 0|10 0|20 0|30 0
0 LINE|8 0|10 0|20 0|30 0|11 0|21 1|31 0
0 INSERT|8 0|2 B|10 0|20 10|30 0
0 ENDBLK|8 0
0 BLOCK|8 0|2 B|70 0|10 0|20 0|30 0
0 LINE|8 0|10 0|20 0|30 0|11 2|21 0|31 0
0 INSERT|8 0|2 A|10 10|20 0|30 0
0 ENDBLK|8 0
0 ENDSEC
0 SECTION|2 ENTITIES
0 INSERT|8 0|66 1|2 CHAIR|10 100|20 100|30 0|41 1|42 2|43 1|50 30
0 ATTRIB|8 0|10 100|20 98|30 0|40 1|1 12|2 NO|70 0
0 SEQEND|8 0
0 INSERT|8 0|2 ROOM|10 0|20 0|30 0|50 90
0 INSERT|8 0|2 LOOP|10 0|20 0|30 0
0 INSERT|8 0|2 A|10 0|20 0|30 0
0 INSERT|8 0|2 CHAIR|10 0|20 0|30 0|50 90|70 3|71 2|44 10|45 20
0 POLYLINE|8 0|66 1|10 0|20 0|30 3|70 1|210 0|220 0|230 -1
0 VERTEX|8 0|10 0|20 0|30 3
0 VERTEX|8 0|10 10|20 0|30 3|42 1
0 VERTEX|8 0|10 10|20 4|30 3
0 VERTEX|8 0|10 0|20 4|30 3
0 SEQEND|8 0
0 ENDSEC
0 EOF
)";

class BlocksTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string lines = kDrawing;
    std::replace(lines.begin(), lines.end(), '|', '\n');
    db_ = fx::testing::LoadDrawing(lines, "blocks.dxf");
    ASSERT_NE(db_, nullptr);
    ids_ = fx::testing::ModelSpaceIds(*db_);
    ASSERT_EQ(ids_.size(), 6u);
    fx::dxf::SetDrawWarningHandler([this](const std::string& message) { warnings_.push_back(message); });
  }
  void TearDown() override { fx::dxf::SetDrawWarningHandler(nullptr); }

  // Opens model-space entity `index` for read.
  AcDbEntityPointer Open(size_t index) { return AcDbEntityPointer(ids_.at(index), AcDb::kForRead); }

  AcDbExtents Extents(size_t index) {
    AcDbEntityPointer entity = Open(index);
    AcDbExtents box;
    EXPECT_EQ(entity->getGeomExtents(box), Acad::eOk);
    return box;
  }

  void Draw(size_t index, RecordingDraw& draw) {
    AcDbEntityPointer entity = Open(index);
    ASSERT_EQ(entity.openStatus(), Acad::eOk);
    EXPECT_TRUE(entity->worldDraw(&draw));
    EXPECT_EQ(draw.depth(), 0u);  // every transform pushed is popped
  }

  std::unique_ptr<AcDbDatabase> db_;
  std::vector<AcDbObjectId> ids_;
  std::vector<std::string> warnings_;
};

// The rotated, unevenly scaled chair: its half circle becomes half an
// ellipse turned by 30 degrees, whose exact box the extents must give; its
// attribute (below the chair) is included, its attribute definition is not.
TEST_F(BlocksTest, RotatedInsertExtentsAreExactAndIncludeAttributes) {
  RecordingDraw draw;
  Draw(0, draw);
  AcDbExtents geometry = fx::testing::BoxOfDrawing(draw);
  // Half ellipse centre (1, 2), radii 1 and 2, turned 30 degrees about the base, moved to (100, 100).
  double c = std::cos(kPi / 6), s = std::sin(kPi / 6);
  double top = 100 + (1 * s + 2 * c) + std::hypot(1 * s, 2 * c);
  EXPECT_NEAR(geometry.maxPoint().y, top, 1e-6);
  AcDbExtents box = Extents(0);
  EXPECT_NEAR(box.maxPoint().y, top, 1e-12);
  EXPECT_NEAR(box.minPoint().y, 98, 1e-12);  // the attribute's baseline
  EXPECT_NEAR(box.maxPoint().x, std::max(geometry.maxPoint().x, 100 + 2 * fx::dxf::kAverageAdvance), 1e-6);
  ASSERT_EQ(draw.Count(Primitive::kText), 1u);
  const Primitive& attribute = draw.primitives().back();
  EXPECT_EQ(attribute.text, "12");
  EXPECT_TRUE(attribute.model.isIdentity());  // drawn after the block transform is popped
  EXPECT_EQ(draw.begin_inserts(), 1);
  EXPECT_EQ(draw.end_inserts(), 1);
}

// The sink may take an insert over, nested ones and all. (That nested
// inserts draw within their extents is the corpus test's.)
TEST_F(BlocksTest, TheSinkMayTakeAnInsertOver) {
  RecordingDraw taken;
  taken.set_take_inserts(true);
  Draw(1, taken);
  EXPECT_EQ(taken.begin_inserts(), 1);
  EXPECT_EQ(taken.end_inserts(), 0);
  EXPECT_TRUE(taken.primitives().empty());
}

TEST_F(BlocksTest, MInsertDrawsEveryCellAndMeasuresTheArray) {
  RecordingDraw draw;
  Draw(4, draw);
  EXPECT_EQ(draw.Count(Primitive::kArc), 6u);
  EXPECT_EQ(draw.Count(Primitive::kPolyline), 6u);
  AcDbExtents box = Extents(4);
  ExpectBox(box, fx::testing::BoxOfDrawing(draw), 1e-6);
  // Rotated 90: columns run up (x spacing 10 along +y), rows run left.
  EXPECT_NEAR(box.maxPoint().y, 20 + 2, 1e-9);
  EXPECT_NEAR(box.minPoint().x, -20 - 2, 1e-9);
}

// A block that inserts itself is drawn once, and reported once each time
// it is drawn or measured; a cycle through another block (A inserts B,
// which inserts A) is cut where it closes.
TEST_F(BlocksTest, InsertCyclesAreCutAndReported) {
  RecordingDraw loop;
  Draw(2, loop);
  EXPECT_EQ(loop.Count(Primitive::kPolyline), 1u);
  EXPECT_EQ(loop.begin_inserts(), 2);
  EXPECT_EQ(loop.end_inserts(), 2);
  ASSERT_EQ(warnings_.size(), 1u);
  EXPECT_NE(warnings_[0].find("\"LOOP\" inserts itself"), std::string::npos);
  ExpectBox(Extents(2), AcDbExtents({0, 0, 0}, {1, 0, 0}), 1e-12);
  EXPECT_EQ(warnings_.size(), 2u);
  RecordingDraw indirect;
  Draw(3, indirect);
  EXPECT_EQ(indirect.Count(Primitive::kPolyline), 2u);  // A's line, B's line
  EXPECT_EQ(warnings_.size(), 3u);
  ExpectBox(Extents(3), AcDbExtents({0, 0, 0}, {2, 10, 0}), 1e-12);
}

// The heavy polyline in the plane of -Z at elevation 3, and its area.
TEST_F(BlocksTest, HeavyPolylineInObjectCoordinates) {
  AcDbObjectPointer<AcDb2dPolyline> polyline(ids_[5], AcDb::kForRead);
  ASSERT_EQ(polyline.openStatus(), Acad::eOk);
  EXPECT_TRUE(polyline->isClosed());
  EXPECT_EQ(polyline->vertexIds().size(), 4u);
  std::vector<AcGePoint3d> points;
  std::vector<double> bulges;
  ASSERT_EQ(polyline->getVertices(points, bulges), Acad::eOk);
  ASSERT_EQ(points.size(), 4u);
  EXPECT_TRUE(points[1].isEqualTo({-10, 0, -3}));
  EXPECT_EQ(bulges[1], 1);
  double area = 0;
  ASSERT_EQ(polyline->getArea(area), Acad::eOk);
  EXPECT_NEAR(area, 40 + 2 * kPi, 1e-9);
  polyline.close();
  ExpectBox(Extents(5), AcDbExtents({-12, 0, -3}, {0, 4, -3}), 1e-12);
}

}  // namespace
