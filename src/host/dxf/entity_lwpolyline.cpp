// LWPOLYLINE: vertex count (90), flags (70: 1 closed), constant width (43),
// elevation (38), normal (210), then per vertex 10/20 in the plane of the
// normal followed by its optional start width (40), end width (41), bulge
// (42) and vertex id (91). Widths are not drawn and not measured.
#include "host/db_entities.h"
#include "host/dxf/draw_curves.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/draw_outline.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_object.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSubclass = "AcDbPolyline";

struct Vertex {
  AcGePoint2d point;
  double start_width = -1, end_width = -1;  // -1: not given
  double bulge = 0;
  size_t begin = 0, end = 0;  // its tags: from the 10 to before the next vertex
};

double Value(const TagList& tags, size_t index) {
  return fx::dxf::ParseDouble(tags[index].value).value_or(0);
}

bool IsVertexCode(int code) { return code == 20 || code == 40 || code == 41 || code == 42 || code == 91; }

std::vector<Vertex> ReadVertices(const TagList& tags, Range range) {
  std::vector<Vertex> vertices;
  for (size_t i = range.begin; i < range.end; ++i) {
    int code = tags[i].code;
    if (code == 10) {
      vertices.push_back({});
      vertices.back().point.x = Value(tags, i);
      vertices.back().begin = i;
      vertices.back().end = i + 1;
      continue;
    }
    if (vertices.empty() || vertices.back().end != i || !IsVertexCode(code)) continue;
    Vertex& v = vertices.back();
    v.end = i + 1;
    if (code == 20) v.point.y = Value(tags, i);
    else if (code == 40) v.start_width = Value(tags, i);
    else if (code == 41) v.end_width = Value(tags, i);
    else if (code == 42) v.bulge = Value(tags, i);
  }
  return vertices;
}

std::vector<Vertex> VerticesOf(const AcDbPolyline& polyline) {
  const TagList& tags = polyline.impl()->tags();
  return ReadVertices(tags, DataOf(tags, kSubclass));
}

fx::dxf::BulgedOutline OutlineOf(const AcDbPolyline& polyline) {
  fx::dxf::BulgedOutline outline;
  for (const Vertex& v : VerticesOf(polyline)) {
    outline.points.push_back(v.point);
    outline.bulges.push_back(v.bulge);
  }
  outline.closed = polyline.isClosed();
  return outline;
}

AcGeMatrix3d PlaneToWorld(const AcDbPolyline& polyline) {
  return AcGeMatrix3d::planeToWorld(polyline.normal()) *
         AcGeMatrix3d::translation({0, 0, polyline.elevation()});
}

void SetCount(TagList& tags, Range range, size_t count) {
  tags.SetInt(90, static_cast<int64_t>(count), range);
}

}  // namespace

AcDbPolyline::AcDbPolyline() : AcDbPolyline(0) {}

AcDbPolyline::AcDbPolyline(unsigned num_verts)
    : AcDbCurve([] {
        // The count is only a capacity hint: a new polyline has no vertices.
        TagList tags = fx::dxf::NewEntityTags("LWPOLYLINE", kSubclass);
        fx::dxf::AppendInt(tags, 90, 0);
        fx::dxf::AppendInt(tags, 70, 0);
        return std::make_unique<AcDbImpObject>(std::move(tags));
      }()) {
  (void)num_verts;
}

unsigned AcDbPolyline::numVerts() const { return static_cast<unsigned>(VerticesOf(*this).size()); }

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint2d& point) const {
  std::vector<Vertex> vertices = VerticesOf(*this);
  if (index >= vertices.size()) return Acad::eInvalidIndex;
  point = vertices[index].point;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint3d& point) const {
  AcGePoint2d plane;
  if (Acad::ErrorStatus es = getPointAt(index, plane); es != Acad::eOk) return es;
  point = PlaneToWorld(*this) * AcGePoint3d(plane.x, plane.y, 0);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned index, double& bulge) const {
  std::vector<Vertex> vertices = VerticesOf(*this);
  if (index >= vertices.size()) return Acad::eInvalidIndex;
  bulge = vertices[index].bulge;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned index, double& start_width,
                                            double& end_width) const {
  std::vector<Vertex> vertices = VerticesOf(*this);
  if (index >= vertices.size()) return Acad::eInvalidIndex;
  double constant = constantWidth();
  start_width = vertices[index].start_width >= 0 ? vertices[index].start_width : constant;
  end_width = vertices[index].end_width >= 0 ? vertices[index].end_width : constant;
  return Acad::eOk;
}

bool AcDbPolyline::isClosed() const {
  const TagList& tags = impl()->tags();
  return (tags.GetInt(70, DataOf(tags, kSubclass), 0) & 1) != 0;
}

bool AcDbPolyline::hasBulges() const {
  for (const Vertex& v : VerticesOf(*this))
    if (v.bulge != 0) return true;
  return false;
}

bool AcDbPolyline::isOnlyLines() const { return !hasBulges(); }

