#include "room_category.h"

#include <array>
#include <cstddef>
#include <span>

namespace floorgen {

namespace {

constexpr std::array<std::string_view, 4> kOfficeDescriptions = {
    "Single office", "Double office", "Team office", "Open office"};
constexpr std::array<std::string_view, 3> kMeetingDescriptions = {
    "Meeting room", "Conference", "Focus room"};
constexpr std::array<std::string_view, 3> kStorageDescriptions = {
    "Archive", "Supplies", "Cleaning"};
constexpr std::array<std::string_view, 3> kWcDescriptions = {
    "Toilets women", "Toilets men", "Accessible WC"};
constexpr std::array<std::string_view, 1> kCorridorDescriptions = {"Main corridor"};

std::span<const std::string_view> DescriptionsOf(RoomCategory category) {
  switch (category) {
    case RoomCategory::kMeeting:
      return kMeetingDescriptions;
    case RoomCategory::kStorage:
      return kStorageDescriptions;
    case RoomCategory::kWc:
      return kWcDescriptions;
    case RoomCategory::kCorridor:
      return kCorridorDescriptions;
    case RoomCategory::kOffice:
      break;
  }
  return kOfficeDescriptions;
}

}  // namespace

std::string_view CategoryName(RoomCategory category) {
  switch (category) {
    case RoomCategory::kMeeting:
      return "Meeting";
    case RoomCategory::kStorage:
      return "Storage";
    case RoomCategory::kWc:
      return "WC";
    case RoomCategory::kCorridor:
      return "Corridor";
    case RoomCategory::kOffice:
      break;
  }
  return "Office";
}

RoomCategory DrawRoomCategory(Random& random) {
  const int roll = random.Between(0, 99);
  if (roll < 12) return RoomCategory::kMeeting;
  if (roll < 20) return RoomCategory::kStorage;
  if (roll < 28) return RoomCategory::kWc;
  return RoomCategory::kOffice;
}

std::string_view DrawDescription(RoomCategory category, Random& random) {
  const auto choices = DescriptionsOf(category);
  return choices[static_cast<std::size_t>(random.Between(0, static_cast<int>(choices.size()) - 1))];
}

double DoorWidth(RoomCategory category) {
  switch (category) {
    case RoomCategory::kMeeting:
    case RoomCategory::kCorridor:
      return 1000.0;
    case RoomCategory::kStorage:
    case RoomCategory::kWc:
      return 800.0;
    case RoomCategory::kOffice:
      break;
  }
  return 900.0;
}

}  // namespace floorgen
