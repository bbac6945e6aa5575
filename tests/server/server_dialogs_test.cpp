// The site chooser and the log-in dialog answered by a script on the console,
// and the log-in dialog typed into on a pseudo-terminal.
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "console_fixture.h"
#include "server/change_site_dialog.h"
#include "server/credential_dialog.h"
#include "server/server_list.h"
#include "settings/settings_path.h"
#include "test_folder.h"

namespace fx::server {
namespace {

class ServerDialogsTest : public fx::console::ConsoleTest {
 protected:
  void SetUp() override { fx::settings::SetSettingsFilePath((folder_ / "PlanVault" / "VantoryApp.reg").string()); }
  void TearDown() override { fx::settings::SetSettingsFilePath(""); }
  int Show(DialogModel& dialog, const char* script) {
    console().script().AddLine(script);
    const int button = ShowDialog(dialog);
    console().Finish();
    return button;
  }
  fx::testing::TestFolder folder_{"fx-server"};
};

TEST_F(ServerDialogsTest, SiteIsPickedFromTheListOrTypedIn) {
  ASSERT_TRUE(AddServerToList("https://a.example/"));
  ASSERT_TRUE(AddServerToList("https://b.example/"));

  CPvChangeSiteDialog picked("https://b.example/");
  EXPECT_EQ(Show(picked, "?\n\nok"), CPvChangeSiteDialog::kOk);
  EXPECT_EQ(picked.address(), "https://b.example/");
  EXPECT_FALSE(picked.typedIn());
  EXPECT_EQ(terminal_.out,
            "\nChoose your Vantory site to connect to"
            "\nEnter your site address such as \"example.vantory.example\" to connect to your "
            "application.\n&Site address (? to list) <https://b.example/>: ?"
            "\n  https://a.example/\n  https://b.example/\nType one of them or any other text."
            "\nEnter your site address such as \"example.vantory.example\" to connect to your "
            "application.\n&Site address (? to list) <https://b.example/>: "
            "\n[OK/Cancel] <OK>: ok\n");

  // Not in the list: empty does nothing, a bad address is refused, then the
  // typed host becomes an address.
  terminal_.out.clear();
  CPvChangeSiteDialog typed("https://elsewhere.example/");
  EXPECT_EQ(Show(typed, "\nok\nhttp://bad host/\nok\nsite.example:8080/floors\nok"), 0);
  EXPECT_EQ(typed.address(), "https://site.example:8080/");
  EXPECT_TRUE(typed.typedIn());
  EXPECT_NE(terminal_.out.find("(? to list): \n[OK/Cancel] <OK>: ok\nEnter your site"),
            std::string::npos)
      << terminal_.out;
  EXPECT_NE(terminal_.out.find("Invalid server address!"), std::string::npos) << terminal_.out;
}

// The password shows as stars, also as the default when the dialog is shown
// again (that it is in no transcript of floorxport is checked in tests/exchange).
TEST_F(ServerDialogsTest, ThePasswordShowsAsStars) {
  PvCredentialDialog dialog("", "");
  EXPECT_EQ(Show(dialog, "alice\ns3cret word\nok"), PvCredentialDialog::kOk);
  EXPECT_EQ(dialog.login(), "alice");
  EXPECT_EQ(dialog.password(), "s3cret word");
  PvCredentialDialog again(dialog.login(), dialog.password());
  EXPECT_EQ(Show(again, "\n\ncancel"), PvCredentialDialog::kCancel);
  EXPECT_EQ(again.password(), "s3cret word");
  EXPECT_NE(terminal_.out.find("\n&Login: alice\n&Password: ********\n"), std::string::npos) << terminal_.out;
  EXPECT_NE(terminal_.out.find("\n&Password <********>: \n"), std::string::npos) << terminal_.out;
  EXPECT_EQ(terminal_.out.find("s3cret"), std::string::npos);
}

// A conversation with a program on a pseudo-terminal: each line is typed
// once the output shows the text it answers, as a user at the terminal would.
std::string Converse(const std::vector<std::string>& args,
                     const std::vector<std::pair<std::string, std::string>>& turns) {
  int master = -1;
  const pid_t pid = forkpty(&master, nullptr, nullptr, nullptr);
  if (pid == 0) {
    std::vector<char*> argv;
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    execv(argv[0], argv.data());
    _exit(127);
  }
  if (pid < 0) return "forkpty failed";
  std::string shown;
  size_t turn = 0;
  size_t seen = 0;  // the output before this was matched already
  for (;;) {
    if (turn < turns.size()) {
      const size_t at = shown.find(turns[turn].first, seen);
      if (at != std::string::npos) {
        seen = at + turns[turn].first.size();
        const std::string& typed = turns[turn++].second;
        if (write(master, typed.data(), typed.size()) != static_cast<ssize_t>(typed.size())) break;
        continue;
      }
    }
    pollfd ready{master, POLLIN, 0};
    if (poll(&ready, 1, 10000) <= 0) {  // stuck: the prompt never came
      kill(pid, SIGKILL);
      shown += "\n<timed out>";
      break;
    }
    char buffer[4096];
    const ssize_t count = read(master, buffer, sizeof buffer);
    if (count <= 0) break;  // EIO once the program has ended
    shown.append(buffer, static_cast<size_t>(count));
  }
  close(master);
  int status = 0;
  waitpid(pid, &status, 0);
  return shown;
}

TEST(LoginOnTerminalTest, TypedPasswordIsNotEchoed) {
  const std::string shown = Converse({FX_LOGIN_DIALOG_PROBE, "s3cret word"},
                                     {{"&Login: ", "alice\r"},
                                      {"&Password: ", "s3cret word\r"},
                                      {"<OK>: ", "\r"}});
  EXPECT_NE(shown.find("&Login: alice\r\n"), std::string::npos) << shown;
  EXPECT_NE(shown.find("button=0 login=alice password=as-expected"), std::string::npos) << shown;
  EXPECT_EQ(shown.find("s3cret"), std::string::npos) << shown;
  EXPECT_EQ(shown.find("********"), std::string::npos) << shown;
}

}  // namespace
}  // namespace fx::server
