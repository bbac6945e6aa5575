// Room identification: matching identifiers to contours, the problem flags
// and lists.
#include <unordered_set>

#include "host/database.h"
#include "host/editor.h"
#include "rooms/identifier_entity.h"
#include "rooms/inside_test.h"
#include "rooms/room_analysis.h"
#include "settings/duplicate_names_flag.h"

namespace fx::rooms {
namespace {

const char* Text(Acad::ErrorStatus status) { return Acad::acadErrorStatusText(status); }

void AddOnce(std::vector<AcDbObjectId>& list, std::unordered_set<AcDbObjectId>& listed, AcDbObjectId id) {
  if (listed.insert(id).second) list.push_back(id);
}

}  // namespace

// The first contour of the list that holds `point`. The index gives the
// contours whose box holds it, in list order: exactly those that can pass
// the inside test, so the result (and every arc refusal printed on the
// way) is that of trying the whole list in order.
std::optional<size_t> RoomAnalysis::FirstContourHolding(const AcGePoint3d& point) const {
  for (size_t contour : index_->ContoursAt(point.to2d())) {
    const InsideResult result = TestPointInContour(point.to2d(), contours_[contour]);
    if (result == InsideResult::kInside) return contour;
    if (result == InsideResult::kRefusedArcs) acutPrintf("%s", kArcsRefused);
  }
  return std::nullopt;
}

std::unordered_map<size_t, std::string> RoomAnalysis::TextsByContour(AcDbObjectId layer) const {
  std::unordered_map<size_t, std::string> texts;
  for (AcDbObjectId id : EntitiesOn(layer)) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || !IsTextEntity(*entity.object())) continue;
    if (std::optional<size_t> contour = FirstContourHolding(PlaceOf(*entity.object()).point)) {
      texts.try_emplace(*contour, IdentifierText(*entity.object()));
    }
  }
  return texts;
}

// Step 5, in list order. With "Automatically Resolve Duplicate Names" on
// (the settings dialog calls it "Automatically delete duplicate
// identifiers"), an identifier that falls into a contour already holding
// an identifier of the same trimmed name is the same room labelled twice:
// it is erased from the drawing instead of being flagged. Identifiers of
// different names in one contour are flagged either way.
bool RoomAnalysis::MatchIdentifiers() {
  const bool text_mode = options_.mode == IdentificationMode::kText;
  const bool resolve_duplicates = settings::AutoResolveDuplicateNames();
  std::unordered_set<std::string> names_before;
  names_before.reserve(identifiers_.size());
  // The names in each contour, kept only when they can erase a duplicate.
  std::unordered_map<size_t, std::unordered_set<std::string>> names_in_contour;
  for (Identifier& identifier : identifiers_) {
    RoomRecord& record = identifier.record;
    const std::string name = TrimBlanks(record.name);
    if (std::optional<size_t> contour = FirstContourHolding(identifier.point)) {
      if (text_mode) {
        if (auto type = types_.find(*contour); type != types_.end()) record.category = type->second;
        if (auto text = descriptions_.find(*contour); text != descriptions_.end()) {
          record.description = text->second;
        }
      }
      record.linked = contour_ids_[*contour];
      if (used_[*contour]) {
        if (resolve_duplicates && names_in_contour[*contour].contains(name) &&
            EraseDuplicate(identifier)) {
          continue;
        }
        record.flags |= kFlagMultipleIds;
      } else {
        ++identified_rooms_;
      }
      used_[*contour] = true;
      if (resolve_duplicates) names_in_contour[*contour].insert(name);
      if (intersecting_[*contour]) record.flags |= kFlagIntersected;
    } else {
      record.flags |= kFlagAreaNotFound;
    }
    if (!names_before.insert(name).second) record.flags |= kFlagDuplicate;
    const Acad::ErrorStatus status = SetXData(identifier.id, record);
    if (status != Acad::eOk) {
      acutPrintf("\nSetXData = %s", Text(status));
      return false;
    }
  }
  return true;
}

bool RoomAnalysis::EraseDuplicate(Identifier& identifier) {
  AcDbEntityPointer entity(identifier.id, AcDb::kForWrite);
  Acad::ErrorStatus status = entity.openStatus();
  if (status == Acad::eOk) status = entity->erase();
  if (status != Acad::eOk) {
    acutPrintf("\nerase = %s", Text(status));
    return false;
  }
  acutPrintf("\nDuplicate identifier \"%s\" deleted", identifier.record.name.c_str());
  identifier.erased = true;
  return true;
}

// Block mode with Yes to "remove block inserts": the insert that alone
// identifies its room hands its record to the contour and is erased, so
// the stamps leave the drawing and the rooms keep their data. Inserts with
// no contour, or sharing one, stay: their data has nowhere else to go and
// the problem lists point at them.
void RoomAnalysis::MoveRecordsToContours() {
  for (Identifier& identifier : identifiers_) {
    RoomRecord& record = identifier.record;
    if (identifier.erased || record.linked.isNull() || (record.flags & kFlagMultipleIds) != 0) continue;
    Acad::ErrorStatus status = SetXData(record.linked, record);
    if (status != Acad::eOk) {
      acutPrintf("\nSetXData = %s", Text(status));
      continue;
    }
    AcDbEntityPointer insert(identifier.id, AcDb::kForWrite);
    status = insert.openStatus();
    if (status == Acad::eOk) status = insert->erase();
    if (status != Acad::eOk) {
      acutPrintf("\nerase = %s", Text(status));
      RemoveRoomRecord(record.linked);
      continue;
    }
    identifier.id = record.linked;
  }
}

// Step 6. The identifier lists name the entity that stands for the room
// (the identifier, or its contour once the record moved there), in list
// order; the contour lists name contours in contour-list order (the
// intersected ones as they first appear in the pairs).
void RoomAnalysis::PublishProblems() {
  std::vector<AcDbObjectId> rooms;
  std::vector<AcDbObjectId> not_found;
  std::vector<AcDbObjectId> duplicates;
  std::vector<AcDbObjectId> multiple;
  for (const Identifier& identifier : identifiers_) {
    if (identifier.erased) continue;
    rooms.push_back(identifier.id);
    if (identifier.record.flags & kFlagAreaNotFound) not_found.push_back(identifier.id);
    if (identifier.record.flags & kFlagDuplicate) duplicates.push_back(identifier.id);
    if (identifier.record.flags & kFlagMultipleIds) multiple.push_back(identifier.id);
  }
  std::vector<AcDbObjectId> intersected;
  std::unordered_set<AcDbObjectId> listed;
  for (const auto& [a, b] : document_.intersectingPairs()) {
    AddOnce(intersected, listed, a);
    AddOnce(intersected, listed, b);
  }
  std::vector<AcDbObjectId> empty;
  for (size_t i = 0; i < contour_ids_.size(); ++i) {
    if (!used_[i]) empty.push_back(contour_ids_[i]);
  }
  document_.setProblems(ProblemKind::kAreaNotFound, std::move(not_found));
  document_.setProblems(ProblemKind::kDuplicateNumber, std::move(duplicates));
  document_.setProblems(ProblemKind::kIntersectedContour, std::move(intersected));
  document_.setProblems(ProblemKind::kEmptyContour, std::move(empty));
  document_.setProblems(ProblemKind::kMultipleIds, std::move(multiple));
  document_.setRoomIds(std::move(rooms));
  document_.setIdentifiedRoomCount(identified_rooms_);
  document_.setFloorOutline(floor_outline_);
}

}  // namespace fx::rooms
