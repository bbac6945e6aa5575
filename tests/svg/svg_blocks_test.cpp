// Block inserts written as <use> of block definitions under <defs>: the
// same strokes as drawing every insert out, one definition per block and
// scale unless its entities take properties from the insert, attributes
// after the <use>, and inserts the renderer leaves to the host.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "svg/pv_svg_world_draw.h"
#include "svg_test_support.h"

namespace {

using fx::svg_test::Elements;
using fx::svg_test::Segment;

constexpr const char* kTables = R"(0 TABLE|2 LAYER|70 4
0 LAYER|2 0|70 0|62 7|6 CONTINUOUS
0 LAYER|2 A|70 0|62 1|6 CONTINUOUS
0 LAYER|2 B|70 0|62 3|6 CONTINUOUS
0 LAYER|2 FROZEN|70 1|62 4|6 CONTINUOUS
0 ENDTAB)";

// DOOR: a leaf by layer and a swing by block, both on layer 0. CHAIR: on
// layer A in its own colour. NEST: a turned CHAIR and a line by block.
// SELF inserts itself. TAG: a frame and an attribute definition.
constexpr const char* kBlocks = R"(0 BLOCK|8 0|2 DOOR|70 0|10 0|20 0|30 0
0 LINE|8 0|10 0|20 0|30 0|11 0|21 9|31 0
0 ARC|8 0|62 0|10 0|20 0|30 0|40 9|50 0|51 90
0 ENDBLK|8 0
0 BLOCK|8 0|2 CHAIR|70 0|10 1|20 1|30 0
0 POLYLINE|8 A|62 5|66 1|70 1
0 VERTEX|8 A|10 0|20 0
0 VERTEX|8 A|10 2|20 0
0 VERTEX|8 A|10 2|20 2
0 SEQEND|8 A
0 ENDBLK|8 0
0 BLOCK|8 0|2 NEST|70 0|10 0|20 0|30 0
0 INSERT|8 B|2 CHAIR|10 5|20 5|30 0|50 30
0 LINE|8 0|62 0|10 0|20 0|30 0|11 4|21 0|31 0
0 ENDBLK|8 0
0 BLOCK|8 0|2 SELF|70 0|10 0|20 0|30 0
0 LINE|8 0|10 0|20 0|30 0|11 1|21 1|31 0
0 INSERT|8 0|2 SELF|10 2|20 0|30 0
0 ENDBLK|8 0
0 BLOCK|8 0|2 TAG|70 2|10 0|20 0|30 0
0 LINE|8 0|10 0|20 0|30 0|11 5|21 0|31 0
0 ATTDEF|8 0|10 0|20 1|30 0|40 1|1 ?|3 Number|2 NO|70 0
0 ENDBLK|8 0)";

constexpr const char* kEntities = R"(0 INSERT|8 A|2 DOOR|10 10|20 10|30 0
0 INSERT|8 A|2 DOOR|10 30|20 10|30 0|50 90
0 INSERT|8 B|2 DOOR|10 50|20 10|30 0
0 INSERT|8 A|2 DOOR|10 70|20 10|30 0|41 2|42 2|43 2
0 INSERT|8 A|2 DOOR|10 70|20 40|30 0|41 -1|42 1|43 1
0 INSERT|8 A|2 DOOR|10 10|20 60|30 0|41 2|42 1|43 1|50 45
0 INSERT|8 A|2 CHAIR|10 40|20 40|30 0
0 INSERT|8 B|2 CHAIR|10 45|20 40|30 0|50 10
0 INSERT|8 A|2 NEST|10 20|20 80|30 0
0 INSERT|8 A|2 DOOR|10 80|20 70|30 0|70 2|71 2|44 10|45 10
0 INSERT|8 FROZEN|2 DOOR|10 90|20 90|30 0
0 INSERT|8 0|2 SELF|10 60|20 90|30 0
0 INSERT|8 A|66 1|2 TAG|10 40|20 20|30 0
0 ATTRIB|8 A|10 40|20 21|30 0|40 1|1 T1|2 NO|70 0
0 SEQEND|8 A)";

