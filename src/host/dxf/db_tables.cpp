// Symbol tables and their records over the TABLES section (and, for files
// before R13, the BLOCKS section standing for the block table).
#include "host/db_tables.h"

#include <numbers>

#include "host/database.h"
#include "host/db_entities.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"

using fx::dxf::TagList;

namespace {

constexpr int64_t kLayerFrozen = 1;
constexpr int64_t kLayerLocked = 4;

fx::dxf::SymbolTable* TableOf(const AcDbObject& table) {
  AcDbImpDatabase* db = table.impl()->database();
  if (db == nullptr) return nullptr;
  for (std::string_view name : {"LAYER", "BLOCK_RECORD", "VPORT", "APPID", "LTYPE", "STYLE", "VIEW",
                                "UCS", "DIMSTYLE"}) {
    fx::dxf::SymbolTable* t = db->FindTable(name);
    if (t != nullptr && t->stub == table.impl()->stub()) return t;
  }
  return nullptr;
}

// The range of a record's own data: after its type's subclass marker, or the body.
TagList::Range RecordRange(const TagList& tags, std::string_view marker) {
  TagList::Range range = tags.Subclass(marker);
  return range.empty() ? tags.Body() : range;
}

std::string Decoded(const AcDbObject& object, std::string_view raw) {
  AcDbImpDatabase* db = object.impl()->database();
  return db ? db->codec().Decode(fx::dxf::TrimBlanks(raw)) : std::string(fx::dxf::TrimBlanks(raw));
}

int64_t Flags(const AcDbObject& record) {
  const TagList& tags = fx::dxf::TagsOf(record);
  return tags.GetInt(70, tags.Body(), 0);
}

Acad::ErrorStatus SetFlag(AcDbObject& record, int64_t bit, bool on) {
  int64_t flags = Flags(record);
  flags = on ? (flags | bit) : (flags & ~bit);
  TagList& tags = record.impl()->mutable_tags();
  tags.SetInt(70, flags, tags.Body());
  return Acad::eOk;
}

}  // namespace

// ---- AcDbSymbolTable -------------------------------------------------------

Acad::ErrorStatus AcDbSymbolTable::getAt(const char* name, AcDbObjectId& id, bool get_erased) const {
  id = AcDbObjectId();
  fx::dxf::SymbolTable* table = TableOf(*this);
  if (table == nullptr) return Acad::eNotInDatabase;
  auto it = table->by_name.find(fx::dxf::FoldCase(impl()->database()->codec().Encode(name)));
  if (it == table->by_name.end() || (it->second->erased && !get_erased)) return Acad::eKeyNotFound;
  id = AcDbObjectId(it->second);
  return Acad::eOk;
}

bool AcDbSymbolTable::has(const char* name) const {
  AcDbObjectId id;
  return getAt(name, id) == Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  fx::dxf::SymbolTable* table = TableOf(*this);
  if (table == nullptr || record == nullptr || !record->isNewObject()) return Acad::eInvalidInput;
  AcDbImpDatabase* db = impl()->database();
  // The new record's name is still UTF-8; the table knows names as the file stores them.
  std::string name = db->codec().Encode(
      fx::dxf::TrimBlanks(fx::dxf::TagsOf(*record).GetString(2, fx::dxf::TagsOf(*record).Body())));
  if (name.empty()) return Acad::eInvalidInput;
  if (table->by_name.count(fx::dxf::FoldCase(name))) return Acad::eDuplicateRecordName;
  AcDbStub* stub = nullptr;
  if (table->name == "BLOCK_RECORD") {
    // A block table record comes with its definition: BLOCK and ENDBLK.
    stub = db->AddBlockDefinition(record, name, AcGePoint3d::kOrigin);
  } else if (table->end != fx::dxf::kNoRecord) {
    stub = db->AddObject(record, table->end, StubKind::kTableRecord, table->stub, handle());
  }
  if (stub == nullptr) return Acad::eNotApplicable;
  table->entries.push_back(stub);
  table->by_name.emplace(fx::dxf::FoldCase(name), stub);
  // The table counts its entries in group 70 (a table made up in memory has no record).
  if (impl()->stub()->record != fx::dxf::kNoRecord) {
    TagList& tags = impl()->mutable_tags();
    tags.SetInt(70, static_cast<int64_t>(table->entries.size()), tags.Body());
  }
  id = AcDbObjectId(stub);
  return Acad::eOk;
}

