#ifndef FX_HOST_DXF_DXF_DOCUMENT_H_
#define FX_HOST_DXF_DXF_DOCUMENT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "host/dxf/dxf_arena.h"
#include "host/dxf/dxf_diagnostics.h"
#include "host/dxf/dxf_structure.h"
#include "host/dxf/dxf_tag.h"
#include "host/dxf/dxf_tag_range.h"
#include "host/dxf/dxf_text_codec.h"

namespace fx::dxf {

// How an ASCII file writes its lines, detected on load and used for records written anew.
struct AsciiStyle {
  static constexpr size_t kWidths = 5;  // group codes have 1 to 5 digits
  bool crlf = true;  // "\r\n" line ends, else "\n"
  // The blanks before a group code of 1, 2, ... digits: by default right-aligned to width 3
  // ("  0", " 10", "100", "1001"). Some writers set every code two blanks in ("  0", "  66").
  std::array<uint8_t, kWidths> code_blanks = {2, 1, 0, 0, 0};
};

// A DXF file as a list of records. A record is a group-code-0 tag with all tags that follow
// it up to the next 0-tag: one entity, one table entry, a TABLE or ENDTAB, a whole HEADER
// section (0 SECTION / 2 HEADER / 9 $ACADVER / ...), EOF. Besides the records a document keeps
//   head:     the bytes before the first tag (the binary sentinel, or a UTF-8 byte order mark),
//   prologue: the 999 comment tags before the first record,
//   tail:     every byte after the EOF record, verbatim (or trailing blank lines if EOF is
//   missing),
// so that writing an unmodified document reproduces the file byte for byte.
//
// Records as read keep their tags packed (PackedTag, 8 bytes a tag), their values views into
// the loaded file's bytes or into one buffer of decoded binary values; an edited or added
// record keeps a block of Tags of its own. Every string view a document hands out stays
// valid for the document's life, and so does every range from tags(): an edit gives the
// record new tags and leaves the old ones where they are, so an object opened on them never
// sees its tags move.
// Record ids are stable: erasing a record leaves the ids of the others unchanged, and an
// erased record's next() still leads on, so a loop may erase the record it stands on.
//
// Accessors taking a RecordId expect a record of this document (live or erased); edits
// ignore ids that are not, and report it in their result.
class Document {
 public:
  // Reads the whole file. Returns nullptr and fills *error on failure; warnings about what was
  // tolerated (a missing EOF record, an unknown code page) go to `sink` when given. A value
  // of a numeric group code that does not read as a number fails the load: the sink hears of
  // each one as an error, *error names the first. A truncated file fails too, unless
  // `damaged` asks to recover it (see CheckStructure).
  static std::unique_ptr<Document> Load(const std::string& path, LoadError* error,
                                        DiagnosticSink* sink = nullptr,
                                        DamagedFile damaged = DamagedFile::kRefuse);
  // The same from bytes in memory; `name_for_messages` stands for the file name in messages.
  static std::unique_ptr<Document> Parse(std::string bytes, std::string_view name_for_messages,
                                         LoadError* error, DiagnosticSink* sink = nullptr,
                                         DamagedFile damaged = DamagedFile::kRefuse);

  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  // Records in file order.
  RecordId first() const { return first_; }
  RecordId last() const { return last_; }
  RecordId next(RecordId id) const { return records_[id].next; }
  RecordId prev(RecordId id) const { return records_[id].prev; }
  size_t record_count() const { return live_records_; }
  bool is_live(RecordId id) const { return id < records_.size() && records_[id].live; }

  // Its 0-tag's value without blanks, e.g. "LINE".
  std::string_view type(RecordId id) const { return records_[id].type; }
  TagRange tags(RecordId id) const {
    const Record& record = records_[id];
    if (record.edited_tags != nullptr) return std::span<const Tag>(record.edited_tags, record.tag_count);
    return {packed_tags_.data() + record.first_tag, record.tag_count, &values_};
  }
  // False while the record still writes its original bytes.
  bool modified(RecordId id) const { return records_[id].original_size == 0; }
  // 1-based line of the record's 0-tag (ASCII) or byte offset of its group code (binary);
  // 0 for records added by editing.
  int source_line(RecordId id) const { return records_[id].source_line; }
  // The bytes the record was read from; empty once it is modified.
  std::string_view original_bytes(RecordId id) const {
    const Record& record = records_[id];
    return std::string_view(bytes_).substr(record.original_begin, record.original_size);
  }

