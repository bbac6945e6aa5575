#include "server/log_in_prompt.h"

#include "host/dialog.h"
#include "server/credential_dialog.h"

namespace fx::server {

bool AskLogIn(std::string& user, std::string& password) {
  PvCredentialDialog dialog(user, "");
  if (ShowDialog(dialog) != PvCredentialDialog::kOk) return false;
  user = dialog.login();
  password = dialog.password();
  return true;
}

}  // namespace fx::server
