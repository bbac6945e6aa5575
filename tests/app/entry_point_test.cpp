// The entry point and the application base classes: which handler each
// message code reaches, and how the command table is registered and removed.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/arx_app.h"
#include "app/floorxport_app.h"
#include "app/server_progress.h"
#include "app_test_support.h"
#include "host/command_stack.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/host_session.h"
#include "host/menu.h"

namespace fx::app_test {
namespace {

std::vector<std::string> g_calls;

// Records which handler a message reached and with which packet.
class RecordingApp : public AcRxDbxApp {
 public:
  RecordingApp() : AcRxDbxApp(true, true) {}
#define FX_RECORD(handler)                          \
  AcRx::AppRetCode handler(void* packet) override { \
    g_calls.push_back(#handler);                    \
    EXPECT_EQ(packet, &g_calls);                    \
    return AcRx::kRetError;                         \
  }
  FX_RECORD(On_kInitAppMsg)
  FX_RECORD(On_kUnloadAppMsg)
  FX_RECORD(On_kLoadDwgMsg)
  FX_RECORD(On_kUnloadDwgMsg)
  FX_RECORD(On_kInvkSubrMsg)
  FX_RECORD(On_kCfgMsg)
  FX_RECORD(On_kEndMsg)
  FX_RECORD(On_kQuitMsg)
  FX_RECORD(On_kSaveMsg)
  FX_RECORD(On_kDependencyMsg)
  FX_RECORD(On_kNoDependencyMsg)
  FX_RECORD(On_kOleUnloadAppMsg)
  FX_RECORD(On_kPreQuitMsg)
  FX_RECORD(On_kInitDialogMsg)
  FX_RECORD(On_kEndDialogMsg)
  FX_RECORD(On_kNullMsg)
#undef FX_RECORD
  void RegisterServerComponents() override { g_calls.push_back("RegisterServerComponents"); }
};

TEST(DispatchTest, EachCodeReachesItsHandlerAndCodesFrom16OnReachNone) {
  const char* const kHandlerOfCode[] = {
      "On_kNullMsg",         "On_kInitAppMsg",  "On_kUnloadAppMsg",  "On_kLoadDwgMsg",
      "On_kUnloadDwgMsg",    "On_kInvkSubrMsg", "On_kCfgMsg",        "On_kEndMsg",
      "On_kQuitMsg",         "On_kSaveMsg",     "On_kDependencyMsg", "On_kNoDependencyMsg",
      "On_kOleUnloadAppMsg", "On_kPreQuitMsg",  "On_kInitDialogMsg", "On_kEndDialogMsg",
  };
  RecordingApp app;
  for (int code = 0; code <= 20; ++code) {
    g_calls.clear();
    const AcRx::AppRetCode result = app.Dispatch(static_cast<AcRx::AppMsgCode>(code), &g_calls);
    if (code <= 15) {
      EXPECT_EQ(result, AcRx::kRetError) << code;  // the handler's own answer
      EXPECT_EQ(g_calls, std::vector<std::string>{kHandlerOfCode[code]}) << code;
    } else {
      EXPECT_EQ(result, AcRx::kRetOK) << code;
      EXPECT_TRUE(g_calls.empty()) << code;
    }
  }
  g_calls.clear();
  EXPECT_EQ(app.Dispatch(static_cast<AcRx::AppMsgCode>(-1), &g_calls), AcRx::kRetOK);
  EXPECT_TRUE(g_calls.empty());
}

// A command stack that records the calls it gets.
class RecordingStack : public AcEdCommandStack {
 public:
  int addCommand(const char* group, const char* global_name, const char* local_name, int32_t flags,
                 AcRxFunctionPtr function, void* ui_context, int function_code, void* resource,
                 AcEdCommand**) override {
    calls.push_back({"add", group, global_name, local_name, flags, function, ui_context,
                     function_code, resource});
    return 0;
  }
  int removeCmd(const char* group, const char* global_name) override {
    calls.push_back({"remove", group, global_name, "", 0, nullptr, nullptr, 0, nullptr});
    return 0;
  }
  int removeGroup(const char*) override { return 0; }
  AcEdCommand* lookupGlobalCmd(const char*) override { return nullptr; }
  AcEdCommand* lookupLocalCmd(const char*) override { return nullptr; }

  struct Call {
    std::string what, group, global_name, local_name;
    int32_t flags;
    AcRxFunctionPtr function;
    void* ui_context;
    int function_code;
    void* resource;
  };
  std::vector<Call> calls;
};

void Handler() {}

constexpr AcRxCommandEntry kTable[] = {
    {"G", "_one", "one", ACRX_CMD_MODAL, Handler, nullptr, 0},
    {"G", "_two", nullptr, ACRX_CMD_TRANSPARENT, Handler, nullptr, 17},
    {"G", "_three", "three", ACRX_CMD_SESSION | ACRX_CMD_TRANSPARENT, Handler, nullptr, 0},
};

class TableApp : public AcRxArxApp {
 public:
  explicit TableApp(RecordingStack& stack) : AcRxArxApp(kTable, true, true), stack_(stack) {}
  void RegisterServerComponents() override { g_calls.push_back("RegisterServerComponents"); }

