#include "host/dxf/cleanup/eraser.h"

#include <algorithm>

#include "host/dxf/cleanup/record_walk.h"
#include "host/dxf/dxf_values.h"

namespace fx::cleanup {

using fx::dxf::kNoRecord;

Eraser::Eraser(AcDbImpDatabase& db) : db_(db) {
  ForEachRecord(db.document(), [&](const RecordView& record) {
    if (record.section != Section::kObjects) return;
    size_t owner = OwnerTagIndex(record.tags);
    if (owner == record.tags.size()) return;
    AcDbStub* stub = db_.StubOf(record.id);
    uint64_t handle = HandleValue(record.tags[owner].value);
    if (stub != nullptr && handle != 0) owned_[handle].push_back(stub);
  });
}

std::vector<AcDbStub*> SubRecords(const AcDbImpDatabase& db, const AcDbStub* parent) {
  std::vector<AcDbStub*> children;
  if (parent->record == kNoRecord) return children;
  const fx::dxf::Document& doc = db.document();
  for (fx::dxf::RecordId r = doc.next(parent->record); r != kNoRecord; r = doc.next(r)) {
    AcDbStub* stub = db.StubOf(r);
    if (stub == nullptr || stub->owner != parent) break;
    children.push_back(stub);
  }
  return children;
}

void Eraser::EraseRecord(AcDbStub* stub) {
  stub->erased = true;
  if (stub->record != kNoRecord) db_.document().Erase(stub->record);
  db_.MarkModified();
  if (!stub->synthetic_handle) EraseOwnedBy(stub->handle.value());
}

void Eraser::EraseOwnedBy(uint64_t handle) {
  // Ownership is a tree; a stack instead of recursion keeps deep trees safe.
  std::vector<uint64_t> pending{handle};
  while (!pending.empty()) {
    auto it = owned_.find(pending.back());
    pending.pop_back();
    if (it == owned_.end()) continue;
    for (AcDbStub* object : it->second) {
      if (object->erased || IsOpen(object)) continue;
      object->erased = true;
      db_.document().Erase(object->record);
      pending.push_back(object->handle.value());
    }
  }
}

bool Eraser::EraseEntity(AcDbStub* entity) {
  if (entity == nullptr || entity->erased || IsOpen(entity)) return false;
  std::vector<AcDbStub*> children = SubRecords(db_, entity);
  for (const AcDbStub* child : children)
    if (IsOpen(child)) return false;
  for (AcDbStub* child : children)
    if (!child->erased) EraseRecord(child);
  EraseRecord(entity);
  return true;
}

bool Eraser::EraseObject(AcDbStub* object) {
  if (object == nullptr || object->erased || IsOpen(object)) return false;
  EraseRecord(object);
  return true;
}

void Eraser::RemoveFromTable(fx::dxf::SymbolTable& table, AcDbStub* record) {
  std::erase(table.entries, record);
  for (auto it = table.by_name.begin(); it != table.by_name.end();) {
    it = it->second == record ? table.by_name.erase(it) : std::next(it);
  }
  // The TABLE record counts its entries; tables made up in memory have none.
  if (table.stub == nullptr || table.stub->record == kNoRecord) return;
  fx::dxf::TagList tags(db_.document().tags(table.stub->record));
  size_t count = tags.Find(70);
  if (count == fx::dxf::TagList::kNotFound) return;
  tags.SetValue(count, std::to_string(table.entries.size()));
  db_.document().ReplaceTags(table.stub->record, tags.tags());
}

bool Eraser::EraseTableRecord(fx::dxf::SymbolTable& table, AcDbStub* record) {
  if (record == nullptr || record->erased || IsOpen(record)) return false;
  EraseRecord(record);
  RemoveFromTable(table, record);
  return true;
}

bool Eraser::EraseBlock(fx::dxf::SymbolTable& block_table, AcDbStub* record) {
  if (record == nullptr || record->erased || IsOpen(record)) return false;
  fx::dxf::BlockContents* block = db_.BlockOf(record);
  std::vector<AcDbStub*> parts;
  if (block != nullptr) {
    for (AcDbStub* stub : {block->begin, block->end})
      if (stub != nullptr && stub != record) parts.push_back(stub);
    for (AcDbStub* entity : block->entities) {
      if (entity->erased) continue;
      parts.push_back(entity);
      for (AcDbStub* child : SubRecords(db_, entity)) parts.push_back(child);
    }
  }
  if (std::any_of(parts.begin(), parts.end(), IsOpen)) return false;
  for (AcDbStub* part : parts)
    if (!part->erased) EraseRecord(part);
  EraseRecord(record);
  RemoveFromTable(block_table, record);
  return true;
}

}  // namespace fx::cleanup
