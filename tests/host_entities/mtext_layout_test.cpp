// MTEXT layout: the lines a drawing's MTEXT draws against ezdxf's text
// layout engine (ezdxf_mtext_layout.py, run by Debian's python3, which makes
// the drawing and measures glyphs by the host's width rule, so both sides
// differ only in how they lay out).
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "command_output.h"
#include "entity_test_support.h"
#include "host/dxf/draw_text_box.h"
#include "host/dxf/drawing_io.h"
#include "host/dxf/mtext_layout.h"

namespace {

using namespace fx::dxf;

// What the comparison below cannot show, ezdxf laying it out otherwise: \pq*
// returns to the attachment's alignment (centre). With the style's width
// factor (0.5) and an inline one (2) within its group, "a bb" is 3.25 wide
// and " cd" 0.975 more passes 4.
TEST(MTextLayout, ParagraphAlignmentReturnsToTheAttachments) {
  constexpr double kPitch = 5.0 / 3.0;
  const MTextFormat format{1, 4, 1, 2};  // height, reference width, spacing, attachment
  const MTextBlock block = LayoutMText(MTextParagraphs("\\pqr;a {\\W2;bb} cd\\P\\pq*;e", 0.5), format);
  const struct {
    const char* text;
    double x, y;
  } expected[] = {{"a bb", -1.25, -1}, {"cd", 1.35, -1 - kPitch}, {"e", -0.1625, -1 - 2 * kPitch}};
  ASSERT_EQ(block.lines.size(), std::size(expected));
  for (size_t i = 0; i < block.lines.size(); ++i) {
    EXPECT_EQ(block.lines[i].text, expected[i].text) << i;
    EXPECT_NEAR(block.lines[i].x, expected[i].x, 1e-12) << i;
    EXPECT_NEAR(block.lines[i].y, expected[i].y, 1e-12) << i;
  }
}

// ---- Against ezdxf ----

struct EzdxfLine {
  std::string text;
  AcGePoint3d start, end;
};

struct EzdxfMText {
  std::string handle;
  std::vector<EzdxfLine> lines;
  double box[6] = {};
};

AcGePoint3d ReadPoint(std::istream& in) {
  double x = 0, y = 0, z = 0;
  in >> x >> y >> z;
  return {x, y, z};
}

// Runs the script, which writes the drawing to `path`; false when it could
// not run (no python3 or no ezdxf).
bool RunEzdxf(const std::string& path, std::vector<EzdxfMText>& mtexts) {
  std::string command = std::string(FX_SYSTEM_PYTHON) + " " + FX_EZDXF_MTEXT + " '" + path + "' 2>/dev/null";
  const std::optional<std::string> output = fx::testing::CommandOutput(command);
  if (!output) return false;
  std::istringstream lines(*output);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream in(line);
    std::string kind;
    in >> kind;
    if (kind == "mtext") {
      EzdxfMText& mtext = mtexts.emplace_back();
      in >> mtext.handle;
      for (double& v : mtext.box) in >> v;
    } else if (kind == "line" && !mtexts.empty()) {
      EzdxfLine& l = mtexts.back().lines.emplace_back();
      l.start = ReadPoint(in);
      l.end = ReadPoint(in);
      std::getline(in >> std::ws, l.text);
    }
  }
  return !mtexts.empty();
}

// Line breaks must agree exactly and positions along the baseline to
// rounding: both sides measure glyphs alike. Across, ezdxf puts baselines
// 1.667 heights apart where the host puts 5/3: 1/3000 of a height per line
// pitch, allowed as 4e-4 for each line of the block.
TEST(MTextLayout, MatchesEzdxfLayoutEngine) {
  std::filesystem::path path = std::filesystem::path(::testing::TempDir()) / "mtext_layout.dxf";
  std::vector<EzdxfMText> expected;
  if (!RunEzdxf(path.string(), expected)) GTEST_SKIP() << "ezdxf is not available to " << FX_SYSTEM_PYTHON;
  std::string error;
  std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing(path.string(), &error);
  ASSERT_NE(db, nullptr) << error;

  for (const EzdxfMText& reference : expected) {
    SCOPED_TRACE("MTEXT " + reference.handle);
    AcDbObjectId id;
    ASSERT_EQ(db->getAcDbObjectId(id, false, AcDbHandle(reference.handle.c_str())), Acad::eOk);
    AcDbObjectPointer<AcDbMText> mtext(id, AcDb::kForRead);
    ASSERT_EQ(mtext.openStatus(), Acad::eOk);
    const double h = mtext->textHeight();
    const AcGeVector3d along = mtext->direction();
    const AcGeVector3d up = mtext->normal().crossProduct(along).normal();
    const double along_tolerance = 1e-6;

    fx::testing::RecordingDraw draw;
    ASSERT_TRUE(mtext->worldDraw(&draw));
    // The drawn pieces, joined into lines by their baseline.
    struct Line {
      std::string text;
      AcGePoint3d start, end;
    };
    std::vector<Line> lines;
    for (const fx::testing::Primitive& p : draw.primitives()) {
      ASSERT_EQ(p.kind, fx::testing::Primitive::kText);
      AcGePoint3d end = p.points[0] + along * (TextAdvance(p.text) * h * p.style.x_scale);
      if (lines.empty() || std::abs((p.points[0] - lines.back().start).dotProduct(up)) > 1e-9 * h) {
        lines.push_back({p.text, p.points[0], end});
      } else {
        lines.back().text += p.text;
        lines.back().end = end;
      }
    }
    ASSERT_EQ(lines.size(), reference.lines.size());
    const double across_tolerance = 4e-4 * h * mtext->lineSpacingFactor() * static_cast<double>(lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
      const EzdxfLine& want = reference.lines[i];
      EXPECT_EQ(lines[i].text, want.text);
      for (auto [ours, theirs] : {std::pair{lines[i].start, want.start}, std::pair{lines[i].end, want.end}}) {
        AcGeVector3d d = ours - theirs;
        EXPECT_NEAR(d.dotProduct(along), 0, along_tolerance) << want.text;
        EXPECT_NEAR(d.dotProduct(up), 0, across_tolerance) << want.text;
      }
    }
    // The extents are the box of the laid-out text.
    AcDbExtents extents;
    ASSERT_EQ(mtext->getGeomExtents(extents), Acad::eOk);
    const double ours[6] = {extents.minPoint().x, extents.minPoint().y, extents.minPoint().z,
                            extents.maxPoint().x, extents.maxPoint().y, extents.maxPoint().z};
    for (int k = 0; k < 6; ++k)
      EXPECT_NEAR(ours[k], reference.box[k], across_tolerance + along_tolerance) << k;
  }
}

}  // namespace
