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
  void Draw(std::string_view entities, fx::svg::SvgOptions options = {}) {
    db_ = fx::svg_test::LoadDrawing(fx::svg_test::R12(kTables, "", entities), "draw.dxf");
    ASSERT_NE(db_, nullptr);
    document_ = fx::svg_test::Render(*db_, {{0, 0}, {100, 100}}, options);
  }
  pugi::xml_node Only(const char* name) {
    std::vector<pugi::xml_node> found = Elements(document_->child("svg").child("g"), name);
    EXPECT_EQ(found.size(), 1u) << name;
    return found.empty() ? pugi::xml_node() : found[0];
  }

  std::unique_ptr<AcDbDatabase> db_;
  std::unique_ptr<pugi::xml_document> document_;
};

// Each primitive as the element it becomes, pinned as the document's text
// writes it (frame (0,0)-(100,100): SVG y = 100 - y, 3 decimals).
TEST_F(SvgDrawTest, EachPrimitiveBecomesItsElements) {
  const struct {
    const char* what;
    const char* entities;
    const char* drawn;
  } kCases[] = {
      // Counter-clockwise from (60,50) to (50,60) about (50,50): in SVG, with
      // y down, the other way round (sweep flag 0).
      {"quarter arc", "0 ARC|8 0|10 50|20 50|30 0|40 10|50 0|51 90",
       R"(<path d="M60,50A10,10 0 0,0 50,40" stroke="#000000" stroke-width="0.01mm"/>)"},
      // From 90 to 0 degrees, the far side: two pieces through 225 degrees.
      {"three quarters", "0 ARC|8 0|10 50|20 50|30 0|40 10|50 90|51 0",
       R"(<path d="M50,40A10,10 0 0,0 42.929,57.071A10,10 0 0,0 60,50" stroke="#000000" stroke-width="0.01mm"/>)"},
      {"circle", "0 CIRCLE|8 0|10 25.5|20 30|30 0|40 4.25",
       R"(<circle cx="25.5" cy="70" r="4.25" stroke="#000000" stroke-width="0.01mm"/>)"},
      // Tilted 45 degrees about y: an ellipse of two arcs, the long axis
      // along y, starting on the plane's x axis, world (0, 1, 0) from the
      // centre ((50, -50 sqrt 2, 0) in the plane is (50, 50, -50)).
      {"tilted circle", "0 CIRCLE|8 0|10 50|20 -70.71067811865476|30 0|40 10|210 1|220 0|230 1",
       R"(<path d="M50,40A10,7.071 -90 0,0 50,60A10,7.071 -90 0,0 50,40Z" stroke="#000000")"
       R"( stroke-width="0.01mm"/>)"},
      {"open and closed polylines",
       "0 POLYLINE|8 0|66 1|70 0\n0 VERTEX|8 0|10 1|20 1\n0 VERTEX|8 0|10 2|20 1\n0 VERTEX|8 0|10 2|20 3\n0 SEQEND|8 0\n"
       "0 POLYLINE|8 0|66 1|70 1\n0 VERTEX|8 0|10 10|20 10\n0 VERTEX|8 0|10 20|20 10\n0 VERTEX|8 0|10 20|20 20\n0 SEQEND|8 0",
       R"(<polyline points="1,99 2,99 2,97" stroke="#000000" stroke-width="0.01mm"/>)"
       R"(<polygon points="10,90 20,90 20,80" stroke="#000000" stroke-width="0.01mm"/>)"},
      // A positive bulge bends left of the direction: below (10,10)-(30,10).
      {"bulge", "0 POLYLINE|8 0|66 1|70 0\n0 VERTEX|8 0|10 10|20 10|42 1\n0 VERTEX|8 0|10 30|20 10\n0 SEQEND|8 0",
       R"(<path d="M10,90A10,10 0 0,0 30,90" stroke="#000000" stroke-width="0.01mm"/>)"},
      // Baseline up the page; capitals 0.7 of the size; markup escaped.
      {"turned text", "0 TEXT|8 0|10 10|20 20|30 0|40 2.1|1 A<&>B|50 90|7 ARIALFILE",
       R"x(<text transform="matrix(0 -1 1 0 10 80)" font-family="'arial'" font-size="3" fill="#000000" stroke="none">)x"
       "A&lt;&amp;&gt;B</text>"},
      // Width factor, the top leaning forward, the face's bold and italic.
      {"styled text", "0 TEXT|8 0|10 10|20 20|30 0|40 1.4|1 x|41 0.75|51 15|7 FACE",
       R"x(<text transform="matrix(0.75 0 -0.267949192 1 10 80)" font-family="'Times New Roman'" font-size="2")x"
       R"x( font-weight="bold" font-style="italic" font-stretch="condensed" fill="#000000" stroke="none">x</text>)x"},
      {"shape font", "0 TEXT|8 0|10 10|20 20|30 0|40 1|1 %%c50",  // the host expands %%c
       "<text transform=\"matrix(1 0 0 1 10 80)\" font-family=\"sans-serif\" font-size=\"1.42857\" fill=\"#000000\" "
       "stroke=\"none\">\xE2\x8C\x80" "50</text>"},
      {"mirrored text", "0 TEXT|8 0|10 10|20 20|30 0|40 1|1 Mirror|71 2",
       R"x(<text transform="matrix(-1 0 0 1 10 80)" font-family="sans-serif" font-size="1.42857" fill="#000000")x"
       R"x( stroke="none">Mirror</text>)x"},
      {"mtext lines", "0 MTEXT|8 0|10 10|20 50|30 0|40 2|71 1|1 first\\Psecond",
       R"x(<text transform="matrix(1 0 0 1 10 52)" font-family="sans-serif" font-size="2.85714" fill="#000000")x"
       R"x( stroke="none">first</text><text transform="matrix(1 0 0 1 10 55.333)" font-family="sans-serif")x"
       R"x( font-size="2.85714" fill="#000000" stroke="none">second</text>)x"},
      // Cut at the frame: an xline, a ray up and one down; the last xline misses.
      {"infinite lines",
       "0 XLINE|8 0|10 10|20 10|30 0|11 1|21 1|31 0\n0 RAY|8 0|10 50|20 20|30 0|11 0|21 1|31 0\n"
       "0 RAY|8 0|10 50|20 20|30 0|11 0|21 -1|31 0\n0 XLINE|8 0|10 500|20 10|30 0|11 0|21 1|31 0",
       R"(<line x1="0" y1="100" x2="100" y2="0" stroke="#000000" stroke-width="0.01mm"/>)"
       R"(<line x1="50" y1="80" x2="50" y2="0" stroke="#000000" stroke-width="0.01mm"/>)"
       R"(<line x1="50" y1="80" x2="50" y2="100" stroke="#000000" stroke-width="0.01mm"/>)"},
      {"solid", "0 SOLID|8 0|62 1|10 0|20 0|30 0|11 10|21 0|31 0|12 0|22 10|32 0|13 10|23 10|33 0",
       R"(<polygon points="0,100 10,100 10,90 0,90" stroke="#FF0000" stroke-width="0.01mm" fill="#FF0000"/>)"},
      {"polyface mesh",
       "0 POLYLINE|8 0|66 1|70 64|71 4|72 2\n0 VERTEX|8 0|10 0|20 0|30 0|70 192\n0 VERTEX|8 0|10 10|20 0|30 0|70 192\n"
       "0 VERTEX|8 0|10 10|20 10|30 0|70 192\n0 VERTEX|8 0|10 0|20 10|30 0|70 192\n"
       "0 VERTEX|8 0|10 0|20 0|30 0|70 128|71 1|72 2|73 3\n0 VERTEX|8 0|10 0|20 0|30 0|70 128|71 1|72 3|73 4\n0 SEQEND|8 0",
       R"(<path d="M0,100L10,100L10,90ZM0,100L10,90L0,90Z" stroke="#000000" stroke-width="0.01mm"/>)"},
  };
  for (const auto& c : kCases) {
    Draw(c.entities);
    EXPECT_EQ(fx::svg_test::DrawnText(*document_), c.drawn) << c.what;
  }
  Draw("0 LINE|8 0|60 1|10 0|20 0|30 0|11 10|21 10|31 0");  // invisible: not drawn
  EXPECT_TRUE(Elements(document_->child("svg").child("g"), "line").empty());
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

}  // namespace
