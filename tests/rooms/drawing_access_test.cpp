// CDocData's yes/no and mode questions, asked until the answer is a keyword.
// (Its zoom to an object: the navigation commands and the room list.)
#include <gtest/gtest.h>

#include <string>

#include "host/editor.h"
#include "rooms_fixture.h"

namespace fx::rooms_test {
namespace {

using fx::rooms::CDocData;

class DrawingAccessTest : public RoomsTest {
 protected:
  DrawingAccessTest() {
    Open(TestDrawing("problems.dxf"));
    terminal_.out.clear();
  }
};

// A test command that asks and prints what it understood.
bool g_mode_question = false;
void Ask() {
  bool first = false;
  CDocData& doc = fx::rooms::DocVars().docData();
  const bool answered = g_mode_question ? doc.AskBlockOrText("\nRoom Identification", first)
                                        : doc.AskYesNo("\nGo on?", first);
  acutPrintf(answered ? (first ? "\n-> first" : "\n-> second") : "\n-> cancelled");
}

TEST_F(DrawingAccessTest, AsksUntilTheAnswerIsAKeyword) {
  AddCommand("ASK", Ask);
  const struct {
    bool mode;
    const char* answers;
    const char* transcript;
  } kCases[] = {
      {false, "y", "Go on?[Yes/No]:y\n-> first"},
      {false, "NO", "Go on?[Yes/No]:NO\n-> second"},
      {false, "maybe yess \"\" n",
       "Go on?[Yes/No]:maybe\nYes or No, please.\nGo on?[Yes/No]:yess\nYes or No, please."
       "\nGo on?[Yes/No]:\nYes or No, please.\nGo on?[Yes/No]:n\n-> second"},
      {true, "t", "Room Identification[Block/Text]:t\n-> second"},
      {true, "yes b", "Room Identification[Block/Text]:yes\nYes or No, please.\nRoom Identification[Block/Text]:b\n-> first"},
      // An empty answer is refused; then the input runs out, which ends the script.
      {false, "", "Go on?[Yes/No]:\nYes or No, please.\nGo on?[Yes/No]:*Cancel*\n-> cancelled"},
  };
  for (const auto& c : kCases) {
    g_mode_question = c.mode;
    EXPECT_EQ(RunScript(std::string("ASK ") + c.answers), std::string("\nCommand: ASK\n") + c.transcript + "\n")
        << c.answers;
  }
}

}  // namespace
}  // namespace fx::rooms_test
