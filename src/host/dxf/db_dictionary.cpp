// Dictionaries (pairs of 3 name / 350 or 360 handle) and xrecords.
#include "host/db_dictionary.h"


#include "host/database.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"
#include "host/dxf/resbuf_tags.h"

using fx::dxf::TagList;

namespace {

bool IsEntryHandleCode(int code) { return code == 350 || code == 360; }

// Index of the 3-tag of the entry `name`, or kNotFound.
size_t FindEntry(const TagList& tags, std::string_view folded_name) {
  for (size_t i = 1; i + 1 < tags.XDataBegin(); ++i)
    if (tags[i].code == 3 && IsEntryHandleCode(tags[i + 1].code) && fx::dxf::FoldCase(tags[i].value) == folded_name)
      return i;
  return TagList::kNotFound;
}

}  // namespace

AcDbDictionary::AcDbDictionary()
    : AcDbDictionary(std::make_unique<AcDbImpObject>(TagList(std::vector<fx::dxf::Tag>{
          {0, "DICTIONARY"}, {100, "AcDbDictionary"}, {281, "1"}}))) {}

std::vector<std::pair<std::string, AcDbObjectId>> AcDbDictionary::entries() const {
  std::vector<std::pair<std::string, AcDbObjectId>> result;
  AcDbImpDatabase* db = impl()->database();
  const TagList& tags = impl()->tags();
  for (size_t i = 1; i + 1 < tags.XDataBegin(); ++i) {
    if (tags[i].code != 3 || !IsEntryHandleCode(tags[i + 1].code)) continue;
    AcDbStub* stub = db ? db->FindHandle(AcDbHandle(fx::dxf::TrimBlanks(tags[i + 1].value))) : nullptr;
    if (stub != nullptr && stub->erased) continue;
    result.emplace_back(db ? db->codec().Decode(tags[i].value) : std::string(tags[i].value), AcDbObjectId(stub));
  }
  return result;
}

unsigned AcDbDictionary::numEntries() const { return static_cast<unsigned>(entries().size()); }

Acad::ErrorStatus AcDbDictionary::getAt(const char* name, AcDbObjectId& id) const {
  id = AcDbObjectId();
  std::string folded = fx::dxf::FoldCase(name);
  for (const auto& [entry, entry_id] : entries()) {
    if (fx::dxf::FoldCase(entry) != folded) continue;
    id = entry_id;
    return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
  }
  return Acad::eKeyNotFound;
}

bool AcDbDictionary::has(const char* name) const {
  AcDbObjectId id;
  return getAt(name, id) == Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::setAt(const char* name, AcDbObject* object, AcDbObjectId& id) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcDbImpDatabase* db = impl()->database();
  if (db == nullptr || object == nullptr || !object->isNewObject()) return Acad::eInvalidInput;
  if (db->objects_end() == fx::dxf::kNoRecord) return Acad::eNotApplicable;
  if (has(name)) remove(name);
  if (db->has_subclass_markers()) {
    // The owner's reactor group comes right after the handle the database adds.
    TagList& object_tags = object->impl()->mutable_tags();
    object_tags.Insert(1, 102, "{ACAD_REACTORS");
    object_tags.Insert(2, 330, handle().ascii());
    object_tags.Insert(3, 102, "}");
  }
  AcDbStub* stub = db->AddObject(object, db->objects_end(), StubKind::kObject, nullptr, handle());
  TagList& tags = impl()->mutable_tags();
  size_t at = tags.XDataBegin();
  tags.Insert(at, 3, db->codec().Encode(name));
  tags.Insert(at + 1, 350, stub->handle.ascii());
  id = AcDbObjectId(stub);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const char* name) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcDbImpDatabase* db = impl()->database();
  std::string folded = fx::dxf::FoldCase(db ? db->codec().Encode(name) : std::string(name));
  size_t at = FindEntry(impl()->tags(), folded);
  if (at == TagList::kNotFound) return Acad::eKeyNotFound;
  AcDbObjectId removed(db ? db->FindHandle(AcDbHandle(fx::dxf::TrimBlanks(impl()->tags()[at + 1].value))) : nullptr);
  impl()->mutable_tags().Erase(at, at + 2);
  AcDbObject* object = nullptr;
  if (!removed.isNull() && acdbOpenAcDbObject(object, removed, AcDb::kForWrite) == Acad::eOk) {
    object->erase();
    object->close();
  }
  return Acad::eOk;
}

AcDbXrecord::AcDbXrecord()
    : AcDbXrecord(std::make_unique<AcDbImpObject>(TagList(std::vector<fx::dxf::Tag>{
          {0, "XRECORD"}, {100, "AcDbXrecord"}, {280, "1"}}))) {}

namespace {
// An xrecord's data: every tag after its marker (and its 280 cloning flag).
TagList::Range XrecordData(const TagList& tags) {
  TagList::Range range = tags.Subclass("AcDbXrecord");
  if (!range.empty() && tags[range.begin].code == 280) ++range.begin;
  range.end = tags.size();
  return range;
}
}  // namespace

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** chain) const {
  *chain = fx::dxf::TagsToChain(impl()->tags(), XrecordData(impl()->tags()), fx::dxf::CodecOf(*this));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& chain) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  std::vector<std::pair<int, std::string>> items;
  if (!fx::dxf::ChainToTags(&chain, fx::dxf::CodecOf(*this), &items)) return Acad::eInvalidInput;
  TagList& tags = impl()->mutable_tags();
  TagList::Range range = XrecordData(tags);
  tags.Erase(range.begin, range.end);
  for (const auto& [code, value] : items) tags.Append(code, value);
  return Acad::eOk;
}
