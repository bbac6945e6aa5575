// The zoom-to-next commands on a drawing whose problem lists the test sets:
// the next-and-wrap rule and the cursor of each kind.
#include "rooms/navigation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "rooms_fixture.h"

namespace fx::rooms_test {
namespace {

using fx::rooms::ProblemKind;

class NavigationTest : public RoomsTest {
 protected:
  NavigationTest() {
    Open(BaseDrawing());
    for (int i = 0; i < 3; ++i) {
      contours_.push_back(AddRectangle("RoomContours", i * 10, 0, i * 10 + 10, 10));
    }
    other_layer_ = AddRectangle("FloorArea", 0, 0, 30, 10);
  }

  // The handle each zoom of `out` selected, in order.
  static std::vector<std::string> Zoomed(const std::string& out) {
    std::vector<std::string> handles;
    const std::string key = "\nSelect objects: ";
    for (size_t at = out.find(key); at != std::string::npos; at = out.find(key, at + 1)) {
      const size_t start = at + key.size();
      const size_t end = out.find('\n', start);
      const std::string handle = out.substr(start, end - start);
      if (!handle.empty()) handles.push_back(handle);
    }
    return handles;
  }
  std::vector<std::string> Handles(const std::vector<AcDbObjectId>& ids) const {
    std::vector<std::string> handles;
    for (AcDbObjectId id : ids) handles.push_back(Handle(id));
    return handles;
  }

  std::vector<AcDbObjectId> contours_;
  AcDbObjectId other_layer_;
};

// Each run visits the next entry of its kind's list and wraps to the first.
TEST_F(NavigationTest, EachKindHasItsOwnListAndCursor) {
  docData().setProblems(ProblemKind::kAreaNotFound, contours_);
  docData().setProblems(ProblemKind::kDuplicateNumber, {contours_[2], contours_[1]});
  docData().setProblems(ProblemKind::kIntersectedContour, {contours_[1]});
  docData().setProblems(ProblemKind::kMultipleIds, {contours_[0], contours_[2]});
  const std::string out = RunScript(
      "vantoryZoomToNextAreaNotFound\nvantoryZoomToNextAreaNotFound\nvantoryZoomToNextDuplicateNumber\n"
      "vantoryZoomToNextMultiIDs\nvantoryZoomToNextIntersectContour\nvantoryZoomToNextDuplicateNumber\n"
      "vantoryZoomToNextAreaNotFound\n_ZoomToNextAreaNotFound\nvantoryZoomToNextMultiIDs\n"
      "vantoryZoomToNextIntersectContour");
  EXPECT_EQ(Zoomed(out), Handles({contours_[0], contours_[1], contours_[2], contours_[0], contours_[1],
                                  contours_[1], contours_[2], contours_[0], contours_[2], contours_[1]}))
      << out;
  EXPECT_EQ(out.find("Can't zoom"), std::string::npos) << out;
  EXPECT_FALSE(runner().failed());
}

TEST_F(NavigationTest, ANewAnalysisWithoutTheRememberedObjectStartsAtTheFirst) {
  docData().setProblems(ProblemKind::kAreaNotFound, contours_);
  RunScript("vantoryZoomToNextAreaNotFound\nvantoryZoomToNextAreaNotFound");
  EXPECT_EQ(fx::rooms::Cursors().cursor(ProblemKind::kAreaNotFound), contours_[1]);
  docData().setProblems(ProblemKind::kAreaNotFound, {contours_[2], contours_[0]});
  EXPECT_EQ(Zoomed(RunScript("vantoryZoomToNextAreaNotFound")), Handles({contours_[2]}));
}

TEST_F(NavigationTest, TheEmptyContourCommandAsksForTheLayerAndWalksItsContours) {
  // Listed: the three contours and the outline on another layer; the
  // command keeps those on the layer it is given, in model-space order.
  docData().setProblems(ProblemKind::kEmptyContour,
                        {contours_[2], other_layer_, contours_[0], contours_[1]});
  const std::string out = RunScript(
      "vantoryZoomToNextEmptyContour\nRoomContours\n"
      "vantoryZoomToNextEmptyContour\nroomcontours\n"
      "vantoryZoomToNextEmptyContour\nRoomContours\n"
      "vantoryZoomToNextEmptyContour\nRoomContours");
  EXPECT_EQ(Zoomed(out), Handles({contours_[0], contours_[1], contours_[2], contours_[0]})) << out;
  const std::string start =
      "\nCommand: vantoryZoomToNextEmptyContour\nEnter room contours layer: RoomContours"
      "\nCommand: _ZOOM";
  EXPECT_EQ(out.substr(0, start.size()), start);
}

}  // namespace
}  // namespace fx::rooms_test
