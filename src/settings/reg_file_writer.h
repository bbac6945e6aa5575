// Writes the settings file as the registry editor exports a key.
#ifndef FLOORXPORT_SETTINGS_REG_FILE_WRITER_H_
#define FLOORXPORT_SETTINGS_REG_FILE_WRITER_H_

#include <string>

#include "settings/reg_file.h"

namespace fx::settings {

// The whole file in file.encoding: the "Windows Registry Editor Version
// 5.00" line, a blank line, then each key as "[path]", its values and a blank
// line, every line ending in CRLF. Precondition: no key path or value name
// holds a line break (the reader cannot produce one; the store refuses one).
std::string FormatRegFile(const RegFile& file);

// One value as it stands in the file, without its line end:
//   "Draw Box"=hex(0):01,00,00,00      any integer we write (REG_NONE)
//   "Old"=dword:0000002a                REG_DWORD
//   "Export file format"="SVG"          REG_SZ, backslash and quote escaped
//   "Note"=hex(1):41,00,0d,00,...       REG_SZ that a quoted form would change
// Long hex data goes on over lines ending in a backslash.
std::string FormatRegValue(const RegValue& value);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_REG_FILE_WRITER_H_
