#include "host/dxf/console/menu_bar.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "host/dxf/console/text_case.h"
#include "host/menu.h"

namespace fx::console {
namespace {

class MenuBar;
class PopupMenu;

class MenuItem : public AcApPopupMenuItem {
 public:
  MenuItem(AcApMenuItemType type, std::string label, std::string macro,
           std::unique_ptr<PopupMenu> sub_menu);
  ~MenuItem() override;
  AcApMenuItemType type() const override { return type_; }
  std::string label() const override { return label_; }
  std::string macro() const override { return macro_; }
  AcApPopupMenu* subMenu() const override;

 private:
  AcApMenuItemType type_;
  std::string label_;
  std::string macro_;
  std::unique_ptr<PopupMenu> sub_menu_;
};

class PopupMenu : public AcApPopupMenu {
 public:
  // `bar` is null for a submenu, which never stands in the menu bar.
  PopupMenu(std::string name, MenuBar* bar) : name_(std::move(name)), bar_(bar) {}
  std::string name() const override { return name_; }
  std::string nameNoMnemonic() const override { return WithoutMnemonic(name_); }
  int count() const override { return static_cast<int>(items_.size()); }
  AcApPopupMenuItem* item(int index) const override {
    return InRange(index, count() - 1) ? items_[static_cast<size_t>(index)].get() : nullptr;
  }
  AcApPopupMenuItem* AddMenuItem(int index, const char* label, const char* macro) override {
    if (label == nullptr || *label == '\0') return nullptr;
    return Insert(index, AcApMenuItemType::kMenuItem, label, macro != nullptr ? macro : "",
                  nullptr);
  }
  AcApPopupMenuItem* AddSeparator(int index) override {
    return Insert(index, AcApMenuItemType::kSeparator, "", "", nullptr);
  }
  AcApPopupMenu* AddSubMenu(int index, const char* label) override {
    if (label == nullptr || *label == '\0') return nullptr;
    AcApPopupMenuItem* added = Insert(index, AcApMenuItemType::kSubMenu, label, "",
                                      std::make_unique<PopupMenu>(label, nullptr));
    return added != nullptr ? added->subMenu() : nullptr;
  }
  Acad::ErrorStatus InsertInMenuBar(int index) override;
  Acad::ErrorStatus RemoveFromMenuBar() override;
  bool onMenuBar() const override;

  static bool InRange(int index, int last) { return index >= 0 && index <= last; }

 private:
  AcApPopupMenuItem* Insert(int index, AcApMenuItemType type, std::string label, std::string macro,
                            std::unique_ptr<PopupMenu> sub_menu) {
    if (!InRange(index, count())) return nullptr;
    auto item =
        std::make_unique<MenuItem>(type, std::move(label), std::move(macro), std::move(sub_menu));
    AcApPopupMenuItem* added = item.get();
    items_.insert(items_.begin() + index, std::move(item));
    return added;
  }

  std::string name_;
  MenuBar* bar_;
  std::vector<std::unique_ptr<MenuItem>> items_;
};

MenuItem::MenuItem(AcApMenuItemType type, std::string label, std::string macro,
                   std::unique_ptr<PopupMenu> sub_menu)
    : type_(type),
      label_(std::move(label)),
      macro_(std::move(macro)),
      sub_menu_(std::move(sub_menu)) {}
MenuItem::~MenuItem() = default;
AcApPopupMenu* MenuItem::subMenu() const { return sub_menu_.get(); }

class MenuBar : public AcApMenuBar {
 public:
  int count() const override { return static_cast<int>(shown_.size()); }
  AcApPopupMenu* item(int index) const override {
    return PopupMenu::InRange(index, count() - 1) ? shown_[static_cast<size_t>(index)] : nullptr;
  }
  bool Shows(const AcApPopupMenu* popup) const {
    return std::find(shown_.begin(), shown_.end(), popup) != shown_.end();
  }
  void Insert(int index, AcApPopupMenu* popup) { shown_.insert(shown_.begin() + index, popup); }
  void Remove(const AcApPopupMenu* popup) { std::erase(shown_, popup); }

