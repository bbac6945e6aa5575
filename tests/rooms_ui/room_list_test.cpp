// The room list: its rows from the document's rooms or, for a drawing
// analysed earlier, from the records on its entities; zoom, properties and
// apply, Delete All, the report it saves.
#include "rooms/room_list.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "program_runner.h"
#include "rooms/marker.h"
#include "rooms/summary.h"
#include "rooms_fixture.h"

namespace fx::rooms_test {
namespace {

using fx::rooms::kFlagAreaNotFound;
using fx::rooms::kFlagDuplicate;

// rooms_base.dxf with a floor of 40 x 20, contours of 100 and 50, and three
// rooms: a reference in the first, a duplicate text in the second, one in none.
class RoomListTest : public RoomsTest {
 protected:
  RoomListTest() {
    Open(BaseDrawing());
    floor_ = AddRectangle("FloorArea", 0, 0, 40, 20);
    WriteRecord(floor_, fx::rooms::kFloorOutlineName);
    contour_a_ = AddRectangle("RoomContours", 0, 0, 10, 10);
    contour_b_ = AddRectangle("RoomContours", 10, 0, 20, 5);
    tag_101_ = AddInsert("ROOMTAG", 5, 5, {"101", "Office", "Corner, north"});
    WriteRecord(tag_101_, "101", contour_a_, 0, "Office", "Corner, north");
    text_102_ = AddText("102", 15, 2);
    WriteRecord(text_102_, "102", contour_b_, kFlagDuplicate, "Meeting", "", "Glass wall");
    tag_103_ = AddInsert("ROOMTAG", 35, 5, {"103", "Office", "Caf\u00e9"});
    WriteRecord(tag_103_, "103", {}, kFlagAreaNotFound, "Office", "Caf\u00e9");
  }

  // The list as the console shows it in the room prompt, up to "Room" (the
  // dialog's title "Room List" comes before it once, when the dialog opens).
  static std::string Listing(const std::string& rows, const std::string& floor = "800.0000") {
    return "\n   #  Name | Category | Description | Comment | Area | Error description" + rows +
           "\nFloor area: " + floor + "\nRoom";
  }
  static std::string ThreeRows() {
    return "\n   1  101 | Office | Corner, north |  | 100.0000 |"
           "\n   2  102 | Meeting |  | Glass wall | 50.0000 | Duplicate number"
           "\n   3  103 | Office | Caf\u00e9 |  | Not found | Area not found";
  }

