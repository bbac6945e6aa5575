// The occupant import as a user runs it: floorxport occupants (and Open
// from) against vantory-devserver, the result read back with ezdxf, and
// failed requests against the canned loopback peer.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "canned_server.h"
#include "dev_server.h"
#include "program_runner.h"

namespace fx::exchange_test {
namespace {

namespace fs = std::filesystem;
using fx::cli_test::ProgramResult;
using fx::cli_test::ReadFile;
using fx::cli_test::RunProgram;

constexpr const char* kPassword = "open sesame";

class OccupantProgramTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() / ("fx-occupants-" + std::to_string(::getpid()) + "-" +
                                        ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(dir_);
    fs::create_directories(dir_ / "temp");
    ::setenv("TEMP", (dir_ / "temp").c_str(), 1);
    // The development server is open: any log-in passes.
    ::setenv("FLOORXPORT_USER", "ana", 1);
    ::setenv("FLOORXPORT_PASSWORD", kPassword, 1);
  }
  void TearDown() override {
    ::unsetenv("TEMP");
    ::unsetenv("FLOORXPORT_USER");
    ::unsetenv("FLOORXPORT_PASSWORD");
    fs::remove_all(dir_);
  }

  ProgramResult Floorxport(std::vector<std::string> args) {
    args.insert(args.begin(), {"--settings", (dir_ / "settings.reg").string()});
    return RunProgram(FX_FLOORXPORT, args, dir_.string());
  }
  // The sample floor, analysed: its 24 rooms 1.01 to 1.24.
  std::string Plan() {
    const std::string plan = (dir_ / "plan.dxf").string();
    const ProgramResult analysed = Floorxport(
        {"analyze", std::string(FX_EXAMPLES_DIR) + "/sample-floor.dxf", "--floor-layer", "FloorArea",
         "--contour-layer", "RoomContours", "--block", "ROOMTAG", "--name-tag", "NAME",
         "--category-tag", "CATEGORY", "--description-tag", "DESCRIPTION", "-o", plan});
    EXPECT_EQ(analysed.exit_status, 0) << analysed.out << analysed.err;
    return plan;
  }
  // The id of the demo floor "Level 1", which the seed gives six of the
  // sample's rooms with their users.
  std::string LevelOne(const DevServer& server) {
    const ProgramResult listed = Floorxport({"floors", "--server", server.address(), "--json"});
    for (const auto& building : nlohmann::json::parse(listed.out, nullptr, false)) {
      for (const auto& floor : building["floors"]) {
        if (floor["name"] == "Level 1") return std::to_string(floor["id"].get<int>());
      }
    }
    ADD_FAILURE() << listed.out << listed.err;
    return "0";
  }
  nlohmann::json Dump(const std::string& drawing) {
    const ProgramResult dump = RunProgram(FX_SYSTEM_PYTHON, {FX_OCCUPANT_DUMP, drawing}, dir_.string());
    EXPECT_EQ(dump.exit_status, 0) << dump.err;
    return nlohmann::json::parse(dump.out, nullptr, false);
  }

  fs::path dir_;
};

// Tag to text of an insert's attributes, and that each lies on the import layer.
std::map<std::string, std::string> Attributes(const nlohmann::json& insert) {
  std::map<std::string, std::string> values;
  for (const auto& attribute : insert["attribs"]) {
    EXPECT_EQ(attribute[2], "!VANTORYIMPORT");
    values[attribute[0]] = attribute[1];
  }
  return values;
}

TEST_F(OccupantProgramTest, TwoImportsLeaveOneSetOfInsertsFilledFromTheServer) {
  DevServer server(dir_.string());
  ASSERT_TRUE(server.started());
  const std::string floor = LevelOne(server);
  const std::string rooms = (dir_ / "rooms.json").string();
  std::FILE* file = std::fopen(rooms.c_str(), "w");
  std::fputs(R"([
    {"name": "1.01", "type": "Office", "costCenter": "CC-1100",
     "users": [{"name": "Ana Lima", "jobTitle": "Architect"}, {"name": "Ben Okafor", "jobTitle": "Engineer"},
               {"name": "Cy Berg", "jobTitle": "Clerk"}]},
    {"name": " 1.05 ", "type": "Storage", "users": []},
    {"name": "9.99", "type": "Office", "users": [{"name": "Dee Ray"}]}
  ])", file);
  std::fclose(file);
  ASSERT_EQ(RunDevServerTool({"rooms", "--db", (dir_ / "vantory.db").string(), "--floor", floor,
                              "--json", rooms}, ""), 0);

  // Sent once, the drawing knows its server and floor.
  const std::string plan = Plan();
  ASSERT_EQ(Floorxport({"send", plan, "--server", server.address(), "--floor", floor}).exit_status, 0);
  for (int run = 0; run < 2; ++run) {
    ProgramResult imported = Floorxport({"occupants", plan, "--save"});
    ASSERT_EQ(imported.exit_status, 0) << imported.out << imported.err;
    EXPECT_NE(imported.out.find("\nRooms updated: 2\nVantory rooms not in the drawing: 1: 9.99"
                                "\nDrawing rooms without Vantory data: 22"),
              std::string::npos) << imported.out;
    EXPECT_EQ(imported.out.find(kPassword), std::string::npos);
  }

