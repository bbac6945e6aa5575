// System variables (acedGetVar, acedSetVar) and coordinate systems
// (acedTrans) on the console: the header behind the drawing's variables,
// CMDECHO behind commands run with answers, the user system of the header
// and the display system of a twisted view.
#include <gtest/gtest.h>

#include <cstdlib>
#include <numbers>
#include <string>

#include "console_fixture.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/dxf_header_variables.h"
#include "host/dxf/imp_database.h"
#include "host/editor.h"

namespace fx::console {
namespace {

const std::string kSmallPlan = std::string(FX_CONSOLE_TEST_DATA) + "/small_plan.dxf";
// Target (100, 50), twist 90 degrees, centre (10, 5) in the view, 40 by 20.
const std::string kTwistedView = std::string(FX_TEST_DATA_DIR) + "/export/twisted_view.dxf";

resbuf Short(int value) {
  resbuf rb{nullptr, RTSHORT, {}};
  rb.resval.rint = static_cast<short>(value);
  return rb;
}
resbuf Real(double value) {
  resbuf rb{nullptr, RTREAL, {}};
  rb.resval.rreal = value;
  return rb;
}
resbuf Point(double x, double y, double z) {
  resbuf rb{nullptr, RT3DPOINT, {}};
  rb.resval.rpoint[0] = x;
  rb.resval.rpoint[1] = y;
  rb.resval.rpoint[2] = z;
  return rb;
}

class SystemVariablesTest : public ConsoleTest {
 protected:
  void Open(const std::string& path) {
    std::string error;
    ASSERT_TRUE(session_.OpenDrawing(path, &error)) << error;
    terminal_.out.clear();
  }
  AcDbDatabase& database() { return *session_.document()->database(); }
  // Sets a header variable as the file would hold it.
  void SetHeader(const char* name, double x, double y, double z) {
    const std::string values[] = {std::to_string(x), std::to_string(y), std::to_string(z)};
    const fx::dxf::Tag tags[] = {{10, values[0]}, {20, values[1]}, {30, values[2]}};
    fx::dxf::SetHeaderVariable(database().impl()->document(), name, tags);
  }

