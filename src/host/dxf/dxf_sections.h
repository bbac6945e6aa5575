#ifndef FX_HOST_DXF_DXF_SECTIONS_H_
#define FX_HOST_DXF_DXF_SECTIONS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string_view>

#include "host/dxf/dxf_document.h"

namespace fx::dxf {

// Where a section's records are. Its content is [first, end) in record order.
struct SectionRange {
  RecordId section = kNoRecord;  // the 0/SECTION record; kNoRecord when the file has none
  RecordId first = kNoRecord;    // first record inside; equals `end` when there is none
  // The ENDSEC record; when that is missing, the record that ends the section anyway
  // (the next SECTION or EOF), or kNoRecord at the end of the file.
  RecordId end = kNoRecord;

  bool found() const { return section != kNoRecord; }
};

// The first section of that name ("HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES",
// "OBJECTS", "THUMBNAILIMAGE", ...). The header variables are tags of the HEADER section
// record itself, so its content range is empty.
SectionRange FindSection(const Document& doc, std::string_view name);

// The name of a SECTION record (the value of its 2-tag), or empty.
std::string_view SectionName(const Document& doc, RecordId section);

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_SECTIONS_H_
