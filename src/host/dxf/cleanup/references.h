// What the records of a drawing refer to, for PURGE: names of layers,
// linetypes, text styles and blocks, and handles.
//
// By name: group 8 of any record names a layer, 6 a linetype and 7 a text
// style (entities, layers, multiline and table styles); group 2 of INSERT,
// the dimensions and ACAD_TABLE names a block, as do groups 5 to 7 of a
// DIMSTYLE; extended data names layers with 1003. In the header, 8, 6 and
// 7 name the current layer, linetype and styles, 1 and 2 the dimension
// arrow blocks. A record's group codes that mean something else only keep
// a record that could have gone: the scan errs on the side of keeping.
//
// By handle: every pointer (see IsPointerCode) except a record's owner and
// its reactors; dimension styles, viewports, multileader styles, complex
// linetypes and dynamic blocks refer to records that way.
//
// References a block definition makes to itself do not count, so a block
// that inserts itself can still be purged.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_REFERENCES_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_REFERENCES_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstdint>
#include <string>
#include <unordered_set>

#include "host/dxf/dxf_document.h"

namespace fx::cleanup {

struct References {
  // Stored names folded to lower case (fx::dxf::FoldCase), as tables index them.
  std::unordered_set<std::string> layers;
  std::unordered_set<std::string> linetypes;
  std::unordered_set<std::string> text_styles;
  std::unordered_set<std::string> blocks;
  std::unordered_set<uint64_t> handles;
};

// One pass over every live record of `doc`.
References CollectReferences(const fx::dxf::Document& doc);

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_REFERENCES_H_
