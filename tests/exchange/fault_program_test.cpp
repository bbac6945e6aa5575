// Every exchange workflow against a server that misbehaves (vantory-devserver
// --fault): each run ends by itself with exit status 1 and the message the
// client gives for that failure, and loses nothing: the drawing sent is
// unchanged on disk, no download is left behind, the temporary folder is
// empty. The cases run at once: those that wait for the client's timeouts
// (hang, trickle) then cost one wait in all.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "dev_server.h"
#include "program_runner.h"

namespace fx::exchange_test {
namespace {

namespace fs = std::filesystem;
using fx::cli_test::ProgramResult;
using fx::cli_test::ReadFile;
using fx::cli_test::RunProgram;

// A run still going after this long has hung: it is killed and fails.
constexpr const char* kHungAfterSeconds = "90";

struct Workflow {
  const char* name;
  const char* request;  // the request the fault hits
};
constexpr Workflow kWorkflows[] = {
    {"floors", "getBuildingsAndFloors"},
    {"send", "setDrawing"},
    {"open", "getDWG"},
    {"occupants", "rooms"},
};

struct Fault {
  const char* mode;
  const char* soap_says;  // the drawing service client's report (a pattern)
  const char* rest_says;  // the occupant import's
};
constexpr Fault kFaults[] = {
    {"hang", "TCP error occured\\.", "The server did not answer in time."},
    // The runtime reads a reply cut short or unreadable as a TCP or an HTTP
    // error (code 200 or 500), by where it ends.
    {"close", "(TCP|HTTP) error occured\\.", "Transferred a partial file"},
    {"garbage", "HTTP error occured\\.\nError Code: 200\\.", "The server's answer is not JSON"},
    {"500", "HTTP error occured\\.\nError Code: 500\\.", "The server answered HTTP 500."},
    {"401", "HTTP error occured\\.\nError Code: 401\\.",
     "The server refused the log-in, and the log-in was cancelled."},
    {"trickle", "TCP error occured\\.\nError Code: -1\\.\nError Num: 110\\.", "The server did not answer in time."},
};

// A drawing's text without the time of its last save ($TDUPDATE and
// $TDUUPDATE), which every save sets.
std::string WithoutSaveTime(const std::string& dxf) {
  std::string out;
  int skip = 0;
  for (size_t start = 0; start < dxf.size();) {
    const size_t end = std::min(dxf.find('\n', start), dxf.size());
    std::string line = dxf.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (skip > 0 && --skip == 0) line.clear();
    if (line == "$TDUPDATE" || line == "$TDUUPDATE") skip = 2;
    out += line + '\n';
    start = end + 1;
  }
  return out;
}

struct Outcome {
  std::string label;
  std::string expected;
  ProgramResult result;
  bool drawing_unchanged = true;
  bool downloads_empty = true;
};

class FaultProgramTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() / ("fx-faults-" + std::to_string(::getpid()));
    fs::remove_all(dir_);
    fs::create_directories(dir_ / "temp");
    ::setenv("TEMP", (dir_ / "temp").c_str(), 1);
    ::setenv("FLOORXPORT_USER", "ana", 1);
    ::setenv("FLOORXPORT_PASSWORD", "any", 1);
  }
  void TearDown() override {
    ::unsetenv("TEMP");
    ::unsetenv("FLOORXPORT_USER");
    ::unsetenv("FLOORXPORT_PASSWORD");
    fs::remove_all(dir_);
  }

  static ProgramResult Floorxport(const fs::path& folder, std::vector<std::string> args) {
    args.insert(args.begin(), {kHungAfterSeconds, FX_FLOORXPORT, "--settings", (folder / "settings.reg").string()});
    return RunProgram("/usr/bin/timeout", args, folder.string());
  }

  // The analysed sample floor, made once.
  fs::path Plan() {
    const fs::path plan = dir_ / "plan.dxf";
    const ProgramResult analysed = Floorxport(
        dir_, {"analyze", std::string(FX_EXAMPLES_DIR) + "/sample-floor.dxf", "--floor-layer", "FloorArea",
               "--contour-layer", "RoomContours", "--block", "ROOMTAG", "--name-tag", "NAME", "--category-tag", "CATEGORY", "--description-tag", "DESCRIPTION", "-o",
               plan.string()});
    EXPECT_EQ(analysed.exit_status, 0) << analysed.out << analysed.err;
    return plan;
  }

