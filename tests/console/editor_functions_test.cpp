// The editor functions of the host API on the console: answers from the
// script, their echo in the transcript, and running out of input. Answers
// typed at a terminal, not echoed again, are in tests/cli/cli_test.cpp.
#include <gtest/gtest.h>

#include <string>

#include "console_fixture.h"
#include "host/editor.h"

namespace fx::console {
namespace {

class EditorFunctionsTest : public ConsoleTest {
 protected:
  void Script(const char* text) {
    console().script().AddLine(text);
    terminal_.out.clear();
  }
};

TEST_F(EditorFunctionsTest, GetString) {
  struct Case {
    const char* script;  // nullptr: no input
    int cronly;
    size_t size;
    int status;
    const char* result;
    const char* transcript;
  };
  const Case cases[] = {
      {"Room 101", 0, 64, RTNORM, "Room", "\nName: Room"},
      {"Room 101", 1, 64, RTNORM, "Room 101", "\nName: Room 101"},
      {"\"Room 101\"", 0, 64, RTNORM, "Room 101", "\nName: Room 101"},
      {"", 0, 64, RTNORM, "", "\nName: "},
      {nullptr, 0, 64, RTCAN, "", "\nName: *Cancel*"},
      {"abcdef", 0, 4, RTINPUTTRUNCATED, "abc", "\nName: abcdef"},
      {"\xC3\xA4\xC3\xB6", 0, 4, RTINPUTTRUNCATED, "\xC3\xA4", "\nName: \xC3\xA4\xC3\xB6"},
  };
  for (const Case& c : cases) {
    Restart(AnswerPolicy());
    Script(c.script != nullptr ? c.script : "");
    if (c.script == nullptr) console().script().Clear();
    char result[64] = "junk";
    EXPECT_EQ(acedGetString(c.cronly, "\nName: ", result, c.size), c.status) << c.script;
    EXPECT_STREQ(result, c.result);
    EXPECT_EQ(terminal_.out, c.transcript);
  }
}

TEST_F(EditorFunctionsTest, GetKword) {
  struct Case {
    int flags;
    const char* script;
    int status;
    const char* result;
    const char* transcript;
  };
  const Case cases[] = {
      {0, "o", RTNORM, "Object", "\nZoom: o"},
      {0, "_E", RTNORM, "Extents", "\nZoom: _E"},
      {0, "x o", RTNORM, "Object", "\nZoom: x\nInvalid option keyword.\nZoom: o"},
      {0, "", RTNONE, "", "\nZoom: "},
      {RSG_NONULL, " e", RTNORM, "Extents", "\nZoom: \nRequires a keyword.\nZoom: e"},
      {0, "x", RTCAN, "", "\nZoom: x\nInvalid option keyword.\nZoom: *Cancel*"},
  };
  for (const Case& c : cases) {
    Restart(AnswerPolicy());
    Script(c.script);
    char result[32] = "junk";
    acedInitGet(c.flags, "Extents Object");
    EXPECT_EQ(acedGetKword("\nZoom: ", result, sizeof result), c.status) << c.script;
    EXPECT_STREQ(result, c.result);
    EXPECT_EQ(terminal_.out, c.transcript);
  }
}

TEST_F(EditorFunctionsTest, InitGetAppliesToTheNextCallOnly) {
  Script("a b");
  char result[32];
  acedInitGet(0, "Apple");
  ASSERT_EQ(acedGetKword("\n? ", result, sizeof result), RTNORM);
  EXPECT_STREQ(result, "Apple");
  ASSERT_EQ(acedGetKword("\n? ", result, sizeof result), RTNORM);  // no keywords: as typed
  EXPECT_STREQ(result, "b");
}

TEST_F(EditorFunctionsTest, GetPoint) {
  struct Case {
    const char* script;
    bool with_base;
    int status;
    double x, y, z;
    const char* transcript;
  };
  const Case cases[] = {
      {"1,2", false, RTNORM, 1, 2, 0, "\nPoint: 1,2"},
      {"1.5,-2,3e2", false, RTNORM, 1.5, -2, 300, "\nPoint: 1.5,-2,3e2"},
      {"@1,1", true, RTNORM, 11, 21, 5, "\nPoint: @1,1"},
      {"abc 3,4", false, RTNORM, 3, 4, 0, "\nPoint: abc\nInvalid point.\nPoint: 3,4"},
      {"1,2,3,4 1", false, RTCAN, 0, 0, 0,
       "\nPoint: 1,2,3,4\nInvalid point.\nPoint: 1\nInvalid point.\nPoint: *Cancel*"},
      {"", false, RTNONE, 0, 0, 0, "\nPoint: "},
  };
  const ads_point base = {10, 20, 5};
  for (const Case& c : cases) {
    Restart(AnswerPolicy());
    Script(c.script);
    ads_point point = {0, 0, 0};
    EXPECT_EQ(acedGetPoint(c.with_base ? base : nullptr, "\nPoint: ", point), c.status) << c.script;
    if (c.status == RTNORM) {
      EXPECT_EQ(point[0], c.x);
      EXPECT_EQ(point[1], c.y);
      EXPECT_EQ(point[2], c.z);
    }
    EXPECT_EQ(terminal_.out, c.transcript);
  }
}

}  // namespace
}  // namespace fx::console
