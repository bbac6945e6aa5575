// The headless host's drawing: a DXF document and the index that turns its
// records into objects with ids — handles, tables with their records by
// name, block definitions with their entities, the objects section.
#ifndef FLOORXPORT_HOST_DXF_IMP_DATABASE_H_
#define FLOORXPORT_HOST_DXF_IMP_DATABASE_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/database.h"
#include "host/dxf/db_stub.h"
#include "host/dxf/dwg_input.h"
#include "host/dxf/dxf_document.h"
#include "host/dxf/handle_index.h"
#include "host/dxf/tag_list.h"

namespace fx::dxf {

// Symbol names hashed and compared as FoldCase makes them equal (blanks trimmed, ASCII
// letters folded), so that a name as a record stores it finds its entry without a copy.
struct FoldedNameHash {
  using is_transparent = void;
  size_t operator()(std::string_view name) const;
};
struct FoldedNameEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const;
};

// A symbol table: its TABLE record, its ENDTAB, its entries in order.
struct SymbolTable {
  std::string name;  // "LAYER", "BLOCK_RECORD", ...
  AcDbStub* stub = nullptr;
  RecordId end = kNoRecord;  // ENDTAB: new entries go before it
  std::vector<AcDbStub*> entries;
  // Keys are lower-case names (FoldCase); any spelling of a name finds them.
  std::unordered_map<std::string, AcDbStub*, FoldedNameHash, FoldedNameEqual> by_name;
};

// A block definition: the records between BLOCK and ENDBLK, or for model
// space and the active paper space the ENTITIES section.
struct BlockContents {
  AcDbStub* record = nullptr;   // the block table record (BLOCK in files without one)
  AcDbStub* begin = nullptr;    // BLOCK
  AcDbStub* end = nullptr;      // ENDBLK
  RecordId append_before = kNoRecord;
  std::vector<AcDbStub*> entities;  // top-level entities in order (erased ones too)
};

}  // namespace fx::dxf

class AcDbImpDatabase {
 public:
  // Indexes a loaded document. Returns nullptr and sets *error for a drawing
  // whose structure is broken (duplicate handles).
  static std::unique_ptr<AcDbImpDatabase> Build(std::unique_ptr<fx::dxf::Document> document,
                                                std::string* error);

  fx::dxf::Document& document() { return *document_; }
  const fx::dxf::Document& document() const { return *document_; }
  const fx::dxf::TextCodec& codec() const { return document_->codec(); }
  AcDbDatabase* api() const { return api_; }
  void set_api(AcDbDatabase* api) { api_ = api; }

  // Whether records of this drawing carry subclass markers and owners (R13 on).
  bool has_subclass_markers() const { return modern_; }

  AcDbStub* FindHandle(AcDbHandle handle) const;
  AcDbStub* StubOf(fx::dxf::RecordId record) const;
  fx::dxf::SymbolTable* FindTable(std::string_view name);
  // The name of the table whose TABLE record `table_stub` stands for, as FindTable finds it;
  // empty for anything else.
  std::string_view TableNameOf(const AcDbStub* table_stub);
  fx::dxf::BlockContents* BlockOf(const AcDbStub* block_record);
  AcDbStub* FindSymbol(std::string_view table, std::string_view name);
  AcDbStub* model_space() const { return model_space_; }
  AcDbStub* named_objects_dictionary() const { return named_objects_; }
  fx::dxf::RecordId header_record() const { return header_; }

  // The working tags of a stub (synthetic stubs have tags made in memory), read in place
  // until their first edit.
  fx::dxf::TagList TagsOf(const AcDbStub* stub) const;
  // Sub-entities of an INSERT or POLYLINE (ATTRIB, VERTEX; not SEQEND).
  std::vector<AcDbStub*> SubEntities(const AcDbStub* parent) const;

  // Opening and closing.
  Acad::ErrorStatus Open(AcDbObject*& object, AcDbStub* stub, AcDb::OpenMode mode, bool open_erased);
  // Writes back a modified object and releases the open state.
  Acad::ErrorStatus Close(AcDbObject* object);

