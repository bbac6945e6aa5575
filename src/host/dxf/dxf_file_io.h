#ifndef FX_HOST_DXF_DXF_FILE_IO_H_
#define FX_HOST_DXF_DXF_FILE_IO_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>

namespace fx::dxf {

// Reads a whole file with one allocation of its size. On failure returns false and sets
// *failure to the reason (the C library's text for the error).
bool ReadWholeFile(const std::string& path, std::string* bytes, std::string* failure);

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_FILE_IO_H_