 protected:
  AcEdCommandStack* commandStack() const override { return &stack_; }

 private:
  RecordingStack& stack_;
};

// The resource instance goes with every command that is not a session
// command; a missing local name that cannot be loaded is registered empty.
TEST(CommandRegistrationTest, TheTableIsAddedAndRemovedInOrder) {
  RecordingStack stack;
  TableApp app(stack);
  int packet = 0;
  g_calls.clear();
  EXPECT_EQ(app.Dispatch(AcRx::kInitAppMsg, &packet), AcRx::kRetOK);
  EXPECT_EQ(app.resourceInstance(), &packet);
  EXPECT_EQ(g_calls, std::vector<std::string>{"RegisterServerComponents"});
  ASSERT_EQ(stack.calls.size(), 3u);
  const struct {
    const char* global_name;
    const char* local_name;
    int32_t flags;
    void* resource;
  } expected[] = {
      {"_one", "one", ACRX_CMD_MODAL, &packet},
      {"_two", "", ACRX_CMD_TRANSPARENT, &packet},
      {"_three", "three", ACRX_CMD_SESSION | ACRX_CMD_TRANSPARENT, nullptr},
  };
  for (size_t i = 0; i < 3; ++i) {
    const RecordingStack::Call& call = stack.calls[i];
    EXPECT_EQ(call.what, "add");
    EXPECT_EQ(call.group, "G");
    EXPECT_EQ(call.global_name, expected[i].global_name);
    EXPECT_EQ(call.local_name, expected[i].local_name);
    EXPECT_EQ(call.flags, expected[i].flags);
    EXPECT_EQ(call.function, &Handler);
    EXPECT_EQ(call.ui_context, nullptr);
    EXPECT_EQ(call.function_code, -1);
    EXPECT_EQ(call.resource, expected[i].resource) << call.global_name;
  }
  stack.calls.clear();
  EXPECT_EQ(app.Dispatch(AcRx::kUnloadAppMsg, &packet), AcRx::kRetOK);
  ASSERT_EQ(stack.calls.size(), 3u);
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(stack.calls[i].what, "remove");
    EXPECT_EQ(stack.calls[i].group, "G");
    EXPECT_EQ(stack.calls[i].global_name, expected[i].global_name);
  }
}

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

TEST_F(EntryPointTest, UnloadLeavesNoCommandMenuReactorOrCallback) {
  ASSERT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, &packet_), AcRx::kRetOK);
  EXPECT_EQ(RegisteredRows(), 2 * static_cast<int>(std::size(kRows)));
  EXPECT_EQ(PlanVaultPopupsOnMenuBar(), 1);
  EXPECT_NE(fx::app::TheApp().drawingReactor(), nullptr);
  EXPECT_NE(fx::app::GetServerProgressCallbacks().start, nullptr);
  EXPECT_NE(fx::app::GetServerProgressCallbacks().position, nullptr);

  EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, &packet_), AcRx::kRetOK);
  EXPECT_EQ(RegisteredRows(), 0);
  EXPECT_EQ(PlanVaultPopupsOnMenuBar(), 0);
  EXPECT_EQ(fx::app::TheApp().drawingReactor(), nullptr);
  EXPECT_EQ(fx::app::GetServerProgressCallbacks().start, nullptr);
  EXPECT_EQ(fx::app::GetServerProgressCallbacks().position, nullptr);
  EXPECT_EQ(terminal_.out, "");
}

// Codes 0 to 20 in turn: 1 loads, 2 unloads, every code answers kRetOK, and
// codes from 16 on leave the loaded module as it was.
TEST_F(EntryPointTest, EveryCodeFrom0To20AnswersOk) {
  for (int code = 0; code <= 20; ++code) {
    EXPECT_EQ(acrxEntryPoint(static_cast<AcRx::AppMsgCode>(code), &packet_), AcRx::kRetOK) << code;
  }
  EXPECT_EQ(RegisteredRows(), 0);
  EXPECT_EQ(PlanVaultPopupsOnMenuBar(), 0);

  ASSERT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, &packet_), AcRx::kRetOK);
  for (int code : {0, 16, 17, 18, 19, 20}) {
    EXPECT_EQ(acrxEntryPoint(static_cast<AcRx::AppMsgCode>(code), &packet_), AcRx::kRetOK) << code;
  }
  EXPECT_EQ(RegisteredRows(), 2 * static_cast<int>(std::size(kRows)));
  EXPECT_EQ(PlanVaultPopupsOnMenuBar(), 1);
  EXPECT_NE(fx::app::TheApp().drawingReactor(), nullptr);
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
