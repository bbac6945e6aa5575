// Building the fields of the room dialogs. Some values are shown but may
// not be changed (counts, areas, the applied expressions): the dialog model
// has no read-only kind, so they are text fields whose every new value the
// model refuses with kReadOnlyReason; the console shows the value as the
// default, and an empty answer (Enter) keeps it.
#ifndef FLOORXPORT_ROOMS_ROOM_LIST_FIELDS_H_
#define FLOORXPORT_ROOMS_ROOM_LIST_FIELDS_H_

#include <string>
#include <utility>
#include <vector>

#include "host/dialog.h"

namespace fx::rooms {

inline constexpr const char* kReadOnlyReason = "This value is shown only and cannot be changed.";

inline DialogField MakeField(std::string label, DialogField::Kind kind, std::string value,
                             std::vector<std::string> items = {}) {
  DialogField field;
  field.label = std::move(label);
  field.kind = kind;
  field.value = std::move(value);
  field.items = std::move(items);
  return field;
}

// A field the model refuses to change (see above).
inline DialogField ReadOnlyField(std::string label, std::string value) {
  return MakeField(std::move(label), DialogField::kText, std::move(value));
}

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_ROOM_LIST_FIELDS_H_
