#include "app/arx_app.h"

#include <iterator>

namespace {

using Handler = AcRx::AppRetCode (AcRxDbxApp::*)(void*);

// The handlers in slot order: message code c (1 to 15) is slot c - 1, and
// kNullMsg (0) is the last slot.
constexpr Handler kSlots[] = {
    &AcRxDbxApp::On_kInitAppMsg,      &AcRxDbxApp::On_kUnloadAppMsg,
    &AcRxDbxApp::On_kLoadDwgMsg,      &AcRxDbxApp::On_kUnloadDwgMsg,
    &AcRxDbxApp::On_kInvkSubrMsg,     &AcRxDbxApp::On_kCfgMsg,
    &AcRxDbxApp::On_kEndMsg,          &AcRxDbxApp::On_kQuitMsg,
    &AcRxDbxApp::On_kSaveMsg,         &AcRxDbxApp::On_kDependencyMsg,
    &AcRxDbxApp::On_kNoDependencyMsg, &AcRxDbxApp::On_kOleUnloadAppMsg,
    &AcRxDbxApp::On_kPreQuitMsg,      &AcRxDbxApp::On_kInitDialogMsg,
    &AcRxDbxApp::On_kEndDialogMsg,    &AcRxDbxApp::On_kNullMsg,
};
constexpr int kSlotCount = static_cast<int>(std::size(kSlots));
static_assert(kSlotCount == AcRx::kEndDialogMsg + 1);

// The module keeps its local names in its command table; it has no string
// resources to load one from, so the buffer is left as it is.
bool LoadLocalName(void* /*resource_instance*/, unsigned /*id*/, char* /*buffer*/,
                   size_t /*size*/) {
  return false;
}

}  // namespace

AcRxDbxApp::AcRxDbxApp(bool unlock_on_init, bool mdi_aware_on_init)
    : unlock_on_init_(unlock_on_init), mdi_aware_on_init_(mdi_aware_on_init) {}

AcRx::AppRetCode AcRxDbxApp::Dispatch(AcRx::AppMsgCode message, void* packet) {
  const int code = static_cast<int>(message);
  if (code < 0 || code >= kSlotCount) return AcRx::kRetOK;
  const int slot = (code + kSlotCount - 1) % kSlotCount;
  return (this->*kSlots[slot])(packet);
}

// The headless host has no dynamic linker to unlock a module or declare it
// aware of several documents: every module may be unloaded there, and all
// of them see every document. The settings are kept for the hosts that have one.
AcRx::AppRetCode AcRxDbxApp::On_kInitAppMsg(void* packet) {
  resource_instance_ = packet;
  RegisterServerComponents();
  return AcRx::kRetOK;
}

AcRx::AppRetCode AcRxDbxApp::On_kUnloadAppMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kLoadDwgMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kUnloadDwgMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kInvkSubrMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kCfgMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kEndMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kQuitMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kSaveMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kDependencyMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kNoDependencyMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kOleUnloadAppMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kPreQuitMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kInitDialogMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kEndDialogMsg(void*) { return AcRx::kRetOK; }
AcRx::AppRetCode AcRxDbxApp::On_kNullMsg(void*) { return AcRx::kRetOK; }

AcRxArxApp::AcRxArxApp(std::span<const AcRxCommandEntry> commands, bool unlock_on_init,
                       bool mdi_aware_on_init)
    : AcRxDbxApp(unlock_on_init, mdi_aware_on_init), commands_(commands) {}

AcRx::AppRetCode AcRxArxApp::On_kInitAppMsg(void* packet) {
  const AcRx::AppRetCode result = AcRxDbxApp::On_kInitAppMsg(packet);
  AcEdCommandStack* stack = commandStack();
  if (stack == nullptr) return result;
  for (const AcRxCommandEntry& entry : commands_) {
    char loaded[kLocalNameBufferSize] = "";
    const char* local_name = entry.local_name;
    if (local_name == nullptr) {
      LoadLocalName(resourceInstance(), entry.local_name_id, loaded, sizeof loaded);
      local_name = loaded;
    }
    void* resource = (entry.flags & ACRX_CMD_SESSION) != 0 ? nullptr : resourceInstance();
    stack->addCommand(entry.group, entry.global_name, local_name, entry.flags, entry.function,
                      entry.ui_context, -1, resource);
  }
  return result;
}

AcRx::AppRetCode AcRxArxApp::On_kUnloadAppMsg(void* packet) {
  if (AcEdCommandStack* stack = commandStack()) {
    for (const AcRxCommandEntry& entry : commands_)
      stack->removeCmd(entry.group, entry.global_name);
  }
  return AcRxDbxApp::On_kUnloadAppMsg(packet);
}

AcRx::AppRetCode AcRxArxApp::On_kInvkSubrMsg(void*) { return AcRx::kRetOK; }

AcEdCommandStack* AcRxArxApp::commandStack() const { return acedRegCmds(); }
