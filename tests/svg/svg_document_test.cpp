// The document's fixed part (root, view-box clip path, drawing group) and
// the attributes of a drawn element, pinned exactly, with the precision
// rule: the renderer used directly, without a drawing.
#include <gtest/gtest.h>

#include <cmath>

#include "svg/program_namespace.h"
#include "svg/pv_svg_world_draw.h"
#include "svg/render_model_space.h"
#include "svg_test_support.h"

namespace {

using fx::svg::Frame;
using fx::svg_test::AttributeNames;

class SvgDocumentTest : public ::testing::Test {
 protected:
  // A renderer for `frame` with the world-to-SVG transform pushed.
  std::unique_ptr<PvSvgWorldDraw> Start(const Frame& frame, fx::svg::SvgOptions options = {}) {
    auto draw = std::make_unique<PvSvgWorldDraw>(nullptr, frame, std::move(options));
    draw->pushModelTransform(fx::svg::WorldToSvg(frame));
    return draw;
  }
  static void Line(PvSvgWorldDraw& draw, AcGePoint3d a, AcGePoint3d b) {
    const AcGePoint3d points[2] = {a, b};
    draw.polyline(2, points);
  }
};

TEST_F(SvgDocumentTest, RootAttributesInOrder) {
  auto draw = Start({{10, 20}, {110, 70}});
  const pugi::xml_node root = draw->document().child("svg");
  EXPECT_EQ(AttributeNames(root), (std::vector<std::string>{"xmlns", "xmlns:ss", "xmlns:xlink", "viewBox", "version",
                                                            "stroke-linecap", "stroke-linejoin"}));
  EXPECT_STREQ(root.attribute("xmlns").value(), "http://www.w3.org/2000/svg");
  EXPECT_STREQ(root.attribute("xmlns:ss").value(), fx::kProgramNamespace);
  EXPECT_STREQ(root.attribute("xmlns:xlink").value(), "http://www.w3.org/1999/xlink");
  EXPECT_STREQ(root.attribute("viewBox").value(), "0 0 100 50");
  EXPECT_STREQ(root.attribute("version").value(), "1.1");
  EXPECT_STREQ(root.attribute("stroke-linecap").value(), "butt");
  EXPECT_STREQ(root.attribute("stroke-linejoin").value(), "miter");
  const std::string ns = fx::kProgramNamespace;
  EXPECT_TRUE(ns.starts_with("http://") && ns.ends_with("/planvault/2010")) << ns;
}

TEST_F(SvgDocumentTest, ViewBoxClipPathThenDrawingGroup) {
  auto draw = Start({{-5, 0}, {1234567, 300}});
  const pugi::xml_node root = draw->document().child("svg");
  const pugi::xml_node clip = root.first_child();
  EXPECT_STREQ(clip.name(), "clipPath");
  EXPECT_EQ(AttributeNames(clip), std::vector<std::string>{"id"});
  EXPECT_STREQ(clip.attribute("id").value(), "clipViewBoxPolyExt");
  EXPECT_STREQ(clip.first_child().name(), "path");
  // "%.6g" of the frame corners in SVG coordinates, in the order of the frame outline.
  EXPECT_STREQ(clip.first_child().attribute("d").value(), "M0,300 L0,0 L1.23457e+06,0 L1.23457e+06,300 Z");
  EXPECT_STREQ(root.attribute("viewBox").value(), "0 0 1.23457e+06 300");
  const pugi::xml_node group = clip.next_sibling();
  EXPECT_STREQ(group.name(), "g");
  EXPECT_EQ(AttributeNames(group), (std::vector<std::string>{"clip-path", "stroke", "stroke-width", "fill"}));
  EXPECT_STREQ(group.attribute("clip-path").value(), "url(#clipViewBoxPolyExt)");
  EXPECT_STREQ(group.attribute("stroke").value(), "#000000");
  EXPECT_STREQ(group.attribute("stroke-width").value(), "0.01mm");
  EXPECT_STREQ(group.attribute("fill").value(), "none");
  EXPECT_FALSE(group.next_sibling());
  EXPECT_FALSE(root.child("defs"));  // made only when needed
}

TEST_F(SvgDocumentTest, TextStartsWithTheDeclaration) {
  auto draw = Start({{0, 0}, {1, 1}});
  const std::string text = fx::svg::DocumentText(draw->document());
  EXPECT_TRUE(text.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?><svg xmlns=")) << text;
}

// A frame of diagonal 99.9 writes 4 decimals, one of 100.0 writes 3.
TEST_F(SvgDocumentTest, PrecisionFollowsTheFrameDiagonal) {
  const struct {
    double width;
    const char* x;
    int decimals;
  } kCases[] = {{99.9, "1.2346", 4}, {100.0, "1.235", 3}, {12000, "1.2", 1}, {2e6, "1", 0}};
  for (const auto& c : kCases) {
    auto draw = Start({{0, 0}, {c.width, 0}});
    EXPECT_EQ(draw->decimals(), c.decimals);
    Line(*draw, {1.23456789, 0, 0}, {2, 0, 0});
    const pugi::xml_node line = draw->document().child("svg").child("g").child("line");
    EXPECT_STREQ(line.attribute("x1").value(), c.x) << c.width;
    EXPECT_STREQ(line.attribute("x2").value(), "2");
  }
  // The diagonal, not a side, decides.
  auto draw = Start({{0, 0}, {60, 80}});
  EXPECT_EQ(draw->decimals(), 3);
}

TEST_F(SvgDocumentTest, LineAttributesInOrder) {
  fx::svg::SvgOptions options;
  options.program_attributes = true;
  auto draw = Start({{0, 0}, {100, 100}}, options);
  draw->subEntityTraits().setLineWeight(AcDb::kLnWt000);
  Line(*draw, {1, 2, 0}, {3, 4, 0});
  const pugi::xml_node line = draw->document().child("svg").child("g").child("line");
  // No layer table: no ss:lid.
  EXPECT_EQ(AttributeNames(line),
            (std::vector<std::string>{"x1", "y1", "x2", "y2", "stroke", "stroke-width", "ss:color", "ss:lw"}));
  EXPECT_STREQ(line.attribute("y1").value(), "98");
  EXPECT_STREQ(line.attribute("y2").value(), "96");
  EXPECT_STREQ(line.attribute("stroke-width").value(), "0.01mm");
  EXPECT_STREQ(line.attribute("ss:lw").value(), "byG");
}

TEST_F(SvgDocumentTest, NoProgramAttributesUnlessAsked) {
  auto draw = Start({{0, 0}, {100, 100}});
  Line(*draw, {1, 2, 0}, {3, 4, 0});
  const pugi::xml_node line = draw->document().child("svg").child("g").child("line");
  for (const std::string& name : AttributeNames(line)) EXPECT_FALSE(name.starts_with("ss:")) << name;
}

// Elements that lie wholly outside the frame are not written.
TEST_F(SvgDocumentTest, ElementsOutsideTheFrameAreLeftOut) {
  auto draw = Start({{0, 0}, {100, 100}});
  Line(*draw, {101, 0, 0}, {200, 50, 0});
  Line(*draw, {-50, 50, 0}, {150, 50, 0});  // crosses the frame
  draw->circle({-20, 50, 0}, 19, AcGeVector3d::kZAxis);
  draw->circle({-20, 50, 0}, 21, AcGeVector3d::kZAxis);  // reaches into it
  const pugi::xml_node group = draw->document().child("svg").child("g");
  EXPECT_EQ(fx::svg_test::Elements(group, "line").size(), 1u);
  EXPECT_EQ(fx::svg_test::Elements(group, "circle").size(), 1u);
}

TEST_F(SvgDocumentTest, TakeDocumentHandsItOver) {
  auto draw = Start({{0, 0}, {10, 10}});
  std::unique_ptr<pugi::xml_document> document = draw->takeDocument();
  ASSERT_NE(document, nullptr);
  EXPECT_TRUE(document->child("svg"));
}

}  // namespace
