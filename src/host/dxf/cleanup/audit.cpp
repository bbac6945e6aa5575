#include "host/dxf/cleanup/audit.h"

#include "host/dxf/cleanup/auditor.h"
#include "host/dxf/cleanup/record_walk.h"
#include "host/dxf/dxf_header_variables.h"
#include "host/dxf/dxf_values.h"

namespace fx::cleanup {

using fx::dxf::kNoRecord;
using fx::dxf::Tag;
using fx::dxf::TagRange;

int AuditResult::fixed() const {
  int count = 0;
  for (const AuditProblem& problem : problems) count += problem.fixed ? 1 : 0;
  return count;
}

AuditResult Audit(AcDbImpDatabase& db, bool fix) { return Auditor(db, fix).Run(); }

std::string Hex(uint64_t handle) { return AcDbHandle(handle).ascii(); }

bool BuiltInLinetype(std::string_view name) {
  std::string folded = fx::dxf::FoldCase(name);
  return folded == "bylayer" || folded == "byblock" || folded == "continuous";
}

AuditResult Auditor::Run() {
  CheckHandseed();
  CheckTables();
  CheckBlocks();
  CheckObjects();
  CheckDictionaries();
  return std::move(result_);
}

void Auditor::Report(std::string message, std::string repair, bool fixed) {
  result_.problems.push_back({std::move(message), std::move(repair), fixed});
}

std::string Auditor::Describe(const AcDbStub* stub) const {
  std::string type(db_.document().type(stub->record));
  if (!stub->synthetic_handle) return type + " " + stub->handle.ascii();
  return type + " at line " + std::to_string(db_.document().source_line(stub->record));
}

std::string Auditor::Decoded(std::string_view stored) const { return db_.codec().Decode(stored); }

bool Auditor::SetTagValue(AcDbStub* stub, size_t index, std::string_view value) {
  if (stub->readers > 0 || stub->writer || stub->record == kNoRecord) return false;
  fx::dxf::TagList tags(db_.document().tags(stub->record));
  tags.SetValue(index, value);
  if (!db_.document().ReplaceTags(stub->record, tags.tags())) return false;
  db_.MarkModified();
  return true;
}

void Auditor::CheckOwner(AcDbStub* stub, uint64_t expected, const char* owner_kind) {
  if (expected == 0 || stub->record == kNoRecord) return;
  auto tags = db_.document().tags(stub->record);
  size_t owner = OwnerTagIndex(tags);
  if (owner == tags.size()) return;
  uint64_t actual = HandleValue(tags[owner].value);
  if (actual == expected) return;
  Report(Describe(stub) + ": owner " + Hex(actual) + " is not its " + owner_kind + " " + Hex(expected),
         "owner corrected", fix_ && SetTagValue(stub, owner, Hex(expected)));
}

void Auditor::CheckHandseed() {
  const fx::dxf::Document& doc = db_.document();
  // New handles always continue past the largest in use, and saving a
  // changed drawing writes the seed they reached: only the value an
  // unchanged drawing would keep on disk can be wrong.
  if (db_.modified() || fx::dxf::FindHeaderRecord(doc) == kNoRecord) return;
  uint64_t largest = 0;
  ForEachRecord(doc, [&](const RecordView& record) {
    const AcDbStub* stub = db_.StubOf(record.id);
    if (stub != nullptr && !stub->synthetic_handle) largest = std::max(largest, stub->handle.value());
  });
  if (largest == 0) return;  // a drawing that writes no handles
  std::string_view seed_text = fx::dxf::GetHeaderValue(doc, "$HANDSEED");
  uint64_t seed = HandleValue(seed_text);
  if (seed > largest) return;
  const std::string raised = Hex(largest + 1);
  std::string message = seed_text.empty() ? std::string("$HANDSEED is missing")
                                          : "$HANDSEED " + Hex(seed) + " is not above the largest handle " +
                                                Hex(largest);
  bool fixed = false;
  if (fix_) {
    Tag value{5, raised};
    fixed = fx::dxf::SetHeaderVariable(db_.document(), "$HANDSEED", {&value, 1});
    if (fixed) db_.MarkModified();
  }
  Report(std::move(message), "set to " + raised, fixed);
}

void Auditor::CheckTables() {
  for (std::string_view name :
       {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"}) {
    fx::dxf::SymbolTable* table = db_.FindTable(name);
    if (table == nullptr || table->stub == nullptr) continue;
    uint64_t owner = table->stub->synthetic_handle ? 0 : table->stub->handle.value();
    const std::string kind = std::string(name) + " table";
    for (AcDbStub* entry : table->entries) {
      if (entry->erased || entry->record == kNoRecord) continue;
      CheckOwner(entry, owner, kind.c_str());
      if (name != "LAYER") continue;
      // A layer's linetype.
      fx::dxf::TagList tags = db_.TagsOf(entry);
      size_t at = tags.Find(6);
      if (at == fx::dxf::TagList::kNotFound) continue;
      std::string_view linetype = fx::dxf::TrimBlanks(tags[at].value);
      if (linetype.empty() || BuiltInLinetype(linetype) || db_.FindSymbol("LTYPE", linetype) != nullptr)
        continue;
      Report("Layer \"" + Decoded(fx::dxf::TrimBlanks(tags.GetString(2, tags.Body()))) + "\": linetype \"" +
                 Decoded(linetype) + "\" does not exist",
             "set to Continuous", fix_ && SetTagValue(entry, at, "Continuous"));
    }
  }
}

void Auditor::CheckObjects() {
  // Collected first: erasing an orphan erases what it owns, further on in the file.
  std::vector<std::pair<AcDbStub*, uint64_t>> orphans;
  ForEachRecord(db_.document(), [&](const RecordView& record) {
    if (record.section != Section::kObjects) return;
    AcDbStub* stub = db_.StubOf(record.id);
    size_t owner = OwnerTagIndex(record.tags);
    if (stub == nullptr || stub->erased || owner == record.tags.size()) return;
    uint64_t handle = HandleValue(record.tags[owner].value);
    if (handle == 0) return;  // the root dictionary
    const AcDbStub* found = db_.FindHandle(AcDbHandle(handle));
    if (found == nullptr || found->erased) orphans.emplace_back(stub, handle);
  });
  for (auto [stub, owner] : orphans) {
    // An earlier orphan may have owned this one and taken it along.
    bool gone = stub->erased;
    Report(Describe(stub) + ": owner " + Hex(owner) + " does not exist", "object erased",
           fix_ && (gone || eraser_.EraseObject(stub)));
  }
}

void Auditor::CheckDictionaries() {
  std::vector<AcDbStub*> dictionaries;
  ForEachRecord(db_.document(), [&](const RecordView& record) {
    if (record.section != Section::kObjects) return;
    if (record.type != "DICTIONARY" && record.type != "ACDBDICTIONARYWDFLT") return;
    if (AcDbStub* stub = db_.StubOf(record.id); stub != nullptr && !stub->erased) dictionaries.push_back(stub);
  });
  for (AcDbStub* dictionary : dictionaries) {
    fx::dxf::TagList tags = db_.TagsOf(dictionary);
    std::vector<size_t> dangling;  // indexes of the 3-tags of bad entries
    for (size_t i = 1; i + 1 < tags.XDataBegin(); ++i) {
      if (tags[i].code != 3 || (tags[i + 1].code != 350 && tags[i + 1].code != 360)) continue;
      uint64_t handle = HandleValue(tags[i + 1].value);
      const AcDbStub* target = handle != 0 ? db_.FindHandle(AcDbHandle(handle)) : nullptr;
      if (target == nullptr || target->erased) dangling.push_back(i);
    }
    if (dangling.empty()) continue;
    bool editable = fix_ && dictionary->readers == 0 && !dictionary->writer;
    for (size_t i : dangling) {
      Report(Describe(dictionary) + ": entry \"" + Decoded(fx::dxf::TrimBlanks(tags[i].value)) +
                 "\" names object " + Hex(HandleValue(tags[i + 1].value)) + ", which does not exist",
             "entry removed", editable);
    }
    if (!editable) continue;
    for (auto it = dangling.rbegin(); it != dangling.rend(); ++it) tags.Erase(*it, *it + 2);
    db_.document().ReplaceTags(dictionary->record, tags.tags());
    db_.MarkModified();
  }
}

}  // namespace fx::cleanup
