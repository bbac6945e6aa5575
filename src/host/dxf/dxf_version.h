#ifndef FX_HOST_DXF_DXF_VERSION_H_
#define FX_HOST_DXF_DXF_VERSION_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string_view>

namespace fx::dxf {

// The $ACADVER value of a drawing without one.
inline constexpr std::string_view kDefaultAcadver = "AC1009";

// "AC1032" -> 1032. Returns 0 for text not of the form "AC" + four digits (the releases
// before AC1006 wrote "AC2.10" and the like), which sorts them before every numbered release.
int AcadverNumber(std::string_view acadver);

// Strings are UTF-8 from AC1021 on; before, they are in the $DWGCODEPAGE code page.
inline bool StoresUtf8Strings(std::string_view acadver) { return AcadverNumber(acadver) >= 1021; }

// Binary files write group codes in two bytes from R13 (AC1012) on, in one byte before.
inline bool UsesTwoByteBinaryCodes(std::string_view acadver) {
  return AcadverNumber(acadver) >= 1012;
}

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_VERSION_H_
