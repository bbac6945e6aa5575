// The geometry of a room contour as the room analysis reads it: the
// vertices of a polyline in world x and y, whether it is closed and has
// arcs, and its geometric extents. Read once per analysis, so the inside
// and overlap tests run on plain values instead of reopening the entity.
#ifndef FLOORXPORT_ROOMS_CONTOUR_GEOMETRY_H_
#define FLOORXPORT_ROOMS_CONTOUR_GEOMETRY_H_

#include <vector>

#include "host/geometry.h"

class AcDbEntity;

namespace fx::rooms {

struct ContourGeometry {
  std::vector<AcGePoint2d> vertices;  // world x and y, in the polyline's order
  bool closed = false;
  bool has_bulges = false;  // at least one segment is an arc
  // The entity's geometric extents; an empty box when it has none (a
  // polyline without vertices), which no point and no box passes.
  AcDbExtents extents;
};

// True for the entities that can be room contours and floor outlines: a
// LWPOLYLINE, or a 2D POLYLINE (not a 3D polyline, not a mesh).
bool IsContourEntity(const AcDbEntity& entity);

// Reads the geometry of a contour entity. False, with *geometry unchanged,
// for an entity that IsContourEntity refuses or whose vertices cannot be read.
bool ReadContourGeometry(const AcDbEntity& entity, ContourGeometry* geometry);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_CONTOUR_GEOMETRY_H_
