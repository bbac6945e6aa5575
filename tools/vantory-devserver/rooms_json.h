// Rooms as JSON, the form the REST room endpoint answers and the `rooms`
// command imports: [{"name": "...", "type": "...", "costCenter": "...",
// "users": [{"name": "...", "jobTitle": "..."}]}].
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_ROOMS_JSON_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_ROOMS_JSON_H_

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "storage.h"

namespace fx::devserver {

// Which fields of a room a request asks for, from its `selector`
// parameter, e.g. "users(jobTitle),type,costCenter". The name is always
// given; without a selector every field is.
struct RoomSelector {
  bool type = true;
  bool cost_center = true;
  bool users = true;
  bool job_title = true;
};
RoomSelector ParseRoomSelector(std::string_view selector);

std::string RoomsToJson(const std::vector<Room>& rooms, const RoomSelector& selector);

class RoomsJsonError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reads a JSON list of rooms; only "name" is required, other fields
// default to empty. Throws RoomsJsonError naming the offending room.
std::vector<Room> RoomsFromJson(std::string_view text);

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_ROOMS_JSON_H_
