// ASCII DXF: each tag is two lines, the group code and the value. The reader splits lines
// with memchr, keeps values as views into the file's bytes, and checks that numeric values
// read as numbers, since broken numbers would turn into broken geometry further up.
#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "host/dxf/dxf_file_io.h"
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

// The first '\n' in [from, end), or null. Lines are short: a word at a time finds most line
// ends before a memchr call would start.
inline const char* FindNewline(const char* from, const char* end) {
  constexpr uint64_t kNewlines = 0x0A0A0A0A0A0A0A0AULL;
  constexpr uint64_t kLow7 = 0x7F7F7F7F7F7F7F7FULL;
  const char* p = from;
  for (int words = 0; words < 4 && end - p >= 8; ++words, p += 8) {
    uint64_t word;
    std::memcpy(&word, p, sizeof word);
    const uint64_t x = word ^ kNewlines;
    // High bit set exactly in the bytes that are '\n'.
    const uint64_t found = ~(((x & kLow7) + kLow7) | x | kLow7);
    if (found != 0) return p + std::countr_zero(found) / 8;
  }
  return static_cast<const char*>(std::memchr(p, '\n', static_cast<size_t>(end - p)));
}

// Whether `value` is a number as most files write them: blanks, a sign, at most 18 digits with
// one decimal point where `point` allows it, blanks. Every such value reads as a number;
// anything else is left to the number parsers to decide.
inline bool IsPlainNumber(std::string_view value, bool point) {
  const char* p = value.data();
  const char* const end = p + value.size();
  while (p < end && (*p == ' ' || *p == '\t')) ++p;
  if (p < end && (*p == '-' || *p == '+')) ++p;
  int digits = 0;
  for (; p < end; ++p) {
    if (*p >= '0' && *p <= '9') {
      if (++digits > 18) return false;
    } else if (*p == '.' && point) {
      point = false;
    } else {
      break;
    }
  }
  while (p < end && (*p == ' ' || *p == '\t')) ++p;
  return digits > 0 && p == end;
}

// A code line as most files write it: blanks, 1 to 5 digits, "\r\n" or "\n". Reads the code
// and its padding and returns the line's newline; null for anything else, which the general
// path then reads.
inline const char* ReadPlainCodeLine(const char* p, const char* end, int* code, size_t* blanks,
                                     size_t* digits) {
  const char* q = p;
  while (q < end && *q == ' ') ++q;
  const char* const first_digit = q;
  int value = 0;
  while (q < end && *q >= '0' && *q <= '9' && q - first_digit < 5) value = value * 10 + (*q++ - '0');
  if (q == first_digit || value > 32767) return nullptr;
  *digits = static_cast<size_t>(q - first_digit);
  if (q < end && *q == '\r') ++q;
  if (q >= end || *q != '\n') return nullptr;
  *code = value;
  *blanks = static_cast<size_t>(first_digit - p);
  return q;
}

}  // namespace

// The tag loop: packs one tag per code/value line pair and opens a record at each 0-tag,
// until the EOF record, the end of the bytes, or a run of blank lines reaching the end. The
// tag and record vectors are reserved by the caller, so nothing moves while they fill.
class AsciiTagScanner {
 public:
  AsciiTagScanner(Document& doc, const char* begin, const char* end, DiagnosticSink* sink,
             DamagedFile damaged, std::vector<PackedTag>& tags, std::vector<Document::Record>& records,
             TagValues& values)
      : doc_(doc), name_(doc.name()), begin_(begin), end_(end), sink_(sink), damaged_(damaged),
        tags_(tags), records_(records), values_(values) {}

  bool Run(ScanResult* result, LoadError* error) {
    const char* p = begin_;
    int64_t line = 1;  // of the code line at p
    while (p < end_) {
      int code = 0;
      size_t blanks = 0;
      size_t digits = 0;
      const char* code_newline = ReadPlainCodeLine(p, end_, &code, &blanks, &digits);
      if (code_newline != nullptr) {
        if (digits <= result->code_blanks.size() && blanks < result->code_blanks[0].size()) {
          ++result->code_blanks[digits - 1][blanks];
        }
      } else {
        code_newline = FindNewline(p, end_);
        const std::string_view code_line =
            WithoutCarriageReturn(p, code_newline != nullptr ? code_newline : end_);
        if (!ParseGroupCode(code_line, &code)) {
          if (OnlyWhitespace(p, end_)) break;  // blank lines at the end are tolerated
          if (result->record_count == 0) return NotDxf(line, error);
          return Fail(line, "invalid group code '" + QuoteForMessage(code_line) + "'", error);
        }
        CountBlanks(code_line, &result->code_blanks);
      }
      if (code_newline == nullptr || code_newline + 1 == end_) {
        const std::string what = "unexpected end of file: group code " + std::to_string(code) + " has no value line";
        if (damaged_ == DamagedFile::kRefuse || result->record_count == 0) return Fail(line, what, error);
        if (sink_ != nullptr) sink_->Report(Severity::kWarning, Place(name_, line) + what + ": dropped it");
        result->cut_off = true;  // p stays at the incomplete tag, which the tail leaves out
        break;
      }
      const char* value_begin = code_newline + 1;
      const char* value_newline = FindNewline(value_begin, end_);
      const std::string_view value =
          WithoutCarriageReturn(value_begin, value_newline != nullptr ? value_newline : end_);
      if (code == 0) {
        const std::string_view type = TrimBlanks(value);
        if (result->record_count == 0 && type != "SECTION") return NotDxf(line, error);
        OpenRecord(p, type, line);
        ++result->record_count;
      } else if (result->record_count == 0 && code != 999) {
        return NotDxf(line, error);
      } else {
        CheckNumber(code, value, line + 1);
      }
      tags_.push_back(values_.FileValue(code, value));
      p = value_newline != nullptr ? value_newline + 1 : end_;
      line += 2;
      if (code == 0 && records_.back().type == "EOF") {
        result->saw_eof = true;
        break;
      }
    }
    if (result->record_count == 0) return NotDxf(line, error);
    if (!first_number_error_.empty()) {
      error->message = first_number_error_;
      return false;
    }
    CloseRecord(p);
    result->tail = p;
    result->end_line = line;
    return true;
  }

