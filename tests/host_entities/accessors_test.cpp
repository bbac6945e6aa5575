// Accessors and setters of the typed entities over hand-written tags, in
// the layout of files before R13 (no subclass markers) and of R2018.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "entity_test_support.h"
#include "host/db_entities.h"

namespace {

using fx::testing::Make;

constexpr double kPi = std::numbers::pi;

void ExpectPoint(const AcGePoint3d& actual, const AcGePoint3d& expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-12);
  EXPECT_NEAR(actual.y, expected.y, 1e-12);
  EXPECT_NEAR(actual.z, expected.z, 1e-12);
}

struct Layout {
  const char* name;
  const char* tags;
};

TEST(EntityAccessors, LineInBothLayouts) {
  const Layout layouts[] = {
      {"R12", "0 LINE\n8 Walls\n62 1\n10 1\n20 2\n30 3\n11 4\n21 5\n31 6\n39 0.5\n"},
      {"R2018", "0 LINE\n5 2A\n330 1F\n100 AcDbEntity\n8 Walls\n100 AcDbLine\n39 0.5\n10 1\n20 2\n30 3\n"
                "11 4\n21 5\n31 6\n210 0\n220 0\n230 1\n"},
  };
  for (const Layout& layout : layouts) {
    SCOPED_TRACE(layout.name);
    auto line = Make<AcDbLine>(layout.tags);
    ExpectPoint(line->startPoint(), {1, 2, 3});
    ExpectPoint(line->endPoint(), {4, 5, 6});
    EXPECT_EQ(line->thickness(), 0.5);
    ExpectPoint(AcGePoint3d::kOrigin + line->normal(), {0, 0, 1});
    ASSERT_EQ(line->setEndPoint({7, 8, 9}), Acad::eOk);
    ExpectPoint(line->endPoint(), {7, 8, 9});
    ExpectPoint(line->startPoint(), {1, 2, 3});
  }
}

// A normal of -Z flips the object x axis: OCS (x, y, z) is world (-x, y, -z).
TEST(EntityAccessors, CircleAndArcCentresAreConvertedFromObjectCoordinates) {
  const Layout layouts[] = {
      {"R12", "0 ARC\n8 0\n10 5\n20 3\n30 2\n40 1.5\n50 30\n51 120\n210 0\n220 0\n230 -1\n"},
      {"R2018", "0 ARC\n100 AcDbEntity\n8 0\n100 AcDbCircle\n10 5\n20 3\n30 2\n40 1.5\n210 0\n220 0\n"
                "230 -1\n100 AcDbArc\n50 30\n51 120\n"},
  };
  for (const Layout& layout : layouts) {
    SCOPED_TRACE(layout.name);
    auto arc = Make<AcDbArc>(layout.tags);
    ExpectPoint(arc->center(), {-5, 3, -2});
    EXPECT_EQ(arc->radius(), 1.5);
    EXPECT_NEAR(arc->startAngle(), kPi / 6, 1e-15);
    EXPECT_NEAR(arc->endAngle(), 2 * kPi / 3, 1e-15);
    ExpectPoint(AcGePoint3d::kOrigin + arc->normal(), {0, 0, -1});
  }
  auto circle = Make<AcDbCircle>("0 CIRCLE\n8 0\n10 5\n20 3\n30 2\n40 1.5\n210 0\n220 0\n230 -1\n");
  ExpectPoint(circle->center(), {-5, 3, -2});
  ASSERT_EQ(circle->setCenter({1, 1, 1}), Acad::eOk);
  ExpectPoint(circle->center(), {1, 1, 1});
  EXPECT_EQ(circle->setRadius(-1), Acad::eInvalidInput);
}

