// The occupant data as the import reads them: answers that are no list of
// rooms fail with their reason, entries that cannot be used are left out
// and told, and the five values a room shows.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "server/occupant_data.h"

namespace fx::exchange_test {
namespace {

using fx::server::OccupantRoom;

TEST(OccupantDataTest, AnswersThatAreNoListOfRoomsFailWithTheirReason) {
  const struct {
    std::string json;
    const char* error;
  } kCases[] = {
      {R"([{"name": "1.01", )", "The server's answer is not JSON (at byte 19)."},
      {"", "The server's answer is not JSON (at byte 1)."},
      // A number too large for a double ended the program with an exception
      // the reader did not catch (found by fuzzing).
      {"739e5397395395", "The server's answer is not JSON (a value cannot be read)."},
      {R"([{"name": "1.01", "area": 1e999}])", "The server's answer is not JSON (a value cannot be read)."},
      {R"({"rooms": []})", "The server's answer is not a list of rooms."},
      {R"({"error": "Floor 9 not found"})", "The server answered: Floor 9 not found"},
      {"42", "The server's answer is not a list of rooms."},
      {std::string(100, '[') + std::string(100, ']'),
       "The server's answer is nested too deeply to be a list of rooms."},
  };
  for (const auto& c : kCases) {
    std::vector<OccupantRoom> rooms;
    std::vector<std::string> problems;
    std::string error;
    EXPECT_FALSE(fx::server::ReadOccupantRooms(c.json, rooms, problems, error)) << c.json;
    EXPECT_EQ(error, c.error) << c.json;
  }
}

TEST(OccupantDataTest, EntriesThatCannotBeUsedAreLeftOutAndTold) {
  const std::string json = R"([
    {"name": " 1.01 ", "type": "Office", "costCenter": "CC-1", "area": 12.5,
     "users": [{"name": "Ana", "jobTitle": "Architect", "id": 7}, {"name": "Ben"}]},
    "1.02",
    {"type": "Office"},
    {"name": 103},
    {"name": "1.04", "type": 4, "users": {"name": "Cy"}},
    {"name": "1.05", "users": [null, {"jobTitle": "Clerk"}]},
    {"name": "1.01", "type": "Storage"}
  ])";
  std::vector<OccupantRoom> rooms;
  std::vector<std::string> problems;
  std::string error;
  ASSERT_TRUE(fx::server::ReadOccupantRooms(json, rooms, problems, error)) << error;
  ASSERT_EQ(rooms.size(), 3u);
  std::string read;
  for (const OccupantRoom& room : rooms) {
    read += room.name + "|" + room.type + "|" + room.cost_center + ":";
    for (const auto& user : room.users) read += " " + user.name + "/" + user.job_title;
    read += "\n";
  }
  EXPECT_EQ(read, "1.01|Office|CC-1: Ana/Architect Ben/\n1.04||:\n1.05||: /Clerk\n");
  EXPECT_EQ(problems, (std::vector<std::string>{
                          "Room 2 is not an object: left out.",
                          "Room 3 has no name: left out.",
                          "Room 4 has no name: left out.",
                          "Room 5 \"1.04\": \"type\" is not a text: left empty.",
                          "Room 5 \"1.04\": \"users\" is not a list: no users read.",
                          "Room 6 \"1.05\", user 1 is not an object: left out.",
                          "Room 7 \"1.01\" is listed again: the first entry is used.",
                      }));
}

// The edges of the five values a room shows (the usual ones are in the
// end-to-end import, occupant_program_test.cpp).
TEST(OccupantDataTest, TheValuesOfARoom) {
  auto room = [](std::vector<fx::server::OccupantUser> users, std::string type = "Office",
                 std::string cost_center = "") {
    return OccupantRoom{"1.01", std::move(type), std::move(cost_center), std::move(users)};
  };
  const struct {
    OccupantRoom room;
    std::array<std::string, 5> values;
  } kCases[] = {
      {room({{"Ana Lima", "Architect"}}, "", "CC-1"),
       {"1.01", "Ana Lima (Name)", "Architect (Job title)", "", "CC-1 (Cost center)"}},
      {room({{"Ana Lima", ""}, {"Ben", "Clerk"}}),
       {"1.01", "Ana Lima +1 More Users (Name)", "", "Office (Room Type)", ""}},
      {room({{"", "Clerk"}, {"Ben", ""}}),
       {"1.01", "+1 More Users (Name)", "Clerk (Job title)", "Office (Room Type)", ""}},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(fx::server::OccupantValues(c.room), c.values) << c.values[1];
  }
}

}  // namespace
}  // namespace fx::exchange_test
