// Texts moved by transforms.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <string>

#include "entity_test_support.h"
#include "host/db_entities.h"
#include "host/dxf/draw_text_layout.h"

namespace {

using fx::testing::Make;

constexpr double kPi = std::numbers::pi;

// The corners of the glyph box as the host lays the text out: the start of
// the baseline, its end, and the two above them (sheared by the obliquing).
std::array<AcGePoint3d, 4> Corners(const AcDbText& text) {
  const fx::dxf::TextFrame frame = fx::dxf::LayoutText(text, text.textString());
  const AcGeVector3d along = frame.x_axis * frame.width;
  const AcGeVector3d up = frame.y_axis * frame.height + frame.x_axis * (frame.height * frame.slant);
  return {frame.origin, frame.origin + along, frame.origin + up, frame.origin + along + up};
}

constexpr const char* kHead = "0 TEXT\n100 AcDbEntity\n8 0\n100 AcDbText\n1 Room 101\n";

// The glyph box of a transformed text is the transformed glyph box: for
// each alignment, mirroring and plane, under rotations, mirrors, plane
// changes and scalings.
TEST(TextTransform, TheGlyphBoxFollowsTheTransform) {
  const std::string texts[] = {
      "10 1\n20 2\n30 0\n40 2\n50 30\n41 0.8\n51 15\n",           // left, obliqued, narrow
      "10 0\n20 0\n30 0\n40 1\n50 90\n72 1\n11 5\n21 5\n31 0\n"  // middle-centred
      "100 AcDbText\n73 2\n",
      "10 0\n20 0\n30 0\n40 1\n71 2\n72 2\n11 4\n21 1\n31 0\n",   // backwards, right
      "10 0\n20 0\n30 0\n40 1\n71 4\n72 3\n11 10\n21 2\n31 0\n",  // upside down, aligned
      "10 3\n20 1\n30 2\n40 1.5\n50 45\n210 0\n220 0\n230 -1\n",  // normal -Z
  };
  const AcGeMatrix3d transforms[] = {
      AcGeMatrix3d::translation({3, 4, 5}) * AcGeMatrix3d::rotation(0.7, AcGeVector3d::kZAxis),
      AcGeMatrix3d::scaling(-1, 1, 1, {1, 1, 0}),
      AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kXAxis, {0, 2, 0}),
      AcGeMatrix3d::scaling(2.5, 2.5, 2.5) *
          AcGeMatrix3d::rotation(1, AcGeVector3d(1, 1, 1).normal()),
      AcGeMatrix3d::scaling(2, 0.5, 3),
  };
  for (const std::string& tags : texts) {
    for (const AcGeMatrix3d& transform : transforms) {
      SCOPED_TRACE(tags);
      auto text = Make<AcDbText>(kHead + tags);
      const std::array<AcGePoint3d, 4> before = Corners(*text);
      const bool upside_down = text->isMirroredInY();
      ASSERT_EQ(text->transformBy(transform), Acad::eOk);
      const std::array<AcGePoint3d, 4> after = Corners(*text);
      for (size_t i = 0; i < before.size(); ++i)
        EXPECT_TRUE(after[i].isEqualTo(transform * before[i], AcGeTol(1e-9, 1e-9))) << "corner " << i;
      EXPECT_EQ(text->isMirroredInY(), upside_down);
    }
  }
  auto text = Make<AcDbText>(std::string(kHead) + texts[0]);
  // Flattened it is still a text; with its height gone it is not.
  EXPECT_EQ(text->transformBy(AcGeMatrix3d::scaling(1, 1, 0)), Acad::eOk);
  EXPECT_EQ(text->transformBy(AcGeMatrix3d::scaling(1, 0, 1)), Acad::eInvalidInput);
  text->transformBy(AcGeMatrix3d::scaling(-1, 1, 1));
  EXPECT_TRUE(text->isMirroredInX());
  EXPECT_NEAR(text->rotation(), 11 * kPi / 6, 1e-12);  // the angle mirrored
}

}  // namespace
