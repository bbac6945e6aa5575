// What the floor writers read from the drawing: the floor outline and the
// room list, each room with its record and the outline of its contour.
#ifndef FLOORXPORT_EXPORT_FLOOR_SOURCE_H_
#define FLOORXPORT_EXPORT_FLOOR_SOURCE_H_

#include <optional>
#include <vector>

#include "host/geometry.h"
#include "host/ids.h"
#include "host/status.h"
#include "rooms/room_record.h"

class AcDbDatabase;

namespace fx::exports {

// A polyline as the floor files describe it.
struct Outline {
  double area = 0;                    // enclosed area, never negative
  std::vector<AcGePoint2d> vertices;  // in vertex order, plane coordinates
  AcDbExtents extents;                // geometric extents; empty when unknown
};

// The outline of a lightweight polyline or a 2D POLYLINE (its vertices'
// x and y; curve-fit vertices left out). nullopt when `id` is null, the
// entity cannot be opened, or it is neither.
std::optional<Outline> ReadOutline(AcDbObjectId id);

struct FloorRoom {
  AcDbObjectId id;  // the entity that carries the record
  fx::rooms::RoomRecord record;
  std::optional<Outline> outline;  // of record.linked; nullopt when it cannot be read
};

struct FloorData {
  // The first model-space entity whose record is named "<*AREA_FLOOR*>";
  // null when there is none.
  AcDbObjectId floor_id;
  // Its outline; nullopt when there is no floor outline or it is no polyline.
  std::optional<Outline> floor;
  std::vector<FloorRoom> rooms;
};

// Reads the floor of `database`'s model space. The rooms are those of
// `room_ids` in that order (the document's analysis) when given, else the
// model-space entities that carry a room record, in model-space order, the
// floor outline's record left out. An id whose entity carries no record is
// skipped. The host's status when model space cannot be opened, else eOk.
Acad::ErrorStatus ReadFloor(AcDbDatabase& database, const std::vector<AcDbObjectId>* room_ids, FloorData& floor);

// The room list of the current document: its analysis's rooms when an
// analysis has run to its end in this session, else nullptr (read the
// drawing's records).
const std::vector<AcDbObjectId>* AnalysedRoomIds();

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_FLOOR_SOURCE_H_
