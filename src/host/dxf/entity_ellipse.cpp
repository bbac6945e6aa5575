// ELLIPSE: centre (10) and the end of the major axis relative to it (11) in
// world coordinates, the normal (210), the minor/major ratio (40) and the
// start and end parameters (41, 42), eccentric-anomaly angles in radians.
#include <cmath>
#include <numbers>

#include "host/db_entities.h"
#include "host/dxf/draw_curves.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_object.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSubclass = "AcDbEllipse";

}  // namespace

AcGePoint3d AcDbEllipse::center() const {
  const TagList& tags = impl()->tags();
  return tags.GetPoint(10, DataOf(tags, kSubclass));
}

AcGeVector3d AcDbEllipse::majorAxis() const {
  const TagList& tags = impl()->tags();
  return tags.GetPoint(11, DataOf(tags, kSubclass), {1, 0, 0}) - AcGePoint3d::kOrigin;
}

AcGeVector3d AcDbEllipse::minorAxis() const {
  return normal().crossProduct(majorAxis()) * radiusRatio();
}

double AcDbEllipse::radiusRatio() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(40, DataOf(tags, kSubclass), 1);
}

double AcDbEllipse::startParam() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(41, DataOf(tags, kSubclass), 0);
}

double AcDbEllipse::endParam() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(42, DataOf(tags, kSubclass), 2 * std::numbers::pi);
}

AcGeVector3d AcDbEllipse::normal() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadNormal(tags, DataOf(tags, kSubclass));
}

AcGePoint3d AcDbEllipse::pointAtParam(double param) const {
  return center() + majorAxis() * std::cos(param) + minorAxis() * std::sin(param);
}

bool AcDbEllipse::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  double start = startParam();
  std::vector<AcGePoint3d> points = fx::dxf::TessellateEllipticArc(
      center(), majorAxis(), minorAxis(), start, fx::dxf::CcwSweep(start, endParam()),
      fx::dxf::ModelDeviation(*world_draw));
  AcGeVector3d n = normal();
  return !world_draw->geometry().polyline(static_cast<uint32_t>(points.size()), points.data(), &n);
}

namespace fx::dxf {

void AddExtents(const AcDbEllipse& ellipse, const AcGeMatrix3d& transform, AcDbExtents& box) {
  double start = ellipse.startParam();
  AddEllipticArcExtents(box, transform * ellipse.center(), transform * ellipse.majorAxis(),
                        transform * ellipse.minorAxis(), start, CcwSweep(start, ellipse.endParam()));
}

}  // namespace fx::dxf
