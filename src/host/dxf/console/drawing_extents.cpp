#include "host/dxf/console/drawing_extents.h"

namespace fx::console {

Acad::ErrorStatus ModelSpaceExtents(AcDbDatabase& database, AcDbExtents& extents) {
  extents = AcDbExtents();
  AcDbObjectPointer<AcDbBlockTableRecord> model_space(database.modelSpaceId(), AcDb::kForRead);
  if (model_space.openStatus() != Acad::eOk) return model_space.openStatus();
  for (AcDbObjectId id : model_space->entityIds()) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    AcDbExtents entity_extents;
    if (entity.openStatus() == Acad::eOk && entity->getGeomExtents(entity_extents) == Acad::eOk) {
      extents.addExt(entity_extents);
    }
  }
  return Acad::eOk;
}

AcDbExtents DrawingExtents(AcDbDatabase& database) {
  AcDbExtents extents;
  if (ModelSpaceExtents(database, extents) == Acad::eOk && !extents.isEmpty()) return extents;
  AcGePoint3d min = database.extmin();
  AcGePoint3d max = database.extmax();
  if (min.x <= max.x && min.y <= max.y) return AcDbExtents(min, max);
  return AcDbExtents();
}

}  // namespace fx::console
