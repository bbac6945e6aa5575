#include "server/occupant_data.h"

#include <cstdio>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <unordered_set>

#include "rooms/identifier_entity.h"

namespace fx::server {
namespace {

using json = nlohmann::json;

// Rooms, users and their fields lie three levels down; anything nested far
// deeper is no answer of the service, and is refused before it costs more.
constexpr int kMaxDepth = 32;

struct TooDeep : std::runtime_error {
  TooDeep() : std::runtime_error("too deep") {}
};

// The text of `key` in `object`: empty when it is missing or null; empty
// with a problem when it is not a text.
std::string TextField(const json& object, const char* key, const std::string& where,
                      std::vector<std::string>& problems) {
  const auto it = object.find(key);
  if (it == object.end() || it->is_null()) return {};
  if (it->is_string()) return it->get<std::string>();
  problems.push_back(where + ": \"" + key + "\" is not a text: left empty.");
  return {};
}

std::vector<OccupantUser> Users(const json& room, const std::string& where,
                                std::vector<std::string>& problems) {
  std::vector<OccupantUser> users;
  const auto it = room.find("users");
  if (it == room.end() || it->is_null()) return users;
  if (!it->is_array()) {
    problems.push_back(where + ": \"users\" is not a list: no users read.");
    return users;
  }
  for (size_t i = 0; i < it->size(); ++i) {
    const json& user = (*it)[i];
    const std::string who = where + ", user " + std::to_string(i + 1);
    if (!user.is_object()) {
      problems.push_back(who + " is not an object: left out.");
      continue;
    }
    users.push_back({TextField(user, "name", who, problems), TextField(user, "jobTitle", who, problems)});
  }
  return users;
}

}  // namespace

bool ReadOccupantRooms(std::string_view text, std::vector<OccupantRoom>& rooms,
                       std::vector<std::string>& problems, std::string& error) {
  rooms.clear();
  problems.clear();
  error.clear();
  json answer;
  try {
    answer = json::parse(text, [](int depth, json::parse_event_t, json&) {
      if (depth > kMaxDepth) throw TooDeep();
      return true;
    });
  } catch (const json::parse_error& failure) {
    error = "The server's answer is not JSON (at byte " + std::to_string(failure.byte) + ").";
    return false;
  } catch (const TooDeep&) {
    error = "The server's answer is nested too deeply to be a list of rooms.";
    return false;
  } catch (const json::exception&) {  // a number out of range ("1e999")
    error = "The server's answer is not JSON (a value cannot be read).";
    return false;
  }
  if (!answer.is_array()) {
    const auto message = answer.is_object() ? answer.find("error") : answer.end();
    error = message != answer.end() && message->is_string()
                ? "The server answered: " + message->get<std::string>()
                : std::string("The server's answer is not a list of rooms.");
    return false;
  }
  std::unordered_set<std::string> seen;
  for (size_t i = 0; i < answer.size(); ++i) {
    const json& item = answer[i];
    std::string where = "Room " + std::to_string(i + 1);
    if (!item.is_object()) {
      problems.push_back(where + " is not an object: left out.");
      continue;
    }
    const auto name = item.find("name");
    if (name == item.end() || !name->is_string() ||
        fx::rooms::TrimBlanks(name->get<std::string>()).empty()) {
      problems.push_back(where + " has no name: left out.");
      continue;
    }
    OccupantRoom room;
    room.name = fx::rooms::TrimBlanks(name->get<std::string>());
    where += " \"" + room.name + "\"";
    if (!seen.insert(room.name).second) {
      problems.push_back(where + " is listed again: the first entry is used.");
      continue;
    }
    room.type = TextField(item, "type", where, problems);
    room.cost_center = TextField(item, "costCenter", where, problems);
    room.users = Users(item, where, problems);
    rooms.push_back(std::move(room));
  }
  return true;
}

std::array<std::string, 5> OccupantValues(const OccupantRoom& room) {
  auto labelled = [](const std::string& value, const char* label) {
    return value.empty() ? std::string() : value + label;
  };
  std::string user;
  std::string job_title;
  if (!room.users.empty()) {
    user = room.users.front().name;
    job_title = room.users.front().job_title;
    if (room.users.size() > 1) {
      char more[48];
      std::snprintf(more, sizeof more, kMoreUsers, static_cast<int>(room.users.size() - 1));
      // Without a first name the count stands alone.
      user += user.empty() ? more + 1 : more;
    }
  }
  return {room.name, labelled(user, kNameLabel), labelled(job_title, kJobTitleLabel),
          labelled(room.type, kRoomTypeLabel), labelled(room.cost_center, kCostCenterLabel)};
}

}  // namespace fx::server
