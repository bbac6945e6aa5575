// Comparing the text of saved DXF drawings.
#ifndef FLOORXPORT_TESTS_SUPPORT_DRAWING_TEXT_H_
#define FLOORXPORT_TESTS_SUPPORT_DRAWING_TEXT_H_

#include <string>

namespace fx::testing {

// The drawing's text with the time of its last save ($TDUPDATE and
// $TDUUPDATE, which every save stamps) replaced by "saved": two saves of
// the same drawing then compare equal.
inline std::string WithoutSaveTime(std::string dxf) {
  for (const char* name : {"\n$TDUPDATE", "\n$TDUUPDATE"}) {
    const size_t at = dxf.find(name);
    if (at == std::string::npos) continue;
    // The variable's line, its group code's line, then the value's line.
    const size_t value = dxf.find('\n', dxf.find('\n', at + 1) + 1) + 1;
    dxf.replace(value, dxf.find('\n', value) - value, "saved");
  }
  return dxf;
}

}  // namespace fx::testing

#endif  // FLOORXPORT_TESTS_SUPPORT_DRAWING_TEXT_H_
