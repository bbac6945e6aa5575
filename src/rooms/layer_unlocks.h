// Layers unlocked for the span of one command and locked again when it
// ends, however it ends.
#ifndef FLOORXPORT_ROOMS_LAYER_UNLOCKS_H_
#define FLOORXPORT_ROOMS_LAYER_UNLOCKS_H_

#include <unordered_set>
#include <vector>

#include "host/ids.h"

namespace fx::rooms {

class LayerUnlocks {
 public:
  LayerUnlocks() = default;
  // Locks again, in reverse order, every layer this object unlocked.
  ~LayerUnlocks();
  LayerUnlocks(const LayerUnlocks&) = delete;
  LayerUnlocks& operator=(const LayerUnlocks&) = delete;

  // Unlocks `layer` when it is locked. A layer that cannot be opened or
  // changed prints "\nacdbOpenObject = %s" (or "\nsetIsLocked = %s") and
  // stays as it is: writes to its entities then fail with their own message.
  void Unlock(AcDbObjectId layer);
  const std::vector<AcDbObjectId>& unlocked() const { return unlocked_; }

 private:
  std::unordered_set<AcDbObjectId> seen_;
  std::vector<AcDbObjectId> unlocked_;
};

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_LAYER_UNLOCKS_H_