class SvgBlocksTest : public ::testing::Test {
 protected:
  void SetUp() override {
    db_ = fx::svg_test::LoadDrawing(fx::svg_test::R12(kTables, kBlocks, kEntities), "blocks.dxf");
    ASSERT_NE(db_, nullptr);
  }
  std::unique_ptr<pugi::xml_document> Render(bool blocks) {
    fx::svg::SvgOptions options;
    options.block_optimization = blocks;
    options.approximate_arc = true;  // arcs as polylines, so that Segments sees them
    return fx::svg_test::Render(*db_, {{0, 0}, {100, 100}}, options);
  }
  static pugi::xml_node Defs(const pugi::xml_document& document) { return document.child("svg").child("defs"); }

  std::unique_ptr<AcDbDatabase> db_;
};

bool Same(const Segment& s, const Segment& t) {
  const auto near = [](fx::svg::Point2 p, fx::svg::Point2 q) { return std::hypot(p.x - q.x, p.y - q.y) < 2e-3; };
  return (near(s.a, t.a) && near(s.b, t.b)) || (near(s.a, t.b) && near(s.b, t.a));
}

// Every stroke drawn through <use> is where the host would draw it.
TEST_F(SvgBlocksTest, UseDrawsWhatTheInsertsDraw) {
  std::vector<Segment> reused = fx::svg_test::Segments(*Render(true));
  std::vector<Segment> drawn = fx::svg_test::Segments(*Render(false));
  EXPECT_GT(drawn.size(), 40u);
  ASSERT_EQ(reused.size(), drawn.size());
  for (const Segment& s : drawn) {
    auto match = std::find_if(reused.begin(), reused.end(), [&](const Segment& t) { return Same(s, t); });
    ASSERT_NE(match, reused.end()) << s.a.x << "," << s.a.y << " " << s.b.x << "," << s.b.y;
    reused.erase(match);
  }
}

// One definition per block, scale and inherited properties, each <use>
// placed by its insert, attributes after their <use>, and by-block
// properties taken from the insert that holds them.
TEST_F(SvgBlocksTest, DefinitionsAndTheirUses) {
  auto document = Render(true);
  const pugi::xml_node defs = Defs(*document);
  // The drawing group comes after the definitions.
  EXPECT_STREQ(document->child("svg").first_child().next_sibling().name(), "defs");
  std::vector<std::string> ids;
  for (pugi::xml_node g : defs.children("g")) ids.push_back(g.attribute("id").value());
  // DOOR on A, DOOR on B, DOOR x2, DOOR mirrored, DOOR 2x1, CHAIR (once: it
  // inherits nothing), NEST, SELF, TAG.
  EXPECT_EQ(ids.size(), 9u);
  for (size_t i = 0; i < ids.size(); ++i) EXPECT_EQ(ids[i], "CB_" + std::to_string(i));
  const pugi::xml_node group = document->child("svg").child("g");
  const std::vector<pugi::xml_node> uses = Elements(group, "use");
  ASSERT_EQ(uses.size(), 11u);  // every insert but the MINSERT and the frozen one
  EXPECT_STREQ(uses[0].attribute("xlink:href").value(), "#CB_0");
  EXPECT_STREQ(uses[0].attribute("transform").value(), "matrix(1 0 0 -1 10 90)");
  EXPECT_STREQ(uses[1].attribute("xlink:href").value(), "#CB_0");
  EXPECT_STREQ(uses[1].attribute("transform").value(), "matrix(0 -1 -1 0 30 90)");
  // The scaled door's definition holds the scaled door: its transform keeps lengths.
  EXPECT_NEAR(std::hypot(fx::svg_test::TransformOf(uses[3]).a, fx::svg_test::TransformOf(uses[3]).b), 1, 1e-9);
  const std::string scaled = std::string(uses[3].attribute("xlink:href").value()).substr(1);
  EXPECT_STREQ(defs.find_child_by_attribute("g", "id", scaled.c_str()).child("line").attribute("y2").value(), "18");
  // The swing takes the insert's colour.
  EXPECT_STREQ(defs.find_child_by_attribute("g", "id", "CB_0").child("polyline").attribute("stroke").value(), "#FF0000");
  EXPECT_STREQ(defs.find_child_by_attribute("g", "id", "CB_1").child("polyline").attribute("stroke").value(), "#00FF00");
  // NEST is inserted on A (red): its line by block is red, its chair keeps its blue.
  bool red_line = false, blue_chair = false;
  for (pugi::xml_node g : defs.children("g")) {
    for (pugi::xml_node line : g.children("line"))
      if (std::string(line.attribute("x2").value()) == "4") red_line = std::string(line.attribute("stroke").value()) == "#FF0000";
    for (pugi::xml_node polygon : g.children("polygon"))
      blue_chair = blue_chair || std::string(polygon.attribute("stroke").value()) == "#0000FF";
  }
  EXPECT_TRUE(red_line);
  EXPECT_TRUE(blue_chair);
  // The attribute follows its <use>; the definition holds no attribute definition.
  const pugi::xml_node text = group.child("text");
  ASSERT_TRUE(text);
  EXPECT_STREQ(text.text().get(), "T1");
  EXPECT_STREQ(text.previous_sibling().name(), "use");
  EXPECT_TRUE(Elements(defs, "text").empty());
}

