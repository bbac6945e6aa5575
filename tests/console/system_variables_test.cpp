// System variables (acedGetVar, acedSetVar) on the console: the header
// behind the drawing's variables, CMDECHO behind commands run with answers.
// The display system of a twisted view, as the export converts it to the
// world (acedTrans), is tested end to end in tests/export.
#include <gtest/gtest.h>

#include <string>

#include "console_fixture.h"
#include "host/documents.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
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

}  // namespace
}  // namespace fx::console
