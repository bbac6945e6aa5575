// AcDbObject and the members every entity shares, over the object's tags.
#include "host/db_object.h"

#include "host/database.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"

using fx::dxf::TagList;

AcDbObject::AcDbObject(std::unique_ptr<AcDbImpObject> imp) : imp_(std::move(imp)) {}
AcDbObject::~AcDbObject() = default;

const char* AcDbObject::dxfName() const {
  // The type view points into the document or a literal, both outliving the object.
  thread_local std::string name;
  name = std::string(imp_->type());
  return name.c_str();
}

AcDbObjectId AcDbObject::objectId() const { return AcDbObjectId(imp_->stub()); }

AcDbObjectId AcDbObject::ownerId() const {
  AcDbStub* stub = imp_->stub();
  if (stub == nullptr) return {};
  if (stub->owner != nullptr) return AcDbObjectId(stub->owner);
  // Objects name their owner in group 330.
  AcDbHandle owner(fx::dxf::TrimBlanks(imp_->tags().GetString(330, imp_->tags().Body())));
  return AcDbObjectId(stub->database->FindHandle(owner));
}

AcDbDatabase* AcDbObject::database() const {
  return imp_->database() ? imp_->database()->api() : nullptr;
}

AcDbHandle AcDbObject::handle() const { return imp_->stub() ? imp_->stub()->handle : AcDbHandle(); }
bool AcDbObject::isErased() const { return imp_->stub() && imp_->stub()->erased; }
bool AcDbObject::isReadEnabled() const { return true; }
bool AcDbObject::isWriteEnabled() const { return imp_->is_new() || imp_->mode() == AcDb::kForWrite; }
bool AcDbObject::isNewObject() const { return imp_->is_new(); }

Acad::ErrorStatus AcDbObject::assertReadEnabled() const { return Acad::eOk; }

