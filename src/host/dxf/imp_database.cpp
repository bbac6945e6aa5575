#include "host/dxf/imp_database.h"

#include <algorithm>
#include <cctype>

#include "host/dxf/dxf_header_variables.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_object.h"
#include "host/dxf/object_factory.h"

namespace fx::dxf {

std::string FoldCase(std::string_view name) {
  std::string folded(TrimBlanks(name));
  for (char& c : folded) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return folded;
}

namespace {

char FoldChar(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

size_t FoldedNameHash::operator()(std::string_view name) const {
  // FNV-1a over the folded bytes.
  uint64_t hash = 14695981039346656037ULL;
  for (char c : TrimBlanks(name)) hash = (hash ^ static_cast<unsigned char>(FoldChar(c))) * 1099511628211ULL;
  return static_cast<size_t>(hash);
}

bool FoldedNameEqual::operator()(std::string_view a, std::string_view b) const {
  a = TrimBlanks(a);
  b = TrimBlanks(b);
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (FoldChar(a[i]) != FoldChar(b[i])) return false;
  return true;
}

namespace {

std::string_view ValueOf(TagRange tags, int code) {
  for (size_t i = 1; i < tags.size(); ++i)
    if (tags.code(i) == code) return TrimBlanks(tags[i].value);
  return {};
}

bool IsSubEntityType(std::string_view type) {
  return type == "ATTRIB" || type == "VERTEX" || type == "SEQEND";
}

}  // namespace
}  // namespace fx::dxf

using fx::dxf::kNoRecord;
using fx::dxf::RecordId;
using fx::dxf::Tag;

std::unique_ptr<AcDbImpDatabase> AcDbImpDatabase::Build(std::unique_ptr<fx::dxf::Document> document,
                                                         std::string* error) {
  std::unique_ptr<AcDbImpDatabase> db(new AcDbImpDatabase);
  db->document_ = std::move(document);
  db->modern_ = db->document_->acadver() > std::string_view("AC1009");
  db->Index();
  auto [first, again] = db->by_handle_.Seal();
  if (first != nullptr) {
    if (error != nullptr) {
      const fx::dxf::Document& doc = *db->document_;
      *error = doc.name() + ":" + std::to_string(doc.source_line(again->record)) + ": duplicate handle " +
               again->handle.ascii() + " (first used at line " + std::to_string(doc.source_line(first->record)) + ")";
    }
    return nullptr;
  }
  db->indexed_ = true;
  return db;
}

AcDbStub* AcDbImpDatabase::NewStub(RecordId record, StubKind kind, AcDbStub* owner) {
  AcDbStub& stub = stubs_.emplace_back();
  stub.database = this;
  stub.record = record;
  stub.kind = kind;
  stub.owner = owner;
  if (record != kNoRecord) {
    if (by_record_.size() <= record) by_record_.resize(record + 1, nullptr);
    by_record_[record] = &stub;
    auto tags = document_->tags(record);
    const std::string_view type = document_->type(record);
    stub.type = fx::dxf::RecordTypeOf(tags[0].value);  // as stored: a padded type opens generic
    std::string_view hex = fx::dxf::ValueOf(tags, type == "DIMSTYLE" ? 105 : 5);
    AcDbHandle handle(hex);
    if (!handle.isNull() && handle.value() < fx::dxf::kFirstSyntheticHandle) {
      stub.handle = handle;
      next_handle_ = std::max(next_handle_, handle.value() + 1);
    }
  }
  if (stub.handle.isNull()) {
    stub.handle = AcDbHandle(next_synthetic_++);
    stub.synthetic_handle = true;
  }
  if (indexed_) by_handle_.Insert(&stub);
  else by_handle_.Add(&stub);
  return &stub;
}

AcDbStub* AcDbImpDatabase::SyntheticStub(StubKind kind, std::vector<Tag> tags) {
  AcDbStub* stub = NewStub(kNoRecord, kind, nullptr);
  synthetic_tags_[stub] = std::move(tags);
  return stub;
}

void AcDbImpDatabase::Index() {
  const fx::dxf::Document& doc = *document_;
  // Every record but the section markers gets a stub: grow once.
  by_record_.reserve(doc.record_count());
  by_handle_.Reserve(doc.record_count());
  std::string_view section;
  fx::dxf::SymbolTable* table = nullptr;
  fx::dxf::BlockContents* block = nullptr;
  AcDbStub* parent = nullptr;  // an INSERT or POLYLINE whose sub-entities follow
  std::vector<AcDbStub*> entities_section;
  for (RecordId r = doc.first(); r != kNoRecord; r = doc.next(r)) {
    std::string_view type = doc.type(r);
    auto tags = doc.tags(r);
    if (type == "SECTION") {
      section = fx::dxf::ValueOf(tags, 2);
      if (section == "HEADER") header_ = r;
      if (section == "ENTITIES") entities_begin_ = r;
      continue;
    }
    if (type == "ENDSEC") {
      if (section == "ENTITIES") entities_end_ = r;
      if (section == "BLOCKS") blocks_end_ = r;
      if (section == "TABLES") tables_end_ = r;
      if (section == "OBJECTS") objects_end_ = r;
      section = {};
      continue;
    }
    if (section == "TABLES") {
      if (type == "TABLE") {
        table = &tables_.emplace_back();
        table->name = std::string(fx::dxf::ValueOf(tags, 2));
        table->stub = NewStub(r, StubKind::kTable, nullptr);
      } else if (type == "ENDTAB") {
        if (table != nullptr) table->end = r;
        table = nullptr;
      } else if (table != nullptr) {
        AcDbStub* entry = NewStub(r, StubKind::kTableRecord, table->stub);
        table->entries.push_back(entry);
        table->by_name.emplace(fx::dxf::FoldCase(fx::dxf::ValueOf(tags, 2)), entry);
      }
      continue;
    }
    bool in_blocks = section == "BLOCKS";
    if (in_blocks && type == "BLOCK") {
      block = &blocks_.emplace_back();
      block->begin = NewStub(r, StubKind::kBlockBegin, nullptr);
      parent = nullptr;
      continue;
    }
    if (in_blocks && type == "ENDBLK") {
      if (block != nullptr) {
        block->end = NewStub(r, StubKind::kBlockEnd, block->begin);
        block->append_before = r;
      }
      block = nullptr;
      continue;
    }
    if ((in_blocks && block != nullptr) || section == "ENTITIES") {
      if (parent != nullptr && fx::dxf::IsSubEntityType(type)) {
        NewStub(r, StubKind::kEntity, parent);
        if (type == "SEQEND") parent = nullptr;
        continue;
      }
      AcDbStub* entity = NewStub(r, StubKind::kEntity, nullptr);
      if (in_blocks) block->entities.push_back(entity);
      else entities_section.push_back(entity);
      bool has_children = (type == "INSERT" && fx::dxf::ValueOf(tags, 66) == "1") || type == "POLYLINE";
      parent = has_children ? entity : nullptr;
      continue;
    }
    if (section == "OBJECTS") {
      AcDbStub* object = NewStub(r, StubKind::kObject, nullptr);
      if (named_objects_ == nullptr) named_objects_ = object;
    }
  }
  LinkBlocks();
  // Entities of the ENTITIES section belong to model space, or with group
  // 67 set to the active paper space.
  for (AcDbStub* entity : entities_section) {
    bool paper = fx::dxf::ValueOf(document_->tags(entity->record), 67) == "1";
    AcDbStub* space = paper && paper_space_ ? paper_space_ : model_space_;
    entity->owner = space;
    if (fx::dxf::BlockContents* contents = BlockOf(space)) contents->entities.push_back(entity);
  }
  writes_handles_ = modern_ || next_handle_ > 1;
  // New handles continue from $HANDSEED, or past the largest handle in use.
  AcDbHandle seed(fx::dxf::GetHeaderValue(doc, "$HANDSEED"));
  next_handle_ = std::max(next_handle_, seed.value());
}

void AcDbImpDatabase::LinkBlocks() {
  fx::dxf::SymbolTable* records = FindTable("BLOCK_RECORD");
  if (records == nullptr) {
    // Files before R13 have no block table: the BLOCK records stand for it.
    fx::dxf::SymbolTable& table = tables_.emplace_back();
    table.name = "BLOCK_RECORD";
    table.stub = SyntheticStub(StubKind::kTable, {{0, "TABLE"}, {2, "BLOCK_RECORD"}});
    records = &table;
    for (fx::dxf::BlockContents& block : blocks_) {
      block.record = block.begin;
      block.begin->owner = table.stub;
      table.entries.push_back(block.begin);
      table.by_name.emplace(fx::dxf::FoldCase(fx::dxf::ValueOf(document_->tags(block.begin->record), 2)),
                            block.begin);
    }
  } else {
    for (fx::dxf::BlockContents& block : blocks_) {
      auto it = records->by_name.find(fx::dxf::FoldCase(fx::dxf::ValueOf(document_->tags(block.begin->record), 2)));
      if (it != records->by_name.end()) block.record = it->second;
    }
  }
  for (fx::dxf::BlockContents& block : blocks_) {
    if (block.record == nullptr) continue;
    block_of_record_[block.record] = &block;
    for (AcDbStub* entity : block.entities) entity->owner = block.record;
  }
  auto space = [&](std::string_view name, AcDbStub*& stub) {
    auto it = records->by_name.find(fx::dxf::FoldCase(name));
    if (it != records->by_name.end()) {
      stub = it->second;
    } else {
      // Model space has no BLOCK in files before R13.
      stub = SyntheticStub(StubKind::kBlockBegin, {{0, "BLOCK"}, {2, name == "*Model_Space" ? "*Model_Space" : "*Paper_Space"}, {70, "0"}});
      stub->owner = records->stub;
      records->entries.push_back(stub);
      records->by_name.emplace(fx::dxf::FoldCase(name), stub);
    }
    fx::dxf::BlockContents*& contents = block_of_record_[stub];
    if (contents == nullptr) {
      contents = &blocks_.emplace_back();
      contents->record = stub;
    }
    // Their entities live in the ENTITIES section, whatever their BLOCK holds.
    contents->append_before = entities_end_;
  };
  space("*Model_Space", model_space_);
  space("*Paper_Space", paper_space_);
}

AcDbStub* AcDbImpDatabase::FindHandle(AcDbHandle handle) const {
  return by_handle_.Find(handle.value());
}

AcDbStub* AcDbImpDatabase::StubOf(RecordId record) const {
  return record < by_record_.size() ? by_record_[record] : nullptr;
}

fx::dxf::SymbolTable* AcDbImpDatabase::FindTable(std::string_view name) {
  for (fx::dxf::SymbolTable& table : tables_)
    if (table.name == name) return &table;
  return nullptr;
}

fx::dxf::BlockContents* AcDbImpDatabase::BlockOf(const AcDbStub* block_record) {
  auto it = block_of_record_.find(block_record);
  return it == block_of_record_.end() ? nullptr : it->second;
}

std::string_view AcDbImpDatabase::TableNameOf(const AcDbStub* table_stub) {
  if (table_stub == nullptr || table_stub->kind != StubKind::kTable) return {};
  for (const fx::dxf::SymbolTable& table : tables_) {
    if (table.stub == table_stub) return FindTable(table.name) == &table ? std::string_view(table.name) : std::string_view();
  }
  return {};
}

AcDbStub* AcDbImpDatabase::FindSymbol(std::string_view table_name, std::string_view name) {
  fx::dxf::SymbolTable* table = FindTable(table_name);
  if (table == nullptr) return nullptr;
  auto it = table->by_name.find(name);
  return it == table->by_name.end() || it->second->erased ? nullptr : it->second;
}

fx::dxf::TagList AcDbImpDatabase::TagsOf(const AcDbStub* stub) const {
  if (stub->record == kNoRecord) {
    auto it = synthetic_tags_.find(stub);
    return it == synthetic_tags_.end() ? fx::dxf::TagList() : fx::dxf::TagList::View(it->second);
  }
  return fx::dxf::TagList::View(document_->tags(stub->record));
}

std::vector<AcDbStub*> AcDbImpDatabase::SubEntities(const AcDbStub* parent) const {
  std::vector<AcDbStub*> children;
  if (parent->record == kNoRecord) return children;
  for (RecordId r = document_->next(parent->record); r != kNoRecord; r = document_->next(r)) {
    AcDbStub* stub = StubOf(r);
    if (stub == nullptr || stub->owner != parent) break;
    if (document_->type(r) == "SEQEND") break;
    if (!stub->erased) children.push_back(stub);
  }
  return children;
}

AcDbHandle AcDbImpDatabase::NewHandle() {
  MarkModified();
  return AcDbHandle(next_handle_++);
}
