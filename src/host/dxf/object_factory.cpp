#include "host/dxf/object_factory.h"

#include <string_view>

#include "host/database.h"
#include "host/dxf/imp_object.h"

namespace fx::dxf {
namespace {

AcDbObject* MakeEntity(std::unique_ptr<AcDbImpObject> imp) {
  std::string_view type = imp->type();
  if (type == "LINE") return new AcDbLine(std::move(imp));
  if (type == "CIRCLE") return new AcDbCircle(std::move(imp));
  if (type == "ARC") return new AcDbArc(std::move(imp));
  if (type == "ELLIPSE") return new AcDbEllipse(std::move(imp));
  if (type == "SPLINE") return new AcDbSpline(std::move(imp));
  if (type == "LWPOLYLINE") return new AcDbPolyline(std::move(imp));
  if (type == "POLYLINE") return new AcDb2dPolyline(std::move(imp));
  if (type == "VERTEX") {
    // Flag 32 marks the vertex of a 3D polyline.
    int64_t flags = imp->tags().GetInt(70, imp->tags().Body(), 0);
    if (flags & 32) return new AcDb3dPolylineVertex(std::move(imp));
    return new AcDb2dVertex(std::move(imp));
  }
  if (type == "TEXT") return new AcDbText(std::move(imp));
  if (type == "ATTRIB") return new AcDbAttribute(std::move(imp));
  if (type == "ATTDEF") return new AcDbAttributeDefinition(std::move(imp));
  if (type == "MTEXT") return new AcDbMText(std::move(imp));
  if (type == "INSERT") return new AcDbBlockReference(std::move(imp));
  if (type == "HATCH") return new AcDbHatch(std::move(imp));
  if (type == "SOLID" || type == "TRACE") return new AcDbSolid(std::move(imp));
  if (type == "3DFACE") return new AcDbFace(std::move(imp));
  if (type == "POINT") return new AcDbPoint(std::move(imp));
  if (type == "DIMENSION") return new AcDbDimension(std::move(imp));
  if (type == "LEADER") return new AcDbLeader(std::move(imp));
  if (type == "XLINE" || type == "RAY") return new AcDbXline(std::move(imp));
  return new AcDbEntity(std::move(imp));
}

AcDbObject* MakeTableRecord(std::unique_ptr<AcDbImpObject> imp, std::string_view table) {
  if (table == "LAYER") return new AcDbLayerTableRecord(std::move(imp));
  if (table == "BLOCK_RECORD") return new AcDbBlockTableRecord(std::move(imp));
  if (table == "VPORT") return new AcDbViewportTableRecord(std::move(imp));
  if (table == "APPID") return new AcDbRegAppTableRecord(std::move(imp));
  if (table == "LTYPE") return new AcDbLinetypeTableRecord(std::move(imp));
  if (table == "STYLE") return new AcDbTextStyleTableRecord(std::move(imp));
  return new AcDbSymbolTableRecord(std::move(imp));
}

}  // namespace

AcDbObject* MakeTypedObject(std::unique_ptr<AcDbImpObject> imp, StubKind kind, std::string_view table) {
  switch (kind) {
    case StubKind::kEntity: return MakeEntity(std::move(imp));
    case StubKind::kTable: return new AcDbSymbolTable(std::move(imp));
    case StubKind::kTableRecord: return MakeTableRecord(std::move(imp), table);
    case StubKind::kBlockBegin:
      // A BLOCK stands for its block table record only in files without one.
      if (table == "BLOCK_RECORD") return new AcDbBlockTableRecord(std::move(imp));
      return new AcDbObject(std::move(imp));
    case StubKind::kBlockEnd: return new AcDbObject(std::move(imp));
    case StubKind::kObject: break;
  }
  std::string_view type = imp->type();
  if (type == "DICTIONARY") return new AcDbDictionary(std::move(imp));
  if (type == "XRECORD") return new AcDbXrecord(std::move(imp));
  return new AcDbObject(std::move(imp));
}

}  // namespace fx::dxf
