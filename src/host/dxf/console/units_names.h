// Names of the drawing units ($INSUNITS).
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_UNITS_NAMES_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_UNITS_NAMES_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

namespace fx::console {

constexpr int kMaxInsunits = 20;

// "Millimeters" for 4; "Unitless" for 0; "Unknown" outside 0 to kMaxInsunits.
const char* InsunitsName(int units);

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_UNITS_NAMES_H_
