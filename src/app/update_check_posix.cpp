#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#include "app/update_check.h"
#include "host/editor.h"

namespace fx::app {

std::string UpdaterLibraryPath() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error || program.empty()) return {};
  return (program.parent_path() / "libUpdater.so").string();
}

void RunUpdateCheck() {
  const std::string path = UpdaterLibraryPath();
  std::error_code error;
  if (path.empty() || !std::filesystem::exists(path, error)) return;
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    acutPrintf("\nUpdate check skipped: %s", dlerror());
    return;
  }
  // POSIX guarantees that a function pointer survives the round trip through void*.
  auto check_update = reinterpret_cast<void (*)()>(dlsym(library, kCheckUpdateSymbol));
  if (check_update == nullptr) {
    acutPrintf("\nUpdate check skipped: %s has no %s.", path.c_str(), kCheckUpdateSymbol);
  } else {
    check_update();
  }
  dlclose(library);
}

}  // namespace fx::app
