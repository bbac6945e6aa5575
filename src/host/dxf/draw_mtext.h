// MTEXT contents as plain text, and its lines laid out with the width
// estimate of draw_text_box.h.
#ifndef FLOORXPORT_HOST_DXF_DRAW_MTEXT_H_
#define FLOORXPORT_HOST_DXF_DRAW_MTEXT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>
#include <vector>

namespace fx::dxf {

// The text MTEXT `contents` show, formatting removed: \P (and the column
// break \N) become '\n', \~ a no-break space, \\ \{ \} the character
// itself; groups { } vanish; codes with a value up to ';' (\A \C \c \F \f
// \H \Q \T \W \p) and toggles (\L \l \O \o \K \k) are removed; a stack
// \Sa^b; \Sa/b; \Sa#b; becomes "a/b" ("a" alone when b is empty); %%c, %%d
// and %%p become their symbols. An unknown code keeps its letter.
std::string MTextPlainText(std::string_view contents);

// How the lines of an MTEXT sit around its location, in its own frame (x
// along its direction, y up), in units of the drawing.
struct MTextLine {
  std::string text;
  double x = 0;      // start of the baseline
  double y = 0;
  double width = 0;  // estimated
};

struct MTextBlock {
  std::vector<MTextLine> lines;
  // The box of all lines relative to the location: from (left, bottom) to
  // (right, top).
  double left = 0, bottom = 0, right = 0, top = 0;
};

// Lays out plain text: paragraphs split at '\n' and, with a positive
// `wrap_width`, wrapped at blanks where the estimated width would pass it (a
// word longer than the width stays whole). Lines are `height` x 5/3 x
// `spacing` apart; the block's top is the first line's height above its
// baseline, its bottom the last baseline. `attachment` (1 to 9: top, middle,
// bottom rows of left, centre, right) puts the block's corner, edge middle
// or centre at the location; each line is aligned left, centred or right
// within the block by the same attachment.
MTextBlock LayoutMText(std::string_view plain, double height, double width_factor,
                       double wrap_width, double spacing, int attachment);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAW_MTEXT_H_
