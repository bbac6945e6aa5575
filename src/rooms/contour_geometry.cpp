#include "rooms/contour_geometry.h"

#include "host/db_entities.h"

namespace fx::rooms {
namespace {

bool ReadLightweight(const AcDbPolyline& polyline, ContourGeometry& geometry) {
  const unsigned count = polyline.numVerts();
  geometry.vertices.reserve(count);
  for (unsigned i = 0; i < count; ++i) {
    AcGePoint3d point;
    if (polyline.getPointAt(i, point) != Acad::eOk) return false;
    geometry.vertices.push_back(point.to2d());
  }
  geometry.closed = polyline.isClosed();
  geometry.has_bulges = polyline.hasBulges();
  return true;
}

bool ReadHeavy(const AcDb2dPolyline& polyline, ContourGeometry& geometry) {
  std::vector<AcGePoint3d> points;
  std::vector<double> bulges;
  if (polyline.getVertices(points, bulges) != Acad::eOk) return false;
  geometry.vertices.reserve(points.size());
  for (const AcGePoint3d& point : points) geometry.vertices.push_back(point.to2d());
  for (double bulge : bulges) geometry.has_bulges |= bulge != 0;
  geometry.closed = polyline.isClosed();
  return true;
}

}  // namespace

bool IsContourEntity(const AcDbEntity& entity) {
  if (dynamic_cast<const AcDbPolyline*>(&entity) != nullptr) return true;
  const auto* heavy = dynamic_cast<const AcDb2dPolyline*>(&entity);
  return heavy != nullptr && !heavy->is3d() && !heavy->isPolyfaceMesh() && !heavy->isPolygonMesh();
}

bool ReadContourGeometry(const AcDbEntity& entity, ContourGeometry* geometry) {
  if (!IsContourEntity(entity)) return false;
  ContourGeometry read;
  const auto* lightweight = dynamic_cast<const AcDbPolyline*>(&entity);
  const bool ok = lightweight != nullptr
                      ? ReadLightweight(*lightweight, read)
                      : ReadHeavy(dynamic_cast<const AcDb2dPolyline&>(entity), read);
  if (!ok) return false;
  // No extents (no vertices): the default box, which is empty.
  if (entity.getGeomExtents(read.extents) != Acad::eOk) read.extents = AcDbExtents();
  *geometry = std::move(read);
  return true;
}

}  // namespace fx::rooms
