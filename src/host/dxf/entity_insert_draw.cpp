// How an insert draws itself: through the sink's block hook, else its block
// once per MINSERT cell under the block transform, then its attributes
// (which are in the insert's own coordinates, not the block's).
#include <string>

#include "host/database.h"
#include "host/db_entities.h"
#include "host/dxf/draw_block.h"
#include "host/dxf/entity_support.h"
#include "host/world_draw.h"

namespace {

// The most MINSERT cells drawn; a larger array is drawn up to it and reported.
constexpr long kMaxArrayCells = 10000;

}  // namespace

// When the sink's beginBlockReference takes the insert over, the host draws
// nothing more of it, attributes included: the sink has them through
// attributeIds().
bool AcDbBlockReference::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  AcGiWorldGeometry& geometry = world_draw->geometry();
  const AcGeMatrix3d transform = blockTransform();
  if (geometry.beginBlockReference(*this, transform)) return true;
  const AcDbObjectId block = blockTableRecord();
  const int columns = columnCount(), rows = rowCount();
  if (static_cast<long>(columns) * rows > kMaxArrayCells)
    fx::dxf::ReportDrawWarning("An array of " + std::to_string(columns) + " x " + std::to_string(rows) +
                               " inserts is drawn only up to " + std::to_string(kMaxArrayCells) + " cells");
  // Cells lie along the insert's rotated axes, spaced without scaling.
  const AcGeMatrix3d axes = AcGeMatrix3d::planeToWorld(normal()) *
                            AcGeMatrix3d::rotation(rotation(), AcGeVector3d::kZAxis);
  bool stop = false;
  long drawn = 0;
  for (int row = 0; row < rows && !stop && drawn < kMaxArrayCells; ++row) {
    for (int column = 0; column < columns && !stop && drawn < kMaxArrayCells; ++column, ++drawn) {
      AcGeVector3d shift = axes * AcGeVector3d(column * columnSpacing(), row * rowSpacing(), 0);
      geometry.pushModelTransform(AcGeMatrix3d::translation(shift) * transform);
      stop = fx::dxf::DrawBlockContents(block, *world_draw);
      geometry.popModelTransform();
    }
  }
  for (AcDbObjectId id : attributeIds()) {
    if (stop) break;
    AcDbObjectPointer<AcDbAttribute> attribute(id, AcDb::kForRead);
    if (attribute.openStatus() != Acad::eOk || attribute->visibility() != AcDb::kVisible) continue;
    stop = !attribute->worldDraw(world_draw);
  }
  geometry.endBlockReference(*this);
  return !stop;
}