 private:
  // A record starts at its 0-tag's code line, and ends where the next one starts.
  void OpenRecord(const char* code_line, std::string_view type, int64_t line) {
    const auto begin = static_cast<uint32_t>(code_line - doc_.bytes_.data());
    if (records_.empty()) {
      doc_.prologue_tag_count_ = tags_.size();
      doc_.prologue_size_ = static_cast<size_t>(code_line - begin_);
    } else {
      CloseRecord(code_line);
    }
    const auto id = static_cast<RecordId>(records_.size());
    Document::Record& record = records_.emplace_back(Document::ReadRecord(
        static_cast<uint32_t>(tags_.size()), doc_.InternType(type), begin, static_cast<int32_t>(line)));
    if (id > 0) {
      record.prev = id - 1;
      records_[id - 1].next = id;
    }
  }

  void CloseRecord(const char* end) {
    Document::Record& record = records_.back();
    record.tag_count = static_cast<uint32_t>(tags_.size() - record.first_tag);
    record.original_size = static_cast<uint32_t>(end - doc_.bytes_.data()) - record.original_begin;
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
    if (IsPlainNumber(value, is_double)) return;
    if (is_double ? ParseDouble(value).has_value() : ParseInt(value).has_value()) return;
    const std::string message = Place(name_, line) + "group code " + std::to_string(code) +
                                (is_double ? " expects a number" : " expects an integer") +
                                ", found '" + QuoteForMessage(value) + "'";
    if (first_number_error_.empty()) first_number_error_ = message;
    if (sink_ != nullptr && number_errors_++ < kMaxReportedErrors) {
      sink_->Report(Severity::kError, message);
    }
  }

  Document& doc_;
  std::string_view name_;
  const char* begin_;
  const char* end_;
  DiagnosticSink* sink_;
  DamagedFile damaged_;
  std::vector<PackedTag>& tags_;
  std::vector<Document::Record>& records_;
  TagValues& values_;
  std::string first_number_error_;
  int number_errors_ = 0;
};

bool AsciiReader::Read(Document& doc, LoadError* error, DiagnosticSink* sink, DamagedFile damaged) {
  const std::string_view bytes = doc.bytes_;
  doc.head_size_ = bytes.starts_with(kUtf8ByteOrderMark) ? kUtf8ByteOrderMark.size() : 0;
  const char* const body_begin = bytes.data() + doc.head_size_;
  const char* const body_end = bytes.data() + bytes.size();
  doc.values_.SetFile(bytes);

  // Every tag is two lines: reserve once, so that no tag moves while filling (edits never
  // add to the tags).
  const size_t max_tags = CountLines(body_begin, body_end) / 2 + 1;
  doc.packed_tags_.reserve(max_tags);
  AdviseHugePages(doc.packed_tags_.data(), max_tags * sizeof(PackedTag));
  // Records are rarer: a file with more than one in eight tags a 0-tag makes the vector grow.
  doc.records_.reserve(max_tags / 8 + 16);

  ScanResult scan;
  AsciiTagScanner scanner(doc, body_begin, body_end, sink, damaged, doc.packed_tags_, doc.records_, doc.values_);
  if (!scanner.Run(&scan, error)) return false;
  if (!scan.saw_eof && sink != nullptr) {
    sink->Report(Severity::kWarning,
                 Place(doc.name(), scan.end_line) + "missing EOF record at end of file");
  }
  doc.first_ = 0;
  doc.last_ = static_cast<RecordId>(doc.records_.size() - 1);
  doc.live_records_ = doc.records_.size();
  doc.tail_begin_ = scan.cut_off ? bytes.size() : static_cast<size_t>(scan.tail - bytes.data());

  const char* first_newline =
      static_cast<const char*>(std::memchr(body_begin, '\n', bytes.size() - doc.head_size_));
  doc.ascii_style_.crlf =
      first_newline != nullptr && first_newline > body_begin && first_newline[-1] == '\r';
  doc.ascii_style_.code_blanks = CodeBlanks(scan.code_blanks);
  return true;
}

}  // namespace fx::dxf
