// The exchange as a user runs it: floorxport against vantory-devserver on
// loopback. Lists, creates a floor, sends drawings with their floor
// documents and opens them back, over HTTP and HTTPS, with each kind of
// log-in, cancelled, and sent again when a changed drawing closes.
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <string>
#include <vector>

#include "dev_server.h"
#include "exchange_program.h"

namespace fx::exchange_test {
namespace {

// The whole round: list, create a floor through the floor dialog, send the
// drawing there, open it back byte for byte, and see it listed.
TEST_F(ExchangeProgramTest, CreateSendAndOpenBack) {
  DevServer server(folder_.path().string());
  ASSERT_TRUE(server.started());
  ASSERT_NE(FloorId(server.address(), "Level 1"), -1);

  const std::string plan = AnalysedSample();
  // Site chooser: the address, OK. Floor dialog: no floor, find "Demo" (the
  // building), Create Floor ("Level 3", OK), then the new floor is chosen:
  // keep it, no search, notes, Send.
  const std::string script = "_vantorySendTo\n" + server.address() +
                             "\nOK\n\nDemo\n\nCreateFloor\nLevel 3\nOK\n\n\nfirst issue\nSend";
  ProgramResult sent = Floorxport({"run", plan, "-c", script});
  ASSERT_EQ(sent.exit_status, 0) << sent.out << sent.err;
  EXPECT_NE(sent.out.find("PlanVault: File has been successfully sent to Vantory."), std::string::npos)
      << sent.out;
  EXPECT_TRUE(TempIsEmpty());
  const int floor = FloorId(server.address(), "Level 3");
  ASSERT_NE(floor, -1);

  // Opened, the floor gets its occupants, which needs a log-in (any, here).
  ScopedEnvironmentVariable user("FLOORXPORT_USER", "ana"), password("FLOORXPORT_PASSWORD", "any");
  const fs::path downloads = folder_ / "downloads";
  fs::create_directories(downloads);
  ProgramResult opened = Floorxport({"open", "--server", server.address(), "--floor",
                                     std::to_string(floor), "-o", downloads.string()});
  ASSERT_EQ(opened.exit_status, 0) << opened.out << opened.err;
  const fs::path download = downloads / "Demo Building_Level 3.dxf";
  EXPECT_EQ(ReadFile(download.string()), ReadFile(plan));
  EXPECT_NE(opened.out.find("Output file name: " + download.string()), std::string::npos) << opened.out;

  // The drawing remembers where it went: a second send needs no answers.
  ProgramResult again = Floorxport({"send", plan, "--floor", std::to_string(floor)});
  EXPECT_EQ(again.exit_status, 0) << again.out << again.err;
  // Sent as saved: closing it does not offer to send it again.
  EXPECT_EQ(again.out.find("Would you like to send updates"), std::string::npos) << again.out;
  EXPECT_EQ(Floorxport({"servers"}).out, "* " + server.address() + "\n");
}

TEST_F(ExchangeProgramTest, HttpsWithASelfSignedCertificate) {
  const std::string cert = (folder_ / "server.pem").string();
  ASSERT_EQ(RunDevServerTool({"--generate-cert", cert}, ""), 0);
  DevServer server(folder_.path().string(), {"--tls-cert", cert});
  ASSERT_TRUE(server.started());
  ASSERT_EQ(server.address().rfind("https://", 0), 0u) << server.address();
  EXPECT_NE(FloorId(server.address(), "Level 2"), -1);

  // The strict check refuses the certificate until it is trusted, by the
  // option or by the settings; it names 127.0.0.1.
  ProgramResult refused = Floorxport({"floors", "--server", server.address(), "--tls-verify"});
  EXPECT_EQ(refused.exit_status, 1);
  EXPECT_NE(refused.err.find("SSL error occured."), std::string::npos) << refused.err;
  EXPECT_NE(FloorId(server.address(), "Level 2", {"--ca-file", cert}), -1);
  ASSERT_EQ(Floorxport({"settings", "set", "Verify Server Certificate", "1", "--section", "2", "--int"}).exit_status,
            0);
  EXPECT_EQ(Floorxport({"floors", "--server", server.address()}).exit_status, 1);
  ASSERT_EQ(Floorxport({"settings", "set", "Server CA File", cert, "--section", "2"}).exit_status, 0);
  EXPECT_NE(FloorId(server.address(), "Level 2"), -1);
}

// A server with users refuses a run without a log-in. Every workflow then
// runs with a canary password given each way a user can, and no transcript
// and no file the runs leave holds it.
TEST_F(ExchangeProgramTest, EachWayOfLoggingInWorksAndThePasswordIsWrittenNowhere) {
  const std::string canary = "canary-7fQ2-pw";
  const std::string users = (folder_ / "users").string();
  ASSERT_EQ(RunDevServerTool({"adduser", "--users", users, "ana"}, canary + "\n"), 0);
  DevServer server(folder_.path().string(), {"--users", users});
  ASSERT_TRUE(server.started());
  ProgramResult refused = Floorxport({"floors", "--server", server.address()});
  EXPECT_EQ(refused.exit_status, 1);
  EXPECT_NE(refused.err.find("HTTP error occured.\nError Code: 401."), std::string::npos) << refused.err;

  fs::create_directories(folder_ / "home");
  ScopedEnvironmentVariable home("HOME", (folder_ / "home").c_str());
  // The password file is outside the folder searched below.
  const fs::path secret = fs::temp_directory_path() / ("fx-canary-" + std::to_string(::getpid()));
  { std::ofstream(secret) << canary << "\n"; }
  const std::string plan = AnalysedSample();
  fs::create_directories(folder_ / "downloads");

  std::string transcripts;
  auto run = [&](std::vector<std::string> args, const std::vector<std::string>& more = {}) {
    args.insert(args.end(), more.begin(), more.end());
    const ProgramResult result = Floorxport(args);
    EXPECT_EQ(result.exit_status, 0) << result.out << result.err;
    transcripts += result.out + result.err;
    return result;
  };
  const std::vector<std::string> by_file = {"--user", "ana", "--password-file", secret.string()};
  run({"send", plan, "--server", server.address(), "--floor", "2"}, by_file);
  run({"open", "--server", server.address(), "--floor", "2", "-o", (folder_ / "downloads").string()}, by_file);
  run({"occupants", plan, "--save"}, by_file);
  // The floor dialog's listing is refused; the log-in dialog takes the next answers.
  const ProgramResult by_dialog =
      run({"run", plan, "-c", "_vantorySendTo\n" + server.address() + "\nOK\nana\n" + canary + "\nOK\n2\n\n\nSend"});
  EXPECT_NE(by_dialog.out.find("Vantory Log-In Dialog"), std::string::npos) << by_dialog.out;
  ScopedEnvironmentVariable user("FLOORXPORT_USER", "ana"), password("FLOORXPORT_PASSWORD", canary.c_str());
  EXPECT_NE(run({"floors", "--server", server.address()}).out.find("Level 1"), std::string::npos);
  const ProgramResult closed = run({"run", plan, "--save", "--yes", "-c", "ZOOM E"});
  EXPECT_NE(closed.out.find("File has been successfully sent to Vantory."), std::string::npos) << closed.out;
  server.Stop();
  fs::remove(secret);

  EXPECT_EQ(transcripts.find(canary), std::string::npos);
  size_t files = 0;
  for (const auto& entry : fs::recursive_directory_iterator(folder_.path())) {
    if (!entry.is_regular_file()) continue;
    ++files;
    EXPECT_EQ(ReadFile(entry.path().string()).find(canary), std::string::npos) << entry.path();
  }
  EXPECT_GT(files, 5u);
}

TEST_F(ExchangeProgramTest, CancelsEndAsTheCommandsSay) {
  DevServer server(folder_.path().string());
  ASSERT_TRUE(server.started());
  const std::string plan = AnalysedSample();
  const std::string before = ReadFile(plan);

  ProgramResult chooser = Floorxport({"run", plan, "-c", "_vantorySendTo\n" + server.address() + "\nCancel"});
  EXPECT_NE(chooser.out.find("PlanVault: Operation has been canceled."), std::string::npos) << chooser.out;
  ProgramResult send = Floorxport({"send", plan, "--server", server.address()});
  EXPECT_EQ(send.exit_status, 2) << send.out << send.err;
  EXPECT_NE(send.out.find("PlanVault: Operation has been canceled."), std::string::npos) << send.out;
  EXPECT_EQ(ReadFile(plan), before);  // nothing was sent, nothing saved

  // Cancel in Open from's floor dialog is an error without details.
  ProgramResult open = Floorxport({"open", "--server", server.address()});
  EXPECT_EQ(open.exit_status, 1);
  EXPECT_NE(open.out.find("Please contact Vantory at +1 555 010 0199\nPlanVault: Importing is finished."),
            std::string::npos) << open.out;
  EXPECT_TRUE(TempIsEmpty());
}

// A drawing sent once offers to send its changes when it closes; the send
// then takes the recorded server and floor, without dialogs.
TEST_F(ExchangeProgramTest, ChangedDrawingIsSentOnCloseAndAServerDownIsReported) {
  const std::string plan = AnalysedSample();
  {
    DevServer server(folder_.path().string());
    ASSERT_TRUE(server.started());
    ASSERT_EQ(Floorxport({"send", plan, "--server", server.address(), "--floor", "2"}).exit_status, 0);
    ProgramResult closed = Floorxport({"run", plan, "--save", "--yes"});
    EXPECT_NE(closed.out.find("Would you like to send updates to Vantory?"), std::string::npos) << closed.out;
    EXPECT_NE(closed.out.find("File has been successfully sent to Vantory."), std::string::npos) << closed.out;
  }
  ProgramResult down = Floorxport({"run", plan, "--save", "--yes"});
  EXPECT_NE(down.out.find("TCP error occured.\nError Code: 28."), std::string::npos) << down.out;
  EXPECT_NE(down.out.find(" operation : send_to"), std::string::npos) << down.out;
  EXPECT_TRUE(TempIsEmpty());
}

}  // namespace
}  // namespace fx::exchange_test
