#include "rooms/marker.h"

#include "host/database.h"
#include "host/dialog.h"
#include "host/documents.h"
#include "host/editor.h"
#include "rooms/doc_data.h"
#include "rooms/room_prop_dialog.h"
#include "rooms/room_record.h"

namespace fx::rooms {
namespace {

struct MarkerList {
  std::vector<AcDbObjectId> ids;
};

AcApDataManager<MarkerList>& Markers() {
  static AcApDataManager<MarkerList> markers;
  return markers;
}

// What the command does on Cancel: it would erase the boundary polyline of
// the operation, but none has been made, so opening its (null) id fails and
// that failure is the message the user sees. Kept as the command's answer to
// a cancel.
void EraseBoundaryPolyline(AcDbObjectId boundary) {
  AcDbObjectPointer<AcDbPolyline> polyline(boundary, AcDb::kForWrite);
  if (polyline.openStatus() != Acad::eOk) {
    acutPrintf("\npPolyline.openStatus = %s", Acad::acadErrorStatusText(polyline.openStatus()));
    return;
  }
  if (Acad::ErrorStatus status = polyline->erase(); status != Acad::eOk) {
    acutPrintf("\npPolyline->erase = %s", Acad::acadErrorStatusText(status));
  }
}

// Places the marker of `record` at `point`; the first failure is printed
// and ends the placing (a text already appended stays).
void PlaceMarker(AcApDocument* document, const AcGePoint3d& point, RoomRecord record) {
  const char* shown = record.name.empty() ? kUnknownName : record.name.c_str();
  auto* text = new AcDbText(point, shown, AcDbObjectId::kNull);
  CDocData& data = DocVars().docData(document);
  AcDbObjectId id;
  if (Acad::ErrorStatus status = data.postToDwg(text, id, AcDbBlockTableRecord::kModelSpace);
      status != Acad::eOk) {
    acutPrintf("\nCDocData::postToDwg = %s", Acad::acadErrorStatusText(status));
    if (text->isNewObject()) delete text;
    return;
  }
  Markers().docData(document).ids.push_back(id);
  // The record's extents are the marker's own, as for a name text; a text
  // without extents (empty, or of no height) stands at its point.
  if (text->getGeomExtents(record.extents) != Acad::eOk) record.extents.set(point, point);
  if (Acad::ErrorStatus status = text->close(); status != Acad::eOk) {
    acutPrintf("\npoText->close = %s", Acad::acadErrorStatusText(status));
    return;
  }
  if (Acad::ErrorStatus status = SetXData(id, record); status != Acad::eOk) {
    acutPrintf("\nSetXData = %s", Acad::acadErrorStatusText(status));
    return;
  }
  data.addRoomId(id);
}

}  // namespace

void AddMarker() {
  ads_point picked;
  if (acedGetPoint(nullptr, "\nSpecify internal point: ", picked) != RTNORM) return;
  AcApDocument* document = acDocManagerPtr()->curDocument();
  if (document == nullptr) return;
  CPvRoomPropDialog dialog(RoomRecord(), 0.0);
  if (fx::ShowDialog(dialog) != CPvRoomPropDialog::kOk) {
    EraseBoundaryPolyline(AcDbObjectId::kNull);
    return;
  }
  PlaceMarker(document, AcGePoint3d(picked[0], picked[1], picked[2]), dialog.record());
}

const std::vector<AcDbObjectId>& MarkerIds(AcApDocument* document) {
  return Markers().docData(document).ids;
}

void EraseMarkers(AcApDocument* document) {
  std::vector<AcDbObjectId>& ids = Markers().docData(document).ids;
  for (AcDbObjectId id : ids) {
    if (id.isErased()) continue;
    AcDbEntityPointer marker(id, AcDb::kForWrite);
    Acad::ErrorStatus status = marker.openStatus();
    if (status == Acad::eOk) status = marker->erase();
    if (status != Acad::eOk) acutPrintf("\npMarker->erase = %s", Acad::acadErrorStatusText(status));
  }
  std::vector<AcDbObjectId>().swap(ids);
}

}  // namespace fx::rooms
