// The host commands ZOOM and UNITS and the system variables (acedGetVar,
// acedSetVar) on a small drawing made for these tests (data/small_plan.dxf:
// lines from (0,0) to (100,50), a line from (10,10) to (20,30) with handle
// 102, a circle of radius 10 at (150,40); the active view is centred on
// (5,5), 10 high and 20 wide). ZOOM typed in a script, and on the sample
// floor, is run end to end in tests/cli/cli_test.cpp; the display system of
// a twisted view, as the export converts it (acedTrans), in tests/export.
#include <gtest/gtest.h>

#include <string>

#include "console_fixture.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/active_view.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "host/editor.h"

namespace fx::console {
namespace {

const std::string kSmallPlan = std::string(FX_CONSOLE_TEST_DATA) + "/small_plan.dxf";

// The common cases are the ZOOM commands below and in tests/cli; these are the edges.
TEST(FitViewTest, ShowsTheExtentsWholeWithTheViewsAspectRatio) {
  struct Case {
    View current;
    AcDbExtents extents;
    View expected;
  };
  const Case cases[] = {
      {{{0, 0}, 10, 20}, {{5, 5, 0}, {5, 5, 0}}, {{5, 5}, 10, 20}},        // a point
      {{{0, 0}, 0, 0}, {{0, 0, 0}, {4, 2, 0}}, {{2, 1}, 4, 4}},            // no ratio
      {{{0, 0}, 30, 10}, {{-1, -1, 0}, {1, 2, 0}}, {{0, 0.5}, 6, 2}},      // portrait
  };
  for (const Case& c : cases) {
    View view = FitView(c.current, c.extents);
    EXPECT_DOUBLE_EQ(view.center.x, c.expected.center.x);
    EXPECT_DOUBLE_EQ(view.center.y, c.expected.center.y);
    EXPECT_DOUBLE_EQ(view.height, c.expected.height);
    EXPECT_DOUBLE_EQ(view.width, c.expected.width);
  }
}

class HostCommandsTest : public ConsoleTest {
 protected:
  void Open(const std::string& path) {
    std::string error;
    ASSERT_TRUE(session_.OpenDrawing(path, &error)) << error;
    terminal_.out.clear();
  }
  AcDbDatabase& database() { return *session_.document()->database(); }
  View ActiveView() {
    View view;
    EXPECT_EQ(GetActiveView(database(), view), Acad::eOk);
    return view;
  }
  ModuleRegistry modules_;
  HostSession session_{runner(), modules_};
};

void ExpectView(const View& view, double x, double y, double height, double width) {
  EXPECT_DOUBLE_EQ(view.center.x, x);
  EXPECT_DOUBLE_EQ(view.center.y, y);
  EXPECT_DOUBLE_EQ(view.height, height);
  EXPECT_DOUBLE_EQ(view.width, width);
}

// The view looks at its target (100, 50) turned by 90 degrees: the box of
// x 90 to 120, y 30 to 50 is 20 wide and 30 high in it, centred on (10, 5).
TEST_F(HostCommandsTest, ZoomExtentsFitsTheBoxTheViewSees) {
  Open(std::string(FX_TEST_DATA_DIR) + "/export/twisted_view.dxf");
  Run("ZOOM E");
  ExpectView(ActiveView(), 10, 5, 30, 60);
}

void ZoomToLine() {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  AcDbObjectId id;
  ASSERT_EQ(database->getAcDbObjectId(id, false, AcDbHandle("102")), Acad::eOk);
  ads_name name;
  ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk);
  // As the plug-in zooms to an object: no Enter after the selection.
  int result = acedCommandS(RTSTR, "_ZOOM", RTSTR, "_O", RTENAME, name, RTNONE);
  acutPrintf("\nResult %d", result);
}

TEST_F(HostCommandsTest, ZoomObjectThroughCommandWithAnEntityName) {
  AddCommand("ZOOMTOLINE", ZoomToLine);
  Open(kSmallPlan);
  EXPECT_EQ(Run("ZOOMTOLINE"),
            "\nCommand: ZOOMTOLINE\nCommand: _ZOOM\nZoom [Extents/Object]: _O"
            "\nSelect objects: 102\n1 found, 1 total\nSelect objects: \nResult 5100\n");
  ExpectView(ActiveView(), 15, 20, 20, 40);
}

// Found on an R12 drawing from another program: it has no viewport table.
TEST_F(HostCommandsTest, ADrawingWithoutAViewportIsNoFailure) {
  Open(std::string(FX_CONSOLE_TEST_DATA) + "/no_viewport.dxf");
  EXPECT_EQ(Run("ZOOM E"),
            "\nCommand: ZOOM\nZoom [Extents/Object]: E"
            "\nThe drawing has no *ACTIVE viewport: no view to change.\n");
  EXPECT_TRUE(runner().problems().empty());
  EXPECT_EQ(database().extmax(), AcGePoint3d(160, 50, 0));
}

TEST_F(HostCommandsTest, HostCommandsNeedADrawing) {
  EXPECT_EQ(Run("ZOOM E"), "\nCommand: ZOOM\nNo drawing is open.\n");
  EXPECT_EQ(runner().problems(),
            std::vector<std::string>{"command ZOOM failed; the rest of the script was skipped"});
}

resbuf Short(int value) { return {nullptr, RTSHORT, {.rint = static_cast<short>(value)}}; }
resbuf Real(double value) { return {nullptr, RTREAL, {.rreal = value}}; }

// small_plan.dxf has $INSUNITS 4, $EXTMAX (1, 1, 0), and no $LTSCALE. With
// CMDECHO 0 a command run with answers shows only the prompt it cancels at.
TEST_F(HostCommandsTest, DrawingVariablesLiveInTheHeaderAndCmdechoInTheSession) {
  resbuf value{};
  EXPECT_EQ(acedGetVar("INSUNITS", &value), RTERROR);  // no drawing yet
  Open(kSmallPlan);
  ASSERT_EQ(acedGetVar("insunits", &value), RTNORM);
  EXPECT_EQ(value.resval.rint, 4);
  ASSERT_EQ(acedGetVar("EXTMAX", &value), RTNORM);
  EXPECT_EQ(value.resval.rpoint[1], 1.0);
  const struct {
    const char* name;
    resbuf value;
    int status;
  } kSets[] = {
      {"INSUNITS", Short(6), RTNORM}, {"INSUNITS", Short(21), RTREJ},  {"INSUNITS", Real(5), RTREJ},
      {"LTSCALE", Real(0), RTREJ},    {"LTSCALE", Real(0.5), RTNORM},  {"EXTMIN", Short(1), RTREJ},
      {"CMDECHO", Short(2), RTREJ},   {"NOSUCHVAR", Short(1), RTERROR}, {"CMDECHO", Short(0), RTNORM},
  };
  for (const auto& c : kSets) EXPECT_EQ(acedSetVar(c.name, &c.value), c.status) << c.name;
  EXPECT_EQ(database().insunits(), 6);
  EXPECT_EQ(database().ltscale(), 0.5);
  EXPECT_EQ(acedCommandS(RTSTR, "_ZOOM", RTSTR, "E", RTNONE), RTNORM);
  EXPECT_EQ(acedCommandS(RTSTR, "_ZOOM", RTNONE), RTCAN);
  EXPECT_EQ(terminal_.out, "\nZoom [Extents/Object]: *Cancel*");
}

}  // namespace
}  // namespace fx::console
