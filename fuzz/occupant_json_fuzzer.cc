// Fuzz entry for the reading of the occupant import's REST answer (a JSON list
// of rooms): any bytes are read or refused with a message, every room kept has
// a name and no name twice, and every room's attribute values can be made.
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "server/occupant_data.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<fx::server::OccupantRoom> rooms;
  std::vector<std::string> problems;
  std::string error;
  const bool read = fx::server::ReadOccupantRooms(
      std::string_view(reinterpret_cast<const char*>(data), size), rooms, problems, error);
  if (!read) {
    if (error.empty()) __builtin_trap();
    return 0;
  }
  std::set<std::string> names;
  for (const fx::server::OccupantRoom& room : rooms) {
    if (room.name.empty() || !names.insert(room.name).second) __builtin_trap();
    (void)fx::server::OccupantValues(room);
  }
  return 0;
}
