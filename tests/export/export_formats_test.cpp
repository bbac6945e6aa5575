// The extension rule of the dialog's path. (Keywords, filter indexes and
// setting values are crossed through the commands in export_commands_test.)
#include <gtest/gtest.h>

#include <string>

#include "export/export_formats.h"

namespace fx::exports {
namespace {

TEST(ExportFormats, TheChosenFiltersExtensionIsAddedUnlessThePathHasIt) {
  const struct {
    const char* path;
    const char* extension;
    const char* result;
  } kCases[] = {
      {"plan.xml", "svg", "plan.xml.svg"},
      {"plan.SVG", "svg", "plan.SVG"},
      {"plan", "svg", "plan.svg"},
      {"plan.svgz", "svg", "plan.svgz.svg"},
      {"/plans/level.2/plan", "drawing", "/plans/level.2/plan.drawing"},
      {"plan.", "xml", "plan..xml"},
  };
  for (const auto& c : kCases) EXPECT_EQ(PathWithExtension(c.path, c.extension), c.result) << c.path;
}

}  // namespace
}  // namespace fx::exports
