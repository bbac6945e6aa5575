// Geometry and room data of one storey, before anything is written as DXF.
// All storeys of a drawing share this layout; they differ only by an offset
// and by their room names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "geometry.h"
#include "room_category.h"

namespace floorgen {

inline constexpr double kInteriorWallThickness = 150.0;
inline constexpr double kExteriorWallThickness = 300.0;
// Room contours lie on the inner faces of the walls around them.
inline constexpr double kContourInset = kInteriorWallThickness / 2;

// Door hinge on the room side of the wall. The door leaf opens by turning
// counter-clockwise from the local +x axis (given by `rotation_degrees`) into the room.
struct DoorPlacement {
  Point hinge;
  double rotation_degrees = 0.0;
  double width = 0.0;
};

struct Room {
  RoomCategory category = RoomCategory::kOffice;
  std::string_view description;
  Polygon axis_outline;  // along the wall axes; rooms tile the storey without gaps
  Polygon wall_face;     // inner face of the walls around the room
  Polygon contour;       // written to the contour layer; wall_face unless enlarged
  std::optional<DoorPlacement> door;
  std::vector<Segment> wall_lines;  // the room's wall faces with door gaps and jambs
  Point tag_anchor;                 // centre of the room tag
  Point text_anchor;                // centre of the first of the room's text lines
};

struct LineEdge {
  Point start;
  Point end;
};

struct ArcEdge {
  Point center;
  double radius = 0.0;
  double start_degrees = 0.0;  // counter-clockwise from start to end
  double end_degrees = 0.0;
};

using HatchEdge = std::variant<LineEdge, ArcEdge>;

// Wall opening for a door, spanning the wall from the room face to the
// corridor face; `room` and `corridor` index FloorLayout::rooms.
struct DoorOpening {
  Box area;
  std::size_t room = 0;
  std::size_t corridor = 0;
};

struct FloorLayout {
  Box wall_axes;    // bounds of all room axis outlines
  Polygon outline;  // outer face of the exterior walls
  std::vector<Room> rooms;
  std::vector<DoorOpening> openings;
  Polygon stair_flights;                  // solid-filled area in the stair core
  std::vector<HatchEdge> shaft_boundary;  // closed loop, pattern-filled
  double storey_pitch = 0.0;              // x offset from one storey to the next
};

// Lays out a storey with `room_count` rooms (at least 3, corridors included).
FloorLayout GenerateFloorLayout(int room_count, std::uint64_t seed);

}  // namespace floorgen
