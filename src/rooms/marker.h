// Room markers: single-line texts in model space that stand for a room by
// hand. A marker shows its room's name ("Unknown Name" for an empty one) and
// carries the room record; the command vantoryaddmarker places one.
#ifndef FLOORXPORT_ROOMS_MARKER_H_
#define FLOORXPORT_ROOMS_MARKER_H_

#include <vector>

#include "host/ids.h"

class AcApDocument;

namespace fx::rooms {

inline constexpr const char* kUnknownName = "Unknown Name";

// The command vantoryaddmarker:
//   "\nSpecify internal point: "  anything but a point ends it silently;
//   the room properties dialog (room_prop_dialog.h) with an empty record;
//   OK: a text at the point with the record's name and the null text style,
//     appended to model space, closed, then the record written on it. The
//     first failure prints "\nCDocData::postToDwg = %s", "\npoText->close =
//     %s" or "\nSetXData = %s" and ends the command;
//   Cancel: prints "\npPolyline.openStatus = %s" with the host's text for
//     opening the null id (no boundary polyline was made), and places nothing.
// A placed marker is added to the document's markers and to its rooms
// (CDocData::addRoomId) once its record is written.
void AddMarker();

// The markers placed in `document` while it has been open (the
// application's list of marker ids), in order.
const std::vector<AcDbObjectId>& MarkerIds(AcApDocument* document);

// Erases the markers of `document` that still exist and empties the list,
// releasing its storage. A failed erase prints "\npMarker->erase = %s".
void EraseMarkers(AcApDocument* document);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_MARKER_H_
