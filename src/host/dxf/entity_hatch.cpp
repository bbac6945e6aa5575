// HATCH: elevation point (10; its z), normal (210), pattern name (2), solid
// fill flag (70), loop count (91) and the loops, style (75), pattern type
// (76), angle (52, degrees), scale (41) and the pattern's line families
// (78, then per family 53 angle, 43/44 base point, 45/46 offset, 79 dash
// count and 49 dashes), all in the plane of the normal and already scaled
// and rotated by the pattern's scale and angle.
//
// A loop (92 type) is a polyline (type bit 2: 72 has-bulge flag, 73 closed,
// 93 vertex count, then 10/20 with an optional 42 bulge each) or a list of
// edges (93 edge count, then per edge 72 kind: 1 line 10/20 11/21; 2 arc
// 10/20 centre, 40 radius, 50/51 angles, 73 counter-clockwise; 3 elliptic
// arc 10/20 centre, 11/21 major axis end relative to the centre, 40
// minor/major ratio, 50/51 angles, 73; 4 spline 94 degree, 73 rational, 74
// periodic, 95 knot count, 96 control point count, 40 knots, 10/20 control
// points each with a 42 weight when rational, and in newer files 97 fit
// point count with 11/21 fit points and 12/22, 13/23 tangents), followed by
// the count of source objects (97) and their handles (330). A clockwise
// arc stores its angles as 360 minus the angles of its ends; an elliptic
// arc's angles are the polar angles of its ends, not eccentric anomalies.
#include <algorithm>
#include <numbers>

#include "host/db_entities.h"
#include "host/dxf/draw_curves.h"
#include "host/dxf/draw_hatch.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_object.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSubclass = "AcDbHatch";
constexpr double kDegrees = std::numbers::pi / 180;

// Reads the tags of a hatch in order, each read taking the tag when it has
// the code asked for and answering a fallback otherwise.
class Cursor {
 public:
  Cursor(const TagList& tags, size_t begin, size_t end) : tags_(tags), at_(begin), end_(end) {}
  bool done() const { return at_ >= end_; }
  bool At(int code) const { return !done() && tags_[at_].code == code; }
  size_t position() const { return at_; }
  void Rewind(size_t position) { at_ = position; }
  void SkipTo(int code) {
    while (!done() && !At(code)) ++at_;
  }
  double Double(int code, double fallback = 0) {
    if (!At(code)) return fallback;
    return fx::dxf::ParseDouble(tags_[at_++].value).value_or(fallback);
  }
  int64_t Int(int code, int64_t fallback = 0) {
    if (!At(code)) return fallback;
    return fx::dxf::ParseInt(tags_[at_++].value).value_or(fallback);
  }
  AcGePoint2d Point(int code) {
    double x = Double(code);
    return {x, Double(code + 10)};
  }

 private:
  const TagList& tags_;
  size_t at_, end_;
};

// Counts read from a file bound the loops that read them.
constexpr int64_t kMaxCount = 10000000;

void ReadPolylineLoop(Cursor& cursor, AcDbHatchLoop& loop) {
  loop.is_polyline = true;
  cursor.Int(72);
  loop.closed = cursor.Int(73, 1) != 0;
  int64_t count = std::min(cursor.Int(93), kMaxCount);
  for (int64_t v = 0; v < count && cursor.At(10); ++v) {
    loop.vertices.push_back(cursor.Point(10));
    loop.bulges.push_back(cursor.Double(42, 0));
  }
}

// Whether a 97 just read after a spline's control points counted its fit
// points (newer files) rather than the loop's source objects.
bool IsFitCount(const Cursor& cursor) {
  return cursor.At(11) || cursor.At(12) || cursor.At(13) || cursor.At(72) || cursor.At(97);
}

