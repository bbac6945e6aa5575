// The exchange as a user runs it: floorxport against vantory-devserver on
// loopback. Lists, creates a floor, sends drawings with their floor
// documents and opens them back, over HTTP and HTTPS, with and without a
// log-in, cancelled, and twice in one run.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "dev_server.h"
#include "program_runner.h"

namespace fx::exchange_test {
namespace {

namespace fs = std::filesystem;
using fx::cli_test::ProgramResult;
using fx::cli_test::ReadFile;
using fx::cli_test::RunProgram;

class ExchangeProgramTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() / ("fx-exchange-" + std::to_string(::getpid()) + "-" +
                                        ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(dir_);
    fs::create_directories(dir_ / "temp");
    ::setenv("TEMP", (dir_ / "temp").c_str(), 1);
    ::unsetenv("FLOORXPORT_USER");
    ::unsetenv("FLOORXPORT_PASSWORD");
  }
  void TearDown() override {
    ::unsetenv("TEMP");
    fs::remove_all(dir_);
  }

  ProgramResult Floorxport(std::vector<std::string> args) {
    args.insert(args.begin(), {"--settings", (dir_ / "settings.reg").string()});
    return RunProgram(FX_FLOORXPORT, args, dir_.string());
  }
  // A floor must be analysed before it is sent: its floor document needs
  // the floor outline.
  std::string Analysed(const fs::path& source, const fs::path& target,
                       const std::vector<std::string>& layers) {
    std::vector<std::string> args = {"analyze", source.string()};
    args.insert(args.end(), layers.begin(), layers.end());
    args.insert(args.end(), {"-o", target.string()});
    const ProgramResult analysed = Floorxport(args);
    EXPECT_EQ(analysed.exit_status, 0) << analysed.out << analysed.err;
    return target.string();
  }
  std::string Drawing() {
    return Analysed(fs::path(FX_EXAMPLES_DIR) / "sample-floor.dxf", dir_ / "plan.dxf",
                    {"--floor-layer", "FloorArea", "--contour-layer", "RoomContours", "--block",
                     "ROOMTAG", "--name-tag", "NAME", "--category-tag", "CATEGORY",
                     "--description-tag", "DESCRIPTION"});
  }
  nlohmann::json Listing(const std::string& server, const std::vector<std::string>& extra = {}) {
    std::vector<std::string> args = {"floors", "--server", server, "--json"};
    args.insert(args.end(), extra.begin(), extra.end());
    const ProgramResult listed = Floorxport(args);
    EXPECT_EQ(listed.exit_status, 0) << listed.out << listed.err;
    return nlohmann::json::parse(listed.out, nullptr, false);
  }
  int FloorId(const nlohmann::json& listing, const std::string& floor_name) {
    for (const auto& building : listing) {
      for (const auto& floor : building["floors"]) {
        if (floor["name"] == floor_name) return floor["id"].get<int>();
      }
    }
    return -1;
  }
  bool TempIsEmpty() { return fs::is_empty(dir_ / "temp"); }

