// What the clean-up command front ends share.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_COMMAND_SUPPORT_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_COMMAND_SUPPORT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>

class AcDbImpDatabase;

namespace fx::cleanup {

// The working database's drawing; nullptr, after saying "No drawing is
// open." and failing the command, when there is none.
AcDbImpDatabase* DrawingOrFail();
void FailCommand();

// "1 layer", "2 layers": `count` and the noun, with `plural` when not 1.
std::string Counted(int count, const char* singular, const char* plural);

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_COMMAND_SUPPORT_H_
