#include "app/plugin_menu.h"

#include <algorithm>

#include "host/editor.h"
#include "host/menu.h"

namespace fx::app {
namespace {

// The items in menu order; a null label is a separator. Each is added at
// the index it has in this list, so "&Open from Vantory" goes in at index 7.
struct MenuEntry {
  const char* label;
  const char* macro;
};

constexpr MenuEntry kItems[] = {
    {"Ab&out", "vantoryShowAbout "},
    {nullptr, nullptr},
    {"&Settings", "vantoryexpdlg "},
    {"&Export", "vantoryExportToFile "},
    {"Analy&ze rooms", "vantorconvertdlg "},
    {nullptr, nullptr},
    {"&Room List", "vantoryroomlistdlg "},
    {"&Open from Vantory", "vantoryOpenFrom "},
    {nullptr, nullptr},
    {"Sen&d to Vantory", "vantorySendTo "},
    {nullptr, nullptr},
    {"&Update Vantory Attributes", "vantoryUpdateVantoryData "},
};

// "&Utils" joins the items that prepare a drawing (settings, export,
// analysis): it goes in after "Analy&ze rooms", once the items are in.
constexpr int kUtilsIndex = 5;

constexpr MenuEntry kShortcuts[] = {
    {"&Overkill", "_-Overkill All \n\n"},
    {"&Audit", "vantoryDrawingAudit "},
    {"&Purge", "vantoryDrawingPurge "},
    {nullptr, nullptr},
    {"&Units", "_UNITS "},
    {"&Extents", "vantoryDrawingExtents "},
    {nullptr, nullptr},
    {"&Lineweight", "vantoryDrawingLineweight "},
};

void ReportItem(const char* label) {
  acutPrintf("\nMenu item \"%s\" not created.", label != nullptr ? label : "----");
}

// Adds `entries` to `menu` from index 0 on; false when one failed.
template <size_t N>
bool AddEntries(AcApPopupMenu& menu, const MenuEntry (&entries)[N]) {
  bool all_added = true;
  for (size_t i = 0; i < N; ++i) {
    const int index = static_cast<int>(i);
    const bool added = entries[i].label == nullptr
                           ? menu.AddSeparator(index) != nullptr
                           : menu.AddMenuItem(index, entries[i].label, entries[i].macro) != nullptr;
    if (!added) {
      ReportItem(entries[i].label);
      all_added = false;
    }
  }
  return all_added;
}

bool FillMenu(AcApPopupMenu& menu) {
  bool all_added = AddEntries(menu, kItems);
  AcApPopupMenu* utils = menu.AddSubMenu(kUtilsIndex, "&Utils");
  AcApPopupMenu* shortcuts = utils != nullptr ? utils->AddSubMenu(0, "&Shortcuts") : nullptr;
  if (shortcuts == nullptr) {
    ReportItem(utils == nullptr ? "&Utils" : "&Shortcuts");
    return false;
  }
  return AddEntries(*shortcuts, kShortcuts) && all_added;
}

AcApPopupMenus* MainGroupMenus() {
  AcApMenuGroups* groups = acedMenuGroups();
  AcApMenuGroup* group = groups != nullptr ? groups->item(0) : nullptr;
  return group != nullptr ? group->menus() : nullptr;
}

}  // namespace

bool BuildPlanVaultMenu() {
  AcApPopupMenus* menus = MainGroupMenus();
  AcApMenuBar* bar = acedMenuBar();
  AcApPopupMenu* popup = nullptr;
  for (int i = 0; menus != nullptr && i < menus->count() && popup == nullptr; ++i) {
    if (menus->item(i)->nameNoMnemonic() == kMenuNameNoMnemonic) popup = menus->item(i);
  }
  bool built = true;
  if (popup == nullptr && menus != nullptr) {
    popup = menus->Add(kMenuName);
    if (popup != nullptr) built = FillMenu(*popup);
  }
  if (popup == nullptr || bar == nullptr) {
    acutPrintf("\nMenu not created.");
    return false;
  }
  if (popup->onMenuBar()) return built;
  // Before the last menu of the bar (at the start of an empty one).
  const Acad::ErrorStatus status = popup->InsertInMenuBar(std::max(bar->count() - 1, 0));
  if (status != Acad::eOk) {
    acutPrintf("\nInsertInMenuBar = %s", Acad::acadErrorStatusText(status));
    return false;
  }
  return built;
}

void RemovePlanVaultMenu() {
  AcApPopupMenus* menus = MainGroupMenus();
  for (int i = 0; menus != nullptr && i < menus->count(); ++i) {
    AcApPopupMenu* popup = menus->item(i);
    if (popup->nameNoMnemonic() == kMenuNameNoMnemonic && popup->onMenuBar()) {
      popup->RemoveFromMenuBar();
    }
  }
}

}  // namespace fx::app
