// AUDIT of block definitions and their entities: owners and the layers,
// linetypes, text styles and blocks they name (see audit.h).
#include "host/database.h"
#include "host/dxf/cleanup/auditor.h"
#include "host/dxf/dxf_values.h"

namespace fx::cleanup {
namespace {

using fx::dxf::Tag;
using fx::dxf::TagRange;

bool HasTextStyle(std::string_view type) {
  return type == "TEXT" || type == "MTEXT" || type == "ATTDEF" || type == "ATTRIB";
}

// The index of the entity's own tag of `code`: the first one before its
// extended data or an embedded object; tags.size() when there is none.
size_t FindOwn(TagRange tags, int code) {
  for (size_t i = 1; i < tags.size(); ++i) {
    if (tags[i].code == 1001 || tags[i].code == 101) break;
    if (tags[i].code == code) return i;
  }
  return tags.size();
}

}  // namespace

void Auditor::CheckBlocks() {
  fx::dxf::SymbolTable* blocks = db_.FindTable("BLOCK_RECORD");
  if (blocks == nullptr) return;
  const std::vector<AcDbStub*> records = blocks->entries;
  for (AcDbStub* record : records) {
    if (record->erased) continue;
    fx::dxf::BlockContents* block = db_.BlockOf(record);
    if (block == nullptr) continue;
    // Files before R13 have no owners to check.
    uint64_t owner = db_.has_subclass_markers() && !record->synthetic_handle ? record->handle.value() : 0;
    for (AcDbStub* mark : {block->begin, block->end})
      if (mark != nullptr && mark != record && !mark->erased) CheckOwner(mark, owner, "block record");
    for (AcDbStub* entity : block->entities) {
      if (entity->erased || entity->record == fx::dxf::kNoRecord) continue;
      CheckEntity(entity, owner);
      uint64_t parent = db_.has_subclass_markers() && !entity->synthetic_handle ? entity->handle.value() : 0;
      for (AcDbStub* child : SubRecords(db_, entity))
        if (!child->erased) CheckEntity(child, parent);
    }
  }
  ReportMissing(missing_layers_, "Layer", "layer created", {});
  ReportMissing(missing_linetypes_, "Linetype", "set to ByLayer", "ByLayer");
  const bool has_standard = db_.FindSymbol("STYLE", "Standard") != nullptr;
  ReportMissing(missing_styles_, "Text style", has_standard ? "set to Standard" : "no Standard style to use",
                has_standard ? "Standard" : "");
  for (auto& [insert, name] : missing_blocks_) {
    Report(Describe(insert) + ": block \"" + Decoded(name) + "\" does not exist", "insert erased",
           fix_ && eraser_.EraseEntity(insert));
  }
}

void Auditor::CheckEntity(AcDbStub* entity, uint64_t owner) {
  CheckOwner(entity, owner, entity->owner && entity->owner->kind == StubKind::kEntity ? "parent" : "block record");
  auto tags = db_.document().tags(entity->record);
  const std::string_view type = db_.document().type(entity->record);
  auto missing = [&](int code, const char* table, MissingNames& names) {
    size_t at = FindOwn(tags, code);
    if (at == tags.size()) return;
    std::string_view name = fx::dxf::TrimBlanks(tags[at].value);
    // An empty name is missing too: no record has it.
    if (!name.empty() && db_.FindSymbol(table, name) != nullptr) return;
    if (code == 6 && BuiltInLinetype(name)) return;
    MissingName& entry = names[fx::dxf::FoldCase(name)];
    if (entry.stored.empty()) entry.stored = std::string(name);
    entry.users.emplace_back(entity, at);
  };
  missing(8, "LAYER", missing_layers_);
  missing(6, "LTYPE", missing_linetypes_);
  if (HasTextStyle(type)) missing(7, "STYLE", missing_styles_);
  if (type == "INSERT") {
    size_t at = FindOwn(tags, 2);
    if (at == tags.size()) return;
    std::string_view name = fx::dxf::TrimBlanks(tags[at].value);
    if (db_.FindSymbol("BLOCK_RECORD", name) == nullptr) missing_blocks_.emplace_back(entity, std::string(name));
  }
}

void Auditor::ReportMissing(const MissingNames& names, const char* what, const char* repair,
                            std::string_view replacement) {
  // Layers are created (replacement empty); the other names are replaced.
  const bool layers = std::string_view(what) == "Layer";
  for (const auto& [folded, missing] : names) {
    const size_t count = missing.users.size();
    std::string message = std::string(what) + " \"" + Decoded(missing.stored) + "\" does not exist (used by " +
                          std::to_string(count) + (count == 1 ? " entity: " : " entities, first ") +
                          Describe(missing.users.front().first) + ")";
    // No layer can be named "": its entities go to layer 0.
    const std::string_view instead = layers && folded.empty() ? std::string_view("0") : replacement;
    bool fixed = false;
    if (fix_ && layers && instead.empty()) {
      fixed = CreateLayer(missing.stored);
    } else if (fix_ && !instead.empty()) {
      fixed = true;
      for (const auto& [user, at] : missing.users) fixed = SetTagValue(user, at, instead) && fixed;
    }
    Report(std::move(message), instead == "0" ? "moved to layer 0" : repair, fixed);
  }
}

bool Auditor::CreateLayer(std::string_view stored) {
  AcDbDatabase* database = db_.api();
  AcDbLayerTable* table = nullptr;
  if (database == nullptr || database->getLayerTable(table, AcDb::kForWrite) != Acad::eOk) return false;
  auto* layer = new AcDbLayerTableRecord();
  AcDbObjectId id;
  bool added = layer->setName(Decoded(stored).c_str()) == Acad::eOk && table->add(id, layer) == Acad::eOk;
  if (added) {
    layer->close();
  } else {
    delete layer;
  }
  table->close();
  return added && db_.FindSymbol("LAYER", stored) != nullptr;
}

}  // namespace fx::cleanup