TEST(EntityAccessors, NewCircleStoresObjectCoordinates) {
  AcDbCircle circle(AcGePoint3d(1, 2, 3), AcGeVector3d(0, 0, -1), 4);
  ExpectPoint(circle.center(), {1, 2, 3});
  EXPECT_EQ(circle.radius(), 4);
  const fx::dxf::TagList& tags = circle.impl()->tags();
  EXPECT_EQ(tags.GetPoint(10, tags.Body()).x, -1);
  AcDbArc arc(AcGePoint3d(0, 0, 0), 2, kPi / 2, kPi);
  EXPECT_NEAR(arc.startAngle(), kPi / 2, 1e-15);
  EXPECT_NEAR(arc.endAngle(), kPi, 1e-15);
}

TEST(EntityAccessors, Ellipse) {
  auto ellipse = Make<AcDbEllipse>(
      "0 ELLIPSE\n100 AcDbEntity\n8 0\n100 AcDbEllipse\n10 1\n20 1\n30 0\n11 2\n21 0\n31 0\n"
      "210 0\n220 0\n230 1\n40 0.5\n41 0\n42 3.141592653589793\n");
  ExpectPoint(AcGePoint3d::kOrigin + ellipse->minorAxis(), {0, 1, 0});
  EXPECT_EQ(ellipse->radiusRatio(), 0.5);
  ExpectPoint(ellipse->pointAtParam(kPi / 2), {1, 2, 0});
  ExpectPoint(ellipse->pointAtParam(0), {3, 1, 0});
}

TEST(EntityAccessors, Spline) {
  auto spline = Make<AcDbSpline>(
      "0 SPLINE\n100 AcDbEntity\n8 0\n100 AcDbSpline\n210 0\n220 0\n230 1\n70 12\n71 2\n72 6\n73 3\n74 0\n"
      "40 0\n40 0\n40 0\n40 1\n40 1\n40 1\n41 1\n41 0.5\n41 1\n10 0\n20 0\n30 0\n10 1\n20 1\n30 0\n10 2\n20 0\n30 0\n");
  EXPECT_EQ(spline->degree(), 2);
  EXPECT_TRUE(spline->isRational());
  EXPECT_FALSE(spline->isPeriodic());
  EXPECT_EQ(spline->numControlPoints(), 3);
  ExpectPoint(spline->controlPointAt(1), {1, 1, 0});
  EXPECT_EQ(spline->weightAt(1), 0.5);
  EXPECT_EQ(spline->knots().size(), 6u);
  EXPECT_EQ(spline->numFitPoints(), 0);
  // The middle of a symmetric quadratic: (P0 + 2 w P1 + P2) / (2 + 2 w) at t = 1/2.
  std::vector<AcGePoint3d> points = spline->samplePoints(1e-6);
  ASSERT_GE(points.size(), 3u);
  ExpectPoint(points.front(), {0, 0, 0});
  ExpectPoint(points.back(), {2, 0, 0});
}

const char* const kLwPolyline =
    "0 LWPOLYLINE\n100 AcDbEntity\n8 Rooms\n100 AcDbPolyline\n90 3\n70 1\n43 0\n38 2.5\n"
    "10 0\n20 0\n40 0.1\n41 0.2\n10 4\n20 0\n42 1\n91 7\n10 4\n20 3\n210 0\n220 0\n230 1\n";

TEST(EntityAccessors, LightweightPolylineVertices) {
  auto polyline = Make<AcDbPolyline>(kLwPolyline);
  ASSERT_EQ(polyline->numVerts(), 3u);
  EXPECT_TRUE(polyline->isClosed());
  EXPECT_TRUE(polyline->hasBulges());
  EXPECT_EQ(polyline->elevation(), 2.5);
  AcGePoint2d p;
  ASSERT_EQ(polyline->getPointAt(1u, p), Acad::eOk);
  EXPECT_EQ(p, AcGePoint2d(4, 0));
  AcGePoint3d w;
  ASSERT_EQ(polyline->getPointAt(2u, w), Acad::eOk);
  ExpectPoint(w, {4, 3, 2.5});
  double bulge = 0, start = 0, end = 0;
  polyline->getBulgeAt(1, bulge);
  EXPECT_EQ(bulge, 1);
  polyline->getWidthsAt(0, start, end);
  EXPECT_EQ(start, 0.1);
  EXPECT_EQ(end, 0.2);
  EXPECT_EQ(polyline->getPointAt(3u, p), Acad::eInvalidIndex);
  AcGePoint3d end_point;
  polyline->getEndPoint(end_point);
  ExpectPoint(end_point, {0, 0, 2.5});  // closed: ends where it starts
}

