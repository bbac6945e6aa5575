// CPvRoomPropDialog, "Room Properties": one room's four texts, editable, and
// its area, shown only. Opened by the marker command with an empty record
// and by the room list for the selected room.
//
// Fields in order: "&Name", "&Category", "&Description", "Co&mment" (text),
// "Area" (shown only: "%.4f", or "Area not found" for exactly 0.0).
// Buttons: "OK" (index 0, the default) and "Cancel" (index 1); both close.
#ifndef FLOORXPORT_ROOMS_ROOM_PROP_DIALOG_H_
#define FLOORXPORT_ROOMS_ROOM_PROP_DIALOG_H_

#include <string>
#include <vector>

#include "host/dialog.h"
#include "rooms/room_record.h"

namespace fx::rooms {

inline constexpr const char* kAreaNotFoundText = "Area not found";

// The Area field's text: "%.4f", or "Area not found" when `area` is exactly 0.0.
std::string RoomAreaText(double area);

class CPvRoomPropDialog : public fx::DialogModel {
 public:
  enum Button { kOk = 0, kCancel = 1 };

  // `area` is the room's computed area; 0.0 when it was not found.
  CPvRoomPropDialog(RoomRecord record, double area);

  std::string title() const override { return "Room Properties"; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override { return {"OK", "Cancel"}; }
  DialogAction Press(size_t) override { return DialogAction::kClose; }

  // The record with the texts as edited; linked entity, flags and extents
  // as given.
  const RoomRecord& record() const { return record_; }

 private:
  RoomRecord record_;
  double area_;
};

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_ROOM_PROP_DIALOG_H_
