// Messages the host sends an application module through its entry point.
#ifndef FLOORXPORT_HOST_APP_MESSAGES_H_
#define FLOORXPORT_HOST_APP_MESSAGES_H_

namespace AcRx {
enum AppMsgCode {
  kNullMsg = 0, kInitAppMsg = 1, kUnloadAppMsg = 2, kLoadDwgMsg = 3, kUnloadDwgMsg = 4,
  kInvkSubrMsg = 5, kCfgMsg = 6, kEndMsg = 7, kQuitMsg = 8, kSaveMsg = 9, kDependencyMsg = 10,
  kNoDependencyMsg = 11, kOleUnloadAppMsg = 12, kPreQuitMsg = 13, kInitDialogMsg = 14,
  kEndDialogMsg = 15, kSuspendMsg = 16, kInitTextMsg = 17,
};
enum AppRetCode { kRetOK = 0, kRetError = 3 };
}  // namespace AcRx

// The entry point a module exports; `packet` identifies the module to the host.
using AcRxEntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode message, void* packet);

#endif  // FLOORXPORT_HOST_APP_MESSAGES_H_
