// Drawing the entities of a block, for inserts and dimensions, with block
// recursion bounded: a block is not entered while it is being drawn already
// (a block that inserts itself, directly or through others, is drawn once)
// nor deeper than kMaxBlockDepth; either is reported through
// ReportDrawWarning and skipped.
#ifndef FLOORXPORT_HOST_DXF_DRAW_BLOCK_H_
#define FLOORXPORT_HOST_DXF_DRAW_BLOCK_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include "host/ids.h"

class AcGiWorldDraw;

namespace fx::dxf {

// Draws the visible entities of `block` in the current model transform,
// leaving out its attribute definitions (an insert draws its attributes
// instead). The blocks being drawn are tracked per thread. Returns true when
// the sink asked to stop.
bool DrawBlockContents(AcDbObjectId block, AcGiWorldDraw& draw);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAW_BLOCK_H_
