// How the headless host lays out MTEXT, as the editor does, with the width
// estimate of draw_text_box.h for glyphs (0.65 x height x width factor, 1.0
// for full-width characters):
//
// - Paragraphs break lines. With a reference width W > 0 a paragraph's words
//   (split at blanks; a no-break space joins) wrap where the next word would
//   end past W, the blanks between them counted; a word wider than W stays
//   whole on a line of its own. Blanks at a wrap and at a paragraph's end do
//   not count in a line's width (nor are they drawn).
// - The column is W wide, or as wide as the widest line when W is 0. Each
//   line sits in it at the left, in the middle or at the right, as its
//   paragraph's \pq code says, or else as the attachment's column does.
// - Baselines are height x 5/3 x line spacing factor apart; the block's top
//   is the first line's height above the first baseline, its bottom the last
//   baseline.
// - The attachment point (1 to 9: top, middle, bottom rows of left, centre,
//   right) puts the column's top or bottom edge or vertical middle, and its
//   left or right edge or horizontal middle, at the location.
// All coordinates are in the MTEXT's own frame: x along its direction, y up,
// origin at its location, in units of the drawing.
#ifndef FLOORXPORT_HOST_DXF_MTEXT_LAYOUT_H_
#define FLOORXPORT_HOST_DXF_MTEXT_LAYOUT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/draw_mtext.h"

namespace fx::dxf {

struct MTextFormat {
  double height = 1;
  double reference_width = 0;  // group 41; 0 or less: no wrapping
  double spacing = 1;          // line spacing factor (group 44)
  int attachment = 1;          // group 71
};

// A piece of a line drawn with one width factor, from x on the line's
// baseline.
struct MTextRun {
  std::string text;
  double x = 0;
  double width = 0;  // estimated
  double width_factor = 1;
};

struct MTextLine {
  std::string text;  // its runs' text
  std::vector<MTextRun> runs;
  double x = 0;  // start of the baseline
  double y = 0;
  double width = 0;
};

struct MTextBlock {
  std::vector<MTextLine> lines;
  // The column, across: from column_left to column_right.
  double column_left = 0, column_right = 0;
  // The box of the lines' text: from (left, bottom) to (right, top).
  double left = 0, bottom = 0, right = 0, top = 0;
  // The alignment of the first paragraph in the column (0 left, 0.5
  // centre, 1 right): where a box of another width measured for the
  // text sits in the column.
  double first_align = 0;
};

MTextBlock LayoutMText(const std::vector<MTextParagraph>& paragraphs, const MTextFormat& format);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_MTEXT_LAYOUT_H_