  ModuleRegistry modules_;
  HostSession session_{runner(), modules_};
};

void ExpectPoint(const ads_point point, double x, double y, double z, const std::string& label) {
  EXPECT_NEAR(point[0], x, 1e-9) << label;
  EXPECT_NEAR(point[1], y, 1e-9) << label;
  EXPECT_NEAR(point[2], z, 1e-9) << label;
}

TEST_F(SystemVariablesTest, DrawingVariablesReadTheHeaderOrTheEditorsDefaults) {
  Open(kSmallPlan);
  const struct {
    const char* name;
    short type;
    double value[3];
  } kCases[] = {
      {"INSUNITS", RTSHORT, {4}},          {"insunits", RTSHORT, {4}},
      {"LTSCALE", RTREAL, {1}},            {"LUNITS", RTSHORT, {2}},
      {"EXTMIN", RT3DPOINT, {0, 0, 0}},    {"EXTMAX", RT3DPOINT, {1, 1, 0}},
      {"UCSXDIR", RT3DPOINT, {1, 0, 0}},   {"CMDECHO", RTSHORT, {1}},
  };
  for (const auto& c : kCases) {
    resbuf value{};
    ASSERT_EQ(acedGetVar(c.name, &value), RTNORM) << c.name;
    ASSERT_EQ(value.restype, c.type) << c.name;
    const double got = c.type == RTSHORT ? value.resval.rint : value.resval.rreal;
    if (c.type == RT3DPOINT) {
      ExpectPoint(value.resval.rpoint, c.value[0], c.value[1], c.value[2], c.name);
    } else {
      EXPECT_EQ(got, c.value[0]) << c.name;
    }
  }
  resbuf page{};
  ASSERT_EQ(acedGetVar("DWGCODEPAGE", &page), RTNORM);
  EXPECT_STREQ(page.resval.rstring, "");  // an R12 file without one
  std::free(page.resval.rstring);
  resbuf unknown{};
  EXPECT_EQ(acedGetVar("NOSUCHVAR", &unknown), RTERROR);
}

TEST_F(SystemVariablesTest, SetsAreCheckedAndLandInTheDrawingsHeader) {
  Open(kSmallPlan);
  const struct {
    const char* name;
    resbuf value;
    int status;
  } kCases[] = {
      {"INSUNITS", Short(6), RTNORM},  {"INSUNITS", Short(21), RTREJ}, {"INSUNITS", Real(5), RTREJ},
      {"LTSCALE", Short(2), RTNORM},   {"LTSCALE", Real(0), RTREJ},    {"LTSCALE", Real(0.5), RTNORM},
      {"EXTMIN", Point(1, 2, 3), RTREJ}, {"VIEWSIZE", Real(3), RTREJ},  {"CMDECHO", Short(2), RTREJ},
      {"NOSUCHVAR", Short(1), RTERROR},
  };
  for (const auto& c : kCases) EXPECT_EQ(acedSetVar(c.name, &c.value), c.status) << c.name;
  EXPECT_EQ(database().insunits(), 6);
  EXPECT_EQ(database().ltscale(), 0.5);
  EXPECT_EQ(database().extmin(), AcGePoint3d(0, 0, 0));
}

TEST_F(SystemVariablesTest, WithoutADrawingOnlyTheSessionsVariablesAnswer) {
  resbuf value{};
  EXPECT_EQ(acedGetVar("INSUNITS", &value), RTERROR);
  const resbuf six = Short(6);
  EXPECT_EQ(acedSetVar("INSUNITS", &six), RTERROR);
  EXPECT_EQ(acedGetVar("CMDECHO", &value), RTNORM);
  EXPECT_EQ(value.resval.rint, 1);
}

// CMDECHO 0 hides a command's name, prompts and answers; a prompt at which
// the answers run out still shows with its "*Cancel*".
TEST_F(SystemVariablesTest, CmdechoDecidesWhetherCommandsRunWithAnswersShowThemselves) {
  Open(kSmallPlan);
  const resbuf off = Short(0);
  ASSERT_EQ(acedSetVar("CMDECHO", &off), RTNORM);
  EXPECT_EQ(acedCommandS(RTSTR, "_ZOOM", RTSTR, "E", RTNONE), RTNORM);
  EXPECT_EQ(terminal_.out, "");
  EXPECT_EQ(acedCommandS(RTSTR, "_ZOOM", RTNONE), RTCAN);
  EXPECT_EQ(terminal_.out, "\nZoom [Extents/Object]: *Cancel*");
  const resbuf on = Short(1);
  ASSERT_EQ(acedSetVar("CMDECHO", &on), RTNORM);
  terminal_.out.clear();
  EXPECT_EQ(acedCommandS(RTSTR, "_ZOOM", RTSTR, "E", RTNONE), RTNORM);
  EXPECT_EQ(terminal_.out, "\nCommand: _ZOOM\nZoom [Extents/Object]: E");
}

TEST_F(SystemVariablesTest, TransConvertsBetweenWorldTheViewAndObjectSystems) {
  Open(kTwistedView);
  const resbuf world = Short(0), user = Short(1), display = Short(2), paper = Short(3);
  const resbuf below = Point(0, 0, -1), none = Point(0, 0, 0);
  const struct {
    const char* label;
    const resbuf* from;
    const resbuf* to;
    int disp;
    double point[3];
    double expected[3];
  } kCases[] = {
      {"the view's origin is its target", &display, &world, 0, {0, 0, 0}, {100, 50, 0}},
      {"the view's centre", &display, &world, 0, {10, 5, 0}, {105, 40, 0}},
      {"and back", &world, &display, 0, {105, 40, 0}, {10, 5, 0}},
      {"a displacement is only turned", &display, &world, 1, {1, 0, 0}, {0, -1, 0}},
      {"the header's user system is the world's", &world, &user, 0, {3, 4, 5}, {3, 4, 5}},
      {"an extrusion downwards", &world, &below, 0, {1, 2, 3}, {-1, 2, -3}},
  };
  for (const auto& c : kCases) {
    ads_point result;
    ASSERT_EQ(acedTrans(c.point, c.from, c.to, c.disp, result), RTNORM) << c.label;
    ExpectPoint(result, c.expected[0], c.expected[1], c.expected[2], c.label);
  }
  const ads_point origin = {0, 0, 0};
  ads_point result;
  EXPECT_EQ(acedTrans(origin, &paper, &world, 0, result), RTERROR);
  EXPECT_EQ(acedTrans(origin, &world, &none, 0, result), RTERROR);
}

// A user system turned by 90 degrees about (10, 20): the view's centre,
// (105, 40) in the world, reads in it as VIEWCTR.
TEST_F(SystemVariablesTest, TheUserSystemComesFromTheHeaderAndTheViewFromTheActiveViewport) {
  Open(kTwistedView);
  SetHeader("$UCSORG", 10, 20, 0);
  SetHeader("$UCSXDIR", 0, 1, 0);
  SetHeader("$UCSYDIR", -1, 0, 0);
  const resbuf world = Short(0), user = Short(1);
  ads_point point = {1, 0, 0};
  ASSERT_EQ(acedTrans(point, &user, &world, 0, point), RTNORM);
  ExpectPoint(point, 10, 21, 0, "user to world");
  resbuf value{};
  ASSERT_EQ(acedGetVar("VIEWCTR", &value), RTNORM);
  ExpectPoint(value.resval.rpoint, 20, -95, 0, "VIEWCTR");
  ASSERT_EQ(acedGetVar("VIEWSIZE", &value), RTNORM);
  EXPECT_EQ(value.resval.rreal, 20);
  ASSERT_EQ(acedGetVar("VIEWTWIST", &value), RTNORM);
  EXPECT_NEAR(value.resval.rreal, std::numbers::pi / 2, 1e-12);
}

}  // namespace
}  // namespace fx::console
