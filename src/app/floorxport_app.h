// The plug-in's application object and entry point. The host calls
// acrxEntryPoint with each application message; CFloorXportApp answers:
//
//   kInitAppMsg    commands of the table registered, the "&PlanVault" menu
//                  in the menu bar, the update check run, the drawing reactor
//                  attached, the server progress callbacks registered
//   kLoadDwgMsg    the extended-data application "VantoryApp" registered in
//                  the drawing
//   kUnloadAppMsg  commands removed, menu taken off the menu bar, reactor
//                  detached and deleted, progress callbacks cleared
//
// Every other message is answered with kRetOK.
#ifndef FLOORXPORT_APP_FLOORXPORT_APP_H_
#define FLOORXPORT_APP_FLOORXPORT_APP_H_

#include <memory>

#include "app/arx_app.h"
#include "host/app_messages.h"

namespace fx::app {

inline constexpr const char* kRegAppName = "VantoryApp";

class CPvDrawingReactor;

class CFloorXportApp : public AcRxArxApp {
 public:
  CFloorXportApp();
  ~CFloorXportApp() override;

  AcRx::AppRetCode On_kInitAppMsg(void* packet) override;
  AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override;
  AcRx::AppRetCode On_kLoadDwgMsg(void* packet) override;
  AcRx::AppRetCode On_kUnloadDwgMsg(void* packet) override;
  void RegisterServerComponents() override {}

  // The reactor while the application is initialised; null otherwise.
  CPvDrawingReactor* drawingReactor() const { return reactor_.get(); }

 private:
  std::unique_ptr<CPvDrawingReactor> reactor_;
};

// The one application object of the module.
CFloorXportApp& TheApp();

}  // namespace fx::app

extern "C" {
AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet);
// The version of the host API the module is built against.
int acrxGetApiVersion();
}

#endif  // FLOORXPORT_APP_FLOORXPORT_APP_H_