fx::dxf::SplineCurve ReadSplineEdge(Cursor& cursor, AcDbHatchEdge& edge) {
  int degree = static_cast<int>(cursor.Int(94, 3));
  bool rational = cursor.Int(73) != 0;
  cursor.Int(74);
  int64_t knot_count = std::min(cursor.Int(95), kMaxCount);
  int64_t point_count = std::min(cursor.Int(96), kMaxCount);
  std::vector<double> knots;
  for (int64_t k = 0; k < knot_count && cursor.At(40); ++k) knots.push_back(cursor.Double(40));
  std::vector<AcGePoint3d> points;
  std::vector<double> weights;
  for (int64_t k = 0; k < point_count && cursor.At(10); ++k) {
    AcGePoint2d p = cursor.Point(10);
    points.push_back({p.x, p.y, 0});
    if (cursor.At(42)) weights.push_back(cursor.Double(42, 1));
  }
  if (cursor.At(97)) {
    size_t before = cursor.position();
    int64_t fit_count = std::min(cursor.Int(97), kMaxCount);
    if (IsFitCount(cursor)) {
      for (int64_t k = 0; k < fit_count && cursor.At(11); ++k) cursor.Point(11);
      if (cursor.At(12)) cursor.Point(12);
      if (cursor.At(13)) cursor.Point(13);
    } else {
      cursor.Rewind(before);
    }
  }
  if (!rational) weights.clear();
  edge.kind = AcDbHatchEdge::kSpline;
  return fx::dxf::SplineCurve(degree, std::move(knots), std::move(points), std::move(weights));
}

// The true angle of an arc end from its stored angle (degrees).
double EndAngle(double stored, bool counter_clockwise) {
  return (counter_clockwise ? stored : -stored) * kDegrees;
}

void ReadEdgeLoop(Cursor& cursor, AcDbHatchLoop& loop, std::vector<fx::dxf::SplineCurve>& splines,
                  double spline_deviation) {
  int64_t count = std::min(cursor.Int(93), kMaxCount);
  for (int64_t e = 0; e < count && cursor.At(72); ++e) {
    AcDbHatchEdge edge;
    int64_t kind = cursor.Int(72);
    if (kind == AcDbHatchEdge::kLine) {
      edge.kind = AcDbHatchEdge::kLine;
      edge.start = cursor.Point(10);
      edge.end = cursor.Point(11);
    } else if (kind == AcDbHatchEdge::kCircArc) {
      edge.kind = AcDbHatchEdge::kCircArc;
      edge.center = cursor.Point(10);
      edge.radius = cursor.Double(40);
      double start = cursor.Double(50), end = cursor.Double(51);
      edge.counter_clockwise = cursor.Int(73, 1) != 0;
      edge.start_angle = EndAngle(start, edge.counter_clockwise);
      edge.end_angle = EndAngle(end, edge.counter_clockwise);
    } else if (kind == AcDbHatchEdge::kEllipArc) {
      edge.kind = AcDbHatchEdge::kEllipArc;
      edge.center = cursor.Point(10);
      AcGePoint2d major = cursor.Point(11);
      edge.major_axis = {major.x, major.y};
      edge.minor_ratio = cursor.Double(40, 1);
      double start = cursor.Double(50), end = cursor.Double(51);
      edge.counter_clockwise = cursor.Int(73, 1) != 0;
      edge.start_angle = fx::dxf::EllipseParamOfAngle(EndAngle(start, edge.counter_clockwise), edge.minor_ratio);
      edge.end_angle = fx::dxf::EllipseParamOfAngle(EndAngle(end, edge.counter_clockwise), edge.minor_ratio);
    } else if (kind == AcDbHatchEdge::kSpline) {
      splines.push_back(ReadSplineEdge(cursor, edge));
      double deviation = spline_deviation;
      if (!(deviation > 0)) {
        AcDbExtents hull;
        for (const AcGePoint3d& p : splines.back().points()) hull.addPoint(p);
        deviation = hull.minPoint().distanceTo(hull.maxPoint()) * 1e-4;
      }
      for (const AcGePoint3d& p : splines.back().Sample(deviation)) edge.points.push_back(p.to2d());
    } else {
      break;  // an unknown edge: the rest of the loop cannot be read
    }
    loop.edges.push_back(std::move(edge));
  }
}

}  // namespace

