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

std::string_view TableNameOf(AcDbImpDatabase& db, const AcDbStub* table_stub) {
  if (table_stub == nullptr) return {};
  for (std::string_view name : {"LAYER", "BLOCK_RECORD", "VPORT", "APPID", "LTYPE", "STYLE", "VIEW",
                                "UCS", "DIMSTYLE"}) {
    fx::dxf::SymbolTable* table = db.FindTable(name);
    if (table != nullptr && table->stub == table_stub) return name;
  }
  return {};
}

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
  std::string_view table = TableNameOf(*this, stub->owner);
  auto imp = std::make_unique<AcDbImpObject>(stub, mode, std::move(tags));
  object = fx::dxf::MakeTypedObject(std::move(imp), stub->kind, table);
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

AcDbStub* AcDbImpDatabase::AddObject(AcDbObject* object, RecordId before, StubKind kind,
                                     AcDbStub* owner, AcDbHandle owner_handle) {
  AcDbImpObject* imp = object->impl();
  fx::dxf::TagList& tags = imp->mutable_tags();
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
  AcDbStub* stub = NewStub(record, kind, owner, nullptr);
  imp->Attach(stub, AcDb::kForWrite);
  stub->writer = true;
  MarkModified();
  return stub;
}

Acad::ErrorStatus AcDbImpDatabase::Save(const std::string& path, bool stamp_update_time,
                                        std::string* error) {
  if (modified_) {
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
