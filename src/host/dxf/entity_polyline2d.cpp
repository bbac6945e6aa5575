// POLYLINE and its VERTEX records. The polyline holds its flags (70: 1
// closed, 2 curve-fit, 4 spline-fit, 8 3D, 16 polygon mesh, 32 mesh closed
// in N, 64 polyface mesh), the elevation (z of 10), the normal (210) and the
// mesh sizes (71, 72); each vertex its location (10), widths (40, 41), bulge
// (42), flags (70: 16 spline frame control point, 64 mesh vertex, 128
// polyface vertex or face) and, for a polyface face record, the 1-based
// vertex numbers of the face (71 to 74, negative for an invisible edge).
// 2D vertices lie in the plane of the normal at the elevation; 3D and mesh
// vertices are in world coordinates.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "host/database.h"
#include "host/db_entities.h"
#include "host/dxf/draw_curves.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/draw_outline.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kPolyline2d = "AcDb2dPolyline";
constexpr std::string_view kPolyline3d = "AcDb3dPolyline";
constexpr std::string_view kPolyfaceMesh = "AcDbPolyFaceMesh";
constexpr std::string_view kPolygonMesh = "AcDbPolygonMesh";
constexpr std::string_view kVertex = "AcDbVertex";

constexpr int kFlagClosed = 1;
constexpr int kFlag3d = 8;
constexpr int kFlagPolygonMesh = 16;
constexpr int kFlagClosedN = 32;
constexpr int kFlagPolyfaceMesh = 64;
constexpr int kVertexFrame = 16;
constexpr int kVertexFace = 128;
constexpr int kVertexMeshPosition = 64;

// The polyline's own data: its subclass marker depends on its kind.
Range PolylineData(const TagList& tags) {
  for (std::string_view marker : {kPolyline2d, kPolyline3d, kPolyfaceMesh, kPolygonMesh}) {
    Range range = tags.Subclass(marker);
    if (range.begin != tags.Body().end) return range;
  }
  return DataOf(tags, kPolyline2d);
}

// A vertex's tags from the AcDbVertex marker on (its point and flags are
// in the subclass after it), or its whole body in files before R13.
Range VertexData(const TagList& tags) {
  Range range = DataOf(tags, kVertex);
  range.end = tags.XDataBegin();
  size_t embedded = tags.Find(101, range);
  if (embedded != TagList::kNotFound) range.end = embedded;
  return range;
}

struct VertexRecord {
  AcGePoint3d location;
  double bulge = 0;
  int flags = 0;
  int face[4] = {0, 0, 0, 0};
};

std::vector<VertexRecord> ReadVertexRecords(const AcDb2dPolyline& polyline) {
  std::vector<VertexRecord> records;
  for (AcDbObjectId id : fx::dxf::SubEntityIds(polyline)) {
    AcDbObjectPointer<AcDbEntity> vertex(id, AcDb::kForRead);
    if (vertex.openStatus() != Acad::eOk) continue;
    const TagList& tags = vertex->impl()->tags();
    Range range = VertexData(tags);
    VertexRecord record;
    record.location = tags.GetPoint(10, range);
    record.bulge = tags.GetDouble(42, range, 0);
    record.flags = static_cast<int>(tags.GetInt(70, range, 0));
    for (int k = 0; k < 4; ++k) record.face[k] = static_cast<int>(tags.GetInt(71 + k, range, 0));
    records.push_back(record);
  }
  return records;
}

// The plane outline of a 2D polyline (frame control points left out).
fx::dxf::BulgedOutline OutlineOf(const AcDb2dPolyline& polyline,
                                 const std::vector<VertexRecord>& records) {
  fx::dxf::BulgedOutline outline;
  for (const VertexRecord& r : records) {
    if (r.flags & kVertexFrame) continue;
    outline.points.push_back(r.location.to2d());
    outline.bulges.push_back(r.bulge);
  }
  outline.closed = polyline.isClosed();
  return outline;
}

