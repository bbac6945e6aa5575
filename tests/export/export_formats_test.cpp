// The format codes and the extension rule of the dialog's path. (Keywords,
// filter indexes and setting values are crossed through the commands in
// export_commands_test.)
#include <gtest/gtest.h>

#include <string>

#include "export/export_formats.h"

namespace fx::exports {
namespace {

// The codes callers such as the send workflow pass.
TEST(ExportFormats, CodesCrossToKeywords) {
  const char* const kKeywordOfCode[] = {"xml", "planvault", "svg", "drawing", "svgz"};
  for (int code = 0; code < 5; ++code) {
    ASSERT_TRUE(FormatOfCode(code)) << code;
    EXPECT_EQ(FormatOfCode(code), FormatOfKeyword(kKeywordOfCode[code])) << code;
    EXPECT_STREQ(RowOf(*FormatOfCode(code)).extension, kKeywordOfCode[code]);
  }
  EXPECT_FALSE(FormatOfCode(-1));
  EXPECT_FALSE(FormatOfCode(5));
}

TEST(ExportFormats, TheChosenFiltersExtensionIsAddedUnlessThePathHasIt) {
  const struct {
    const char* path;
    const char* extension;
    const char* result;
  } kCases[] = {
      {"plan.xml", "svg", "plan.xml.svg"},
      {"plan.SVG", "svg", "plan.SVG"},
      {"plan.Svg", "svg", "plan.Svg"},
      {"plan", "svg", "plan.svg"},
      {"plan.svgz", "svg", "plan.svgz.svg"},
      {"plan.svg", "svgz", "plan.svg.svgz"},
      {"/plans/level.2/plan", "drawing", "/plans/level.2/plan.drawing"},
      {"/plans/level.2/plan.DRAWING", "drawing", "/plans/level.2/plan.DRAWING"},
      {"plan.", "xml", "plan..xml"},
      {"my plans/a b.planvault", "planvault", "my plans/a b.planvault"},
  };
  for (const auto& c : kCases) EXPECT_EQ(PathWithExtension(c.path, c.extension), c.result) << c.path;
}

}  // namespace
}  // namespace fx::exports
