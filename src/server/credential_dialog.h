// PvCredentialDialog, "Vantory Log-In Dialog": the login and password for a
// Vantory site. It only exchanges its two fields with the caller.
//
// As a model, fields in order: "&Login" (text; its label starts with the
// dialog's request "Please enter valid Vantory login and password.", as the
// dialog model has no line of text of its own) and "&Password" (a password
// field: never echoed nor printed). Buttons: "OK" (index 0, the default) and
// "Cancel" (index 1); both close.
//
// The password is wiped from memory when the dialog is destroyed.
#ifndef FLOORXPORT_SERVER_CREDENTIAL_DIALOG_H_
#define FLOORXPORT_SERVER_CREDENTIAL_DIALOG_H_

#include <string>
#include <vector>

#include "host/dialog.h"

namespace fx::server {

inline constexpr const char* kCredentialTitle = "Vantory Log-In Dialog";
inline constexpr const char* kCredentialRequest = "Please enter valid Vantory login and password.";
inline constexpr const char* kLoginLabel = "&Login";
inline constexpr const char* kPasswordLabel = "&Password";

class PvCredentialDialog : public fx::DialogModel {
 public:
  enum Button { kOk = 0, kCancel = 1 };

  PvCredentialDialog(std::string login, std::string password);
  ~PvCredentialDialog() override;
  PvCredentialDialog(const PvCredentialDialog&) = delete;
  PvCredentialDialog& operator=(const PvCredentialDialog&) = delete;

  std::string title() const override { return kCredentialTitle; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override { return {"OK", "Cancel"}; }
  DialogAction Press(size_t) override { return DialogAction::kClose; }

  const std::string& login() const { return login_; }
  const std::string& password() const { return password_; }

 private:
  std::string login_;
  std::string password_;
};

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_CREDENTIAL_DIALOG_H_