TEST(EntityAccessors, LightweightPolylineEdits) {
  auto polyline = Make<AcDbPolyline>(kLwPolyline);
  ASSERT_EQ(polyline->addVertexAt(1, {2, -1}, 0.5), Acad::eOk);
  ASSERT_EQ(polyline->numVerts(), 4u);
  AcGePoint2d p;
  polyline->getPointAt(1u, p);
  EXPECT_EQ(p, AcGePoint2d(2, -1));
  double bulge = 0;
  polyline->getBulgeAt(1, bulge);
  EXPECT_EQ(bulge, 0.5);
  polyline->getBulgeAt(2, bulge);
  EXPECT_EQ(bulge, 1);  // the old second vertex keeps its bulge
  ASSERT_EQ(polyline->removeVertexAt(2), Acad::eOk);
  ASSERT_EQ(polyline->numVerts(), 3u);
  polyline->getPointAt(2u, p);
  EXPECT_EQ(p, AcGePoint2d(4, 3));
  ASSERT_EQ(polyline->setBulgeAt(2, -0.25), Acad::eOk);
  polyline->getBulgeAt(2, bulge);
  EXPECT_EQ(bulge, -0.25);
  ASSERT_EQ(polyline->setPointAt(0, {-1, -1}), Acad::eOk);
  polyline->getPointAt(0u, p);
  EXPECT_EQ(p, AcGePoint2d(-1, -1));
  ASSERT_EQ(polyline->setClosed(false), Acad::eOk);
  EXPECT_FALSE(polyline->isClosed());
  const fx::dxf::TagList& tags = polyline->impl()->tags();
  EXPECT_EQ(tags.GetInt(90, tags.Body()), 3);

  AcDbPolyline fresh;
  EXPECT_EQ(fresh.numVerts(), 0u);
  fresh.addVertexAt(0, {0, 0});
  fresh.addVertexAt(1, {1, 0});
  fresh.setElevation(4);
  EXPECT_EQ(fresh.numVerts(), 2u);
  EXPECT_EQ(fresh.elevation(), 4);
}

TEST(EntityAccessors, SettersNeedWriteAccess) {
  AcDbStub stub;
  AcDbLine line(std::make_unique<AcDbImpObject>(&stub, AcDb::kForRead,
                                                fx::testing::TagsFrom("0 LINE\n8 0\n10 0\n20 0\n11 1\n21 1\n")));
  EXPECT_EQ(line.setStartPoint({5, 5, 5}), Acad::eWasNotOpenForWrite);
  EXPECT_EQ(line.startPoint(), AcGePoint3d(0, 0, 0));
}

TEST(EntityAccessors, TextAlignmentInBothLayouts) {
  const Layout layouts[] = {
      {"R12", "0 TEXT\n8 0\n10 1\n20 2\n30 0\n40 2.5\n1 Room 101\n50 90\n41 0.8\n51 15\n7 ARCH\n71 2\n72 1\n"
              "11 5\n21 6\n31 0\n73 2\n"},
      {"R2018", "0 TEXT\n100 AcDbEntity\n8 0\n100 AcDbText\n10 1\n20 2\n30 0\n40 2.5\n1 Room 101\n50 90\n"
                "41 0.8\n51 15\n7 ARCH\n71 2\n72 1\n11 5\n21 6\n31 0\n100 AcDbText\n73 2\n"},
  };
  for (const Layout& layout : layouts) {
    SCOPED_TRACE(layout.name);
    auto text = Make<AcDbText>(layout.tags);
    EXPECT_EQ(text->textString(), "Room 101");
    ExpectPoint(text->position(), {1, 2, 0});
    ExpectPoint(text->alignmentPoint(), {5, 6, 0});
    EXPECT_EQ(text->horizontalMode(), kTextCenter);
    EXPECT_EQ(text->verticalMode(), kTextVertMid);
    EXPECT_FALSE(text->isDefaultAlignment());
    EXPECT_NEAR(text->rotation(), kPi / 2, 1e-15);
    EXPECT_NEAR(text->oblique(), kPi / 12, 1e-15);
    EXPECT_EQ(text->widthFactor(), 0.8);
    EXPECT_TRUE(text->isMirroredInX());
    EXPECT_FALSE(text->isMirroredInY());
    ASSERT_EQ(text->setVerticalMode(kTextTop), Acad::eOk);
    EXPECT_EQ(text->verticalMode(), kTextTop);
  }
}

