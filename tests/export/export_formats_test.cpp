// The format table and its crossing of codes, keywords, filter indexes and
// setting values, and the extension rule of the dialog's path. (Wrong
// keywords, unknown setting values and the dialog's filters are checked
// through the commands in export_commands_test.)
#include <gtest/gtest.h>

#include <string>

#include "export/export_formats.h"

namespace fx::exports {
namespace {

TEST(ExportFormats, CodesKeywordsFiltersAndSettingValuesCrossAsTabled) {
  const struct {
    int code;
    const char* keyword;
    int filter_index;
    const char* setting_value;
  } kTable[] = {
      {0, "xml", 1, "PlanVault v1"},  {1, "planvault", 2, "PlanVault v2"}, {2, "svg", 4, "SVG"},
      {3, "drawing", 3, "PlanVault DRW"}, {4, "svgz", 5, "SVGZ"},
  };
  for (const auto& row : kTable) {
    const std::optional<ExportFormat> format = FormatOfCode(row.code);
    ASSERT_TRUE(format) << row.code;
    EXPECT_EQ(FormatOfKeyword(row.keyword), format) << row.keyword;
    EXPECT_EQ(FormatOfExtension(row.keyword), format) << row.keyword;
    EXPECT_EQ(FormatOfFilterIndex(row.filter_index), format) << row.keyword;
    EXPECT_EQ(FormatOfSettingValue(row.setting_value), *format) << row.keyword;
    EXPECT_STREQ(RowOf(*format).extension, row.keyword);
    EXPECT_EQ(RowOf(*format).filter_index, row.filter_index);
    EXPECT_STREQ(RowOf(*format).setting_value, row.setting_value);
  }
  EXPECT_FALSE(FormatOfCode(-1));
  EXPECT_FALSE(FormatOfCode(5));
  EXPECT_FALSE(FormatOfFilterIndex(0));
  EXPECT_FALSE(FormatOfFilterIndex(6));
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
