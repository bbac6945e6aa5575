// Writers of the DXF sections other than ENTITIES.
#pragma once

#include <string_view>

#include "dxf_stream.h"
#include "floor_layout.h"
#include "geometry.h"
#include "handles.h"

namespace floorgen {

inline constexpr std::string_view kStandardName = "Standard";  // text style, dimension style, mline style

void BeginSection(DxfStream& out, std::string_view name);
void EndSection(DxfStream& out);

void WriteHeaderSection(DxfStream& out, Handle handle_seed, const Box& extents);
void WriteClassesSection(DxfStream& out);
void WriteTablesSection(DxfStream& out, const FixedHandles& handles, const Box& extents);
// Block definitions; their content takes handles from `allocator`.
void WriteBlocksSection(DxfStream& out, HandleAllocator& allocator, const FixedHandles& handles,
                        const FloorLayout& layout);
void WriteObjectsSection(DxfStream& out, const FixedHandles& handles, const Box& extents);

}  // namespace floorgen
