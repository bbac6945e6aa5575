#include "demo_seed.h"

#include <unistd.h>

#include <filesystem>
#include <span>
#include <system_error>
#include <vector>

#include "atomic_file.h"
#include "storage.h"

namespace fx::devserver {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSampleRelative = "examples/sample-floor.dxf";

// Rooms 1.01 to 1.05 and 1.12 of the sample floor, with their room-tag
// categories as types and invented cost centres and occupants.
std::vector<Room> DemoRooms() {
  return {
      {"1.01", "Office", "CC-1100",
       {{"Robin Example", "Facility Manager"}, {"Sam Sample", "Space Planner"}}},
      {"1.02", "Office", "CC-1100", {{"Kim Placeholder", "Architect"}}},
      {"1.03", "Office", "CC-1200", {{"Alex Demo", "Team Lead"}}},
      {"1.04", "Office", "CC-1200",
       {{"Jo Test", "Developer"}, {"Noa Exemple", "Développeuse"}}},
      {"1.05", "Storage", "CC-9000", {}},
      {"1.12", "Meeting", "CC-9000", {}},
  };
}

}  // namespace

std::string FindSampleDrawing(const std::string& option) {
  if (!option.empty()) return option;
  std::vector<fs::path> candidates;
#ifdef FX_SOURCE_DIR
  candidates.push_back(fs::path(FX_SOURCE_DIR) / kSampleRelative);
#endif
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (!error) candidates.push_back(program.parent_path() / "../.." / kSampleRelative);
  for (const fs::path& candidate : candidates) {
    if (fs::is_regular_file(candidate, error)) return candidate.lexically_normal().string();
  }
  return {};
}

void SeedDemo(Storage& storage, const std::string& sample_drawing) {
  const std::string sample = ReadWholeFile(sample_drawing);
  BuildingRecord building;
  building.name = "Demo Building";
  building.code = "DEMO";
  building.street = "1 Sample Street";
  building.street2 = "Plans office";
  building.city = "Exampleton";
  building.postal_code = "12345";
  building.state_code = "EX";
  building.state_name = "Example State";
  building.latitude = "48.2000";
  building.longitude = "16.3700";
  const int id = storage.AddBuilding(building);
  const int level1 = *storage.CreateFloor(id, "Level 1");
  storage.CreateFloor(id, "Level 2");
  const std::span<const unsigned char> bytes(reinterpret_cast<const unsigned char*>(sample.data()),
                                             sample.size());
  storage.SaveDrawing(level1, bytes, {}, std::string("Sample floor (examples/sample-floor.dxf)"),
                      std::string("dxf"));
  storage.ReplaceRooms(level1, DemoRooms());
}

}  // namespace fx::devserver
