#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "settings/settings_path.h"

namespace fx::settings {
namespace {

constexpr char kRelativePath[] = "PlanVault/VantoryApp.reg";

// An unset or empty variable counts as absent, as the XDG base directory
// rules ask; so does a relative XDG_CONFIG_HOME.
std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string HomeDirectory() {
  std::string home = Variable("HOME");
  if (!home.empty()) return home;
  const passwd* entry = getpwuid(getuid());
  return entry != nullptr && entry->pw_dir != nullptr ? entry->pw_dir : "";
}

}  // namespace

std::string DefaultSettingsFilePath() {
  const std::string config = Variable("XDG_CONFIG_HOME");
  if (config.starts_with('/')) return config + "/" + kRelativePath;
  const std::string home = HomeDirectory();
  if (home.empty()) return "";
  return home + "/.config/" + kRelativePath;
}

}  // namespace fx::settings
