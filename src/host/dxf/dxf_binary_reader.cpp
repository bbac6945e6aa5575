// Binary DXF: the sentinel, then tags as a group code (one byte before R13, with 255
// escaping to a two-byte code; two bytes from R13 on; little-endian) and a value whose form
// follows the code's type. Values are turned into their ASCII text form here so that the rest
// of the program sees one model; strings without control characters or carets, and handles,
// stay views into the file's bytes.
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "host/dxf/dxf_binary_format.h"
#include "host/dxf/dxf_caret.h"
#include "host/dxf/dxf_file_io.h"
#include "host/dxf/dxf_readers.h"
#include "host/dxf/dxf_values.h"

namespace fx::dxf {
namespace {

struct RawTag {
  size_t offset;  // of the group code
  int code;
  GroupValueType type;
  std::string_view raw;  // string bytes without the NUL, number bytes, or chunk bytes
};

uint64_t LittleEndian(std::string_view bytes) {
  uint64_t value = 0;
  for (size_t i = bytes.size(); i-- > 0;) value = (value << 8) | static_cast<uint8_t>(bytes[i]);
  return value;
}

// Walks the tags of a binary file. Next() fails with a message naming the offset.
class BinaryCursor {
 public:
  BinaryCursor(std::string_view bytes, size_t start, bool two_byte_codes)
      : bytes_(bytes), pos_(start), two_byte_codes_(two_byte_codes) {}

  bool at_end() const { return pos_ >= bytes_.size(); }
  size_t pos() const { return pos_; }
  // Whether the last failure of Next() was the end of the file inside a tag.
  bool cut_off() const { return cut_off_; }

  bool Next(RawTag* tag, std::string* failure) {
    tag->offset = pos_;
    if (!ReadCode(&tag->code)) {
      *failure = Where(tag->offset) + "unexpected end of file in a group code";
      cut_off_ = true;
      return false;
    }
    tag->type = ValueTypeOf(tag->code);
    const size_t value_offset = pos_;
    if (!ReadValue(tag->type, &tag->raw)) {
      *failure = tag->type == GroupValueType::kUnknown
                     ? Where(tag->offset) + "unknown group code " + std::to_string(tag->code)
                     : Where(value_offset) + "unexpected end of file in the value of group code " +
                           std::to_string(tag->code);
      cut_off_ = tag->type != GroupValueType::kUnknown;
      return false;
    }
    return true;
  }

  static std::string Where(size_t offset) { return "offset " + std::to_string(offset) + ": "; }

 private:
  bool Take(size_t size, std::string_view* out) {
    if (bytes_.size() - pos_ < size) return false;
    *out = bytes_.substr(pos_, size);
    pos_ += size;
    return true;
  }

  bool ReadCode(int* code) {
    if (!two_byte_codes_) {
      if (pos_ >= bytes_.size()) return false;
      const auto first = static_cast<uint8_t>(bytes_[pos_]);
      if (first != kBinaryCodeEscape) {
        ++pos_;
        *code = first;
        return true;
      }
      ++pos_;
    }
    if (bytes_.size() - pos_ < 2) return false;
    *code = static_cast<uint8_t>(bytes_[pos_]) | static_cast<uint8_t>(bytes_[pos_ + 1]) << 8;
    pos_ += 2;
    return true;
  }

  bool ReadValue(GroupValueType type, std::string_view* raw) {
    switch (type) {
      case GroupValueType::kString:
      case GroupValueType::kHandle: {
        const void* nul = std::memchr(bytes_.data() + pos_, '\0', bytes_.size() - pos_);
        if (nul == nullptr) return false;
        const size_t size =
            static_cast<size_t>(static_cast<const char*>(nul) - bytes_.data()) - pos_;
        *raw = bytes_.substr(pos_, size);
        pos_ += size + 1;
        return true;
      }
      case GroupValueType::kDouble:
      case GroupValueType::kInt64:
        return Take(8, raw);
      case GroupValueType::kInt32:
        return Take(4, raw);
      case GroupValueType::kInt16:
        return Take(2, raw);
      case GroupValueType::kBool:
        return Take(1, raw);
      case GroupValueType::kBinaryChunk: {
        std::string_view length;
        return Take(1, &length) && Take(static_cast<uint8_t>(length[0]), raw);
      }
      case GroupValueType::kUnknown:
        return false;
    }
    return false;
  }

