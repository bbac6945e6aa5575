// The document's fixed part, the precision rule, the arc types and what the
// frame leaves out: the renderer used directly, without a drawing.
#include <gtest/gtest.h>

#include "svg/pv_svg_world_draw.h"
#include "svg/render_model_space.h"
#include "svg_test_support.h"

namespace {

using fx::svg::Frame;

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

// The declaration, the root's attributes in order, the view-box clip path
// ("%.6g" of the frame's corners in the order of its outline) and the
// drawing group; no <defs> until something needs them.
TEST_F(SvgDocumentTest, AnEmptyDrawingIsTheFixedPart) {
  auto draw = Start({{-5, 0}, {1234567, 300}});
  EXPECT_EQ(fx::svg::DocumentText(draw->document()),
            R"(<?xml version="1.0" encoding="UTF-8"?><svg xmlns="http://www.w3.org/2000/svg")"
            R"( xmlns:ss="http://www.vantory.example/planvault/2010" xmlns:xlink="http://www.w3.org/1999/xlink")"
            R"( viewBox="0 0 1.23457e+06 300" version="1.1" stroke-linecap="butt" stroke-linejoin="miter">)"
            R"(<clipPath id="clipViewBoxPolyExt"><path d="M0,300 L0,0 L1.23457e+06,0 L1.23457e+06,300 Z"/></clipPath>)"
            R"x(<g clip-path="url(#clipViewBoxPolyExt)" stroke="#000000" stroke-width="0.01mm" fill="none"/></svg>)x");
}

// The frame's diagonal, not a side, gives the decimals (the rule's
// boundaries are in svg_number_test): 100 writes 3, 99.6 writes 4.
TEST_F(SvgDocumentTest, PrecisionFollowsTheFrameDiagonal) {
  for (const auto& [height, x] : {std::pair{80.0, "1.235"}, std::pair{79.5, "1.2346"}}) {
    auto draw = Start({{0, 0}, {60, height}});
    Line(*draw, {1.23456789, 0, 0}, {2, 0, 0});
    EXPECT_STREQ(draw->document().child("svg").child("g").child("line").attribute("x1").value(), x) << height;
  }
}

// A chord closes its arc, a sector runs through the centre too.
TEST_F(SvgDocumentTest, ArcTypesCloseTheirPaths) {
  auto draw = Start({{0, 0}, {100, 100}});
  for (AcGiArcType type : {kAcGiArcSimple, kAcGiArcChord, kAcGiArcSector})
    draw->circularArc({50, 50, 0}, 10, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, M_PI / 2, type);
  std::vector<std::string> paths;
  for (pugi::xml_node path : fx::svg_test::Elements(draw->document().child("svg").child("g"), "path"))
    paths.push_back(path.attribute("d").value());
  EXPECT_EQ(paths, (std::vector<std::string>{"M60,50A10,10 0 0,0 50,40", "M60,50A10,10 0 0,0 50,40Z",
                                             "M50,50L60,50A10,10 0 0,0 50,40Z"}));
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

}  // namespace
