#include "export/export_frame.h"

#include <algorithm>
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

// Runs the zoom without its prompts on the command line: CMDECHO is 0 for
// the span of the command and then what it was.
int ZoomExtentsQuietly() {
  resbuf echo{};
  const bool saved = acedGetVar("CMDECHO", &echo) == RTNORM;
  const resbuf quiet{nullptr, RTSHORT, {.rint = 0}};
  if (saved) acedSetVar("CMDECHO", &quiet);
  const int result = acedCommandS(RTSTR, "_ZOOM", RTSTR, "E", RTNONE);
  if (saved) acedSetVar("CMDECHO", &echo);
  return result;
}

// A point system variable; not a number when it cannot be read.
AcGePoint3d PointVariable(const char* name) {
  resbuf value{};
  if (acedGetVar(name, &value) != RTNORM || value.restype != RT3DPOINT) {
    const double none = std::nan("");
    return {none, none, none};
  }
  return {value.resval.rpoint[0], value.resval.rpoint[1], value.resval.rpoint[2]};
}

}  // namespace

bool ExtentsFrame(AcDbDatabase& database, fx::svg::Frame& frame) {
  // The editor's zoom to extents brings the drawing's extents up to date;
  // when the command did not run, the database does it.
  if (ZoomExtentsQuietly() != RTNORM) database.updateExt();
  const AcGePoint3d min = PointVariable("EXTMIN");
  const AcGePoint3d max = PointVariable("EXTMAX");
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
  viewport.close();
  // The view's corners are display coordinates: the editor turns them into
  // world ones. A view that is twisted or looks along another direction
  // gives the world box of its two corners.
  ads_point corners[2] = {{center.x - half_width, center.y - half_height, 0},
                          {center.x + half_width, center.y + half_height, 0}};
  const resbuf display{nullptr, RTSHORT, {.rint = 2}};
  const resbuf world{nullptr, RTSHORT, {.rint = 0}};
  for (ads_point& corner : corners) {
    const int result = acedTrans(corner, &display, &world, 0, corner);
    if (result != RTNORM) {
      acutPrintf("\nacedTrans(DCS, WCS) = %d", result);
      return false;
    }
  }
  frame.min = {std::min(corners[0][0], corners[1][0]), std::min(corners[0][1], corners[1][1])};
  frame.max = {std::max(corners[0][0], corners[1][0]), std::max(corners[0][1], corners[1][1])};
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
