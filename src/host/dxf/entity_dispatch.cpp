// The entity base class's extents and drawing, and the choice of the
// extents routine by an entity's class. Classes derived from others come
// before their bases (attributes before texts).
#include <typeinfo>

#include "host/db_entities.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/entity_support.h"

namespace fx::dxf {
namespace {

template <class T>
bool TryAdd(const AcDbEntity& entity, const AcGeMatrix3d& transform, AcDbExtents& box) {
  const T* typed = dynamic_cast<const T*>(&entity);
  if (typed == nullptr) return false;
  AddExtents(*typed, transform, box);
  return true;
}

// The same for an entity of exactly class T, known by the address of its type
// information: no walk up the class tree as a failed dynamic_cast makes. (Type
// information of one class at two addresses only sends the entity on to the chain.)
template <class T>
bool TryExact(const AcDbEntity& entity, const std::type_info& type, const AcGeMatrix3d& transform,
              AcDbExtents& box) {
  if (&type != &typeid(T)) return false;
  AddExtents(static_cast<const T&>(entity), transform, box);
  return true;
}

}  // namespace

void AddEntityExtents(const AcDbEntity& entity, const AcGeMatrix3d& transform, AcDbExtents& box) {
  // The most common classes first, by their exact type; none of them derives from
  // a class before it in the chain, so the chain would choose the same routine.
  const std::type_info& type = typeid(entity);
  if (TryExact<AcDbText>(entity, type, transform, box) || TryExact<AcDbPolyline>(entity, type, transform, box) ||
      TryExact<AcDbLine>(entity, type, transform, box) || TryExact<AcDbBlockReference>(entity, type, transform, box)) {
    return;
  }
  TryAdd<AcDbLine>(entity, transform, box) || TryAdd<AcDbPolyline>(entity, transform, box) ||
      TryAdd<AcDbArc>(entity, transform, box) || TryAdd<AcDbCircle>(entity, transform, box) ||
      TryAdd<AcDbText>(entity, transform, box) || TryAdd<AcDbMText>(entity, transform, box) ||
      TryAdd<AcDbBlockReference>(entity, transform, box) || TryAdd<AcDbHatch>(entity, transform, box) ||
      TryAdd<AcDb2dPolyline>(entity, transform, box) || TryAdd<AcDbEllipse>(entity, transform, box) ||
      TryAdd<AcDbSpline>(entity, transform, box) || TryAdd<AcDbSolid>(entity, transform, box) ||
      TryAdd<AcDbFace>(entity, transform, box) || TryAdd<AcDbPoint>(entity, transform, box) ||
      TryAdd<AcDbDimension>(entity, transform, box) || TryAdd<AcDbLeader>(entity, transform, box);
}

}  // namespace fx::dxf

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
  AcDbExtents box;
  fx::dxf::AddEntityExtents(*this, AcGeMatrix3d::kIdentity, box);
  if (box.isEmpty()) return Acad::eInvalidExtents;
  extents = box;
  return Acad::eOk;
}

// An entity of a type the host does not draw sets its traits and draws
// nothing.
bool AcDbEntity::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  return true;
}