 private:
  std::vector<AcApPopupMenu*> shown_;  // the popups are owned by their group
};

Acad::ErrorStatus PopupMenu::InsertInMenuBar(int index) {
  if (bar_ == nullptr || bar_->Shows(this)) return Acad::eNotApplicable;
  if (!InRange(index, bar_->count())) return Acad::eInvalidIndex;
  bar_->Insert(index, this);
  return Acad::eOk;
}

Acad::ErrorStatus PopupMenu::RemoveFromMenuBar() {
  if (!onMenuBar()) return Acad::eNotApplicable;
  bar_->Remove(this);
  return Acad::eOk;
}

bool PopupMenu::onMenuBar() const { return bar_ != nullptr && bar_->Shows(this); }

class PopupMenus : public AcApPopupMenus {
 public:
  explicit PopupMenus(MenuBar& bar) : bar_(bar) {}
  int count() const override { return static_cast<int>(popups_.size()); }
  AcApPopupMenu* item(int index) const override {
    return PopupMenu::InRange(index, count() - 1) ? popups_[static_cast<size_t>(index)].get()
                                                  : nullptr;
  }
  AcApPopupMenu* Add(const char* name) override {
    if (name == nullptr || *name == '\0') return nullptr;
    popups_.push_back(std::make_unique<PopupMenu>(name, &bar_));
    return popups_.back().get();
  }

 private:
  MenuBar& bar_;
  std::vector<std::unique_ptr<PopupMenu>> popups_;
};

class MenuGroup : public AcApMenuGroup {
 public:
  MenuGroup(std::string name, MenuBar& bar) : name_(std::move(name)), menus_(bar) {}
  std::string name() const override { return name_; }
  AcApPopupMenus* menus() const override { return &menus_; }

 private:
  std::string name_;
  mutable PopupMenus menus_;
};

class MenuGroups : public AcApMenuGroups {
 public:
  explicit MenuGroups(MenuBar& bar) : host_(kHostMenuGroup, bar) {}
  int count() const override { return 1; }
  AcApMenuGroup* item(int index) const override { return index == 0 ? &host_ : nullptr; }

