// `floorxport studio`: serves one drawing to the browser until the process
// is interrupted (Ctrl-C) or terminated.
#ifndef FLOORXPORT_STUDIO_STUDIO_APP_H_
#define FLOORXPORT_STUDIO_STUDIO_APP_H_

#include <cstdio>
#include <functional>
#include <string>

namespace fx::console {
class ModuleRegistry;
}

namespace fx::studio {

struct StudioOptions {
  std::string drawing;
  int port = 0;  // 0: a free port
  std::function<void(console::ModuleRegistry&)> register_modules;
};

// Opens the drawing, prints "floorxport studio: http://127.0.0.1:PORT/?token=T"
// on `out` and serves until SIGINT or SIGTERM. Returns 0 after a clean stop,
// 1 when the drawing cannot be opened or the port cannot be bound (the
// reason on standard error).
int RunStudio(const StudioOptions& options, std::FILE* out);

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_STUDIO_APP_H_
