#include "app/floorxport_app.h"

#include "app/command_table.h"
#include "app/drawing_reactor.h"
#include "app/plugin_menu.h"
#include "app/server_progress.h"
#include "app/transfer_progress.h"
#include "app/update_check.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/editor.h"
#include "server/client_cache.h"
#include "server/log_in.h"
#include "server/log_in_prompt.h"
#include "settings/duplicate_names_flag.h"

namespace fx::app {
namespace {

constexpr int kHostApiVersion = 1;

void StartProgress(const char* label) {
  acedSetStatusBarProgressMeter(label != nullptr ? label : "", 0, 100);
}

void SetProgress(int percent) {
  acedSetStatusBarProgressMeterPos(percent);
  if (percent == 100) acedRestoreStatusBar();
}

// The service clients report through the application's progress seam.
void ServerStatus(const char* text) {
  SetTransferStatus(text);
  ReportServerProgressStart(text);
}

}  // namespace

// The plug-in keeps data per document (CDocData), so it is unlocked and
// aware of several documents.
CFloorXportApp::CFloorXportApp() : AcRxArxApp(CommandTable(), true, true) {}

CFloorXportApp::~CFloorXportApp() = default;

AcRx::AppRetCode CFloorXportApp::On_kInitAppMsg(void* packet) {
  const AcRx::AppRetCode result = AcRxArxApp::On_kInitAppMsg(packet);
  BuildPlanVaultMenu();
  RunUpdateCheck();
  if (reactor_ == nullptr) {
    reactor_ = std::make_unique<CPvDrawingReactor>();
    acedEditor()->addReactor(reactor_.get());
  }
  SetServerProgressCallbacks({StartProgress, SetProgress});
  fx::server::SetCallbacks(ServerStatus, ReportServerProgressPosition);
  fx::server::SetTransferCallback(ReportTransfer);
  fx::server::SetLogInPrompt(fx::server::AskLogIn);
  // The duplicate-name flag is mirrored in memory for the room analysis.
  fx::settings::LoadAutoResolveDuplicateNames();
  return result;
}

AcRx::AppRetCode CFloorXportApp::On_kUnloadAppMsg(void* packet) {
  const AcRx::AppRetCode result = AcRxArxApp::On_kUnloadAppMsg(packet);
  RemovePlanVaultMenu();
  if (reactor_ != nullptr) {
    acedEditor()->removeReactor(reactor_.get());
    reactor_.reset();
  }
  SetServerProgressCallbacks({});
  fx::server::SetCallbacks(nullptr, nullptr);
  fx::server::SetTransferCallback(nullptr);
  fx::server::SetLogInPrompt(nullptr);
  return result;
}

AcRx::AppRetCode CFloorXportApp::On_kLoadDwgMsg(void*) {
  acdbRegApp(kRegAppName);
  return AcRx::kRetOK;
}

AcRx::AppRetCode CFloorXportApp::On_kUnloadDwgMsg(void*) { return AcRx::kRetOK; }

CFloorXportApp& TheApp() {
  static CFloorXportApp app;
  return app;
}

}  // namespace fx::app

AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
  return fx::app::TheApp().Dispatch(message, packet);
}

int acrxGetApiVersion() { return fx::app::kHostApiVersion; }
