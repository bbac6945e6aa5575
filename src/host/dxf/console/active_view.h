// The current view of model space: the "*ACTIVE" viewport table record.
// Its centre, width and height are in its display coordinate system (DCS):
// origin at the view's target, Z along the view direction (from the target
// to the viewer), X and Y those of the direction's arbitrary-axis frame
// turned by the view's twist.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_ACTIVE_VIEW_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_ACTIVE_VIEW_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include "host/database.h"

namespace fx::console {

struct View {
  AcGePoint2d center;
  double height = 0;
  double width = 0;
  AcGeMatrix3d to_world = AcGeMatrix3d::kIdentity;  // display coordinates to world
};

// The view that shows `extents` (in display coordinates) whole, centred,
// with the aspect ratio (width over height) of `current`; a view without a
// usable ratio gets a square one. Extents that are a single point keep the
// current height.
View FitView(const View& current, const AcDbExtents& extents);

// eKeyNotFound when the drawing has no "*ACTIVE" viewport.
Acad::ErrorStatus GetActiveView(AcDbDatabase& database, View& view);
// Fits the active view to `extents` (world, not empty) and stores it.
Acad::ErrorStatus ZoomActiveView(AcDbDatabase& database, const AcDbExtents& extents);

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_ACTIVE_VIEW_H_
