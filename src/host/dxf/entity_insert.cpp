// INSERT: block name (2), insertion point (10) in the object coordinates of
// the normal (210), scale factors (41, 42, 43), rotation (50, degrees),
// MINSERT columns and rows (70, 71) with their spacing (44, 45), and the
// flag that attributes follow (66). A MINSERT keeps its data in the
// AcDbMInsertBlock subclass.
#include <numbers>

#include "host/database.h"
#include "host/db_entities.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSubclass = "AcDbBlockReference";
constexpr std::string_view kMInsert = "AcDbMInsertBlock";
constexpr double kRadiansToDegrees = 180 / std::numbers::pi;

Range InsertData(const TagList& tags) {
  Range minsert = tags.Subclass(kMInsert);
  return minsert.begin != tags.Body().end ? minsert : DataOf(tags, kSubclass);
}

Range InsertData(const AcDbBlockReference& insert) { return InsertData(insert.impl()->tags()); }

}  // namespace

AcDbBlockReference::AcDbBlockReference() : AcDbBlockReference(AcGePoint3d::kOrigin, {}) {}

AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block)
    : AcDbEntity([&] {
        TagList tags = fx::dxf::NewEntityTags("INSERT", kSubclass);
        tags.Append(2, fx::dxf::StoredSymbolName(block));
        fx::dxf::AppendPoint(tags, 10, position);
        return std::make_unique<AcDbImpObject>(std::move(tags));
      }()) {}

AcDbObjectId AcDbBlockReference::blockTableRecord() const {
  return fx::dxf::BlockRecordIdByName(database(), fx::dxf::ReadName(impl()->tags(), 2, InsertData(*this)));
}

AcGePoint3d AcDbBlockReference::position() const {
  return fx::dxf::OcsToWorld(normal(), impl()->tags().GetPoint(10, InsertData(*this)));
}

AcGeScale3d AcDbBlockReference::scaleFactors() const {
  const TagList& tags = impl()->tags();
  Range range = InsertData(*this);
  return {tags.GetDouble(41, range, 1), tags.GetDouble(42, range, 1), tags.GetDouble(43, range, 1)};
}

double AcDbBlockReference::rotation() const {
  return fx::dxf::ReadDegrees(impl()->tags(), 50, InsertData(*this));
}

AcGeVector3d AcDbBlockReference::normal() const {
  return fx::dxf::ReadNormal(impl()->tags(), InsertData(*this));
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
  AcGePoint3d origin;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockTableRecord(), AcDb::kForRead);
    if (block.openStatus() == Acad::eOk) origin = block->origin();
  }
  AcGeScale3d scale = scaleFactors();
  return AcGeMatrix3d::translation(position() - AcGePoint3d::kOrigin) *
         AcGeMatrix3d::planeToWorld(normal()) *
         AcGeMatrix3d::rotation(rotation(), AcGeVector3d::kZAxis) *
         AcGeMatrix3d::scaling(scale.sx, scale.sy, scale.sz) *
         AcGeMatrix3d::translation(AcGePoint3d::kOrigin - origin);
}

int AcDbBlockReference::columnCount() const {
  int64_t count = impl()->tags().GetInt(70, InsertData(*this), 1);
  return count >= 1 ? static_cast<int>(count) : 1;
}

int AcDbBlockReference::rowCount() const {
  int64_t count = impl()->tags().GetInt(71, InsertData(*this), 1);
  return count >= 1 ? static_cast<int>(count) : 1;
}

double AcDbBlockReference::columnSpacing() const {
  return impl()->tags().GetDouble(44, InsertData(*this), 0);
}

double AcDbBlockReference::rowSpacing() const {
  return impl()->tags().GetDouble(45, InsertData(*this), 0);
}

// The sub-entities of an insert are its attributes.
std::vector<AcDbObjectId> AcDbBlockReference::attributeIds() const { return fx::dxf::SubEntityIds(*this); }

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  if (attribute == nullptr) return Acad::eNullEntityPointer;
  if (!attribute->isNewObject()) return Acad::eInvalidInput;
  AcDbImpDatabase* db = impl()->database();
  if (db == nullptr) return Acad::eNotInDatabase;
  AcDbStub* self = impl()->stub();
  fx::dxf::Document& document = db->document();
  // After the last sub-entity: before the SEQEND that ends them, or, for an
  // insert without attributes yet, right after the insert with a new SEQEND.
  fx::dxf::RecordId before = document.next(self->record);
  bool has_seqend = false;
  while (before != fx::dxf::kNoRecord) {
    AcDbStub* stub = db->StubOf(before);
    if (stub == nullptr || stub->owner != self) break;
    if (document.type(before) == "SEQEND") {
      has_seqend = true;
      break;
    }
    before = document.next(before);
  }
  AcDbStub* added = db->AddObject(attribute, before, StubKind::kEntity, self, self->handle);
  id = AcDbObjectId(added);
  if (!has_seqend) {
    TagList tags;
    tags.Append(0, "SEQEND");
    tags.Append(100, "AcDbEntity");
    tags.Append(8, fx::dxf::ReadName(impl()->tags(), 8, impl()->tags().EntityCommon(), "0"));
    AcDbEntity* seqend = new AcDbEntity(std::make_unique<AcDbImpObject>(std::move(tags)));
    db->AddObject(seqend, before, StubKind::kEntity, self, self->handle);
    seqend->close();
  }
  TagList& tags = impl()->mutable_tags();
  Range range = InsertData(tags);
  if (tags.Find(66, range) != TagList::kNotFound) tags.SetInt(66, 1, range);
  else tags.Insert(range.begin, 66, "1");
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcGePoint3d ocs = fx::dxf::WorldToOcs(normal(), position);
  TagList& tags = impl()->mutable_tags();
  tags.SetPoint(10, ocs, InsertData(tags));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& normal) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  if (normal.length() == 0) return Acad::eInvalidInput;
  const AcGePoint3d position = this->position();
  TagList& tags = impl()->mutable_tags();
  fx::dxf::WriteNormal(tags, InsertData(tags), normal);
  return setPosition(position);
}

Acad::ErrorStatus AcDbBlockReference::setRotation(double rotation) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  tags.SetDouble(50, rotation * kRadiansToDegrees, InsertData(tags));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  if (scale.sx == 0 || scale.sy == 0 || scale.sz == 0) return Acad::eInvalidInput;
  TagList& tags = impl()->mutable_tags();
  tags.SetDouble(41, scale.sx, InsertData(tags));
  tags.SetDouble(42, scale.sy, InsertData(tags));
  tags.SetDouble(43, scale.sz, InsertData(tags));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId block) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  std::string name = fx::dxf::StoredSymbolName(block);
  if (name.empty()) return Acad::eInvalidInput;
  TagList& tags = impl()->mutable_tags();
  tags.SetString(2, name, InsertData(tags));
  return Acad::eOk;
}
