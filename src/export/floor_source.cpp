#include "export/floor_source.h"

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
  std::vector<FloorRoom> found;
  for (AcDbObjectId id : entities) {
    FloorRoom room;
    if (!fx::rooms::ReadRoomRecord(id, &room.record)) continue;
    if (room.record.name == fx::rooms::kFloorOutlineName) {
      if (floor.floor_id.isNull()) floor.floor_id = id;
      continue;
    }
    if (room_ids == nullptr) {
      room.id = id;
      found.push_back(std::move(room));
    }
  }
  if (room_ids != nullptr) {
    for (AcDbObjectId id : *room_ids) {
      FloorRoom room;
      room.id = id;
      if (fx::rooms::ReadRoomRecord(id, &room.record)) found.push_back(std::move(room));
    }
  }
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
