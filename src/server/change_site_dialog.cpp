#include "server/change_site_dialog.h"

#include <algorithm>

#include "host/editor.h"
#include "server/server_address.h"
#include "server/server_list.h"

namespace fx::server {

CPvChangeSiteDialog::CPvChangeSiteDialog(const std::string& current)
    : servers_(SplitServerList(GetServerList())) {
  if (std::find(servers_.begin(), servers_.end(), current) != servers_.end()) text_ = current;
}

std::vector<DialogField> CPvChangeSiteDialog::fields() const {
  DialogField site;
  site.label = std::string(kChangeSiteHint) + "\n" + kSiteAddressLabel;
  site.kind = DialogField::kText;
  site.value = text_;
  site.items = servers_;
  return {site};
}

std::string CPvChangeSiteDialog::SetField(size_t index, const std::string& value) {
  if (index != 0) return "No such field.";
  text_ = value;
  return {};
}

DialogAction CPvChangeSiteDialog::Press(size_t index) {
  if (index != kOk) return DialogAction::kClose;
  if (std::find(servers_.begin(), servers_.end(), text_) != servers_.end()) {
    address_ = text_;
    typed_in_ = false;
    return DialogAction::kClose;
  }
  if (text_.empty()) return DialogAction::kStay;
  std::string formed = FormServerAddress(text_);
  if (formed.empty()) {
    acedMessageBox(kInvalidServerAddressMessage, kChangeSiteTitle, MB_OK | MB_ICONWARNING);
    return DialogAction::kStay;
  }
  address_ = std::move(formed);
  typed_in_ = true;
  return DialogAction::kClose;
}

}  // namespace fx::server
