// The entry point: what each message code does, and the application name a
// loaded drawing gets.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/command_table.h"
#include "app/floorxport_app.h"
#include "app/server_progress.h"
#include "app_test_support.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/host_session.h"
#include "host/menu.h"

namespace fx::app_test {
namespace {

int PlanVaultPopupsOnMenuBar() {
  int found = 0;
  for (int i = 0; i < acedMenuBar()->count(); ++i) {
    if (acedMenuBar()->item(i)->nameNoMnemonic() == "PlanVault") ++found;
  }
  return found;
}

// Commands the host finds by either name.
int RegisteredRows() {
  int found = 0;
  for (const AcRxCommandEntry& row : fx::app::CommandTable()) {
    found += acedRegCmds()->lookupGlobalCmd(row.global_name) != nullptr;
    found += acedRegCmds()->lookupLocalCmd(row.local_name) != nullptr;
  }
  return found;
}

using EntryPointTest = AppTest;

// Codes 0 to 20 in turn: 1 loads, 2 unloads and leaves no command, menu,
// reactor or callback behind; every code answers kRetOK, and no other code
// changes the loaded module.
TEST_F(EntryPointTest, EveryCodeAnswersOkAndOnlyUnloadRemovesThePlugIn) {
  const auto expect_loaded = [](bool loaded) {
    EXPECT_EQ(RegisteredRows(), loaded ? 2 * static_cast<int>(fx::app::CommandTable().size()) : 0);
    EXPECT_EQ(PlanVaultPopupsOnMenuBar(), loaded ? 1 : 0);
    EXPECT_EQ(fx::app::TheApp().drawingReactor() != nullptr, loaded);
    EXPECT_EQ(fx::app::GetServerProgressCallbacks().start != nullptr, loaded);
    EXPECT_EQ(fx::app::GetServerProgressCallbacks().position != nullptr, loaded);
  };
  for (int code = 0; code <= 20; ++code) {
    EXPECT_EQ(acrxEntryPoint(static_cast<AcRx::AppMsgCode>(code), &packet_), AcRx::kRetOK) << code;
  }
  expect_loaded(false);
  ASSERT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, &packet_), AcRx::kRetOK);
  expect_loaded(true);
  for (int code = 3; code <= 20; ++code) {
    EXPECT_EQ(acrxEntryPoint(static_cast<AcRx::AppMsgCode>(code), &packet_), AcRx::kRetOK) << code;
  }
  expect_loaded(true);
  EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, &packet_), AcRx::kRetOK);
  expect_loaded(false);
  EXPECT_EQ(terminal_.out, "");
}

TEST_F(EntryPointTest, LoadingADrawingRegistersTheApplicationName) {
  fx::console::HostSession session(runner(), modules_);
  std::string error;
  ASSERT_TRUE(session.OpenDrawing(SampleFloor(), &error)) << error;
  AcDbRegAppTable* table = nullptr;
  ASSERT_EQ(session.document()->database()->getRegAppTable(table, AcDb::kForRead), Acad::eOk);
  EXPECT_TRUE(table->has("VantoryApp"));
  table->close();
}

}  // namespace
}  // namespace fx::app_test