TEST(EntityAccessors, TextValuesAreDecodedAndEncoded) {
  auto text = Make<AcDbText>("0 TEXT\n100 AcDbEntity\n8 0\n100 AcDbText\n10 0\n20 0\n40 1\n1 %%c50 ^Jx\n100 AcDbText\n");
  EXPECT_EQ(text->textString(), "%%c50 \nx");  // %%-codes stay raw, carets decode
  ASSERT_EQ(text->setTextString("B\xC3\xBC" "ro\tA"), Acad::eOk);
  EXPECT_EQ(text->textString(), "B\xC3\xBC" "ro\tA");
  const fx::dxf::TagList& tags = text->impl()->tags();
  EXPECT_EQ(tags.GetString(1, tags.Body()), "B\xC3\xBC" "ro^IA");
  AcDbText fresh(AcGePoint3d(1, 2, 0), "Office", AcDbObjectId::kNull, 3, kPi / 2);
  EXPECT_EQ(fresh.textString(), "Office");
  EXPECT_EQ(fresh.height(), 3);
  EXPECT_NEAR(fresh.rotation(), kPi / 2, 1e-15);
  EXPECT_TRUE(fresh.isDefaultAlignment());
}

TEST(EntityAccessors, AttributesKeepVerticalAlignmentIn74) {
  const Layout layouts[] = {
      {"R12", "0 ATTRIB\n8 0\n10 0\n20 0\n30 0\n40 1\n1 101\n2 NUMBER\n70 9\n73 0\n72 4\n11 0\n21 0\n31 0\n74 3\n"},
      {"R2018", "0 ATTRIB\n100 AcDbEntity\n8 0\n100 AcDbText\n10 0\n20 0\n30 0\n40 1\n1 101\n72 4\n11 0\n"
                "21 0\n31 0\n100 AcDbAttribute\n280 0\n2 NUMBER\n70 9\n73 0\n74 3\n"},
  };
  for (const Layout& layout : layouts) {
    SCOPED_TRACE(layout.name);
    auto attribute = Make<AcDbAttribute>(layout.tags);
    EXPECT_EQ(attribute->tag(), "NUMBER");
    EXPECT_EQ(attribute->textString(), "101");
    EXPECT_TRUE(attribute->isInvisible());
    EXPECT_FALSE(attribute->isConstant());
    EXPECT_EQ(attribute->horizontalMode(), kTextMid);
    EXPECT_EQ(attribute->verticalMode(), kTextTop);
  }
  auto definition = Make<AcDbAttributeDefinition>(
      "0 ATTDEF\n100 AcDbEntity\n8 0\n100 AcDbText\n10 0\n20 0\n30 0\n40 1\n1 ?\n100 AcDbAttributeDefinition\n"
      "3 Room number\n2 NUMBER\n70 10\n74 1\n");
  EXPECT_EQ(definition->prompt(), "Room number");
  EXPECT_EQ(definition->tag(), "NUMBER");
  EXPECT_TRUE(definition->isConstant());
  EXPECT_TRUE(definition->isPreset());
  EXPECT_FALSE(definition->isInvisible());
  EXPECT_EQ(definition->verticalMode(), kTextBottom);
  AcDbAttribute fresh;
  ASSERT_EQ(fresh.setTag("AREA"), Acad::eOk);
  EXPECT_EQ(fresh.tag(), "AREA");
}