  AcDbObjectId floor_, contour_a_, contour_b_, tag_101_, text_102_, tag_103_;
};

const std::string kButtons = "\n[OK/Cancel/ZoomTo/Properties/DeleteAll/Save/Apply/Help] <OK>: ";

TEST_F(RoomListTest, ADrawingAnalysedEarlierListsTheRoomsOnItsEntities) {
  const std::string out = RunScript("vantoryroomlistdlg\n\nOK");
  EXPECT_EQ(out, "\nCommand: vantoryroomlistdlg\nRoom List" + Listing(ThreeRows()) + ": " +
                     kButtons + "OK\n");
  // The rooms read become the document's rooms.
  EXPECT_EQ(docData().roomIds(), (std::vector<AcDbObjectId>{tag_101_, text_102_, tag_103_}));
}

TEST_F(RoomListTest, ZoomToZoomsToTheSelectedRoomsEntity) {
  const std::string out = RunScript("vantoryroomlistdlg\n\nzoomto\n2\nzoomto\n\ncancel");
  const std::string zoom =
      "\nCommand: _ZOOM\nZoom [Extents/Object]: _O\nSelect objects: " + Handle(text_102_) +
      "\n1 found, 1 total\nSelect objects: ";
  EXPECT_EQ(out, "\nCommand: vantoryroomlistdlg\nRoom List" + Listing(ThreeRows()) + ": " +
                     kButtons + "zoomto" +  // no room selected: nothing happens
                     Listing(ThreeRows()) + ": 2" + kButtons + "zoomto" + zoom +
                     Listing(ThreeRows()) + " <2>: " + kButtons + "cancel\n");
  EXPECT_FALSE(runner().failed());
}

TEST_F(RoomListTest, ARoomNumberOutsideTheListIsRefused) {
  const std::string out = RunScript("vantoryroomlistdlg\n4\n0\nOK");
  EXPECT_NE(
      out.find(": 4\nNo room 4: the list has 3 rooms." + Listing(ThreeRows()) + ": 0" + kButtons),
      std::string::npos)
      << out;
}

// Apply and OK write the edits, Cancel drops those not applied.
TEST_F(RoomListTest, PropertiesEditsARoomThatApplyOrOkWrites) {
  const std::string out = RunScript(
      "vantoryroomlistdlg\n2\nproperties\n102a\n\n\nMoved\n\nOK\n\napply\n1\nproperties\nX\n\n\n\n\nOK\n\ncancel");
  EXPECT_NE(
      out.find(kButtons + "properties\nRoom Properties\n&Name <102>: 102a"
                          "\n&Category <Meeting>: \n&Description: \nCo&mment <Glass wall>: Moved"
                          "\nArea <50.0000>: \n[OK/Cancel] <OK>: OK"),
      std::string::npos)
      << out;
  EXPECT_NE(out.find("\n   2  102a | Meeting |  | Moved | 50.0000 | Duplicate number"),
            std::string::npos);
  fx::rooms::RoomRecord record;
  ASSERT_TRUE(fx::rooms::ReadRoomRecord(text_102_, &record));
  EXPECT_EQ(record.name + "|" + record.category + "|" + record.comment, "102a|Meeting|Moved");
  EXPECT_EQ(record.linked, contour_b_);
  EXPECT_EQ(record.flags, kFlagDuplicate);
  // The text that showed the room's name shows the new one.
  AcDbObjectPointer<AcDbText> text(text_102_, AcDb::kForRead);
  EXPECT_EQ(text->textString(), "102a");
  ASSERT_TRUE(fx::rooms::ReadRoomRecord(tag_101_, &record));
  EXPECT_EQ(record.name, "101");
  RunScript("vantoryroomlistdlg\n3\nproperties\n\n\n\nNo contour\n\nOK\n\nOK");
  ASSERT_TRUE(fx::rooms::ReadRoomRecord(tag_103_, &record));
  EXPECT_EQ(record.name + "|" + record.comment, "103|No contour");
}

TEST_F(RoomListTest, DeleteAllErasesTheMarkersAndEmptiesTheListOnlyIfConfirmed) {
  RunScript("_vantoryaddmarker 30,15\nM1\n\n\n\n\nOK\n_vantoryaddmarker 31,15\nM2\n\n\n\n\nOK");
  const std::vector<AcDbObjectId> markers = fx::rooms::MarkerIds(session_->document());
  ASSERT_EQ(markers.size(), 2u);
  const std::vector<AcDbObjectId> before = ModelSpace();
  std::string out = RunScript("vantoryroomlistdlg\n\ndeleteall\n\ncancel");
  EXPECT_NE(out.find("deleteall\n[Warning: Room List] Markers will be deleted. Continue? "
                     "[OK/Cancel] -> Cancel (default)" +
                     Listing(ThreeRows() + "\n   4  M1 |  |  |  | Not found |\n   5  M2 |  |  |  | Not found |")),
            std::string::npos)
      << out;
  EXPECT_EQ(ModelSpace(), before);
  fx::console::AnswerPolicy policy;
  std::string error;
  ASSERT_TRUE(policy.AddAnswer("Markers will be deleted. Continue?=OK", &error)) << error;
  Restart(std::move(policy));
  out = RunScript("vantoryroomlistdlg\n\ndeleteall\n\nOK");
  EXPECT_NE(out.find("deleteall\n[Warning: Room List] Markers will be deleted. Continue? "
                     "[OK/Cancel] -> OK" +
                     Listing("") + ": " + kButtons + "OK"),
            std::string::npos)
      << out;
  for (AcDbObjectId marker : markers) EXPECT_TRUE(marker.isErased());
  EXPECT_FALSE(tag_101_.isErased());  // only markers go
  EXPECT_TRUE(fx::rooms::MarkerIds(session_->document()).empty());
  EXPECT_TRUE(docData().roomIds().empty());
  // The list stays empty: the rooms are not read from the drawing again.
  EXPECT_NE(RunScript("vantoryroomlistdlg\n\nOK").find(Listing("")), std::string::npos);
}

TEST_F(RoomListTest, SaveAddsTheExtensionAndAsksBeforeReplacingAFile) {
  const std::string path = dir_ + "/rooms";
  std::filesystem::create_directories(dir_);
  RunScript("vantoryroomlistdlg\n\nsave\n" + path + "\n\n\nOK");
  EXPECT_TRUE(std::filesystem::exists(path + ".csv"));
  { std::ofstream(path + ".csv") << "keep"; }
  const std::string out = RunScript("vantoryroomlistdlg\n\nsave\n" + path + "\n\n\ncancel\n\nOK");
  EXPECT_NE(out.find("\n[Warning: Confirm Save As] rooms.csv already exists.\nDo you want to "
                     "replace it? [Yes/No] -> No (default)\nFile &name <" +
                     path + ">: \n[Save/Cancel] <Save>: cancel"),
            std::string::npos)
      << out;
  EXPECT_EQ(fx::cli_test::ReadFile(path + ".csv"), "keep");
}

TEST_F(RoomListTest, AReportThatCannotBeWrittenIsSkippedSilently) {
  const std::string path = dir_ + "/no-such-folder/rooms.csv";
  const std::string out = RunScript("vantoryroomlistdlg\n\nsave\n" + path + "\n\n\nOK");
  EXPECT_NE(out.find("File &name <rooms_base.csv>: " + path + "\n[Save/Cancel] <Save>: " +
                     Listing(ThreeRows()) + ": " + kButtons + "OK\n"),
            std::string::npos)
      << out;
  EXPECT_FALSE(std::filesystem::exists(dir_ + "/no-such-folder"));
  EXPECT_FALSE(runner().failed());
}

// A room in no contour and one in a contour of no area: "Area not found"
// in their properties, though the list shows 0 for the second.
TEST_F(RoomListTest, TheAreaOfARoomWithoutOneInItsProperties) {
  const AcDbObjectId flat = AddRectangle("RoomContours", 20, 0, 30, 0);
  const AcDbObjectId tag = AddInsert("ROOMTAG", 25, 0, {"104", "", ""});
  WriteRecord(tag, "104", flat);
  for (const char* room : {"3", "4"}) {
    const std::string out = RunScript("vantoryroomlistdlg\n" + std::string(room) +
                                      "\nproperties\n\n\n\n\n\ncancel\n\ncancel");
    EXPECT_NE(out.find("\n   4  104 |  |  |  | 0.0000 |\n"), std::string::npos) << out;
    EXPECT_NE(out.find("\nArea <Area not found>: "), std::string::npos) << out;
  }
}

}  // namespace
}  // namespace fx::rooms_test
