// The headless host's menus (host/menu.h) kept as data: one menu group,
// "FXHOST", whose popups "&View" and "&Format" stand in the menu bar from the
// start, and whatever popups the plug-in adds. With no screen to show it on,
// the menu is printed as a tree and its items are picked by path (floorxport
// menu, floorxport run --menu).
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_MENU_BAR_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_MENU_BAR_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>
#include <vector>

class AcApPopupMenuItem;

namespace fx::console {

inline constexpr const char* kHostMenuGroup = "FXHOST";

// The label without its mnemonic marks: "Analy&ze rooms" -> "Analyze rooms";
// "&&" stands for one '&'.
std::string WithoutMnemonic(std::string_view label);

// The menu bar as a tree, one line per entry, two blanks of indent per level:
// a popup or submenu by its label, an item by its label, two blanks and its
// macro in double quotes (a line end as \n, a tab as \t, '"' and '\' escaped),
// a separator as "----". Every line ends with '\n'.
std::string MenuTreeText();

// The item at `path`: labels from the menu bar down, separated by '/'
// ("&PlanVault/&Utils/&Shortcuts/&Purge"). A label matches with or without
// its '&' marks, in any letter case. nullptr, with *error saying which part
// of the path failed, when no item is there (a submenu is not an item).
const AcApPopupMenuItem* FindMenuItem(std::string_view path, std::string* error);

// A macro as command-line input: the lines to add to the script so that its
// tokens are the macro's. In a macro every blank and line end ends a token
// (two in a row give an empty answer, Enter); a final one ends the last
// token without adding an empty one ("_UNITS " is the single token "_UNITS";
// "_-Overkill All \n\n" is "_-Overkill", "All", "", "").
std::vector<std::string> MacroScriptLines(std::string_view macro);

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_MENU_BAR_H_
