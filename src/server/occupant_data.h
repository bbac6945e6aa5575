// The occupant data of a floor as the service's REST API gives them: the
// request, the reading of its JSON answer, and the five attribute values
// the import shows for a room.
//
// The answer is a JSON list of rooms, each an object of which `name`,
// `type`, `costCenter` and `users` (a list of objects with `name` and
// `jobTitle`) are read; every other field is ignored.
#ifndef FLOORXPORT_SERVER_OCCUPANT_DATA_H_
#define FLOORXPORT_SERVER_OCCUPANT_DATA_H_

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace fx::server {

// The request: the path and query after the server address (the floor's id
// in place of %d), the user agent and the header lines (the user name and
// password in place of the two %s).
inline constexpr const char* kRoomsRequestPath =
    "external/api/rest/v2/rooms?floorId=%d&limit=2000&selector=users(jobTitle),type,costCenter";
inline constexpr const char* kRoomsRequestAgent = "RequestUserData";
inline constexpr const char* kRoomsRequestHeaders =
    "User-Agent: AcadPlanVaultPlugIn\nx-auth-username: %s\nx-auth-password: %s";

struct OccupantUser {
  std::string name;
  std::string job_title;
};

struct OccupantRoom {
  std::string name;  // trimmed of blanks at both ends, as room names compare
  std::string type;
  std::string cost_center;
  std::vector<OccupantUser> users;
};

// Reads the answer. False, with `error`, when it is not JSON or not a list
// (an object's "error" text is quoted then). Entries that cannot be used
// are left out and fields of the wrong type read as empty; each is told in
// `problems` ("Room 3 has no name: left out."). A name listed twice keeps
// its first entry; the later ones are left out and told too.
bool ReadOccupantRooms(std::string_view json, std::vector<OccupantRoom>& rooms,
                       std::vector<std::string>& problems, std::string& error);

// The attribute tags of the import block, in the block's order.
inline constexpr std::array<const char*, 5> kOccupantTags = {"Room number", "Info1", "Info2",
                                                              "Info3", "Info4"};
// The labels after the values of Info1 to Info4.
inline constexpr const char* kNameLabel = " (Name)";
inline constexpr const char* kJobTitleLabel = " (Job title)";
inline constexpr const char* kRoomTypeLabel = " (Room Type)";
inline constexpr const char* kCostCenterLabel = " (Cost center)";
// After the first user's name when the room has further users.
inline constexpr const char* kMoreUsers = " +%d More Users";

// The values of kOccupantTags for `room`: its name; the first user's name
// with the count of further users; the first user's job title; the room
// type; the cost center. Each of Info1 to Info4 ends with its label, and
// is empty when there is nothing to label.
std::array<std::string, 5> OccupantValues(const OccupantRoom& room);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_OCCUPANT_DATA_H_
