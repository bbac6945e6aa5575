#include "host/dxf/draw_mtext.h"

#include <cstdlib>

#include "host/dxf/draw_text_box.h"
#include "host/dxf/dxf_utf8.h"

namespace fx::dxf {
namespace {

// Skips a code's value: past the next ';', or to the end when there is none.
size_t SkipValue(std::string_view s, size_t i) {
  size_t end = s.find(';', i);
  return end == std::string_view::npos ? s.size() : end + 1;
}

// Reads a stack's value from `i` (after "\S") and appends it as "a/b".
size_t AppendStack(std::string_view s, size_t i, std::string& out) {
  std::string upper, lower;
  std::string* part = &upper;
  for (; i < s.size() && s[i] != ';'; ++i) {
    if (s[i] == '\\' && i + 1 < s.size()) {
      *part += s[++i];
    } else if (part == &upper && (s[i] == '^' || s[i] == '/' || s[i] == '#')) {
      part = &lower;
    } else {
      *part += s[i];
    }
  }
  // A space after the separator only marks the stack's alignment.
  size_t first = lower.find_first_not_of(' ');
  lower = first == std::string::npos ? std::string() : lower.substr(first);
  out += upper;
  if (!lower.empty()) out += "/" + lower;
  return i < s.size() ? i + 1 : i;
}

// The width factor after a \W value: "f" sets it, "fx" multiplies it; a
// value that is not a positive number leaves it.
double WidthFactor(std::string_view value, double factor) {
  std::string text(value);
  char* end = nullptr;
  double f = std::strtod(text.c_str(), &end);
  if (end == text.c_str() || !(f > 0)) return factor;
  return *end == 'x' || *end == 'X' ? factor * f : f;
}

// The alignment a \p value gives, from its q entry ("\pxi1,qc;").
MTextAlign ParagraphAlign(std::string_view value, MTextAlign align) {
  size_t q = value.find('q');
  if (q == std::string_view::npos || q + 1 >= value.size()) return align;
  switch (value[q + 1]) {
    case 'l': case 'j': case 'd': return MTextAlign::kLeft;
    case 'c': return MTextAlign::kCentre;
    case 'r': return MTextAlign::kRight;
    case '*': return MTextAlign::kByAttachment;
    default: return align;
  }
}

// The paragraphs of `s` with their spans' text before %%-codes are expanded.
std::vector<MTextParagraph> ReadParagraphs(std::string_view s, double width_factor) {
  std::vector<MTextParagraph> paragraphs(1);
  std::vector<double> groups;  // the width factor outside each open group
  double factor = width_factor;
  MTextAlign align = MTextAlign::kByAttachment;
  auto append = [&](std::string_view text) {
    std::vector<MTextSpan>& spans = paragraphs.back().spans;
    if (spans.empty() || spans.back().width_factor != factor) spans.push_back({"", factor});
    spans.back().text += text;
  };
  for (size_t i = 0; i < s.size();) {
    char c = s[i];
    if (c == '{' || c == '}') {
      if (c == '{') {
        groups.push_back(factor);
      } else if (!groups.empty()) {
        factor = groups.back();
        groups.pop_back();
      }
      ++i;
      continue;
    }
    if (c != '\\' || i + 1 >= s.size()) {
      append(s.substr(i++, 1));
      continue;
    }
    char code = s[i + 1];
    i += 2;
    switch (code) {
      case '\\': case '{': case '}': append(std::string_view(&s[i - 1], 1)); break;
      case 'P': case 'N':
        paragraphs.back().align = align;
        paragraphs.emplace_back();
        break;
      case '~': {
        std::string nbsp;
        AppendUtf8(0x00A0, &nbsp);
        append(nbsp);
        break;
      }
      case 'L': case 'l': case 'O': case 'o': case 'K': case 'k': break;
      case 'S': {
        std::string stack;
        i = AppendStack(s, i, stack);
        append(stack);
        break;
      }
      case 'W': case 'p': {
        size_t end = SkipValue(s, i);
        if (code == 'W') factor = WidthFactor(s.substr(i, end - i), factor);
        else align = ParagraphAlign(s.substr(i, end - i), align);
        i = end;
        break;
      }
      case 'A': case 'C': case 'c': case 'F': case 'f': case 'H': case 'h':
      case 'Q': case 'q': case 'T': case 't': case 'w':
        i = SkipValue(s, i);
        break;
      default: append(std::string_view(&s[i - 1], 1)); break;
    }
  }
  paragraphs.back().align = align;
  return paragraphs;
}

}  // namespace

std::string MTextPlainText(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  bool first = true;
  for (const MTextParagraph& paragraph : ReadParagraphs(s, 1)) {
    if (!first) out += '\n';
    first = false;
    for (const MTextSpan& span : paragraph.spans) out += span.text;
  }
  return ExpandPercentCodes(out);
}

std::vector<MTextParagraph> MTextParagraphs(std::string_view contents, double width_factor) {
  std::vector<MTextParagraph> paragraphs = ReadParagraphs(contents, width_factor);
  for (MTextParagraph& paragraph : paragraphs)
    for (MTextSpan& span : paragraph.spans) span.text = ExpandPercentCodes(span.text);
  return paragraphs;
}

}  // namespace fx::dxf
