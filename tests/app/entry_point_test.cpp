// The entry point: the command table registered under both names with its
// flags, what each message code does, and the application name a loaded
// drawing gets.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/floorxport_app.h"
#include "app/server_progress.h"
#include "app_test_support.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/host_session.h"
#include "host/menu.h"

namespace fx::app_test {
namespace {

// The 23 rows as the editor's users know them: global and local names and
// flags, in order.
struct Row {
  const char* global_name;
  const char* local_name;
  int32_t flags;
};
constexpr Row kRows[] = {
    {"_expdlg", "vantoryexpdlg", 0},
    {"_export", "vantoryexport", 1},
    {"_convertdlg", "vantorconvertdlg", 1},
    {"_convert", "vantoryconvert", 0},
    {"_roomlistdlg", "vantoryroomlistdlg", 0},
    {"_ExportToFile", "vantoryExportToFile", 0},
    {"_addmarker", "vantoryaddmarker", 1},
    {"_ReplaceBlock", "vantoryReplaceBlock", 0},
    {"_ShowAbout", "vantoryShowAbout", 0},
    {"_OpenFrom", "vantoryOpenFrom", 0},
    {"_SendTo", "vantorySendTo", 0},
    {"_DrawingOverkill", "vantoryDrawingOverkill", 0},
    {"_DrawingAudit", "vantoryDrawingAudit", 0},
    {"_DrawingPurge", "vantoryDrawingPurge", 0},
    {"_DrawingUnits", "vantoryDrawingUnits", 0},
    {"_DrawingExtents", "vantoryDrawingExtents", 0},
    {"_DrawingLineweight", "vantoryDrawingLineweight", 0},
    {"_ZoomToNextEmptyContour", "vantoryZoomToNextEmptyContour", 1},
    {"_ZoomToNextAreaNotFound", "vantoryZoomToNextAreaNotFound", 1},
    {"_ZoomToNextDuplicateNumber", "vantoryZoomToNextDuplicateNumber", 1},
    {"_ZoomToNextIntersectContour", "vantoryZoomToNextIntersectContour", 1},
    {"_ZoomToNextMultiIDs", "vantoryZoomToNextMultiIDs", 1},
    {"_UpdateVantoryData", "vantoryUpdateVantoryData", 1},
};

int PlanVaultPopupsOnMenuBar() {
  int found = 0;
  for (int i = 0; i < acedMenuBar()->count(); ++i) {
    if (acedMenuBar()->item(i)->nameNoMnemonic() == "PlanVault") ++found;
  }
  return found;
}

int RegisteredRows() {
  int found = 0;
  for (const Row& row : kRows) {
    found += acedRegCmds()->lookupGlobalCmd(row.global_name) != nullptr;
    found += acedRegCmds()->lookupLocalCmd(row.local_name) != nullptr;
  }
  return found;
}

using EntryPointTest = AppTest;

TEST_F(EntryPointTest, TheRegisteredRowsResolveByBothNamesWithTheirFlags) {
  ASSERT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, &packet_), AcRx::kRetOK);
  ASSERT_EQ(fx::app::TheApp().commands().size(), std::size(kRows));
  for (size_t i = 0; i < std::size(kRows); ++i) {
    const Row& row = kRows[i];
    const AcRxCommandEntry& entry = fx::app::TheApp().commands()[i];
    EXPECT_STREQ(entry.global_name, row.global_name);
    AcEdCommand* by_global = acedRegCmds()->lookupGlobalCmd(row.global_name);
    ASSERT_NE(by_global, nullptr) << row.global_name;
    EXPECT_EQ(acedRegCmds()->lookupLocalCmd(row.local_name), by_global) << row.local_name;
    EXPECT_EQ(by_global->groupName(), "PVFloorXport");
    EXPECT_EQ(by_global->globalName(), row.global_name);
    EXPECT_EQ(by_global->localName(), row.local_name);
    EXPECT_EQ(by_global->commandFlags(), row.flags) << row.global_name;
    EXPECT_NE(by_global->functionAddr(), nullptr);
  }
  EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, &packet_), AcRx::kRetOK);
}

// Codes 0 to 20 in turn: 1 loads, 2 unloads and leaves no command, menu,
// reactor or callback behind; every code answers kRetOK, and no other code
// changes the loaded module.
TEST_F(EntryPointTest, EveryCodeAnswersOkAndOnlyUnloadRemovesThePlugIn) {
  const auto expect_loaded = [](bool loaded) {
    EXPECT_EQ(RegisteredRows(), loaded ? 2 * static_cast<int>(std::size(kRows)) : 0);
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
