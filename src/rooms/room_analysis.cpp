// Room identification: the run, the floor outline and the contour list.
#include "rooms/room_analysis.h"

#include <algorithm>
#include <utility>

#include "host/database.h"
#include "host/editor.h"
#include "rooms/contour_overlap.h"

namespace fx::rooms {
namespace {

const char* Text(Acad::ErrorStatus status) { return Acad::acadErrorStatusText(status); }

constexpr const char* kNoFloorQuestion = "No Floor Area Polyline Found.\nDo you want to continue?";

// The area a floor outline candidate encloses, with its arcs; -1 when it
// has none to give.
double OutlineArea(const AcDbEntity& entity) {
  double area = -1;
  if (const auto* light = dynamic_cast<const AcDbPolyline*>(&entity)) {
    if (light->getArea(area) != Acad::eOk) return -1;
  } else if (const auto* heavy = dynamic_cast<const AcDb2dPolyline*>(&entity)) {
    if (heavy->getArea(area) != Acad::eOk) return -1;
  }
  return area;
}

bool IsFloorRecord(AcDbObjectId id) {
  RoomRecord record;
  return ReadRoomRecord(id, &record) && record.name == kFloorOutlineName;
}

}  // namespace

bool IdentifyRooms(const ConvertOptions& options, CDocData& document) {
  RoomAnalysis analysis(options, document);
  return analysis.Run();
}

bool RoomAnalysis::Run() {
  document_.setAnalysed(false);
  // The plug-in registers the application when a drawing loads; once more
  // costs nothing and covers a drawing made since.
  acdbRegApp(kAppName);
  const bool block_mode = options_.mode == IdentificationMode::kBlock;
  if (!FindFloorOutline() || !CollectContours()) return false;
  if (!(block_mode ? CollectBlockIdentifiers() : CollectTextIdentifiers())) return false;
  if (!MatchIdentifiers()) return false;
  if (block_mode && options_.remove_inserts) MoveRecordsToContours();
  PublishProblems();
  document_.setAnalysed(true);
  return true;
}

// Model space is walked once and its entities kept by layer, in order; each
// step then takes the entities of its layer.
bool RoomAnalysis::WalkModelSpace() {
  if (!model_space_.isNull()) return true;
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  if (database == nullptr) {
    acutPrintf("\npModelSpace.openStatus = %s", Text(Acad::eNullObjectPointer));
    return false;
  }
  AcDbObjectPointer<AcDbBlockTableRecord> model_space(database->modelSpaceId(), AcDb::kForRead);
  if (model_space.openStatus() != Acad::eOk) {
    acutPrintf("\npModelSpace.openStatus = %s", Text(model_space.openStatus()));
    return false;
  }
  AcDbBlockTableRecordIterator* iterator = nullptr;
  Acad::ErrorStatus status = model_space->newIterator(iterator);
  if (status != Acad::eOk) {
    acutPrintf("\npModelSpace->newIterator = %s", Text(status));
    return false;
  }
  std::unique_ptr<AcDbBlockTableRecordIterator> entities(iterator);
  for (entities->start(); !entities->done(); entities->step()) {
    AcDbObjectId id;
    status = entities->getEntityId(id);
    if (status != Acad::eOk) {
      acutPrintf("\npEntityIterator->getEntityId = %s", Text(status));
      return false;
    }
    AcDbEntityPointer entity(id, AcDb::kForRead);
    if (entity.openStatus() == Acad::eOk) by_layer_[entity->layerId()].push_back(id);
  }
  model_space_ = database->modelSpaceId();
  return true;
}

const std::vector<AcDbObjectId>& RoomAnalysis::EntitiesOn(AcDbObjectId layer) const {
  static const std::vector<AcDbObjectId> kNone;
  const auto found = by_layer_.find(layer);
  return found != by_layer_.end() ? found->second : kNone;
}

// Step 1. Of several polylines on the floor-area layer, the one enclosing
// the largest area is the floor (the first of equal ones); the others are
// courtyards, shafts or copies, and a floor record left on one of them by
// an earlier run is removed so that exporters find one floor.
bool RoomAnalysis::FindFloorOutline() {
  if (options_.floor_layer.empty()) {
    acutPrintf("\nPlease select FloorArea Layer");
    return false;
  }
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  AcDbLayerTable* layers = nullptr;
  Acad::ErrorStatus status =
      database != nullptr ? database->getLayerTable(layers, AcDb::kForRead) : Acad::eNullObjectPointer;
  if (status != Acad::eOk) {
    acutPrintf("\ngetLayerTable = %s", Text(status));
    return false;
  }
  AcDbObjectId layer;
  status = layers->getAt(options_.floor_layer.c_str(), layer);
  layers->close();
  if (status == Acad::eKeyNotFound) {
    acutPrintf("\nFloorArea Layer \"%s\" not found", options_.floor_layer.c_str());
    return false;
  }
  if (status != Acad::eOk) {
    acutPrintf("\ngetAt = %s", Text(status));
    return false;
  }
  unlocks_.Unlock(layer);
  if (!WalkModelSpace()) return false;
  std::vector<AcDbObjectId> outlines;
  double largest = -1;
  for (AcDbObjectId id : EntitiesOn(layer)) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || !IsContourEntity(*entity.object())) continue;
    const double area = OutlineArea(*entity.object());
    if (area > largest || floor_outline_.isNull()) {
      largest = std::max(area, largest);
      floor_outline_ = id;
    }
    outlines.push_back(id);
  }
  if (floor_outline_.isNull()) {
    return acedMessageBox(kNoFloorQuestion, "", MB_YESNO | MB_ICONWARNING) == IDYES;
  }
  for (AcDbObjectId other : outlines) {
    if (other != floor_outline_ && IsFloorRecord(other)) RemoveRoomRecord(other);
  }
  return WriteFloorOutline(floor_outline_);
}