TEST(EntityAccessors, MTextContentsAndPlainText) {
  auto mtext = Make<AcDbMText>(
      "0 MTEXT\n100 AcDbEntity\n8 0\n100 AcDbMText\n10 10\n20 20\n30 0\n40 2\n41 30\n71 5\n72 1\n"
      "3 {\\fArial|b1;Raum}\\P\\A1;A\n1 -1.01\\P12,5 m\\S2^;\n7 Standard\n11 0\n21 1\n31 0\n44 1.5\n");
  EXPECT_EQ(mtext->contents(), "{\\fArial|b1;Raum}\\P\\A1;A-1.01\\P12,5 m\\S2^;");
  EXPECT_EQ(mtext->text(), "Raum\nA-1.01\n12,5 m2");
  ExpectPoint(mtext->location(), {10, 20, 0});
  EXPECT_EQ(mtext->attachment(), AcDbMText::kMiddleCenter);
  EXPECT_EQ(mtext->width(), 30);
  EXPECT_EQ(mtext->lineSpacingFactor(), 1.5);
  EXPECT_NEAR(mtext->rotation(), kPi / 2, 1e-15);
  ExpectPoint(AcGePoint3d::kOrigin + mtext->direction(), {0, 1, 0});
}

TEST(EntityAccessors, MTextLongContentsAreChunked) {
  AcDbMText mtext;
  std::string contents;
  for (int i = 0; i < 120; ++i) contents += "Z\xC3\xBCrich ";  // 8 bytes each, 960 in all
  ASSERT_EQ(mtext.setContents(contents.c_str()), Acad::eOk);
  EXPECT_EQ(mtext.contents(), contents);
  const fx::dxf::TagList& tags = mtext.impl()->tags();
  size_t chunks = 0;
  for (const fx::dxf::Tag& tag : tags.tags()) {
    if (tag.code != 3 && tag.code != 1) continue;
    EXPECT_LE(tag.value.size(), 250u);
    ++chunks;
  }
  EXPECT_EQ(chunks, 4u);
}

TEST(EntityAccessors, MTextPlainTextCodes) {
  struct Case {
    const char* contents;
    const char* plain;
  } cases[] = {
      {"a\\Pb", "a\nb"},
      {"\\\\server\\{x\\}", "\\server{x}"},
      {"{\\H2.5x;\\C1;big} {\\Lunder\\l}", "big under"},
      {"\\pxqc;centred\\Nnext", "centred\nnext"},
      {"\\S1/2; \\S3#4;\\Sx^ y;", "1/2 3/4x/y"},
      {"no\\~break", "no\xC2\xA0" "break"},
      {"%%c 20 %%d %%p1", "\xE2\x8C\x80 20 \xC2\xB0 \xC2\xB1" "1"},
      {"\\Q15;\\W0.8;\\T1.1;slanted", "slanted"},
  };
  for (const Case& c : cases) {
    AcDbMText mtext;
    mtext.setContents(c.contents);
    EXPECT_EQ(mtext.text(), c.plain) << c.contents;
  }
}

