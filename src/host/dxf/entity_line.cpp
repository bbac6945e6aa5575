// LINE: two points in world coordinates (groups 10 and 11).
#include "host/db_entities.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_object.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSubclass = "AcDbLine";

std::unique_ptr<AcDbImpObject> NewLine(const AcGePoint3d& start, const AcGePoint3d& end) {
  TagList tags = fx::dxf::NewEntityTags("LINE", kSubclass);
  fx::dxf::AppendPoint(tags, 10, start);
  fx::dxf::AppendPoint(tags, 11, end);
  return std::make_unique<AcDbImpObject>(std::move(tags));
}

}  // namespace

AcDbLine::AcDbLine() : AcDbCurve(NewLine({}, {})) {}
AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : AcDbCurve(NewLine(start, end)) {}

AcGePoint3d AcDbLine::startPoint() const {
  const TagList& tags = impl()->tags();
  return tags.GetPoint(10, DataOf(tags, kSubclass));
}

AcGePoint3d AcDbLine::endPoint() const {
  const TagList& tags = impl()->tags();
  return tags.GetPoint(11, DataOf(tags, kSubclass));
}

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  tags.SetPoint(10, point, DataOf(tags, kSubclass));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  tags.SetPoint(11, point, DataOf(tags, kSubclass));
  return Acad::eOk;
}

AcGeVector3d AcDbLine::normal() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadNormal(tags, DataOf(tags, kSubclass));
}

double AcDbLine::thickness() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(39, DataOf(tags, kSubclass));
}

bool AcDbLine::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  const AcGePoint3d points[2] = {startPoint(), endPoint()};
  return !world_draw->geometry().polyline(2, points);
}

namespace fx::dxf {

void AddExtents(const AcDbLine& line, const AcGeMatrix3d& transform, AcDbExtents& box) {
  box.addPoint(transform * line.startPoint());
  box.addPoint(transform * line.endPoint());
}

}  // namespace fx::dxf
