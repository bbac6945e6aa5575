// Fingerprints name an outline whatever its start and direction (the
// program's fingerprints are checked on a corpus floor by
// review_program_test), and the --fail-on lists of kinds.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "review/finding_kinds.h"
#include "review/fingerprint.h"

namespace fx::review {
namespace {

TEST(FingerprintTest, ContourTextIgnoresStartDirectionClosingPointAndNoise) {
  const std::vector<AcGePoint2d> ring = {{0, 0}, {4, 0}, {4, 3}, {0, 3}};
  const std::string text = ContourText("empty-contour", ring);
  EXPECT_EQ(text, "empty-contour|C|0,0;0,3000;4000,3000;4000,0;");
  const std::vector<std::vector<AcGePoint2d>> same = {
      {{4, 3}, {0, 3}, {0, 0}, {4, 0}},                  // another start
      {{0, 3}, {4, 3}, {4, 0}, {0, 0}},                  // the other way round
      {{0, 0}, {4, 0}, {4, 3}, {0, 3}, {0, 0}},          // closed by a repeated point
      {{0, 0}, {4, 0}, {4, 0}, {4, 3}, {0, 3}},          // a vertex twice
      {{1e-5, -1e-5}, {4.0002, 0}, {4, 3}, {0, 2.9998}},  // below the grid
  };
  for (const auto& other : same) EXPECT_EQ(ContourText("empty-contour", other), text);
  EXPECT_NE(ContourText("intersected-contour", ring), text);
  EXPECT_NE(ContourText("empty-contour", {{0, 0}, {4, 0}, {4, 3.01}, {0, 3}}), text);
}

TEST(FingerprintTest, RingWithRepeatedLeastVertexTakesTheLeastWalk) {
  // A bow tie through (0,0) twice: both starts at (0,0), both directions.
  const std::vector<AcGePoint2d> bow = {{0, 0}, {1, 1}, {2, 0}, {0, 0}, {1, -1}, {2, -2}};
  const std::vector<AcGePoint2d> turned = {{0, 0}, {1, -1}, {2, -2}, {0, 0}, {1, 1}, {2, 0}};
  EXPECT_EQ(ContourText("k", bow), ContourText("k", turned));
}

// An identifier is named by its kind, handle and point on the same grid.
TEST(FingerprintTest, IdentifierText) {
  EXPECT_EQ(IdentifierText("multiple-ids", "101", {5.0004, -2}), "multiple-ids|I|101|5000,-2000");
}

// Blanks around a kind; what is not a kind. (Single kinds, "any" and the
// message for an unknown kind are checked through the program.)
TEST(FindingKindsTest, KindLists) {
  struct Case {
    const char* text;
    bool ok;
    std::vector<ProblemKind> kinds;
  };
  const Case cases[] = {
      {" duplicate-number , multiple-ids", true, {ProblemKind::kDuplicateNumber, ProblemKind::kMultipleIds}},
      {"empty", false, {}},
      {"empty-contour,", false, {}},
      {"", false, {}},
  };
  for (const Case& c : cases) {
    KindSet kinds;
    std::string error;
    EXPECT_EQ(ParseKindList(c.text, &kinds, &error), c.ok) << c.text;
    for (const KindInfo& info : kKinds) {
      const bool listed = std::find(c.kinds.begin(), c.kinds.end(), info.kind) != c.kinds.end();
      EXPECT_EQ(kinds.contains(info.kind), listed) << c.text << " " << info.id;
    }
  }
}

}  // namespace
}  // namespace fx::review
