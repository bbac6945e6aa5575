#include "rooms/room_prop_dialog.h"

#include <cstdio>
#include <utility>

#include "rooms/room_list_fields.h"

namespace fx::rooms {
namespace {

enum Field { kName, kCategory, kDescription, kComment, kArea };

}  // namespace

std::string RoomAreaText(double area) {
  // Exactly zero is how the callers say "no area"; a tiny real area still
  // shows its digits.
  if (area == 0.0) return kAreaNotFoundText;
  char text[64];
  std::snprintf(text, sizeof text, "%.4f", area);
  return text;
}

CPvRoomPropDialog::CPvRoomPropDialog(RoomRecord record, double area)
    : record_(std::move(record)), area_(area) {}

std::vector<DialogField> CPvRoomPropDialog::fields() const {
  return {
      MakeField("&Name", DialogField::kText, record_.name),
      MakeField("&Category", DialogField::kText, record_.category),
      MakeField("&Description", DialogField::kText, record_.description),
      MakeField("Co&mment", DialogField::kText, record_.comment),
      ReadOnlyField("Area", RoomAreaText(area_)),
  };
}

std::string CPvRoomPropDialog::SetField(size_t index, const std::string& value) {
  switch (index) {
    case kName:
      record_.name = value;
      return {};
    case kCategory:
      record_.category = value;
      return {};
    case kDescription:
      record_.description = value;
      return {};
    case kComment:
      record_.comment = value;
      return {};
    case kArea:
      return kReadOnlyReason;
    default:
      return "No such field.";
  }
}

}  // namespace fx::rooms