  // Adding: gives a new object a handle and owner and puts its record
  // before `before`; returns its stub. The object stays open for write.
  AcDbStub* AddObject(AcDbObject* object, fx::dxf::RecordId before, StubKind kind, AcDbStub* owner,
                      AcDbHandle owner_handle);
  // The same for a record made by the host itself (block begin and end).
  AcDbStub* AddRecord(fx::dxf::TagList& tags, fx::dxf::RecordId before, StubKind kind, AcDbStub* owner,
                      AcDbHandle owner_handle);
  // Adds a block definition for a new block table record named `name`
  // (encoded): its table record (files from R13 on) and its BLOCK and ENDBLK
  // records. Returns the stub that stands for the block table record, or
  // nullptr when the drawing has no BLOCKS section.
  AcDbStub* AddBlockDefinition(AcDbObject* record, std::string_view name, const AcGePoint3d& origin);
  // The table named `name`, made (with a TABLES section if needed) when the
  // drawing has none; nullptr only when it cannot be made.
  fx::dxf::SymbolTable* EnsureTable(std::string_view name);
  AcDbHandle NewHandle();
  fx::dxf::RecordId objects_end() const { return objects_end_; }
  // Whether the drawing was changed since it was read.
  bool modified() const { return modified_; }
  void MarkModified() { modified_ = true; }
  // Set for a drawing read from a DWG (converted to DXF on reading).
  const fx::dxf::DwgSource* dwg_source() const { return dwg_source_.get(); }
  void set_dwg_source(fx::dxf::DwgSource source) {
    dwg_source_ = std::make_unique<fx::dxf::DwgSource>(std::move(source));
  }

  // Writes the drawing whole or not at all; updates $HANDSEED and stamps
  // $TDUPDATE/$TDUUPDATE when `stamp_update_time`.
  Acad::ErrorStatus Save(const std::string& path, bool stamp_update_time, std::string* error);

 private:
  AcDbImpDatabase() = default;
  // Walks the records once, making a stub for each object.
  void Index();
  AcDbStub* NewStub(fx::dxf::RecordId record, StubKind kind, AcDbStub* owner);
  AcDbStub* SyntheticStub(StubKind kind, std::vector<fx::dxf::Tag> tags);
  void LinkBlocks();
  // Drops what an object erased at close leaves behind: its name in its
  // table's index, its extension dictionary.
  void ForgetErased(AcDbStub* stub, const fx::dxf::TagList& tags);
  // Adds an empty section before the ENTITIES section (or the end); returns its ENDSEC.
  fx::dxf::RecordId AddSection(std::string_view name);

  std::unique_ptr<fx::dxf::Document> document_;
  AcDbDatabase* api_ = nullptr;
  bool modern_ = true;
  bool writes_handles_ = true;
  bool modified_ = false;
  std::unique_ptr<fx::dxf::DwgSource> dwg_source_;

  std::deque<AcDbStub> stubs_;  // deque: stubs never move, ids point at them
  fx::dxf::HandleIndex by_handle_;
  bool indexed_ = false;  // by_handle_ is sealed
  std::vector<AcDbStub*> by_record_;
  std::unordered_map<const AcDbStub*, std::vector<fx::dxf::Tag>> synthetic_tags_;
  std::deque<fx::dxf::SymbolTable> tables_;
  std::deque<fx::dxf::BlockContents> blocks_;
  std::unordered_map<const AcDbStub*, fx::dxf::BlockContents*> block_of_record_;
  AcDbStub* model_space_ = nullptr;
  AcDbStub* paper_space_ = nullptr;
  AcDbStub* named_objects_ = nullptr;
  fx::dxf::RecordId header_ = fx::dxf::kNoRecord;
  fx::dxf::RecordId entities_end_ = fx::dxf::kNoRecord;
  fx::dxf::RecordId blocks_end_ = fx::dxf::kNoRecord;
  fx::dxf::RecordId tables_end_ = fx::dxf::kNoRecord;
  fx::dxf::RecordId entities_begin_ = fx::dxf::kNoRecord;
  fx::dxf::RecordId objects_end_ = fx::dxf::kNoRecord;
  uint64_t next_handle_ = 1;
  uint64_t next_synthetic_ = fx::dxf::kFirstSyntheticHandle;
};

namespace fx::dxf {
// Helpers for the typed classes.
const TextCodec& CodecOf(const AcDbObject& object);
AcDbObjectId BlockRecordIdByName(AcDbDatabase* database, std::string_view name);
AcDbObjectId SymbolIdByName(AcDbDatabase* database, std::string_view table, std::string_view name);
std::vector<AcDbObjectId> SubEntityIds(const AcDbObject& object);
// Lower-case ASCII letters, for case-insensitive symbol names.
std::string FoldCase(std::string_view name);
}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_IMP_DATABASE_H_