std::vector<AcDbObjectId> AcDbSymbolTable::recordIds() const {
  std::vector<AcDbObjectId> ids;
  if (fx::dxf::SymbolTable* table = TableOf(*this))
    for (AcDbStub* entry : table->entries)
      if (!entry->erased) ids.emplace_back(entry);
  return ids;
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator) const {
  iterator = new AcDbSymbolTableIterator(recordIds());
  return Acad::eOk;
}

// ---- AcDbSymbolTableRecord -------------------------------------------------

std::string AcDbSymbolTableRecord::getName() const {
  const TagList& tags = impl()->tags();
  return Decoded(*this, tags.GetString(2, tags.Body()));
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(std::string& name) const {
  name = getName();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const char* name) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcDbImpDatabase* db = impl()->database();
  std::string stored = db ? db->codec().Encode(name) : std::string(name);
  if (db != nullptr) {
    // Keep the table's index of names current.
    for (std::string_view table_name : {"LAYER", "BLOCK_RECORD", "VPORT", "APPID", "LTYPE", "STYLE"}) {
      fx::dxf::SymbolTable* table = db->FindTable(table_name);
      if (table == nullptr || table->stub != impl()->stub()->owner) continue;
      if (table->by_name.count(fx::dxf::FoldCase(stored))) return Acad::eDuplicateRecordName;
      table->by_name.erase(fx::dxf::FoldCase(fx::dxf::TagsOf(*this).GetString(2, fx::dxf::TagsOf(*this).Body())));
      table->by_name.emplace(fx::dxf::FoldCase(stored), impl()->stub());
    }
  }
  TagList& tags = impl()->mutable_tags();
  tags.SetString(2, stored, tags.Body());
  return Acad::eOk;
}

bool AcDbSymbolTableRecord::isDependent() const { return (Flags(*this) & 16) != 0; }

// ---- AcDbLayerTableRecord --------------------------------------------------

AcDbLayerTableRecord::AcDbLayerTableRecord()
    : AcDbLayerTableRecord(std::make_unique<AcDbImpObject>(TagList(std::vector<fx::dxf::Tag>{
          {0, "LAYER"}, {100, "AcDbSymbolTableRecord"}, {100, "AcDbLayerTableRecord"}, {2, ""},
          {70, "0"}, {62, "7"}, {6, "Continuous"}, {370, "-3"}}))) {}

bool AcDbLayerTableRecord::isOff() const {
  const TagList& tags = impl()->tags();
  return tags.GetInt(62, tags.Body(), 7) < 0;
}
bool AcDbLayerTableRecord::isFrozen() const { return (Flags(*this) & kLayerFrozen) != 0; }
bool AcDbLayerTableRecord::isLocked() const { return (Flags(*this) & kLayerLocked) != 0; }
bool AcDbLayerTableRecord::isHidden() const {
  std::string name;
  return getName(name) == Acad::eOk && name.starts_with('*');
}
bool AcDbLayerTableRecord::isPlottable() const {
  const TagList& tags = impl()->tags();
  return tags.GetInt(290, tags.Body(), 1) != 0;
}

AcCmColor AcDbLayerTableRecord::color() const {
  const TagList& tags = impl()->tags();
  size_t true_color = tags.Find(420, tags.Body());
  if (true_color != TagList::kNotFound) {
    int64_t rgb = fx::dxf::ParseInt(tags[true_color].value).value_or(0);
    return AcCmColor::fromRgb(static_cast<uint8_t>(rgb >> 16), static_cast<uint8_t>(rgb >> 8),
                              static_cast<uint8_t>(rgb));
  }
  int64_t index = tags.GetInt(62, tags.Body(), 7);
  if (index < 0) index = -index;
  if (index < 1 || index > 255) index = 7;
  return AcCmColor::fromIndex(static_cast<uint16_t>(index));
}

