#include "annotations.h"

#include <algorithm>
#include <string>

namespace floorgen {

namespace {

constexpr double kDimensionDistance = 1500.0;  // from the measured edge
constexpr double kTitleBelowDimension = 1000.0;
constexpr double kTitleHeight = 350.0;
// Rough text metrics for the extents, relative to the text height: average
// glyph width, and the height of two MTEXT lines (a line pitch of 5/3 plus
// the first line's height and descenders).
constexpr double kGlyphWidthFactor = 0.75;
constexpr double kTwoLinesHeightFactor = 3.0;

}  // namespace

Point LinearDimension::TextBottomCenter() const {
  return {(first.x + second.x) / 2, line_y + kDimTextGap * kDimScale};
}

Point LinearDimension::TextMiddle() const {
  const Point bottom = TextBottomCenter();
  return {bottom.x, bottom.y + kDimTextHeight * kDimScale / 2};
}

Box LinearDimension::Bounds() const {
  Box box;
  box.Include(first);
  box.Include(second);
  box.Include(Point{first.x, line_y - kDimExtensionBeyond * kDimScale});
  const Point text = TextBottomCenter();
  box.Include(Point{text.x, text.y + kDimTextHeight * kDimScale});
  return box;
}

LinearDimension BottomEdgeDimension(const FloorLayout& layout) {
  const Box outline = BoundsOf(layout.outline);
  LinearDimension dimension;
  dimension.first = outline.Min();
  dimension.second = {outline.Max().x, outline.Min().y};
  dimension.line_y = outline.Min().y - kDimensionDistance;
  return dimension;
}

Box TitleText::Bounds() const {
  const std::size_t longest = std::max(first_line.size(), second_line.size());
  Box box;
  box.Include(top_left);
  box.Include(Point{top_left.x + static_cast<double>(longest) * height * kGlyphWidthFactor,
                    top_left.y - height * kTwoLinesHeightFactor});
  return box;
}

TitleText MakeTitle(const FloorLayout& layout, int storeys, int rooms_per_storey) {
  const Box dimension = BottomEdgeDimension(layout).Bounds();
  TitleText title;
  title.top_left = {dimension.Min().x, dimension.Min().y - kTitleBelowDimension};
  title.height = kTitleHeight;
  title.first_line = "Office floor plan";
  title.second_line = std::to_string(storeys) + (storeys == 1 ? " level, " : " levels, ") +
                      std::to_string(rooms_per_storey) + " rooms per level";
  return title;
}

Box DrawingExtents(const FloorLayout& layout, int storeys, int rooms_per_storey) {
  const Box first_storey = BoundsOf(layout.outline);
  Box extents = first_storey;
  extents.Include(first_storey.Translated({layout.storey_pitch * (storeys - 1), 0.0}));
  extents.Include(BottomEdgeDimension(layout).Bounds());
  extents.Include(MakeTitle(layout, storeys, rooms_per_storey).Bounds());
  return extents;
}

}  // namespace floorgen
