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

// The vertices as the tags hold them, and where the edits that build a
// polyline write: kept on the open object, so reading every vertex and
// appending one at a time cost linear time, not quadratic.
struct PolylineVertices : AcDbImpDecoded {
  std::vector<Vertex> vertices;
  size_t count_at = TagList::kNotFound;  // the vertex count (90), if the subclass data has one
  size_t append_at = 0;  // where a vertex after the last goes
};

std::unique_ptr<PolylineVertices> DecodeVertices(const TagList& tags) {
  auto decoded = std::make_unique<PolylineVertices>();
  const Range range = DataOf(tags, kSubclass);
  decoded->vertices = ReadVertices(tags, range);
  decoded->count_at = tags.Find(90, range);
  if (!decoded->vertices.empty()) {
    decoded->append_at = decoded->vertices.back().end;
  } else {
    // The first vertex goes before the normal, or at the end of the data.
    const size_t normal = tags.Find(210, range);
    decoded->append_at = normal != TagList::kNotFound ? normal : range.end;
  }
  return decoded;
}

const PolylineVertices& DecodedVertices(const AcDbPolyline& polyline) {
  const AcDbImpObject& imp = *polyline.impl();
  if (auto* kept = dynamic_cast<const PolylineVertices*>(imp.decoded())) return *kept;
  std::unique_ptr<PolylineVertices> decoded = DecodeVertices(imp.tags());
  const PolylineVertices& result = *decoded;
  imp.keep_decoded(std::move(decoded));
  return result;
}

// Valid until the next edit.
const std::vector<Vertex>& VerticesOf(const AcDbPolyline& polyline) { return DecodedVertices(polyline).vertices; }

// The decoded vertices for an edit: taken from the object, as its first
// edit of the tags forgets them.
std::unique_ptr<PolylineVertices> TakeVertices(const AcDbPolyline& polyline) {
  const AcDbImpObject& imp = *polyline.impl();
  std::unique_ptr<AcDbImpDecoded> kept = imp.take_decoded();
  if (auto* vertices = dynamic_cast<PolylineVertices*>(kept.get())) {
    kept.release();
    return std::unique_ptr<PolylineVertices>(vertices);
  }
  return DecodeVertices(imp.tags());
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
  const std::vector<Vertex>& vertices = VerticesOf(*this);
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
  const std::vector<Vertex>& vertices = VerticesOf(*this);
  if (index >= vertices.size()) return Acad::eInvalidIndex;
  bulge = vertices[index].bulge;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned index, double& start_width,
                                            double& end_width) const {
  const std::vector<Vertex>& vertices = VerticesOf(*this);
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
  std::unique_ptr<PolylineVertices> decoded = TakeVertices(*this);
  std::vector<Vertex>& vertices = decoded->vertices;
  if (index > vertices.size()) {
    impl()->keep_decoded(std::move(decoded));
    return Acad::eInvalidIndex;
  }
  // Before the vertex now at `index`, or after the last one.
  const size_t at = index < vertices.size() ? vertices[index].begin : decoded->append_at;
  TagList added;
  fx::dxf::AppendDouble(added, 10, point.x);
  fx::dxf::AppendDouble(added, 20, point.y);
  if (start_width >= 0 || end_width >= 0) {
    fx::dxf::AppendDouble(added, 40, std::max(start_width, 0.0));
    fx::dxf::AppendDouble(added, 41, std::max(end_width, 0.0));
  }
  if (bulge != 0) fx::dxf::AppendDouble(added, 42, bulge);
  TagList& tags = impl()->mutable_tags();
  for (size_t i = 0; i < added.size(); ++i) tags.Insert(at + i, added[i].code, added[i].value);

  // The decoded vertices follow the tags: the new one as read back from its
  // tags, the ones after it moved down.
  const size_t moved = added.size();
  Vertex made = ReadVertices(added, {0, moved}).front();
  made.begin = at;
  made.end = at + moved;
  for (size_t i = index; i < vertices.size(); ++i) {
    vertices[i].begin += moved;
    vertices[i].end += moved;
  }
  vertices.insert(vertices.begin() + index, made);
  decoded->append_at += moved;
  if (decoded->count_at == TagList::kNotFound) {
    SetCount(tags, DataOf(tags, kSubclass), vertices.size());  // adds the count: the tags move again
    return Acad::eOk;
  }
  if (decoded->count_at >= at) decoded->count_at += moved;
  tags.SetValue(decoded->count_at, std::to_string(vertices.size()));
  impl()->keep_decoded(std::move(decoded));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned index) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  const std::vector<Vertex>& vertices = VerticesOf(*this);
  if (index >= vertices.size()) return Acad::eInvalidIndex;
  const Vertex v = vertices[index];  // copied: the edit forgets the decoded vertices
  const size_t count = vertices.size() - 1;
  TagList& tags = impl()->mutable_tags();
  tags.Erase(v.begin, v.end);
  SetCount(tags, DataOf(tags, kSubclass), count);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned index, const AcGePoint2d& point) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  const std::vector<Vertex>& vertices = VerticesOf(*this);
  if (index >= vertices.size()) return Acad::eInvalidIndex;
  const Vertex v = vertices[index];  // copied: the edit forgets the decoded vertices
  impl()->mutable_tags().SetPoint(10, {point.x, point.y, 0}, {v.begin, v.end}, /*with_z=*/false);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned index, double bulge) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  const std::vector<Vertex>& vertices = VerticesOf(*this);
  if (index >= vertices.size()) return Acad::eInvalidIndex;
  const Vertex v = vertices[index];  // copied: the edit forgets the decoded vertices
  TagList& tags = impl()->mutable_tags();
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
