#include "plugin_modules.h"

#include "app/floorxport_app.h"
#include "host/dxf/console/module_registry.h"

namespace fx::cli {

void RegisterPlugInModules(fx::console::ModuleRegistry& modules) {
  modules.Register("FloorXport", acrxEntryPoint);
}

}  // namespace fx::cli
