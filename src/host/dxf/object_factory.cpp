#include "host/dxf/object_factory.h"

#include <string_view>

#include "host/database.h"
#include "host/dxf/imp_object.h"

namespace fx::dxf {
namespace {

struct TypeName {
  std::string_view name;
  RecordType type;
};

constexpr TypeName kTypeNames[] = {
    {"LINE", RecordType::kLine},         {"CIRCLE", RecordType::kCircle},
    {"ARC", RecordType::kArc},           {"ELLIPSE", RecordType::kEllipse},
    {"SPLINE", RecordType::kSpline},     {"LWPOLYLINE", RecordType::kLwPolyline},
    {"POLYLINE", RecordType::kPolyline}, {"VERTEX", RecordType::kVertex},
    {"TEXT", RecordType::kText},         {"ATTRIB", RecordType::kAttrib},
    {"ATTDEF", RecordType::kAttdef},     {"MTEXT", RecordType::kMText},
    {"INSERT", RecordType::kInsert},     {"HATCH", RecordType::kHatch},
    {"SOLID", RecordType::kSolid},       {"TRACE", RecordType::kSolid},
    {"3DFACE", RecordType::kFace},       {"POINT", RecordType::kPoint},
    {"DIMENSION", RecordType::kDimension}, {"LEADER", RecordType::kLeader},
    {"XLINE", RecordType::kXline},       {"RAY", RecordType::kXline},
    {"DICTIONARY", RecordType::kDictionary}, {"XRECORD", RecordType::kXrecord},
};

AcDbObject* MakeEntity(std::unique_ptr<AcDbImpObject> imp, RecordType type) {
  switch (type) {
    case RecordType::kLine: return new AcDbLine(std::move(imp));
    case RecordType::kCircle: return new AcDbCircle(std::move(imp));
    case RecordType::kArc: return new AcDbArc(std::move(imp));
    case RecordType::kEllipse: return new AcDbEllipse(std::move(imp));
    case RecordType::kSpline: return new AcDbSpline(std::move(imp));
    case RecordType::kLwPolyline: return new AcDbPolyline(std::move(imp));
    case RecordType::kPolyline: return new AcDb2dPolyline(std::move(imp));
    case RecordType::kVertex: {
      // Flag 32 marks the vertex of a 3D polyline.
      int64_t flags = imp->tags().GetInt(70, imp->tags().Body(), 0);
      if (flags & 32) return new AcDb3dPolylineVertex(std::move(imp));
      return new AcDb2dVertex(std::move(imp));
    }
    case RecordType::kText: return new AcDbText(std::move(imp));
    case RecordType::kAttrib: return new AcDbAttribute(std::move(imp));
    case RecordType::kAttdef: return new AcDbAttributeDefinition(std::move(imp));
    case RecordType::kMText: return new AcDbMText(std::move(imp));
    case RecordType::kInsert: return new AcDbBlockReference(std::move(imp));
    case RecordType::kHatch: return new AcDbHatch(std::move(imp));
    case RecordType::kSolid: return new AcDbSolid(std::move(imp));
    case RecordType::kFace: return new AcDbFace(std::move(imp));
    case RecordType::kPoint: return new AcDbPoint(std::move(imp));
    case RecordType::kDimension: return new AcDbDimension(std::move(imp));
    case RecordType::kLeader: return new AcDbLeader(std::move(imp));
    case RecordType::kXline: return new AcDbXline(std::move(imp));
    case RecordType::kOther:
    case RecordType::kDictionary:
    case RecordType::kXrecord: break;
  }
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

RecordType RecordTypeOf(std::string_view type) {
  for (const TypeName& entry : kTypeNames)
    if (entry.name.size() == type.size() && entry.name == type) return entry.type;
  return RecordType::kOther;
}

AcDbObject* MakeTypedObject(std::unique_ptr<AcDbImpObject> imp, StubKind kind, RecordType type,
                            std::string_view table) {
  switch (kind) {
    case StubKind::kEntity: return MakeEntity(std::move(imp), type);
    case StubKind::kTable: return new AcDbSymbolTable(std::move(imp));
    case StubKind::kTableRecord: return MakeTableRecord(std::move(imp), table);
    case StubKind::kBlockBegin:
      // A BLOCK stands for its block table record only in files without one.
      if (table == "BLOCK_RECORD") return new AcDbBlockTableRecord(std::move(imp));
      return new AcDbObject(std::move(imp));
    case StubKind::kBlockEnd: return new AcDbObject(std::move(imp));
    case StubKind::kObject: break;
  }
  if (type == RecordType::kDictionary) return new AcDbDictionary(std::move(imp));
  if (type == RecordType::kXrecord) return new AcDbXrecord(std::move(imp));
  return new AcDbObject(std::move(imp));
}

}  // namespace fx::dxf
