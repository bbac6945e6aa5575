#include "server/create_floor_dialog.h"

#include "host/editor.h"

namespace fx::server {

std::vector<DialogField> CPvCreateFloorDialog::fields() const {
  DialogField building{"Building Name", DialogField::kText, building_name_, {}};
  building.shown_only = true;
  return {building, {"New &Floor Name", DialogField::kText, floor_name_, {}}};
}

std::string CPvCreateFloorDialog::SetField(size_t index, const std::string& value) {
  if (index == 1) floor_name_ = value;
  return {};
}

DialogAction CPvCreateFloorDialog::Press(size_t index) {
  if (index == kOk && floor_name_.empty()) {
    acedMessageBox("New Floor Name is required.", "Create Floor Dialog", MB_OK | MB_ICONEXCLAMATION);
    return DialogAction::kStay;
  }
  return DialogAction::kClose;
}

}  // namespace fx::server
