// SOLID and TRACE: four corners (10 to 13) in the object coordinates of the
// normal (210), the fourth missing for a triangle; the outline runs 1, 2,
// 4, 3. 3DFACE: four corners in world coordinates and the invisible-edge
// flags (70: bit i for edge i, from corner i to the next). POINT: a
// location (10) in world coordinates.
#include "host/db_entities.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_object.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSolid = "AcDbTrace";
constexpr std::string_view kFace = "AcDbFace";
constexpr std::string_view kPoint = "AcDbPoint";

// A corner of a SOLID/TRACE or 3DFACE: the fourth defaults to the third.
AcGePoint3d Corner(const TagList& tags, Range range, int index) {
  int code = 10 + index;
  if (index == 3 && tags.Find(code, range) == TagList::kNotFound) code = 12;
  return tags.GetPoint(code, range);
}

// Outline order of a SOLID's corners (the file gives them as two pairs
// across the quadrilateral), without the fourth when it repeats the third.
std::vector<AcGePoint3d> SolidOutline(const AcDbSolid& solid) {
  AcGePoint3d corners[4];
  for (int i = 0; i < 4; ++i) solid.getPointAt(i, corners[i]);
  std::vector<AcGePoint3d> outline{corners[0], corners[1], corners[3], corners[2]};
  if (corners[3] == corners[2]) outline.erase(outline.begin() + 2);
  return outline;
}

}  // namespace

Acad::ErrorStatus AcDbSolid::getPointAt(int index, AcGePoint3d& point) const {
  if (index < 0 || index > 3) return Acad::eInvalidIndex;
  const TagList& tags = impl()->tags();
  point = fx::dxf::OcsToWorld(normal(), Corner(tags, DataOf(tags, kSolid), index));
  return Acad::eOk;
}

AcGeVector3d AcDbSolid::normal() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::ReadNormal(tags, DataOf(tags, kSolid));
}

bool AcDbSolid::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  world_draw->subEntityTraits().setFillType(kAcGiFillAlways);
  std::vector<AcGePoint3d> outline = SolidOutline(*this);
  bool stop = world_draw->geometry().polygon(static_cast<uint32_t>(outline.size()), outline.data());
  world_draw->subEntityTraits().setFillType(kAcGiFillNever);
  return !stop;
}

Acad::ErrorStatus AcDbFace::getVertexAt(int index, AcGePoint3d& point) const {
  if (index < 0 || index > 3) return Acad::eInvalidIndex;
  const TagList& tags = impl()->tags();
  point = Corner(tags, DataOf(tags, kFace), index);
  return Acad::eOk;
}

bool AcDbFace::isEdgeVisibleAt(int index) const {
  const TagList& tags = impl()->tags();
  return index >= 0 && index <= 3 && (tags.GetInt(70, DataOf(tags, kFace), 0) & (1 << index)) == 0;
}

// Visible edges in runs, so that a face with all edges visible is one closed
// polyline.
bool AcDbFace::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  AcGePoint3d corners[4];
  for (int i = 0; i < 4; ++i) getVertexAt(i, corners[i]);
  int first = 0;
  while (first < 4 && isEdgeVisibleAt(first)) ++first;
  // Start after an invisible edge, or anywhere when all are visible.
  int start = first == 4 ? 0 : (first + 1) % 4;
  std::vector<AcGePoint3d> run;
  for (int k = 0; k < 4; ++k) {
    int edge = (start + k) % 4;
    if (!isEdgeVisibleAt(edge)) {
      if (run.size() >= 2 && world_draw->geometry().polyline(static_cast<uint32_t>(run.size()), run.data()))
        return false;
      run.clear();
      continue;
    }
    if (run.empty()) run.push_back(corners[edge]);
    run.push_back(corners[(edge + 1) % 4]);
  }
  if (run.size() >= 2 && world_draw->geometry().polyline(static_cast<uint32_t>(run.size()), run.data()))
    return false;
  return true;
}

AcGePoint3d AcDbPoint::position() const {
  const TagList& tags = impl()->tags();
  return tags.GetPoint(10, DataOf(tags, kPoint));
}

// A point draws as a polyline of no length: sinks show it as a dot (with
// round caps) or not at all, as the editor does for the default point style.
bool AcDbPoint::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  const AcGePoint3d points[2] = {position(), position()};
  return !world_draw->geometry().polyline(2, points);
}

namespace fx::dxf {

void AddExtents(const AcDbSolid& solid, const AcGeMatrix3d& transform, AcDbExtents& box) {
  for (const AcGePoint3d& corner : SolidOutline(solid)) box.addPoint(transform * corner);
}

void AddExtents(const AcDbFace& face, const AcGeMatrix3d& transform, AcDbExtents& box) {
  for (int i = 0; i < 4; ++i) {
    AcGePoint3d corner;
    face.getVertexAt(i, corner);
    box.addPoint(transform * corner);
  }
}

void AddExtents(const AcDbPoint& point, const AcGeMatrix3d& transform, AcDbExtents& box) {
  box.addPoint(transform * point.position());
}

}  // namespace fx::dxf