Acad::ErrorStatus AcDbObject::assertWriteEnabled() {
  return isWriteEnabled() ? Acad::eOk : Acad::eWasNotOpenForWrite;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
  AcDbStub* stub = imp_->stub();
  if (stub == nullptr || imp_->mode() == AcDb::kForWrite) return Acad::eOk;
  if (stub->readers > 1) return Acad::eWasOpenForRead;
  stub->readers = 0;
  stub->writer = true;
  imp_->set_mode(AcDb::kForWrite);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
  AcDbStub* stub = imp_->stub();
  if (stub == nullptr || imp_->mode() != AcDb::kForWrite) return Acad::eOk;
  if (imp_->modified()) {
    stub->database->document().ReplaceTags(stub->record, imp_->tags().tags());
    stub->database->MarkModified();
  }
  stub->writer = false;
  stub->readers = 1;
  imp_->set_mode(AcDb::kForRead);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcDbStub* stub = imp_->stub();
  if (stub == nullptr) return Acad::eNotInDatabase;
  if (stub->erased == erasing) return erasing ? Acad::eWasErased : Acad::eWasNotErased;
  stub->erased = erasing;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::close() {
  AcDbImpDatabase* db = imp_->database();
  if (db == nullptr) return Acad::eNotInDatabase;
  Acad::ErrorStatus status = db->Close(this);
  delete this;
  return status;
}

AcDbObjectId AcDbObject::extensionDictionary() const {
  const TagList& tags = imp_->tags();
  for (size_t i = 1; i + 1 < tags.size(); ++i) {
    if (tags[i].code == 102 && fx::dxf::TrimBlanks(tags[i].value) == "{ACAD_XDICTIONARY" &&
        tags[i + 1].code == 360 && imp_->database()) {
      return AcDbObjectId(imp_->database()->FindHandle(AcDbHandle(fx::dxf::TrimBlanks(tags[i + 1].value))));
    }
  }
  return {};
}

// ---- AcDbEntity: the common entity properties ------------------------------

namespace {

// Reads of the common groups look where the entity keeps them (see
// TagList::EntityCommon); writes change that tag in place or add one where
// the layout wants it.
TagList::Range EntityRange(const TagList& tags) { return tags.EntityCommon(); }

void SetCommon(TagList& tags, int code, std::string_view value) {
  const size_t at = tags.Find(code, tags.EntityCommon());
  if (at != TagList::kNotFound) tags.SetValue(at, value);
  else tags.Insert(tags.EntityCommonInsertAt(), code, value);
}

void SetCommon(TagList& tags, int code, int64_t value) { SetCommon(tags, code, std::to_string(value)); }

AcDbStub* LayerStub(const AcDbObject& entity) {
  AcDbImpDatabase* db = entity.impl()->database();
  if (db == nullptr) return nullptr;
  const TagList& tags = entity.impl()->tags();
  return db->FindSymbol("LAYER", tags.GetString(8, EntityRange(tags), "0"));
}

}  // namespace

AcDbObjectId AcDbEntity::blockId() const {
  AcDbStub* stub = impl()->stub();
  if (stub == nullptr) return {};
  // Sub-entities report the block of their parent.
  while (stub->owner != nullptr && stub->owner->kind == StubKind::kEntity) stub = stub->owner;
  return AcDbObjectId(stub->owner);
}

std::string AcDbEntity::layer() const {
  const TagList& tags = impl()->tags();
  std::string_view raw = fx::dxf::TrimBlanks(tags.GetString(8, EntityRange(tags), "0"));
  return impl()->database() ? impl()->database()->codec().Decode(raw) : std::string(raw);
}

AcDbObjectId AcDbEntity::layerId() const { return AcDbObjectId(LayerStub(*this)); }

Acad::ErrorStatus AcDbEntity::setLayer(const char* name) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  std::string stored = name;
  if (AcDbImpDatabase* db = impl()->database()) {
    if (db->FindSymbol("LAYER", db->codec().Encode(name)) == nullptr) return Acad::eKeyNotFound;
    stored = db->codec().Encode(name);
  }
  TagList& tags = impl()->mutable_tags();
  SetCommon(tags, 8, stored);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId layer_id) {
  AcDbLayerTableRecord* layer = nullptr;
  if (Acad::ErrorStatus es = acdbOpenObject(layer, layer_id, AcDb::kForRead); es != Acad::eOk) return es;
  std::string name = layer->getName();
  layer->close();
  return setLayer(name.c_str());
}

AcCmColor AcDbEntity::color() const {
  const TagList& tags = impl()->tags();
  TagList::Range range = EntityRange(tags);
  size_t true_color = tags.Find(420, range);
  if (true_color != TagList::kNotFound) {
    auto rgb = fx::dxf::ParseInt(tags[true_color].value).value_or(0);
    return AcCmColor::fromRgb(static_cast<uint8_t>(rgb >> 16), static_cast<uint8_t>(rgb >> 8),
                              static_cast<uint8_t>(rgb));
  }
  // A negative index marks a layer that is off; the colour is its absolute value.
  int64_t index = tags.GetInt(62, range, AcCmEntityColor::kACIbyLayer);
  if (index < 0) index = -index;
  return AcCmColor::fromIndex(static_cast<uint16_t>(index > 256 ? 256 : index));
}

uint16_t AcDbEntity::colorIndex() const { return color().colorIndex(); }

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  tags.EraseCode(420, EntityRange(tags));
  if (color.isByColor()) {
    SetCommon(tags, 62, int64_t{7});
    SetCommon(tags, 420, static_cast<int64_t>(color.rgb()));
  } else if (color.isByLayer()) {
    tags.EraseCode(62, EntityRange(tags));
  } else {
    SetCommon(tags, 62, int64_t{color.colorIndex()});
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(uint16_t aci) { return setColor(AcCmColor::fromIndex(aci)); }

std::string AcDbEntity::linetype() const {
  const TagList& tags = impl()->tags();
  return std::string(fx::dxf::TrimBlanks(tags.GetString(6, EntityRange(tags), "ByLayer")));
}

AcDbObjectId AcDbEntity::linetypeId() const {
  AcDbImpDatabase* db = impl()->database();
  return db ? AcDbObjectId(db->FindSymbol("LTYPE", linetype())) : AcDbObjectId();
}

double AcDbEntity::linetypeScale() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(48, EntityRange(tags), 1.0);
}