  std::string_view bytes_;
  size_t pos_;
  bool two_byte_codes_;
  bool cut_off_ = false;
};

std::string HexText(std::string_view bytes) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string hex;
  hex.reserve(bytes.size() * 2);
  for (const char c : bytes) {
    hex.push_back(kHex[static_cast<uint8_t>(c) >> 4]);
    hex.push_back(kHex[static_cast<uint8_t>(c) & 0xF]);
  }
  return hex;
}

// At most how many bytes a value's text form takes in the decoded buffer.
size_t MaxDecodedSize(const RawTag& tag) {
  switch (tag.type) {
    case GroupValueType::kString:
    case GroupValueType::kBinaryChunk:
      return 2 * tag.raw.size();  // a caret escape or two hex digits a byte
    case GroupValueType::kHandle:
    case GroupValueType::kUnknown:
      return 0;
    case GroupValueType::kDouble:
      return kMaxFormattedDoubleSize;
    case GroupValueType::kInt16:
    case GroupValueType::kInt32:
    case GroupValueType::kInt64:
    case GroupValueType::kBool:
      return 24;
  }
  return 0;
}

// The tag with its value's text form: a view of the file for strings that need no escapes
// and for handles, else text decoded into `values`' decoded buffer.
PackedTag PackValue(const RawTag& tag, TagValues& values) {
  switch (tag.type) {
    case GroupValueType::kString:
      if (NeedsCaretEncoding(tag.raw)) return values.DecodedValue(tag.code, CaretEncode(tag.raw));
      return values.FileValue(tag.code, tag.raw);
    case GroupValueType::kHandle:
    case GroupValueType::kUnknown:
      return values.FileValue(tag.code, tag.raw);
    case GroupValueType::kBinaryChunk:
      return values.DecodedValue(tag.code, HexText(tag.raw));
    case GroupValueType::kDouble: {
      char text[kMaxFormattedDoubleSize];
      const size_t size = FormatDoubleTo(std::bit_cast<double>(LittleEndian(tag.raw)), text);
      return values.DecodedValue(tag.code, std::string_view(text, size));
    }
    case GroupValueType::kInt16:
    case GroupValueType::kInt32:
    case GroupValueType::kInt64:
    case GroupValueType::kBool:
      break;
  }
  // Sign-extend from the value's width; bool bytes are unsigned.
  const uint64_t bits = LittleEndian(tag.raw);
  const int64_t value = tag.type == GroupValueType::kInt16   ? static_cast<int16_t>(bits)
                        : tag.type == GroupValueType::kInt32 ? static_cast<int32_t>(bits)
                                                             : static_cast<int64_t>(bits);
  char text[24];
  const auto [end, ec] = std::to_chars(text, text + sizeof text, value);
  (void)ec;  // 24 characters hold every int64
  return values.DecodedValue(tag.code, std::string_view(text, static_cast<size_t>(end - text)));
}

// A file opens with 0/SECTION or a 999 comment. With two-byte codes those read 00 00 "SECTION"
// or E7 03; with one-byte codes 00 "SECTION" or FF E7 03.
bool HasTwoByteCodes(std::string_view body) {
  return body.starts_with(std::string_view("\0\0SECTION", 9)) || body.starts_with("\xE7\x03");
}

struct Survey {
  size_t tag_count = 0;
  size_t record_count = 0;
  size_t max_decoded_size = 0;  // of the values' text forms
  size_t tail_begin = 0;
  size_t records_end = 0;  // equals tail_begin unless an incomplete last tag was dropped
  bool saw_eof = false;
  std::string cut_off;  // why the last tag was dropped when recovering a cut-off file
};

// First pass: checks the structure and counts, so that the second pass can size the tag
// and record vectors exactly and cannot fail.
bool SurveyTags(std::string_view bytes, size_t start, bool two_byte_codes, DamagedFile damaged,
                Survey* survey, std::string* failure) {
  const auto not_dxf = [failure](size_t offset) {
    *failure =
        BinaryCursor::Where(offset) + "not a DXF file: expected a 0/SECTION tag or a 999 comment";
    return false;
  };
  BinaryCursor cursor(bytes, start, two_byte_codes);
  RawTag tag;
  while (!cursor.at_end()) {
    if (!cursor.Next(&tag, failure)) {
      if (survey->record_count == 0) return not_dxf(tag.offset);
      if (damaged == DamagedFile::kRefuse || !cursor.cut_off()) return false;
      survey->cut_off = *failure;
      survey->records_end = tag.offset;
      survey->tail_begin = bytes.size();  // the incomplete tag is not kept
      return true;
    }
    ++survey->tag_count;
    survey->max_decoded_size += MaxDecodedSize(tag);
    const bool opens_file = tag.code == 999 || (tag.code == 0 && tag.raw == "SECTION");
    if (survey->record_count == 0 && !opens_file) return not_dxf(tag.offset);
    if (tag.code != 0) continue;
    ++survey->record_count;
    if (tag.raw == "EOF") {
      survey->saw_eof = true;
      break;
    }
  }
  if (survey->record_count == 0) return not_dxf(cursor.pos());
  survey->tail_begin = survey->records_end = cursor.pos();
  return true;
}

}  // namespace

