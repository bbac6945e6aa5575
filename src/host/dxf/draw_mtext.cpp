#include "host/dxf/draw_mtext.h"

#include <algorithm>

#include "host/dxf/draw_text_box.h"
#include "host/dxf/dxf_utf8.h"

namespace fx::dxf {
namespace {

constexpr double kLinePitch = 5.0 / 3.0;  // line distance per unit of height

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

std::vector<std::string> WrapParagraph(std::string_view paragraph, double unit, double wrap_width) {
  std::vector<std::string> lines;
  if (!(wrap_width > 0)) {
    lines.emplace_back(paragraph);
    return lines;
  }
  std::string current;
  size_t start = 0;
  while (start <= paragraph.size()) {
    size_t blank = paragraph.find(' ', start);
    std::string_view word = paragraph.substr(start, blank == std::string_view::npos ? std::string_view::npos
                                                                                     : blank - start);
    std::string candidate = current.empty() ? std::string(word) : current + " " + std::string(word);
    if (!current.empty() && TextAdvance(candidate) * unit > wrap_width) {
      lines.push_back(current);
      current = std::string(word);
    } else {
      current = candidate;
    }
    if (blank == std::string_view::npos) break;
    start = blank + 1;
  }
  lines.push_back(current);
  return lines;
}

}  // namespace

std::string MTextPlainText(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) {
    char c = s[i];
    if (c == '{' || c == '}') {
      ++i;
      continue;
    }
    if (c != '\\' || i + 1 >= s.size()) {
      out += c;
      ++i;
      continue;
    }
    char code = s[i + 1];
    i += 2;
    switch (code) {
      case '\\': case '{': case '}': out += code; break;
      case 'P': case 'N': out += '\n'; break;
      case '~': AppendUtf8(0x00A0, &out); break;
      case 'L': case 'l': case 'O': case 'o': case 'K': case 'k': break;
      case 'S': i = AppendStack(s, i, out); break;
      case 'A': case 'C': case 'c': case 'F': case 'f': case 'H': case 'h':
      case 'Q': case 'q': case 'T': case 't': case 'W': case 'w': case 'p':
        i = SkipValue(s, i);
        break;
      default: out += code; break;
    }
  }
  return ExpandPercentCodes(out);
}

MTextBlock LayoutMText(std::string_view plain, double height, double width_factor,
                       double wrap_width, double spacing, int attachment) {
  MTextBlock block;
  if (plain.empty()) return block;
  const double unit = height * width_factor;
  for (size_t start = 0; start <= plain.size();) {
    size_t end = plain.find('\n', start);
    std::string_view paragraph = plain.substr(start, end == std::string_view::npos ? std::string_view::npos
                                                                                   : end - start);
    for (std::string& line : WrapParagraph(paragraph, unit, wrap_width))
      block.lines.push_back({std::move(line), 0, 0, 0});
    if (end == std::string_view::npos) break;
    start = end + 1;
  }
  attachment = std::clamp(attachment, 1, 9);
  const int column = (attachment - 1) % 3, row = (attachment - 1) / 3;
  const double pitch = height * kLinePitch * (spacing > 0 ? spacing : 1);
  const size_t n = block.lines.size();
  const double block_height = height + static_cast<double>(n - 1) * pitch;
  const double first_baseline = row == 0 ? -height : row == 1 ? block_height / 2 - height : block_height - height;
  double widest = 0;
  for (size_t i = 0; i < n; ++i) {
    MTextLine& line = block.lines[i];
    line.width = TextAdvance(line.text) * unit;
    line.x = column == 0 ? 0 : column == 1 ? -line.width / 2 : -line.width;
    line.y = first_baseline - static_cast<double>(i) * pitch;
    widest = std::max(widest, line.width);
  }
  block.left = column == 0 ? 0 : column == 1 ? -widest / 2 : -widest;
  block.right = block.left + widest;
  block.top = first_baseline + height;
  block.bottom = first_baseline - static_cast<double>(n - 1) * pitch;
  return block;
}

}  // namespace fx::dxf
