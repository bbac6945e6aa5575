// SPLINE: flags (70: 1 closed, 2 periodic, 4 rational), degree (71), knots
// (40, repeated), weights (41, repeated, rational splines only), control
// points (10/20/30, repeated) and fit points (11/21/31, repeated), all in
// world coordinates.
#include "host/db_entities.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/draw_spline.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_object.h"
#include "host/dxf/dxf_values.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSubclass = "AcDbSpline";

double Value(const TagList& tags, size_t index) {
  return fx::dxf::ParseDouble(tags[index].value).value_or(0);
}

// The points of a repeated point group (x in `code`, then y and z).
std::vector<AcGePoint3d> ReadPoints(const TagList& tags, Range range, int code) {
  std::vector<AcGePoint3d> points;
  for (size_t i = range.begin; i < range.end; ++i) {
    if (tags[i].code == code) points.push_back({Value(tags, i), 0, 0});
    else if (!points.empty() && tags[i].code == code + 10) points.back().y = Value(tags, i);
    else if (!points.empty() && tags[i].code == code + 20) points.back().z = Value(tags, i);
  }
  return points;
}

std::vector<double> ReadValues(const TagList& tags, Range range, int code) {
  std::vector<double> values;
  for (size_t i = range.begin; i < range.end; ++i)
    if (tags[i].code == code) values.push_back(Value(tags, i));
  return values;
}

fx::dxf::SplineCurve CurveOf(const AcDbSpline& spline) {
  const TagList& tags = spline.impl()->tags();
  Range range = DataOf(tags, kSubclass);
  std::vector<double> weights;
  if (spline.isRational()) weights = ReadValues(tags, range, 41);
  return fx::dxf::SplineCurve(spline.degree(), ReadValues(tags, range, 40),
                              ReadPoints(tags, range, 10), std::move(weights));
}

}  // namespace

int AcDbSpline::degree() const {
  const TagList& tags = impl()->tags();
  return static_cast<int>(tags.GetInt(71, DataOf(tags, kSubclass), 3));
}

bool AcDbSpline::isRational() const {
  const TagList& tags = impl()->tags();
  return (tags.GetInt(70, DataOf(tags, kSubclass), 0) & 4) != 0;
}

bool AcDbSpline::isPeriodic() const {
  const TagList& tags = impl()->tags();
  return (tags.GetInt(70, DataOf(tags, kSubclass), 0) & 2) != 0;
}

int AcDbSpline::numControlPoints() const {
  const TagList& tags = impl()->tags();
  return static_cast<int>(ReadPoints(tags, DataOf(tags, kSubclass), 10).size());
}

AcGePoint3d AcDbSpline::controlPointAt(int index) const {
  const TagList& tags = impl()->tags();
  std::vector<AcGePoint3d> points = ReadPoints(tags, DataOf(tags, kSubclass), 10);
  return index >= 0 && static_cast<size_t>(index) < points.size() ? points[static_cast<size_t>(index)]
                                                                   : AcGePoint3d();
}

double AcDbSpline::weightAt(int index) const {
  if (!isRational()) return 1;
  const TagList& tags = impl()->tags();
  std::vector<double> weights = ReadValues(tags, DataOf(tags, kSubclass), 41);
  return index >= 0 && static_cast<size_t>(index) < weights.size() ? weights[static_cast<size_t>(index)]
                                                                   : 1;
}

std::vector<double> AcDbSpline::knots() const {
  const TagList& tags = impl()->tags();
  return ReadValues(tags, DataOf(tags, kSubclass), 40);
}

int AcDbSpline::numFitPoints() const {
  const TagList& tags = impl()->tags();
  return static_cast<int>(ReadPoints(tags, DataOf(tags, kSubclass), 11).size());
}

AcGePoint3d AcDbSpline::fitPointAt(int index) const {
  const TagList& tags = impl()->tags();
  std::vector<AcGePoint3d> points = ReadPoints(tags, DataOf(tags, kSubclass), 11);
  return index >= 0 && static_cast<size_t>(index) < points.size() ? points[static_cast<size_t>(index)]
                                                                   : AcGePoint3d();
}

std::vector<AcGePoint3d> AcDbSpline::samplePoints(double max_deviation) const {
  fx::dxf::SplineCurve curve = CurveOf(*this);
  if (curve.points().empty()) {
    const TagList& tags = impl()->tags();
    return ReadPoints(tags, DataOf(tags, kSubclass), 11);
  }
  return curve.Sample(max_deviation);
}

bool AcDbSpline::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  std::vector<AcGePoint3d> points = samplePoints(fx::dxf::ModelDeviation(*world_draw));
  if (points.empty()) return true;
  return !world_draw->geometry().polyline(static_cast<uint32_t>(points.size()), points.data());
}

namespace fx::dxf {

void AddExtents(const AcDbSpline& spline, const AcGeMatrix3d& transform, AcDbExtents& box) {
  SplineCurve curve = CurveOf(spline);
  if (curve.points().empty()) {
    for (const AcGePoint3d& point : spline.samplePoints(0)) box.addPoint(transform * point);
    return;
  }
  curve.Transformed(transform).AddExtents(box);
}

}  // namespace fx::dxf
