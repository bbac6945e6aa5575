// The "&PlanVault" menu as the plug-in builds it, and the headless host's
// menus: the host API's rules, paths that name no item, macros. (Items
// picked by path run in program_test.)
#include "host/menu.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app_test_support.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/menu_bar.h"

namespace fx::app_test {
namespace {

using fx::console::FindMenuItem;
using fx::console::MacroScriptLines;
using fx::console::MenuTreeText;

const char kHostMenuTree[] =
    "&View\n"
    "  Zoom &Extents  \"_ZOOM _E \"\n"
    "&Format\n"
    "  &Units  \"_UNITS \"\n";

int PlanVaultPopupsInGroup() {
  AcApPopupMenus* menus = acedMenuGroups()->item(0)->menus();
  int found = 0;
  for (int i = 0; i < menus->count(); ++i) found += menus->item(i)->nameNoMnemonic() == "PlanVault";
  return found;
}

using PlugInMenuTest = AppTest;

// Loaded twice: the popup found the second time is put back, not doubled.
TEST_F(PlugInMenuTest, TheMenuStandsBeforeTheLastMenuWhileThePlugInIsLoaded) {
  EXPECT_EQ(MenuTreeText(), kHostMenuTree);
  for (int load = 0; load < 2; ++load) {
    {
      fx::console::HostSession session(runner(), modules_);
      EXPECT_EQ(MenuTreeText(), kPlanVaultMenuTree) << load;
      EXPECT_EQ(acedMenuBar()->item(1)->name(), "&PlanVault");
      EXPECT_EQ(acedMenuBar()->item(1)->nameNoMnemonic(), "PlanVault");
    }
    EXPECT_EQ(MenuTreeText(), kHostMenuTree) << load;
    EXPECT_EQ(PlanVaultPopupsInGroup(), 1) << load;
  }
  EXPECT_EQ(terminal_.out, "");
}

TEST_F(PlugInMenuTest, APathThatNamesNoItemSaysWhy) {
  fx::console::HostSession session(runner(), modules_);
  const struct {
    const char* path;
    const char* error;
  } cases[] = {
      {"&Tools/&Purge", "no menu \"&Tools\" in the menu bar"},
      {"", "no menu \"\" in the menu bar"},
      {"&PlanVault/&Purge", "no item \"&Purge\" in menu \"&PlanVault\""},
      {"&PlanVault/&Utils/Shortcuts/Nothing",
       "no item \"Nothing\" in menu \"&PlanVault/&Utils/&Shortcuts\""},
      {"&PlanVault", "\"&PlanVault\" is a menu, not an item"},
      {"&PlanVault/&Utils/&Shortcuts", "\"&PlanVault/&Utils/&Shortcuts\" is a menu, not an item"},
      {"&PlanVault/Ab&out/More", "menu item \"&PlanVault/Ab&out\" has no submenu"},
      {"&PlanVault/----", "no item \"----\" in menu \"&PlanVault\""},
      {"&PlanVault/", "no item \"\" in menu \"&PlanVault\""},
  };
  for (const auto& c : cases) {
    std::string error;
    EXPECT_EQ(FindMenuItem(c.path, &error), nullptr) << c.path;
    EXPECT_EQ(error, c.error) << c.path;
  }
}

TEST(MacroTest, AMacroIsTypedAsItsTokens) {
  const struct {
    const char* macro;
    std::vector<std::string> lines;
  } cases[] = {
      {"vantoryDrawingPurge ", {"vantoryDrawingPurge"}},
      {"_UNITS ", {"_UNITS"}},
      {"_-Overkill All \n\n", {"_-Overkill All ", ""}},
      {"_ZOOM _E ", {"_ZOOM _E"}},
      {"_ZOOM\n_E\n", {"_ZOOM", "_E"}},
      {"NOEND", {"NOEND"}},
      {"", {""}},
  };
  for (const auto& c : cases) EXPECT_EQ(MacroScriptLines(c.macro), c.lines) << c.macro;
}

// The host API on its own: an item goes in before its index (none past the
// end, none without a label), and only a popup off the menu bar goes onto it.
TEST(HostMenuTest, IndexesAndTheMenuBar) {
  AcApPopupMenus* menus = acedMenuGroups()->item(0)->menus();
  AcApPopupMenu* popup = menus->Add("&Test Items");
  ASSERT_NE(popup, nullptr);
  EXPECT_EQ(menus->Add(""), nullptr);
  EXPECT_EQ(popup->AddMenuItem(1, "&Late", "LATE "), nullptr);
  EXPECT_EQ(popup->AddMenuItem(-1, "&Early", "EARLY "), nullptr);
  EXPECT_EQ(popup->AddMenuItem(0, "", "NONE "), nullptr);
  ASSERT_NE(popup->AddMenuItem(0, "&B", "B "), nullptr);
  ASSERT_NE(popup->AddMenuItem(0, "&A", "A "), nullptr);
  ASSERT_NE(popup->AddSeparator(2), nullptr);
  AcApPopupMenu* sub = popup->AddSubMenu(1, "&Sub");
  ASSERT_NE(sub, nullptr);
  EXPECT_EQ(popup->AddSubMenu(9, "&Far"), nullptr);
  ASSERT_EQ(popup->count(), 4);
  EXPECT_EQ(popup->item(0)->macro(), "A ");
  EXPECT_EQ(popup->item(1)->subMenu(), sub);
  EXPECT_EQ(popup->item(2)->label(), "&B");
  EXPECT_EQ(popup->item(3)->type(), AcApMenuItemType::kSeparator);
  EXPECT_EQ(popup->item(4), nullptr);

  const int count = acedMenuBar()->count();
  EXPECT_EQ(popup->InsertInMenuBar(count + 1), Acad::eInvalidIndex);
  EXPECT_EQ(popup->RemoveFromMenuBar(), Acad::eNotApplicable);
  EXPECT_EQ(sub->InsertInMenuBar(0), Acad::eNotApplicable);
  EXPECT_EQ(popup->InsertInMenuBar(count), Acad::eOk);
  EXPECT_EQ(popup->InsertInMenuBar(0), Acad::eNotApplicable);
  EXPECT_EQ(acedMenuBar()->item(count), popup);
  EXPECT_EQ(popup->RemoveFromMenuBar(), Acad::eOk);
  EXPECT_EQ(acedMenuBar()->count(), count);
}

}  // namespace
}  // namespace fx::app_test
