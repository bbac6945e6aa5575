// The browser sends a dialog field's value as text; before it reaches the
// model (DialogModel::SetField) it is checked against the field's kind and
// items, as every host does for its own input. The console's prompts accept
// typed keywords and prefixes; a form sends exact values, so the check here
// is exact.
#ifndef FLOORXPORT_STUDIO_FIELD_VALUES_H_
#define FLOORXPORT_STUDIO_FIELD_VALUES_H_

#include <string>

#include "host/dialog.h"

namespace fx::studio {

// Empty when `value` suits `field`; otherwise the reason, as the console
// words it ("Requires an integer value.").
std::string CheckFieldValue(const DialogField& field, const std::string& value);

// The kind's name in the page's JSON: "text", "integer", "choice", "check",
// "list", "password".
const char* FieldKindName(DialogField::Kind kind);

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_FIELD_VALUES_H_
