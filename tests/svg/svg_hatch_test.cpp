// Hatches: a solid fill as one even-odd path, a pattern as its line
// families clipped by the boundary, the invalid loop message, and the
// "Hatch optimization" switch. Pattern lines are checked by invariants:
// inside the boundary, at the family's angle, spacing and dash lengths.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "console_fixture.h"
#include "svg_test_support.h"

namespace {

using fx::svg::Point2;
using fx::svg_test::Elements;
using fx::svg_test::Numbers;

// A square (10,10)-(30,30) with a square hole, solid, red.
constexpr const char* kSolid =
    "0 HATCH|8 0|62 1|10 0|20 0|30 0|210 0|220 0|230 1|2 SOLID|70 1|71 0|91 2"
    "|92 3|72 0|73 1|93 4|10 10|20 10|10 30|20 10|10 30|20 30|10 10|20 30|97 0"
    "|92 2|72 0|73 1|93 4|10 15|20 15|10 20|20 15|10 20|20 20|10 15|20 20|97 0"
    "|75 0|76 1|98 0\n";

// (50,50)-(80,80) with its right side bulging out (a quarter turn), hatched
// at 45 degrees every 3 units, continuous lines.
constexpr const char* kPattern =
    "0 HATCH|8 0|10 0|20 0|30 0|210 0|220 0|230 1|2 ANSI31|70 0|71 0|91 1"
    "|92 2|72 1|73 1|93 4|10 50|20 50|42 0|10 80|20 50|42 0.4142135623730951|10 80|20 80|42 0|10 50|20 80|42 0|97 0"
    "|75 0|76 1|52 0|41 1|77 0|78 1|53 45|43 0|44 0|45 -2.121320343559642|46 2.121320343559642|79 0|98 0\n";

// A circle of radius 10 about (50,20) as an edge loop, hatched by dashes 2
// long with gaps of 1, horizontal, every 2 units.
constexpr const char* kDashed =
    "0 HATCH|8 0|10 0|20 0|30 0|210 0|220 0|230 1|2 DASH|70 0|71 0|91 1"
    "|92 1|93 1|72 2|10 50|20 20|40 10|50 0|51 360|73 1|97 0"
    "|75 0|76 1|52 0|41 1|77 0|78 1|53 0|43 0|44 0|45 0|46 2|79 2|49 2|49 -1|98 0\n";

// Its second loop has a single vertex.
constexpr const char* kInvalid =
    "0 HATCH|8 0|10 0|20 0|30 0|210 0|220 0|230 1|2 SOLID|70 1|71 0|91 2"
    "|92 2|72 0|73 1|93 3|10 0|20 0|10 5|20 0|10 5|20 5|97 0"
    "|92 2|72 0|73 1|93 1|10 1|20 1|97 0|75 0|76 1|98 0\n";

class SvgHatchTest : public fx::console::ConsoleTest {
 protected:
  const pugi::xml_document& Draw(std::string_view entities, fx::svg::SvgOptions options = {}) {
    db_ = fx::svg_test::LoadDrawing(fx::svg_test::R12("", "", entities), "hatch.dxf");
    EXPECT_NE(db_, nullptr);
    document_ = db_ ? fx::svg_test::Render(*db_, {{0, 0}, {100, 100}}, options) : std::make_unique<pugi::xml_document>();
    return *document_;
  }
  pugi::xml_node Drawing() const { return document_->child("svg").child("g"); }

  // The pattern's strokes: pairs "Mx,yLx,y" of the path in the clipped group.
  std::vector<fx::svg_test::Segment> PatternSegments() const {
    std::vector<fx::svg_test::Segment> segments;
    const std::vector<double> v = Numbers(Drawing().child("g").child("path").attribute("d").value());
    for (size_t i = 0; i + 3 < v.size(); i += 4) segments.push_back({{v[i], v[i + 1]}, {v[i + 2], v[i + 3]}});
    return segments;
  }

