#include "host/dxf/cleanup/record_walk.h"

#include "host/dxf/dxf_sections.h"
#include "host/dxf/dxf_values.h"
#include "host/ids.h"

namespace fx::cleanup {

using fx::dxf::Tag;
using fx::dxf::TagRange;

namespace {

Section SectionNamed(std::string_view name) {
  if (name == "HEADER") return Section::kHeader;
  if (name == "TABLES") return Section::kTables;
  if (name == "BLOCKS") return Section::kBlocks;
  if (name == "ENTITIES") return Section::kEntities;
  if (name == "OBJECTS") return Section::kObjects;
  return Section::kOther;
}

}  // namespace

void ForEachRecord(const fx::dxf::Document& doc, const std::function<void(const RecordView&)>& visit) {
  Section section = Section::kNone;
  for (fx::dxf::RecordId id = doc.first(); id != fx::dxf::kNoRecord; id = doc.next(id)) {
    std::string_view type = doc.type(id);
    if (type == "SECTION") {
      section = SectionNamed(fx::dxf::SectionName(doc, id));
      // The header variables are tags of the SECTION record itself.
      if (section == Section::kHeader) visit({id, section, type, doc.tags(id)});
      continue;
    }
    if (type == "ENDSEC") {
      section = Section::kNone;
      continue;
    }
    if (type == "EOF") continue;
    visit({id, section, type, doc.tags(id)});
  }
}

uint64_t HandleValue(std::string_view text) { return AcDbHandle(fx::dxf::TrimBlanks(text)).value(); }

bool IsPointerCode(int code) {
  return (code >= 320 && code <= 369) || (code >= 390 && code <= 399) || code == 480 ||
         code == 481 || code == 1005;
}

size_t OwnerTagIndex(TagRange tags) {
  bool in_group = false;
  for (size_t i = 1; i < tags.size(); ++i) {
    const Tag& tag = tags[i];
    if (tag.code == 100 || tag.code == 1001) break;
    if (tag.code == 102) {
      in_group = fx::dxf::TrimBlanks(tag.value).starts_with('{');
      continue;
    }
    if (tag.code == 330 && !in_group) return i;
  }
  return tags.size();
}

void ForEachPointer(TagRange tags, const std::function<void(uint64_t)>& visit) {
  const size_t owner = OwnerTagIndex(tags);
  bool in_reactors = false;
  for (size_t i = 1; i < tags.size(); ++i) {
    const Tag& tag = tags[i];
    if (tag.code == 102) {
      in_reactors = fx::dxf::TrimBlanks(tag.value) == "{ACAD_REACTORS";
      continue;
    }
    if (i == owner || in_reactors || !IsPointerCode(tag.code)) continue;
    if (uint64_t handle = HandleValue(tag.value); handle != 0) visit(handle);
  }
}

}  // namespace fx::cleanup
