#include "host/dxf/console/units_names.h"

namespace fx::console {
namespace {

// Indexed by the $INSUNITS value.
constexpr const char* kNames[kMaxInsunits + 1] = {
    "Unitless",
    "Inches",
    "Feet",
    "Miles",
    "Millimeters",
    "Centimeters",
    "Meters",
    "Kilometers",
    "Microinches",
    "Mils",
    "Yards",
    "Angstroms",
    "Nanometers",
    "Microns",
    "Decimeters",
    "Decameters",
    "Hectometers",
    "Gigameters",
    "Astronomical units",
    "Light years",
    "Parsecs",
};

}  // namespace

const char* InsunitsName(int units) {
  return units >= 0 && units <= kMaxInsunits ? kNames[units] : "Unknown";
}

}  // namespace fx::console