AcDb::LineWeight AcDbLayerTableRecord::lineWeight() const {
  const TagList& tags = impl()->tags();
  return static_cast<AcDb::LineWeight>(tags.GetInt(370, tags.Body(), AcDb::kLnWtByLwDefault));
}

AcDbObjectId AcDbLayerTableRecord::linetypeObjectId() const {
  AcDbImpDatabase* db = impl()->database();
  const TagList& tags = impl()->tags();
  return db ? AcDbObjectId(db->FindSymbol("LTYPE", tags.GetString(6, tags.Body(), "Continuous"))) : AcDbObjectId();
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsOff(bool off) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  int64_t index = tags.GetInt(62, tags.Body(), 7);
  if ((index < 0) != off) tags.SetInt(62, -index, tags.Body());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  return SetFlag(*this, kLayerFrozen, frozen);
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsLocked(bool locked) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  return SetFlag(*this, kLayerLocked, locked);
}

Acad::ErrorStatus AcDbLayerTableRecord::setColor(const AcCmColor& color) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  bool off = isOff();
  TagList& tags = impl()->mutable_tags();
  tags.EraseCode(420, tags.Body());
  int64_t index = color.isByColor() ? 7 : color.colorIndex();
  tags.SetInt(62, off ? -index : index, tags.Body());
  if (color.isByColor()) tags.SetInt(420, static_cast<int64_t>(color.rgb()), tags.Body());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(AcDb::LineWeight weight) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  tags.SetInt(370, weight, tags.Body());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId linetype) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcDbLinetypeTableRecord* record = nullptr;
  if (Acad::ErrorStatus es = acdbOpenObject(record, linetype, AcDb::kForRead); es != Acad::eOk) return es;
  std::string name(fx::dxf::TrimBlanks(fx::dxf::TagsOf(*record).GetString(2, fx::dxf::TagsOf(*record).Body())));
  record->close();
  TagList& tags = impl()->mutable_tags();
  tags.SetString(6, name, tags.Body());
  return Acad::eOk;
}

// ---- AcDbBlockTableRecord --------------------------------------------------

std::vector<AcDbObjectId> AcDbBlockTableRecord::entityIds() const {
  std::vector<AcDbObjectId> ids;
  AcDbImpDatabase* db = impl()->database();
  if (db == nullptr) return ids;
  if (fx::dxf::BlockContents* block = db->BlockOf(impl()->stub()))
    for (AcDbStub* entity : block->entities)
      if (!entity->erased) ids.emplace_back(entity);
  return ids;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator) const {
  iterator = new AcDbBlockTableRecordIterator(entityIds());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  if (entity == nullptr || !entity->isNewObject()) return Acad::eInvalidInput;
  AcDbImpDatabase* db = impl()->database();
  fx::dxf::BlockContents* block = db ? db->BlockOf(impl()->stub()) : nullptr;
  if (block == nullptr || block->append_before == fx::dxf::kNoRecord) return Acad::eNotApplicable;
  AcDbStub* stub = db->AddObject(entity, block->append_before, StubKind::kEntity, impl()->stub(),
                                 impl()->stub()->synthetic_handle ? AcDbHandle() : handle());
  block->entities.push_back(stub);
  id = AcDbObjectId(stub);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::getBlockReferenceIds(std::vector<AcDbObjectId>& ids) const {
  ids.clear();
  AcDbImpDatabase* db = impl()->database();
  if (db == nullptr) return Acad::eNotInDatabase;
  const std::string_view own_name = impl()->tags().GetString(2, impl()->tags().Body());
  const fx::dxf::FoldedNameEqual same_name;
  // Inserts name their block in group 2; walk every block's entities.
  fx::dxf::SymbolTable* blocks = db->FindTable("BLOCK_RECORD");
  if (blocks == nullptr) return Acad::eOk;
  for (AcDbStub* record : blocks->entries) {
    fx::dxf::BlockContents* contents = db->BlockOf(record);
    if (contents == nullptr) continue;
    for (AcDbStub* entity : contents->entities) {
      if (entity->erased || entity->record == fx::dxf::kNoRecord) continue;
      std::string_view type = db->document().type(entity->record);
      if (type != "INSERT" && type != "DIMENSION") continue;
      const TagList tags = TagList::View(db->document().tags(entity->record));
      if (same_name(tags.GetString(2, tags.Body()), own_name)) ids.emplace_back(entity);
    }
  }
  return Acad::eOk;
}

bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
  AcDbImpDatabase* db = impl()->database();
  if (db == nullptr) return false;
  fx::dxf::BlockContents* block = db->BlockOf(impl()->stub());
  if (block == nullptr) return false;
  for (AcDbStub* entity : block->entities)
    if (!entity->erased && entity->record != fx::dxf::kNoRecord && db->document().type(entity->record) == "ATTDEF")
      return true;
  return false;
}

