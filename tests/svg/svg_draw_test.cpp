// The primitives of the entities the host draws, as SVG elements: lines,
// polylines and polygons, circles, arcs exact and approximated, texts,
// infinite lines, filled areas and meshes. Frames are chosen so that the
// precision rule writes 3 decimals.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "svg/svg_document.h"
#include "svg_test_support.h"

namespace {

using fx::svg::Point2;
using fx::svg_test::Elements;
using fx::svg_test::Numbers;

constexpr const char* kTables = R"(0 TABLE|2 APPID|70 1
0 APPID|2 ACAD|70 0
0 ENDTAB
0 TABLE|2 STYLE|70 3
0 STYLE|2 STANDARD|70 0|40 0|41 1|50 0|71 0|42 2.5|3 txt|4 
0 STYLE|2 ARIALFILE|70 0|40 0|41 1|50 0|71 0|42 2.5|3 C:\Fonts\arial.ttf|4 
0 STYLE|2 FACE|70 0|40 0|41 1|50 0|71 0|42 2.5|3 times.ttf|4 |1001 ACAD|1000 Times New Roman|1071 50331682
0 ENDTAB)";

class SvgDrawTest : public ::testing::Test {
 protected:
  // Renders `entities` in the frame (0,0)-(100,100) (SVG y = 100 - y).
  const pugi::xml_document& Draw(std::string_view entities, fx::svg::SvgOptions options = {},
                                 std::string_view blocks = "") {
    db_ = fx::svg_test::LoadDrawing(fx::svg_test::R12(kTables, blocks, entities), "draw.dxf");
    EXPECT_NE(db_, nullptr);
    if (db_ == nullptr) return empty_;
    document_ = fx::svg_test::Render(*db_, {{0, 0}, {100, 100}}, options);
    return *document_;
  }
  pugi::xml_node Only(const char* name) {
    std::vector<pugi::xml_node> found = Elements(document_->child("svg").child("g"), name);
    EXPECT_EQ(found.size(), 1u) << name;
    return found.empty() ? pugi::xml_node() : found[0];
  }

  std::unique_ptr<AcDbDatabase> db_;
  std::unique_ptr<pugi::xml_document> document_;
  pugi::xml_document empty_;
};

// A quarter arc counter-clockwise from (60,50) to (50,60) about (50,50): in
// SVG y points down, so it runs the other way round (sweep flag 0).
TEST_F(SvgDrawTest, ArcBendsTheRightWay) {
  Draw("0 ARC|8 0|10 50|20 50|30 0|40 10|50 0|51 90");
  EXPECT_STREQ(Only("path").attribute("d").value(), "M60,50A10,10 0 0,0 50,40");
  // Three quarters from 90 to 0 degrees: flag 0 still, in two half-turn
  // pieces through 225 degrees, the far side.
  Draw("0 ARC|8 0|10 50|20 50|30 0|40 10|50 90|51 0");
  EXPECT_STREQ(Only("path").attribute("d").value(), "M50,40A10,10 0 0,0 42.929,57.071A10,10 0 0,0 60,50");
}

TEST_F(SvgDrawTest, ApproximatedArcStaysOnTheCircle) {
  fx::svg::SvgOptions options;
  options.approximate_arc = true;
  Draw("0 ARC|8 0|10 50|20 50|30 0|40 10|50 30|51 300", options);
  const std::vector<double> v = Numbers(Only("polyline").attribute("points").value());
  ASSERT_GT(v.size(), 20u);
  for (size_t i = 0; i + 1 < v.size(); i += 2) EXPECT_NEAR(std::hypot(v[i] - 50, v[i + 1] - 50), 10, 1e-3);
  // It starts at 30 degrees and ends at 300, seen with y down.
  EXPECT_NEAR(v[0], 50 + 10 * std::cos(std::numbers::pi / 6), 1e-3);
  EXPECT_NEAR(v[1], 50 - 10 * std::sin(std::numbers::pi / 6), 1e-3);
  EXPECT_NEAR(v[v.size() - 1], 50 + 10 * std::sin(std::numbers::pi / 3), 1e-3);
  // Each chord's middle is within the deviation of the circle.
  for (size_t i = 0; i + 3 < v.size(); i += 2) {
    const double mx = (v[i] + v[i + 2]) / 2 - 50, my = (v[i + 1] + v[i + 3]) / 2 - 50;
    EXPECT_LT(10 - std::hypot(mx, my), 0.006);
  }
}

TEST_F(SvgDrawTest, CircleIsACircleElement) {
  Draw("0 CIRCLE|8 0|10 25.5|20 30|30 0|40 4.25");
  const pugi::xml_node circle = Only("circle");
  EXPECT_STREQ(circle.attribute("cx").value(), "25.5");
  EXPECT_STREQ(circle.attribute("cy").value(), "70");
  EXPECT_STREQ(circle.attribute("r").value(), "4.25");
  EXPECT_FALSE(circle.attribute("fill"));
}

