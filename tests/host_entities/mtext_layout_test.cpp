// MTEXT layout: paragraph codes worked out by hand, and whole MTEXT entities
// against the lines ezdxf's text layout engine gave for them when it was
// handed the host's glyph widths (0.65 x height x width factor, 1.0 x for
// East Asian wide characters), so that only the layout rules differ.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "entity_test_support.h"
#include "host/db_entities.h"
#include "host/dxf/draw_text_box.h"
#include "host/dxf/mtext_layout.h"

namespace {

using namespace fx::dxf;

// What ezdxf lays out otherwise: \pq* returns to the attachment's alignment
// (centre). With the style's width factor (0.5) and an inline one (2)
// within its group, "a bb" is 3.25 wide and " cd" 0.975 more passes 4.
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

struct Baseline {
  std::string text;
  AcGePoint3d start, end;
};

struct ReferenceMText {
  std::string tags;
  std::vector<Baseline> lines;  // top first
  AcGePoint3d min, max;         // around all words, from baseline to cap height
};

const ReferenceMText kReferences[] = {
    // Wrapped centred paragraphs, then a left one: paragraph codes hold until changed.
    {"10 0\n20 0\n30 0\n40 10\n41 118.7\n71 1\n"
     "1 \\pxqc;Salle de r\xC3\xA9union du conseil d'administration\\Pdeux\\P\\pql;gauche seule\n",
     {{"Salle de r\xC3\xA9union", {7.35, -10, 0}, {111.35, -10, 0}},
      {"du conseil", {26.85, -26.67, 0}, {91.85, -26.67, 0}},
      {"d'administration", {7.35, -43.34, 0}, {111.35, -43.34, 0}},
      {"deux", {46.35, -60.01, 0}, {72.35, -60.01, 0}},
      {"gauche seule", {0, -76.68, 0}, {78, -76.68, 0}}},
     {0, -76.68, 0}, {111.35, 0, 0}},
    // Right-aligned, middle-centre attachment, rotated, wider spacing; a word
    // longer than the column stays whole.
    {"10 500\n20 50\n30 0\n40 5\n41 77.3\n71 5\n50 30\n44 1.5\n"
     "1 \\pqr;NOTES G\xC3\x89N\xC3\x89RALES\\PVoir le plan d'ensemble pour les cotes "
     "Laboratoire-informatique-principal x\n",
     {{"NOTES G\xC3\x89N\xC3\x89RALES", {480.000643422, 64.439901712, 0}, {522.219381856, 88.814901712, 0}},
      {"Voir le plan d'ensemble", {463.735232923, 40.612419101, 0}, {528.470631856, 77.987419101, 0}},
      {"pour les cotes", {495.317725984, 44.409936491, 0}, {534.721881856, 67.159936491, 0}},
      {"Laboratoire-informatique-principal", {445.277324738, 1.082453880, 0}, {540.973131856, 56.332453880, 0}},
      {"x", {544.409799294, 43.879971269, 0}, {547.224381856, 45.504971269, 0}}},
     {424.023574738, -9.745028731, 0}, {547.224381856, 93.145028731, 0}},
    // No reference width: the column is the widest line; bottom right.
    {"10 300\n20 -100\n30 0\n40 3\n41 0\n71 9\n1 \\pqc;Bureau du directeur\\P101\\PB\n",
     {{"Bureau du directeur", {262.95, -89.998, 0}, {300, -89.998, 0}},
      {"101", {278.55, -94.999, 0}, {284.4, -94.999, 0}},
      {"B", {280.5, -100, 0}, {282.45, -100, 0}}},
     {262.95, -100, 0}, {300, -86.998, 0}},
    // Full-width characters, a direction vector, bottom centre.
    {"10 -200\n20 200\n30 0\n40 6\n41 41.3\n71 8\n11 0\n21 1\n31 0\n"
     "1 \\pql;\xE4\xBC\x9A\xE8\xAE\xAE\xE5\xAE\xA4 101 \xE5\x8A\x9E\xE5\x85\xAC\xE5\x8C\xBA "
     "\xE4\xB8\x80\xE5\x8F\xB7\\P\xE5\xA4\xA7\xE5\x8E\x85\n",
     {{"\xE4\xBC\x9A\xE8\xAE\xAE\xE5\xAE\xA4 101", {-220.004, 179.35, 0}, {-220.004, 212.95, 0}},
      {"\xE5\x8A\x9E\xE5\x85\xAC\xE5\x8C\xBA \xE4\xB8\x80\xE5\x8F\xB7", {-210.002, 179.35, 0}, {-210.002, 213.25, 0}},
      {"\xE5\xA4\xA7\xE5\x8E\x85", {-200, 179.35, 0}, {-200, 191.35, 0}}},
     {-226.004, 179.35, 0}, {-200, 213.25, 0}},
};

// Line breaks must agree exactly and positions along the baseline to
// rounding. Across, ezdxf puts baselines 1.667 heights apart where the host
// puts 5/3: 1/3000 of a height per line pitch, allowed as 4e-4 for each line.
TEST(MTextLayout, MatchesEzdxfLayoutEngine) {
  for (const ReferenceMText& reference : kReferences) {
    SCOPED_TRACE(reference.lines[0].text);
    auto mtext = fx::testing::Make<AcDbMText>("0 MTEXT\n100 AcDbEntity\n8 0\n100 AcDbMText\n" + reference.tags);
    const double h = mtext->textHeight();
    const AcGeVector3d along = mtext->direction();
    const AcGeVector3d up = mtext->normal().crossProduct(along).normal();
    const double along_tolerance = 1e-6;

    fx::testing::RecordingDraw draw;
    ASSERT_TRUE(mtext->worldDraw(&draw));
    std::vector<Baseline> lines;  // the drawn pieces, joined into lines by their baseline
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
      const Baseline& want = reference.lines[i];
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
    const double box_tolerance = across_tolerance + along_tolerance;
    EXPECT_TRUE(extents.minPoint().isEqualTo(reference.min, AcGeTol(box_tolerance, box_tolerance)))
        << extents.minPoint().x << " " << extents.minPoint().y;
    EXPECT_TRUE(extents.maxPoint().isEqualTo(reference.max, AcGeTol(box_tolerance, box_tolerance)))
        << extents.maxPoint().x << " " << extents.maxPoint().y;
  }
}

}  // namespace
