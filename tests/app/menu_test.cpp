// The "&PlanVault" menu as the plug-in builds it, and paths that name no
// item in it. (Items picked by path run in program_test.)
#include "host/menu.h"

#include <gtest/gtest.h>

#include <string>

#include "app_test_support.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/menu_bar.h"

namespace fx::app_test {
namespace {

using fx::console::FindMenuItem;
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
      {"&PlanVault/&Purge", "no item \"&Purge\" in menu \"&PlanVault\""},
      {"&PlanVault/&Utils/Shortcuts/Nothing",
       "no item \"Nothing\" in menu \"&PlanVault/&Utils/&Shortcuts\""},
      {"&PlanVault", "\"&PlanVault\" is a menu, not an item"},
      {"&PlanVault/Ab&out/More", "menu item \"&PlanVault/Ab&out\" has no submenu"},
      {"&PlanVault/----", "no item \"----\" in menu \"&PlanVault\""},
  };
  for (const auto& c : cases) {
    std::string error;
    EXPECT_EQ(FindMenuItem(c.path, &error), nullptr) << c.path;
    EXPECT_EQ(error, c.error) << c.path;
  }
}

}  // namespace
}  // namespace fx::app_test
