// The export frame's two editor-driven ways: the zoom to extents, run
// without its prompts, and the active view converted from its display
// coordinates to world ones.
#include <gtest/gtest.h>

#include "export/export_frame.h"
#include "export_fixture.h"
#include "host/editor.h"

namespace fx::export_test {
namespace {

int CommandEcho() {
  resbuf value{};
  EXPECT_EQ(acedGetVar("CMDECHO", &value), RTNORM);
  return value.resval.rint;
}

void SetCommandEcho(int echo) {
  resbuf value{nullptr, RTSHORT, {}};
  value.resval.rint = static_cast<short>(echo);
  ASSERT_EQ(acedSetVar("CMDECHO", &value), RTNORM);
}

void ExpectFrame(const fx::svg::Frame& frame, double min_x, double min_y, double max_x, double max_y) {
  EXPECT_NEAR(frame.min.x, min_x, 1e-9);
  EXPECT_NEAR(frame.min.y, min_y, 1e-9);
  EXPECT_NEAR(frame.max.x, max_x, 1e-9);
  EXPECT_NEAR(frame.max.y, max_y, 1e-9);
}

class ExportFrameTest : public ExportTest {};

// The zoom leaves nothing on the command line, and CMDECHO as it found it.
TEST_F(ExportFrameTest, TheZoomToExtentsRunsQuietlyAndRestoresCmdecho) {
  Open();
  for (int echo : {1, 0}) {
    SetCommandEcho(echo);
    const size_t before = terminal_.out.size();
    fx::svg::Frame frame;
    ASSERT_TRUE(fx::exports::ExtentsFrame(db(), frame));
    ExpectFrame(frame, -3, -2, 21, 11);
    EXPECT_EQ(terminal_.out.substr(before), "");
    EXPECT_EQ(CommandEcho(), echo);
  }
}

// The view's centre (10, 5) is in a display system turned by 90 degrees
// about the target (100, 50): its 40 by 20 corners land 20 wide and 40 high.
TEST_F(ExportFrameTest, TheActiveViewIsConvertedFromDisplayToWorldCoordinates) {
  Open(std::string(FX_EXPORT_TEST_DATA) + "/twisted_view.dxf");
  fx::svg::Frame frame;
  ASSERT_TRUE(fx::exports::ActiveViewFrame(db(), frame));
  ExpectFrame(frame, 95, 20, 115, 60);
  Open();  // a plan view: display and world coordinates agree
  ASSERT_TRUE(fx::exports::ActiveViewFrame(db(), frame));
  ExpectFrame(frame, 30, 15, 70, 35);
}

}  // namespace
}  // namespace fx::export_test
