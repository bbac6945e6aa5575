// The values of the floor files as text: every number written with
// std::to_chars (never through the process locale), in the formats that
// docs/floor-xml.md gives.
#ifndef FLOORXPORT_EXPORT_FLOOR_VALUES_H_
#define FLOORXPORT_EXPORT_FLOOR_VALUES_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/geometry.h"

namespace fx::exports {

// "%.4f" and "%.6f": coordinates and floor areas with four decimals, room
// areas and text positions with six. As printf writes them, except that a
// value that is not finite is written "0" and -0 is written as 0.
std::string Fixed4(double value);
std::string Fixed6(double value);

// A vertex list (`path`): each vertex "[%.4f,%.4f]", joined by "," with
// nothing else; empty for no vertices.
std::string VertexList(const std::vector<AcGePoint2d>& vertices);

// `textPosition`: the centre of the box, "%.6f,%.6f" (min + (max - min) *
// 0.5 in x and y); nullopt for a box whose minimum and maximum are equal
// within the global tolerance (or an empty box).
std::optional<std::string> BoxCentreText(const AcDbExtents& box);

// A coefficient of a `matrix` element: the shortest text that reads back as
// the same double ("1", "-1", "0", "-1250.5"); -0 is "0", not finite "0".
std::string MatrixCoefficient(double value);

// `defaultUnits` of the host's insertion units code (0 to 20, others
// "inches"): "inches", "feet", "miles", "millimeters", "centimeters",
// "meters", "kilometers" or "yards". Small and large units fold into
// "inches" and "meters" unscaled.
const char* DefaultUnitsName(int units);

// A layer `color`: "%02X%02X%02X" of 0xRRGGBB, no "#".
std::string LayerColorText(uint32_t rgb);
// A layer `lw`: "0.01mm" for by layer, by block, default and 0; otherwise
// hundredths of a millimetre divided by 100, "%.4gmm" ("0.25mm").
std::string LayerWeightText(int weight);

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_FLOOR_VALUES_H_
