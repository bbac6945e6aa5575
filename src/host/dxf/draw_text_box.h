// How the headless host places text it cannot measure: it has no fonts, so
// a line's width is estimated from its characters.
//
// The rule: a character advances kAverageAdvance x height x width factor,
// a full-width character (CJK ideographs, kana, Hangul, full-width forms)
// kWideAdvance x height x width factor. 0.65 is the average advance of
// proportional fonts over mixed-case text with digits and blanks (narrow
// "i", "l", "1" and wide "M", "W" even out over a room label); it puts a
// label's box where a reader sees the text, within about a character either
// way. Vertically a line spans from its baseline to its height (capitals);
// descenders (kDescent x height below the baseline) count only where an
// alignment refers to the bottom of the text.
#ifndef FLOORXPORT_HOST_DXF_DRAW_TEXT_BOX_H_
#define FLOORXPORT_HOST_DXF_DRAW_TEXT_BOX_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>

#include "host/geometry.h"

namespace fx::dxf {

inline constexpr double kAverageAdvance = 0.65;
inline constexpr double kWideAdvance = 1.0;
inline constexpr double kDescent = 0.3;

// The estimated advance of `utf8` in units of height x width factor.
double TextAdvance(std::string_view utf8);

// A TEXT value with its %%-codes replaced for display: %%c, %%d, %%p and
// %%nnn become the characters they stand for, %%% a percent sign; the
// underline and overline toggles %%u and %%o are removed, and *underlined
// tells whether %%u turned underlining on anywhere.
std::string ExpandPercentCodes(std::string_view raw, bool* underlined = nullptr);

// One line of text placed in space: the start of its baseline, unit vectors
// along the baseline and up, its estimated width and its height. `slant` is
// the tangent of the obliquing angle (the top edge shifts by height x slant).
struct TextFrame {
  AcGePoint3d origin;
  AcGeVector3d x_axis{1, 0, 0};
  AcGeVector3d y_axis{0, 1, 0};
  double width = 0;
  double height = 0;
  double slant = 0;
};

// Adds the four corners of a frame's box, mapped by `transform`.
void AddTextFrameExtents(AcDbExtents& box, const TextFrame& frame, const AcGeMatrix3d& transform);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAW_TEXT_BOX_H_
