// Styles: colours, widths and dashes resolved from the layer table and the
// entity, the program attributes, and the layers that are not drawn. Each
// line of the drawing lies at its own height, by which the test finds it.
#include <gtest/gtest.h>

#include <map>

#include "svg/pv_svg_world_draw.h"
#include "svg_test_support.h"

namespace {

using fx::svg_test::Elements;

constexpr const char* kTables = R"(0 TABLE|2 LTYPE|70 3
0 LTYPE|2 CONTINUOUS|70 0|3 Solid line|72 65|73 0|40 0
0 LTYPE|2 DASHED|70 0|3 __ __|72 65|73 2|40 0.75|49 0.5|49 -0.25
0 LTYPE|2 GAPFIRST|70 0|3 .__|72 65|73 3|40 1|49 -0.25|49 0.5|49 0
0 ENDTAB
0 TABLE|2 LAYER|70 7
0 LAYER|2 0|70 0|62 7|6 CONTINUOUS
0 LAYER|2 WALLS|70 0|62 1|6 CONTINUOUS|370 25
0 LAYER|2 FROZEN|70 1|62 3|6 CONTINUOUS
0 LAYER|2 OFF|70 0|62 -4|6 CONTINUOUS
0 LAYER|2 !VANTORYIMPORT|70 0|62 5|6 CONTINUOUS
0 LAYER|2 DASHES|70 0|62 2|6 DASHED
0 LAYER|2 TRUE|70 0|62 30|420 1193046|6 CONTINUOUS
0 ENDTAB)";

// Line k runs from (0, k) to (10, k).
std::string Line(int k, std::string_view tags) {
  return "0 LINE|" + std::string(tags) + "|10 0|20 " + std::to_string(k) + "|30 0|11 10|21 " + std::to_string(k) +
         "|31 0\n";
}

class SvgStyleTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string entities;
    entities += Line(1, "8 WALLS");                 // by layer: red, 0.25mm
    entities += Line(2, "8 0|62 0");                // by block at the top: foreground
    entities += Line(3, "8 0|62 7");                // palette 7: foreground
    entities += Line(4, "8 FROZEN");
    entities += Line(5, "8 OFF");
    entities += Line(6, "8 !VANTORYIMPORT");
    entities += Line(7, "8 WALLS|370 0");           // zero lineweight
    entities += Line(8, "8 WALLS|370 50|62 3");     // own weight and colour
    entities += Line(9, "8 0|420 1193046");         // true colour 0x123456
    entities += Line(10, "8 DASHES|48 2");          // dashed by layer, scale 2
    entities += Line(11, "8 0|6 GAPFIRST");         // starts with a gap
    entities += Line(12, "8 TRUE");                 // a layer with a true colour
    entities += Line(13, "8 WALLS|370 -2");         // by block at the top: default
    db_ = fx::svg_test::LoadDrawing(fx::svg_test::R12(kTables, "", entities), "styles.dxf");
    ASSERT_NE(db_, nullptr);
  }

  // The lines drawn, by the height of their first point (SVG y = 20 - k).
  std::map<int, pugi::xml_node> Lines(const fx::svg::SvgOptions& options = {}) {
    document_ = fx::svg_test::Render(*db_, {{0, 0}, {20, 20}}, options);
    std::map<int, pugi::xml_node> lines;
    for (pugi::xml_node line : Elements(*document_, "line"))
      lines[20 - line.attribute("y1").as_int()] = line;
    return lines;
  }

  std::unique_ptr<AcDbDatabase> db_;
  std::unique_ptr<pugi::xml_document> document_;
};

