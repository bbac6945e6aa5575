// The "settings" subcommand of floorxport: lists every known setting with its
// section, kind, current value and default, or writes one value.
#ifndef FLOORXPORT_SETTINGS_SETTINGS_COMMAND_H_
#define FLOORXPORT_SETTINGS_SETTINGS_COMMAND_H_

#include <iosfwd>
#include <string>
#include <vector>

namespace fx::settings {

extern const char kSettingsUsage[];

// `args` are the words after "settings":
//   [--settings FILE]
//   set NAME VALUE [--section N|NAME] [--int|--string] [--settings FILE]
// A known name takes its section and kind from the table (known_settings.h);
// a boolean takes 0 or 1. Any other name, or a known name given with another
// section, needs --section and is written as a string unless --int is given.
// --settings FILE makes the whole process use FILE (SetSettingsFilePath).
// The listing goes to `out`; errors and settings diagnostics go to `err`
// while the command runs. Returns 0 when done, 1 when the value could not be
// written, 2 for a wrong command line.
int RunSettingsCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_SETTINGS_COMMAND_H_
