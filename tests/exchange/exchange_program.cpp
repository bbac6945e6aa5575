#include "exchange_program.h"

#include <nlohmann/json.hpp>

namespace fx::exchange_test {

ProgramResult Floorxport(const fs::path& folder, std::vector<std::string> args) {
  args.insert(args.begin(), {"90", FX_FLOORXPORT, "--settings", (folder / "settings.reg").string()});
  return fx::cli_test::RunProgram("/usr/bin/timeout", args, folder.string());
}

std::string AnalysedSample(const fs::path& folder, const fs::path& target) {
  const ProgramResult analysed = Floorxport(
      folder, {"analyze", std::string(FX_EXAMPLES_DIR) + "/sample-floor.dxf", "--floor-layer", "FloorArea",
               "--contour-layer", "RoomContours", "--block", "ROOMTAG", "--name-tag", "NAME", "--category-tag",
               "CATEGORY", "--description-tag", "DESCRIPTION", "-o", target.string()});
  EXPECT_EQ(analysed.exit_status, 0) << analysed.out << analysed.err;
  return target.string();
}

int FloorId(const fs::path& folder, const std::string& server, const std::string& floor_name,
            const std::vector<std::string>& extra) {
  std::vector<std::string> args = {"floors", "--server", server, "--json"};
  args.insert(args.end(), extra.begin(), extra.end());
  const ProgramResult listed = Floorxport(folder, args);
  EXPECT_EQ(listed.exit_status, 0) << listed.out << listed.err;
  for (const auto& building : nlohmann::json::parse(listed.out, nullptr, false)) {
    for (const auto& floor : building["floors"]) {
      if (floor["name"] == floor_name) return floor["id"].get<int>();
    }
  }
  return -1;
}

ExchangeProgramTest::ExchangeProgramTest() : temp_("TEMP", (folder_ / "temp").c_str()) {
  fs::create_directories(folder_ / "temp");
}

}  // namespace fx::exchange_test
