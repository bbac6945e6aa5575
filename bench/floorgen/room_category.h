// What a room is used for, with the words written into the drawing for it.
#pragma once

#include <string_view>

#include "random.h"

namespace floorgen {

enum class RoomCategory { kOffice, kMeeting, kStorage, kWc, kCorridor };

std::string_view CategoryName(RoomCategory category);

// Category of an ordinary room along a corridor, drawn with a typical office mix.
RoomCategory DrawRoomCategory(Random& random);

// Short description text for a room of the category, drawn from a small list.
std::string_view DrawDescription(RoomCategory category, Random& random);

// Clear width of the room's door in millimetres.
double DoorWidth(RoomCategory category);

}  // namespace floorgen
