// CDocData's drawing access and questions on problems.dxf: look-ups and
// their failure lines, attributes, handles, adding entities, the inside
// test by entity, zooming, and the yes/no and mode questions.
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
  CDocData& doc() { return docData(); }
  AcDbObjectId Block(const char* name) {
    AcDbObjectId id;
    EXPECT_EQ(doc().GetBlockID(name, id), Acad::eOk);
    return id;
  }
};

TEST_F(DrawingAccessTest, LooksUpBlocksAndLayersOrSaysWhy) {
  AcDbObjectId id;
  EXPECT_EQ(doc().GetBlockID("*Model_Space", id), Acad::eOk);
  EXPECT_EQ(id, db().modelSpaceId());
  EXPECT_EQ(doc().GetBlockID("roomtag", id), Acad::eOk);  // names without regard to case
  EXPECT_EQ(doc().GetLayerTableID("Contours", id), Acad::eOk);
  EXPECT_EQ(terminal_.out, "");
  EXPECT_EQ(doc().GetBlockID("NOPE", id), Acad::eKeyNotFound);
  EXPECT_EQ(doc().GetLayerTableID("Nope", id), Acad::eKeyNotFound);
  EXPECT_EQ(terminal_.out, "\nCDocData::GetBlockID = eKeyNotFound\nCDocData::GetLayerTableID = eKeyNotFound");
}

TEST_F(DrawingAccessTest, FindsAttributeDefinitionsOfABlock) {
  const struct {
    const char* block;
    const char* tag;
    bool has;
  } kCases[] = {{"ROOMTAG", "NAME", true},  {"ROOMTAG", "description", true},
                {"ROOMTAG", "AREA", false}, {"OLDTAG", "DESCRIPTION", false}, {"OLDTAG", "CATEGORY", true}};
  for (const auto& c : kCases) {
    bool has = !c.has;
    EXPECT_EQ(doc().HasAttribute(Block(c.block), c.tag, has), Acad::eOk) << c.block << " " << c.tag;
    EXPECT_EQ(has, c.has) << c.block << " " << c.tag;
  }
  bool has = true;
  EXPECT_EQ(doc().HasAttribute(ContourAt(0, 0), "NAME", has), Acad::eNotThatKindOfClass);
  EXPECT_FALSE(has);
  EXPECT_EQ(terminal_.out, "\nCDocData::HasAttribute = eNotThatKindOfClass");
}

TEST_F(DrawingAccessTest, ReadsAttributeValuesOfAnInsert) {
  const AcDbObjectId stamp = StampsNamed("301").at(0);
  std::string value;
  EXPECT_EQ(doc().GetAttributeValue(stamp, "DESCRIPTION", value), Acad::eOk);
  EXPECT_EQ(value, "Room 301");
  AcDbObjectId attribute;
  EXPECT_EQ(doc().GetAttributeIdByName(stamp, "category", attribute), Acad::eOk);
  AcDbObjectPointer<AcDbAttribute> opened(attribute, AcDb::kForRead);
  EXPECT_EQ(opened->tag(), "CATEGORY");
  opened.close();
  EXPECT_EQ(terminal_.out, "");
  EXPECT_EQ(doc().GetAttributeValue(stamp, "AREA", value), Acad::eKeyNotFound);
  EXPECT_EQ(doc().GetAttributeValue(ContourAt(0, 0), "NAME", value), Acad::eNotThatKindOfClass);
  EXPECT_EQ(terminal_.out, "\nAttribute \"AREA\" not found\nacdbOpenObject = eNotThatKindOfClass");
}

TEST_F(DrawingAccessTest, GivesHandlesAsHexadecimalText) {
  std::string handle;
  const AcDbObjectId contour = ContourAt(0, 0);
  EXPECT_EQ(doc().GetEntityHandle(contour, handle), Acad::eOk);
  EXPECT_EQ(AcDbHandle(handle), contour.handle());
  EXPECT_EQ(doc().GetEntityHandle(AcDbObjectId::kNull, handle), Acad::eNullHandle);
  EXPECT_EQ(terminal_.out, "\nGetEntityHandle = ERROR");
}

TEST_F(DrawingAccessTest, PostsNewEntitiesToABlock) {
  auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0));
  AcDbObjectId id;
  ASSERT_EQ(doc().postToDwg(line, id), Acad::eOk);
  EXPECT_EQ(line->blockId(), db().modelSpaceId());
  line->close();
  EXPECT_EQ(ModelSpace().back(), id);
  auto* other = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0));
  EXPECT_EQ(doc().postToDwg(other, id, "NOPE"), Acad::eKeyNotFound);
  EXPECT_TRUE(other->isNewObject());
  delete other;
  EXPECT_EQ(terminal_.out, "\nCDocData::GetBlockID = eKeyNotFound");
}

TEST_F(DrawingAccessTest, TestsPointsAgainstContoursOfTheDrawing) {
  const AcDbObjectId room = ContourAt(0, 0);
  EXPECT_TRUE(doc().CheckPointForPolylineNew({5, 5, 0}, room));
  EXPECT_FALSE(doc().CheckPointForPolylineNew({10, 5, 0}, room));   // on its wall
  EXPECT_FALSE(doc().CheckPointForPolylineNew({15, 5, 0}, room));
  EXPECT_EQ(terminal_.out, "");
  EXPECT_FALSE(doc().CheckPointForPolylineNew({35, 25, 0}, ContourAt(30, 20)));  // with an arc
  EXPECT_EQ(terminal_.out, "\npContour polyline contains arcs. Such type is not supported");
  terminal_.out.clear();
  EXPECT_FALSE(doc().CheckPointForPolylineNew({35, 25, 0}, AcDbObjectId::kNull));
  EXPECT_EQ(terminal_.out, "\nacdbOpenObject = eNullObjectId");
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
      {false, "_Yes", "Go on?[Yes/No]:_Yes\n-> first"},
      {false, "maybe yess \"\" n",
       "Go on?[Yes/No]:maybe\nYes or No, please.\nGo on?[Yes/No]:yess\nYes or No, please."
       "\nGo on?[Yes/No]:\nYes or No, please.\nGo on?[Yes/No]:n\n-> second"},
      {true, "t", "Room Identification[Block/Text]:t\n-> second"},
      {true, "Block", "Room Identification[Block/Text]:Block\n-> first"},
      {true, "yes b", "Room Identification[Block/Text]:yes\nYes or No, please.\nRoom Identification[Block/Text]:b\n-> first"},
  };
  for (const auto& c : kCases) {
    g_mode_question = c.mode;
    EXPECT_EQ(RunScript(std::string("ASK ") + c.answers), std::string("\nCommand: ASK\n") + c.transcript + "\n")
        << c.answers;
  }
}

TEST_F(DrawingAccessTest, ACancelledQuestionHasNoAnswer) {
  AddCommand("ASK", Ask);
  g_mode_question = false;
  EXPECT_EQ(RunScript("ASK"), "\nCommand: ASK\nGo on?[Yes/No]:*Cancel*\n-> cancelled\n");
}

}  // namespace
}  // namespace fx::rooms_test
