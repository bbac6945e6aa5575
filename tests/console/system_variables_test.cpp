// System variables (acedGetVar, acedSetVar) and coordinate systems
// (acedTrans) on the console: the header behind the drawing's variables,
// CMDECHO behind commands run with answers, the display system of a
// twisted view and the user system of the header.
#include <gtest/gtest.h>

#include <string>

#include "console_fixture.h"
#include "host/documents.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/dxf_header_variables.h"
#include "host/dxf/imp_database.h"
#include "host/editor.h"

namespace fx::console {
namespace {

resbuf Short(int value) { return {nullptr, RTSHORT, {.rint = static_cast<short>(value)}}; }
resbuf Real(double value) { return {nullptr, RTREAL, {.rreal = value}}; }

class SystemVariablesTest : public ConsoleTest {
 protected:
  void Open(const std::string& path) {
    std::string error;
    ASSERT_TRUE(session_.OpenDrawing(path, &error)) << error;
    terminal_.out.clear();
  }
  AcDbDatabase& database() { return *session_.document()->database(); }

  ModuleRegistry modules_;
  HostSession session_{runner(), modules_};
};

// small_plan.dxf has $INSUNITS 4, $EXTMAX (1, 1, 0), and no $LTSCALE. With
// CMDECHO 0 a command run with answers shows only the prompt it cancels at.
TEST_F(SystemVariablesTest, DrawingVariablesLiveInTheHeaderAndCmdechoInTheSession) {
  resbuf value{};
  EXPECT_EQ(acedGetVar("INSUNITS", &value), RTERROR);  // no drawing yet
  Open(std::string(FX_CONSOLE_TEST_DATA) + "/small_plan.dxf");
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

// twisted_view.dxf: target (100, 50), twist 90 degrees, centre (10, 5) in
// the view. Then a user system turned by 90 degrees about (10, 20).
TEST_F(SystemVariablesTest, TransConvertsBetweenWorldUserViewAndObjectSystems) {
  Open(std::string(FX_TEST_DATA_DIR) + "/export/twisted_view.dxf");
  const resbuf world = Short(0), user = Short(1), display = Short(2), paper = Short(3);
  resbuf below{nullptr, RT3DPOINT, {}};
  below.resval.rpoint[2] = -1;
  const struct {
    const resbuf* from;
    const resbuf* to;
    int disp;
    ads_point point;
    ads_point expected;
  } kCases[] = {
      {&display, &world, 0, {0, 0, 0}, {100, 50, 0}},  // the view's origin is its target
      {&display, &world, 0, {10, 5, 0}, {105, 40, 0}},
      {&world, &display, 0, {105, 40, 0}, {10, 5, 0}},
      {&display, &world, 1, {1, 0, 0}, {0, -1, 0}},  // a displacement is only turned
      {&world, &below, 0, {1, 2, 3}, {-1, 2, -3}},   // the arbitrary axes of -Z
  };
  ads_point result;
  for (const auto& c : kCases) {
    ASSERT_EQ(acedTrans(c.point, c.from, c.to, c.disp, result), RTNORM);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(result[i], c.expected[i], 1e-9) << (&c - kCases) << " " << i;
  }
  EXPECT_EQ(acedTrans(result, &paper, &world, 0, result), RTERROR);

  const char* axes[][4] = {{"$UCSORG", "10", "20", "0"}, {"$UCSXDIR", "0", "1", "0"}, {"$UCSYDIR", "-1", "0", "0"}};
  for (const auto& axis : axes) {
    const fx::dxf::Tag tags[] = {{10, axis[1]}, {20, axis[2]}, {30, axis[3]}};
    fx::dxf::SetHeaderVariable(database().impl()->document(), axis[0], tags);
  }
  ads_point point = {1, 0, 0};
  ASSERT_EQ(acedTrans(point, &user, &world, 0, point), RTNORM);
  EXPECT_NEAR(point[0], 10, 1e-9);
  EXPECT_NEAR(point[1], 21, 1e-9);
}

}  // namespace
}  // namespace fx::console
