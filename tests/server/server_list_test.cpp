// Server addresses as typed, and the server list in an isolated settings file.
#include "server/server_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "server/server_address.h"
#include "settings/settings_path.h"
#include "test_folder.h"

namespace fx::server {
namespace {

TEST(ServerAddressTest, TypedTextBecomesSchemeHostAndPortOnly) {
  const struct {
    const char* typed;
    const char* address;
  } cases[] = {
      {"example.com", "https://example.com/"},
      {"  example.com  ", "https://example.com/"},
      {"http://host.example:8080/x/y?z", "http://host.example:8080/"},
      {"https://host.example:443", "https://host.example/"},
      {"host.example", "https://host.example/"},
      {"http://host.example:80/", "http://host.example/"},
      {"HTTPS://Site.Example/floors", "https://Site.Example/"},
      {"site.example:8443", "https://site.example:8443/"},
      {"https://user@site.example/", "https://site.example/"},
      {"http://[2001:db8::1]:8080/x", "http://[2001:db8::1]:8080/"},
      {"[::1]", "https://[::1]/"},
      // No host, or no URL at all: refused.
      {"", ""},
      {"https://", ""},
      {"https:///path", ""},
      {"http://:8080/", ""},
      {"site.example:99999", ""},
      {"site.example:8o", ""},
      {"http://[::1/", ""},
      {"my site.example", ""},
      {"1http://site.example", ""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(FormServerAddress(c.typed), c.address) << '"' << c.typed << '"';
}

// Each test has a settings file of its own.
class ServerListTest : public ::testing::Test {
 protected:
  void SetUp() override { fx::settings::SetSettingsFilePath((folder_ / "PlanVault" / "VantoryApp.reg").string()); }
  void TearDown() override { fx::settings::SetSettingsFilePath(""); }
  fx::testing::TestFolder folder_{"fx-server"};
};

TEST_F(ServerListTest, AddsEachAddressOnceWithLetterCaseCounting) {
  EXPECT_EQ(GetServerList(), "");
  EXPECT_TRUE(AddServerToList("https://a.example/"));
  EXPECT_TRUE(AddServerToList("https://b.example/"));
  EXPECT_TRUE(AddServerToList("https://a.example/"));
  EXPECT_TRUE(AddServerToList("https://A.example/"));
  EXPECT_FALSE(AddServerToList("https://c.example/;https://d.example/"));
  EXPECT_EQ(GetServerList(), "https://a.example/;https://b.example/;https://A.example/");
  EXPECT_EQ(SplitServerList(";x;;y;"), (std::vector<std::string>{"x", "y"}));

  EXPECT_TRUE(SetLastUsedServer("https://b.example/"));
  EXPECT_EQ(GetLastUsedServer(), "https://b.example/");
}

}  // namespace
}  // namespace fx::server