bool BinaryReader::Read(Document& doc, LoadError* error, DiagnosticSink* sink, DamagedFile damaged) {
  const std::string_view bytes = doc.bytes_;
  const size_t start = kBinarySentinel.size();
  doc.head_size_ = start;
  doc.binary_two_byte_codes_ = HasTwoByteCodes(bytes.substr(start));

  Survey survey;
  std::string failure;
  if (!SurveyTags(bytes, start, doc.binary_two_byte_codes_, damaged, &survey, &failure)) {
    error->message = doc.name() + ": " + failure;
    return false;
  }
  if (!survey.cut_off.empty() && sink != nullptr) {
    sink->Report(Severity::kWarning, doc.name() + ": " + survey.cut_off + ": dropped it");
  }
  if (!survey.saw_eof && sink != nullptr) {
    sink->Report(Severity::kWarning, doc.name() + ": " + BinaryCursor::Where(bytes.size()) +
                                         "missing EOF record at end of file");
  }

  // Exactly, and the decoded values at most, so that nothing moves while filling; edits
  // never add to the tags.
  doc.packed_tags_.reserve(survey.tag_count);
  doc.records_.reserve(survey.record_count + survey.record_count / 32 + 16);
  doc.values_.SetFile(bytes);
  doc.values_.ReserveDecoded(survey.max_decoded_size);
  AdviseHugePages(doc.packed_tags_.data(), survey.tag_count * sizeof(PackedTag));
  AdviseHugePages(doc.values_.decoded_data(), survey.max_decoded_size);
  BinaryCursor cursor(bytes, start, doc.binary_two_byte_codes_);
  RawTag tag;
  for (size_t i = 0; i < survey.tag_count; ++i) {
    cursor.Next(&tag, &failure);
    const PackedTag packed = PackValue(tag, doc.values_);
    doc.packed_tags_.push_back(packed);
    if (tag.code != 0) continue;
    const auto id = static_cast<RecordId>(doc.records_.size());
    if (id > 0) {
      Document::Record& previous = doc.records_.back();
      previous.tag_count = static_cast<uint32_t>(i - previous.first_tag);
      previous.original_size = static_cast<uint32_t>(tag.offset) - previous.original_begin;
      previous.next = id;
    } else {
      doc.prologue_tag_count_ = i;
      doc.prologue_size_ = tag.offset - start;
    }
    Document::Record& record = doc.records_.emplace_back(
        Document::ReadRecord(static_cast<uint32_t>(i), doc.InternType(TrimBlanks(doc.values_.Value(packed))),
                             static_cast<uint32_t>(tag.offset), static_cast<int32_t>(tag.offset)));
    record.prev = id == 0 ? kNoRecord : id - 1;
  }
  Document::Record& last = doc.records_.back();
  last.tag_count = static_cast<uint32_t>(survey.tag_count - last.first_tag);
  last.original_size = static_cast<uint32_t>(survey.records_end) - last.original_begin;
  doc.first_ = 0;
  doc.last_ = static_cast<RecordId>(doc.records_.size() - 1);
  doc.live_records_ = doc.records_.size();
  doc.tail_begin_ = survey.tail_begin;
  return true;
}

}  // namespace fx::dxf
