#include "studio/menu_json.h"

#include <string>

#include "host/menu.h"

namespace fx::studio {
namespace {

// Submenus nest a few levels deep at most; recursion is bounded by the menu.
nlohmann::json ItemsJson(const AcApPopupMenu& menu, const std::string& path) {
  nlohmann::json items = nlohmann::json::array();
  for (int i = 0; i < menu.count(); ++i) {
    const AcApPopupMenuItem& item = *menu.item(i);
    switch (item.type()) {
      case AcApMenuItemType::kSeparator: items.push_back({{"kind", "separator"}}); break;
      case AcApMenuItemType::kMenuItem:
        items.push_back({{"kind", "item"}, {"label", item.label()}, {"path", path + "/" + item.label()}});
        break;
      case AcApMenuItemType::kSubMenu:
        items.push_back({{"kind", "submenu"},
                         {"label", item.label()},
                         {"items", ItemsJson(*item.subMenu(), path + "/" + item.label())}});
        break;
    }
  }
  return items;
}

}  // namespace

nlohmann::json MenuBarJson() {
  nlohmann::json bar = nlohmann::json::array();
  const AcApMenuBar* menus = acedMenuBar();
  if (menus == nullptr) return bar;
  for (int i = 0; i < menus->count(); ++i) {
    const AcApPopupMenu& popup = *menus->item(i);
    bar.push_back({{"label", popup.name()}, {"items", ItemsJson(popup, popup.name())}});
  }
  return bar;
}

}  // namespace fx::studio