// A circle whose plane is tilted 45 degrees about the y axis is seen as an
// ellipse: two arcs with the axes of its projection, the long one along y.
// (Its centre is in the plane's own coordinates: (50, -50 sqrt 2, 0) is
// (50, 50, -50) in the world.)
TEST_F(SvgDrawTest, TiltedCircleIsAnEllipse) {
  Draw("0 CIRCLE|8 0|10 50|20 -70.71067811865476|30 0|40 10|210 1|220 0|230 1");
  const std::vector<double> v = Numbers(Only("path").attribute("d").value());
  ASSERT_EQ(v.size(), 2u + 2 * 7u);
  EXPECT_NEAR(v[2], 10, 1e-3);                   // rx
  EXPECT_NEAR(v[3], 10 / std::sqrt(2.0), 1e-3);  // ry
  EXPECT_NEAR(std::abs(v[4]), 90, 1e-3);         // rx turned to y
  // It starts on the plane's x axis, world (0, 1, 0) from the centre.
  EXPECT_NEAR(v[0], 50, 1e-3);
  EXPECT_NEAR(v[1], 40, 1e-3);
}

TEST_F(SvgDrawTest, PolylinesOpenAndClosed) {
  Draw("0 POLYLINE|8 0|66 1|70 0\n0 VERTEX|8 0|10 1|20 1\n0 VERTEX|8 0|10 2|20 1\n0 VERTEX|8 0|10 2|20 3\n0 SEQEND|8 0\n"
       "0 POLYLINE|8 0|66 1|70 1\n0 VERTEX|8 0|10 10|20 10\n0 VERTEX|8 0|10 20|20 10\n0 VERTEX|8 0|10 20|20 20\n0 SEQEND|8 0");
  EXPECT_STREQ(Only("polyline").attribute("points").value(), "1,99 2,99 2,97");
  EXPECT_STREQ(Only("polygon").attribute("points").value(), "10,90 20,90 20,80");
}

// A bulged polyline segment is an arc between its vertices, bending to the
// left of its direction for a positive bulge.
TEST_F(SvgDrawTest, BulgeBecomesAnArc) {
  Draw("0 POLYLINE|8 0|66 1|70 0\n0 VERTEX|8 0|10 10|20 10|42 1\n0 VERTEX|8 0|10 30|20 10\n0 SEQEND|8 0");
  // Counter-clockwise half circle from (10,10) to (30,10) about (20,10): below them.
  EXPECT_STREQ(Only("path").attribute("d").value(), "M10,90A10,10 0 0,0 30,90");
}

TEST_F(SvgDrawTest, TextPlacedByAMatrix) {
  Draw("0 TEXT|8 0|10 10|20 20|30 0|40 2.1|1 A<&>B|50 90|7 ARIALFILE");
  const pugi::xml_node text = Only("text");
  EXPECT_EQ(fx::svg_test::AttributeNames(text),
            (std::vector<std::string>{"transform", "font-family", "font-size", "fill", "stroke"}));
  // Baseline up the page: x along (0,-1) in SVG, up along (-1,0).
  EXPECT_STREQ(text.attribute("transform").value(), "matrix(0 -1 1 0 10 80)");
  EXPECT_STREQ(text.attribute("font-family").value(), "'arial'");
  EXPECT_STREQ(text.attribute("font-size").value(), "3");  // capitals 0.7 of the size
  EXPECT_STREQ(text.attribute("fill").value(), "#000000");
  EXPECT_STREQ(text.attribute("stroke").value(), "none");
  EXPECT_STREQ(text.text().get(), "A<&>B");
  const std::string xml = fx::svg::DocumentText(*document_);
  EXPECT_NE(xml.find(">A&lt;&amp;&gt;B</text>"), std::string::npos) << xml;
}

TEST_F(SvgDrawTest, TextStyleBoldItalicWidthAndOblique) {
  Draw("0 TEXT|8 0|10 10|20 20|30 0|40 1.4|1 x|41 0.75|51 15|7 FACE");
  const pugi::xml_node text = Only("text");
  EXPECT_STREQ(text.attribute("font-family").value(), "'Times New Roman'");
  EXPECT_STREQ(text.attribute("font-weight").value(), "bold");
  EXPECT_STREQ(text.attribute("font-style").value(), "italic");
  EXPECT_STREQ(text.attribute("font-stretch").value(), "condensed");
  const std::vector<double> m = Numbers(text.attribute("transform").value());
  ASSERT_EQ(m.size(), 6u);
  EXPECT_NEAR(m[0], 0.75, 1e-9);                                   // width factor
  EXPECT_NEAR(m[2], -std::tan(15 * std::numbers::pi / 180), 1e-8);  // the top leans forward
  EXPECT_NEAR(m[3], 1, 1e-9);
}

