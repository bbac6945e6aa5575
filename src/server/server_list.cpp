#include "server/server_list.h"

#include <algorithm>

#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::server {

std::vector<std::string> SplitServerList(std::string_view list) {
  std::vector<std::string> pieces;
  while (!list.empty()) {
    const size_t end = std::min(list.find(kServerListSeparator), list.size());
    if (end > 0) pieces.emplace_back(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return pieces;
}

bool AddServerToList(std::string_view address) {
  if (address.empty() || address.find(kServerListSeparator) != std::string_view::npos) return false;
  std::string list = GetServerList();
  const std::vector<std::string> pieces = SplitServerList(list);
  if (std::find(pieces.begin(), pieces.end(), address) != pieces.end()) return true;
  if (!list.empty()) list += kServerListSeparator;
  list += address;
  return settings::SetSettingString(settings::kServerList, list, settings::kSectionServer);
}

std::string GetServerList() {
  return settings::GetSettingString(settings::kServerList, settings::kSectionServer);
}

std::string GetLastUsedServer() {
  return settings::GetSettingString(settings::kLastUsedServer, settings::kSectionServer);
}

bool SetLastUsedServer(std::string_view address) {
  return settings::SetSettingString(settings::kLastUsedServer, address, settings::kSectionServer);
}

}  // namespace fx::server
