// The rows of the room list: one per room, with the cells as the list shows
// them and the report writes them.
#ifndef FLOORXPORT_ROOMS_ROOM_LIST_ROWS_H_
#define FLOORXPORT_ROOMS_ROOM_LIST_ROWS_H_

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "host/ids.h"
#include "rooms/room_record.h"

class AcDbDatabase;

namespace fx::rooms {

// The list's columns, in order.
inline constexpr size_t kRoomListColumnCount = 6;
struct RoomListColumn {
  const char* caption;
  bool right_aligned;
  int width;  // initial width in dialog pixels
};
inline constexpr std::array<RoomListColumn, kRoomListColumnCount> kRoomListColumns = {{
    {"Name", false, 100},
    {"Category", false, 80},
    {"Description", false, 125},
    {"Comment", false, 125},
    {"Area", true, 100},
    {"Error description", false, 300},
}};

// The Area cell of a room whose area could not be computed.
inline constexpr const char* kAreaNotFoundCell = "Not found";

struct RoomRow {
  AcDbObjectId id;  // the entity that carries the record
  RoomRecord record;
  std::optional<double> area;  // of the linked contour; nullopt when it could not be computed
};

// "%.4f" of the area, or "Not found".
std::string AreaCell(const std::optional<double>& area);

// The problems a record's flags name, in the order of the summary, joined
// by "; " (no comma, so a report cell stays one field): "Area not found",
// "Duplicate number", "Intersected contour", "Multiple identifiers". Empty
// for a record without problems.
std::string ErrorDescription(int32_t flags);

// The six cells of a row, as the list shows them.
std::array<std::string, kRoomListColumnCount> RowCells(const RoomRow& row);

// The enclosed area of a polyline entity (lightweight or 2D), nullopt when
// `id` is null, cannot be opened or is not a polyline.
std::optional<double> EntityArea(AcDbObjectId id);

// A row for each entity of `ids` that carries a room record, in that order.
// The floor outline's record is left out.
std::vector<RoomRow> BuildRoomRows(const std::vector<AcDbObjectId>& ids);

// The entities of model space that carry a room record, in model-space
// order, the floor outline left out: the rooms of an analysed drawing as
// saved, without running the analysis again.
std::vector<AcDbObjectId> RoomEntitiesInDrawing(AcDbDatabase& database);

// The area of the floor outline (the model-space entity whose record is
// named kFloorOutlineName); nullopt when there is none or it has no area.
std::optional<double> FloorArea(AcDbDatabase& database);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_ROOM_LIST_ROWS_H_
