#include "settings/settings_path.h"

#include <cstdlib>
#include <mutex>

namespace fx::settings {
namespace {

std::mutex override_mutex;
std::string override_path;

}  // namespace

void SetSettingsFilePath(const std::string& path) {
  const std::lock_guard lock(override_mutex);
  override_path = path;
}

std::string SettingsFilePath() {
  {
    const std::lock_guard lock(override_mutex);
    if (!override_path.empty()) return override_path;
  }
  const char* variable = std::getenv(kSettingsFileVariable);
  if (variable != nullptr && *variable != '\0') return variable;
  return DefaultSettingsFilePath();
}

}  // namespace fx::settings
