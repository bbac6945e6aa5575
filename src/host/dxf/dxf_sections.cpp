#include "host/dxf/dxf_sections.h"

#include "host/dxf/dxf_values.h"

namespace fx::dxf {

std::string_view SectionName(const Document& doc, RecordId section) {
  const TagRange tags = doc.tags(section);
  if (doc.type(section) != "SECTION" || tags.size() < 2 || tags[1].code != 2) return {};
  return TrimBlanks(tags[1].value);
}

SectionRange FindSection(const Document& doc, std::string_view name) {
  SectionRange range;
  RecordId id = doc.first();
  while (id != kNoRecord && SectionName(doc, id) != name) id = doc.next(id);
  if (id == kNoRecord) return range;
  range.section = id;
  range.first = doc.next(id);
  RecordId end = range.first;
  while (end != kNoRecord) {
    const std::string_view type = doc.type(end);
    if (type == "ENDSEC" || type == "SECTION" || type == "EOF") break;
    end = doc.next(end);
  }
  range.end = end;
  return range;
}

}  // namespace fx::dxf
