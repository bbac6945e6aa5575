// The plug-in modules linked into the program and the application messages
// the host sends their entry points: kInitAppMsg when the host starts,
// kLoadDwgMsg once a drawing is open (before commands run), kUnloadDwgMsg
// before it closes, kUnloadAppMsg when the host ends.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_MODULE_REGISTRY_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_MODULE_REGISTRY_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <memory>
#include <string>
#include <vector>

#include "host/app_messages.h"

namespace fx::console {

class ModuleRegistry {
 public:
  ModuleRegistry();
  ~ModuleRegistry();
  ModuleRegistry(const ModuleRegistry&) = delete;
  ModuleRegistry& operator=(const ModuleRegistry&) = delete;

  // Adds a module; it gets messages from the next LoadAll on.
  void Register(std::string name, AcRxEntryPoint entry_point);

  // Sends kInitAppMsg to each module not loaded yet, in order of
  // registration. A module that answers kRetError, or throws, stays
  // unloaded and gets no further messages; the command line says so. False
  // when any failed.
  bool LoadAll();
  // Sends a message to every loaded module, in order of registration.
  void SendAll(AcRx::AppMsgCode message);
  // Sends kUnloadAppMsg to every loaded module, in reverse order.
  void UnloadAll();

  std::vector<std::string> loadedNames() const;

 private:
  struct Module;
  // False when the entry point answered kRetError or threw.
  bool Send(Module& module, AcRx::AppMsgCode message);

  std::vector<std::unique_ptr<Module>> modules_;
};

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_MODULE_REGISTRY_H_
