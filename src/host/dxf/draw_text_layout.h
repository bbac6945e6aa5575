// Placing one line of TEXT, ATTRIB or ATTDEF: where its baseline starts
// and which way it runs, from its alignment, rotation and mirroring, with
// the width estimate of draw_text_box.h; and drawing it.
#ifndef FLOORXPORT_HOST_DXF_DRAW_TEXT_LAYOUT_H_
#define FLOORXPORT_HOST_DXF_DRAW_TEXT_LAYOUT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>

#include "host/db_entities.h"
#include "host/dxf/draw_text_box.h"
#include "host/dxf/tag_list.h"

class AcGiWorldDraw;

namespace fx::dxf {

// What the layout of a TEXT-like entity reads of it, each read once (its
// accessors read the normal again for every point); the values its
// accessors answer.
struct TextPlacement {
  AcGeVector3d normal;
  AcGePoint3d position, alignment_point;  // world coordinates
  double height = 0, width_factor = 1, rotation = 0, oblique = 0;
  AcDbTextHorzMode horizontal = kTextLeft;
  AcDbTextVertMode vertical = kTextBase;
  bool mirrored_x = false, mirrored_y = false;
};
TextPlacement ReadTextPlacement(const AcDbText& text);  // beside the class

// The frame of `text` showing `display` (its value with %%-codes expanded),
// in world coordinates:
// - left/baseline: the baseline starts at the first alignment point;
// - otherwise the second point is the reference: centre, middle and right
//   put the middle or the end of the estimated width there; baseline,
//   bottom (kDescent x height below the baseline), middle (half the height
//   above it) and top (the height above it) place the baseline; "middle"
//   (kTextMid) centres both ways;
// - aligned and fit run from the first point to the second, whatever the
//   rotation, and take that distance as their width.
// Mirrored in X runs the text backwards (the frame's x axis reversed, its
// alignment mirrored with it); mirrored in Y turns it upside down.
TextFrame LayoutText(const AcDbText& text, std::string_view display);
// The same from what was read of the text and the estimated advance of
// `display` (TextAdvance).
TextFrame LayoutText(const TextPlacement& text, double advance);

// Draws `value` (raw, with %%-codes) of `text` as one text primitive at the
// start of its baseline, the %%-codes expanded (passed as raw text); the
// font from the text's style, height, width factor (for aligned and fit
// the one that stretches the estimated width over the two points) and
// obliquing from the text. Returns true when the sink asked to stop.
bool DrawTextLine(const AcDbText& text, AcGiWorldDraw& draw, std::string_view value);

// The tags of a new TEXT-like entity (TEXT, ATTRIB, ATTDEF) up to its first
// AcDbText subclass data: position (world coordinates, normal +Z), height,
// value, rotation (radians) and the style's name when `style` opens.
TagList NewTextTags(std::string_view type, const AcGePoint3d& position, std::string_view text,
                    AcDbObjectId style, double height, double rotation);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAW_TEXT_LAYOUT_H_