namespace {
// The BLOCK record that begins a block's definition: base point and flags live there.
fx::dxf::TagList BlockBeginTags(const AcDbBlockTableRecord& record) {
  AcDbImpDatabase* db = record.impl()->database();
  fx::dxf::BlockContents* block = db ? db->BlockOf(record.impl()->stub()) : nullptr;
  if (block == nullptr || block->begin == nullptr) return fx::dxf::TagList();
  return db->TagsOf(block->begin);
}
}  // namespace

AcGePoint3d AcDbBlockTableRecord::origin() const {
  fx::dxf::TagList tags = BlockBeginTags(*this);
  return tags.GetPoint(10, RecordRange(tags, "AcDbBlockBegin"));
}

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcDbImpDatabase* db = impl()->database();
  fx::dxf::BlockContents* block = db ? db->BlockOf(impl()->stub()) : nullptr;
  if (block == nullptr || block->begin == nullptr) return Acad::eNotInDatabase;
  if (block->begin == impl()->stub()) {
    // Before R13 this object is the BLOCK record itself.
    TagList& tags = impl()->mutable_tags();
    tags.SetPoint(10, origin, RecordRange(tags, "AcDbBlockBegin"));
    return Acad::eOk;
  }
  TagList tags = db->TagsOf(block->begin);
  tags.SetPoint(10, origin, RecordRange(tags, "AcDbBlockBegin"));
  db->document().ReplaceTags(block->begin->record, tags.tags());
  db->MarkModified();
  return Acad::eOk;
}

bool AcDbBlockTableRecord::isAnonymous() const {
  return !getName().empty() && getName()[0] == '*' && !isLayout();
}

bool AcDbBlockTableRecord::isLayout() const {
  std::string name = fx::dxf::FoldCase(getName());
  return name.rfind("*model_space", 0) == 0 || name.rfind("*paper_space", 0) == 0;
}

bool AcDbBlockTableRecord::isFromExternalReference() const {
  fx::dxf::TagList tags = BlockBeginTags(*this);
  return (tags.GetInt(70, tags.Body(), 0) & 4) != 0;
}

// ---- AcDbViewportTableRecord ----------------------------------------------

AcGePoint2d AcDbViewportTableRecord::centerPoint() const {
  const TagList& tags = impl()->tags();
  AcGePoint3d c = tags.GetPoint(12, tags.Body());
  return {c.x, c.y};
}
double AcDbViewportTableRecord::height() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(40, tags.Body(), 1);
}
double AcDbViewportTableRecord::width() const {
  const TagList& tags = impl()->tags();
  return height() * tags.GetDouble(41, tags.Body(), 1);
}
AcGePoint3d AcDbViewportTableRecord::target() const {
  const TagList& tags = impl()->tags();
  return tags.GetPoint(17, tags.Body());
}
AcGeVector3d AcDbViewportTableRecord::viewDirection() const {
  const TagList& tags = impl()->tags();
  const AcGePoint3d direction = tags.GetPoint(16, tags.Body(), {0, 0, 1});
  const AcGeVector3d vector(direction.x, direction.y, direction.z);
  return vector.length() > 0 ? vector : AcGeVector3d::kZAxis;
}
double AcDbViewportTableRecord::viewTwist() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(51, tags.Body(), 0) * (std::numbers::pi / 180.0);  // degrees in the file
}
Acad::ErrorStatus AcDbViewportTableRecord::setCenterPoint(const AcGePoint2d& center) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  tags.SetPoint(12, {center.x, center.y, 0}, tags.Body(), false);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbViewportTableRecord::setHeight(double height) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  double old_width = width();
  TagList& tags = impl()->mutable_tags();
  tags.SetDouble(40, height, tags.Body());
  if (height > 0) tags.SetDouble(41, old_width / height, tags.Body());
  return Acad::eOk;
}
Acad::ErrorStatus AcDbViewportTableRecord::setWidth(double width) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  double h = height();
  TagList& tags = impl()->mutable_tags();
  if (h > 0) tags.SetDouble(41, width / h, tags.Body());
  return Acad::eOk;
}

