// Where the settings file is: the override, the environment, the defaults.
#include "settings/settings_path.h"

#include <gtest/gtest.h>

#include "program_runner.h"

namespace fx::settings {
namespace {

using fx::cli_test::ScopedEnvironmentVariable;

TEST(SettingsPathTest, FollowsTheOverrideTheVariableThenTheConfigDirectory) {
  SetSettingsFilePath("");
  ScopedEnvironmentVariable variable("FLOORXPORT_SETTINGS", nullptr), home("HOME", "/home/planner");
  const std::string in_home = "/home/planner/.config/PlanVault/VantoryApp.reg";
  {
    ScopedEnvironmentVariable config("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(SettingsFilePath(), in_home);
  }
  for (const char* ignored : {"", "relative/config"}) {  // a relative one too, as the XDG rules ask
    ScopedEnvironmentVariable config("XDG_CONFIG_HOME", ignored);
    EXPECT_EQ(SettingsFilePath(), in_home) << ignored;
  }
  ScopedEnvironmentVariable config("XDG_CONFIG_HOME", "/srv/config");
  EXPECT_EQ(SettingsFilePath(), "/srv/config/PlanVault/VantoryApp.reg");
  ScopedEnvironmentVariable site("FLOORXPORT_SETTINGS", "/etc/floorxport/site.reg");
  EXPECT_EQ(SettingsFilePath(), "/etc/floorxport/site.reg");
  SetSettingsFilePath("/tmp/run.reg");
  EXPECT_EQ(SettingsFilePath(), "/tmp/run.reg");
  SetSettingsFilePath("");
  EXPECT_EQ(SettingsFilePath(), "/etc/floorxport/site.reg");
}

}  // namespace
}  // namespace fx::settings