AcGeMatrix3d PlaneToWorld(const AcDb2dPolyline& polyline) {
  return AcGeMatrix3d::planeToWorld(polyline.normal()) *
         AcGeMatrix3d::translation({0, 0, polyline.elevation()});
}

// The positions of a 3D polyline (frame control points left out) or of a
// mesh's vertices (face records left out).
std::vector<AcGePoint3d> Positions(const std::vector<VertexRecord>& records, bool mesh) {
  std::vector<AcGePoint3d> points;
  for (const VertexRecord& r : records) {
    if (r.flags & kVertexFrame) continue;
    if (mesh && (r.flags & kVertexFace) && !(r.flags & kVertexMeshPosition)) continue;
    points.push_back(r.location);
  }
  return points;
}

// A polyface mesh as shell faces: per face record its vertex count and the
// 0-based vertex indexes.
std::vector<int32_t> PolyfaceFaces(const std::vector<VertexRecord>& records, size_t vertex_count) {
  std::vector<int32_t> faces;
  for (const VertexRecord& r : records) {
    if (!(r.flags & kVertexFace) || (r.flags & kVertexMeshPosition)) continue;
    std::vector<int32_t> face;
    for (int k = 0; k < 4; ++k) {
      int number = std::abs(r.face[k]);
      if (number >= 1 && static_cast<size_t>(number) <= vertex_count) face.push_back(number - 1);
    }
    if (face.size() < 3) continue;
    faces.push_back(static_cast<int32_t>(face.size()));
    faces.insert(faces.end(), face.begin(), face.end());
  }
  return faces;
}

// A polygon mesh of m x n vertices (row-major) as quadrilateral faces,
// wrapping around where the mesh is closed.
std::vector<int32_t> PolygonMeshFaces(int m, int n, bool closed_m, bool closed_n) {
  std::vector<int32_t> faces;
  int rows = closed_m ? m : m - 1, columns = closed_n ? n : n - 1;
  for (int i = 0; i < rows; ++i) {
    for (int j = 0; j < columns; ++j) {
      int i1 = (i + 1) % m, j1 = (j + 1) % n;
      faces.insert(faces.end(), {4, i * n + j, i * n + j1, i1 * n + j1, i1 * n + j});
    }
  }
  return faces;
}

}  // namespace

AcGePoint3d AcDb2dVertex::position() const {
  const TagList& tags = impl()->tags();
  return tags.GetPoint(10, VertexData(tags));
}

double AcDb2dVertex::bulge() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(42, VertexData(tags), 0);
}

double AcDb2dVertex::startWidth() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(40, VertexData(tags), 0);
}

double AcDb2dVertex::endWidth() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(41, VertexData(tags), 0);
}

int AcDb2dVertex::vertexFlags() const {
  const TagList& tags = impl()->tags();
  return static_cast<int>(tags.GetInt(70, VertexData(tags), 0));
}

AcGePoint3d AcDb3dPolylineVertex::position() const {
  const TagList& tags = impl()->tags();
  return tags.GetPoint(10, VertexData(tags));
}

int AcDb2dPolyline::polylineFlags() const {
  const TagList& tags = impl()->tags();
  return static_cast<int>(tags.GetInt(70, PolylineData(tags), 0));
}

bool AcDb2dPolyline::isClosed() const { return (polylineFlags() & kFlagClosed) != 0; }
bool AcDb2dPolyline::is3d() const { return (polylineFlags() & kFlag3d) != 0; }
bool AcDb2dPolyline::isPolyfaceMesh() const { return (polylineFlags() & kFlagPolyfaceMesh) != 0; }
bool AcDb2dPolyline::isPolygonMesh() const { return (polylineFlags() & kFlagPolygonMesh) != 0; }

double AcDb2dPolyline::elevation() const {
  const TagList& tags = impl()->tags();
  return tags.GetPoint(10, PolylineData(tags)).z;
}

AcGeVector3d AcDb2dPolyline::normal() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadNormal(tags, PolylineData(tags));
}

std::vector<AcDbObjectId> AcDb2dPolyline::vertexIds() const { return fx::dxf::SubEntityIds(*this); }