namespace fx::dxf {

HatchBoundary ReadHatchBoundary(const AcDbHatch& hatch, double spline_deviation) {
  HatchBoundary boundary;
  const TagList& tags = hatch.impl()->tags();
  Range range = DataOf(tags, kSubclass);
  size_t start = tags.Find(91, range);
  if (start == TagList::kNotFound) return boundary;
  Cursor cursor(tags, start, range.end);
  int64_t count = std::min(cursor.Int(91), kMaxCount);
  for (int64_t l = 0; l < count; ++l) {
    cursor.SkipTo(92);
    if (cursor.done()) break;
    AcDbHatchLoop loop;
    loop.loop_type = static_cast<int>(cursor.Int(92));
    std::vector<SplineCurve> splines;
    if (loop.loop_type & 2) ReadPolylineLoop(cursor, loop);
    else ReadEdgeLoop(cursor, loop, splines, spline_deviation);
    boundary.loops.push_back(std::move(loop));
    boundary.splines.push_back(std::move(splines));
  }
  return boundary;
}

}  // namespace fx::dxf

std::string AcDbHatch::patternName() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::DecodeText(*this, tags.GetString(2, DataOf(tags, kSubclass)));
}

bool AcDbHatch::isSolidFill() const {
  const TagList& tags = impl()->tags();
  return tags.GetInt(70, DataOf(tags, kSubclass), 0) == 1;
}

int AcDbHatch::patternType() const {
  const TagList& tags = impl()->tags();
  return static_cast<int>(tags.GetInt(76, DataOf(tags, kSubclass), 1));
}

double AcDbHatch::patternAngle() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadDegrees(tags, 52, DataOf(tags, kSubclass));
}

double AcDbHatch::patternScale() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(41, DataOf(tags, kSubclass), 1);
}

double AcDbHatch::elevation() const {
  const TagList& tags = impl()->tags();
  return tags.GetPoint(10, DataOf(tags, kSubclass)).z;
}

AcGeVector3d AcDbHatch::normal() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadNormal(tags, DataOf(tags, kSubclass));
}

int AcDbHatch::hatchStyle() const {
  const TagList& tags = impl()->tags();
  return static_cast<int>(tags.GetInt(75, DataOf(tags, kSubclass), 0));
}

int AcDbHatch::numLoops() const {
  return static_cast<int>(fx::dxf::ReadHatchBoundary(*this, 0).loops.size());
}

Acad::ErrorStatus AcDbHatch::getLoopAt(int index, AcDbHatchLoop& loop) const {
  fx::dxf::HatchBoundary boundary = fx::dxf::ReadHatchBoundary(*this, 0);
  if (index < 0 || static_cast<size_t>(index) >= boundary.loops.size()) return Acad::eInvalidIndex;
  loop = std::move(boundary.loops[static_cast<size_t>(index)]);
  return Acad::eOk;
}

std::vector<AcDbHatchPatternLine> AcDbHatch::patternLines() const {
  std::vector<AcDbHatchPatternLine> lines;
  const TagList& tags = impl()->tags();
  Range range = DataOf(tags, kSubclass);
  size_t start = tags.Find(78, range);
  if (start == TagList::kNotFound) return lines;
  Cursor cursor(tags, start, range.end);
  int64_t count = std::min(cursor.Int(78), kMaxCount);
  for (int64_t k = 0; k < count && cursor.At(53); ++k) {
    AcDbHatchPatternLine line;
    line.angle = cursor.Double(53) * kDegrees;
    double x = cursor.Double(43), y = cursor.Double(44);
    line.base = {x, y};
    double dx = cursor.Double(45), dy = cursor.Double(46);
    line.offset = {dx, dy};
    int64_t dashes = std::min(cursor.Int(79), kMaxCount);
    for (int64_t d = 0; d < dashes && cursor.At(49); ++d) line.dashes.push_back(cursor.Double(49));
    lines.push_back(std::move(line));
  }
  return lines;
}

AcGeMatrix3d AcDbHatch::planeToWorld() const {
  return AcGeMatrix3d::planeToWorld(normal()) * AcGeMatrix3d::translation({0, 0, elevation()});
}
