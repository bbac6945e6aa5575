// The coordinate systems of the console editor, behind acedTrans
// (host/editor.h, where the call's contract is): world; the user system of
// the current drawing, from its system variables UCSORG, UCSXDIR and
// UCSYDIR; the display system of its active view (active_view.h); the
// object system of an extrusion direction (the arbitrary-axis frame).
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_COORDINATE_SYSTEMS_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_COORDINATE_SYSTEMS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include "host/resbuf.h"

namespace fx::console {

int TransformPoint(const ads_point point, const resbuf* from, const resbuf* to, int disp, ads_point result);

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_COORDINATE_SYSTEMS_H_
