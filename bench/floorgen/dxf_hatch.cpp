#include "dxf_hatch.h"

#include <cmath>
#include <numbers>
#include <variant>

namespace floorgen {

namespace {

constexpr int kPathExternal = 1;
constexpr int kPathPolyline = 2;
constexpr int kEdgeLine = 1;
constexpr int kEdgeArc = 2;
constexpr int kStyleOddParity = 0;
constexpr int kPatternPredefined = 1;
constexpr double kAnsi31Angle = 45.0;
constexpr double kAnsi31Spacing = 3.175;

void BeginHatch(EntityWriter& writer, std::string_view layer, int color, std::string_view pattern, bool solid) {
  writer.Begin("HATCH", layer, color);
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbHatch");
  out.Point3(10, {});  // elevation
  out.Real(210, 0.0);  // extrusion direction
  out.Real(220, 0.0);
  out.Real(230, 1.0);
  out.Text(2, pattern);
  out.Integer(70, solid ? 1 : 0);
  out.Integer(71, 0);  // not associative
  out.Integer(91, 1);  // one boundary path
}

void WriteEdge(DxfStream& out, const HatchEdge& edge) {
  if (const auto* line = std::get_if<LineEdge>(&edge)) {
    out.Integer(72, kEdgeLine);
    out.Point2(10, line->start);
    out.Point2(11, line->end);
    return;
  }
  const auto& arc = std::get<ArcEdge>(edge);
  out.Integer(72, kEdgeArc);
  out.Point2(10, arc.center);
  out.Real(40, arc.radius);
  out.Real(50, arc.start_degrees);
  out.Real(51, arc.end_degrees);
  out.Integer(73, 1);  // counter-clockwise
}

}  // namespace

void WriteSolidHatch(EntityWriter& writer, std::string_view layer, int color, const Polygon& boundary) {
  BeginHatch(writer, layer, color, "SOLID", true);
  DxfStream& out = writer.Out();
  out.Integer(92, kPathExternal | kPathPolyline);
  out.Integer(72, 0);  // no bulges
  out.Integer(73, 1);  // closed
  out.Integer(93, static_cast<long long>(boundary.size()));
  for (Point vertex : boundary) out.Point2(10, vertex);
  out.Integer(97, 0);  // no source boundary objects
  out.Integer(75, kStyleOddParity);
  out.Integer(76, kPatternPredefined);
  out.Integer(98, 0);  // no seed points
}

void WriteAnsi31Hatch(EntityWriter& writer, std::string_view layer, std::span<const HatchEdge> edges,
                      double scale) {
  BeginHatch(writer, layer, kColorByLayer, "ANSI31", false);
  DxfStream& out = writer.Out();
  out.Integer(92, kPathExternal);
  out.Integer(93, static_cast<long long>(edges.size()));
  for (const HatchEdge& edge : edges) WriteEdge(out, edge);
  out.Integer(97, 0);
  out.Integer(75, kStyleOddParity);
  out.Integer(76, kPatternPredefined);
  out.Real(52, 0.0);  // pattern angle
  out.Real(41, scale);
  out.Integer(77, 0);  // not doubled
  // The pattern definition line, already turned and scaled: the offset to the
  // next line is the spacing perpendicular to the lines.
  out.Integer(78, 1);
  const double angle = kAnsi31Angle * std::numbers::pi / 180.0;
  const double spacing = kAnsi31Spacing * scale;
  out.Real(53, kAnsi31Angle);
  out.Real(43, 0.0);  // base point
  out.Real(44, 0.0);
  out.Real(45, -std::sin(angle) * spacing);
  out.Real(46, std::cos(angle) * spacing);
  out.Integer(79, 0);  // continuous lines, no dashes
  out.Integer(98, 0);
}

}  // namespace floorgen
