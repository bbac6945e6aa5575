#ifndef FX_HOST_DXF_DXF_CODE_PAGE_TABLES_H_
#define FX_HOST_DXF_DXF_CODE_PAGE_TABLES_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <array>
#include <span>
#include <string_view>

namespace fx::dxf {

// A single-byte code page whose bytes 0x00-0x7F are ASCII. `upper[b - 0x80]` is the code
// point of byte b, or 0xFFFD where the page defines no character.
struct SingleByteCodePage {
  std::string_view dxf_name;  // as $DWGCODEPAGE spells it, e.g. "ANSI_1252"
  std::array<char16_t, 128> upper;
};

std::span<const SingleByteCodePage* const> SingleByteCodePages();

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_CODE_PAGE_TABLES_H_
