// The application base classes of a plug-in module. AcRxDbxApp answers the
// host's application messages, one virtual handler per message; AcRxArxApp
// adds the module's command table, registered with the host's command stack
// on initialisation and removed on unload. The module's acrxEntryPoint hands
// every message to Dispatch of its one application object.
#ifndef FLOORXPORT_APP_ARX_APP_H_
#define FLOORXPORT_APP_ARX_APP_H_

#include <cstddef>
#include <cstdint>
#include <span>

#include "host/app_messages.h"
#include "host/command_stack.h"

// One row of a module's command table.
struct AcRxCommandEntry {
  const char* group;
  const char* global_name;
  // nullptr: the local name is the module's string resource local_name_id.
  const char* local_name;
  int32_t flags;  // ACRX_CMD_*
  AcRxFunctionPtr function;
  void* ui_context;  // passed to the host as is
  unsigned local_name_id;
};

class AcRxDbxApp {
 public:
  // The two settings of initialisation: unlock the module (the host may
  // unload it) and declare it able to work with several documents at once.
  AcRxDbxApp(bool unlock_on_init, bool mdi_aware_on_init);
  virtual ~AcRxDbxApp() = default;
  AcRxDbxApp(const AcRxDbxApp&) = delete;
  AcRxDbxApp& operator=(const AcRxDbxApp&) = delete;

  // Calls the handler of `message`: codes kInitAppMsg (1) to kEndDialogMsg
  // (15) the handler of that name, kNullMsg (0) On_kNullMsg, the last slot.
  // Any other code returns kRetOK without a call.
  AcRx::AppRetCode Dispatch(AcRx::AppMsgCode message, void* packet);

  // The handlers, in slot order. Each returns kRetOK and does nothing,
  // except On_kInitAppMsg: it records `packet` as the module's resource
  // instance and calls RegisterServerComponents.
  virtual AcRx::AppRetCode On_kInitAppMsg(void* packet);
  virtual AcRx::AppRetCode On_kUnloadAppMsg(void* packet);
  virtual AcRx::AppRetCode On_kLoadDwgMsg(void* packet);
  virtual AcRx::AppRetCode On_kUnloadDwgMsg(void* packet);
  virtual AcRx::AppRetCode On_kInvkSubrMsg(void* packet);
  virtual AcRx::AppRetCode On_kCfgMsg(void* packet);
  virtual AcRx::AppRetCode On_kEndMsg(void* packet);
  virtual AcRx::AppRetCode On_kQuitMsg(void* packet);
  virtual AcRx::AppRetCode On_kSaveMsg(void* packet);
  virtual AcRx::AppRetCode On_kDependencyMsg(void* packet);
  virtual AcRx::AppRetCode On_kNoDependencyMsg(void* packet);
  virtual AcRx::AppRetCode On_kOleUnloadAppMsg(void* packet);
  virtual AcRx::AppRetCode On_kPreQuitMsg(void* packet);
  virtual AcRx::AppRetCode On_kInitDialogMsg(void* packet);
  virtual AcRx::AppRetCode On_kEndDialogMsg(void* packet);
  virtual AcRx::AppRetCode On_kNullMsg(void* packet);
  virtual void RegisterServerComponents() = 0;

  // What the host gave the module on initialisation; null before.
  void* resourceInstance() const { return resource_instance_; }
  bool unlockOnInit() const { return unlock_on_init_; }
  bool mdiAwareOnInit() const { return mdi_aware_on_init_; }

 private:
  void* resource_instance_ = nullptr;
  bool unlock_on_init_;
  bool mdi_aware_on_init_;
};

class AcRxArxApp : public AcRxDbxApp {
 public:
  // `commands` must outlive the application object.
  AcRxArxApp(std::span<const AcRxCommandEntry> commands, bool unlock_on_init,
             bool mdi_aware_on_init);

  // After the base class's initialisation, adds each command in table order
  // (with the resource instance unless its flags have ACRX_CMD_SESSION).
  AcRx::AppRetCode On_kInitAppMsg(void* packet) override;
  // Removes each command in table order.
  AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override;
  // The module registers no functions for the editor's C interface, so
  // there is nothing to invoke.
  AcRx::AppRetCode On_kInvkSubrMsg(void* packet) override;

  std::span<const AcRxCommandEntry> commands() const { return commands_; }

 protected:
  // Where the commands go; the host's command stack. A test may give another.
  virtual AcEdCommandStack* commandStack() const;

 private:
  std::span<const AcRxCommandEntry> commands_;
};

// The size of the buffer a command's local name is loaded into.
inline constexpr size_t kLocalNameBufferSize = 132;

#endif  // FLOORXPORT_APP_ARX_APP_H_
