#include "host/dxf/dxf_version.h"

#include "host/dxf/dxf_values.h"

namespace fx::dxf {

int AcadverNumber(std::string_view acadver) {
  acadver = TrimBlanks(acadver);
  if (acadver.size() != 6 || acadver.substr(0, 2) != "AC") return 0;
  int number = 0;
  for (const char c : acadver.substr(2)) {
    if (c < '0' || c > '9') return 0;
    number = number * 10 + (c - '0');
  }
  return number;
}

}  // namespace fx::dxf
