// Opening, closing and adding objects, and saving the drawing.
#include <cstdio>

#include "host/dxf/dxf_header_variables.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/dxf_writer.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"
#include "host/dxf/object_factory.h"

using fx::dxf::kNoRecord;
using fx::dxf::RecordId;

namespace {

constexpr int64_t kLayerLocked = 4;

bool OnLockedLayer(AcDbImpDatabase& db, const fx::dxf::TagList& tags) {
  AcDbStub* layer = db.FindSymbol("LAYER", tags.GetString(8, tags.Body(), "0"));
  if (layer == nullptr) return false;
  fx::dxf::TagList layer_tags = db.TagsOf(layer);
  return (layer_tags.GetInt(70, layer_tags.Body(), 0) & kLayerLocked) != 0;
}

}  // namespace

Acad::ErrorStatus AcDbImpDatabase::Open(AcDbObject*& object, AcDbStub* stub, AcDb::OpenMode mode,
                                        bool open_erased) {
  object = nullptr;
  if (stub == nullptr) return Acad::eNullObjectId;
  if (stub->erased && !open_erased) return Acad::eWasErased;
  if (stub->writer) return Acad::eWasOpenForWrite;
  if (mode == AcDb::kForWrite && stub->readers > 0) return Acad::eWasOpenForRead;
  fx::dxf::TagList tags = TagsOf(stub);
  if (mode == AcDb::kForWrite && stub->kind == StubKind::kEntity && OnLockedLayer(*this, tags))
    return Acad::eOnLockedLayer;
  std::string_view table = TableNameOf(stub->owner);
  auto imp = std::make_unique<AcDbImpObject>(stub, mode, std::move(tags));
  object = fx::dxf::MakeTypedObject(std::move(imp), stub->kind, stub->type, table);
  if (mode == AcDb::kForWrite) stub->writer = true;
  else ++stub->readers;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbImpDatabase::Close(AcDbObject* object) {
  AcDbImpObject* imp = object->impl();
  AcDbStub* stub = imp->stub();
  if (stub == nullptr) return Acad::eNotInDatabase;
  if (imp->mode() == AcDb::kForWrite) {
    stub->writer = false;
    if (imp->modified() && stub->record != kNoRecord) {
      document_->ReplaceTags(stub->record, imp->tags().tags());
      MarkModified();
    }
    if (stub->erased && stub->record != kNoRecord && document_->is_live(stub->record)) {
      ForgetErased(stub, imp->tags());
      for (AcDbStub* child : SubEntities(stub)) document_->Erase(child->record);
      // The SEQEND that ends the sub-entities goes with them.
      RecordId next = document_->next(stub->record);
      if (next != kNoRecord && document_->type(next) == "SEQEND" && StubOf(next) &&
          StubOf(next)->owner == stub)
        document_->Erase(next);
      document_->Erase(stub->record);
      MarkModified();
    }
  } else if (stub->readers > 0) {
    --stub->readers;
  }
  return Acad::eOk;
}

void AcDbImpDatabase::ForgetErased(AcDbStub* stub, const fx::dxf::TagList& tags) {
  // An erased table record gives its name back.
  if (stub->kind == StubKind::kTableRecord) {
    for (fx::dxf::SymbolTable& table : tables_) {
      if (table.stub != stub->owner) continue;
      auto it = table.by_name.find(fx::dxf::FoldCase(tags.GetString(2, tags.Body())));
      if (it != table.by_name.end() && it->second == stub) table.by_name.erase(it);
    }
  }
  // Its extension dictionary goes with it.
  for (size_t i = 1; i + 1 < tags.size(); ++i) {
    if (tags[i].code != 102 || fx::dxf::TrimBlanks(tags[i].value) != "{ACAD_XDICTIONARY") continue;
    AcDbStub* dictionary = FindHandle(AcDbHandle(fx::dxf::TrimBlanks(tags[i + 1].value)));
    if (dictionary != nullptr && !dictionary->erased && dictionary->record != kNoRecord) {
      dictionary->erased = true;
      document_->Erase(dictionary->record);
    }
  }
}

AcDbStub* AcDbImpDatabase::AddRecord(fx::dxf::TagList& tags, RecordId before, StubKind kind,
                                     AcDbStub* owner, AcDbHandle owner_handle) {
  if (modern_) {
    tags.Insert(1, 5, NewHandle().ascii());
    if (!owner_handle.isNull()) tags.Insert(2, 330, owner_handle.ascii());
  } else {
    // Files before R13 know no subclass markers, owners or newer codes.
    for (size_t i = tags.size(); i-- > 1;) {
      int code = tags[i].code;
      if ((code >= 100 && code <= 102) || (code >= 300 && code <= 499)) tags.Erase(i, i + 1);
    }
    if (writes_handles_) tags.Insert(1, 5, NewHandle().ascii());
  }
  // A new object's strings are UTF-8 until it joins a drawing of another code page.
  if (!codec().is_utf8()) {
    for (size_t i = 1; i < tags.size(); ++i)
      if (fx::dxf::ValueTypeOf(tags[i].code) == fx::dxf::GroupValueType::kString)
        tags.SetValue(i, codec().Encode(tags[i].value));
  }
  RecordId record = document_->InsertBefore(before, tags.tags());
  MarkModified();
  return NewStub(record, kind, owner);
}

AcDbStub* AcDbImpDatabase::AddObject(AcDbObject* object, RecordId before, StubKind kind,
                                     AcDbStub* owner, AcDbHandle owner_handle) {
  AcDbImpObject* imp = object->impl();
  AcDbStub* stub = AddRecord(imp->mutable_tags(), before, kind, owner, owner_handle);
  imp->Attach(stub, AcDb::kForWrite);
  stub->writer = true;
  return stub;
}

RecordId AcDbImpDatabase::AddSection(std::string_view name) {
  const fx::dxf::Tag begin[] = {{0, "SECTION"}, {2, name}};
  const fx::dxf::Tag end[] = {{0, "ENDSEC"}};
  // Before ENTITIES, or before EOF, or at the very end.
  RecordId before = entities_begin_;
  if (before == kNoRecord && document_->last() != kNoRecord && document_->type(document_->last()) == "EOF")
    before = document_->last();
  document_->InsertBefore(before, begin);
  MarkModified();
  return document_->InsertBefore(before, end);
}

fx::dxf::SymbolTable* AcDbImpDatabase::EnsureTable(std::string_view name) {
  if (fx::dxf::SymbolTable* table = FindTable(name)) return table;
  if (tables_end_ == kNoRecord) tables_end_ = AddSection("TABLES");
  std::vector<fx::dxf::Tag> head = {{0, "TABLE"}, {2, name}};
  fx::dxf::TagList tags(head);
  if (modern_) tags.Insert(2, 100, "AcDbSymbolTable");
  tags.Append(70, "0");
  fx::dxf::SymbolTable& table = tables_.emplace_back();
  table.name = std::string(name);
  table.stub = AddRecord(tags, tables_end_, StubKind::kTable, nullptr, AcDbHandle());
  const fx::dxf::Tag end[] = {{0, "ENDTAB"}};
  table.end = document_->InsertBefore(tables_end_, end);
  return &table;
}

AcDbStub* AcDbImpDatabase::AddBlockDefinition(AcDbObject* record, std::string_view name,
                                              const AcGePoint3d& origin) {
  fx::dxf::SymbolTable* table = FindTable("BLOCK_RECORD");
  if (table == nullptr) return nullptr;
  if (blocks_end_ == kNoRecord) blocks_end_ = AddSection("BLOCKS");
  AcDbStub* record_stub = nullptr;
  if (modern_) {
    if (table->end == kNoRecord) return nullptr;
    record_stub = AddObject(record, table->end, StubKind::kTableRecord, table->stub, table->stub->handle);
  }
  auto point = [](fx::dxf::TagList& tags, const AcGePoint3d& p) {
    tags.Append(10, fx::dxf::FormatDouble(p.x));
    tags.Append(20, fx::dxf::FormatDouble(p.y));
    tags.Append(30, fx::dxf::FormatDouble(p.z));
  };
  std::vector<fx::dxf::Tag> begin_tags = {{0, "BLOCK"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbBlockBegin"}};
  fx::dxf::TagList begin(begin_tags);
  begin.Append(2, name);
  begin.Append(70, "0");
  point(begin, origin);
  begin.Append(3, name);
  begin.Append(1, "");
  AcDbHandle owner = record_stub ? record_stub->handle : AcDbHandle();
  AcDbStub* begin_stub = AddRecord(begin, blocks_end_, StubKind::kBlockBegin, nullptr, owner);
  std::vector<fx::dxf::Tag> end_tags = {{0, "ENDBLK"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbBlockEnd"}};
  fx::dxf::TagList end(end_tags);
  AcDbStub* end_stub = AddRecord(end, blocks_end_, StubKind::kBlockEnd, begin_stub, owner);
  if (record_stub == nullptr) {
    // Before R13 the BLOCK itself stands for the block table record.
    record_stub = begin_stub;
    begin_stub->owner = table->stub;
    record->impl()->mutable_tags() = fx::dxf::TagList(document_->tags(begin_stub->record));
    record->impl()->Attach(begin_stub, AcDb::kForWrite);
    begin_stub->writer = true;
  }
  fx::dxf::BlockContents& block = blocks_.emplace_back();
  block.record = record_stub;
  block.begin = begin_stub;
  block.end = end_stub;
  block.append_before = end_stub->record;
  block_of_record_[record_stub] = &block;
  return record_stub;
}

Acad::ErrorStatus AcDbImpDatabase::Save(const std::string& path, bool stamp_update_time,
                                        std::string* error) {
  // Only DXF is written, and never over a DWG or to a name that says DWG.
  if (fx::dxf::IsDwgTarget(path)) {
    if (error != nullptr) {
      *error = path + " is a DWG file name or a DWG drawing; drawings are saved as DXF only";
    }
    return Acad::eNotApplicable;
  }
  // Drawings that write no handles get no handle seed either.
  if (modified_ && writes_handles_) {
    std::string seed = AcDbHandle(next_handle_).ascii();
    if (fx::dxf::GetHeaderValue(*document_, "$HANDSEED") != seed) {
      fx::dxf::Tag value{5, seed};
      fx::dxf::SetHeaderVariable(*document_, "$HANDSEED", {&value, 1});
    }
  }
  if (stamp_update_time) {
    // A headless host has no time zone of its own: local time is universal time.
    char julian[32];
    std::snprintf(julian, sizeof julian, "%.9f", AcDbDate::now().julian());
    fx::dxf::Tag value{40, julian};
    for (std::string_view name : {"$TDUPDATE", "$TDUUPDATE"})
      if (!fx::dxf::GetHeaderVariable(*document_, name).empty())
        fx::dxf::SetHeaderVariable(*document_, name, {&value, 1});
  }
  fx::dxf::Status status = fx::dxf::SaveAtomic(*document_, path, fx::dxf::SaveOptions{});
  if (!status.ok()) {
    if (error != nullptr) *error = status.message();
    return Acad::eFileWriteError;
  }
  modified_ = false;
  return Acad::eOk;
}
