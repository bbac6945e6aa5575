// The working state of one room identification run (room_identification.h)
// and its steps; internal to rooms/. The steps live in three files: the
// floor outline and contours (room_analysis.cpp), the identifiers
// (identifier_collection.cpp) and the matching with the problem lists
// (room_matching.cpp).
#ifndef FLOORXPORT_ROOMS_ROOM_ANALYSIS_H_
#define FLOORXPORT_ROOMS_ROOM_ANALYSIS_H_

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/geometry.h"
#include "host/ids.h"
#include "rooms/contour_geometry.h"
#include "rooms/contour_index.h"
#include "rooms/doc_data.h"
#include "rooms/layer_unlocks.h"
#include "rooms/room_identification.h"
#include "rooms/room_record.h"

namespace fx::rooms {

class RoomAnalysis {
 public:
  RoomAnalysis(const ConvertOptions& options, CDocData& document)
      : options_(options), document_(document) {}
  RoomAnalysis(const RoomAnalysis&) = delete;
  RoomAnalysis& operator=(const RoomAnalysis&) = delete;

  // The whole run; false when it ended early.
  bool Run();

 private:
  struct Identifier {
    AcDbObjectId id;  // the identifying entity; its contour once moved there
    AcGePoint3d point;  // handed to the inside test
    RoomRecord record;
    bool erased = false;  // a duplicate identifier deleted during matching
  };

  // room_analysis.cpp
  bool WalkModelSpace();
  const std::vector<AcDbObjectId>& EntitiesOn(AcDbObjectId layer) const;
  bool FindFloorOutline();
  bool WriteFloorOutline(AcDbObjectId outline);
  bool CollectContours();
  // identifier_collection.cpp
  bool CollectBlockIdentifiers();
  bool ReadInsert(AcDbObjectId insert, bool& skipped, Identifier& identifier);
  bool CollectTextIdentifiers();
  bool IsFrozen(AcDbObjectId layer);
  // room_matching.cpp
  std::optional<size_t> FirstContourHolding(const AcGePoint3d& point) const;
  std::unordered_map<size_t, std::string> TextsByContour(AcDbObjectId layer) const;
  bool MatchIdentifiers();
  bool EraseDuplicate(Identifier& identifier);
  void MoveRecordsToContours();
  void PublishProblems();

  const ConvertOptions& options_;
  CDocData& document_;
  LayerUnlocks unlocks_;

  AcDbObjectId model_space_;
  std::unordered_map<AcDbObjectId, std::vector<AcDbObjectId>> by_layer_;  // model space
  std::unordered_map<AcDbObjectId, bool> frozen_;
  AcDbObjectId floor_outline_;

  // The contour list, in model-space order, and what is known of each.
  std::vector<AcDbObjectId> contour_ids_;
  std::vector<ContourGeometry> contours_;
  std::vector<bool> used_;
  std::vector<bool> intersecting_;
  std::unique_ptr<ContourIndex> index_;

  std::vector<Identifier> identifiers_;
  std::unordered_map<size_t, std::string> types_;         // Text mode, by contour
  std::unordered_map<size_t, std::string> descriptions_;  // Text mode, by contour
  size_t identified_rooms_ = 0;
};

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_ROOM_ANALYSIS_H_