 private:
  mutable MenuGroup host_;
};

// The host's own popups, in the menu bar from the start; the plug-in goes
// before the last one, as in the editor.
struct HostMenus {
  HostMenus() : groups(bar) {
    AcApPopupMenus* menus = groups.item(0)->menus();
    AcApPopupMenu* view = menus->Add("&View");
    view->AddMenuItem(0, "Zoom &Extents", "_ZOOM _E ");
    view->InsertInMenuBar(0);
    AcApPopupMenu* format = menus->Add("&Format");
    format->AddMenuItem(0, "&Units", "_UNITS ");
    format->InsertInMenuBar(1);
  }
  MenuBar bar;
  MenuGroups groups;
};

HostMenus& Menus() {
  static HostMenus menus;
  return menus;
}

std::string QuotedMacro(std::string_view macro) {
  std::string text = "\"";
  for (char c : macro) {
    switch (c) {
      case '\n': text += "\\n"; break;
      case '\t': text += "\\t"; break;
      case '"': text += "\\\""; break;
      case '\\': text += "\\\\"; break;
      default: text += c; break;
    }
  }
  return text + "\"";
}

// Iterates over the tree with an explicit stack rather than recursion.
void AppendTree(const AcApPopupMenu& popup, int depth, std::string& text) {
  struct Level {
    const AcApPopupMenu* menu;
    int next;
  };
  std::vector<Level> stack{{&popup, 0}};
  text += std::string(2 * depth, ' ') + popup.name() + "\n";
  while (!stack.empty()) {
    Level& level = stack.back();
    if (level.next == level.menu->count()) {
      stack.pop_back();
      continue;
    }
    const AcApPopupMenuItem* item = level.menu->item(level.next++);
    const std::string indent(2 * (depth + stack.size()), ' ');
    switch (item->type()) {
      case AcApMenuItemType::kSeparator: text += indent + "----\n"; break;
      case AcApMenuItemType::kMenuItem:
        text += indent + item->label() + "  " + QuotedMacro(item->macro()) + "\n";
        break;
      case AcApMenuItemType::kSubMenu:
        text += indent + item->label() + "\n";
        stack.push_back({item->subMenu(), 0});
        break;
    }
  }
}

bool LabelMatches(const std::string& label, std::string_view wanted) {
  return EqualNoCase(label, wanted) || EqualNoCase(WithoutMnemonic(label), wanted);
}

}  // namespace

std::string WithoutMnemonic(std::string_view label) {
  std::string text;
  for (size_t i = 0; i < label.size(); ++i) {
    if (label[i] != '&') {
      text += label[i];
    } else if (i + 1 < label.size() && label[i + 1] == '&') {
      text += '&';
      ++i;
    }
  }
  return text;
}

std::string MenuTreeText() {
  std::string text;
  const AcApMenuBar& bar = Menus().bar;
  for (int i = 0; i < bar.count(); ++i) AppendTree(*bar.item(i), 0, text);
  return text;
}

const AcApPopupMenuItem* FindMenuItem(std::string_view path, std::string* error) {
  std::vector<std::string_view> parts;
  for (size_t start = 0;;) {
    const size_t slash = path.find('/', start);
    parts.push_back(path.substr(start, slash == std::string_view::npos ? slash : slash - start));
    if (slash == std::string_view::npos) break;
    start = slash + 1;
  }
  const AcApMenuBar& bar = Menus().bar;
  const AcApPopupMenu* menu = nullptr;
  for (int i = 0; i < bar.count() && menu == nullptr; ++i) {
    if (LabelMatches(bar.item(i)->name(), parts.front())) menu = bar.item(i);
  }
  if (menu == nullptr) {
    *error = "no menu \"" + std::string(parts.front()) + "\" in the menu bar";
    return nullptr;
  }
  std::string reached = menu->name();
  for (size_t p = 1; p < parts.size(); ++p) {
    const AcApPopupMenuItem* found = nullptr;
    for (int i = 0; i < menu->count() && found == nullptr; ++i) {
      const AcApPopupMenuItem* item = menu->item(i);
      if (item->type() != AcApMenuItemType::kSeparator && LabelMatches(item->label(), parts[p])) {
        found = item;
      }
    }
    if (found == nullptr) {
      *error = "no item \"" + std::string(parts[p]) + "\" in menu \"" + reached + "\"";
      return nullptr;
    }
    reached += "/" + found->label();
    if (p + 1 == parts.size()) {
      if (found->type() == AcApMenuItemType::kMenuItem) return found;
      break;
    }
    if (found->type() != AcApMenuItemType::kSubMenu) {
      *error = "menu item \"" + reached + "\" has no submenu";
      return nullptr;
    }
    menu = found->subMenu();
  }
  *error = "\"" + reached + "\" is a menu, not an item";
  return nullptr;
}

std::vector<std::string> MacroScriptLines(std::string_view macro) {
  if (!macro.empty() && (macro.back() == ' ' || macro.back() == '\n')) macro.remove_suffix(1);
  std::vector<std::string> lines;
  for (size_t start = 0;;) {
    const size_t end = macro.find('\n', start);
    lines.emplace_back(macro.substr(start, end == std::string_view::npos ? end : end - start));
    if (end == std::string_view::npos) return lines;
    start = end + 1;
  }
}

}  // namespace fx::console

AcApMenuGroups* acedMenuGroups() { return &fx::console::Menus().groups; }
AcApMenuBar* acedMenuBar() { return &fx::console::Menus().bar; }
