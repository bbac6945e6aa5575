// Extents of block inserts and dimensions: the geometry of their blocks,
// walked with an explicit stack of blocks instead of recursion.
//
// Each stack frame measures one block under the transform that maps it to
// the outermost coordinates, into a box of its own. A MINSERT's cells differ
// from its first cell only by a translation, so the first cell is measured
// once and, when the frame is done, its box is merged into its parent's
// once for each corner cell of the array (the corners span the others).
#include <string>
#include <vector>

#include "host/database.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_object.h"

namespace fx::dxf {
namespace {

struct Frame {
  AcDbObjectId block;
  std::vector<AcDbObjectId> entities;
  size_t next = 0;
  AcGeMatrix3d transform;
  AcDbExtents box;
  std::vector<AcGeVector3d> copies{AcGeVector3d()};  // translations of the box into the parent
};

std::string BlockLabel(AcDbObjectId block) {
  AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
  return record.openStatus() == Acad::eOk ? record->getName() : block.handle().ascii();
}

// Whether `block` may be entered below `stack`: not while it is being
// measured already, and not beyond the nesting limit. Reports a refusal.
bool MayEnter(const std::vector<Frame>& stack, AcDbObjectId block) {
  for (const Frame& frame : stack) {
    if (frame.block == block) {
      ReportDrawWarning("Block \"" + BlockLabel(block) + "\" inserts itself; its inner insert is left out");
      return false;
    }
  }
  if (stack.size() >= static_cast<size_t>(kMaxBlockDepth)) {
    ReportDrawWarning("Block \"" + BlockLabel(block) + "\" is nested more than " +
                      std::to_string(kMaxBlockDepth) + " deep; it is left out");
    return false;
  }
  return true;
}

std::vector<AcDbObjectId> EntitiesOf(AcDbObjectId block) {
  AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
  return record.openStatus() == Acad::eOk ? record->entityIds() : std::vector<AcDbObjectId>();
}

// The frame of an insert inside a block mapped by `parent`, its attributes
// measured into `parent_box`.
Frame InsertFrame(const AcDbBlockReference& insert, const AcGeMatrix3d& parent, AcDbExtents& parent_box) {
  for (AcDbObjectId id : insert.attributeIds()) {
    AcDbObjectPointer<AcDbAttribute> attribute(id, AcDb::kForRead);
    if (attribute.openStatus() == Acad::eOk && !attribute->isInvisible() &&
        attribute->visibility() == AcDb::kVisible)
      AddExtents(*attribute.object(), parent, parent_box);
  }
  Frame frame;
  frame.block = insert.blockTableRecord();
  frame.transform = parent * insert.blockTransform();
  int columns = insert.columnCount(), rows = insert.rowCount();
  if (columns > 1 || rows > 1) {
    // Cell (i, j) lies j column spacings and i row spacings from the first
    // along the insert's rotated axes, unscaled.
    AcGeMatrix3d axes = parent * AcGeMatrix3d::planeToWorld(insert.normal()) *
                        AcGeMatrix3d::rotation(insert.rotation(), AcGeVector3d::kZAxis);
    AcGeVector3d column = axes * AcGeVector3d(insert.columnSpacing() * (columns - 1), 0, 0);
    AcGeVector3d row = axes * AcGeVector3d(0, insert.rowSpacing() * (rows - 1), 0);
    frame.copies = {AcGeVector3d(), column, row, column + row};
  }
  return frame;
}

void Measure(std::vector<Frame>& stack, AcDbExtents& result) {
  while (!stack.empty()) {
    Frame& top = stack.back();
    if (top.next == top.entities.size()) {
      Frame done = std::move(stack.back());
      stack.pop_back();
      AcDbExtents& target = stack.empty() ? result : stack.back().box;
      if (done.box.isEmpty()) continue;
      for (const AcGeVector3d& shift : done.copies)
        target.addExt(AcDbExtents(done.box.minPoint() + shift, done.box.maxPoint() + shift));
      continue;
    }
    AcDbObjectPointer<AcDbEntity> entity(top.entities[top.next++], AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || entity->visibility() != AcDb::kVisible) continue;
    // An insert shows its attributes, not its block's definitions.
    if (dynamic_cast<const AcDbAttributeDefinition*>(entity.object()) != nullptr) continue;
    Frame child;
    if (const auto* insert = dynamic_cast<const AcDbBlockReference*>(entity.object())) {
      child = InsertFrame(*insert, top.transform, top.box);
    } else if (const auto* dimension = dynamic_cast<const AcDbDimension*>(entity.object())) {
      child.block = dimension->dimBlockId();
      child.transform = top.transform * DimensionBlockTransform(*dimension);
    } else {
      AddEntityExtents(*entity.object(), top.transform, top.box);
      continue;
    }
    entity.close();
    if (child.block.isNull() || !MayEnter(stack, child.block)) continue;
    child.entities = EntitiesOf(child.block);
    stack.push_back(std::move(child));
  }
}

}  // namespace

void AddExtents(const AcDbBlockReference& insert, const AcGeMatrix3d& transform, AcDbExtents& box) {
  std::vector<Frame> stack;
  Frame root = InsertFrame(insert, transform, box);
  if (root.block.isNull()) return;
  root.entities = EntitiesOf(root.block);
  stack.push_back(std::move(root));
  Measure(stack, box);
}

void AddExtents(const AcDbDimension& dimension, const AcGeMatrix3d& transform, AcDbExtents& box) {
  Frame root;
  root.block = dimension.dimBlockId();
  if (root.block.isNull()) return;
  root.transform = transform * DimensionBlockTransform(dimension);
  root.entities = EntitiesOf(root.block);
  std::vector<Frame> stack;
  stack.push_back(std::move(root));
  Measure(stack, box);
}

}  // namespace fx::dxf
