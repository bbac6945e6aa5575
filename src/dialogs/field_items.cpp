#include "dialogs/field_items.h"

#include <algorithm>
#include <cctype>

namespace fx::dialogs {

bool SameText(const std::string& a, const std::string& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
  });
}

const std::string* FindItem(const std::vector<std::string>& items, const std::string& value) {
  auto it = std::find_if(items.begin(), items.end(),
                         [&value](const std::string& item) { return SameText(item, value); });
  return it == items.end() ? nullptr : &*it;
}

}  // namespace fx::dialogs
