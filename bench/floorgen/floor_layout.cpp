#include "floor_layout.h"

#include <cstddef>

#include "annotation_style.h"
#include "random.h"
#include "row_plan.h"
#include "walls.h"

namespace floorgen {

namespace {

constexpr double kCorridorWidth = 2000.0;  // wall axis to wall axis
constexpr int kMinRowDepth = 4800;
constexpr int kMaxRowDepth = 6000;
constexpr int kDepthStep = 100;
// Depth from the corridor that an L-shaped room leaves to the neighbour whose
// rear part it takes; enough for the neighbour's door swing and annotations.
constexpr double kShortenedDepth = 3400.0;
constexpr int kLShapeChancePercent = 12;
constexpr double kHingeFromSideWall = 150.0;
constexpr double kTagAboveCenter = 550.0;
constexpr double kTextBelowCenter = 150.0;
constexpr double kCorridorAnnotationSpread = 1500.0;
constexpr double kStoreyGap = 10000.0;

enum class PlaceShape { kRectangle, kWithWing, kShortened };

// A room's place along a row, in the row's local frame: u runs along the row,
// v from the corridor wall axis (v = 0) to the rear wall axis (v = depth).
struct Place {
  double u0 = 0.0;
  double u1 = 0.0;
  PlaceShape shape = PlaceShape::kRectangle;
  std::size_t wing = 0;  // kWithWing: the neighbouring place whose rear it takes
  bool is_stair = false;
};

struct Row {
  Frame frame;
  double depth = 0.0;
  std::vector<Place> places;
};

Polygon Rectangle(double u0, double v0, double u1, double v1) {
  return {{u0, v0}, {u1, v0}, {u1, v1}, {u0, v1}};
}

Polygon LocalAxisOutline(const Row& row, const Place& place) {
  const double depth = row.depth;
  switch (place.shape) {
    case PlaceShape::kShortened:
      return Rectangle(place.u0, 0.0, place.u1, kShortenedDepth);
    case PlaceShape::kWithWing: {
      const Place& wing = row.places[place.wing];
      if (wing.u0 >= place.u1) {
        return {{place.u0, 0.0}, {place.u1, 0.0}, {place.u1, kShortenedDepth},
                {wing.u1, kShortenedDepth}, {wing.u1, depth}, {place.u0, depth}};
      }
      return {{place.u0, 0.0}, {place.u1, 0.0}, {place.u1, depth},
              {wing.u0, depth}, {wing.u0, kShortenedDepth}, {place.u0, kShortenedDepth}};
    }
    case PlaceShape::kRectangle:
      break;
  }
  return Rectangle(place.u0, 0.0, place.u1, depth);
}

// Pairs neighbours into an L-shaped room and the room it wraps, now and then.
// Returns whether any pair was made.
bool MakeLShapes(Row& row, Random& random) {
  bool made = false;
  for (std::size_t i = 0; i + 1 < row.places.size(); ++i) {
    Place& left = row.places[i];
    Place& right = row.places[i + 1];
    if (left.is_stair || right.is_stair || left.shape != PlaceShape::kRectangle) continue;
    if (!random.Chance(kLShapeChancePercent)) continue;
    const bool left_wraps = random.Chance(50);
    Place& owner = left_wraps ? left : right;
    Place& wrapped = left_wraps ? right : left;
    owner.shape = PlaceShape::kWithWing;
    owner.wing = left_wraps ? i + 1 : i;
    wrapped.shape = PlaceShape::kShortened;
    made = true;
  }
  return made;
}

void ForceOneLShape(Row& row) {
  if (row.places.size() < 2) return;
  row.places[0].shape = PlaceShape::kWithWing;
  row.places[0].wing = 1;
  row.places[1].shape = PlaceShape::kShortened;
}

std::vector<Row> PlaceRows(const RowPlan& plan, Random& random) {
  std::vector<Row> rows;
  const double length = plan.row_length;
  double band_base = 0.0;
  for (int band = 0; band < plan.band_count; ++band) {
    const double south_depth = random.Between(kMinRowDepth / kDepthStep, kMaxRowDepth / kDepthStep) * kDepthStep;
    const double north_depth = random.Between(kMinRowDepth / kDepthStep, kMaxRowDepth / kDepthStep) * kDepthStep;
    const double corridor_bottom = band_base + south_depth;
    const double corridor_top = corridor_bottom + kCorridorWidth;
    // South rows are turned by 180 degrees so that in every row v points away
    // from the corridor into the rooms.
    rows.push_back({Frame({length, corridor_bottom}, 2), south_depth, {}});
    rows.push_back({Frame({0.0, corridor_top}, 0), north_depth, {}});
    band_base = corridor_top + north_depth;
  }
  for (std::size_t r = 0; r < rows.size(); ++r) {
    double u = 0.0;
    for (int width : plan.room_widths[r]) {
      Place place;
      place.u0 = u;
      place.u1 = u + width;
      place.is_stair = r == kStairRow && rows[r].places.empty();
      rows[r].places.push_back(place);
      u = place.u1;
    }
  }
  bool any_l_shape = false;
  for (Row& row : rows) any_l_shape = MakeLShapes(row, random) || any_l_shape;
  if (!any_l_shape) ForceOneLShape(rows[0]);
  return rows;
}

// The room's own place without any wing, as a contour in the local frame.
Box LocalOwnContour(const Row& row, const Place& place) {
  const double depth = place.shape == PlaceShape::kShortened ? kShortenedDepth : row.depth;
  Box box;
  box.Include(Point{place.u0 + kContourInset, kContourInset});
  box.Include(Point{place.u1 - kContourInset, depth - kContourInset});
  return box;
}

void AddDoor(FloorLayout& layout, const Row& row, const Place& place, std::size_t room_index,
             std::size_t corridor_index) {
  Room& room = layout.rooms[room_index];
  const double width = DoorWidth(room.category);
  const double hinge_u = place.u0 + kContourInset + kHingeFromSideWall;
  room.door = DoorPlacement{row.frame.ToWorld(Point{hinge_u, kContourInset}),
                            row.frame.RotationDegrees(), width};
  DoorOpening opening;
  opening.area.Include(row.frame.ToWorld(Point{hinge_u, -kContourInset}));
  opening.area.Include(row.frame.ToWorld(Point{hinge_u + width, kContourInset}));
  opening.room = room_index;
  opening.corridor = corridor_index;
  layout.openings.push_back(opening);
}

// Stair core furnishing, measured in the row frame from the room's contour:
// flights (solid fill) beyond the door swing near the entrance side wall, a
// shaft with one rounded corner (pattern fill) in the far rear corner, and the
// annotations in between.
constexpr double kFlightsFromSideWall = 300.0;
constexpr double kFlightsWidth = 2400.0;
constexpr double kFlightsFromCorridor = 1200.0;  // clear of the door swing
constexpr double kFlightsFromRearWall = 300.0;
constexpr double kShaftFromWalls = 300.0;
constexpr double kShaftSize = 1200.0;
constexpr double kShaftCornerRadius = 400.0;
// Annotations sit left of the shaft's rear corner, between flights and shaft.
constexpr double kStairAnnotationFromSideWall = 1825.0;
constexpr double kStairTagFromCorridor = 1925.0;
constexpr double kStairTextFromCorridor = 1225.0;

void FurnishStairCore(FloorLayout& layout, const Row& row, const Place& place, Room& room) {
  const Box contour = LocalOwnContour(row, place);
  const double u0 = contour.Min().x;
  const double v0 = contour.Min().y;
  const double u1 = contour.Max().x;
  const double v1 = contour.Max().y;
  const Frame& f = row.frame;
  layout.stair_flights = f.ToWorld(Rectangle(u0 + kFlightsFromSideWall, v0 + kFlightsFromCorridor,
                                             u0 + kFlightsFromSideWall + kFlightsWidth, v1 - kFlightsFromRearWall));

  const double su1 = u1 - kShaftFromWalls;
  const double sv1 = v1 - kShaftFromWalls;
  const double su0 = su1 - kShaftSize;
  const double sv0 = sv1 - kShaftSize;
  const double r = kShaftCornerRadius;
  layout.shaft_boundary = {
      LineEdge{f.ToWorld(Point{su0 + r, sv0}), f.ToWorld(Point{su1, sv0})},
      LineEdge{f.ToWorld(Point{su1, sv0}), f.ToWorld(Point{su1, sv1})},
      LineEdge{f.ToWorld(Point{su1, sv1}), f.ToWorld(Point{su0, sv1})},
      LineEdge{f.ToWorld(Point{su0, sv1}), f.ToWorld(Point{su0, sv0 + r})},
      ArcEdge{f.ToWorld(Point{su0 + r, sv0 + r}), r, 180.0 + f.RotationDegrees(), 270.0 + f.RotationDegrees()},
  };
  const double annotation_u = u1 - kStairAnnotationFromSideWall;
  room.tag_anchor = f.ToWorld(Point{annotation_u, v0 + kStairTagFromCorridor});
  room.text_anchor = f.ToWorld(Point{annotation_u, v0 + kStairTextFromCorridor});
}

void AddCorridor(FloorLayout& layout, const Row& south, const Row& north, double length) {
  const Point bottom_left = south.frame.ToWorld(Point{length, 0.0});
  const Point top_right = north.frame.ToWorld(Point{length, 0.0});
  Room corridor;
  corridor.category = RoomCategory::kCorridor;
  corridor.description = "Main corridor";
  corridor.axis_outline = {bottom_left, {top_right.x, bottom_left.y}, top_right, {bottom_left.x, top_right.y}};
  const Point center{(bottom_left.x + top_right.x) / 2, (bottom_left.y + top_right.y) / 2};
  corridor.tag_anchor = {center.x - kCorridorAnnotationSpread, center.y};
  corridor.text_anchor = {center.x + kCorridorAnnotationSpread, center.y + kTextLineSpacing};
  layout.rooms.push_back(corridor);
}

void AddRowRooms(FloorLayout& layout, const Row& row, std::size_t corridor_index, Random& random) {
  for (const Place& place : row.places) {
    Room room;
    room.category = place.is_stair ? RoomCategory::kCorridor : DrawRoomCategory(random);
    room.description = place.is_stair ? "Stair core" : DrawDescription(room.category, random);
    room.axis_outline = row.frame.ToWorld(LocalAxisOutline(row, place));
    const Point center = row.frame.ToWorld(LocalOwnContour(row, place).Center());
    room.tag_anchor = {center.x, center.y + kTagAboveCenter};
    room.text_anchor = {center.x, center.y - kTextBelowCenter};
    layout.rooms.push_back(room);
    const std::size_t index = layout.rooms.size() - 1;
    if (place.is_stair) FurnishStairCore(layout, row, place, layout.rooms[index]);
    AddDoor(layout, row, place, index, corridor_index);
  }
}

}  // namespace

FloorLayout GenerateFloorLayout(int room_count, std::uint64_t seed) {
  Random random(seed);
  const RowPlan plan = PlanRows(room_count, random);
  const std::vector<Row> rows = PlaceRows(plan, random);

  FloorLayout layout;
  layout.rooms.reserve(static_cast<std::size_t>(room_count));
  // Rooms are numbered around each corridor: the south row from east to west,
  // the corridor, then the north row from west to east.
  for (std::size_t band = 0; 2 * band + 1 < rows.size(); ++band) {
    const Row& south = rows[2 * band];
    const Row& north = rows[2 * band + 1];
    const std::size_t corridor_index = layout.rooms.size() + south.places.size();
    AddRowRooms(layout, south, corridor_index, random);
    AddCorridor(layout, south, north, plan.row_length);
    AddRowRooms(layout, north, corridor_index, random);
  }

  for (Room& room : layout.rooms) {
    room.wall_face = OffsetOrthogonalPolygon(room.axis_outline, kContourInset);
    room.contour = room.wall_face;
    layout.wall_axes.Include(BoundsOf(room.axis_outline));
  }
  const double outer = kExteriorWallThickness - kContourInset;
  const Point low{layout.wall_axes.Min().x - outer, layout.wall_axes.Min().y - outer};
  const Point high{layout.wall_axes.Max().x + outer, layout.wall_axes.Max().y + outer};
  layout.outline = {low, {high.x, low.y}, high, {low.x, high.y}};
  layout.storey_pitch = high.x - low.x + kStoreyGap;
  BuildWallLines(layout);
  return layout;
}

}  // namespace floorgen
