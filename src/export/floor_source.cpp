#include "export/floor_source.h"

#include <unordered_map>

#include "host/database.h"
#include "host/documents.h"
#include "rooms/doc_data.h"

namespace fx::exports {
namespace {

std::optional<Outline> LightweightOutline(const AcDbPolyline& polyline) {
  Outline outline;
  const unsigned count = polyline.numVerts();
  outline.vertices.reserve(count);
  for (unsigned i = 0; i < count; ++i) {
    AcGePoint2d point;
    if (polyline.getPointAt(i, point) == Acad::eOk) outline.vertices.push_back(point);
  }
  if (polyline.getArea(outline.area) != Acad::eOk) outline.area = 0;
  if (polyline.getGeomExtents(outline.extents) != Acad::eOk) outline.extents = AcDbExtents();
  return outline;
}

std::optional<Outline> HeavyOutline(const AcDb2dPolyline& polyline) {
  if (polyline.is3d() || polyline.isPolyfaceMesh() || polyline.isPolygonMesh()) return std::nullopt;
  Outline outline;
  std::vector<AcGePoint3d> points;
  std::vector<double> bulges;
  if (polyline.getVertices(points, bulges) != Acad::eOk) return std::nullopt;
  outline.vertices.reserve(points.size());
  for (const AcGePoint3d& point : points) outline.vertices.push_back(point.to2d());
  if (polyline.getArea(outline.area) != Acad::eOk) outline.area = 0;
  if (polyline.getGeomExtents(outline.extents) != Acad::eOk) outline.extents = AcDbExtents();
  return outline;
}

// The rooms of `ids` in that order, each with its record: taken from `read`
// (records already read, by entity) when there, else read now; an id whose
// entity carries no record is left out.
std::vector<FloorRoom> TakeRooms(const std::vector<AcDbObjectId>& ids, std::vector<FloorRoom> read) {
  std::unordered_map<AcDbObjectId, size_t> position;
  position.reserve(read.size());
  for (size_t i = 0; i < read.size(); ++i) position.emplace(read[i].id, i);
  std::vector<FloorRoom> rooms;
  rooms.reserve(ids.size());
  for (AcDbObjectId id : ids) {
    // An id listed twice reads its record again: the first took it.
    if (const auto it = position.find(id); it != position.end()) {
      rooms.push_back(std::move(read[it->second]));
      position.erase(it);
      continue;
    }
    FloorRoom room;
    room.id = id;
    if (fx::rooms::ReadRoomRecord(id, &room.record)) rooms.push_back(std::move(room));
  }
  return rooms;
}

}  // namespace

std::optional<Outline> ReadOutline(AcDbObjectId id) {
  if (id.isNull()) return std::nullopt;
  AcDbEntityPointer entity(id, AcDb::kForRead);
  if (entity.openStatus() != Acad::eOk) return std::nullopt;
  if (const auto* light = dynamic_cast<const AcDbPolyline*>(entity.object())) return LightweightOutline(*light);
  if (const auto* heavy = dynamic_cast<const AcDb2dPolyline*>(entity.object())) return HeavyOutline(*heavy);
  return std::nullopt;
}

Acad::ErrorStatus ReadFloor(AcDbDatabase& database, const std::vector<AcDbObjectId>* room_ids, FloorData& floor) {
  floor = FloorData();
  std::vector<AcDbObjectId> entities;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> model(database.modelSpaceId(), AcDb::kForRead);
    if (model.openStatus() != Acad::eOk) return model.openStatus();
    entities = model->entityIds();
  }
  // Model space is read up to the floor's record, all of it when the rooms
  // are those of its records; the rooms of `room_ids` read on the way are
  // taken from there rather than read again.
  std::vector<FloorRoom> found;
  for (AcDbObjectId id : entities) {
    FloorRoom room;
    if (!fx::rooms::ReadRoomRecord(id, &room.record)) continue;
    const bool floor_record = room.record.name == fx::rooms::kFloorOutlineName;
    if (floor_record && floor.floor_id.isNull()) {
      floor.floor_id = id;
      if (room_ids != nullptr) break;
    }
    if (floor_record && room_ids == nullptr) continue;
    room.id = id;
    found.push_back(std::move(room));
  }
  if (room_ids != nullptr) found = TakeRooms(*room_ids, std::move(found));
  for (FloorRoom& room : found) room.outline = ReadOutline(room.record.linked);
  floor.rooms = std::move(found);
  if (!floor.floor_id.isNull()) floor.floor = ReadOutline(floor.floor_id);
  return Acad::eOk;
}

const std::vector<AcDbObjectId>* AnalysedRoomIds() {
  AcApDocument* document = acDocManagerPtr()->curDocument();
  if (document == nullptr) return nullptr;
  const fx::rooms::CDocData& data = fx::rooms::DocVars().docData(document);
  return data.analysed() ? &data.roomIds() : nullptr;
}

}  // namespace fx::exports
