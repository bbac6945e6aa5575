// The plug-in's settings: single values read and written by name, in the
// sections of the application key (settings_key.h). Every call opens the
// section, does one query or one write and closes it again; nothing is cached
// except the duplicate-name flag (duplicate_names_flag.h). No call reports an
// error to the user: a read that fails gives its default, a write that fails
// returns false; both report the cause once through the settings diagnostics.
// Names are compared without regard to ASCII case, as the registry does.
#ifndef FLOORXPORT_SETTINGS_SETTINGS_H_
#define FLOORXPORT_SETTINGS_SETTINGS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "settings/settings_key.h"

namespace fx::settings {

// Reads the value's data into a 4-byte buffer whatever its registry type
// (REG_NONE as we write it, REG_DWORD as written by hand, anything else) and
// returns those 4 bytes little-endian as a signed integer; shorter data is
// padded with zero bytes. `default_value` when the section cannot be opened,
// the value is absent, or its data is longer than 4 bytes.
int32_t GetSettingInt(std::string_view name, int32_t default_value, int section);

// Reads the value into a buffer of 520 bytes (260 UTF-16 units with the
// terminator) whatever its type, and returns its text up to the first zero.
// Empty when the value is absent or longer: a string of 260 or more
// characters reads as empty.
std::string GetSettingString(std::string_view name, int section);

// Writes 4 bytes, little-endian, with registry type REG_NONE (not REG_DWORD:
// values of earlier installations have that type). True when written.
bool SetSettingInt(std::string_view name, int32_t value, int section);

// Writes the UTF-8 `text` as REG_SZ: UTF-16 with its terminating zero. False
// when not written, or when `text` is not valid UTF-8.
bool SetSettingString(std::string_view name, std::string_view text, int section);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_SETTINGS_H_
