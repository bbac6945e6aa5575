// ASCII DXF: each tag is two lines, the group code and the value. The reader splits lines
// with memchr, keeps values as views into the file's bytes, and checks that numeric values
// read as numbers, since broken numbers would turn into broken geometry further up.
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "host/dxf/dxf_readers.h"
#include "host/dxf/dxf_values.h"

namespace fx::dxf {
namespace {

constexpr std::string_view kUtf8ByteOrderMark = "\xEF\xBB\xBF";

// Number of lines in [begin, end): newlines, plus one for an unterminated last line.
// Counts eight bytes at a time; it runs over the whole file before parsing, so that the
// tag vector can be sized exactly once.
size_t CountLines(const char* begin, const char* end) {
  constexpr uint64_t kNewlines = 0x0A0A0A0A0A0A0A0AULL;
  constexpr uint64_t kLow7 = 0x7F7F7F7F7F7F7F7FULL;
  constexpr uint64_t kOnes = 0x0101010101010101ULL;
  size_t count = 0;
  const char* p = begin;
  while (end - p >= 8) {
    // Per-byte counters in one word, flushed before any byte of it can overflow.
    uint64_t counters = 0;
    for (int round = 0; round < 255 && end - p >= 8; ++round, p += 8) {
      uint64_t word;
      std::memcpy(&word, p, sizeof word);
      const uint64_t x = word ^ kNewlines;  // zero bytes where the newlines are
      const uint64_t nonzero = ((x & kLow7) + kLow7) | x;
      counters += (~nonzero >> 7) & kOnes;
    }
    for (int byte = 0; byte < 8; ++byte) count += (counters >> (8 * byte)) & 0xFF;
  }
  for (; p < end; ++p) count += *p == '\n';
  if (end > begin && end[-1] != '\n') ++count;
  return count;
}

// Group code lines hold an integer, usually right-aligned ("  0", " 10", "1001"). Plain
// digits are read here; anything else (a sign) is left to from_chars.
bool ParseGroupCode(std::string_view line, int* code) {
  const std::string_view text = TrimBlanks(line);
  if (!text.empty() && text.size() <= 5 && text.front() != '-') {
    int value = 0;
    for (char c : text) {
      if (c < '0' || c > '9') return false;
      value = value * 10 + (c - '0');
    }
    *code = value;
    return value <= 32767;
  }
  if (text.empty()) return false;
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, *code);
  return ec == std::errc() && ptr == end && *code >= 0 && *code <= 32767;
}

std::string_view WithoutCarriageReturn(const char* begin, const char* end) {
  if (end > begin && end[-1] == '\r') --end;
  return {begin, static_cast<size_t>(end - begin)};
}

bool OnlyWhitespace(const char* begin, const char* end) {
  for (const char* p = begin; p < end; ++p) {
    if (*p != ' ' && *p != '\t' && *p != '\r' && *p != '\n') return false;
  }
  return true;
}

// Start of the line that ends just before `line_end` (a newline's position).
const char* LineStart(const char* line_end, const char* body_begin) {
  const char* p = line_end;
  while (p > body_begin && p[-1] != '\n') --p;
  return p;
}

// How many code lines of each width (1 to 5 digits) have how many leading blanks (0 to 7).
using CodeBlankCounts = std::array<std::array<uint32_t, 8>, AsciiStyle::kWidths>;

void CountBlanks(std::string_view code_line, CodeBlankCounts* counts) {
  size_t blanks = 0;
  while (blanks < code_line.size() && code_line[blanks] == ' ') ++blanks;
  const size_t digits = TrimBlanks(code_line).size();
  if (digits >= 1 && digits <= counts->size() && blanks < (*counts)[0].size()) {
    ++(*counts)[digits - 1][blanks];
  }
}

// The padding the file gives codes of each width: the most frequent one. A width it never
// writes is right-aligned with the others when they all are, else padded like the widest
// narrower one.
std::array<uint8_t, AsciiStyle::kWidths> CodeBlanks(const CodeBlankCounts& counts) {
  std::array<uint8_t, AsciiStyle::kWidths> blanks = AsciiStyle{}.code_blanks;
  std::array<bool, AsciiStyle::kWidths> seen{};
  for (size_t width = 0; width < counts.size(); ++width) {
    const auto most = std::max_element(counts[width].begin(), counts[width].end());
    seen[width] = *most > 0;
    if (seen[width]) blanks[width] = static_cast<uint8_t>(most - counts[width].begin());
  }
  if (!seen[0]) return blanks;  // no 0-tags: no file to follow
  const int field = blanks[0] + 1;
  const auto aligned = [field](size_t width) {
    return static_cast<uint8_t>(std::max(0, field - static_cast<int>(width) - 1));
  };
  bool right_aligned = true;
  for (size_t width = 0; width < blanks.size(); ++width) {
    right_aligned &= !seen[width] || blanks[width] == aligned(width);
  }
  for (size_t width = 1; width < blanks.size(); ++width) {
    if (!seen[width]) blanks[width] = right_aligned ? aligned(width) : blanks[width - 1];
  }
  return blanks;
}

std::string Place(std::string_view name, int64_t line) {
  return std::string(name) + ":" + std::to_string(line) + ": ";
}

struct ScanResult {
  CodeBlankCounts code_blanks{};
  size_t record_count = 0;
  const char* tail = nullptr;  // the first byte after the last tag read
  bool saw_eof = false;
  bool cut_off = false;  // an incomplete last tag was dropped
  int64_t end_line = 0;  // the line after the last tag read
};

// The tag loop: appends one Tag per code/value line pair until the EOF record, the end of
// the bytes, or a run of blank lines reaching the end.
class TagScanner {
 public:
  TagScanner(std::string_view name, const char* begin, const char* end, std::vector<Tag>* tags,
             DiagnosticSink* sink, DamagedFile damaged)
      : name_(name), begin_(begin), end_(end), tags_(*tags), sink_(sink), damaged_(damaged) {}

