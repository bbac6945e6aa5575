// MTEXT contents read for display: the plain text, and the paragraphs with
// what the layout needs of their formatting (alignment, width factors).
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

// How a paragraph's lines sit in the column: as the attachment point says
// (left, centre or right), or as a \pq code says. Justified and distributed
// paragraphs (\pqj, \pqd) start at the left edge and count as left.
enum class MTextAlign { kByAttachment, kLeft, kCentre, kRight };

// A piece of a paragraph drawn with one width factor.
struct MTextSpan {
  std::string text;  // plain, as MTextPlainText gives it
  double width_factor = 1;
};

struct MTextParagraph {
  std::vector<MTextSpan> spans;  // none for an empty paragraph
  MTextAlign align = MTextAlign::kByAttachment;
};

// The paragraphs of `contents` (split where MTextPlainText puts '\n'), their
// spans' text as MTextPlainText gives it. Width factors start at
// `width_factor` (the text style's); \Wf; sets f, \Wfx; multiplies by f,
// within the group { } it appears in. A paragraph takes the alignment of
// the last \p code with a q value (l, c, r, j, d; * for the attachment's)
// given in it or in a paragraph before it: paragraph codes hold until
// changed, groups do not limit them.
std::vector<MTextParagraph> MTextParagraphs(std::string_view contents, double width_factor);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAW_MTEXT_H_
