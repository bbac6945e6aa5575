// The plug-in modules linked into floorxport, registered with a host session's
// module registry before it starts.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_PLUGIN_MODULES_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_PLUGIN_MODULES_H_

namespace fx::console {
class ModuleRegistry;
}

namespace fx::cli {

void RegisterPlugInModules(fx::console::ModuleRegistry& modules);

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_PLUGIN_MODULES_H_
