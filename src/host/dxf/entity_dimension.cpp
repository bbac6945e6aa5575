// DIMENSION: the anonymous block that draws it (2), definition point (10),
// text middle point (11) in the object coordinates of the normal (210), the
// insertion point of a copied dimension (12, same coordinates), the text
// override (1) and the stored measurement (42). It draws and measures as
// its block.
#include "host/db_entities.h"
#include "host/dxf/draw_block.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSubclass = "AcDbDimension";

Range DimensionData(const AcDbDimension& dimension) {
  return DataOf(dimension.impl()->tags(), kSubclass);
}

AcGeVector3d NormalOf(const AcDbDimension& dimension) {
  return fx::dxf::ReadNormal(dimension.impl()->tags(), DimensionData(dimension));
}

}  // namespace

AcDbObjectId AcDbDimension::dimBlockId() const {
  return fx::dxf::BlockRecordIdByName(database(),
                                      fx::dxf::ReadName(impl()->tags(), 2, DimensionData(*this)));
}

AcGePoint3d AcDbDimension::textPosition() const {
  return fx::dxf::OcsToWorld(NormalOf(*this), impl()->tags().GetPoint(11, DimensionData(*this)));
}

std::string AcDbDimension::dimensionText() const {
  return fx::dxf::DecodeText(*this, impl()->tags().GetString(1, DimensionData(*this)));
}

double AcDbDimension::measurement() const {
  return impl()->tags().GetDouble(42, DimensionData(*this), 0);
}

bool AcDbDimension::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  AcGiWorldGeometry& geometry = world_draw->geometry();
  geometry.pushModelTransform(fx::dxf::DimensionBlockTransform(*this));
  bool stop = fx::dxf::DrawBlockContents(dimBlockId(), *world_draw);
  geometry.popModelTransform();
  return !stop;
}

namespace fx::dxf {

AcGeMatrix3d DimensionBlockTransform(const AcDbDimension& dimension) {
  const TagList& tags = dimension.impl()->tags();
  Range range = DimensionData(dimension);
  if (tags.Find(12, range) == TagList::kNotFound) return AcGeMatrix3d::kIdentity;
  AcGePoint3d insertion = OcsToWorld(NormalOf(dimension), tags.GetPoint(12, range));
  return AcGeMatrix3d::translation(insertion - AcGePoint3d::kOrigin);
}

}  // namespace fx::dxf