// Each line's style attributes with the program's: by layer, by block at the
// top (foreground, default width), its own; dashes scaled. Lines 4-6 are not drawn.
TEST_F(SvgStyleTest, StylesResolveFromTheLayerAndTheEntity) {
  fx::svg::SvgOptions options;
  options.program_attributes = true;
  std::map<std::string, long> ids;
  options.layer_id = [&](AcDbObjectId layer) -> std::optional<long> {
    AcDbObjectPointer<AcDbLayerTableRecord> record(layer, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk || record->getName() == "DASHES") return std::nullopt;  // no id given
    const long id = static_cast<long>(ids.size()) + 100;
    return ids.emplace(record->getName(), id).first->second;
  };
  std::map<int, std::string> styles;
  for (const auto& [k, line] : Lines(options)) {
    int index = 0;
    for (pugi::xml_attribute attribute : line.attributes()) {
      if (index++ < 4) continue;
      styles[k] += (styles[k].empty() ? "" : " ") + std::string(attribute.name()) + "=" + attribute.value();
    }
  }
  // The gap first: it goes to the end, and the offset starts the line at it;
  // the dot is a hundredth of the pattern, after a gap of 0.
  const std::string gap_first =
      "stroke=#000000 stroke-width=0.01mm stroke-dasharray=0.5 0 0.0075 0.25 stroke-dashoffset=0.5075 ss:lid=101";
  EXPECT_EQ(styles, (std::map<int, std::string>{
                        {1, "stroke=#FF0000 stroke-width=0.25mm ss:lid=100 ss:color=byLayer ss:lw=byLayer"},
                        {2, "stroke=#000000 stroke-width=0.01mm ss:lid=101 ss:color=byBlock ss:lw=byLayer"},
                        {3, "stroke=#000000 stroke-width=0.01mm ss:lid=101 ss:color=byG ss:lw=byLayer"},
                        {7, "stroke=#FF0000 stroke-width=0.01mm ss:lid=100 ss:color=byLayer ss:lw=byG"},
                        {8, "stroke=#00FF00 stroke-width=0.5mm ss:lid=100 ss:color=byG ss:lw=byG"},
                        {9, "stroke=#123456 stroke-width=0.01mm ss:lid=101 ss:color=byG ss:lw=byLayer"},
                        {10, "stroke=#FFFF00 stroke-width=0.01mm stroke-dasharray=1 0.5 ss:color=byLayer ss:lw=byLayer"},
                        {11, gap_first + " ss:color=byLayer ss:lw=byLayer"},
                        {12, "stroke=#123456 stroke-width=0.01mm ss:lid=105 ss:color=byLayer ss:lw=byLayer"},
                        {13, "stroke=#FF0000 stroke-width=0.01mm ss:lid=100 ss:color=byLayer ss:lw=byBlock"},
                    }));
}

TEST_F(SvgStyleTest, ForegroundColourAndImportLayerAreOptions) {
  fx::svg::SvgOptions options;
  options.foreground_rgb = 0xFFFFFF;
  options.draw_import_layer = true;
  auto lines = Lines(options);
  EXPECT_STREQ(lines[2].attribute("stroke").value(), "#FFFFFF");
  EXPECT_STREQ(lines[3].attribute("stroke").value(), "#FFFFFF");
  EXPECT_STREQ(lines[1].attribute("stroke").value(), "#FF0000");
  ASSERT_EQ(lines.count(6), 1u);
  EXPECT_STREQ(lines[6].attribute("stroke").value(), "#0000FF");
  EXPECT_EQ(lines.count(4) + lines.count(5), 0u);
}

TEST(SvgDashTest, PatternsTooDenseToShowAreContinuous) {
  std::string array, offset;
  EXPECT_FALSE(fx::svg::DashAttributes({0.5, -0.25}, 1e-4, 1e-3, array, offset));
  EXPECT_FALSE(fx::svg::DashAttributes({}, 1, 1e-3, array, offset));
  EXPECT_FALSE(fx::svg::DashAttributes({-1, -1}, 1, 1e-3, array, offset));
  EXPECT_TRUE(fx::svg::DashAttributes({0.5, 0.5, -0.25}, 1, 1e-3, array, offset));
  EXPECT_EQ(array, "0.5 0 0.5 0.25");  // two dashes in a row: a gap of 0 between
}

}  // namespace
