#ifndef FX_HOST_DXF_DXF_CARET_H_
#define FX_HOST_DXF_DXF_CARET_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>

namespace fx::dxf {

// ASCII DXF writes the control characters of a string as a caret and a letter ("^J" for a
// line feed, "^M" for a carriage return, "^I" for a tab) and a caret itself as "^ ". Binary
// DXF stores the characters themselves. Tag values are in the ASCII form whatever the file's
// encoding, so the binary reader encodes and the binary writer decodes.

// The characters a string value stands for. A caret not starting one of these escapes
// ("x^2", a trailing "^", "^@" for the NUL a string cannot hold) stays as it is.
std::string CaretDecode(std::string_view value);

// The ASCII form of a string's characters.
std::string CaretEncode(std::string_view text);

// Whether CaretEncode would change `text`.
bool NeedsCaretEncoding(std::string_view text);

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_CARET_H_
