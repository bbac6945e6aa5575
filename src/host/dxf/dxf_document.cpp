#include "host/dxf/dxf_document.h"

#include <cstdint>
#include <functional>

#include "host/dxf/dxf_binary_format.h"
#include "host/dxf/dxf_file_io.h"
#include "host/dxf/dxf_header_variables.h"
#include "host/dxf/dxf_readers.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/dxf_version.h"

namespace fx::dxf {
namespace {

// Byte offsets and line numbers are kept in 32 bits.
constexpr size_t kMaxFileSize = (size_t{1} << 31) - 16;

bool PointsInto(std::string_view text, const char* begin, size_t size) {
  const std::less_equal<const char*> at_most;
  return at_most(begin, text.data()) && at_most(text.data() + text.size(), begin + size);
}

}  // namespace

Document::Document(std::string bytes, std::string_view name, Encoding encoding)
    : bytes_(std::move(bytes)), name_(name), encoding_(encoding) {}

std::unique_ptr<Document> Document::Load(const std::string& path, LoadError* error,
                                         DiagnosticSink* sink, DamagedFile damaged) {
  std::string bytes;
  std::string failure;
  if (!ReadWholeFile(path, &bytes, &failure)) {
    if (error != nullptr) error->message = path + ": " + failure;
    return nullptr;
  }
  return Parse(std::move(bytes), path, error, sink, damaged);
}

std::unique_ptr<Document> Document::Parse(std::string bytes, std::string_view name_for_messages,
                                          LoadError* error, DiagnosticSink* sink, DamagedFile damaged) {
  LoadError ignored;
  if (error == nullptr) error = &ignored;
  if (bytes.size() > kMaxFileSize) {
    error->message = std::string(name_for_messages) + ": file too large (" +
                     std::to_string(bytes.size()) + " bytes; at most 2 GiB are supported)";
    return nullptr;
  }
  const bool binary = IsBinaryDxf(bytes);
  std::unique_ptr<Document> doc(new Document(std::move(bytes), name_for_messages,
                                             binary ? Encoding::kBinary : Encoding::kAscii));
  const bool read =
      binary ? BinaryReader::Read(*doc, error, sink, damaged) : AsciiReader::Read(*doc, error, sink, damaged);
  if (!read || !CheckStructure(*doc, damaged, error, sink)) return nullptr;
  doc->UpdateFromHeader(sink);
  return doc;
}

void Document::UpdateFromHeader(DiagnosticSink* sink) {
  const std::string_view acadver = GetHeaderValue(*this, "$ACADVER");
  acadver_ = acadver.empty() ? kDefaultAcadver : acadver;
  const std::string_view code_page = GetHeaderValue(*this, "$DWGCODEPAGE");
  bool known = true;
  codec_ = TextCodec::ForDrawing(acadver_, code_page, &known);
  if (!known && sink != nullptr) {
    sink->Report(Severity::kWarning, name_ + ": unknown $DWGCODEPAGE '" +
                                         QuoteForMessage(code_page) + "'; strings are read as " +
                                         std::string(codec_.name()));
  }
}

std::string_view Document::InternType(std::string_view type) {
  if (type == last_type_) return last_type_;
  auto found = types_.find(type);
  if (found == types_.end()) found = types_.insert(arena_.Store(type)).first;
  last_type_ = *found;
  return last_type_;
}

Document::Record Document::ReadRecord(uint32_t first_tag, std::string_view type,
                                      uint32_t original_begin, int32_t source_line) {
  return {.edited_tags = nullptr,
          .first_tag = first_tag,
          .tag_count = 0,
          .next = kNoRecord,
          .prev = kNoRecord,
          .original_begin = original_begin,
          .original_size = 0,
          .source_line = source_line,
          .live = true,
          .type = type};
}

bool Document::IsValidRecordTags(TagRange tags) const {
  return !tags.empty() && tags.code(0) == 0 && records_.size() < kNoRecord - 1 &&
         tags.size() < UINT32_MAX;
}

const Tag* Document::StoreTags(TagRange tags) {
  auto block = std::make_unique_for_overwrite<Tag[]>(tags.size());
  for (size_t i = 0; i < tags.size(); ++i) {
    const Tag tag = tags[i];
    const bool owned = tag.value.empty() || PointsInto(tag.value, bytes_.data(), bytes_.size()) ||
                       values_.Contains(tag.value) || arena_.Contains(tag.value);
    block[i] = {tag.code, owned ? tag.value : arena_.Store(tag.value)};
  }
  return edited_tags_.emplace_back(std::move(block)).get();
}

RecordId Document::NewRecord(TagRange tags) {
  const auto id = static_cast<RecordId>(records_.size());
  const Tag* stored = StoreTags(tags);
  records_.push_back({.edited_tags = stored,
                      .first_tag = 0,
                      .tag_count = static_cast<uint32_t>(tags.size()),
                      .next = kNoRecord,
                      .prev = kNoRecord,
                      .original_begin = 0,
                      .original_size = 0,
                      .source_line = 0,
                      .live = true,
                      .type = InternType(TrimBlanks(stored[0].value))});
  return id;
}

void Document::Link(RecordId id, RecordId before) {
  Record& record = records_[id];
  record.next = before;
  record.prev = before == kNoRecord ? last_ : records_[before].prev;
  if (record.prev == kNoRecord) {
    first_ = id;
  } else {
    records_[record.prev].next = id;
  }
  if (before == kNoRecord) {
    last_ = id;
  } else {
    records_[before].prev = id;
  }
  ++live_records_;
}

void Document::RefreshAfterEdit(std::string_view old_type, std::string_view new_type) {
  if (old_type == "SECTION" || new_type == "SECTION") UpdateFromHeader(nullptr);
}

bool Document::ReplaceTags(RecordId id, TagRange tags) {
  if (!is_live(id) || !IsValidRecordTags(tags)) return false;
  const std::string_view old_type = type(id);
  const Tag* stored = StoreTags(tags);
  Record& record = records_[id];
  record.edited_tags = stored;
  record.tag_count = static_cast<uint32_t>(tags.size());
  record.original_size = 0;
  record.type = InternType(TrimBlanks(stored[0].value));
  RefreshAfterEdit(old_type, type(id));
  return true;
}

RecordId Document::InsertAfter(RecordId where, TagRange tags) {
  if (!is_live(where) || !IsValidRecordTags(tags)) return kNoRecord;
  const RecordId id = NewRecord(tags);
  Link(id, records_[where].next);
  RefreshAfterEdit({}, type(id));
  return id;
}

RecordId Document::InsertBefore(RecordId where, TagRange tags) {
  if ((where != kNoRecord && !is_live(where)) || !IsValidRecordTags(tags)) return kNoRecord;
  const RecordId id = NewRecord(tags);
  Link(id, where);
  RefreshAfterEdit({}, type(id));
  return id;
}

bool Document::Erase(RecordId id) {
  if (!is_live(id)) return false;
  Record& record = records_[id];
  if (record.prev == kNoRecord) {
    first_ = record.next;
  } else {
    records_[record.prev].next = record.next;
  }
  if (record.next == kNoRecord) {
    last_ = record.prev;
  } else {
    records_[record.next].prev = record.prev;
  }
  record.live = false;
  --live_records_;
  RefreshAfterEdit(type(id), {});
  return true;
}

}  // namespace fx::dxf