  // The file as a whole.
  const std::string& name() const { return name_; }
  Encoding encoding() const { return encoding_; }
  size_t source_size() const { return bytes_.size(); }  // of the file as loaded
  std::string_view source_bytes() const { return bytes_; }
  const AsciiStyle& ascii_style() const { return ascii_style_; }
  bool binary_two_byte_codes() const { return binary_two_byte_codes_; }
  std::string_view head() const { return std::string_view(bytes_).substr(0, head_size_); }
  TagRange prologue() const { return {packed_tags_.data(), prologue_tag_count_, &values_}; }
  std::string_view prologue_bytes() const {
    return std::string_view(bytes_).substr(head_size_, prologue_size_);
  }
  std::string_view tail() const { return std::string_view(bytes_).substr(tail_begin_); }

  std::string_view acadver() const { return acadver_; }  // "AC1009" when absent
  // Strings' encoding: UTF-8 from AC1021 on, else the $DWGCODEPAGE page (ANSI_1252 by default).
  const TextCodec& codec() const { return codec_; }

  // Editing. Tag values are copied into the document's storage unless they already live
  // there. The first tag must be a 0-tag; otherwise nothing happens and the result says so
  // (false / kNoRecord). Edited and new records are written from their tags.
  bool ReplaceTags(RecordId id, TagRange tags);
  RecordId InsertAfter(RecordId where, TagRange tags);
  // `where` == kNoRecord appends at the end.
  RecordId InsertBefore(RecordId where, TagRange tags);
  bool Erase(RecordId id);
  std::string_view Store(std::string_view text) { return arena_.Store(text); }

 private:
  friend class AsciiReader;
  friend class AsciiTagScanner;
  friend class BinaryReader;

  struct Record {
    const Tag* edited_tags;  // a block of edited_tags_, or null for a record as read
    uint32_t first_tag;      // in packed_tags_, for a record as read
    uint32_t tag_count;
    RecordId next;
    RecordId prev;
    uint32_t original_begin;  // byte span in bytes_, size 0 once modified
    uint32_t original_size;
    int32_t source_line;
    bool live;
    std::string_view type;  // interned: walks over the records need not read their tags
  };

  Document(std::string bytes, std::string_view name, Encoding encoding);

  bool IsValidRecordTags(TagRange tags) const;
  // Copies `tags` into a block of their own, values into the document's storage; returns
  // the block.
  const Tag* StoreTags(TagRange tags);
  RecordId NewRecord(TagRange tags);
  // The one copy of a record type kept for all records of that type: walks over the records
  // compare types without reaching into the file's bytes.
  std::string_view InternType(std::string_view type);
  // A record as read, its tags packed_tags_[first_tag, first_tag + tag_count).
  static Record ReadRecord(uint32_t first_tag, std::string_view type, uint32_t original_begin,
                           int32_t source_line);
  void Link(RecordId id, RecordId before);  // before == kNoRecord: at the end
  // Re-reads $ACADVER and $DWGCODEPAGE; `sink` hears of an unknown code page.
  void UpdateFromHeader(DiagnosticSink* sink);
  void RefreshAfterEdit(std::string_view old_type, std::string_view new_type);

  std::string bytes_;
  std::string name_;
  Encoding encoding_;
  Arena arena_;
  TagValues values_;  // of the packed tags
  std::vector<PackedTag> packed_tags_;  // as read, each record a contiguous range; never grows
  std::vector<std::unique_ptr<Tag[]>> edited_tags_;  // one block per edited or added record
  std::vector<Record> records_;
  std::unordered_set<std::string_view> types_;  // interned record types, in arena_
  std::string_view last_type_;  // records of a type often follow each other
  RecordId first_ = kNoRecord;
  RecordId last_ = kNoRecord;
  size_t live_records_ = 0;

  AsciiStyle ascii_style_;
  bool binary_two_byte_codes_ = true;
  size_t head_size_ = 0;
  size_t prologue_tag_count_ = 0;
  size_t prologue_size_ = 0;
  size_t tail_begin_ = 0;

  std::string_view acadver_;
  TextCodec codec_ = TextCodec::Utf8();
};

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_DOCUMENT_H_