bool RoomAnalysis::WriteFloorOutline(AcDbObjectId outline) {
  RoomRecord record;
  record.name = kFloorOutlineName;
  AcDbEntityPointer entity(outline, AcDb::kForRead);
  if (entity.openStatus() == Acad::eOk) entity->getGeomExtents(record.extents);
  entity.close();
  const Acad::ErrorStatus status = SetXData(outline, record);
  if (status != Acad::eOk) {
    acutPrintf("\nSetXData = %s", Text(status));
    return false;
  }
  return true;
}

// Step 2. The contours are the polylines (LWPOLYLINE, 2D POLYLINE) of the
// contour layer, other than the floor outline when both layers are one;
// other entities there (lines, texts, hatches) are drawing, not rooms.
bool RoomAnalysis::CollectContours() {
  if (options_.contour_layer.empty()) {
    acutPrintf("\nPlease select Contour Layer");
    return false;
  }
  AcDbObjectId layer;
  if (document_.GetLayerTableID(options_.contour_layer.c_str(), layer) != Acad::eOk) return false;
  unlocks_.Unlock(layer);
  if (!WalkModelSpace()) return false;
  for (AcDbObjectId id : EntitiesOn(layer)) {
    if (id == floor_outline_) continue;
    AcDbEntityPointer entity(id, AcDb::kForRead);
    ContourGeometry geometry;
    if (entity.openStatus() != Acad::eOk || !ReadContourGeometry(*entity.object(), &geometry)) continue;
    contour_ids_.push_back(id);
    contours_.push_back(std::move(geometry));
  }
  used_.assign(contours_.size(), false);
  intersecting_.assign(contours_.size(), false);
  index_ = std::make_unique<ContourIndex>(contours_);
  std::vector<std::pair<AcDbObjectId, AcDbObjectId>> pairs;
  for (const auto& [a, b] : FindOverlappingPairs(contours_)) {
    pairs.emplace_back(contour_ids_[a], contour_ids_[b]);
    intersecting_[a] = true;
    intersecting_[b] = true;
  }
  document_.setIntersectingPairs(std::move(pairs));
  return true;
}

}  // namespace fx::rooms