  const nlohmann::json dump = Dump(plan);
  EXPECT_EQ(dump["attdefs"], nlohmann::json({"Room number", "Info1", "Info2", "Info3", "Info4"}));
  EXPECT_EQ(dump["on_layer"], 2);
  ASSERT_EQ(dump["inserts"].size(), 2u) << dump.dump();
  std::map<std::string, std::map<std::string, std::string>> by_room;
  for (const auto& insert : dump["inserts"]) {
    EXPECT_EQ(insert["layer"], "!VANTORYIMPORT");
    EXPECT_GT(insert["scale"].get<double>(), 0);
    const auto values = Attributes(insert);
    by_room[values.at("Room number")] = values;
  }
  EXPECT_EQ(by_room.at("1.01"), (std::map<std::string, std::string>{
                                    {"Room number", "1.01"},
                                    {"Info1", "Ana Lima +2 More Users (Name)"},
                                    {"Info2", "Architect (Job title)"},
                                    {"Info3", "Office (Room Type)"},
                                    {"Info4", "CC-1100 (Cost center)"}}));
  EXPECT_EQ(by_room.at("1.05").at("Info1"), "");
  EXPECT_EQ(by_room.at("1.05").at("Info3"), "Storage (Room Type)");
  EXPECT_EQ(ReadFile((dir_ / "settings.reg").string()).find("sesame"), std::string::npos);
}

TEST_F(OccupantProgramTest, OpenFromImportsTheOccupantsOfTheOpenedFloor) {
  DevServer server(dir_.string());
  ASSERT_TRUE(server.started());
  const std::string floor = LevelOne(server);
  const std::string plan = Plan();
  ASSERT_EQ(Floorxport({"send", plan, "--server", server.address(), "--floor", floor}).exit_status, 0);
  ProgramResult opened = Floorxport({"open", "--server", server.address(), "--floor", floor, "-o", dir_.string()});
  ASSERT_EQ(opened.exit_status, 0) << opened.out << opened.err;
  const size_t finished = opened.out.find("PlanVault: Importing is finished.");
  const size_t updated = opened.out.find(
      "\nCommand: _vantoryUpdateVantoryData\nPlanVault: Updating Vantory attributes of floor " + floor);
  ASSERT_NE(updated, std::string::npos) << opened.out;
  EXPECT_LT(finished, updated);
  EXPECT_NE(opened.out.find("\nRooms updated: 6\nVantory rooms not in the drawing: 0"
                            "\nDrawing rooms without Vantory data: 18"),
            std::string::npos) << opened.out;
}

// Whatever goes wrong with the request, the drawing (with an import made
// before) stays as it was and the transcript says why.
TEST_F(OccupantProgramTest, AFailedRequestLeavesTheDrawingAsItWasAndSaysWhy) {
  const std::string plan = Plan();
  {
    DevServer server(dir_.string());
    ASSERT_TRUE(server.started());
    const ProgramResult first =
        Floorxport({"occupants", plan, "--server", server.address(), "--floor", LevelOne(server), "--save"});
    ASSERT_EQ(first.exit_status, 0) << first.out << first.err;
  }
  const std::string before = ReadFile(plan);
  std::string down_address;
  {
    CannedServer gone;
    down_address = gone.address();
  }
  const struct {
    CannedReply reply;
    const char* says;
  } kCases[] = {
      {PlainReply(R"({"error": "database is locked"})", 500, "application/json"),
       "The server answered HTTP 500. database is locked"},
      {PlainReply(R"([{"name": "1.01", "users": [)", 200, "application/json"),
       "The server's answer is not JSON"},
      {ChunkedReply("[" + std::string(50 * 1024 * 1024, ' ') + "]"), "The answer is larger than 16 MB."},
      {UnauthorizedReply(), "The server refused the log-in, and the log-in was cancelled."},
      {{"", SIZE_MAX, true}, "The server did not answer in time."},
      {{}, "Couldn't connect to server"},
  };
  for (const auto& c : kCases) {
    CannedServer canned;
    canned.Push(c.reply);
    const bool down = c.reply.bytes.empty() && !c.reply.silent;
    const ProgramResult failed = Floorxport(
        {"occupants", plan, "--server", down ? down_address : canned.address(), "--floor", "7", "--save"});
    EXPECT_EQ(failed.exit_status, 1) << c.says;
    EXPECT_NE(failed.out.find(c.says), std::string::npos) << failed.out;
    EXPECT_EQ(failed.out.find(kPassword), std::string::npos);
    EXPECT_TRUE(ReadFile(plan) == before) << c.says;
    if (down) continue;
    // The request as the service expects it.
    const std::vector<std::string> requests = canned.requests();
    ASSERT_FALSE(requests.empty()) << c.says;
    EXPECT_TRUE(requests[0].starts_with(
        "GET /external/api/rest/v2/rooms?floorId=7&limit=2000&selector=users(jobTitle),type,costCenter "
        "HTTP/1.1\r\n")) << requests[0];
    EXPECT_NE(requests[0].find("\r\nUser-Agent: AcadPlanVaultPlugIn\r\n"), std::string::npos);
    EXPECT_NE(requests[0].find("\r\nx-auth-username: ana\r\nx-auth-password: open sesame\r\n"),
              std::string::npos) << requests[0];
  }
}

}  // namespace
}  // namespace fx::exchange_test
