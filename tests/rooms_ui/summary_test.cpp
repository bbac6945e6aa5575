// The analysis summary: its counts, the buttons it offers, and where each
// button leads (the room list, the navigation commands).
#include "rooms/summary.h"

#include <gtest/gtest.h>

#include <string>

#include "rooms/navigation.h"
#include "rooms_fixture.h"
#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::rooms_test {
namespace {

using fx::rooms::ProblemKind;

void ShowSummary() { fx::rooms::ShowAnalysisSummary(); }

// Three rooms as an analysis leaves them: one identified, one outside every
// contour, one second identifier in a contour; one empty contour.
class SummaryTest : public RoomsTest {
 protected:
  SummaryTest() {
    Open(BaseDrawing());
    AddCommand("TESTSUMMARY", ShowSummary);
    contour_ = AddRectangle("RoomContours", 0, 0, 10, 10);
    empty_ = AddRectangle("RoomContours", 10, 0, 20, 10);
    room_ = AddInsert("ROOMTAG", 5, 5, {"1", "", ""});
    WriteRecord(room_, "1", contour_);
    outside_ = AddInsert("ROOMTAG", 50, 5, {"2", "", ""});
    WriteRecord(outside_, "2", {}, fx::rooms::kFlagAreaNotFound);
    second_ = AddInsert("ROOMTAG", 6, 6, {"3", "", ""});
    WriteRecord(second_, "3", contour_, fx::rooms::kFlagMultipleIds);
    docData().setRoomIds({room_, outside_, second_});
    docData().setIdentifiedRoomCount(1);
    docData().setAnalysed(true);
    docData().setProblems(ProblemKind::kAreaNotFound, {outside_});
    docData().setProblems(ProblemKind::kEmptyContour, {empty_});
    docData().setProblems(ProblemKind::kMultipleIds, {second_});
  }

  AcDbObjectId contour_, empty_, room_, outside_, second_;
};

const char kSummary[] =
    "\nCommand: TESTSUMMARY\nRoom Analyzing Summary"
    "\nRooms Identified : <1>: "
    "\nArea not found : <1>: "
    "\nDuplicate Numbers : <0>: "
    "\nIntersected contours : <0>: "
    "\nContours Without Identifiers : <1>: "
    "\nRoom With Multiple Identifiers : <1>: "
    "\n[OK/Openroomlist/Areanotfound:/ContoursWithoutIdentifiers:/RoomWithMultipleIdentifiers:]"
    " <OK>: ";

// Buttons only for the kinds of problem found.
TEST_F(SummaryTest, CountsAndTheButtonsOfTheProblemsFound) {
  EXPECT_EQ(RunScript("TESTSUMMARY\n\n\n\n\n\n\nOK"), std::string(kSummary) + "OK\n");
  EXPECT_FALSE(runner().failed());
}

TEST_F(SummaryTest, OpenRoomListSendsTheCommandLine) {
  const std::string out = RunScript("TESTSUMMARY\n\n\n\n\n\n\nopenroomlist\n\nOK");
  EXPECT_EQ(out.substr(0, sizeof kSummary - 1 + 12), std::string(kSummary) + "openroomlist");
  // "vantoryroomlistdlg " runs once the summary's command has ended.
  EXPECT_NE(out.find("openroomlist\nCommand: vantoryroomlistdlg\nRoom List\n"), std::string::npos)
      << out;
  EXPECT_NE(out.find("\nRoom: \n[OK/Cancel/ZoomTo/Properties/DeleteAll/Save/Apply/Help] <OK>: OK"),
            std::string::npos)
      << out;
  EXPECT_FALSE(runner().failed()) << out;
}

// A problem button starts its navigation command; the contour command takes
// the contour layer setting.
TEST_F(SummaryTest, AProblemButtonStartsItsNavigationCommand) {
  ASSERT_TRUE(fx::settings::SetSettingString(fx::settings::kContourLayer, "RoomContours",
                                             fx::settings::kSectionConvertOptions));
  std::string out = RunScript("TESTSUMMARY\n\n\n\n\n\n\nroom");
  EXPECT_NE(out.find("<OK>: room\nCommand: _vantoryZoomToNextMultiIDs\nCommand: _ZOOM\nZoom [Extents/Object]: _O"
                     "\nSelect objects: " + Handle(second_)),
            std::string::npos)
      << out;
  out = RunScript("TESTSUMMARY\n\n\n\n\n\n\nCWI");
  EXPECT_NE(out.find("<OK>: CWI\nCommand: _vantoryZoomToNextEmptyContour\nEnter room contours layer: RoomContours"
                     "\nCommand: _ZOOM"),
            std::string::npos)
      << out;
  EXPECT_EQ(fx::rooms::Cursors().cursor(ProblemKind::kMultipleIds), second_);
  EXPECT_EQ(fx::rooms::Cursors().cursor(ProblemKind::kEmptyContour), empty_);
  EXPECT_FALSE(runner().failed()) << out;
}

}  // namespace
}  // namespace fx::rooms_test
