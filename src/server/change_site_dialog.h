// CPvChangeSiteDialog, "Choose your Vantory site to connect to": the site to
// connect to, picked from the server list or typed in.
//
// As a model: one field, a drop-down that takes typed text too (a text field
// whose items are the server list, in list order; the console offers them
// with "?"). Its label carries the hint, as the dialog model has no line of
// text of its own:
//   "Enter your site address such as "example.vantory.example" to connect
//    to your application.\n&Site address"
// It starts with the current address when that is in the list, else empty.
// Buttons: "OK" (index 0, the default), "Cancel" (index 1, closes).
//
// "OK": a text equal to an item of the list (letter case counts) is the
// chosen address as it is. Other text is typed in: empty text does nothing
// and the dialog stays; text that is no server address (FormServerAddress)
// shows "Invalid server address!" (warning icon) and the dialog stays;
// otherwise the formed address ("https://host/") is chosen, flagged as typed
// in, and the dialog closes.
#ifndef FLOORXPORT_SERVER_CHANGE_SITE_DIALOG_H_
#define FLOORXPORT_SERVER_CHANGE_SITE_DIALOG_H_

#include <string>
#include <vector>

#include "host/dialog.h"

namespace fx::server {

inline constexpr const char* kChangeSiteTitle = "Choose your Vantory site to connect to";
inline constexpr const char* kChangeSiteHint =
    "Enter your site address such as \"example.vantory.example\" to connect to your application.";
inline constexpr const char* kSiteAddressLabel = "&Site address";
inline constexpr const char* kInvalidServerAddressMessage = "Invalid server address!";

class CPvChangeSiteDialog : public fx::DialogModel {
 public:
  enum Button { kOk = 0, kCancel = 1 };

  // Reads the server list from the settings (server_list.h). `current` is
  // the address in use, selected when the list has it.
  explicit CPvChangeSiteDialog(const std::string& current);

  std::string title() const override { return kChangeSiteTitle; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override { return {"OK", "Cancel"}; }
  DialogAction Press(size_t index) override;

  // After "OK": the chosen address; empty until then.
  const std::string& address() const { return address_; }
  // After "OK": whether the address was typed in rather than picked from the list.
  bool typedIn() const { return typed_in_; }
  const std::vector<std::string>& servers() const { return servers_; }

 private:
  std::vector<std::string> servers_;
  std::string text_;  // the field's text
  std::string address_;
  bool typed_in_ = false;
};

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_CHANGE_SITE_DIALOG_H_
