// CDocData's drawing access where the analysis does not show it: names
// without regard to case, zooming to an object, and the yes/no and mode
// questions.
#include <gtest/gtest.h>

#include <string>

#include "host/dxf/console/active_view.h"
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

TEST_F(DrawingAccessTest, BlocksAndAttributesAreFoundWithoutRegardToCase) {
  CDocData& doc = docData();
  AcDbObjectId block;
  EXPECT_EQ(doc.GetBlockID("roomtag", block), Acad::eOk);
  bool has = false;
  EXPECT_EQ(doc.HasAttribute(block, "description", has), Acad::eOk);
  EXPECT_TRUE(has);
  const AcDbObjectId stamp = StampsNamed("301").at(0);
  AcDbObjectId attribute;
  EXPECT_EQ(doc.GetAttributeIdByName(stamp, "category", attribute), Acad::eOk);
  EXPECT_EQ(AcDbObjectPointer<AcDbAttribute>(attribute, AcDb::kForRead)->tag(), "CATEGORY");
  std::string value;
  EXPECT_EQ(doc.GetAttributeValue(stamp, "Description", value), Acad::eOk);
  EXPECT_EQ(value, "Room 301");
  EXPECT_EQ(terminal_.out, "");
}

AcDbObjectId g_zoom_target;
void ZoomToTarget() { fx::rooms::DocVars().docData().ZoomToObject(g_zoom_target); }

TEST_F(DrawingAccessTest, ZoomsToAnObjectThroughTheHostsZoom) {
  AddCommand("ZOOMTO", ZoomToTarget);
  g_zoom_target = ContourAt(50, 20);
  const std::string handle = g_zoom_target.handle().ascii();
  EXPECT_EQ(RunScript("ZOOMTO"), "\nCommand: ZOOMTO\nCommand: _ZOOM\nZoom [Extents/Object]: _O\nSelect objects: " +
                                     handle + "\n1 found, 1 total\nSelect objects: \n");
  fx::console::View view;
  ASSERT_EQ(fx::console::GetActiveView(db(), view), Acad::eOk);
  EXPECT_DOUBLE_EQ(view.center.x, 55);
  EXPECT_DOUBLE_EQ(view.center.y, 25);
  // An entity the host cannot name: its zoom refuses the argument.
  g_zoom_target = AcDbObjectId::kNull;
  EXPECT_EQ(RunScript("ZOOMTO"),
            "\nCommand: ZOOMTO\nacedCommandS: an argument cannot be used as an answer.Can't zoom\n");
}

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