  std::unique_ptr<AcDbDatabase> db_;
  std::unique_ptr<pugi::xml_document> document_;
};

TEST_F(SvgHatchTest, SolidFillIsOneEvenOddPath) {
  Draw(kSolid);
  EXPECT_EQ(fx::svg_test::DrawnText(*document_),
            R"(<path d="M10,90L30,90L30,70L10,70ZM15,85L20,85L20,80L15,80Z" fill="#FF0000" fill-rule="evenodd")"
            R"( stroke="none"/>)");
}

// Clip paths are numbered in order; the first is the pattern's.
TEST_F(SvgHatchTest, PatternIsClippedByItsBoundary) {
  Draw(std::string(kPattern) + kDashed);
  std::vector<std::string> ids;
  for (pugi::xml_node clip : document_->child("svg").child("defs").children("clipPath")) ids.push_back(clip.attribute("id").value());
  EXPECT_EQ(ids, (std::vector<std::string>{"HP0", "HP1"}));
  const pugi::xml_node clip = document_->child("svg").child("defs").child("clipPath");
  EXPECT_STREQ(clip.child("path").attribute("clip-rule").value(), "evenodd");
  // The bulged side is an arc bending outwards (to the right of x = 80).
  EXPECT_STREQ(clip.child("path").attribute("d").value(),
               "M50,50L80,50A21.213,21.213 0 0,0 80,20L50,20Z");
  const pugi::xml_node group = Drawing().child("g");
  EXPECT_STREQ(group.attribute("clip-path").value(), "url(#HP0)");
  EXPECT_STREQ(group.child("path").attribute("stroke").value(), "#000000");
}

TEST_F(SvgHatchTest, PatternLinesLieInsideAtTheirAngleAndSpacing) {
  Draw(kPattern);
  const auto segments = PatternSegments();
  ASSERT_GT(segments.size(), 10u);
  double length = 0;
  std::vector<double> offsets;
  for (const auto& s : segments) {
    const double dx = s.b.x - s.a.x, dy = s.b.y - s.a.y;
    length += std::hypot(dx, dy);
    EXPECT_NEAR(dx, -dy, 2e-3 * std::hypot(dx, dy) + 2e-3);  // 45 degrees, y flipped
    // Inside, or outside by at most twice the deviation (0.005 here) along
    // the line: the clip path trims that.
    constexpr double kOut = 0.0101;
    for (Point2 p : {s.a, s.b}) {
      EXPECT_GE(p.x, 50 - kOut);
      EXPECT_LE(p.y, 50 + kOut);
      EXPECT_GE(p.y, 20 - kOut);
      // Right of x = 80 only inside the arc about (65, 35) of radius 21.213.
      if (p.x > 80) {
        EXPECT_LE(std::hypot(p.x - 65, p.y - 35), 21.2132 + 0.005 + kOut);
      }
    }
    offsets.push_back((s.a.x + s.a.y) / std::sqrt(2.0));
  }
  // Lines every 3 units: consecutive offsets differ by multiples of 3.
  std::sort(offsets.begin(), offsets.end());
  for (size_t i = 1; i < offsets.size(); ++i) {
    const double gap = offsets[i] - offsets[i - 1];
    EXPECT_NEAR(gap, 3 * std::round(gap / 3), 2e-3);
  }
  // The lines cover the area: 900 plus the circular segment, over 3.
  const double segment_area = 21.2132 * 21.2132 / 2 * (std::numbers::pi / 2 - 1);
  EXPECT_NEAR(length, (900 + segment_area) / 3, 0.05 * (900 + segment_area) / 3);
}

TEST_F(SvgHatchTest, DashedFamilyOnAnEdgeLoop) {
  Draw(kDashed);
  const auto segments = PatternSegments();
  ASSERT_GT(segments.size(), 20u);
  for (const auto& s : segments) {
    EXPECT_NEAR(s.a.y, s.b.y, 1e-9);  // horizontal
    EXPECT_LE(std::abs(s.b.x - s.a.x), 2 + 1e-3);
    for (Point2 p : {s.a, s.b}) EXPECT_LE(std::hypot(p.x - 50, p.y - 80), 10 + 0.011);
    // Dashes start every 3 units from x = 0.
    const double start = std::min(s.a.x, s.b.x);
    const double phase = std::fmod(start, 3.0);
    if (std::hypot(start - 50, s.a.y - 80) < 10 - 0.02) {
      EXPECT_NEAR(phase, 0, 1e-3);
    }
  }
  // The circle edge is two half-turn arcs.
  const std::string d = document_->child("svg").child("defs").child("clipPath").child("path").attribute("d").value();
  EXPECT_EQ(d, "M60,80A10,10 0 0,0 40,80A10,10 0 0,0 60,80Z");
}

// An invalid loop is reported and its hatch skipped; with "Hatch
// optimization" the patterns are left out and solid fills stay.
TEST_F(SvgHatchTest, InvalidLoopsAndOptimisedPatternsAreLeftOut) {
  fx::svg::SvgOptions options;
  options.hatch_optimization = true;
  Draw(std::string(kInvalid) + kSolid + kPattern + kDashed, options);
  EXPECT_EQ(terminal_.out, "\nInvalid hatch loop!");
  ASSERT_EQ(Elements(Drawing(), "path").size(), 1u);
  EXPECT_STREQ(Drawing().child("path").attribute("fill").value(), "#FF0000");
  EXPECT_FALSE(document_->child("svg").child("defs"));
}

}  // namespace
