#include "host/dxf/console/active_view.h"

#include <algorithm>
#include <cmath>

namespace fx::console {
namespace {

constexpr const char* kActiveViewport = "*ACTIVE";

Acad::ErrorStatus ActiveViewportId(AcDbDatabase& database, AcDbObjectId& id) {
  AcDbViewportTable* table = nullptr;
  Acad::ErrorStatus status = database.getViewportTable(table, AcDb::kForRead);
  if (status != Acad::eOk) return status;
  status = table->getAt(kActiveViewport, id);
  table->close();
  return status;
}

// Display to world: the direction's frame, moved to the target, turned
// back by the twist about the line of sight.
AcGeMatrix3d DisplayToWorld(const AcDbViewportTableRecord& viewport) {
  const AcGeVector3d direction = viewport.viewDirection();
  const AcGePoint3d target = viewport.target();
  return AcGeMatrix3d::rotation(-viewport.viewTwist(), direction, target) *
         AcGeMatrix3d::translation(target - AcGePoint3d::kOrigin) *
         AcGeMatrix3d::planeToWorld(direction);
}

View ViewOf(const AcDbViewportTableRecord& viewport) {
  return {viewport.centerPoint(), viewport.height(), viewport.width(), DisplayToWorld(viewport)};
}

}  // namespace

View FitView(const View& current, const AcDbExtents& extents) {
  double aspect = current.height > 0 && current.width > 0 ? current.width / current.height : 1.0;
  if (!std::isfinite(aspect) || aspect <= 0) aspect = 1.0;
  const AcGePoint3d& min = extents.minPoint();
  const AcGePoint3d& max = extents.maxPoint();
  View view;
  view.center = AcGePoint2d((min.x + max.x) / 2, (min.y + max.y) / 2);
  view.height = std::max(max.y - min.y, (max.x - min.x) / aspect);
  if (!(view.height > 0)) view.height = current.height > 0 ? current.height : 1.0;
  view.width = view.height * aspect;
  return view;
}

Acad::ErrorStatus GetActiveView(AcDbDatabase& database, View& view) {
  AcDbObjectId id;
  Acad::ErrorStatus status = ActiveViewportId(database, id);
  if (status != Acad::eOk) return status;
  AcDbObjectPointer<AcDbViewportTableRecord> viewport(id, AcDb::kForRead);
  if (viewport.openStatus() != Acad::eOk) return viewport.openStatus();
  view = ViewOf(*viewport.object());
  return Acad::eOk;
}

Acad::ErrorStatus ZoomActiveView(AcDbDatabase& database, const AcDbExtents& extents) {
  AcDbObjectId id;
  Acad::ErrorStatus status = ActiveViewportId(database, id);
  if (status != Acad::eOk) return status;
  AcDbObjectPointer<AcDbViewportTableRecord> viewport(id, AcDb::kForWrite);
  if (viewport.openStatus() != Acad::eOk) return viewport.openStatus();
  const View current = ViewOf(*viewport.object());
  // The box of the extents' corners as the view sees them.
  AcDbExtents seen = extents;
  seen.transformBy(current.to_world.inverse());
  const View view = FitView(current, seen);
  status = viewport->setCenterPoint(view.center);
  if (status == Acad::eOk) status = viewport->setHeight(view.height);
  if (status == Acad::eOk) status = viewport->setWidth(view.width);
  return status;
}

}  // namespace fx::console
