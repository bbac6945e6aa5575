// LEADER: vertices (10, repeated) in world coordinates, the arrowhead flag
// (71), the dimension style (3) whose arrow size (DIMASZ, 41) times scale
// (DIMSCALE, 40) sizes the arrowhead. XLINE and RAY: a base point (10) and
// a unit direction (11), in world coordinates.
#include "host/db_entities.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"
#include "host/database.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kLeader = "AcDbLeader";
constexpr std::string_view kXline = "AcDbXline";
constexpr std::string_view kRay = "AcDbRay";
// The arrow size of a style that sets none: the editor's default.
constexpr double kDefaultArrowSize = 0.18;
// The closed filled arrowhead is a third as wide as it is long.
constexpr double kArrowWidthRatio = 1.0 / 3.0;

std::vector<AcGePoint3d> Vertices(const AcDbLeader& leader) {
  const TagList& tags = leader.impl()->tags();
  Range range = DataOf(tags, kLeader);
  std::vector<AcGePoint3d> points;
  for (size_t i = range.begin; i < range.end; ++i) {
    double value = fx::dxf::ParseDouble(tags[i].value).value_or(0);
    if (tags[i].code == 10) points.push_back({value, 0, 0});
    else if (!points.empty() && tags[i].code == 20) points.back().y = value;
    else if (!points.empty() && tags[i].code == 30) points.back().z = value;
  }
  return points;
}

double ArrowSize(const AcDbLeader& leader) {
  const TagList& tags = leader.impl()->tags();
  AcDbObjectId style_id = fx::dxf::SymbolIdByName(
      leader.database(), "DIMSTYLE", fx::dxf::ReadName(tags, 3, DataOf(tags, kLeader), "STANDARD"));
  AcDbObject* style = nullptr;
  if (acdbOpenAcDbObject(style, style_id, AcDb::kForRead) != Acad::eOk) return kDefaultArrowSize;
  const TagList& style_tags = style->impl()->tags();
  Range range = DataOf(style_tags, "AcDbDimStyleTableRecord");
  double scale = style_tags.GetDouble(40, range, 1);
  double size = style_tags.GetDouble(41, range, kDefaultArrowSize) * (scale > 0 ? scale : 1);
  style->close();
  return size;
}

// The arrowhead's corners, tip first; false when the leader shows none.
bool ArrowHead(const AcDbLeader& leader, const std::vector<AcGePoint3d>& points, AcGePoint3d (&arrow)[3]) {
  if (points.size() < 2 || !leader.hasArrowHead()) return false;
  AcGeVector3d along = points[1] - points[0];
  if (along.length() == 0) return false;
  double size = ArrowSize(leader);
  const TagList& tags = leader.impl()->tags();
  AcGeVector3d normal = fx::dxf::ReadNormal(tags, DataOf(tags, kLeader));
  AcGeVector3d unit = along.normal();
  AcGeVector3d side = normal.crossProduct(unit).normal() * (size * kArrowWidthRatio / 2);
  AcGePoint3d back = points[0] + unit * size;
  arrow[0] = points[0];
  arrow[1] = back + side;
  arrow[2] = back - side;
  return true;
}

Range XlineData(const AcDbXline& xline) {
  const TagList& tags = xline.impl()->tags();
  return DataOf(tags, xline.impl()->type() == "RAY" ? kRay : kXline);
}

}  // namespace

int AcDbLeader::numVertices() const { return static_cast<int>(Vertices(*this).size()); }

AcGePoint3d AcDbLeader::vertexAt(int index) const {
  std::vector<AcGePoint3d> points = Vertices(*this);
  return index >= 0 && static_cast<size_t>(index) < points.size() ? points[static_cast<size_t>(index)]
                                                                   : AcGePoint3d();
}

bool AcDbLeader::hasArrowHead() const {
  const TagList& tags = impl()->tags();
  return tags.GetInt(71, DataOf(tags, kLeader), 1) != 0;
}

// The path is drawn straight even when the leader is a spline (group 72);
// the arrowhead, when shown, is a filled triangle pointing at the first
// vertex.
bool AcDbLeader::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  std::vector<AcGePoint3d> points = Vertices(*this);
  if (points.size() < 2) return true;
  AcGiWorldGeometry& geometry = world_draw->geometry();
  if (geometry.polyline(static_cast<uint32_t>(points.size()), points.data())) return false;
  AcGePoint3d arrow[3];
  if (!ArrowHead(*this, points, arrow)) return true;
  world_draw->subEntityTraits().setFillType(kAcGiFillAlways);
  bool stop = geometry.polygon(3, arrow);
  world_draw->subEntityTraits().setFillType(kAcGiFillNever);
  return !stop;
}

AcGePoint3d AcDbXline::basePoint() const { return impl()->tags().GetPoint(10, XlineData(*this)); }

AcGeVector3d AcDbXline::unitDir() const {
  return (impl()->tags().GetPoint(11, XlineData(*this), {1, 0, 0}) - AcGePoint3d::kOrigin).normal();
}

bool AcDbXline::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  AcGePoint3d base = basePoint();
  AcGePoint3d through = base + unitDir();
  if (impl()->type() == "RAY") return !world_draw->geometry().ray(base, through);
  return !world_draw->geometry().xline(base, through);
}

namespace fx::dxf {

void AddExtents(const AcDbLeader& leader, const AcGeMatrix3d& transform, AcDbExtents& box) {
  std::vector<AcGePoint3d> points = Vertices(leader);
  for (const AcGePoint3d& point : points) box.addPoint(transform * point);
  AcGePoint3d arrow[3];
  if (ArrowHead(leader, points, arrow))
    for (const AcGePoint3d& corner : arrow) box.addPoint(transform * corner);
}

}  // namespace fx::dxf
