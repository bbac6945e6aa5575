#include "storey_entities.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "annotation_style.h"
#include "annotations.h"
#include "blocks.h"
#include "dxf_dimension.h"
#include "dxf_hatch.h"
#include "dxf_sections.h"
#include "layers.h"

namespace floorgen {

namespace {

constexpr double kAnsi31Scale = 20.0;
constexpr int kTitleColor = 5;  // blue, set on the entity itself
constexpr double kTitleWidth = 12000.0;

int DigitCount(std::size_t value) {
  int digits = 1;
  while (value >= 10) {
    value /= 10;
    ++digits;
  }
  return digits;
}

// "<storey>.<room>", the room number zero-padded to the width of the largest.
std::string RoomName(int storey_number, std::size_t room_number, int width) {
  char buffer[48];
  char* out = std::to_chars(buffer, buffer + 20, storey_number).ptr;
  *out++ = '.';
  for (int pad = width - DigitCount(room_number); pad > 0; --pad) *out++ = '0';
  out = std::to_chars(out, buffer + sizeof buffer, room_number).ptr;
  return std::string(buffer, out);
}

// Moves a storey's geometry from the shared layout to its place in the drawing.
class StoreyOffset {
 public:
  explicit StoreyOffset(Point offset) : offset_(offset) {}

  Point Apply(Point p) const { return p + offset_; }
  Segment Apply(const Segment& segment) const { return {Apply(segment.a), Apply(segment.b)}; }

  HatchEdge Apply(const HatchEdge& edge) const {
    if (const auto* line = std::get_if<LineEdge>(&edge)) return LineEdge{Apply(line->start), Apply(line->end)};
    ArcEdge arc = std::get<ArcEdge>(edge);
    arc.center = Apply(arc.center);
    return arc;
  }

  // The result stays valid until the next call; the buffer is reused.
  const Polygon& Apply(const Polygon& polygon) {
    moved_.clear();
    for (Point p : polygon) moved_.push_back(Apply(p));
    return moved_;
  }

 private:
  Point offset_;
  Polygon moved_;
};

void WriteRoom(EntityWriter& writer, StoreyOffset& offset, const Room& room, const std::string& name) {
  WriteClosedPolyline(writer, kLayerRoomContours, offset.Apply(room.contour));
  for (const Segment& wall : room.wall_lines) WriteLine(writer, kLayerWalls, offset.Apply(wall));
  if (room.door) {
    WriteInsert(writer, kLayerDoors, kBlockNames[kDoorBlock], offset.Apply(room.door->hinge),
                room.door->rotation_degrees, room.door->width / kDoorBlockWidth);
  }
  const std::string_view category = CategoryName(room.category);
  const Point tag = offset.Apply(room.tag_anchor);
  const std::array<AttributeValue, 3> attributes = {{
      {"NAME", name, {tag.x, tag.y + kTagNameOffsetY}, kTagNameHeight},
      {"CATEGORY", category, {tag.x, tag.y + kTagCategoryOffsetY}, kTagCategoryHeight},
      {"DESCRIPTION", room.description, {tag.x, tag.y + kTagDescriptionOffsetY}, kTagDescriptionHeight},
  }};
  WriteInsertWithAttributes(writer, kLayerRoomTags, kBlockNames[kRoomTagBlock], tag, attributes);

  const Point text = offset.Apply(room.text_anchor);
  WriteCenteredText(writer, kLayerRoomNames, text, kNameTextHeight, name);
  WriteCenteredText(writer, kLayerRoomTypes, {text.x, text.y - kTextLineSpacing}, kDetailTextHeight, category);
  WriteCenteredText(writer, kLayerRoomDescriptions, {text.x, text.y - 2 * kTextLineSpacing}, kDetailTextHeight,
                    room.description);
}

}  // namespace

void WriteStorey(EntityWriter& writer, const FloorLayout& layout, int storey) {
  StoreyOffset offset({layout.storey_pitch * storey, 0.0});
  WriteClosedPolyline(writer, kLayerFloorArea, offset.Apply(layout.outline));
  WriteClosedPolyline(writer, kLayerWalls, offset.Apply(layout.outline));  // outer face of the exterior walls
  const int name_width = std::max(2, DigitCount(layout.rooms.size()));
  for (std::size_t i = 0; i < layout.rooms.size(); ++i) {
    WriteRoom(writer, offset, layout.rooms[i], RoomName(storey + 1, i + 1, name_width));
  }
  WriteSolidHatch(writer, kLayerHatches, kColorByLayer, offset.Apply(layout.stair_flights));
  std::vector<HatchEdge> shaft;
  for (const HatchEdge& edge : layout.shaft_boundary) shaft.push_back(offset.Apply(edge));
  WriteAnsi31Hatch(writer, kLayerHatches, shaft, kAnsi31Scale);
}

void WriteDrawingAnnotations(EntityWriter& writer, const FloorLayout& layout, int storeys, int rooms_per_storey) {
  WriteRotatedDimension(writer, kLayerDimensions, BottomEdgeDimension(layout), kBlockNames[kDimensionBlock],
                        kStandardName);
  const TitleText title = MakeTitle(layout, storeys, rooms_per_storey);
  WriteMText(writer, kLayerTitle, kTitleColor, title.top_left, MTextAttachment::kTopLeft, title.height, kTitleWidth,
             title.first_line + "\\P" + title.second_line);
}

}  // namespace floorgen
