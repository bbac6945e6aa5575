#include "host/dxf/draw_text_box.h"

#include <cctype>

#include "host/dxf/dxf_utf8.h"

namespace fx::dxf {
namespace {

bool IsFullWidth(char32_t c) {
  return (c >= 0x1100 && c <= 0x115F) ||  // Hangul Jamo
         (c >= 0x2E80 && c <= 0x303E) ||  // CJK radicals, punctuation
         (c >= 0x3041 && c <= 0x33FF) ||  // kana, CJK compatibility
         (c >= 0x3400 && c <= 0x4DBF) ||  // CJK extension A
         (c >= 0x4E00 && c <= 0x9FFF) ||  // CJK unified ideographs
         (c >= 0xAC00 && c <= 0xD7A3) ||  // Hangul syllables
         (c >= 0xF900 && c <= 0xFAFF) ||  // CJK compatibility ideographs
         (c >= 0xFF00 && c <= 0xFF60) ||  // full-width forms
         (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x20000 && c <= 0x3FFFD);
}

}  // namespace

double TextAdvance(std::string_view utf8) {
  double advance = 0;
  for (size_t pos = 0; pos < utf8.size();) {
    char32_t c = NextCodePoint(utf8, &pos);
    if (c < 0x20) continue;  // control characters take no room
    advance += IsFullWidth(c) ? kWideAdvance : kAverageAdvance;
  }
  return advance;
}

std::string ExpandPercentCodes(std::string_view raw, bool* underlined) {
  std::string out;
  out.reserve(raw.size());
  bool underline_on = false, ever_underlined = false;
  for (size_t i = 0; i < raw.size();) {
    if (raw.compare(i, 2, "%%") != 0 || i + 2 >= raw.size()) {
      out += raw[i++];
      continue;
    }
    char code = static_cast<char>(std::tolower(static_cast<unsigned char>(raw[i + 2])));
    if (std::isdigit(static_cast<unsigned char>(code)) && i + 4 < raw.size() &&
        std::isdigit(static_cast<unsigned char>(raw[i + 3])) &&
        std::isdigit(static_cast<unsigned char>(raw[i + 4]))) {
      int value = (raw[i + 2] - '0') * 100 + (raw[i + 3] - '0') * 10 + (raw[i + 4] - '0');
      AppendUtf8(static_cast<char32_t>(value), &out);
      i += 5;
      continue;
    }
    switch (code) {
      case 'c': AppendUtf8(0x2300, &out); break;  // diameter sign
      case 'd': AppendUtf8(0x00B0, &out); break;  // degree sign
      case 'p': AppendUtf8(0x00B1, &out); break;  // plus-minus sign
      case '%': out += '%'; break;
      case 'u':
        underline_on = !underline_on;
        ever_underlined = ever_underlined || underline_on;
        break;
      case 'o': break;
      default:  // not a code: keep the text as written
        out.append(raw.substr(i, 3));
        break;
    }
    i += 3;
  }
  if (underlined != nullptr) *underlined = ever_underlined;
  return out;
}

void AddTextFrameExtents(AcDbExtents& box, const TextFrame& frame, const AcGeMatrix3d& transform) {
  AcGeVector3d along = frame.x_axis * frame.width;
  AcGeVector3d up = frame.y_axis * frame.height + frame.x_axis * (frame.height * frame.slant);
  for (const AcGePoint3d& corner : {frame.origin, frame.origin + along, frame.origin + up,
                                    frame.origin + along + up})
    box.addPoint(transform * corner);
}

}  // namespace fx::dxf
