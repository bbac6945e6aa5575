// Where the settings file is: the override, the environment, the defaults.
#include "settings/settings_path.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>

namespace fx::settings {
namespace {

// Sets the variables for one test and puts the old values back afterwards.
class SettingsPathTest : public ::testing::Test {
 protected:
  void Set(const char* name, const char* value) {
    if (!saved_.contains(name)) {
      const char* old = std::getenv(name);
      saved_[name] = old ? std::optional<std::string>(old) : std::nullopt;
    }
    if (value) {
      setenv(name, value, 1);
    } else {
      unsetenv(name);
    }
  }
  void TearDown() override {
    for (const auto& [name, value] : saved_) {
      if (value) {
        setenv(name.c_str(), value->c_str(), 1);
      } else {
        unsetenv(name.c_str());
      }
    }
    SetSettingsFilePath("");
  }

 private:
  std::map<std::string, std::optional<std::string>> saved_;
};

TEST_F(SettingsPathTest, FollowsTheOverrideTheVariableThenTheConfigDirectory) {
  SetSettingsFilePath("");
  Set("FLOORXPORT_SETTINGS", nullptr);
  Set("HOME", "/home/planner");
  Set("XDG_CONFIG_HOME", nullptr);
  EXPECT_EQ(SettingsFilePath(), "/home/planner/.config/PlanVault/VantoryApp.reg");
  Set("XDG_CONFIG_HOME", "");
  EXPECT_EQ(SettingsFilePath(), "/home/planner/.config/PlanVault/VantoryApp.reg");
  Set("XDG_CONFIG_HOME", "relative/config");  // ignored, as the XDG rules ask
  EXPECT_EQ(SettingsFilePath(), "/home/planner/.config/PlanVault/VantoryApp.reg");
  Set("XDG_CONFIG_HOME", "/srv/config");
  EXPECT_EQ(SettingsFilePath(), "/srv/config/PlanVault/VantoryApp.reg");
  Set("FLOORXPORT_SETTINGS", "/etc/floorxport/site.reg");
  EXPECT_EQ(SettingsFilePath(), "/etc/floorxport/site.reg");
  SetSettingsFilePath("/tmp/run.reg");
  EXPECT_EQ(SettingsFilePath(), "/tmp/run.reg");
  SetSettingsFilePath("");
  EXPECT_EQ(SettingsFilePath(), "/etc/floorxport/site.reg");
}

}  // namespace
}  // namespace fx::settings
