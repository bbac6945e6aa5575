// The in-memory mirror of "Automatically Resolve Duplicate Names", which
// room identification and drawing access consult without reading the store.
#ifndef FLOORXPORT_SETTINGS_DUPLICATE_NAMES_FLAG_H_
#define FLOORXPORT_SETTINGS_DUPLICATE_NAMES_FLAG_H_

namespace fx::settings {

// The mirror; true (the value's default, 1) until loaded.
bool AutoResolveDuplicateNames();

// Reads the value (default 1; any value but 0 counts as true) into the
// mirror and returns it. The plug-in calls this when it is loaded.
bool LoadAutoResolveDuplicateNames();

// Sets the mirror alone, e.g. to false when writing the value failed.
// SetSettingInt already updates the mirror on every successful write of the
// value, whoever writes it.
void SetAutoResolveDuplicateNamesFlag(bool on);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_DUPLICATE_NAMES_FLAG_H_
