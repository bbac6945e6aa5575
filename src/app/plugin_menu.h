// The "&PlanVault" menu: built in the host's main menu group and put in the
// menu bar before its last menu on initialisation, taken off the menu bar on
// unload.
//
//   Ab&out, ----, &Settings, &Export, Analy&ze rooms, &Utils >, ----,
//   &Room List, &Open from Vantory, ----, Sen&d to Vantory, ----,
//   &Update Vantory Attributes
//
// "&Utils" holds "&Shortcuts", which holds the clean-up shortcuts. Each
// item's macro is its command name and one blank; "&Overkill" and "&Units"
// send the host's own commands.
#ifndef FLOORXPORT_APP_PLUGIN_MENU_H_
#define FLOORXPORT_APP_PLUGIN_MENU_H_

namespace fx::app {

inline constexpr const char* kMenuName = "&PlanVault";
inline constexpr const char* kMenuNameNoMnemonic = "PlanVault";

// Finds the popup named "PlanVault" in the first menu group, or adds and
// fills it when there is none, and puts it in the menu bar unless it is
// there. Failures go to the command line: "\nMenu not created." when there
// is no popup to put in the menu bar, "\nMenu item \"<label>\" not created."
// for an item that could not be added (the rest is still built), and
// "\nInsertInMenuBar = <status>". False on any failure.
bool BuildPlanVaultMenu();

// Takes every popup named "PlanVault" of the first menu group off the menu bar.
void RemovePlanVaultMenu();

}  // namespace fx::app

#endif  // FLOORXPORT_APP_PLUGIN_MENU_H_
