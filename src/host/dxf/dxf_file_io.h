#ifndef FX_HOST_DXF_DXF_FILE_IO_H_
#define FX_HOST_DXF_DXF_FILE_IO_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstddef>
#include <string>

namespace fx::dxf {

// Reads a whole file with one allocation of its size. On failure returns false and sets
// *failure to the reason (the C library's text for the error).
bool ReadWholeFile(const std::string& path, std::string* bytes, std::string* failure);

// Asks the kernel to back the whole 2 MiB pages of [data, data + size) with huge pages, for a
// large buffer about to be filled: far fewer page faults. Only advice; nothing changes when
// the system does not take it.
void AdviseHugePages(const void* data, size_t size);

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_FILE_IO_H_