// A rasteriser fails on a font of 263,356 units (a real drawing's title):
// the size above 10,000 is moved into the matrix by powers of ten.
TEST_F(SvgDrawTest, HugeTextKeepsItsFontSizeSmall) {
  db_ = fx::svg_test::LoadDrawing(fx::svg_test::R12(kTables, "", "0 TEXT|8 0|10 0|20 0|30 0|40 184349|1 BIG"), "big.dxf");
  ASSERT_NE(db_, nullptr);
  document_ = fx::svg_test::Render(*db_, {{0, 0}, {3.4e6, 2.7e6}});
  const pugi::xml_node text = Only("text");
  EXPECT_STREQ(text.attribute("font-size").value(), "2633.56");
  EXPECT_STREQ(text.attribute("transform").value(), "matrix(100 0 0 100 0 2700000)");
}

TEST_F(SvgDrawTest, ShapeFontIsSansSerif) {
  Draw("0 TEXT|8 0|10 10|20 20|30 0|40 1|1 %%c50");
  const pugi::xml_node text = Only("text");
  EXPECT_STREQ(text.attribute("font-family").value(), "sans-serif");
  EXPECT_STREQ(text.text().get(), "\xE2\x8C\x80" "50");  // the host expands %%c
  EXPECT_FALSE(text.attribute("font-stretch"));
}

TEST_F(SvgDrawTest, MirroredTextRunsBackwards) {
  Draw("0 TEXT|8 0|10 10|20 20|30 0|40 1|1 Mirror|71 2");
  const std::vector<double> m = Numbers(Only("text").attribute("transform").value());
  ASSERT_EQ(m.size(), 6u);
  EXPECT_NEAR(m[0], -1, 1e-9);  // x runs left
  EXPECT_NEAR(m[3], 1, 1e-9);   // up stays up
}

TEST_F(SvgDrawTest, MtextLinesAreTexts) {
  Draw("0 MTEXT|8 0|10 10|20 50|30 0|40 2|71 1|1 first\\Psecond");
  std::vector<pugi::xml_node> texts = Elements(*document_, "text");
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_STREQ(texts[0].text().get(), "first");
  EXPECT_STREQ(texts[1].text().get(), "second");
  EXPECT_GT(Numbers(texts[1].attribute("transform").value())[5], Numbers(texts[0].attribute("transform").value())[5]);
}

TEST_F(SvgDrawTest, InfiniteLinesAreCutAtTheFrame) {
  Draw("0 XLINE|8 0|10 10|20 10|30 0|11 1|21 1|31 0\n0 RAY|8 0|10 50|20 20|30 0|11 0|21 1|31 0\n"
       "0 RAY|8 0|10 50|20 20|30 0|11 0|21 -1|31 0\n0 XLINE|8 0|10 500|20 10|30 0|11 0|21 1|31 0");
  std::vector<pugi::xml_node> lines = Elements(*document_, "line");
  ASSERT_EQ(lines.size(), 3u);  // the last xline misses the frame
  EXPECT_EQ(Numbers(std::string(lines[0].attribute("x1").value()) + " " + lines[0].attribute("y1").value() + " " +
                    lines[0].attribute("x2").value() + " " + lines[0].attribute("y2").value()),
            (std::vector<double>{0, 100, 100, 0}));
  EXPECT_STREQ(lines[1].attribute("y1").value(), "80");  // the ray from its base up
  EXPECT_STREQ(lines[1].attribute("y2").value(), "0");
  EXPECT_STREQ(lines[2].attribute("y1").value(), "80");  // and down
  EXPECT_STREQ(lines[2].attribute("y2").value(), "100");
}

TEST_F(SvgDrawTest, SolidIsAFilledPolygon) {
  Draw("0 SOLID|8 0|62 1|10 0|20 0|30 0|11 10|21 0|31 0|12 0|22 10|32 0|13 10|23 10|33 0");
  const pugi::xml_node polygon = Only("polygon");
  EXPECT_STREQ(polygon.attribute("points").value(), "0,100 10,100 10,90 0,90");
  EXPECT_STREQ(polygon.attribute("fill").value(), "#FF0000");
  EXPECT_STREQ(polygon.attribute("stroke").value(), "#FF0000");
}

TEST_F(SvgDrawTest, PolyfaceMeshIsOnePathOfFaces) {
  Draw("0 POLYLINE|8 0|66 1|70 64|71 4|72 2\n0 VERTEX|8 0|10 0|20 0|30 0|70 192\n0 VERTEX|8 0|10 10|20 0|30 0|70 192\n"
       "0 VERTEX|8 0|10 10|20 10|30 0|70 192\n0 VERTEX|8 0|10 0|20 10|30 0|70 192\n"
       "0 VERTEX|8 0|10 0|20 0|30 0|70 128|71 1|72 2|73 3\n0 VERTEX|8 0|10 0|20 0|30 0|70 128|71 1|72 3|73 4\n0 SEQEND|8 0");
  EXPECT_STREQ(Only("path").attribute("d").value(), "M0,100L10,100L10,90ZM0,100L10,90L0,90Z");
}

}  // namespace