Acad::ErrorStatus AcDb2dPolyline::getVertices(std::vector<AcGePoint3d>& points,
                                              std::vector<double>& bulges) const {
  points.clear();
  bulges.clear();
  std::vector<VertexRecord> records = ReadVertexRecords(*this);
  if (is3d() || isPolyfaceMesh() || isPolygonMesh()) {
    points = Positions(records, !is3d());
    bulges.assign(points.size(), 0);
    return Acad::eOk;
  }
  fx::dxf::BulgedOutline outline = OutlineOf(*this, records);
  AcGeMatrix3d to_world = PlaneToWorld(*this);
  for (const AcGePoint2d& p : outline.points) points.push_back(to_world * AcGePoint3d(p.x, p.y, 0));
  bulges = outline.bulges;
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::getArea(double& area) const {
  if (is3d() || isPolyfaceMesh() || isPolygonMesh()) return Acad::eNotApplicable;
  fx::dxf::BulgedOutline outline = OutlineOf(*this, ReadVertexRecords(*this));
  if (!outline.closed && !outline.bulges.empty()) outline.bulges.back() = 0;
  area = std::abs(fx::dxf::SignedBulgeArea(outline.points, outline.bulges));
  return Acad::eOk;
}

bool AcDb2dPolyline::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  AcGiWorldGeometry& geometry = world_draw->geometry();
  std::vector<VertexRecord> records = ReadVertexRecords(*this);
  if (isPolyfaceMesh() || isPolygonMesh()) {
    std::vector<AcGePoint3d> points = Positions(records, true);
    std::vector<int32_t> faces;
    if (isPolyfaceMesh()) {
      faces = PolyfaceFaces(records, points.size());
    } else {
      const TagList& tags = impl()->tags();
      int m = static_cast<int>(tags.GetInt(71, PolylineData(tags), 0));
      int n = static_cast<int>(tags.GetInt(72, PolylineData(tags), 0));
      if (m >= 2 && n >= 2 && static_cast<size_t>(m) * static_cast<size_t>(n) <= points.size())
        faces = PolygonMeshFaces(m, n, isClosed(), (polylineFlags() & kFlagClosedN) != 0);
    }
    if (faces.empty()) return true;
    return !geometry.shell(static_cast<uint32_t>(points.size()), points.data(),
                           static_cast<uint32_t>(faces.size()), faces.data());
  }
  if (is3d()) {
    std::vector<AcGePoint3d> points = Positions(records, false);
    if (isClosed() && points.size() > 2) points.push_back(points.front());
    if (points.size() < 2) return true;
    return !geometry.polyline(static_cast<uint32_t>(points.size()), points.data());
  }
  return !fx::dxf::DrawBulgedOutline(geometry, OutlineOf(*this, records), PlaneToWorld(*this));
}

namespace fx::dxf {

void AddExtents(const AcDb2dPolyline& polyline, const AcGeMatrix3d& transform, AcDbExtents& box) {
  std::vector<VertexRecord> records = ReadVertexRecords(polyline);
  if (polyline.isPolyfaceMesh()) {
    // What shows of a polyface mesh: the vertices its faces use (all of
    // them when it has no faces).
    std::vector<AcGePoint3d> points = Positions(records, true);
    std::vector<int32_t> faces = PolyfaceFaces(records, points.size());
    if (faces.empty()) {
      for (const AcGePoint3d& p : points) box.addPoint(transform * p);
      return;
    }
    for (size_t i = 0; i < faces.size(); i += static_cast<size_t>(faces[i]) + 1)
      for (int32_t k = 1; k <= faces[i]; ++k) box.addPoint(transform * points[static_cast<size_t>(faces[i + k])]);
    return;
  }
  if (polyline.is3d() || polyline.isPolygonMesh()) {
    for (const AcGePoint3d& p : Positions(records, !polyline.is3d())) box.addPoint(transform * p);
    return;
  }
  AddBulgedOutlineExtents(box, OutlineOf(polyline, records), transform * PlaneToWorld(polyline));
}

}  // namespace fx::dxf
