#include "rooms/layer_unlocks.h"

#include "host/database.h"
#include "host/editor.h"

namespace fx::rooms {
namespace {

Acad::ErrorStatus SetLocked(AcDbObjectId layer, bool locked) {
  AcDbObjectPointer<AcDbLayerTableRecord> record(layer, AcDb::kForWrite);
  if (record.openStatus() != Acad::eOk) {
    acutPrintf("\nacdbOpenObject = %s", Acad::acadErrorStatusText(record.openStatus()));
    return record.openStatus();
  }
  const Acad::ErrorStatus status = record->setIsLocked(locked);
  if (status != Acad::eOk) acutPrintf("\nsetIsLocked = %s", Acad::acadErrorStatusText(status));
  return status;
}

bool IsLocked(AcDbObjectId layer) {
  AcDbObjectPointer<AcDbLayerTableRecord> record(layer, AcDb::kForRead);
  return record.openStatus() == Acad::eOk && record->isLocked();
}

}  // namespace

LayerUnlocks::~LayerUnlocks() {
  for (auto it = unlocked_.rbegin(); it != unlocked_.rend(); ++it) SetLocked(*it, true);
}

void LayerUnlocks::Unlock(AcDbObjectId layer) {
  if (layer.isNull() || !seen_.insert(layer).second || !IsLocked(layer)) return;
  if (SetLocked(layer, false) == Acad::eOk) unlocked_.push_back(layer);
}

}  // namespace fx::rooms
