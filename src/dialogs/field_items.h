// Finding a typed answer among a field's items, in any letter case, as the
// editor's drop-down lists match typed text.
#ifndef FLOORXPORT_DIALOGS_FIELD_ITEMS_H_
#define FLOORXPORT_DIALOGS_FIELD_ITEMS_H_

#include <string>
#include <vector>

namespace fx::dialogs {

// True when `a` and `b` are equal but for ASCII letter case.
bool SameText(const std::string& a, const std::string& b);

// The item equal to `value` in its own spelling, or null.
const std::string* FindItem(const std::vector<std::string>& items, const std::string& value);

}  // namespace fx::dialogs

#endif  // FLOORXPORT_DIALOGS_FIELD_ITEMS_H_
