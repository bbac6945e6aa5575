#include "server/site_choice.h"

#include "host/dialog.h"
#include "server/change_site_dialog.h"
#include "server/server_list.h"

namespace fx::server {

std::optional<std::string> ChooseServer(const std::string& preselect) {
  CPvChangeSiteDialog dialog(preselect.empty() ? GetLastUsedServer() : preselect);
  if (ShowDialog(dialog) != CPvChangeSiteDialog::kOk) return std::nullopt;
  return dialog.address();
}

}  // namespace fx::server
