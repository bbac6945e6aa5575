// Every exchange workflow against a server that misbehaves (vantory-devserver
// --fault): each run ends by itself with exit status 1 and its message, and
// loses nothing. The cases run at once, so the client's timeouts cost one wait.
#include <gtest/gtest.h>

#include <atomic>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "dev_server.h"
#include "drawing_text.h"
#include "exchange_program.h"

namespace fx::exchange_test {
namespace {

using fx::testing::WithoutSaveTime;

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

struct Outcome {
  std::string label;
  std::string expected;
  ProgramResult result;
  bool drawing_unchanged = true;
  bool downloads_empty = true;
};

// One workflow against a server with one fault, in its own folder.
Outcome RunWorkflow(const fs::path& folder, const fs::path& plan, const Workflow& workflow, const Fault& fault) {
  Outcome outcome;
  outcome.label = std::string(workflow.name) + " under " + fault.mode;
  outcome.expected = workflow.request == std::string("rooms") ? fault.rest_says : fault.soap_says;
  fs::create_directories(folder / "downloads");
  const fs::path drawing = folder / "plan.dxf";
  fs::copy_file(plan, drawing);
  std::vector<std::string> options = {"--fault", std::string(fault.mode) + ":" + workflow.request};
  const std::string name = workflow.name;
  if (name == "send") {
    // Sent once to a sound server on the port the faulty one takes next:
    // the drawing records that address, and the failed send saves it as it is.
    DevServer sound(folder.string());
    const ProgramResult sent = Floorxport(folder, {"send", drawing.string(), "--server", sound.address(), "--floor", "2"});
    EXPECT_EQ(sent.exit_status, 0) << sent.out << sent.err;
    std::string port = sound.address().substr(sound.address().rfind(':') + 1);
    port.pop_back();
    options.insert(options.end(), {"--port", port});
  }
  const std::string before = ReadFile(drawing.string());
  DevServer server((folder / "faulty").string(), options);
  EXPECT_TRUE(server.started()) << outcome.label;
  const std::string address = server.address();
  const std::vector<std::string> args =
      name == "floors" ? std::vector<std::string>{"floors", "--server", address}
      : name == "send" ? std::vector<std::string>{"send", drawing.string(), "--floor", "2"}
      : name == "open" ? std::vector<std::string>{"open", "--server", address, "--floor", "2", "-o",
                                                  (folder / "downloads").string()}
                       : std::vector<std::string>{"occupants", drawing.string(), "--server", address, "--floor", "1",
                                                  "--save"};
  outcome.result = Floorxport(folder, args);
  outcome.drawing_unchanged = WithoutSaveTime(ReadFile(drawing.string())) == WithoutSaveTime(before);
  outcome.downloads_empty = fs::is_empty(folder / "downloads");
  return outcome;
}

class FaultProgramTest : public ExchangeProgramTest {
 protected:
  ScopedEnvironmentVariable fault_user_{"FLOORXPORT_USER", "ana"};
  ScopedEnvironmentVariable fault_password_{"FLOORXPORT_PASSWORD", "any"};
};

TEST_F(FaultProgramTest, EveryWorkflowEndsWithItsMessageAndLosesNothing) {
  const fs::path plan = AnalysedSample();
  std::vector<Outcome> outcomes(std::size(kWorkflows) * std::size(kFaults));
  // A few cases at a time: all at once, servers of a sanitizer build on a
  // busy machine miss their start-up time.
  std::atomic<size_t> next = 0;
  std::vector<std::thread> runs;
  for (int worker = 0; worker < 6; ++worker) {
    runs.emplace_back([&] {
      for (size_t index; (index = next++) < outcomes.size();) {
        const fs::path folder = folder_ / ("case" + std::to_string(index));
        fs::create_directories(folder / "faulty");
        outcomes[index] = RunWorkflow(folder, plan, kWorkflows[index / std::size(kFaults)],
                                      kFaults[index % std::size(kFaults)]);
      }
    });
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
  EXPECT_TRUE(TempIsEmpty());
}

}  // namespace
}  // namespace fx::exchange_test