// ---- AcDbRegAppTableRecord, linetypes, text styles -------------------------

AcDbRegAppTableRecord::AcDbRegAppTableRecord()
    : AcDbRegAppTableRecord(std::make_unique<AcDbImpObject>(TagList(std::vector<fx::dxf::Tag>{
          {0, "APPID"}, {100, "AcDbSymbolTableRecord"}, {100, "AcDbRegAppTableRecord"}, {2, ""}, {70, "0"}}))) {}

std::string AcDbLinetypeTableRecord::comments() const {
  const TagList& tags = impl()->tags();
  return Decoded(*this, tags.GetString(3, tags.Body()));
}
double AcDbLinetypeTableRecord::patternLength() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(40, tags.Body(), 0);
}
int AcDbLinetypeTableRecord::numDashes() const {
  const TagList& tags = impl()->tags();
  return static_cast<int>(tags.GetInt(73, tags.Body(), 0));
}
double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
  const TagList& tags = impl()->tags();
  int seen = 0;
  for (size_t i = 1; i < tags.size(); ++i)
    if (tags[i].code == 49 && seen++ == index) return fx::dxf::ParseDouble(tags[i].value).value_or(0);
  return 0;
}

std::string AcDbTextStyleTableRecord::fileName() const {
  const TagList& tags = impl()->tags();
  return Decoded(*this, tags.GetString(3, tags.Body()));
}
std::string AcDbTextStyleTableRecord::bigFontFileName() const {
  const TagList& tags = impl()->tags();
  return Decoded(*this, tags.GetString(4, tags.Body()));
}
double AcDbTextStyleTableRecord::textSize() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(40, tags.Body(), 0);
}
double AcDbTextStyleTableRecord::xScale() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(41, tags.Body(), 1);
}
double AcDbTextStyleTableRecord::obliquingAngle() const {
  const TagList& tags = impl()->tags();
  return tags.GetDouble(50, tags.Body(), 0) * 3.14159265358979323846 / 180.0;
}
bool AcDbTextStyleTableRecord::isVertical() const { return (Flags(*this) & 4) != 0; }

Acad::ErrorStatus AcDbTextStyleTableRecord::font(std::string& typeface, bool& bold, bool& italic) const {
  // TrueType styles keep the face in extended data of "ACAD": 1000 face, 1071 flags.
  typeface.clear();
  bold = italic = false;
  ResbufPtr data(xData("ACAD"));
  for (const resbuf* rb = data ? data->rbnext : nullptr; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == 1000 && typeface.empty()) typeface = rb->resval.rstring;
    if (rb->restype == 1071) {
      italic = (rb->resval.rlong & 0x1000000) != 0;
      bold = (rb->resval.rlong & 0x2000000) != 0;
    }
  }
  return Acad::eOk;
}

AcDbBlockTableRecord::AcDbBlockTableRecord()
    : AcDbBlockTableRecord(std::make_unique<AcDbImpObject>(TagList(std::vector<fx::dxf::Tag>{
          {0, "BLOCK_RECORD"}, {100, "AcDbSymbolTableRecord"}, {100, "AcDbBlockTableRecord"}, {2, ""}}))) {}