  fs::path dir_;
};

// The whole round: list, create a floor through the floor dialog, send the
// drawing there, open it back byte for byte, and see it listed.
TEST_F(ExchangeProgramTest, CreateSendAndOpenBack) {
  DevServer server(dir_.string());
  ASSERT_TRUE(server.started());
  ASSERT_NE(FloorId(Listing(server.address()), "Level 1"), -1);

  const std::string plan = Drawing();
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

  const nlohmann::json listing = Listing(server.address());
  const int floor = FloorId(listing, "Level 3");
  ASSERT_NE(floor, -1) << listing.dump();

  const fs::path downloads = dir_ / "downloads";
  fs::create_directories(downloads);
  // Opened, the floor gets its occupants, which needs a log-in (any, here).
  ::setenv("FLOORXPORT_USER", "ana", 1);
  ::setenv("FLOORXPORT_PASSWORD", "any", 1);
  ProgramResult opened = Floorxport({"open", "--server", server.address(), "--floor",
                                     std::to_string(floor), "-o", downloads.string()});
  ASSERT_EQ(opened.exit_status, 0) << opened.out << opened.err;
  const fs::path download = downloads / "Demo Building_Level 3.dxf";
  ASSERT_TRUE(fs::exists(download)) << opened.out;
  EXPECT_EQ(ReadFile(download.string()), ReadFile(plan));
  EXPECT_NE(opened.out.find("Output file name: " + download.string()), std::string::npos) << opened.out;

  // The drawing remembers where it went: a second send needs no answers.
  ProgramResult again = Floorxport({"send", plan, "--floor", std::to_string(floor)});
  EXPECT_EQ(again.exit_status, 0) << again.out << again.err;
  // Sent as saved: closing it does not offer to send it again.
  EXPECT_EQ(again.out.find("Would you like to send updates"), std::string::npos) << again.out;
  ProgramResult servers = Floorxport({"servers"});
  EXPECT_EQ(servers.out, "* " + server.address() + "\n");
}

TEST_F(ExchangeProgramTest, CorpusDrawingTravelsWholeTwiceInOneRun) {
  const fs::path corpus = fs::path(FX_CORPUS_DIR) / "pms-app" / "building001-0_floor3.dxf";
  if (!fs::exists(corpus)) GTEST_SKIP() << "no corpus at " << corpus;
  DevServer server(dir_.string());
  ASSERT_TRUE(server.started());
  const int floor = FloorId(Listing(server.address()), "Level 2");
  const fs::path plan = Analysed(corpus, dir_ / "corpus plan.dxf",
                                 {"--floor-layer", "AREA-GROSS", "--contour-layer", "AREA-ASSIGN",
                                  "--name-layer", "A-IDEN-RNUM", "--type-layer", "Rooms-Information",
                                  "--description-layer", "AREA-TEXT"});
  const std::string send = "_vantorySendTo\n" + server.address() + "\nOK\n" +
                           std::to_string(floor) + "\n\n\nSend";
  ProgramResult sent = Floorxport({"run", plan.string(), "-c", send, "-c", send});
  ASSERT_EQ(sent.exit_status, 0) << sent.out << sent.err;
  size_t successes = 0;
  for (size_t at = 0; (at = sent.out.find("successfully sent", at)) != std::string::npos; ++at) ++successes;
  EXPECT_EQ(successes, 2u) << sent.out;
  EXPECT_TRUE(TempIsEmpty());

  ::setenv("FLOORXPORT_USER", "ana", 1);
  ::setenv("FLOORXPORT_PASSWORD", "any", 1);
  ProgramResult opened = Floorxport({"open", "--server", server.address(), "--floor",
                                     std::to_string(floor), "-o", dir_.string()});
  ASSERT_EQ(opened.exit_status, 0) << opened.out << opened.err;
  EXPECT_EQ(ReadFile((dir_ / "Demo Building_Level 2.dxf").string()), ReadFile(plan.string()));
}

TEST_F(ExchangeProgramTest, HttpsWithASelfSignedCertificate) {
  const std::string cert = (dir_ / "server.pem").string();
  ASSERT_EQ(RunDevServerTool({"--generate-cert", cert}, ""), 0);
  DevServer server(dir_.string(), {"--tls-cert", cert});
  ASSERT_TRUE(server.started());
  ASSERT_EQ(server.address().rfind("https://", 0), 0u) << server.address();
  EXPECT_NE(FloorId(Listing(server.address()), "Level 2"), -1);

  // The strict check refuses the certificate until it is trusted, by the
  // option or by the settings.
  ProgramResult refused = Floorxport({"floors", "--server", server.address(), "--tls-verify"});
  EXPECT_EQ(refused.exit_status, 1);
  EXPECT_NE(refused.err.find("SSL error occured."), std::string::npos) << refused.err;
  EXPECT_NE(FloorId(Listing(server.address(), {"--ca-file", cert}), "Level 2"), -1);
  ASSERT_EQ(Floorxport({"settings", "set", "Verify Server Certificate", "1", "--section", "2", "--int"}).exit_status,
            0);
  EXPECT_EQ(Floorxport({"floors", "--server", server.address()}).exit_status, 1);
  ASSERT_EQ(Floorxport({"settings", "set", "Server CA File", cert, "--section", "2"}).exit_status, 0);
  EXPECT_NE(FloorId(Listing(server.address()), "Level 2"), -1);
}

TEST_F(ExchangeProgramTest, LogInFromTheEnvironmentOrTheDialog) {
  const std::string users = (dir_ / "users").string();
  ASSERT_EQ(RunDevServerTool({"adduser", "--users", users, "ana"}, "open sesame\n"), 0);
  DevServer server(dir_.string(), {"--users", users});
  ASSERT_TRUE(server.started());

  ProgramResult refused = Floorxport({"floors", "--server", server.address()});
  EXPECT_EQ(refused.exit_status, 1);
  EXPECT_NE(refused.err.find("HTTP error occured.\nError Code: 401."), std::string::npos) << refused.err;

  ::setenv("FLOORXPORT_USER", "ana", 1);
  ::setenv("FLOORXPORT_PASSWORD", "open sesame", 1);
  EXPECT_NE(FloorId(Listing(server.address()), "Level 1"), -1);
  ::unsetenv("FLOORXPORT_USER");
  ::unsetenv("FLOORXPORT_PASSWORD");

  const std::string password_file = (dir_ / "password").string();
  std::FILE* file = std::fopen(password_file.c_str(), "w");
  std::fputs("open sesame\n", file);
  std::fclose(file);
  EXPECT_NE(FloorId(Listing(server.address(), {"--user", "ana", "--password-file", password_file}),
                    "Level 1"),
            -1);

  // The listing in the floor dialog is refused; the log-in dialog takes the
  // next answers, and the password never shows in the transcript.
  const std::string plan = Drawing();
  const std::string script = "_vantorySendTo\n" + server.address() +
                             "\nOK\nana\nopen sesame\nOK\n2\n\n\nSend";
  ProgramResult sent = Floorxport({"run", plan, "-c", script});
  EXPECT_EQ(sent.exit_status, 0) << sent.out << sent.err;
  EXPECT_NE(sent.out.find("Vantory Log-In Dialog"), std::string::npos) << sent.out;
  EXPECT_EQ(sent.out.find("open sesame"), std::string::npos) << sent.out;
  EXPECT_EQ(ReadFile((dir_ / "settings.reg").string()).find("sesame"), std::string::npos);
}

// Every workflow run with a canary password, given each way a user can:
// no file the runs leave (drawings, settings, downloads, temporary folders,
// the server's database) and no transcript holds it.
TEST_F(ExchangeProgramTest, ACanaryPasswordIsWrittenNowhere) {
  const std::string canary = "canary-7fQ2-pw";
  const std::string users = (dir_ / "users").string();
  ASSERT_EQ(RunDevServerTool({"adduser", "--users", users, "ana"}, canary + "\n"), 0);
  DevServer server(dir_.string(), {"--users", users});
  ASSERT_TRUE(server.started());
  const char* const old_home = std::getenv("HOME");
  const std::string kept_home = old_home != nullptr ? old_home : "";
  const fs::path home = dir_ / "home";
  fs::create_directories(home);
  ::setenv("HOME", home.c_str(), 1);
  const fs::path secret = fs::temp_directory_path() / ("fx-canary-" + std::to_string(::getpid()));
  { std::ofstream(secret) << canary << "\n"; }
  const std::string plan = Drawing();
  const fs::path downloads = dir_ / "downloads";
  fs::create_directories(downloads);

  std::string transcripts;
  auto run = [&](const std::vector<std::string>& args) {
    const ProgramResult result = Floorxport(args);
    EXPECT_EQ(result.exit_status, 0) << result.out << result.err;
    transcripts += result.out + result.err;
  };
  const std::vector<std::string> by_file = {"--user", "ana", "--password-file", secret.string()};
  auto with = [](std::vector<std::string> args, const std::vector<std::string>& more) {
    args.insert(args.end(), more.begin(), more.end());
    return args;
  };
  run(with({"send", plan, "--server", server.address(), "--floor", "2"}, by_file));
  run(with({"open", "--server", server.address(), "--floor", "2", "-o", downloads.string()}, by_file));
  run(with({"occupants", plan, "--save"}, by_file));
  run({"run", plan, "-c", "_vantorySendTo\n" + server.address() + "\nOK\nana\n" + canary + "\nOK\n2\n\n\nSend"});
  ::setenv("FLOORXPORT_USER", "ana", 1);
  ::setenv("FLOORXPORT_PASSWORD", canary.c_str(), 1);
  run({"floors", "--server", server.address()});
  run({"run", plan, "--save", "--yes", "-c", "ZOOM E"});
  server.Stop();
  fs::remove(secret);

  EXPECT_EQ(transcripts.find(canary), std::string::npos);
  size_t files = 0;
  for (const auto& entry : fs::recursive_directory_iterator(dir_)) {
    if (!entry.is_regular_file()) continue;
    ++files;
    EXPECT_EQ(ReadFile(entry.path().string()).find(canary), std::string::npos) << entry.path();
  }
  EXPECT_GT(files, 5u);
  ::setenv("HOME", kept_home.c_str(), 1);
}

TEST_F(ExchangeProgramTest, CancelsEndAsTheCommandsSay) {
  DevServer server(dir_.string());
  ASSERT_TRUE(server.started());
  const std::string plan = Drawing();
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
  const std::string plan = Drawing();
  {
    DevServer server(dir_.string());
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
