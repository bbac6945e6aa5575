#include "export/floor_values.h"

#include <charconv>
#include <cmath>

#include "svg/svg_number.h"

namespace fx::exports {

std::string Fixed4(double value) {
  std::string out;
  fx::svg::AppendFixed(out, value, 4);
  return out;
}

std::string Fixed6(double value) {
  std::string out;
  fx::svg::AppendFixed(out, value, 6);
  return out;
}

std::string VertexList(const std::vector<AcGePoint2d>& vertices) {
  std::string out;
  out.reserve(vertices.size() * 24);
  for (const AcGePoint2d& vertex : vertices) {
    if (!out.empty()) out += ',';
    out += '[';
    fx::svg::AppendFixed(out, vertex.x, 4);
    out += ',';
    fx::svg::AppendFixed(out, vertex.y, 4);
    out += ']';
  }
  return out;
}

std::optional<std::string> BoxCentreText(const AcDbExtents& box) {
  if (box.isEmpty() || box.minPoint().isEqualTo(box.maxPoint())) return std::nullopt;
  const AcGePoint3d& min = box.minPoint();
  const AcGePoint3d& max = box.maxPoint();
  std::string out;
  fx::svg::AppendFixed(out, min.x + (max.x - min.x) * 0.5, 6);
  out += ',';
  fx::svg::AppendFixed(out, min.y + (max.y - min.y) * 0.5, 6);
  return out;
}

std::string MatrixCoefficient(double value) {
  if (!std::isfinite(value) || value == 0) return "0";
  char buffer[64];
  auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
  return error == std::errc() ? std::string(buffer, end) : std::string("0");
}

const char* DefaultUnitsName(int units) {
  switch (units) {
    case 2: return "feet";
    case 3: return "miles";
    case 4: return "millimeters";
    case 5: return "centimeters";
    case 6: case 12: case 13: case 14: case 15: case 16: return "meters";
    case 7: return "kilometers";
    case 10: return "yards";
    default: return "inches";  // 0, 1, 8, 9, 11, 17 to 20 and anything else
  }
}

std::string LayerColorText(uint32_t rgb) { return fx::svg::ColorText(rgb).substr(1); }

std::string LayerWeightText(int weight) { return fx::svg::LineWeightText(weight); }

}  // namespace fx::exports
