// Where the settings file is. The registry of the desktop editor has no file;
// on our platforms the store is one file per user (see docs/settings-file.md).
#ifndef FLOORXPORT_SETTINGS_SETTINGS_PATH_H_
#define FLOORXPORT_SETTINGS_SETTINGS_PATH_H_

#include <string>

namespace fx::settings {

// Name of the environment variable that names the settings file.
constexpr char kSettingsFileVariable[] = "FLOORXPORT_SETTINGS";

// Makes every later settings operation of this process use `path` (the
// command line's --settings FILE). An empty path removes the override.
void SetSettingsFilePath(const std::string& path);

// The settings file: the override above, else $FLOORXPORT_SETTINGS, else the
// platform's default (DefaultSettingsFilePath). Empty when none can be formed.
std::string SettingsFilePath();

// $XDG_CONFIG_HOME/PlanVault/VantoryApp.reg, or ~/.config/PlanVault/
// VantoryApp.reg when XDG_CONFIG_HOME is unset, empty or relative. The home
// directory is $HOME, else the user's entry in the password database; empty
// when there is neither.
std::string DefaultSettingsFilePath();

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_SETTINGS_PATH_H_
