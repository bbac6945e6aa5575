// The editor's menus: menu groups, each with its collection of popup menus,
// and the menu bar that shows some of those popups. Shaped like the editor's
// automation objects (MenuGroups, PopupMenus, PopupMenu, PopupMenuItem,
// MenuBar) so that a host maps each call onto one automation call.
//
// Labels carry their mnemonic as '&' before a letter ("&PlanVault"). A macro
// is what a menu pick sends to the command line, as typed: a blank or a line
// end ends a command name or an answer ("_UNITS ", "_-Overkill All \n\n").
//
// Ownership: the host owns every menu object; the pointers returned stay
// valid as long as the host runs (a popup taken off the menu bar stays in
// its group's collection, as in the editor). Indexes count from 0.
#ifndef FLOORXPORT_HOST_MENU_H_
#define FLOORXPORT_HOST_MENU_H_

#include <string>

#include "host/status.h"

class AcApPopupMenu;

enum class AcApMenuItemType { kMenuItem, kSeparator, kSubMenu };

class AcApPopupMenuItem {
 public:
  virtual ~AcApPopupMenuItem() = default;
  virtual AcApMenuItemType type() const = 0;
  virtual std::string label() const = 0;       // empty for a separator
  virtual std::string macro() const = 0;       // empty for a separator or a submenu
  virtual AcApPopupMenu* subMenu() const = 0;  // nullptr unless a submenu
};

class AcApPopupMenu {
 public:
  virtual ~AcApPopupMenu() = default;
  virtual std::string name() const = 0;            // "&PlanVault"
  virtual std::string nameNoMnemonic() const = 0;  // "PlanVault"
  virtual int count() const = 0;
  // nullptr when `index` is out of range.
  virtual AcApPopupMenuItem* item(int index) const = 0;

  // Each inserts before the item at `index`; `index` == count() appends.
  // nullptr when `index` is out of range or the label is empty.
  virtual AcApPopupMenuItem* AddMenuItem(int index, const char* label, const char* macro) = 0;
  virtual AcApPopupMenuItem* AddSeparator(int index) = 0;
  // The new submenu, an empty popup of its own.
  virtual AcApPopupMenu* AddSubMenu(int index, const char* label) = 0;

  // Shows the popup in the menu bar before the menu at `index` (0 to the
  // menu bar's count; the count appends). eInvalidIndex out of range;
  // eNotApplicable for a submenu or a popup already on the menu bar.
  virtual Acad::ErrorStatus InsertInMenuBar(int index) = 0;
  // Takes the popup off the menu bar; eNotApplicable when it is not on it.
  virtual Acad::ErrorStatus RemoveFromMenuBar() = 0;
  virtual bool onMenuBar() const = 0;
};

// The popup menus of one menu group, in order.
class AcApPopupMenus {
 public:
  virtual ~AcApPopupMenus() = default;
  virtual int count() const = 0;
  virtual AcApPopupMenu* item(int index) const = 0;  // nullptr out of range
  // Appends a new, empty popup, not on the menu bar; nullptr for an empty
  // name. Names need not be unique: callers look for theirs first.
  virtual AcApPopupMenu* Add(const char* name) = 0;
};

class AcApMenuGroup {
 public:
  virtual ~AcApMenuGroup() = default;
  virtual std::string name() const = 0;
  virtual AcApPopupMenus* menus() const = 0;
};

// The loaded menu groups; the first is the host's main group.
class AcApMenuGroups {
 public:
  virtual ~AcApMenuGroups() = default;
  virtual int count() const = 0;
  virtual AcApMenuGroup* item(int index) const = 0;  // nullptr out of range
};

// The popups shown in the menu bar, left to right.
class AcApMenuBar {
 public:
  virtual ~AcApMenuBar() = default;
  virtual int count() const = 0;
  virtual AcApPopupMenu* item(int index) const = 0;  // nullptr out of range
};

// nullptr from either when the host has no menus.
AcApMenuGroups* acedMenuGroups();
AcApMenuBar* acedMenuBar();

#endif  // FLOORXPORT_HOST_MENU_H_
