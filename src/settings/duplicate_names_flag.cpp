#include "settings/duplicate_names_flag.h"

#include <atomic>

#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::settings {
namespace {

std::atomic<bool> auto_resolve_duplicate_names{true};

}  // namespace

bool AutoResolveDuplicateNames() { return auto_resolve_duplicate_names.load(); }

bool LoadAutoResolveDuplicateNames() {
  const bool on = GetSettingInt(kAutomaticallyResolveDuplicateNames, 1, kSectionExportOptions) != 0;
  auto_resolve_duplicate_names.store(on);
  return on;
}

void SetAutoResolveDuplicateNamesFlag(bool on) { auto_resolve_duplicate_names.store(on); }

}  // namespace fx::settings
