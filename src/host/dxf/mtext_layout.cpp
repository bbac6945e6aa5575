#include "host/dxf/mtext_layout.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "host/dxf/draw_text_box.h"

namespace fx::dxf {
namespace {

constexpr double kLinePitch = 5.0 / 3.0;  // line distance per unit of height

// A paragraph's text with the byte offsets where its spans start.
struct FlatParagraph {
  std::string text;
  std::vector<std::pair<size_t, double>> spans;  // start, width factor

  explicit FlatParagraph(const MTextParagraph& paragraph) {
    for (const MTextSpan& span : paragraph.spans) {
      spans.emplace_back(text.size(), span.width_factor);
      text += span.text;
    }
  }

  // Calls piece(begin, end, width factor) for each span's part of [begin, end).
  template <class Piece>
  void ForEachPiece(size_t begin, size_t end, Piece piece) const {
    for (size_t k = 0; k < spans.size(); ++k) {
      size_t from = std::max(begin, spans[k].first);
      size_t to = std::min(end, k + 1 < spans.size() ? spans[k + 1].first : text.size());
      if (from < to) piece(from, to, spans[k].second);
    }
  }

  // The estimated advance of [begin, end) in units of height.
  double Advance(size_t begin, size_t end) const {
    double advance = 0;
    ForEachPiece(begin, end, [&](size_t from, size_t to, double factor) {
      advance += TextAdvance(std::string_view(text).substr(from, to - from)) * factor;
    });
    return advance;
  }
};

// The lines of a paragraph as byte ranges of its text: broken where a word
// would end past `wrap` (in units of height; no wrapping when not positive).
std::vector<std::pair<size_t, size_t>> BreakLines(const FlatParagraph& p, double wrap) {
  std::vector<std::pair<size_t, size_t>> words;  // begin, end
  for (size_t i = 0; i < p.text.size();) {
    size_t begin = p.text.find_first_not_of(' ', i);
    if (begin == std::string::npos) break;
    size_t end = std::min(p.text.find(' ', begin), p.text.size());
    words.emplace_back(begin, end);
    i = end;
  }
  if (words.empty()) return {{0, 0}};
  std::vector<std::pair<size_t, size_t>> lines;
  // The first line keeps the blanks before the first word.
  std::pair<size_t, size_t> line{0, words[0].second};
  for (size_t k = 1; k < words.size(); ++k) {
    if (wrap > 0 && p.Advance(line.first, words[k].second) > wrap) {
      lines.push_back(line);
      line = words[k];
    } else {
      line.second = words[k].second;
    }
  }
  lines.push_back(line);
  return lines;
}

// Where a paragraph's lines sit across the column: 0 left, 0.5 centre, 1 right.
double AlignFraction(MTextAlign align, int column) {
  switch (align) {
    case MTextAlign::kLeft: return 0;
    case MTextAlign::kCentre: return 0.5;
    case MTextAlign::kRight: return 1;
    case MTextAlign::kByAttachment: break;
  }
  return column * 0.5;
}

}  // namespace

MTextBlock LayoutMText(const std::vector<MTextParagraph>& paragraphs, const MTextFormat& format) {
  MTextBlock block;
  const double h = format.height;
  const int attachment = std::clamp(format.attachment, 1, 9);
  const int column = (attachment - 1) % 3, row = (attachment - 1) / 3;
  std::vector<double> fractions;  // of each line
  for (const MTextParagraph& paragraph : paragraphs) {
    FlatParagraph flat(paragraph);
    double fraction = AlignFraction(paragraph.align, column);
    for (auto [begin, end] : BreakLines(flat, format.reference_width > 0 ? format.reference_width / h : 0)) {
      MTextLine& line = block.lines.emplace_back();
      flat.ForEachPiece(begin, end, [&](size_t from, size_t to, double factor) {
        MTextRun run{flat.text.substr(from, to - from), line.width, 0, factor};
        run.width = TextAdvance(run.text) * factor * h;
        line.width += run.width;
        line.text += run.text;
        line.runs.push_back(std::move(run));
      });
      fractions.push_back(fraction);
    }
  }
  if (block.lines.empty()) return block;
  double column_width = format.reference_width;
  if (!(column_width > 0)) {
    column_width = 0;
    for (const MTextLine& line : block.lines) column_width = std::max(column_width, line.width);
  }
  block.column_left = -column * 0.5 * column_width;
  block.column_right = block.column_left + column_width;
  block.first_align = fractions.front();

  const double pitch = h * kLinePitch * (format.spacing > 0 ? format.spacing : 1);
  const size_t n = block.lines.size();
  const double block_height = h + static_cast<double>(n - 1) * pitch;
  const double first_baseline = row == 0 ? -h : row == 1 ? block_height / 2 - h : block_height - h;
  block.left = std::numeric_limits<double>::infinity();
  block.right = -block.left;
  for (size_t i = 0; i < n; ++i) {
    MTextLine& line = block.lines[i];
    line.x = block.column_left + fractions[i] * (column_width - line.width);
    line.y = first_baseline - static_cast<double>(i) * pitch;
    for (MTextRun& run : line.runs) run.x += line.x;
    if (line.text.empty()) continue;
    block.left = std::min(block.left, line.x);
    block.right = std::max(block.right, line.x + line.width);
  }
  if (block.left > block.right) block.left = block.right = block.column_left;
  block.top = first_baseline + h;
  block.bottom = first_baseline - static_cast<double>(n - 1) * pitch;
  return block;
}

}  // namespace fx::dxf
