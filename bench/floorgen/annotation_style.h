// Sizes of the room annotations (tag block and text lines), in millimetres.
// Shared by the layout, which keeps room annotations clear of walls and doors,
// and by the DXF writers that draw them.
#pragma once

namespace floorgen {

// Room tag block: a frame centred on the insertion point and three attributes.
inline constexpr double kTagHalfWidth = 900.0;
inline constexpr double kTagHalfHeight = 400.0;
inline constexpr double kTagNameHeight = 250.0;
inline constexpr double kTagNameOffsetY = 150.0;
inline constexpr double kTagCategoryHeight = 150.0;
inline constexpr double kTagCategoryOffsetY = -100.0;
inline constexpr double kTagDescriptionHeight = 130.0;
inline constexpr double kTagDescriptionOffsetY = -280.0;

// Room text lines (name, category, description) from the text anchor downwards.
inline constexpr double kNameTextHeight = 200.0;
inline constexpr double kDetailTextHeight = 150.0;
inline constexpr double kTextLineSpacing = 250.0;

}  // namespace floorgen
