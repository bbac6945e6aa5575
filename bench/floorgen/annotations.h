// Drawing-wide annotations: the dimension along the bottom edge of the first
// storey and the title text below it, plus the drawing extents they belong to.
#pragma once

#include <string>

#include "floor_layout.h"
#include "geometry.h"

namespace floorgen {

// Dimension style values in drawing units, before the overall scale.
inline constexpr double kDimScale = 100.0;
inline constexpr double kDimArrowSize = 2.5;
inline constexpr double kDimExtensionOffset = 0.625;  // gap between object and extension line
inline constexpr double kDimExtensionBeyond = 1.25;   // extension past the dimension line
inline constexpr double kDimTextGap = 0.625;
inline constexpr double kDimTextHeight = 2.5;

// A horizontal dimension measuring from `first` to `second`, drawn at `line_y`,
// with the text centred above the dimension line.
struct LinearDimension {
  Point first;
  Point second;
  double line_y = 0.0;
  double Measurement() const { return second.x - first.x; }
  Point TextBottomCenter() const;
  Point TextMiddle() const;
  Box Bounds() const;
};

LinearDimension BottomEdgeDimension(const FloorLayout& layout);

struct TitleText {
  Point top_left;
  double height = 0.0;
  std::string first_line;
  std::string second_line;
  Box Bounds() const;
};

TitleText MakeTitle(const FloorLayout& layout, int storeys, int rooms_per_storey);

// Bounds of everything drawn in model space for `storeys` storeys.
Box DrawingExtents(const FloorLayout& layout, int storeys, int rooms_per_storey);

}  // namespace floorgen