TEST(EntityAccessors, BlockReferenceAndMInsert) {
  auto insert = Make<AcDbBlockReference>(
      "0 INSERT\n100 AcDbEntity\n8 0\n100 AcDbBlockReference\n66 1\n2 DOOR\n10 1\n20 2\n30 0\n41 2\n42 -1\n"
      "43 1\n50 90\n210 0\n220 0\n230 -1\n");
  ExpectPoint(insert->position(), {-1, 2, 0});
  EXPECT_EQ(insert->scaleFactors().sx, 2);
  EXPECT_EQ(insert->scaleFactors().sy, -1);
  EXPECT_NEAR(insert->rotation(), kPi / 2, 1e-15);
  EXPECT_EQ(insert->columnCount(), 1);
  // Block origin (0,0,0) when no database: x maps through scale 2, rotation
  // 90 and the -Z plane.
  AcGeMatrix3d m = insert->blockTransform();
  ExpectPoint(m * AcGePoint3d(1, 0, 0), {-1, 4, 0});
  ExpectPoint(m * AcGePoint3d(0, 1, 0), {-2, 2, 0});

  auto minsert = Make<AcDbBlockReference>(
      "0 INSERT\n100 AcDbEntity\n8 0\n100 AcDbMInsertBlock\n2 DESK\n10 0\n20 0\n30 0\n70 4\n71 3\n44 2.5\n45 1.5\n");
  EXPECT_EQ(minsert->columnCount(), 4);
  EXPECT_EQ(minsert->rowCount(), 3);
  EXPECT_EQ(minsert->columnSpacing(), 2.5);
  EXPECT_EQ(minsert->rowSpacing(), 1.5);
  ASSERT_EQ(minsert->setRotation(kPi), Acad::eOk);
  EXPECT_NEAR(minsert->rotation(), kPi, 1e-12);
}

TEST(EntityAccessors, HatchLoopsAndPattern) {
  auto hatch = Make<AcDbHatch>(
      "0 HATCH\n100 AcDbEntity\n8 0\n100 AcDbHatch\n10 0\n20 0\n30 1.5\n210 0\n220 0\n230 1\n2 ANSI31\n70 0\n71 0\n"
      "91 2\n"
      "92 7\n72 1\n73 1\n93 2\n10 0\n20 0\n42 1\n10 2\n20 0\n42 1\n97 0\n"
      "92 1\n93 4\n72 1\n10 0\n20 0\n11 4\n21 0\n72 2\n10 4\n20 2\n40 2\n50 270\n51 360\n73 0\n"
      "72 3\n10 2\n20 4\n11 2\n21 0\n40 0.5\n50 0\n51 180\n73 1\n"
      "72 4\n94 3\n73 0\n74 0\n95 8\n96 4\n40 0\n40 0\n40 0\n40 0\n40 1\n40 1\n40 1\n40 1\n"
      "10 0\n20 4\n10 -1\n20 3\n10 -1\n20 1\n10 0\n20 0\n97 0\n97 1\n330 2F\n"
      "75 1\n76 1\n52 0\n41 1\n77 0\n78 1\n53 45\n43 0\n44 0\n45 -0.5\n46 0.5\n79 2\n49 1\n49 -0.5\n98 0\n");
  EXPECT_EQ(hatch->patternName(), "ANSI31");
  EXPECT_FALSE(hatch->isSolidFill());
  EXPECT_EQ(hatch->elevation(), 1.5);
  EXPECT_EQ(hatch->hatchStyle(), 1);
  ASSERT_EQ(hatch->numLoops(), 2);
  AcDbHatchLoop loop;
  ASSERT_EQ(hatch->getLoopAt(0, loop), Acad::eOk);
  EXPECT_TRUE(loop.is_polyline);
  ASSERT_EQ(loop.vertices.size(), 2u);
  EXPECT_EQ(loop.bulges[1], 1);
  ASSERT_EQ(hatch->getLoopAt(1, loop), Acad::eOk);
  ASSERT_EQ(loop.edges.size(), 4u);
  const AcDbHatchEdge& arc = loop.edges[1];
  // Clockwise, stored as 360 - angle: runs from 90 degrees down to 0.
  EXPECT_FALSE(arc.counter_clockwise);
  EXPECT_NEAR(std::remainder(arc.start_angle - kPi / 2, 2 * kPi), 0, 1e-12);
  EXPECT_NEAR(std::remainder(arc.end_angle, 2 * kPi), 0, 1e-12);
  EXPECT_EQ(loop.edges[2].kind, AcDbHatchEdge::kEllipArc);
  EXPECT_NEAR(loop.edges[2].end_angle, kPi, 1e-12);
  const AcDbHatchEdge& spline = loop.edges[3];
  ASSERT_EQ(spline.kind, AcDbHatchEdge::kSpline);
  ASSERT_GE(spline.points.size(), 2u);
  EXPECT_TRUE(spline.points.front().isEqualTo({0, 4}));
  EXPECT_TRUE(spline.points.back().isEqualTo({0, 0}));
  std::vector<AcDbHatchPatternLine> lines = hatch->patternLines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_NEAR(lines[0].angle, kPi / 4, 1e-15);
  EXPECT_EQ(lines[0].offset.y, 0.5);
  ASSERT_EQ(lines[0].dashes.size(), 2u);
  EXPECT_EQ(lines[0].dashes[1], -0.5);
  ExpectPoint(hatch->planeToWorld() * AcGePoint3d(1, 1, 0), {1, 1, 1.5});
}

