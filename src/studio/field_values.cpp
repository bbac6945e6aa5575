#include "studio/field_values.h"

#include <algorithm>
#include <charconv>

namespace fx::studio {
namespace {

bool IsItem(const DialogField& field, std::string_view value) {
  return std::find(field.items.begin(), field.items.end(), value) != field.items.end();
}

}  // namespace

std::string CheckFieldValue(const DialogField& field, const std::string& value) {
  if (field.shown_only) return "This field cannot be changed.";
  switch (field.kind) {
    case DialogField::kText:
    case DialogField::kPassword: return {};
    case DialogField::kInteger: {
      long long number = 0;
      auto [end, failure] = std::from_chars(value.data(), value.data() + value.size(), number);
      if (value.empty() || failure != std::errc() || end != value.data() + value.size()) {
        return "Requires an integer value.";
      }
      return {};
    }
    case DialogField::kChoice:
      return IsItem(field, value) ? std::string() : "Invalid option keyword.";
    case DialogField::kCheck:
      return value == "Yes" || value == "No" ? std::string() : "Requires Yes or No.";
    case DialogField::kList: {
      // Items joined by ","; item texts hold no comma. Empty: no item.
      if (value.empty()) return {};
      for (size_t start = 0;;) {
        const size_t comma = value.find(',', start);
        const std::string_view item = std::string_view(value).substr(start, comma - start);
        if (!IsItem(field, item)) return "No item \"" + std::string(item) + "\".";
        if (comma == std::string::npos) return {};
        start = comma + 1;
      }
    }
  }
  return "Unknown field kind.";
}

const char* FieldKindName(DialogField::Kind kind) {
  switch (kind) {
    case DialogField::kText: return "text";
    case DialogField::kInteger: return "integer";
    case DialogField::kChoice: return "choice";
    case DialogField::kCheck: return "check";
    case DialogField::kList: return "list";
    case DialogField::kPassword: return "password";
  }
  return "text";
}

}  // namespace fx::studio
