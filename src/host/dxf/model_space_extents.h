// The extents of a drawing's model space and the header variables that keep
// them ($EXTMIN, $EXTMAX): AcDbDatabase::updateExt() is the two in a row;
// a command that needs the extents itself too (ZOOM Extents) measures once
// and writes what it measured.
#ifndef FLOORXPORT_HOST_DXF_MODEL_SPACE_EXTENTS_H_
#define FLOORXPORT_HOST_DXF_MODEL_SPACE_EXTENTS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include "host/database.h"

namespace fx::dxf {

// The union of getGeomExtents over the model-space entities that have
// extents; an empty box when none has. Fails only when model space cannot
// be opened.
Acad::ErrorStatus ModelSpaceExtents(AcDbDatabase& database, AcDbExtents& extents);

// Writes `extents` into $EXTMIN and $EXTMAX; an empty box leaves them as
// they are.
void SetHeaderExtents(AcDbDatabase& database, const AcDbExtents& extents);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_MODEL_SPACE_EXTENTS_H_
