#include "host/dxf/dxf_header_variables.h"

#include <vector>

#include "host/dxf/dxf_sections.h"
#include "host/dxf/dxf_values.h"

namespace fx::dxf {
namespace {

constexpr int kVariableNameCode = 9;

struct VariableSpan {
  size_t name;  // index of the 9-tag, tags.size() when absent
  size_t end;   // one past its last value tag
};

VariableSpan FindVariable(TagRange tags, std::string_view name) {
  size_t i = 0;
  while (i < tags.size() &&
         !(tags[i].code == kVariableNameCode && TrimBlanks(tags[i].value) == name)) {
    ++i;
  }
  size_t end = i == tags.size() ? i : i + 1;
  while (end < tags.size() && tags[end].code != kVariableNameCode) ++end;
  return {i, end};
}

}  // namespace

RecordId FindHeaderRecord(const Document& doc) {
  for (RecordId id = doc.first(); id != kNoRecord; id = doc.next(id)) {
    if (SectionName(doc, id) == "HEADER") return id;
  }
  return kNoRecord;
}

TagRange GetHeaderVariable(const Document& doc, std::string_view name) {
  const RecordId header = FindHeaderRecord(doc);
  if (header == kNoRecord) return {};
  const TagRange tags = doc.tags(header);
  const VariableSpan variable = FindVariable(tags, name);
  if (variable.name == tags.size()) return {};
  return tags.subspan(variable.name + 1, variable.end - variable.name - 1);
}

std::string_view GetHeaderValue(const Document& doc, std::string_view name) {
  const TagRange values = GetHeaderVariable(doc, name);
  return values.empty() ? std::string_view() : TrimBlanks(values.front().value);
}

bool SetHeaderVariable(Document& doc, std::string_view name, TagRange values) {
  if (values.empty()) return false;
  const RecordId header = FindHeaderRecord(doc);
  std::vector<Tag> tags;
  if (header == kNoRecord) {
    tags = {{0, "SECTION"}, {2, "HEADER"}, {kVariableNameCode, name}};
    tags.insert(tags.end(), values.begin(), values.end());
    const RecordId section = doc.InsertBefore(doc.first(), tags);
    const Tag endsec[] = {{0, "ENDSEC"}};
    doc.InsertAfter(section, endsec);
    return true;
  }
  const TagRange old_tags = doc.tags(header);
  const VariableSpan variable = FindVariable(old_tags, name);
  tags.reserve(old_tags.size() + values.size() + 1);
  tags.insert(tags.end(), old_tags.begin(),
              old_tags.begin() + static_cast<ptrdiff_t>(variable.name));
  tags.push_back(
      {kVariableNameCode, variable.name == old_tags.size() ? name : old_tags[variable.name].value});
  tags.insert(tags.end(), values.begin(), values.end());
  tags.insert(tags.end(), old_tags.begin() + static_cast<ptrdiff_t>(variable.end), old_tags.end());
  return doc.ReplaceTags(header, tags);
}

}  // namespace fx::dxf
