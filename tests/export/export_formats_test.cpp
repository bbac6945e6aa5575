// The format table and its crossing of codes and filter indexes, the
// keywords, the setting values, the save dialog's filter and the extension
// rules of the dialog's path.
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

TEST(ExportFormats, KeywordsMatchExactlyAndCaseSensitively) {
  for (const char* wrong : {"XML", "Xml", "SVG", "PlanVault", "svg ", " svg", "", "drawings", "planvault v2", "svgZ"}) {
    EXPECT_FALSE(FormatOfKeyword(wrong)) << '"' << wrong << '"';
  }
}

TEST(ExportFormats, AnUnknownSettingValueMeansTheV1Format) {
  for (const char* value : {"", "svg", "PlanVault v3", "SVG ", "PlanVault DRW2", "xml"}) {
    EXPECT_EQ(FormatOfSettingValue(value), ExportFormat::kXml) << '"' << value << '"';
  }
  // "SVG" preselects the fourth filter, not the third.
  EXPECT_EQ(RowOf(FormatOfSettingValue("SVG")).filter_index, 4);
}

TEST(ExportFormats, TheFilterStringHasFiveEntriesInDialogOrder) {
  EXPECT_STREQ(kSaveFilter,
               "PlanVault v1 (*.xml)|*.xml|PlanVault v2 (*.planvault)|*.planvault|PlanVault Drawing (*.drawing)|"
               "*.drawing|SVG (*.svg)|*.svg|SVGZ (*.svgz)|*.svgz||");
  const std::vector<FilterEntry> entries = ParseFilter(kSaveFilter);
  ASSERT_EQ(entries.size(), 5u);
  const char* kDescriptions[] = {"PlanVault v1 (*.xml)", "PlanVault v2 (*.planvault)", "PlanVault Drawing (*.drawing)",
                                 "SVG (*.svg)", "SVGZ (*.svgz)"};
  for (size_t i = 0; i < entries.size(); ++i) {
    EXPECT_EQ(entries[i].description, kDescriptions[i]);
    // The filter at index i + 1 has the extension of the format of that index.
    EXPECT_EQ(entries[i].extension(), RowOf(*FormatOfFilterIndex(static_cast<int>(i) + 1)).extension);
  }
  EXPECT_EQ(FilterEntry({"All", "*.*"}).extension(), "");
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

TEST(ExportFormats, TheInitialFileNameIsTheDrawingsPathWithoutExtension) {
  EXPECT_EQ(PathWithoutExtension("/plans/level-1.dxf"), "/plans/level-1");
  EXPECT_EQ(PathWithoutExtension("/plans.d/level-1"), "/plans.d/level-1");
  EXPECT_EQ(PathWithoutExtension("a.b.dxf"), "a.b");
  EXPECT_EQ(PathWithoutExtension(""), "");
}

}  // namespace
}  // namespace fx::exports
