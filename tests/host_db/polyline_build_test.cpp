// A lightweight polyline built and edited through the API vertex by vertex:
// the polyline keeps its decoded vertices between edits, and what it writes
// must be what a fresh read of its tags gives, tag for tag, whatever other
// edits come between.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host/db_entities.h"
#include "host/dxf/imp_object.h"

namespace {

using fx::dxf::Tag;

// The tags after the polyline's subclass marker, as "code value" lines.
std::string DataTags(const AcDbPolyline& polyline) {
  const fx::dxf::TagList& tags = polyline.impl()->tags();
  std::string text;
  bool data = false;
  for (const Tag& tag : tags.tags()) {
    if (data) text += std::to_string(tag.code) + " " + std::string(tag.value) + "\n";
    if (tag.code == 100 && tag.value == "AcDbPolyline") data = true;
  }
  return text;
}

std::vector<AcGePoint2d> Points(const AcDbPolyline& polyline) {
  std::vector<AcGePoint2d> points(polyline.numVerts());
  for (unsigned i = 0; i < points.size(); ++i) polyline.getPointAt(i, points[i]);
  return points;
}

TEST(PolylineBuild, AppendsInsertsAndOtherEditsWriteTheTagsInOrder) {
  AcDbPolyline polyline;
  ASSERT_EQ(polyline.addVertexAt(0, {0, 0}), Acad::eOk);
  ASSERT_EQ(polyline.addVertexAt(1, {4, 0}, 0.5), Acad::eOk);
  ASSERT_EQ(polyline.addVertexAt(2, {4, 3}, 0, 0.1, 0.2), Acad::eOk);
  ASSERT_EQ(polyline.addVertexAt(1, {2, -1}), Acad::eOk);  // between two
  EXPECT_EQ(Points(polyline), (std::vector<AcGePoint2d>{{0, 0}, {2, -1}, {4, 0}, {4, 3}}));
  double bulge = 0;
  polyline.getBulgeAt(2, bulge);
  EXPECT_EQ(bulge, 0.5);
  // The elevation goes before the vertices: every vertex moves down a tag.
  ASSERT_EQ(polyline.setElevation(2.5), Acad::eOk);
  ASSERT_EQ(polyline.addVertexAt(4, {0, 3}), Acad::eOk);
  ASSERT_EQ(polyline.addVertexAt(0, {-1, -1}), Acad::eOk);  // first
  ASSERT_EQ(polyline.setBulgeAt(5, 0.25), Acad::eOk);        // a tag more in the last vertex
  ASSERT_EQ(polyline.addVertexAt(6, {-2, 0}), Acad::eOk);
  ASSERT_EQ(polyline.removeVertexAt(3), Acad::eOk);
  ASSERT_EQ(polyline.addVertexAt(5, {9, 9}), Acad::eOk);
  const std::string before = DataTags(polyline);
  EXPECT_EQ(polyline.addVertexAt(8, {1, 1}), Acad::eInvalidIndex);
  EXPECT_EQ(DataTags(polyline), before);
  EXPECT_EQ(before,
            "90 7\n70 0\n38 2.5\n"
            "10 -1.0\n20 -1.0\n10 0.0\n20 0.0\n10 2.0\n20 -1.0\n"
            "10 4.0\n20 3.0\n40 0.1\n41 0.2\n10 0.0\n20 3.0\n42 0.25\n"
            "10 9.0\n20 9.0\n10 -2.0\n20 0.0\n");
  EXPECT_EQ(polyline.numVerts(), 7u);
}

// A polyline read with a normal and without a count: the first vertex goes
// before the normal, and the count is added at the end of the data.
TEST(PolylineBuild, FirstVertexBeforeTheNormalAndAMissingCountAdded) {
  static const Tag kTags[] = {{0, "LWPOLYLINE"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbPolyline"},
                              {70, "1"},          {210, "0.0"},        {220, "0.0"}, {230, "-1.0"}};
  AcDbPolyline polyline(std::make_unique<AcDbImpObject>(fx::dxf::TagList(kTags)));
  ASSERT_EQ(polyline.addVertexAt(0, {1, 2}), Acad::eOk);
  ASSERT_EQ(polyline.addVertexAt(1, {3, 4}), Acad::eOk);
  EXPECT_EQ(DataTags(polyline), "70 1\n10 1.0\n20 2.0\n10 3.0\n20 4.0\n210 0.0\n220 0.0\n230 -1.0\n90 2\n");
  AcGePoint3d end;
  ASSERT_EQ(polyline.getEndPoint(end), Acad::eOk);
  EXPECT_EQ(end, AcGePoint3d(-1, 2, 0));  // closed: back at the start, seen from below
}

}  // namespace
