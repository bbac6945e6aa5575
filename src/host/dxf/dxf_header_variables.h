#ifndef FX_HOST_DXF_DXF_HEADER_VARIABLES_H_
#define FX_HOST_DXF_DXF_HEADER_VARIABLES_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <span>
#include <string_view>

#include "host/dxf/dxf_document.h"

namespace fx::dxf {

// Header variables are tags of the HEADER section record: after 0/SECTION and 2/HEADER, each
// variable is a 9-tag with its name ("$ACADVER") followed by its value tags (one for most,
// two or three for points such as $EXTMIN: 10/20/30).

// The HEADER section record, or kNoRecord.
RecordId FindHeaderRecord(const Document& doc);

// The value tags of a variable, empty when it is absent. Valid until the next edit.
TagRange GetHeaderVariable(const Document& doc, std::string_view name);

// The first value of a variable without surrounding blanks, empty when it is absent.
std::string_view GetHeaderValue(const Document& doc, std::string_view name);

// Replaces a variable's value tags, or adds the variable at the end of the header record,
// creating a HEADER section at the start of the file if there is none. False (nothing
// changed) when `values` is empty.
bool SetHeaderVariable(Document& doc, std::string_view name, TagRange values);

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_HEADER_VARIABLES_H_
