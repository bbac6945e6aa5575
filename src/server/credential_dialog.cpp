#include "server/credential_dialog.h"

#include <utility>

namespace fx::server {

PvCredentialDialog::PvCredentialDialog(std::string login, std::string password)
    : login_(std::move(login)), password_(std::move(password)) {}

PvCredentialDialog::~PvCredentialDialog() { WipeText(password_); }

std::vector<DialogField> PvCredentialDialog::fields() const {
  return {
      {std::string(kCredentialRequest) + "\n" + kLoginLabel, DialogField::kText, login_, {}},
      {kPasswordLabel, DialogField::kPassword, password_, {}},
  };
}

std::string PvCredentialDialog::SetField(size_t index, const std::string& value) {
  switch (index) {
    case 0:
      login_ = value;
      return {};
    case 1:
      // Assigned in place: a buffer that is large enough is reused, so no
      // copy of an earlier password stays behind unwiped.
      WipeText(password_);
      password_.assign(value);
      return {};
    default:
      return "No such field.";
  }
}

}  // namespace fx::server
