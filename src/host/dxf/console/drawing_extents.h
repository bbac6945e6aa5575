// The extents of a drawing's model space, as ZOOM Extents and the info
// report use them.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_DRAWING_EXTENTS_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_DRAWING_EXTENTS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include "host/database.h"

namespace fx::console {

// The model-space extents (fx::dxf::ModelSpaceExtents), or when that is
// empty the header's $EXTMIN/$EXTMAX if they form a box (an empty drawing's
// header holds an inverted one); empty when neither gives one.
AcDbExtents DrawingExtents(AcDbDatabase& database);

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_DRAWING_EXTENTS_H_
