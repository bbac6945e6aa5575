// The commands as a script types them: every spelling of every name
// resolves, the About box.
#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <vector>

#include "app/about_dialog.h"
#include "app/command_table.h"
#include "app_test_support.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/host_session.h"

namespace fx::app_test {
namespace {

using CommandsTest = AppTest;

// Global names typed with their underscore or one more, local names as
// they are or with an underscore, in any letter case.
TEST_F(CommandsTest, EveryNameResolvesAsTyped) {
  fx::console::HostSession session(runner(), modules_);
  for (const AcRxCommandEntry& entry : fx::app::CommandTable()) {
    const std::string global = entry.global_name;
    const std::string local = entry.local_name;
    AcEdCommand* command = acedRegCmds()->lookupGlobalCmd(entry.global_name);
    ASSERT_NE(command, nullptr) << global;
    for (const std::string& typed : {global, "_" + global, local, "_" + local, "'" + local}) {
      EXPECT_EQ(fx::console::Commands().Resolve(typed).command, command) << typed;
    }
    std::string upper = local;
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_EQ(fx::console::Commands().Resolve(upper).command, command) << upper;
  }
  EXPECT_EQ(fx::console::Commands().Resolve("_vantoryNothing").command, nullptr);
  EXPECT_EQ(fx::console::Commands().Resolve("ShowAbout").command, nullptr);
}

TEST_F(CommandsTest, TheAboutBoxShowsTheProductAndALinkToSupport) {
  fx::console::HostSession session(runner(), modules_);
  std::string error;
  ASSERT_TRUE(session.OpenDrawing(SmallPlan(), &error)) << error;
  const std::string title = std::string("About FloorXport ") + FX_VERSION;
  EXPECT_EQ(Run("_ShowAbout e \nvantoryShowAbout OK"),
            "\nCommand: _ShowAbout\n" + title +
                "\n[OK/E-mailsupport] <OK>: e"
                "\nWrite to support@vantory.example: mailto:support@vantory.example"
                "\n[OK/E-mailsupport] <OK>: "
                "\nCommand: vantoryShowAbout\n" +
                title + "\n[OK/E-mailsupport] <OK>: OK\n");
  EXPECT_FALSE(runner().failed());
}

}  // namespace
}  // namespace fx::app_test
