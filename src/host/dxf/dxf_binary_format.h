#ifndef FX_HOST_DXF_DXF_BINARY_FORMAT_H_
#define FX_HOST_DXF_DXF_BINARY_FORMAT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string_view>

namespace fx::dxf {

// The 22 bytes that open every binary DXF file: an ASCII banner, CR, LF, SUB, NUL.
inline constexpr char kBinarySentinelBytes[] = {0x41, 0x75, 0x74, 0x6F, 0x43, 0x41, 0x44, 0x20,
                                                0x42, 0x69, 0x6E, 0x61, 0x72, 0x79, 0x20, 0x44,
                                                0x58, 0x46, 0x0D, 0x0A, 0x1A, 0x00};
inline constexpr std::string_view kBinarySentinel(kBinarySentinelBytes,
                                                  sizeof kBinarySentinelBytes);

// In one-byte-code files (before R13) this byte announces a two-byte group code.
inline constexpr unsigned char kBinaryCodeEscape = 255;

// Binary chunk values (codes 310-319, 1004) carry a one-byte length.
inline constexpr size_t kMaxBinaryChunkSize = 255;

inline bool IsBinaryDxf(std::string_view bytes) { return bytes.starts_with(kBinarySentinel); }

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_BINARY_FORMAT_H_
