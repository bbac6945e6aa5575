// The entry point: what each message code does.
#include <gtest/gtest.h>

#include "app/command_table.h"
#include "app/floorxport_app.h"
#include "app/server_progress.h"
#include "app_test_support.h"
#include "host/command_stack.h"

namespace fx::app_test {
namespace {

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

// Codes 0 to 20 in turn: 1 loads, 2 unloads and leaves no command, reactor
// or callback behind (the menu: menu_test); every code answers kRetOK, and no other code
// changes the loaded module.
TEST_F(EntryPointTest, EveryCodeAnswersOkAndOnlyUnloadRemovesThePlugIn) {
  const auto expect_loaded = [](bool loaded) {
    EXPECT_EQ(RegisteredRows(), loaded ? 2 * static_cast<int>(fx::app::CommandTable().size()) : 0);
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

}  // namespace
}  // namespace fx::app_test
