#include "export/export_frame.h"

#include <cmath>
#include <memory>

#include "host/database.h"
#include "host/editor.h"

namespace fx::exports {
namespace {

const char* Text(Acad::ErrorStatus status) { return Acad::acadErrorStatusText(status); }

bool IsBox(const AcGePoint3d& min, const AcGePoint3d& max) {
  return std::isfinite(min.x) && std::isfinite(min.y) && std::isfinite(max.x) && std::isfinite(max.y) &&
         min.x <= max.x && min.y <= max.y;
}

}  // namespace

bool ExtentsFrame(AcDbDatabase& database, fx::svg::Frame& frame) {
  // The editor's zoom to extents brings the header's extents up to date;
  // when the command did not run, the database does it.
  if (acedCommandS(RTSTR, "_ZOOM", RTSTR, "E", RTNONE) != RTNORM) database.updateExt();
  const AcGePoint3d min = database.extmin();
  const AcGePoint3d max = database.extmax();
  if (!IsBox(min, max)) return false;
  frame.min = min.to2d();
  frame.max = max.to2d();
  return true;
}

bool LayerEntityFrame(AcDbDatabase& database, const std::string& layer, fx::svg::Frame& frame) {
  if (layer.empty()) return false;
  AcDbObjectId layer_id;
  {
    AcDbLayerTable* table = nullptr;
    if (database.getLayerTable(table, AcDb::kForRead) != Acad::eOk) return false;
    const Acad::ErrorStatus found = table->getAt(layer.c_str(), layer_id);
    table->close();
    if (found != Acad::eOk) return false;
  }
  AcDbBlockTableRecordIterator* iterator = nullptr;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> model(database.modelSpaceId(), AcDb::kForRead);
    if (model.openStatus() != Acad::eOk || model->newIterator(iterator) != Acad::eOk) return false;
  }
  std::unique_ptr<AcDbBlockTableRecordIterator> owned(iterator);
  for (owned->start(); !owned->done(); owned->step()) {
    AcDbObjectId id;
    if (owned->getEntityId(id) != Acad::eOk) continue;
    AcDbEntityPointer entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || entity->layerId() != layer_id) continue;
    AcDbExtents extents;
    if (entity->getGeomExtents(extents) != Acad::eOk || extents.isEmpty() ||
        extents.minPoint().isEqualTo(extents.maxPoint())) {
      continue;
    }
    frame.min = extents.minPoint().to2d();
    frame.max = extents.maxPoint().to2d();
    return true;
  }
  return false;
}

bool ActiveViewFrame(AcDbDatabase& database, fx::svg::Frame& frame) {
  AcDbViewportTable* table = nullptr;
  Acad::ErrorStatus status = database.getViewportTable(table, AcDb::kForRead);
  if (status != Acad::eOk) {
    acutPrintf("\npDb->getViewportTable(pViewPortTable, AcDb::kForRead) = %s", Text(status));
    return false;
  }
  AcDbObjectId viewport_id;
  status = table->getAt("*ACTIVE", viewport_id);
  table->close();
  if (status != Acad::eOk) {
    acutPrintf("\npViewPortTable->getAt(_T(\"*ACTIVE\"), idViewport) = %s", Text(status));
    return false;
  }
  AcDbObjectPointer<AcDbViewportTableRecord> viewport(viewport_id, AcDb::kForRead);
  if (viewport.openStatus() != Acad::eOk) {
    acutPrintf("\npViewPort.openStatus() = %s", Text(viewport.openStatus()));
    return false;
  }
  const AcGePoint2d center = viewport->centerPoint();
  const double half_width = viewport->width() * 0.5;
  const double half_height = viewport->height() * 0.5;
  frame.min = {center.x - half_width, center.y - half_height};
  frame.max = {center.x + half_width, center.y + half_height};
  return true;
}

bool FindExportFrame(AcDbDatabase& database, const ExportSettings& settings, fx::svg::Frame& frame) {
  switch (settings.position()) {
    case DrawingPosition::kExtents:
      if (ExtentsFrame(database, frame)) return true;
      break;
    case DrawingPosition::kLayerEntity:
      if (LayerEntityFrame(database, settings.frame_layer, frame)) return true;
      break;
    case DrawingPosition::kActiveView:
      break;
  }
  return ActiveViewFrame(database, frame);
}

}  // namespace fx::exports
