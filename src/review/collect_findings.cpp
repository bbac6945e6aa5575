#include <map>
#include <unordered_map>

#include "host/database.h"
#include "review/finding.h"
#include "review/fingerprint.h"
#include "rooms/contour_geometry.h"
#include "rooms/doc_data.h"
#include "rooms/identifier_entity.h"
#include "rooms/room_list_rows.h"
#include "rooms/room_record.h"

namespace fx::review {
namespace {

using fx::rooms::RoomRecord;

std::vector<AcGePoint2d> BoxRing(const AcDbExtents& box) {
  const AcGePoint3d& lo = box.minPoint();
  const AcGePoint3d& hi = box.maxPoint();
  return {{lo.x, lo.y}, {hi.x, lo.y}, {hi.x, hi.y}, {lo.x, hi.y}};
}

AcGePoint2d Centre(const AcDbExtents& box) {
  return {(box.minPoint().x + box.maxPoint().x) / 2, (box.minPoint().y + box.maxPoint().y) / 2};
}

// The names of the rooms each contour holds, from the records of the
// analysis's identifiers (a record moved onto its contour names it too).
class RoomNames {
 public:
  explicit RoomNames(const fx::rooms::CDocData& data) {
    for (AcDbObjectId id : data.roomIds()) {
      RoomRecord record;
      if (!fx::rooms::ReadRoomRecord(id, &record)) continue;
      const AcDbObjectId contour = record.linked.isNull() ? id : record.linked;
      std::string& names = by_contour_[contour];
      names += (names.empty() ? "" : ", ") + fx::rooms::TrimBlanks(record.name);
    }
  }
  std::string Of(AcDbObjectId contour) const {
    const auto found = by_contour_.find(contour);
    return found == by_contour_.end() ? std::string() : found->second;
  }

 private:
  std::unordered_map<AcDbObjectId, std::string> by_contour_;
};

// Geometry of a contour entity: its ring, its centre, and the fingerprint text.
void ReadContour(const AcDbEntity& entity, Finding& finding) {
  fx::rooms::ContourGeometry geometry;
  fx::rooms::ReadContourGeometry(entity, &geometry);
  AcDbExtents box = geometry.extents;
  if (box.isEmpty()) entity.getGeomExtents(box);
  if (!box.isEmpty()) finding.point = Centre(box);
  finding.contour_box = box;
  if (geometry.has_bulges || geometry.vertices.size() < 3) {
    finding.outline = box.isEmpty() ? std::vector<AcGePoint2d>{} : BoxRing(box);
  } else {
    finding.outline = geometry.vertices;
  }
  finding.fingerprint = ContourText(Info(finding.kind).id, geometry.vertices);
}

// One finding for entity `id`; false when it cannot be opened.
bool ReadFinding(ProblemKind kind, AcDbObjectId id, const RoomNames& names, Finding& finding) {
  AcDbEntityPointer entity(id, AcDb::kForRead);
  if (entity.openStatus() != Acad::eOk) return false;
  finding.kind = kind;
  finding.handle = id.handle().ascii();
  finding.layer = entity->layer();
  RoomRecord record;
  const bool has_record = fx::rooms::ReadRoomRecord(id, &record);
  AcDbObjectId contour = has_record ? record.linked : AcDbObjectId();
  if (fx::rooms::IsContourEntity(*entity.object())) {
    // A contour of a contour kind, or one that received its identifier's
    // record (inserts removed).
    contour = id;
    ReadContour(*entity.object(), finding);
    finding.room = names.Of(id);
  } else {
    const fx::rooms::IdentifierPlace place = fx::rooms::PlaceOf(*entity.object());
    finding.point = place.point.to2d();
    finding.outline = BoxRing(place.extents);
    finding.room = fx::rooms::TrimBlanks(record.name);
    finding.fingerprint = IdentifierText(Info(kind).id, finding.room, finding.point);
  }
  if (!contour.isNull()) {
    finding.contour = contour.handle().ascii();
    if (contour != id) {
      AcDbEntityPointer contour_entity(contour, AcDb::kForRead);
      if (contour_entity.openStatus() == Acad::eOk) contour_entity->getGeomExtents(finding.contour_box);
    }
  }
  finding.area = fx::rooms::EntityArea(contour);
  return true;
}

}  // namespace

std::vector<Finding> CollectFindings(const fx::rooms::CDocData& data) {
  const RoomNames names(data);
  std::vector<Finding> findings;
  std::map<std::string, int> occurrences;  // by fingerprint text
  for (const KindInfo& info : kKinds) {
    for (AcDbObjectId id : data.problems(info.kind)) {
      Finding finding;
      if (!ReadFinding(info.kind, id, names, finding)) continue;
      const int seen = occurrences[finding.fingerprint]++;
      if (seen > 0) finding.fingerprint += "#" + std::to_string(seen + 1);
      finding.fingerprint = FingerprintOf(finding.fingerprint);
      findings.push_back(std::move(finding));
    }
  }
  return findings;
}

AcDbExtents OutlineBox(const Finding& finding) {
  AcDbExtents box;
  for (const AcGePoint2d& point : finding.outline) box.addPoint({point.x, point.y, 0});
  if (box.isEmpty()) box.addPoint({finding.point.x, finding.point.y, 0});
  return box;
}

}  // namespace fx::review
