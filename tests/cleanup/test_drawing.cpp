#include "test_drawing.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace fx::cleanup_test {
namespace {

const char* const kTables[] = {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"};

void Put(std::ostringstream& out, int code, const std::string& value) {
  char padded[8];
  std::snprintf(padded, sizeof padded, "%3d", code);
  out << padded << "\n" << value << "\n";
}

void PutAll(std::ostringstream& out, const Tags& tags) {
  for (const auto& [code, value] : tags) Put(out, code, value);
}

}  // namespace

Tags LineBody(double y) {
  return {{100, "AcDbLine"}, {10, "0.0"}, {20, std::to_string(y)}, {30, "0.0"},
          {11, "10.0"}, {21, std::to_string(y)}, {31, "0.0"}};
}

TestDrawing::TestDrawing() {
  for (const char* table : kTables) table_handles_[table] = NewHandle();
  root_handle_ = NewHandle();
  TableRecord("VPORT", "VPORT", {{100, "AcDbViewportTableRecord"}, {2, "*ACTIVE"}, {70, "0"}, {12, "0.0"},
                                 {22, "0.0"}, {40, "10.0"}, {41, "2.0"}});
  for (const char* name : {"ByBlock", "ByLayer", "Continuous"}) Linetype(name);
  Layer("0");
  Style("Standard");
  TableRecord("APPID", "APPID", {{100, "AcDbRegAppTableRecord"}, {2, "ACAD"}, {70, "0"}});
  Block("*Model_Space");
  Block("*Paper_Space");
  const std::string groups = Object("DICTIONARY", root_handle_, {{100, "AcDbDictionary"}, {281, "1"}});
  RootEntry("ACAD_GROUP", groups);
}

std::string TestDrawing::NewHandle() {
  char hex[16];
  std::snprintf(hex, sizeof hex, "%X", next_handle_++);
  return hex;
}

std::string TestDrawing::TableRecord(const std::string& table, const std::string& type, const Tags& tags,
                                     const std::string& owner) {
  std::string handle = NewHandle();
  Tags all{{5, handle}, {330, owner.empty() ? table_handles_[table] : owner}, {100, "AcDbSymbolTableRecord"}};
  all.insert(all.end(), tags.begin(), tags.end());
  tables_[table].push_back({type, std::move(all)});
  return handle;
}

std::string TestDrawing::Layer(const std::string& name, const Tags& extra) {
  Tags tags{{100, "AcDbLayerTableRecord"}, {2, name}, {70, "0"}, {62, "7"}, {6, "Continuous"}};
  std::string owner;
  for (const auto& [code, value] : extra) {
    if (code == 330) {
      owner = value;
      continue;
    }
    auto same = std::find_if(tags.begin(), tags.end(), [code = code](const auto& tag) { return tag.first == code; });
    if (same != tags.end()) same->second = value;
    else tags.emplace_back(code, value);
  }
  return TableRecord("LAYER", "LAYER", tags, owner);
}

std::string TestDrawing::Linetype(const std::string& name) {
  return TableRecord("LTYPE", "LTYPE", {{100, "AcDbLinetypeTableRecord"}, {2, name}, {70, "0"}, {3, ""},
                                        {72, "65"}, {73, "0"}, {40, "0.0"}});
}

std::string TestDrawing::Style(const std::string& name) {
  return TableRecord("STYLE", "STYLE", {{100, "AcDbTextStyleTableRecord"}, {2, name}, {70, "0"}, {40, "0.0"},
                                        {41, "1.0"}, {50, "0.0"}, {71, "0"}, {42, "2.5"}, {3, "txt"}, {4, ""}});
}

std::string TestDrawing::Block(const std::string& name) {
  BlockDef block;
  block.name = name;
  block.record_handle = TableRecord("BLOCK_RECORD", "BLOCK_RECORD", {{100, "AcDbBlockTableRecord"}, {2, name}});
  block.begin_handle = NewHandle();
  block.end_handle = NewHandle();
  blocks_.push_back(std::move(block));
  return blocks_.back().record_handle;
}

std::string TestDrawing::Entity(const std::string& block, const std::string& type, const std::string& layer,
                                const Tags& body, const Tags& common, const std::string& owner) {
  BlockDef* target = nullptr;
  for (BlockDef& b : blocks_)
    if (b.name == (block.empty() ? "*Model_Space" : block)) target = &b;
  if (target == nullptr) return {};
  std::string handle = NewHandle();
  Tags tags{{5, handle}, {330, owner.empty() ? target->record_handle : owner}, {100, "AcDbEntity"}, {8, layer}};
  tags.insert(tags.end(), common.begin(), common.end());
  tags.insert(tags.end(), body.begin(), body.end());
  target->entities.push_back({type, std::move(tags)});
  return handle;
}

std::string TestDrawing::Object(const std::string& type, const std::string& owner, const Tags& body) {
  std::string handle = NewHandle();
  Tags tags{{5, handle}, {330, owner}};
  tags.insert(tags.end(), body.begin(), body.end());
  objects_.push_back({type, std::move(tags)});
  return handle;
}

void TestDrawing::RootEntry(const std::string& name, const std::string& handle) {
  root_entries_.emplace_back(3, name);
  root_entries_.emplace_back(350, handle);
}

void TestDrawing::Header(const std::string& name, const Tags& values) { header_.emplace_back(name, values); }

std::string TestDrawing::Text() const {
  std::ostringstream out;
  const auto put_record = [&out](const Record& record) {
    Put(out, 0, record.type);
    PutAll(out, record.tags);
  };
  PutAll(out, {{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1015"}});
  // $HANDSEED: the next free handle unless the test gives another.
  char seed[16];
  std::snprintf(seed, sizeof seed, "%X", next_handle_);
  Tags seed_value{{5, seed}};
  for (const auto& [name, values] : header_)
    if (name == "$HANDSEED") seed_value = values;
  Put(out, 9, "$HANDSEED");
  PutAll(out, seed_value);
  for (const auto& [name, values] : header_) {
    if (name == "$HANDSEED") continue;
    Put(out, 9, name);
    PutAll(out, values);
  }
  PutAll(out, {{0, "ENDSEC"}, {0, "SECTION"}, {2, "TABLES"}});
  for (const char* table : kTables) {
    auto it = tables_.find(table);
    const size_t count = it == tables_.end() ? 0 : it->second.size();
    PutAll(out, {{0, "TABLE"}, {2, table}, {5, table_handles_.at(table)}, {330, "0"}, {100, "AcDbSymbolTable"},
                 {70, std::to_string(count)}});
    if (std::string(table) == "DIMSTYLE") {
      PutAll(out, {{100, "AcDbDimStyleTable"}, {0, "DIMSTYLE"}, {105, "FF"}, {330, table_handles_.at(table)},
                   {100, "AcDbSymbolTableRecord"}, {100, "AcDbDimStyleTableRecord"}, {2, "Standard"}, {70, "0"}});
      PutAll(out, dimstyle_extra_);
    }
    if (it != tables_.end()) {
      for (const Record& record : it->second) put_record(record);
    }
    Put(out, 0, "ENDTAB");
  }
  PutAll(out, {{0, "ENDSEC"}, {0, "SECTION"}, {2, "BLOCKS"}});
  for (const BlockDef& block : blocks_) {
    PutAll(out, {{0, "BLOCK"}, {5, block.begin_handle}, {330, block.record_handle}, {100, "AcDbEntity"}, {8, "0"},
                 {100, "AcDbBlockBegin"}, {2, block.name}, {70, "0"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"},
                 {3, block.name}, {1, ""}});
    if (block.name != "*Model_Space") {
      for (const Record& entity : block.entities) put_record(entity);
    }
    PutAll(out, {{0, "ENDBLK"}, {5, block.end_handle}, {330, block.record_handle}, {100, "AcDbEntity"}, {8, "0"},
                 {100, "AcDbBlockEnd"}});
  }
  PutAll(out, {{0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}});
  for (const BlockDef& block : blocks_) {
    if (block.name == "*Model_Space") {
      for (const Record& entity : block.entities) put_record(entity);
    }
  }
  PutAll(out, {{0, "ENDSEC"}, {0, "SECTION"}, {2, "OBJECTS"}, {0, "DICTIONARY"}, {5, root_handle_}, {330, "0"},
               {100, "AcDbDictionary"}, {281, "1"}});
  PutAll(out, root_entries_);
  for (const Record& object : objects_) put_record(object);
  PutAll(out, {{0, "ENDSEC"}, {0, "EOF"}});
  return out.str();
}

bool TestDrawing::Save(const std::string& path) const {
  std::ofstream file(path, std::ios::binary);
  file << Text();
  return static_cast<bool>(file);
}

}  // namespace fx::cleanup_test
