#include "host/dxf/console/command_registry.h"

#include <gtest/gtest.h>

#include <string>

#include "host/status.h"

namespace fx::console {
namespace {

void Nothing() {}

// A group added later hides an earlier one's command of the same name (the
// names compare without case) until it is removed.
TEST(CommandRegistryTest, TheLatestGroupIsSearchedFirst) {
  CommandRegistry stack;
  ASSERT_EQ(stack.addCommand("OLD", "ZOOM", "ZOOM", 0, Nothing), Acad::eOk);
  EXPECT_EQ(stack.addCommand("old", "zoom", "other", 0, Nothing), Acad::eDuplicateKey);
  ASSERT_EQ(stack.addCommand("NEW", "zoom", "ZOOM", 0, Nothing), Acad::eOk);
  EXPECT_EQ(stack.lookupGlobalCmd("Zoom")->groupName(), "NEW");
  EXPECT_EQ(stack.removeGroup("NEW"), Acad::eOk);
  EXPECT_EQ(stack.lookupLocalCmd("zoom")->groupName(), "OLD");
  EXPECT_EQ(stack.removeCmd("OLD", "ZOOM"), Acad::eOk);
  EXPECT_EQ(stack.lookupGlobalCmd("ZOOM"), nullptr);
}

TEST(CommandRegistryTest, TypedNamesAndPrefixes) {
  CommandRegistry stack;
  ASSERT_EQ(stack.addCommand("G", "ZOOMX", "ZOOMX", 0, Nothing), Acad::eOk);
  ASSERT_EQ(stack.addCommand("G", "_convert", "vantoryconvert", 0, Nothing), Acad::eOk);
  ASSERT_EQ(stack.addCommand("G", "PURGEX", "PURGEX", 0, Nothing), Acad::eOk);
  ASSERT_EQ(stack.addCommand("G", "-PURGEX", "-PURGEX", 0, Nothing), Acad::eOk);
  ASSERT_EQ(stack.addCommand("G", "GLOBALONLY", "lokal", 0, Nothing), Acad::eOk);
  struct Case {
    const char* typed;
    const char* global;  // nullptr: unknown
    bool transparent;
  };
  const Case cases[] = {
      {"zoomx", "ZOOMX", false},
      {"_ZOOMX", "ZOOMX", false},
      {"'zoomx", "ZOOMX", true},
      {"'_zoomx", "ZOOMX", true},
      {"._zoomx", "ZOOMX", false},
      {"_-zoomx", "ZOOMX", false},    // no dash form: the command itself
      {"-purgex", "-PURGEX", false},  // the dash form when registered
      {"_-PURGEX", "-PURGEX", false},
      {"vantoryconvert", "_convert", false},
      {"_vantoryconvert", "_convert", false},  // "_" with a local name
      {"_convert", "_convert", false},         // a global name with its underscore
      {"convert", nullptr, false},
      {"globalonly", "GLOBALONLY", false},  // a global name typed plainly
      {"lokal", "GLOBALONLY", false},
      {"_lokal", "GLOBALONLY", false},
      {"nothing", nullptr, false},
      {"_", nullptr, false},
  };
  for (const Case& c : cases) {
    TypedCommand found = stack.Resolve(c.typed);
    if (c.global == nullptr) {
      EXPECT_EQ(found.command, nullptr) << c.typed;
      continue;
    }
    ASSERT_NE(found.command, nullptr) << c.typed;
    EXPECT_EQ(found.command->globalName(), c.global) << c.typed;
    EXPECT_EQ(found.transparent, c.transparent) << c.typed;
  }
}

}  // namespace
}  // namespace fx::console
