#ifndef FX_HOST_DXF_DXF_TAG_H_
#define FX_HOST_DXF_DXF_TAG_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstdint>
#include <string_view>

namespace fx::dxf {

enum class Encoding { kAscii, kBinary };

// One (group code, value) pair. The value is always text: as the line appears in an ASCII
// file (without its line terminator, blanks kept), or the text form of a binary value
// (numbers as decimal text, binary chunks as uppercase hex).
struct Tag {
  int code;
  std::string_view value;
};

using RecordId = uint32_t;
inline constexpr RecordId kNoRecord = ~0u;

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_TAG_H_
