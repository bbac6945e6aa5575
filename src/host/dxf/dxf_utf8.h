#ifndef FX_HOST_DXF_DXF_UTF8_H_
#define FX_HOST_DXF_DXF_UTF8_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>

namespace fx::dxf {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// Reads the code point starting at *pos and advances *pos past it. A malformed, overlong or
// truncated sequence, or an encoded surrogate, yields U+FFFD and consumes one byte.
char32_t NextCodePoint(std::string_view utf8, size_t* pos);

void AppendUtf8(char32_t code_point, std::string* out);

bool IsAscii(std::string_view text);

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_UTF8_H_