TEST(EntityAccessors, SolidFacePointLeaderXline) {
  auto solid = Make<AcDbSolid>("0 SOLID\n8 0\n10 0\n20 0\n30 0\n11 1\n21 0\n31 0\n12 0\n22 1\n32 0\n");
  AcGePoint3d p;
  ASSERT_EQ(solid->getPointAt(3, p), Acad::eOk);
  ExpectPoint(p, {0, 1, 0});  // a triangle repeats its third corner
  EXPECT_EQ(solid->getPointAt(4, p), Acad::eInvalidIndex);

  auto face = Make<AcDbFace>("0 3DFACE\n100 AcDbEntity\n8 0\n100 AcDbFace\n10 0\n20 0\n30 0\n11 1\n21 0\n31 0\n"
                             "12 1\n22 1\n32 1\n13 0\n23 1\n33 1\n70 5\n");
  EXPECT_FALSE(face->isEdgeVisibleAt(0));
  EXPECT_TRUE(face->isEdgeVisibleAt(1));
  EXPECT_FALSE(face->isEdgeVisibleAt(2));
  face->getVertexAt(2, p);
  ExpectPoint(p, {1, 1, 1});

  auto point = Make<AcDbPoint>("0 POINT\n100 AcDbEntity\n8 0\n100 AcDbPoint\n10 3\n20 4\n30 5\n");
  ExpectPoint(point->position(), {3, 4, 5});

  auto leader = Make<AcDbLeader>("0 LEADER\n100 AcDbEntity\n8 0\n100 AcDbLeader\n3 Standard\n71 0\n72 0\n76 3\n"
                                 "10 0\n20 0\n30 0\n10 1\n20 1\n30 0\n10 3\n20 1\n30 0\n");
  EXPECT_EQ(leader->numVertices(), 3);
  ExpectPoint(leader->vertexAt(2), {3, 1, 0});
  EXPECT_FALSE(leader->hasArrowHead());

  auto ray = Make<AcDbXline>("0 RAY\n100 AcDbEntity\n8 0\n100 AcDbRay\n10 1\n20 1\n30 0\n11 0\n21 2\n31 0\n");
  ExpectPoint(ray->basePoint(), {1, 1, 0});
  ExpectPoint(AcGePoint3d::kOrigin + ray->unitDir(), {0, 1, 0});
}

TEST(EntityAccessors, Dimension) {
  auto dimension = Make<AcDbDimension>(
      "0 DIMENSION\n100 AcDbEntity\n8 0\n100 AcDbDimension\n2 *D5\n10 0\n20 0\n30 0\n11 2\n21 1\n31 0\n"
      "70 32\n1 <> m\n42 3.75\n100 AcDbAlignedDimension\n13 0\n23 0\n33 0\n14 4\n24 0\n34 0\n");
  ExpectPoint(dimension->textPosition(), {2, 1, 0});
  EXPECT_EQ(dimension->dimensionText(), "<> m");
  EXPECT_EQ(dimension->measurement(), 3.75);
  EXPECT_TRUE(dimension->dimBlockId().isNull());  // not in a database
}

}  // namespace
