#include "svg/render_model_space.h"

#include "host/database.h"
#include "svg/pv_svg_world_draw.h"

namespace fx::svg {

AcGeMatrix3d WorldToSvg(const Frame& frame) {
  AcGeMatrix3d m;
  m(1, 1) = -1;
  m(0, 3) = -frame.min.x;
  m(1, 3) = frame.max.y;
  return m;
}

AcGeMatrix3d SvgToWorld(const Frame& frame) {
  AcGeMatrix3d m;
  m(1, 1) = -1;
  m(0, 3) = frame.min.x;
  m(1, 3) = frame.max.y;
  return m;
}

bool ModelSpaceExtents(AcDbDatabase* database, Frame& frame) {
  if (database == nullptr) return false;
  std::vector<AcDbObjectId> entities;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> model(database->modelSpaceId(), AcDb::kForRead);
    if (model.openStatus() != Acad::eOk) return false;
    entities = model->entityIds();
  }
  AcDbExtents box;
  for (AcDbObjectId id : entities) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    AcDbExtents extents;
    if (entity.openStatus() != Acad::eOk || entity->visibility() != AcDb::kVisible ||
        entity->getGeomExtents(extents) != Acad::eOk)
      continue;
    box.addExt(extents);
  }
  if (box.isEmpty()) return false;
  frame.min = box.minPoint().to2d();
  frame.max = box.maxPoint().to2d();
  return true;
}

void DrawFrameOutline(AcGiWorldGeometry& geometry, AcGiSubEntityTraits& traits, const Frame& frame) {
  traits.setColor(AcCmEntityColor::kACIbyLayer);
  traits.setTrueColor(AcCmEntityColor());
  traits.setLayer(AcDbObjectId::kNull);  // layer "0"
  traits.setLineType(AcDbObjectId::kNull);
  traits.setLineWeight(AcDb::kLnWtByLayer);
  traits.setFillType(kAcGiFillNever);
  const AcGePoint3d corners[5] = {
      {frame.min.x, frame.min.y, 0}, {frame.min.x, frame.max.y, 0}, {frame.max.x, frame.max.y, 0},
      {frame.max.x, frame.min.y, 0}, {frame.min.x, frame.min.y, 0},
  };
  geometry.polyline(5, corners);
}

std::unique_ptr<SvgText> RenderModelSpaceText(AcDbDatabase* database, const Frame& frame, const SvgOptions& options,
                                              Acad::ErrorStatus* status) {
  Acad::ErrorStatus ignored;
  Acad::ErrorStatus& result = status != nullptr ? *status : ignored;
  result = database == nullptr ? Acad::eNullObjectPointer : Acad::eOk;
  if (database == nullptr) return nullptr;
  std::vector<AcDbObjectId> entities;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> model(database->modelSpaceId(), AcDb::kForRead);
    result = model.openStatus();
    if (result != Acad::eOk) return nullptr;
    entities = model->entityIds();
  }
  PvSvgWorldDraw draw(database, frame, options);
  draw.pushModelTransform(WorldToSvg(frame));
  for (AcDbObjectId id : entities) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || entity->visibility() != AcDb::kVisible) continue;
    entity->worldDraw(&draw);
  }
  if (options.draw_box) DrawFrameOutline(draw.geometry(), draw.subEntityTraits(), frame);
  draw.popModelTransform();
  return draw.takeText();
}

std::unique_ptr<pugi::xml_document> RenderModelSpace(AcDbDatabase* database, const Frame& frame,
                                                     const SvgOptions& options, Acad::ErrorStatus* status) {
  std::unique_ptr<SvgText> text = RenderModelSpaceText(database, frame, options, status);
  return text != nullptr ? text->Document() : nullptr;
}

}  // namespace fx::svg
