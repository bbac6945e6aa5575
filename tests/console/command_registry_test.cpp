#include "host/dxf/console/command_registry.h"

#include <gtest/gtest.h>

#include <string>

#include "host/status.h"

namespace fx::console {
namespace {

void Nothing() {}

// Names compare without case; a group added later hides an earlier one's
// command of the same name until it is removed.
TEST(CommandRegistryTest, AddLookUpAndRemove) {
  CommandRegistry stack;
  AcEdCommand* added = nullptr;
  ASSERT_EQ(stack.addCommand("G1", "_convert", "vantoryconvert", ACRX_CMD_TRANSPARENT, Nothing,
                             nullptr, -1, nullptr, &added),
            Acad::eOk);
  EXPECT_EQ(stack.lookupGlobalCmd("_CONVERT"), added);
  EXPECT_EQ(stack.lookupLocalCmd("VantoryConvert"), added);
  EXPECT_EQ(stack.lookupLocalCmd("_convert"), nullptr);
  EXPECT_EQ(stack.addCommand("g1", "_CONVERT", "other", 0, Nothing), Acad::eDuplicateKey);
  EXPECT_EQ(stack.addCommand("", "X", "X", 0, Nothing), Acad::eInvalidInput);

  ASSERT_EQ(stack.addCommand("G2", "_convert", "other", 0, Nothing), Acad::eOk);
  EXPECT_EQ(stack.lookupGlobalCmd("_convert")->groupName(), "G2");
  EXPECT_EQ(stack.removeGroup("G2"), Acad::eOk);
  EXPECT_EQ(stack.lookupGlobalCmd("_convert"), added);
  EXPECT_EQ(stack.removeCmd("G1", "_convert"), Acad::eOk);
  EXPECT_EQ(stack.removeCmd("G1", "_convert"), Acad::eKeyNotFound);
  EXPECT_EQ(stack.lookupGlobalCmd("_convert"), nullptr);
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
