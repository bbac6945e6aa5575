// The room record: what the plug-in knows of one room, stored on the entity
// that stands for it (a block insert, a name text, a marker, or the floor
// outline) as extended entity data of the application "VantoryApp".
//
// Layout of the data, in this order: 1001 "VantoryApp"; 1000 format version
// ("1.2"); 1000 name; 1000 category; 1000 description; 1000 comment; 1000
// the linked entity's handle in hexadecimal; 1071 problem flags; 1010
// extents minimum; 1010 extents maximum. Records of versions "1.0" (up to
// the handle) and "1.1" (up to the flags) are read too.
#ifndef FLOORXPORT_ROOMS_ROOM_RECORD_H_
#define FLOORXPORT_ROOMS_ROOM_RECORD_H_

#include <cstdint>
#include <string>

#include "host/db_object.h"

namespace fx::rooms {

inline constexpr const char* kAppName = "VantoryApp";
inline constexpr const char* kRecordVersion = "1.2";
// The name of the record that marks the floor outline.
inline constexpr const char* kFloorOutlineName = "<*AREA_FLOOR*>";

// Problem flags of a room record.
inline constexpr int32_t kFlagMultipleIds = 1;   // its contour holds another identifier too
inline constexpr int32_t kFlagIntersected = 4;   // its contour intersects another contour
inline constexpr int32_t kFlagDuplicate = 8;     // an earlier room has the same (trimmed) name
inline constexpr int32_t kFlagAreaNotFound = 16; // no contour holds it

struct RoomRecord {
  std::string name;
  std::string category;
  std::string description;
  std::string comment;
  AcDbObjectId linked;   // the room's contour; null when none
  int32_t flags = 0;
  AcDbExtents extents;
};

// Reads the record of entity `id`. False when the entity cannot be opened or
// carries no data of "VantoryApp". The flags come back as the low 16 bits
// of the stored integer, sign-extended: values outside -32768..32767 do not
// survive a write and read (kept so, as records in drawings expect it).
bool ReadRoomRecord(AcDbObjectId id, RoomRecord* record);

// Writes the record on entity `id` (opened for write and closed). Returns
// the host's status; callers print "\nSetXData = %s" on failure.
Acad::ErrorStatus SetXData(AcDbObjectId id, const RoomRecord& record);

// Removes the record from entity `id`; an entity without one is unchanged.
Acad::ErrorStatus RemoveRoomRecord(AcDbObjectId id);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_ROOM_RECORD_H_
