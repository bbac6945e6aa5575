#include "host/dxf/console/module_registry.h"

#include <exception>

#include "host/editor.h"

namespace fx::console {

// The packet a module receives with each message is its Module record.
struct ModuleRegistry::Module {
  std::string name;
  AcRxEntryPoint entry_point = nullptr;
  bool loaded = false;
};

ModuleRegistry::ModuleRegistry() = default;
ModuleRegistry::~ModuleRegistry() = default;

void ModuleRegistry::Register(std::string name, AcRxEntryPoint entry_point) {
  if (entry_point == nullptr) return;
  modules_.push_back(std::make_unique<Module>(Module{std::move(name), entry_point, false}));
}

bool ModuleRegistry::Send(Module& module, AcRx::AppMsgCode message) {
  try {
    return module.entry_point(message, &module) != AcRx::kRetError;
  } catch (const std::exception& error) {
    acutPrintf("\nModule %s failed on message %d: %s", module.name.c_str(),
               static_cast<int>(message), error.what());
  } catch (...) {
    acutPrintf("\nModule %s failed on message %d.", module.name.c_str(), static_cast<int>(message));
  }
  return false;
}

bool ModuleRegistry::LoadAll() {
  bool all_loaded = true;
  for (auto& module : modules_) {
    if (module->loaded) continue;
    module->loaded = Send(*module, AcRx::kInitAppMsg);
    if (!module->loaded) {
      acutPrintf("\nModule %s could not be loaded.", module->name.c_str());
      all_loaded = false;
    }
  }
  return all_loaded;
}

void ModuleRegistry::SendAll(AcRx::AppMsgCode message) {
  for (auto& module : modules_) {
    if (module->loaded) Send(*module, message);
  }
}

void ModuleRegistry::UnloadAll() {
  for (auto it = modules_.rbegin(); it != modules_.rend(); ++it) {
    if (!(*it)->loaded) continue;
    Send(**it, AcRx::kUnloadAppMsg);
    (*it)->loaded = false;
  }
}

std::vector<std::string> ModuleRegistry::loadedNames() const {
  std::vector<std::string> names;
  for (const auto& module : modules_) {
    if (module->loaded) names.push_back(module->name);
  }
  return names;
}

}  // namespace fx::console
