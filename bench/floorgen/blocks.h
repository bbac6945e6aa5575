// The drawing's blocks (block records), in the order of the block record table.
#pragma once

#include <array>
#include <string_view>

namespace floorgen {

enum BlockIndex { kModelSpaceBlock, kPaperSpaceBlock, kDoorBlock, kRoomTagBlock, kDimensionBlock, kBlockCount };

inline constexpr std::array<std::string_view, kBlockCount> kBlockNames = {
    "*Model_Space", "*Paper_Space", "DOOR", "ROOMTAG", "*D1"};

// The door block is drawn for this door width; inserts scale it to their door.
inline constexpr double kDoorBlockWidth = 1000.0;

}  // namespace floorgen
