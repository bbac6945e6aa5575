#include "host/dxf/console/script_input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace fx::console {
namespace {

std::vector<std::string> AllTokens(ScriptInput& input, TokenEnd end = TokenEnd::kBlank) {
  std::vector<std::string> tokens;
  std::string token;
  while (input.Next(end, token)) tokens.push_back(token);
  return tokens;
}

TEST(ScriptInputTest, BlanksAndLineEndsSeparateTokens) {
  struct Case {
    const char* text;
    std::vector<std::string> tokens;
  };
  const Case cases[] = {
      {"ZOOM E", {"ZOOM", "E"}},
      {"UNITS ", {"UNITS", ""}},  // the blank, then the line end: Enter
      {"A  B", {"A", "", "B"}},   // two separators: an empty answer
      {"", {""}},                 // an empty line is Enter
      {"A\tB", {"A", "B"}},
      {"A\nB", {"A", "B"}},  // a -c line may hold several lines
      {"A\r\nB\r\n", {"A", "B"}},
      {"\"Room 101\" next", {"Room 101", "next"}},
      {"\"say \"\"hi\"\"\"", {"say \"hi\""}},  // a doubled quote is one quote
      {"\"\" x", {"", "x"}},                   // an explicit empty answer
      {"\"unclosed  text", {"unclosed  text"}},
      {"ab\"c d", {"ab\"c", "d"}},      // a quote inside a token is literal
      {"\"ab\"cd ef", {"abcd", "ef"}},  // glued text joins the quoted part
  };
  for (const Case& c : cases) {
    ScriptInput input;
    input.AddLine(c.text);
    EXPECT_EQ(AllTokens(input), c.tokens) << c.text;
  }
}

TEST(ScriptInputTest, LineAnswersKeepBlanksUnlessQuoted) {
  ScriptInput input;
  input.AddLine("NAME Room 101 east");
  input.AddLine("\"A B\" C");
  std::string token;
  ASSERT_TRUE(input.Next(TokenEnd::kBlank, token));
  EXPECT_EQ(token, "NAME");
  ASSERT_TRUE(input.Next(TokenEnd::kLineEnd, token));
  EXPECT_EQ(token, "Room 101 east");
  ASSERT_TRUE(input.Next(TokenEnd::kLineEnd, token));
  EXPECT_EQ(token, "A B");
  ASSERT_TRUE(input.Next(TokenEnd::kLineEnd, token));
  EXPECT_EQ(token, "C");
  EXPECT_FALSE(input.Next(TokenEnd::kLineEnd, token));
}

// Text inserted (a command sent) comes before the rest of the line, and a
// pending Enter stays after it.
TEST(ScriptInputTest, InsertedTextComesBeforeTheRestOfTheLine) {
  ScriptInput input;
  input.AddLine("A B");
  input.AddLine("UNITS ");
  std::string token;
  ASSERT_TRUE(input.Next(TokenEnd::kBlank, token));
  input.InsertFront("X Y ");  // the final blank stands for the line end
  EXPECT_EQ(AllTokens(input), (std::vector<std::string>{"X", "Y", "B", "UNITS", ""}));
  input.AddLine("UNITS ");
  ASSERT_TRUE(input.Next(TokenEnd::kBlank, token));
  input.InsertFront("Z");
  EXPECT_EQ(AllTokens(input), (std::vector<std::string>{"Z", ""}));
}

}  // namespace
}  // namespace fx::console
