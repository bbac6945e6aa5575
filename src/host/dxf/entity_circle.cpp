// CIRCLE and ARC: centre (group 10) in the object coordinates of the normal
// (210), radius 40; an arc adds start and end angles (50, 51, degrees)
// measured counter-clockwise about the normal.
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

constexpr std::string_view kCircle = "AcDbCircle";
constexpr std::string_view kArc = "AcDbArc";
constexpr double kRadiansToDegrees = 180 / std::numbers::pi;

TagList NewCircleTags(std::string_view type, const AcGePoint3d& center, const AcGeVector3d& normal,
                      double radius) {
  TagList tags = fx::dxf::NewEntityTags(type, kCircle);
  fx::dxf::AppendPoint(tags, 10, fx::dxf::WorldToOcs(normal, center));
  fx::dxf::AppendDouble(tags, 40, radius);
  AcGeVector3d unit = normal.normal();
  if (unit.length() > 0 && !unit.isEqualTo(AcGeVector3d::kZAxis))
    fx::dxf::AppendPoint(tags, 210, AcGePoint3d::kOrigin + unit);
  return tags;
}

std::unique_ptr<AcDbImpObject> NewArc(const AcGePoint3d& center, double radius, double start,
                                      double end) {
  TagList tags = NewCircleTags("ARC", center, AcGeVector3d::kZAxis, radius);
  tags.Append(100, kArc);
  fx::dxf::AppendDouble(tags, 50, start * kRadiansToDegrees);
  fx::dxf::AppendDouble(tags, 51, end * kRadiansToDegrees);
  return std::make_unique<AcDbImpObject>(std::move(tags));
}

// The plane axes of a circle of `radius` about `normal`, mapped by
// `transform`: the circle is center + u cos t + v sin t.
void MappedAxes(const AcGeVector3d& normal, double radius, const AcGeMatrix3d& transform,
                AcGeVector3d& u, AcGeVector3d& v) {
  AcGeMatrix3d to_world = transform * AcGeMatrix3d::planeToWorld(normal);
  u = to_world * AcGeVector3d(radius, 0, 0);
  v = to_world * AcGeVector3d(0, radius, 0);
}

}  // namespace

AcDbCircle::AcDbCircle()
    : AcDbCurve(std::make_unique<AcDbImpObject>(NewCircleTags("CIRCLE", {}, AcGeVector3d::kZAxis, 0))) {}

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : AcDbCurve(std::make_unique<AcDbImpObject>(NewCircleTags("CIRCLE", center, normal, radius))) {}

AcGePoint3d AcDbCircle::center() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::OcsToWorld(normal(), tags.GetPoint(10, DataOf(tags, kCircle)));
}

double AcDbCircle::radius() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(40, DataOf(tags, kCircle));
}

AcGeVector3d AcDbCircle::normal() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadNormal(tags, DataOf(tags, kCircle));
}

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& center) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcGePoint3d ocs = fx::dxf::WorldToOcs(normal(), center);
  TagList& tags = impl()->mutable_tags();
  tags.SetPoint(10, ocs, DataOf(tags, kCircle));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  if (!(radius > 0)) return Acad::eInvalidInput;
  TagList& tags = impl()->mutable_tags();
  tags.SetDouble(40, radius, DataOf(tags, kCircle));
  return Acad::eOk;
}

bool AcDbCircle::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  return !world_draw->geometry().circle(center(), radius(), normal());
}

AcDbArc::AcDbArc() : AcDbCurve(NewArc({}, 0, 0, 2 * std::numbers::pi)) {}

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double start_angle, double end_angle)
    : AcDbCurve(NewArc(center, radius, start_angle, end_angle)) {}

AcGePoint3d AcDbArc::center() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::OcsToWorld(normal(), tags.GetPoint(10, DataOf(tags, kCircle)));
}

double AcDbArc::radius() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(40, DataOf(tags, kCircle));
}

double AcDbArc::startAngle() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadDegrees(tags, 50, DataOf(tags, kArc));
}

double AcDbArc::endAngle() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadDegrees(tags, 51, DataOf(tags, kArc));
}

AcGeVector3d AcDbArc::normal() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadNormal(tags, DataOf(tags, kCircle));
}

bool AcDbArc::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  AcGeVector3d n = normal();
  double start = startAngle();
  AcGeVector3d start_vector =
      AcGeMatrix3d::planeToWorld(n) * AcGeVector3d(std::cos(start), std::sin(start), 0);
  return !world_draw->geometry().circularArc(center(), radius(), n, start_vector,
                                             fx::dxf::CcwSweep(start, endAngle()));
}

namespace fx::dxf {

void AddExtents(const AcDbCircle& circle, const AcGeMatrix3d& transform, AcDbExtents& box) {
  AcGeVector3d u, v;
  MappedAxes(circle.normal(), circle.radius(), transform, u, v);
  AddEllipticArcExtents(box, transform * circle.center(), u, v, 0, 2 * std::numbers::pi);
}

void AddExtents(const AcDbArc& arc, const AcGeMatrix3d& transform, AcDbExtents& box) {
  AcGeVector3d u, v;
  MappedAxes(arc.normal(), arc.radius(), transform, u, v);
  double start = arc.startAngle();
  AddEllipticArcExtents(box, transform * arc.center(), u, v, start, CcwSweep(start, arc.endAngle()));
}

}  // namespace fx::dxf