AcDb::LineWeight AcDbEntity::lineWeight() const {
  const TagList& tags = impl()->tags();
  return static_cast<AcDb::LineWeight>(tags.GetInt(370, EntityRange(tags), AcDb::kLnWtByLayer));
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight weight, bool subents) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  if (impl()->database() && !impl()->database()->has_subclass_markers()) return Acad::eOk;
  TagList& tags = impl()->mutable_tags();
  SetCommon(tags, 370, int64_t{weight});
  if (!subents) return Acad::eOk;
  for (AcDbObjectId child : fx::dxf::SubEntityIds(*this)) {
    AcDbEntity* sub = nullptr;
    if (acdbOpenObject(sub, child, AcDb::kForWrite) != Acad::eOk) continue;
    sub->setLineWeight(weight, false);
    sub->close();
  }
  return Acad::eOk;
}

AcDb::Visibility AcDbEntity::visibility() const {
  const TagList& tags = impl()->tags();
  return tags.GetInt(60, EntityRange(tags), 0) == 1 ? AcDb::kInvisible : AcDb::kVisible;
}

namespace {

// The general properties setPropertiesFrom copies besides the layer, by
// their groups in the entity's common data.
enum class PropertyKind { kNumber, kName, kHandle };
struct GeneralProperty {
  int code;
  PropertyKind kind;
};
constexpr GeneralProperty kGeneralProperties[] = {
    {6, PropertyKind::kName},      {62, PropertyKind::kNumber},  {420, PropertyKind::kNumber},
    {430, PropertyKind::kName},    {48, PropertyKind::kNumber},  {370, PropertyKind::kNumber},
    {60, PropertyKind::kNumber},   {390, PropertyKind::kHandle}, {440, PropertyKind::kNumber},
};

// A stored name of `from`'s drawing as `to` stores it: new objects hold
// UTF-8 until they join a drawing.
std::string Restored(std::string_view raw, const AcDbImpDatabase* from, const AcDbImpDatabase* to) {
  std::string utf8 = from != nullptr ? from->codec().Decode(raw) : std::string(raw);
  return to != nullptr ? to->codec().Encode(utf8) : utf8;
}

}  // namespace

Acad::ErrorStatus AcDbEntity::setPropertiesFrom(const AcDbEntity* source) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  if (source == nullptr) return Acad::eInvalidInput;
  if (source == this) return Acad::eOk;
  // The layer first: it is the one that can fail (a drawing without it).
  if (Acad::ErrorStatus es = setLayer(source->layer().c_str()); es != Acad::eOk) return es;
  const AcDbImpDatabase* from_db = source->impl()->database();
  const AcDbImpDatabase* to_db = impl()->database();
  const TagList& from = source->impl()->tags();
  TagList& to = impl()->mutable_tags();
  for (const GeneralProperty& property : kGeneralProperties) {
    const size_t at = from.Find(property.code, from.EntityCommon());
    // A handle means nothing in another drawing.
    const bool keep = at != TagList::kNotFound && (property.kind != PropertyKind::kHandle ||
                                                   to_db == nullptr || to_db == from_db);
    if (!keep) {
      to.EraseCode(property.code, to.EntityCommon());
    } else if (property.kind == PropertyKind::kName) {
      SetCommon(to, property.code, Restored(fx::dxf::TrimBlanks(from[at].value), from_db, to_db));
    } else {
      SetCommon(to, property.code, fx::dxf::TrimBlanks(from[at].value));
    }
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }

// ---- AcDbCurve: defaults for curves that do not say otherwise -------------

bool AcDbCurve::isClosed() const { return false; }
Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d&) const { return Acad::eNotApplicable; }
