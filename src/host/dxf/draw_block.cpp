#include "host/dxf/draw_block.h"

#include <algorithm>
#include <string>
#include <vector>

#include "host/database.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/entity_support.h"
#include "host/world_draw.h"

namespace fx::dxf {
namespace {

// The blocks whose entities are being drawn on this thread, outermost first.
// Drawing recurses through the entities' own worldDraw, so the stack lives
// beside it rather than in a caller's loop.
thread_local std::vector<AcDbObjectId> t_drawing;

class BlockGuard {
 public:
  explicit BlockGuard(AcDbObjectId block) { t_drawing.push_back(block); }
  ~BlockGuard() { t_drawing.pop_back(); }
  BlockGuard(const BlockGuard&) = delete;
  BlockGuard& operator=(const BlockGuard&) = delete;
};

std::string BlockLabel(AcDbObjectId block) {
  AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
  return record.openStatus() == Acad::eOk ? record->getName() : block.handle().ascii();
}

}  // namespace

bool DrawBlockContents(AcDbObjectId block, AcGiWorldDraw& draw) {
  if (std::find(t_drawing.begin(), t_drawing.end(), block) != t_drawing.end()) {
    ReportDrawWarning("Block \"" + BlockLabel(block) + "\" inserts itself; its inner insert is not drawn");
    return false;
  }
  if (t_drawing.size() >= static_cast<size_t>(kMaxBlockDepth)) {
    ReportDrawWarning("Block \"" + BlockLabel(block) + "\" is nested more than " +
                      std::to_string(kMaxBlockDepth) + " deep; it is not drawn");
    return false;
  }
  std::vector<AcDbObjectId> entities;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) return false;
    entities = record->entityIds();
  }
  BlockGuard guard(block);
  for (AcDbObjectId id : entities) {
    if (draw.regenAbort()) return true;
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || entity->visibility() != AcDb::kVisible) continue;
    if (dynamic_cast<AcDbAttributeDefinition*>(entity.object()) != nullptr) continue;
    if (!entity->worldDraw(&draw)) return true;
  }
  return false;
}

}  // namespace fx::dxf
