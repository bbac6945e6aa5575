#include "server/occupant_placement.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "host/database.h"
#include "rooms/contour_geometry.h"
#include "rooms/identifier_entity.h"
#include "rooms/inside_test.h"
#include "rooms/room_list_rows.h"

namespace fx::server {
namespace {

size_t CodePoints(const std::string& text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

bool Inside(const AcGePoint2d& point, const fx::rooms::ContourGeometry& contour) {
  return fx::rooms::TestPointInContour(point, contour) == fx::rooms::InsideResult::kInside;
}

// The area centroid of the polygon of the vertices (arcs taken as chords).
std::optional<AcGePoint2d> Centroid(const std::vector<AcGePoint2d>& vertices) {
  double twice_area = 0, x = 0, y = 0;
  for (size_t i = 0; i < vertices.size(); ++i) {
    const AcGePoint2d& a = vertices[i];
    const AcGePoint2d& b = vertices[(i + 1) % vertices.size()];
    const double cross = a.x * b.y - b.x * a.y;
    twice_area += cross;
    x += (a.x + b.x) * cross;
    y += (a.y + b.y) * cross;
  }
  if (std::abs(twice_area) < 1e-12) return std::nullopt;
  return AcGePoint2d(x / (3 * twice_area), y / (3 * twice_area));
}

// The identifier's reading direction: its rotation, turned half a circle
// when it would read upside down.
double ReadingRotation(double rotation) {
  rotation = std::remainder(rotation, 2 * M_PI);  // -pi..pi
  if (rotation > M_PI / 2 + 1e-9) rotation -= M_PI;
  if (rotation <= -M_PI / 2 + 1e-9) rotation += M_PI;
  return rotation;
}

// Coordinates along and across a reading direction.
struct Frame {
  double cos = 1, sin = 0;
  explicit Frame(double rotation) : cos(std::cos(rotation)), sin(std::sin(rotation)) {}
  AcGePoint2d ToFrame(const AcGePoint2d& p) const { return {p.x * cos + p.y * sin, -p.x * sin + p.y * cos}; }
  AcGePoint2d ToWorld(const AcGePoint2d& p) const { return {p.x * cos - p.y * sin, p.x * sin + p.y * cos}; }
};

struct RoomPlace {
  AcGePoint3d point;
  double rotation = 0;
  std::optional<fx::rooms::ContourGeometry> outline;
  double identifier_height = 0;  // of a text identifier; a fifth of its extents' for others
};

// Where the room's identifier is and which way it reads, and its outline.
RoomPlace PlaceOfRoom(const fx::rooms::RoomRow& row) {
  RoomPlace place;
  {
    AcDbEntityPointer entity(row.id, AcDb::kForRead);
    if (entity.openStatus() == Acad::eOk) {
      const fx::rooms::IdentifierPlace identifier = fx::rooms::PlaceOf(*entity.object());
      place.point = identifier.point;
      place.identifier_height = (identifier.extents.maxPoint().y - identifier.extents.minPoint().y) / 5;
      if (const auto* text = dynamic_cast<const AcDbText*>(entity.object())) {
        place.identifier_height = text->height();
        place.rotation = ReadingRotation(text->rotation());
      } else if (const auto* mtext = dynamic_cast<const AcDbMText*>(entity.object())) {
        place.identifier_height = mtext->textHeight();
        place.rotation = ReadingRotation(mtext->rotation());
      } else if (const auto* insert = dynamic_cast<const AcDbBlockReference*>(entity.object())) {
        place.rotation = ReadingRotation(insert->rotation());
      }
    }
  }
  if (row.record.linked.isNull()) return place;
  AcDbEntityPointer contour(row.record.linked, AcDb::kForRead);
  fx::rooms::ContourGeometry geometry;
  if (contour.openStatus() == Acad::eOk && fx::rooms::ReadContourGeometry(*contour.object(), &geometry) &&
      geometry.vertices.size() >= 3) {
    place.outline = std::move(geometry);
  }
  return place;
}

// Places an insert in a room with an outline: in the outline's extents
// along the reading direction, at their centre when it lies inside the
// outline, else at the outline's centroid when that does, else at the
// identifier. False when the outline has no area to fit texts in.
bool PlaceInOutline(const RoomPlace& place, const fx::rooms::RoomRow& row, PlannedInsert& insert) {
  const fx::rooms::ContourGeometry& outline = *place.outline;
  const Frame frame(place.rotation);
  AcGePoint2d low = frame.ToFrame(outline.vertices.front());
  AcGePoint2d high = low;
  for (const AcGePoint2d& vertex : outline.vertices) {
    const AcGePoint2d local = frame.ToFrame(vertex);
    low = {std::min(low.x, local.x), std::min(low.y, local.y)};
    high = {std::max(high.x, local.x), std::max(high.y, local.y)};
  }
  const double height = FittingTextHeight(insert.values, high.x - low.x, high.y - low.y);
  if (!(height > 0)) return false;
  insert.text_height = height;
  const AcGePoint2d centre = frame.ToWorld({(low.x + high.x) / 2, (low.y + high.y) / 2});
  const std::optional<AcGePoint2d> centroid = Centroid(outline.vertices);
  if (Inside(centre, outline)) {
    insert.position = AcGePoint3d(centre.x, centre.y, 0);
  } else if (centroid && Inside(*centroid, outline)) {
    insert.position = AcGePoint3d(centroid->x, centroid->y, 0);
  } else if (row.id == row.record.linked) {  // a record on the outline has no point of its own
    insert.position = AcGePoint3d(centre.x, centre.y, 0);
  }
  return true;
}

}  // namespace

double FittingTextHeight(const std::array<std::string, 5>& values, double width, double height) {
  size_t longest = 1;
  for (const std::string& value : values) longest = std::max(longest, CodePoints(value));
  return std::min({kFill * width / (static_cast<double>(longest) * kCharWidth),
                   kFill * height / kBlockHeight, std::min(width, height) * kMaxHeightShare});
}

OccupantPlan PlanOccupantImport(AcDbDatabase& database, const std::vector<OccupantRoom>& rooms) {
  OccupantPlan plan;
  std::unordered_map<std::string, const OccupantRoom*> by_name;
  for (const OccupantRoom& room : rooms) by_name.emplace(room.name, &room);
  std::unordered_set<std::string> matched;
  std::vector<size_t> without_outline;  // inserts whose height comes from the others
  std::vector<double> outlined_heights;
  std::vector<double> identifier_heights;

  const std::vector<fx::rooms::RoomRow> rows =
      fx::rooms::BuildRoomRows(fx::rooms::RoomEntitiesInDrawing(database));
  plan.drawing_rooms = rows.size();
  for (const fx::rooms::RoomRow& row : rows) {
    const auto found = by_name.find(fx::rooms::TrimBlanks(row.record.name));
    if (found == by_name.end()) {
      ++plan.without_data;
      continue;
    }
    matched.insert(found->first);
    const RoomPlace place = PlaceOfRoom(row);
    PlannedInsert insert;
    insert.position = place.point;
    insert.rotation = place.rotation;
    insert.values = OccupantValues(*found->second);
    if (place.outline && PlaceInOutline(place, row, insert)) {
      outlined_heights.push_back(insert.text_height);
    } else {
      without_outline.push_back(plan.inserts.size());
      identifier_heights.push_back(place.identifier_height);
    }
    plan.inserts.push_back(std::move(insert));
  }

  std::optional<double> median;
  if (!outlined_heights.empty()) {
    std::nth_element(outlined_heights.begin(),
                     outlined_heights.begin() + static_cast<std::ptrdiff_t>(outlined_heights.size() / 2),
                     outlined_heights.end());
    median = outlined_heights[outlined_heights.size() / 2];
  }
  for (size_t i = 0; i < without_outline.size(); ++i) {
    const double height = median.value_or(identifier_heights[i]);
    plan.inserts[without_outline[i]].text_height = height > 0 ? height : 1;
  }
  for (const OccupantRoom& room : rooms) {
    if (!matched.contains(room.name)) plan.not_in_drawing.push_back(room.name);
  }
  return plan;
}

}  // namespace fx::server
