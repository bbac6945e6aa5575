// Where the occupant import puts each room's block, and at what size: the
// rooms of the drawing (the records the room analysis stored) matched to
// the rooms of the service's answer by trimmed name.
//
// The import block's texts are one drawing unit high, five lines kLinePitch
// apart around its base point; an insert's uniform scale is the text
// height it shows at, and its rotation the reading direction of the room's
// identifier (turned half a circle when that reads upside down). In a room
// with an outline, the outline is measured along that direction: the block
// goes to the centre of that box when it lies inside the outline, else to
// the outline's centroid when that does, else to the identifier's point;
// the text height is the largest at which the block's longest line fills
// at most kFill of the box's width and its five lines kFill of its height,
// and at most kMaxHeightShare of the box's smaller side, so a hall does not
// get a poster. A room without an outline gets its block at its
// identifier's point, with the median text height of the floor's outlined
// rooms (or, when no room has an outline, its identifier's text height).
#ifndef FLOORXPORT_SERVER_OCCUPANT_PLACEMENT_H_
#define FLOORXPORT_SERVER_OCCUPANT_PLACEMENT_H_

#include <array>
#include <string>
#include <vector>

#include "host/geometry.h"
#include "server/occupant_data.h"

class AcDbDatabase;

namespace fx::server {

// The block's layout, in block units.
inline constexpr double kLinePitch = 1.5;
inline constexpr double kBlockHeight = 4 * kLinePitch + 1;  // top of line 1 to foot of line 5
// The width of a character, in text heights, as the block's lines are
// measured (a generous average, so lines rather fall short than overrun).
inline constexpr double kCharWidth = 0.9;
inline constexpr double kFill = 0.9;
inline constexpr double kMaxHeightShare = 1.0 / 30;

struct PlannedInsert {
  AcGePoint3d position;
  double text_height = 1;  // the insert's scale
  double rotation = 0;     // the room identifier's reading direction
  std::array<std::string, 5> values;
};

struct OccupantPlan {
  std::vector<PlannedInsert> inserts;  // in model-space order of the rooms
  size_t drawing_rooms = 0;            // rooms of the drawing
  size_t without_data = 0;             // drawing rooms no answered room matched
  std::vector<std::string> not_in_drawing;  // answered rooms no drawing room matched
};

// Matches `rooms` to the drawing's rooms (every drawing room of a name gets
// that room's data) and places the inserts. Reads the drawing only.
OccupantPlan PlanOccupantImport(AcDbDatabase& database, const std::vector<OccupantRoom>& rooms);

// The text height at which `values` fit a room whose outline's extents
// are `width` by `height` (see above).
double FittingTextHeight(const std::array<std::string, 5>& values, double width, double height);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_OCCUPANT_PLACEMENT_H_
