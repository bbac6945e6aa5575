#include "host/dxf/cleanup/purge.h"

#include <array>
#include <set>
#include <string_view>

#include "host/dxf/cleanup/eraser.h"
#include "host/dxf/cleanup/references.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_database.h"

namespace fx::cleanup {
namespace {

using fx::dxf::FoldCase;

// Flags (group 70) of records from external references: dependent on one
// (16) and, for blocks, the reference itself (4) or an overlay (8).
constexpr int64_t kXrefDependent = 16;
constexpr int64_t kBlockXref = 4 | 8 | 16 | 32;

struct KindInfo {
  PurgeKind kind;
  const char* table;
  std::array<std::string_view, 3> kept;  // folded names never purged
};

constexpr KindInfo kKinds[] = {
    {PurgeKind::kBlock, "BLOCK_RECORD", {}},
    {PurgeKind::kLayer, "LAYER", {"0", "defpoints"}},
    {PurgeKind::kLinetype, "LTYPE", {"bylayer", "byblock", "continuous"}},
    {PurgeKind::kTextStyle, "STYLE", {"standard"}},
};

class Purger {
 public:
  Purger(AcDbImpDatabase& db, const PurgeOptions& options)
      : db_(db), options_(options), eraser_(db) {}

  PurgeResult Run() {
    for (;;) {
      ++result_.passes;
      refs_ = CollectReferences(db_.document());
      int before = result_.total();
      for (const KindInfo& info : kKinds)
        if (Wanted(info.kind)) PurgeKindOnce(info);
      if (result_.total() == before) return result_;
    }
  }

 private:
  bool Wanted(PurgeKind kind) const {
    switch (kind) {
      case PurgeKind::kBlock: return options_.blocks;
      case PurgeKind::kLayer: return options_.layers;
      case PurgeKind::kLinetype: return options_.linetypes;
      case PurgeKind::kTextStyle: return options_.text_styles;
    }
    return false;
  }

  void PurgeKindOnce(const KindInfo& info) {
    fx::dxf::SymbolTable* table = db_.FindTable(info.table);
    if (table == nullptr) return;
    // Erasing changes the table's entries: walk a copy.
    const std::vector<AcDbStub*> entries = table->entries;
    for (AcDbStub* record : entries) {
      if (record->erased || declined_.count(record)) continue;
      fx::dxf::TagList tags = db_.TagsOf(record);
      std::string_view stored = fx::dxf::TrimBlanks(tags.GetString(2, tags.Body()));
      if (!Purgeable(info, record, tags, stored)) continue;
      std::string name = db_.codec().Decode(stored);
      if (options_.matches && !options_.matches(name)) continue;
      if (options_.confirm && !options_.confirm(info.kind, name)) {
        declined_.insert(record);
        continue;
      }
      bool erased = info.kind == PurgeKind::kBlock ? eraser_.EraseBlock(*table, record)
                                                   : eraser_.EraseTableRecord(*table, record);
      if (!erased) continue;
      Count(info.kind);
      if (options_.purged) options_.purged(info.kind, name);
    }
  }

  bool Purgeable(const KindInfo& info, const AcDbStub* record, const fx::dxf::TagList& tags,
                 std::string_view stored) const {
    std::string folded = FoldCase(stored);
    if (folded.empty() || folded.find('|') != std::string::npos) return false;
    for (std::string_view kept : info.kept)
      if (!kept.empty() && folded == kept) return false;
    if (!record->synthetic_handle && refs_.handles.count(record->handle.value())) return false;
    switch (info.kind) {
      case PurgeKind::kBlock: return BlockPurgeable(record, folded);
      case PurgeKind::kLayer: return !refs_.layers.count(folded) && !Dependent(tags);
      case PurgeKind::kLinetype: return !refs_.linetypes.count(folded) && !Dependent(tags);
      case PurgeKind::kTextStyle: return !refs_.text_styles.count(folded) && !Dependent(tags);
    }
    return false;
  }

  static bool Dependent(const fx::dxf::TagList& tags) {
    return (tags.GetInt(70, tags.Body(), 0) & kXrefDependent) != 0;
  }

  bool BlockPurgeable(const AcDbStub* record, const std::string& folded) const {
    if (folded.starts_with("*model_space") || folded.starts_with("*paper_space")) return false;
    if (refs_.blocks.count(folded)) return false;
    // The BLOCK record holds the block's flags.
    fx::dxf::BlockContents* block = db_.BlockOf(record);
    if (block != nullptr && block->begin != nullptr) {
      fx::dxf::TagList begin = db_.TagsOf(block->begin);
      if ((begin.GetInt(70, begin.Body(), 0) & kBlockXref) != 0) return false;
      // The BLOCK's handle can be pointed to as well as the record's.
      if (!block->begin->synthetic_handle && refs_.handles.count(block->begin->handle.value()))
        return false;
    }
    return true;
  }

  void Count(PurgeKind kind) {
    switch (kind) {
      case PurgeKind::kBlock: ++result_.blocks; break;
      case PurgeKind::kLayer: ++result_.layers; break;
      case PurgeKind::kLinetype: ++result_.linetypes; break;
      case PurgeKind::kTextStyle: ++result_.text_styles; break;
    }
  }

  AcDbImpDatabase& db_;
  const PurgeOptions& options_;
  Eraser eraser_;
  References refs_;
  std::set<const AcDbStub*> declined_;
  PurgeResult result_;
};

}  // namespace

const char* PurgeKindName(PurgeKind kind) {
  switch (kind) {
    case PurgeKind::kBlock: return "block";
    case PurgeKind::kLayer: return "layer";
    case PurgeKind::kLinetype: return "linetype";
    case PurgeKind::kTextStyle: return "text style";
  }
  return "";
}

PurgeResult Purge(AcDbImpDatabase& db, const PurgeOptions& options) {
  return Purger(db, options).Run();
}

}  // namespace fx::cleanup
