#include "host/dxf/console/keywords.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace fx::console {
namespace {

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
