// BLOCKS section: model and paper space (their entities live in ENTITIES),
// the door, the room tag with its attribute definitions, and the anonymous
// block holding the graphics of the dimension.
#include <array>
#include <cstddef>

#include "annotation_style.h"
#include "annotations.h"
#include "blocks.h"
#include "dxf_dimension.h"
#include "dxf_entities.h"
#include "dxf_sections.h"
#include "layers.h"

namespace floorgen {

namespace {

constexpr int kBlockAnonymous = 1;
constexpr int kBlockHasAttributes = 2;

int BlockFlags(int block) {
  if (block == kRoomTagBlock) return kBlockHasAttributes;
  if (block == kDimensionBlock) return kBlockAnonymous;
  return 0;
}

void WriteBlockBegin(DxfStream& out, const BlockHandles& handles, std::string_view name, int flags) {
  out.Text(0, "BLOCK");
  out.HandleValue(5, handles.begin);
  out.HandleValue(330, handles.record);
  out.Text(100, "AcDbEntity");
  out.Text(8, kLayerZero);
  out.Text(100, "AcDbBlockBegin");
  out.Text(2, name);
  out.Integer(70, flags);
  out.Point3(10, {});  // base point
  out.Text(3, name);
  out.Text(1, "");  // no external reference
}

void WriteBlockEnd(DxfStream& out, const BlockHandles& handles) {
  out.Text(0, "ENDBLK");
  out.HandleValue(5, handles.end);
  out.HandleValue(330, handles.record);
  out.Text(100, "AcDbEntity");
  out.Text(8, kLayerZero);
  out.Text(100, "AcDbBlockEnd");
}

// Hinge at the origin, the closed door along +x, opened by 90 degrees: the
// leaf stands along +y and the swing runs from the closed to the open position.
// Drawn on layer 0 so that inserts show it on their own layer.
void WriteDoorContent(EntityWriter& writer) {
  WriteLine(writer, kLayerZero, {{0.0, 0.0}, {0.0, kDoorBlockWidth}});
  WriteArc(writer, kLayerZero, {0.0, 0.0}, kDoorBlockWidth, 0.0, 90.0);
}

void WriteRoomTagContent(EntityWriter& writer) {
  const std::array<Point, 4> frame = {{{-kTagHalfWidth, -kTagHalfHeight},
                                       {kTagHalfWidth, -kTagHalfHeight},
                                       {kTagHalfWidth, kTagHalfHeight},
                                       {-kTagHalfWidth, kTagHalfHeight}}};
  WriteClosedPolyline(writer, kLayerZero, frame);
  WriteAttributeDefinition(writer, "NAME", "Room name", {0.0, kTagNameOffsetY}, kTagNameHeight);
  WriteAttributeDefinition(writer, "CATEGORY", "Room category", {0.0, kTagCategoryOffsetY}, kTagCategoryHeight);
  WriteAttributeDefinition(writer, "DESCRIPTION", "Room description", {0.0, kTagDescriptionOffsetY},
                           kTagDescriptionHeight);
}

}  // namespace

void WriteBlocksSection(DxfStream& out, HandleAllocator& allocator, const FixedHandles& handles,
                        const FloorLayout& layout) {
  BeginSection(out, "BLOCKS");
  for (int block = 0; block < kBlockCount; ++block) {
    const BlockHandles& block_handles = handles.blocks[static_cast<std::size_t>(block)];
    WriteBlockBegin(out, block_handles, kBlockNames[static_cast<std::size_t>(block)], BlockFlags(block));
    EntityWriter writer(out, allocator, block_handles.record);
    if (block == kDoorBlock) WriteDoorContent(writer);
    if (block == kRoomTagBlock) WriteRoomTagContent(writer);
    if (block == kDimensionBlock) WriteDimensionBlockContent(writer, BottomEdgeDimension(layout));
    WriteBlockEnd(out, block_handles);
  }
  EndSection(out);
}

}  // namespace floorgen
