// Conversion between tags and result-buffer chains, shared by extended data
// and xrecords. Strings are decoded to UTF-8 and encoded back with the
// drawing's codec; a point is one chain item and three tags (x, y, z codes).
#ifndef FLOORXPORT_HOST_DXF_RESBUF_TAGS_H_
#define FLOORXPORT_HOST_DXF_RESBUF_TAGS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <utility>
#include <vector>

#include "host/dxf/dxf_text_codec.h"
#include "host/dxf/tag_list.h"
#include "host/resbuf.h"

namespace fx::dxf {

// A new chain of the tags in `range`; nullptr for an empty range.
resbuf* TagsToChain(const TagList& tags, TagList::Range range, const TextCodec& codec);

// The tags of a chain, in order. False when an item has a type that has no
// tag form (entity names, RT codes).
bool ChainToTags(const resbuf* chain, const TextCodec& codec, std::vector<std::pair<int, std::string>>* tags);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_RESBUF_TAGS_H_
