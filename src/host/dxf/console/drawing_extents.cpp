#include "host/dxf/console/drawing_extents.h"

#include "host/dxf/model_space_extents.h"

namespace fx::console {

AcDbExtents DrawingExtents(AcDbDatabase& database) {
  AcDbExtents extents;
  if (fx::dxf::ModelSpaceExtents(database, extents) == Acad::eOk && !extents.isEmpty()) return extents;
  AcGePoint3d min = database.extmin();
  AcGePoint3d max = database.extmax();
  if (min.x <= max.x && min.y <= max.y) return AcDbExtents(min, max);
  return AcDbExtents();
}

}  // namespace fx::console
