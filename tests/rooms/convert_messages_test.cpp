// vantoryconvert's messages when an answer names nothing, the question of
// a missing floor outline, locked layers, and inserts that lack attributes.
#include <gtest/gtest.h>

#include <string>

#include "rooms_fixture.h"

namespace fx::rooms_test {
namespace {

using fx::rooms::ProblemKind;

constexpr char kBlockEnd[] = "\nDo you want remove block inserts?[Yes/No]:No";
constexpr char kTextEnd[] = "\nEnter description attribute text entities layer: Descriptions";

class ConvertMessagesTest : public RoomsTest {
 protected:
  bool IsLocked(const char* layer) const {
    AcDbObjectId id;
    EXPECT_EQ(docData().GetLayerTableID(layer, id), Acad::eOk);
    AcDbObjectPointer<AcDbLayerTableRecord> record(id, AcDb::kForRead);
    return record->isLocked();
  }
  fx::console::AnswerPolicy Yes() const {
    fx::console::AnswerPolicy yes;
    yes.SetYesNoDefault(fx::console::MessageButton::kYes);
    return yes;
  }
};

TEST_F(ConvertMessagesTest, AnAnswerThatNamesNothingEndsTheCommandWithItsMessage) {
  Open(TestDrawing("problems.dxf"));
  const struct {
    const char* answers;
    const char* last_prompt;
    const char* message;
  } kCases[] = {
      {R"("" "Contours" B "ROOMTAG" "NAME" "CATEGORY" "DESCRIPTION" No)", kBlockEnd,
       "\nPlease select FloorArea Layer"},
      {R"("Nope" "Contours" B "ROOMTAG" "NAME" "CATEGORY" "DESCRIPTION" No)", kBlockEnd,
       "\nFloorArea Layer \"Nope\" not found"},
      {R"("Floor" "" B "ROOMTAG" "NAME" "CATEGORY" "DESCRIPTION" No)", kBlockEnd, "\nPlease select Contour Layer"},
      {R"("Floor" "Nope" B "ROOMTAG" "NAME" "CATEGORY" "DESCRIPTION" No)", kBlockEnd,
       "\nCDocData::GetLayerTableID = eKeyNotFound"},
      {R"("Floor" "Contours" B "NOPE" "NAME" "CATEGORY" "DESCRIPTION" No)", kBlockEnd, "\ngetAt = eKeyNotFound"},
      {R"("Floor" "Contours" B "ROOMTAG" "NAME" "AREA" "DESCRIPTION" No)", kBlockEnd,
       "\nAttribute \"AREA\" not found"},
      {R"("Floor" "Contours" T "Names" "Nope" "Descriptions")", kTextEnd, "\nLayer \"Nope\" not found"},
      {R"("Floor" "Contours" T "" "Types" "Descriptions")", kTextEnd, "\nLayer \"\" not found"},
  };
  for (const auto& c : kCases) {
    const std::string transcript = RunScript(std::string("_vantoryconvert ") + c.answers);
    EXPECT_TRUE(transcript.ends_with(std::string(c.last_prompt) + c.message + "\n")) << transcript;
    EXPECT_FALSE(docData().analysed()) << c.answers;
    EXPECT_FALSE(runner().failed()) << c.answers;  // the command ends normally; the script goes on
  }
  EXPECT_TRUE(docData().roomIds().empty());
}

TEST_F(ConvertMessagesTest, WithoutAFloorOutlineTheUserDecides) {
  Open(TestDrawing("no_floor.dxf"));
  const std::string line = R"(_vantoryconvert "Floor" "Contours" T "Names" "Types" "Descriptions")";
  // No, the default of a batch run, ends the command.
  const std::string transcript = RunScript(line);
  EXPECT_NE(transcript.find("No Floor Area Polyline Found.\nDo you want to continue?"), std::string::npos)
      << transcript;
  EXPECT_FALSE(docData().analysed());
  EXPECT_EQ(Record(NamesShowing("101").at(0)).name, "(none)");
  // Yes goes on without one.
  session_.reset();
  Restart(Yes());
  Open(TestDrawing("no_floor.dxf"));
  RunScript(line);
  EXPECT_TRUE(docData().analysed());
  EXPECT_TRUE(docData().floorOutline().isNull());
  EXPECT_EQ(Record(NamesShowing("101").at(0)).linked, ContourAt(0, 0));
}

// A block without one of the attributes is refused; an insert made before
// its block had one says so and keeps an empty value, and the floor goes on.
TEST_F(ConvertMessagesTest, AMissingAttributeRefusesTheBlockOrEmptiesTheValue) {
  Restart(Yes());
  Open(TestDrawing("no_floor.dxf"));
  const std::string refused =
      RunScript(R"(_vantoryconvert "Floor" "Contours" B "OLDTAG" "NAME" "CATEGORY" "DESCRIPTION" No)");
  EXPECT_TRUE(refused.ends_with("\nAttribute \"DESCRIPTION\" not found\n")) << refused;
  EXPECT_FALSE(docData().analysed());
  const std::string transcript =
      RunScript(R"(_vantoryconvert "Floor" "Contours" B "ROOMTAG" "NAME" "CATEGORY" "DESCRIPTION" No)");
  EXPECT_NE(transcript.find("\nAttribute \"DESCRIPTION\" not found\nGetAttributeValue = eKeyNotFound"),
            std::string::npos)
      << transcript;
  EXPECT_TRUE(docData().analysed());
  const fx::rooms::RoomRecord record = Record(StampsNamed("103").at(0));
  EXPECT_EQ(record.category, "Store");
  EXPECT_EQ(record.description, "");
  EXPECT_EQ(record.linked, ContourAt(20, 0));
  EXPECT_EQ(docData().identifiedRoomCount(), 2u);
}

TEST_F(ConvertMessagesTest, LockedLayersAreUnlockedForTheRunAndLockedAgain) {
  Open(TestDrawing("locked.dxf"));
  const AcDbObjectId stamp = StampsNamed("101").at(0);
  // Without unlocking, the records could not be written.
  EXPECT_EQ(fx::rooms::SetXData(stamp, fx::rooms::RoomRecord()), Acad::eOnLockedLayer);
  for (const std::string& line :
       {BlockModeLine(), std::string(R"(_vantoryconvert "Floor" "Contours" T "Names" "Types" "Descriptions")")}) {
    const std::string transcript = RunScript(line);
    EXPECT_TRUE(docData().analysed()) << transcript;
    EXPECT_EQ(docData().identifiedRoomCount(), 1u) << line;
    for (const char* layer : {"Floor", "Contours", "Stamps", "Names"}) EXPECT_TRUE(IsLocked(layer)) << layer;
    EXPECT_FALSE(IsLocked("Types"));
  }
  EXPECT_EQ(Record(stamp).name, "101");
  EXPECT_EQ(Record(NamesShowing("101").at(0)).linked, ContourAt(0, 0));
  EXPECT_EQ(Record(docData().floorOutline()).name, "<*AREA_FLOOR*>");
}

}  // namespace
}  // namespace fx::rooms_test