  bool Run(ScanResult* result, LoadError* error) {
    const char* p = begin_;
    int64_t line = 1;  // of the code line at p
    while (p < end_) {
      const char* code_newline = Find('\n', p);
      const std::string_view code_line =
          WithoutCarriageReturn(p, code_newline != nullptr ? code_newline : end_);
      int code = 0;
      if (!ParseGroupCode(code_line, &code)) {
        if (OnlyWhitespace(p, end_)) break;  // blank lines at the end are tolerated
        if (result->record_count == 0) return NotDxf(line, error);
        return Fail(line, "invalid group code '" + QuoteForMessage(code_line) + "'", error);
      }
      CountBlanks(code_line, &result->code_blanks);
      if (code_newline == nullptr || code_newline + 1 == end_) {
        const std::string what = "unexpected end of file: group code " + std::to_string(code) + " has no value line";
        if (damaged_ == DamagedFile::kRefuse || result->record_count == 0) return Fail(line, what, error);
        if (sink_ != nullptr) sink_->Report(Severity::kWarning, Place(name_, line) + what + ": dropped it");
        result->cut_off = true;  // p stays at the incomplete tag, which the tail leaves out
        break;
      }
      const char* value_begin = code_newline + 1;
      const char* value_newline = Find('\n', value_begin);
      const std::string_view value =
          WithoutCarriageReturn(value_begin, value_newline != nullptr ? value_newline : end_);
      tags_.push_back({code, value});
      p = value_newline != nullptr ? value_newline + 1 : end_;
      if (code == 0) {
        const std::string_view type = TrimBlanks(value);
        if (result->record_count == 0 && type != "SECTION") return NotDxf(line, error);
        ++result->record_count;
        if (type == "EOF") {
          result->saw_eof = true;
          line += 2;
          break;
        }
      } else if (result->record_count == 0 && code != 999) {
        return NotDxf(line, error);
      } else {
        CheckNumber(code, value, line + 1);
      }
      line += 2;
    }
    if (result->record_count == 0) return NotDxf(line, error);
    if (!first_number_error_.empty()) {
      error->message = first_number_error_;
      return false;
    }
    result->tail = p;
    result->end_line = line;
    return true;
  }

 private:
  // Lines are short: a plain loop finds most line ends before a memchr call would start.
  const char* Find(char c, const char* from) const {
    const char* const near_end = end_ - from > 32 ? from + 32 : end_;
    for (const char* p = from; p < near_end; ++p)
      if (*p == c) return p;
    return near_end == end_ ? nullptr
                            : static_cast<const char*>(std::memchr(near_end, c, static_cast<size_t>(end_ - near_end)));
  }

  bool Fail(int64_t line, const std::string& what, LoadError* error) const {
    error->message = Place(name_, line) + what;
    return false;
  }

  bool NotDxf(int64_t line, LoadError* error) const {
    return Fail(line, "not a DXF file: expected a 0/SECTION tag or a 999 comment", error);
  }

