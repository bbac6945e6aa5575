// Walking a drawing's records for the clean-up commands: every live record
// with the section it is in, and the handles a record points to.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_RECORD_WALK_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_RECORD_WALK_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "host/dxf/dxf_document.h"

namespace fx::cleanup {

enum class Section { kNone, kHeader, kTables, kBlocks, kEntities, kObjects, kOther };

struct RecordView {
  fx::dxf::RecordId id;
  Section section;
  std::string_view type;  // "LINE", "LAYER", ...; "SECTION" for the header record
  fx::dxf::TagRange tags;
};

// Calls `visit` for each live record in file order, the header record
// included; the SECTION, ENDSEC and EOF markers themselves are skipped.
void ForEachRecord(const fx::dxf::Document& doc, const std::function<void(const RecordView&)>& visit);

// The value of a handle text ("1A2F", blanks allowed); 0 when it is none.
uint64_t HandleValue(std::string_view text);

// Group codes whose value is a handle that points to another object:
// 320-369, 390-399, 480-481 and 1005 in extended data.
bool IsPointerCode(int code);

// The index of the tag naming the record's owner: the first 330 before the
// first subclass marker and outside any 102 group; tags.size() when none.
size_t OwnerTagIndex(fx::dxf::TagRange tags);

// Calls `visit` with every handle the record points to, except its owner
// and the back pointers of its {ACAD_REACTORS} group; null handles are left out.
void ForEachPointer(fx::dxf::TagRange tags, const std::function<void(uint64_t)>& visit);

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_RECORD_WALK_H_
