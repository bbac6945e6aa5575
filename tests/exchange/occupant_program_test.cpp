// The occupant import as a user runs it: floorxport occupants (and Open
// from) against vantory-devserver, the result read back with ezdxf, and
// failed requests against the canned loopback peer (the failures a server
// makes with --fault are in fault_program_test.cpp).
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "canned_server.h"
#include "dev_server.h"
#include "exchange_program.h"

namespace fx::exchange_test {
namespace {

constexpr const char* kPassword = "open sesame";

// The import as ezdxf reads it: the import block's ATTDEF tags, the entities
// on the import layer, and each insert of the block with its attributes.
constexpr const char* kDumpImport = R"py(
import json, sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
name, layer, msp = "VANTORY-IMPORT-ATTRIBUTES-BLOCK", "!VANTORYIMPORT", doc.modelspace()
block = doc.blocks.get(name)
json.dump({
    "attdefs": None if block is None else [e.dxf.tag for e in block if e.dxftype() == "ATTDEF"],
    "on_layer": sum(1 for e in msp if e.dxf.layer == layer),
    "inserts": [{"layer": i.dxf.layer, "scale": i.dxf.xscale,
                 "attribs": [[a.dxf.tag, a.dxf.text, a.dxf.layer] for a in i.attribs]}
                for i in msp.query("INSERT") if i.dxf.name == name]}, sys.stdout)
)py";

// The development server is open: any log-in passes.
class OccupantProgramTest : public ExchangeProgramTest {
 protected:
  OccupantProgramTest() {
    ::setenv("FLOORXPORT_USER", "ana", 1);
    ::setenv("FLOORXPORT_PASSWORD", kPassword, 1);
  }
  // The id of the demo floor "Level 1", which the seed gives six of the
  // sample's rooms with their users.
  std::string LevelOne(const DevServer& server) { return std::to_string(FloorId(server.address(), "Level 1")); }
  nlohmann::json Dump(const std::string& drawing) {
    const ProgramResult dump =
        fx::cli_test::RunProgram(FX_SYSTEM_PYTHON, {"-c", kDumpImport, drawing}, folder_.path().string());
    EXPECT_EQ(dump.exit_status, 0) << dump.err;
    return nlohmann::json::parse(dump.out, nullptr, false);
  }
};

// The floor's rooms are imported when it is opened from the server, and on
// the command; imported twice, the drawing has one set of inserts.
TEST_F(OccupantProgramTest, OpenFromAndTwoImportsLeaveOneSetOfInsertsFilledFromTheServer) {
  DevServer server(folder_.path().string());
  ASSERT_TRUE(server.started());
  const std::string floor = LevelOne(server);
  const std::string rooms = (folder_ / "rooms.json").string();
  std::ofstream(rooms) << R"([
    {"name": "1.01", "type": "Office", "costCenter": "CC-1100",
     "users": [{"name": "Ana Lima", "jobTitle": "Architect"}, {"name": "Ben Okafor", "jobTitle": "Engineer"},
               {"name": "Cy Berg", "jobTitle": "Clerk"}]},
    {"name": " 1.05 ", "type": "Storage", "users": []},
    {"name": "9.99", "type": "Office", "users": [{"name": "Dee Ray"}]}
  ])";
  ASSERT_EQ(RunDevServerTool({"rooms", "--db", (folder_ / "vantory.db").string(), "--floor", floor,
                              "--json", rooms}, ""), 0);
  const std::string summary =
      "\nRooms updated: 2\nVantory rooms not in the drawing: 1: 9.99\nDrawing rooms without Vantory data: 22";

  // Sent once, the drawing knows its server and floor.
  const std::string plan = AnalysedSample();
  ASSERT_EQ(Floorxport({"send", plan, "--server", server.address(), "--floor", floor}).exit_status, 0);
  fs::create_directories(folder_ / "downloads");
  ProgramResult opened = Floorxport(
      {"open", "--server", server.address(), "--floor", floor, "-o", (folder_ / "downloads").string()});
  ASSERT_EQ(opened.exit_status, 0) << opened.out << opened.err;
  const size_t finished = opened.out.find("PlanVault: Importing is finished.");
  const size_t updated = opened.out.find(
      "\nCommand: _vantoryUpdateVantoryData\nPlanVault: Updating Vantory attributes of floor " + floor);
  ASSERT_NE(updated, std::string::npos) << opened.out;
  EXPECT_LT(finished, updated);
  EXPECT_NE(opened.out.find(summary), std::string::npos) << opened.out;
  for (int run = 0; run < 2; ++run) {
    ProgramResult imported = Floorxport({"occupants", plan, "--save"});
    ASSERT_EQ(imported.exit_status, 0) << imported.out << imported.err;
    EXPECT_NE(imported.out.find(summary), std::string::npos) << imported.out;
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
    std::map<std::string, std::string> values;
    for (const auto& attribute : insert["attribs"]) {
      EXPECT_EQ(attribute[2], "!VANTORYIMPORT");
      values[attribute[0]] = attribute[1];
    }
    by_room[values["Room number"]] = values;
  }
  EXPECT_EQ(by_room["1.01"], (std::map<std::string, std::string>{
                                 {"Room number", "1.01"},
                                 {"Info1", "Ana Lima +2 More Users (Name)"},
                                 {"Info2", "Architect (Job title)"},
                                 {"Info3", "Office (Room Type)"},
                                 {"Info4", "CC-1100 (Cost center)"}}));
  EXPECT_EQ(by_room["1.05"]["Info1"], "");
  EXPECT_EQ(by_room["1.05"]["Info3"], "Storage (Room Type)");
  EXPECT_EQ(ReadFile((folder_ / "settings.reg").string()).find("sesame"), std::string::npos);
}

// Whatever goes wrong with the request, the drawing (with an import made
// before) stays as it was and the transcript says why.
TEST_F(OccupantProgramTest, AFailedRequestLeavesTheDrawingAsItWasAndSaysWhy) {
  const std::string plan = AnalysedSample();
  {
    DevServer server(folder_.path().string());
    ASSERT_TRUE(server.started());
    const ProgramResult first =
        Floorxport({"occupants", plan, "--server", server.address(), "--floor", LevelOne(server), "--save"});
    ASSERT_EQ(first.exit_status, 0) << first.out << first.err;
  }
  const std::string before = ReadFile(plan);
  const struct {
    CannedReply reply;
    const char* says;
  } kCases[] = {
      {ChunkedReply("[" + std::string(17 * 1024 * 1024, ' ') + "]"), "The answer is larger than 16 MB."},
      {{}, "Couldn't connect to server"},
  };
  std::string down_address;
  {
    CannedServer gone;
    down_address = gone.address();
  }
  for (const auto& c : kCases) {
    CannedServer canned;
    canned.Push(c.reply);
    const bool down = c.reply.bytes.empty();
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
