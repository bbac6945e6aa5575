// Extents of entities with their geometry mapped by a transform, exact where
// the geometry allows: an arc or ellipse stays an elliptic arc under any
// affine map and a spline stays a spline, so a box computed after mapping is
// the box of the mapped curve, not the map of a box. AcDbEntity's
// getGeomExtents is AddEntityExtents with the identity.
#ifndef FLOORXPORT_HOST_DXF_DRAW_EXTENTS_H_
#define FLOORXPORT_HOST_DXF_DRAW_EXTENTS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include "host/db_entities.h"
#include "host/geometry.h"

namespace fx::dxf {

// Nesting of block inserts beyond which drawing and extents stop descending
// (a second guard after the check for blocks that insert themselves).
inline constexpr int kMaxBlockDepth = 32;

// Adds the extents of `entity` with its geometry mapped by `transform` to
// `box`. Adds nothing for an entity without extents (an empty text, an
// xline or ray, a type the host does not know).
void AddEntityExtents(const AcDbEntity& entity, const AcGeMatrix3d& transform, AcDbExtents& box);

// The same per type; each is defined beside its class.
void AddExtents(const AcDbLine& line, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbCircle& circle, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbArc& arc, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbEllipse& ellipse, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbSpline& spline, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbPolyline& polyline, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDb2dPolyline& polyline, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbText& text, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbMText& mtext, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbHatch& hatch, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbSolid& solid, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbFace& face, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbPoint& point, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbLeader& leader, const AcGeMatrix3d& transform, AcDbExtents& box);
// Inserts (with MINSERT arrays and visible attributes) and dimensions walk
// their blocks without recursion; a block that inserts itself, directly or
// not, is measured once and reported through ReportDrawWarning.
void AddExtents(const AcDbBlockReference& insert, const AcGeMatrix3d& transform, AcDbExtents& box);
void AddExtents(const AcDbDimension& dimension, const AcGeMatrix3d& transform, AcDbExtents& box);

// The transform of a dimension's block: the block is drawn in world
// coordinates, moved by the insertion point of a copied dimension (group 12)
// where there is one.
AcGeMatrix3d DimensionBlockTransform(const AcDbDimension& dimension);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAW_EXTENTS_H_