  // A numeric value that does not read as a number fails the load once the whole file has
  // been read, so that the sink hears of every such value, not only the first.
  void CheckNumber(int code, std::string_view value, int64_t line) {
    const GroupValueType type = ValueTypeOf(code);
    if (!IsNumeric(type)) return;
    const bool is_double = type == GroupValueType::kDouble;
    if (is_double ? ParseDouble(value).has_value() : ParseInt(value).has_value()) return;
    const std::string message = Place(name_, line) + "group code " + std::to_string(code) +
                                (is_double ? " expects a number" : " expects an integer") +
                                ", found '" + QuoteForMessage(value) + "'";
    if (first_number_error_.empty()) first_number_error_ = message;
    if (sink_ != nullptr && number_errors_++ < kMaxReportedErrors) {
      sink_->Report(Severity::kError, message);
    }
  }

  std::string_view name_;
  const char* begin_;
  const char* end_;
  std::vector<Tag>& tags_;
  DiagnosticSink* sink_;
  DamagedFile damaged_;
  std::string first_number_error_;
  int number_errors_ = 0;
};

}  // namespace

bool AsciiReader::Read(Document& doc, LoadError* error, DiagnosticSink* sink, DamagedFile damaged) {
  const std::string_view bytes = doc.bytes_;
  doc.head_size_ = bytes.starts_with(kUtf8ByteOrderMark) ? kUtf8ByteOrderMark.size() : 0;
  const char* const body_begin = bytes.data() + doc.head_size_;
  const char* const body_end = bytes.data() + bytes.size();

  // Every tag is two lines; reserve once (edits never add to this vector).
  const size_t max_tags = CountLines(body_begin, body_end) / 2 + 1;
  doc.tags_.reserve(max_tags);

  ScanResult scan;
  if (!TagScanner(doc.name(), body_begin, body_end, &doc.tags_, sink, damaged).Run(&scan, error)) {
    return false;
  }
  if (!scan.saw_eof && sink != nullptr) {
    sink->Report(Severity::kWarning,
                 Place(doc.name(), scan.end_line) + "missing EOF record at end of file");
  }

  // Records from the 0-tags. A record's bytes run from its 0-tag's code line to the next
  // record's; a 0-tag's code line is the line before its value.
  const std::vector<Tag>& tags = doc.tags_;
  size_t first_record_tag = 0;
  while (tags[first_record_tag].code != 0) ++first_record_tag;
  doc.prologue_tag_count_ = first_record_tag;
  doc.records_.reserve(scan.record_count + scan.record_count / 32 + 16);
  const auto byte_offset = [&](const char* p) { return static_cast<uint32_t>(p - bytes.data()); };
  for (size_t i = first_record_tag; i < tags.size(); ++i) {
    if (tags[i].code != 0) continue;
    const char* code_line = LineStart(tags[i].value.data() - 1, body_begin);
    if (!doc.records_.empty()) {
      Document::Record& previous = doc.records_.back();
      previous.tag_count = static_cast<uint32_t>(&tags[i] - previous.tags);
      previous.original_size = byte_offset(code_line) - previous.original_begin;
    } else {
      doc.prologue_size_ = static_cast<size_t>(code_line - body_begin);
    }
    const auto id = static_cast<RecordId>(doc.records_.size());
    doc.records_.push_back({.tags = &tags[i],
                            .tag_count = 0,
                            .next = kNoRecord,
                            .prev = id == 0 ? kNoRecord : id - 1,
                            .original_begin = byte_offset(code_line),
                            .original_size = 0,
                            .source_line = static_cast<int32_t>(2 * i + 1),
                            .live = true});
    if (id > 0) doc.records_[id - 1].next = id;
  }
  Document::Record& last = doc.records_.back();
  last.tag_count = static_cast<uint32_t>(tags.data() + tags.size() - last.tags);
  last.original_size = byte_offset(scan.tail) - last.original_begin;
  doc.first_ = 0;
  doc.last_ = static_cast<RecordId>(doc.records_.size() - 1);
  doc.live_records_ = doc.records_.size();
  doc.tail_begin_ = scan.cut_off ? bytes.size() : byte_offset(scan.tail);

  const char* first_newline =
      static_cast<const char*>(std::memchr(body_begin, '\n', bytes.size() - doc.head_size_));
  doc.ascii_style_.crlf =
      first_newline != nullptr && first_newline > body_begin && first_newline[-1] == '\r';
  doc.ascii_style_.code_blanks = CodeBlanks(scan.code_blanks);
  return true;
}

}  // namespace fx::dxf