// Drawn out, nothing is defined; by-block properties take the insert's (the
// swings on A red, on B green); an insert on a frozen layer draws nothing.
TEST_F(SvgBlocksTest, DrawnOutInsertsTakeTheirProperties) {
  auto document = Render(false);
  EXPECT_FALSE(Defs(*document));
  EXPECT_TRUE(Elements(*document, "use").empty());
  EXPECT_EQ(Elements(*document, "text").size(), 1u);
  std::set<std::string> colours;
  for (pugi::xml_node polyline : Elements(document->child("svg").child("g"), "polyline"))
    colours.insert(polyline.attribute("stroke").value());
  EXPECT_EQ(colours, (std::set<std::string>{"#FF0000", "#00FF00"}));
  for (const Segment& s : fx::svg_test::Segments(*document)) {
    EXPECT_FALSE(s.a.x > 89 && s.a.y < 11) << s.a.x << "," << s.a.y;  // DOOR at (90,90)
  }
}

// A block's layer-0 entities take the insert's layer, also for being seen:
// on an insert on a layer that is off they are hidden, its other entities not.
TEST(SvgBlocksLayerTest, LayerZeroInABlockFollowsTheInsertsLayer) {
  constexpr const char* kOffTables = R"(0 TABLE|2 LAYER|70 3
0 LAYER|2 0|70 0|62 7|6 CONTINUOUS
0 LAYER|2 A|70 0|62 1|6 CONTINUOUS
0 LAYER|2 OFF|70 0|62 -4|6 CONTINUOUS
0 ENDTAB)";
  constexpr const char* kTwoLayers = R"(0 BLOCK|8 0|2 TWO|70 0|10 0|20 0|30 0
0 LINE|8 0|10 0|20 0|30 0|11 5|21 0|31 0
0 LINE|8 A|10 0|20 1|30 0|11 5|21 1|31 0
0 ENDBLK|8 0)";
  auto db = fx::svg_test::LoadDrawing(
      fx::svg_test::R12(kOffTables, kTwoLayers, "0 INSERT|8 OFF|2 TWO|10 10|20 10|30 0\n0 DIMENSION|8 A|2 TWO|10 0|20 0|30 0|11 0|21 0|31 0|70 0"),
      "layer0.dxf");
  ASSERT_NE(db, nullptr);
  for (bool blocks : {true, false}) {
    fx::svg::SvgOptions options;
    options.block_optimization = blocks;
    auto document = fx::svg_test::Render(*db, {{0, 0}, {100, 100}}, options);
    // The insert on OFF shows only its line on A (y 11 -> SVG 89). The
    // dimension (not an insert: the host draws its block) on A shows both.
    std::vector<double> heights;
    for (const Segment& segment : fx::svg_test::Segments(*document)) heights.push_back(segment.a.y);
    std::sort(heights.begin(), heights.end());
    EXPECT_EQ(heights, (std::vector<double>{89, 99, 100})) << blocks;
    // All of them red: the dimension's layer-0 line takes A's colour.
    for (const pugi::xml_node& line : Elements(*document, "line")) EXPECT_STREQ(line.attribute("stroke").value(), "#FF0000");
  }
}

}  // namespace
