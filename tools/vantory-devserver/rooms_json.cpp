#include "rooms_json.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace fx::devserver {
namespace {

// Keys keep the order they are written in: name first, as people read it.
using json = nlohmann::ordered_json;

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(" \t");
  return text.substr(first, last - first + 1);
}

std::string StringField(const json& object, const char* key, bool required,
                        const std::string& where) {
  const auto it = object.find(key);
  if (it == object.end() || it->is_null()) {
    if (required) throw RoomsJsonError(where + " has no \"" + key + "\"");
    return {};
  }
  if (!it->is_string()) throw RoomsJsonError(where + ": \"" + key + "\" is not a string");
  return it->get<std::string>();
}

}  // namespace

RoomSelector ParseRoomSelector(std::string_view selector) {
  RoomSelector result{false, false, false, false};
  // Top-level fields are separated by commas outside parentheses.
  std::size_t depth = 0;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= selector.size(); ++i) {
    const char c = i < selector.size() ? selector[i] : ',';
    if (c == '(') ++depth;
    if (c == ')' && depth > 0) --depth;
    if (c != ',' || depth > 0) continue;
    const std::string_view field = Trim(selector.substr(start, i - start));
    start = i + 1;
    const std::string_view head = Trim(field.substr(0, field.find('(')));
    if (head == "type") result.type = true;
    if (head == "costCenter") result.cost_center = true;
    if (head == "users") {
      result.users = true;
      const auto open = field.find('(');
      if (open != std::string_view::npos) {
        const std::string_view inner = field.substr(open + 1, field.rfind(')') - open - 1);
        for (std::size_t from = 0; from <= inner.size();) {
          const auto comma = std::min(inner.find(',', from), inner.size());
          if (Trim(inner.substr(from, comma - from)) == "jobTitle") result.job_title = true;
          from = comma + 1;
        }
      }
    }
  }
  return result;
}

std::string RoomsToJson(const std::vector<Room>& rooms, const RoomSelector& selector) {
  json list = json::array();
  for (const Room& room : rooms) {
    json item = {{"name", room.name}};
    if (selector.type) item["type"] = room.type;
    if (selector.cost_center) item["costCenter"] = room.cost_center;
    if (selector.users) {
      json users = json::array();
      for (const RoomUser& user : room.users) {
        json entry = {{"name", user.name}};
        if (selector.job_title) entry["jobTitle"] = user.job_title;
        users.push_back(std::move(entry));
      }
      item["users"] = std::move(users);
    }
    list.push_back(std::move(item));
  }
  // Text that is not UTF-8 is replaced, never passed through unescaped.
  return list.dump(-1, ' ', false, json::error_handler_t::replace);
}

std::vector<Room> RoomsFromJson(std::string_view text) {
  json list;
  try {
    list = json::parse(text);
  } catch (const json::parse_error& error) {
    throw RoomsJsonError(error.what());
  }
  if (!list.is_array()) throw RoomsJsonError("the rooms must be a JSON list");
  std::vector<Room> rooms;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const json& item = list[i];
    const std::string where = "room " + std::to_string(i + 1);
    if (!item.is_object()) throw RoomsJsonError(where + " is not an object");
    Room room;
    room.name = StringField(item, "name", true, where);
    room.type = StringField(item, "type", false, where);
    room.cost_center = StringField(item, "costCenter", false, where);
    if (const auto users = item.find("users"); users != item.end() && !users->is_null()) {
      if (!users->is_array()) throw RoomsJsonError(where + ": \"users\" is not a list");
      for (std::size_t j = 0; j < users->size(); ++j) {
        const json& user = (*users)[j];
        const std::string who = where + ", user " + std::to_string(j + 1);
        if (!user.is_object()) throw RoomsJsonError(who + " is not an object");
        room.users.push_back(
            {StringField(user, "name", true, who), StringField(user, "jobTitle", false, who)});
      }
    }
    rooms.push_back(std::move(room));
  }
  return rooms;
}

}  // namespace fx::devserver
