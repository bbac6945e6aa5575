// "Create Floor Dialog": the building's name (shown) and "New &Floor Name".
// OK with an empty name says "New Floor Name is required." and stays open.
#ifndef FLOORXPORT_SERVER_CREATE_FLOOR_DIALOG_H_
#define FLOORXPORT_SERVER_CREATE_FLOOR_DIALOG_H_

#include <string>
#include <vector>

#include "host/dialog.h"

namespace fx::server {

class CPvCreateFloorDialog : public fx::DialogModel {
 public:
  enum Button { kOk = 0, kCancel = 1 };

  explicit CPvCreateFloorDialog(std::string building_name)
      : building_name_(std::move(building_name)) {}

  std::string title() const override { return "Create Floor Dialog"; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override { return {"OK", "Cancel"}; }
  DialogAction Press(size_t index) override;

  const std::string& floor_name() const { return floor_name_; }

 private:
  std::string building_name_;
  std::string floor_name_;
};

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_CREATE_FLOOR_DIALOG_H_
