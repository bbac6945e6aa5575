// The editor's menu bar as the page shows it. Each item carries its path
// (labels from the menu bar down, joined by '/'), by which the page picks it
// and the console's menu finds it (FindMenuItem); the macro runs as typed.
#ifndef FLOORXPORT_STUDIO_MENU_JSON_H_
#define FLOORXPORT_STUDIO_MENU_JSON_H_

#include <nlohmann/json.hpp>

namespace fx::studio {

// [{"label": "&PlanVault", "items": [{"kind": "item", "label", "path"},
//   {"kind": "separator"}, {"kind": "submenu", "label", "items": [...]}]}]
nlohmann::json MenuBarJson();

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_MENU_JSON_H_