  // One workflow against a server with one fault, in its own folder.
  static Outcome Run(const fs::path& folder, const fs::path& plan, const Workflow& workflow, const Fault& fault) {
    Outcome outcome;
    outcome.label = std::string(workflow.name) + " under " + fault.mode;
    outcome.expected = workflow.request == std::string("rooms") ? fault.rest_says : fault.soap_says;
    fs::create_directories(folder / "downloads");
    const fs::path drawing = folder / "plan.dxf";
    fs::copy_file(plan, drawing);
    const std::vector<std::string> fault_option = {"--fault", std::string(fault.mode) + ":" + workflow.request};
    std::vector<std::string> args;
    std::string port;
    if (workflow.name == std::string("send")) {
      // Sent once to a sound server on the port the faulty one takes next:
      // the drawing records that address, and the failed send saves it as it is.
      DevServer sound(folder.string());
      const ProgramResult sent = Floorxport(folder, {"send", drawing.string(), "--server", sound.address(), "--floor", "2"});
      EXPECT_EQ(sent.exit_status, 0) << sent.out << sent.err;
      port = sound.address().substr(sound.address().rfind(':') + 1);
      port.pop_back();
    }
    const std::string before = ReadFile(drawing.string());
    std::vector<std::string> extra = fault_option;
    if (!port.empty()) extra.insert(extra.end(), {"--port", port});
    DevServer server((folder / "faulty").string(), extra);
    EXPECT_TRUE(server.started()) << outcome.label;
    const std::string address = server.address();
    if (workflow.name == std::string("floors")) {
      args = {"floors", "--server", address};
    } else if (workflow.name == std::string("send")) {
      args = {"send", drawing.string(), "--floor", "2"};
    } else if (workflow.name == std::string("open")) {
      args = {"open", "--server", address, "--floor", "2", "-o", (folder / "downloads").string()};
    } else {
      args = {"occupants", drawing.string(), "--server", address, "--floor", "1", "--save"};
    }
    outcome.result = Floorxport(folder, args);
    outcome.drawing_unchanged = WithoutSaveTime(ReadFile(drawing.string())) == WithoutSaveTime(before);
    outcome.downloads_empty = fs::is_empty(folder / "downloads");
    return outcome;
  }

  fs::path dir_;
};

TEST_F(FaultProgramTest, EveryWorkflowEndsWithItsMessageAndLosesNothing) {
  const fs::path plan = Plan();
  std::vector<Outcome> outcomes(std::size(kWorkflows) * std::size(kFaults));
  std::vector<std::thread> runs;
  for (size_t w = 0; w < std::size(kWorkflows); ++w) {
    for (size_t f = 0; f < std::size(kFaults); ++f) {
      const size_t index = w * std::size(kFaults) + f;
      const fs::path folder = dir_ / ("case" + std::to_string(index));
      fs::create_directories(folder / "faulty");
      runs.emplace_back([&, w, f, index, folder] { outcomes[index] = Run(folder, plan, kWorkflows[w], kFaults[f]); });
    }
  }
  for (std::thread& run : runs) run.join();

  for (const Outcome& outcome : outcomes) {
    SCOPED_TRACE(outcome.label);
    const std::string said = outcome.result.out + outcome.result.err;
    EXPECT_EQ(outcome.result.exit_status, 1) << said;
    const bool rest = outcome.label.starts_with("occupants");
    EXPECT_TRUE(rest ? said.find(outcome.expected) != std::string::npos
                     : std::regex_search(said, std::regex("Error details:\n" + outcome.expected)))
        << said;
    EXPECT_TRUE(outcome.drawing_unchanged);
    EXPECT_TRUE(outcome.downloads_empty);
  }
  EXPECT_TRUE(fs::is_empty(dir_ / "temp"));
}

}  // namespace
}  // namespace fx::exchange_test
