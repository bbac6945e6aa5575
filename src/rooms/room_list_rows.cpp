#include "rooms/room_list_rows.h"

#include <cstdio>

#include "host/database.h"

namespace fx::rooms {
namespace {

struct FlagText {
  int32_t flag;
  const char* text;
};

// In the order of the summary's lines.
constexpr FlagText kFlagTexts[] = {
    {kFlagAreaNotFound, "Area not found"},
    {kFlagDuplicate, "Duplicate number"},
    {kFlagIntersected, "Intersected contour"},
    {kFlagMultipleIds, "Multiple identifiers"},
};

bool IsFloorOutline(const RoomRecord& record) { return record.name == kFloorOutlineName; }

std::vector<AcDbObjectId> ModelSpaceEntities(AcDbDatabase& database) {
  AcDbObjectPointer<AcDbBlockTableRecord> model_space(database.modelSpaceId(), AcDb::kForRead);
  if (model_space.openStatus() != Acad::eOk) return {};
  return model_space->entityIds();
}

}  // namespace

std::string AreaCell(const std::optional<double>& area) {
  if (!area) return kAreaNotFoundCell;
  char text[64];
  std::snprintf(text, sizeof text, "%.4f", *area);
  return text;
}

std::string ErrorDescription(int32_t flags) {
  std::string text;
  for (const FlagText& entry : kFlagTexts) {
    if ((flags & entry.flag) == 0) continue;
    if (!text.empty()) text += "; ";
    text += entry.text;
  }
  return text;
}

std::array<std::string, kRoomListColumnCount> RowCells(const RoomRow& row) {
  return {row.record.name,    row.record.category, row.record.description,
          row.record.comment, AreaCell(row.area),  ErrorDescription(row.record.flags)};
}

std::optional<double> EntityArea(AcDbObjectId id) {
  if (id.isNull()) return std::nullopt;
  AcDbEntityPointer entity(id, AcDb::kForRead);
  if (entity.openStatus() != Acad::eOk) return std::nullopt;
  double area = 0;
  Acad::ErrorStatus status = Acad::eNotThatKindOfClass;
  if (auto* polyline = dynamic_cast<AcDbPolyline*>(entity.object())) {
    status = polyline->getArea(area);
  } else if (auto* heavy = dynamic_cast<AcDb2dPolyline*>(entity.object())) {
    status = heavy->getArea(area);
  }
  if (status != Acad::eOk) return std::nullopt;
  return area;
}

std::vector<RoomRow> BuildRoomRows(const std::vector<AcDbObjectId>& ids) {
  std::vector<RoomRow> rows;
  for (AcDbObjectId id : ids) {
    RoomRow row;
    row.id = id;
    if (!ReadRoomRecord(id, &row.record) || IsFloorOutline(row.record)) continue;
    row.area = EntityArea(row.record.linked);
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<AcDbObjectId> RoomEntitiesInDrawing(AcDbDatabase& database) {
  std::vector<AcDbObjectId> rooms;
  for (AcDbObjectId id : ModelSpaceEntities(database)) {
    RoomRecord record;
    if (ReadRoomRecord(id, &record) && !IsFloorOutline(record)) rooms.push_back(id);
  }
  return rooms;
}

std::optional<double> FloorArea(AcDbDatabase& database) {
  for (AcDbObjectId id : ModelSpaceEntities(database)) {
    RoomRecord record;
    if (ReadRoomRecord(id, &record) && IsFloorOutline(record)) return EntityArea(id);
  }
  return std::nullopt;
}

}  // namespace fx::rooms
