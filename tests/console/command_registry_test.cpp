// What a typed word resolves to: a command of the registry, a keyword of a prompt.
#include "host/dxf/console/command_registry.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "host/dxf/console/keywords.h"
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

TEST(KeywordListTest, MatchesWholeCapitalsOrUnambiguousPrefix) {
  struct Case {
    const char* list;
    const char* answer;
    std::optional<std::string> keyword;
  };
  const Case cases[] = {
      {"Yes No", "y", "Yes"},
      {"Yes No", "NO", "No"},
      {"Yes No", "", std::nullopt},
      {"Yes No", "maybe", std::nullopt},
      {"Extents Object", "e", "Extents"},
      {"Extents Object", "_O", "Object"},  // global form of a keyword
      {"Extents Object", "_Extents", "Extents"},
      {"Extents Object", "Extentsx", std::nullopt},
      {"eXit Exclude", "x", "eXit"},         // the capital letters
      {"eXit Exclude", "ex", std::nullopt},  // a prefix of both
      {"eXit Exclude", "exi", "eXit"},
      {"Delete DeleteAll", "delete", "Delete"},  // whole keyword first
      {"Delete DeleteAll", "deletea", "DeleteAll"},
      {"Ja Nein _ Yes No", "j", "Yes"},  // answers give the global keyword
      {"Ja Nein _ Yes No", "_no", "No"},
      {"Ja Nein _ Yes No", "_j", std::nullopt},
      {"Ja Nein _ Yes", "n", "Nein"},  // unpaired globals are ignored
  };
  for (const Case& c : cases) {
    EXPECT_EQ(KeywordList(c.list).Match(c.answer), c.keyword) << c.list << " / " << c.answer;
  }
}

}  // namespace
}  // namespace fx::console