double AcDbPolyline::elevation() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(38, DataOf(tags, kSubclass), 0);
}

double AcDbPolyline::constantWidth() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(43, DataOf(tags, kSubclass), 0);
}

AcGeVector3d AcDbPolyline::normal() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadNormal(tags, DataOf(tags, kSubclass));
}

Acad::ErrorStatus AcDbPolyline::getArea(double& area) const {
  fx::dxf::BulgedOutline outline = OutlineOf(*this);
  // Measured as if closed: an open polyline's closing segment is straight.
  if (!outline.closed && !outline.bulges.empty()) outline.bulges.back() = 0;
  area = std::abs(fx::dxf::SignedBulgeArea(outline.points, outline.bulges));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned index, const AcGePoint2d& point, double bulge,
                                            double start_width, double end_width) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  Range range = DataOf(tags, kSubclass);
  std::vector<Vertex> vertices = ReadVertices(tags, range);
  if (index > vertices.size()) return Acad::eInvalidIndex;
  // Before the vertex now at `index`, or after the last one (or, for the
  // first vertex, at the end of the subclass data, before the normal).
  size_t at = index < vertices.size() ? vertices[index].begin
              : !vertices.empty()      ? vertices.back().end
                                       : range.end;
  if (vertices.empty()) {
    size_t normal = tags.Find(210, range);
    if (normal != TagList::kNotFound) at = normal;
  }
  TagList added;
  fx::dxf::AppendDouble(added, 10, point.x);
  fx::dxf::AppendDouble(added, 20, point.y);
  if (start_width >= 0 || end_width >= 0) {
    fx::dxf::AppendDouble(added, 40, std::max(start_width, 0.0));
    fx::dxf::AppendDouble(added, 41, std::max(end_width, 0.0));
  }
  if (bulge != 0) fx::dxf::AppendDouble(added, 42, bulge);
  for (size_t i = 0; i < added.size(); ++i) tags.Insert(at + i, added[i].code, added[i].value);
  SetCount(tags, DataOf(tags, kSubclass), vertices.size() + 1);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned index) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  std::vector<Vertex> vertices = ReadVertices(tags, DataOf(tags, kSubclass));
  if (index >= vertices.size()) return Acad::eInvalidIndex;
  tags.Erase(vertices[index].begin, vertices[index].end);
  SetCount(tags, DataOf(tags, kSubclass), vertices.size() - 1);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned index, const AcGePoint2d& point) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  std::vector<Vertex> vertices = ReadVertices(tags, DataOf(tags, kSubclass));
  if (index >= vertices.size()) return Acad::eInvalidIndex;
  const Vertex& v = vertices[index];
  tags.SetPoint(10, {point.x, point.y, 0}, {v.begin, v.end}, /*with_z=*/false);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned index, double bulge) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  std::vector<Vertex> vertices = ReadVertices(tags, DataOf(tags, kSubclass));
  if (index >= vertices.size()) return Acad::eInvalidIndex;
  const Vertex& v = vertices[index];
  size_t at = tags.Find(42, {v.begin, v.end});
  if (at != TagList::kNotFound) {
    tags.SetDouble(42, bulge, {v.begin, v.end});
  } else if (bulge != 0) {
    // The bulge follows the coordinates and widths, before the vertex id.
    size_t id = tags.Find(91, {v.begin, v.end});
    tags.Insert(id != TagList::kNotFound ? id : v.end, 42, fx::dxf::FormatDouble(bulge));
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setClosed(bool closed) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  Range range = DataOf(tags, kSubclass);
  int64_t flags = tags.GetInt(70, range, 0);
  tags.SetInt(70, closed ? (flags | 1) : (flags & ~int64_t{1}), range);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setElevation(double elevation) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  Range range = DataOf(tags, kSubclass);
  if (tags.Find(38, range) == TagList::kNotFound) {
    // The elevation goes before the vertices.
    size_t first = tags.Find(10, range);
    tags.Insert(first != TagList::kNotFound ? first : range.end, 38, fx::dxf::FormatDouble(elevation));
  } else {
    tags.SetDouble(38, elevation, range);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getStartPoint(AcGePoint3d& point) const {
  if (numVerts() == 0) return Acad::eInvalidIndex;
  return getPointAt(0u, point);
}

Acad::ErrorStatus AcDbPolyline::getEndPoint(AcGePoint3d& point) const {
  unsigned n = numVerts();
  if (n == 0) return Acad::eInvalidIndex;
  // A closed polyline ends where it starts.
  return getPointAt(isClosed() ? 0u : n - 1, point);
}

bool AcDbPolyline::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  return !fx::dxf::DrawBulgedOutline(world_draw->geometry(), OutlineOf(*this), PlaneToWorld(*this));
}

namespace fx::dxf {

void AddExtents(const AcDbPolyline& polyline, const AcGeMatrix3d& transform, AcDbExtents& box) {
  AddBulgedOutlineExtents(box, OutlineOf(polyline), transform * PlaneToWorld(polyline));
}

}  // namespace fx::dxf
