#ifndef FX_HOST_DXF_DXF_TAG_RANGE_H_
#define FX_HOST_DXF_DXF_TAG_RANGE_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <compare>
#include <functional>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "host/dxf/dxf_tag.h"

namespace fx::dxf {

// A tag as a document keeps it after reading: 8 bytes instead of a Tag's 24. The value is
// `size` bytes at `offset` in the document's value space (TagValues); a value too long for
// 16 bits has size kLongValue and is the TagValues' long value number `offset`.
struct PackedTag {
  static constexpr uint16_t kLongValue = 0xFFFF;
  uint16_t code;
  uint16_t size;
  uint32_t offset;
};
static_assert(sizeof(PackedTag) == 8);

// Where the values of packed tags live: offsets below the file's size are bytes of the file,
// the others bytes of one buffer of decoded values (the text form of binary numbers and
// chunks, caret-escaped binary strings) that follows the file in the offsets. A value that
// does not fit the packed form (64 KiB or more, or beyond 4 GiB of offsets) is kept whole in
// a table of long values.
class TagValues {
 public:
  std::string_view Value(const PackedTag& tag) const {
    if (tag.size == PackedTag::kLongValue) [[unlikely]] return long_values_[tag.offset];
    const char* base = tag.offset < file_size_ ? file_ : decoded_.get() - file_size_;
    return {base + tag.offset, tag.size};
  }

  // Filling, while the document is read. The file's bytes must outlive the values.
  void SetFile(std::string_view file) {
    file_ = file.data();
    file_size_ = file.size();
  }
  // A view of the file (`value` lies in its bytes) as a packed tag.
  PackedTag FileValue(int code, std::string_view value) {
    return Packed(code, value, static_cast<size_t>(value.data() - file_));
  }
  // The decoded buffer, of `capacity` bytes, its pages untouched until filled. Values are
  // copied into it and never move.
  void ReserveDecoded(size_t capacity) {
    decoded_ = std::make_unique_for_overwrite<char[]>(capacity);
  }
  const char* decoded_data() const { return decoded_.get(); }
  // Decoded text as a packed tag; the reserved capacity must hold it.
  PackedTag DecodedValue(int code, std::string_view text) {
    char* copy = decoded_.get() + decoded_size_;
    std::memcpy(copy, text.data(), text.size());
    const size_t offset = file_size_ + decoded_size_;
    decoded_size_ += text.size();
    return Packed(code, {copy, text.size()}, offset);
  }
  // Whether `text` lies in the decoded buffer.
  bool Contains(std::string_view text) const {
    const std::less_equal<const char*> at_most;
    return decoded_size_ > 0 && at_most(decoded_.get(), text.data()) &&
           at_most(text.data() + text.size(), decoded_.get() + decoded_size_);
  }

 private:
  PackedTag Packed(int code, std::string_view value, size_t offset) {
    if (value.size() >= PackedTag::kLongValue || offset > UINT32_MAX) [[unlikely]] {
      return Long(code, value);
    }
    return {static_cast<uint16_t>(code), static_cast<uint16_t>(value.size()), static_cast<uint32_t>(offset)};
  }
  PackedTag Long(int code, std::string_view value) {
    long_values_.push_back(value);
    return {static_cast<uint16_t>(code), PackedTag::kLongValue, static_cast<uint32_t>(long_values_.size() - 1)};
  }

  const char* file_ = nullptr;
  size_t file_size_ = 0;
  std::unique_ptr<char[]> decoded_;
  size_t decoded_size_ = 0;
  std::vector<std::string_view> long_values_;
};

// Where a range's tags are: packed tags as read and their values, or Tags of an edited record.
struct TagSource {
  const Tag* full = nullptr;
  const PackedTag* packed = nullptr;
  const TagValues* values = nullptr;

  Tag At(size_t index) const {
    if (full != nullptr) return full[index];
    const PackedTag& tag = packed[index];
    return {tag.code, values->Value(tag)};
  }
  int CodeAt(size_t index) const { return full != nullptr ? full[index].code : packed[index].code; }
  TagSource From(size_t offset) const {
    return {full != nullptr ? full + offset : nullptr, packed != nullptr ? packed + offset : nullptr, values};
  }
};

class TagIterator {
 public:
  using iterator_concept = std::random_access_iterator_tag;
  using iterator_category = std::input_iterator_tag;
  using value_type = Tag;
  using difference_type = std::ptrdiff_t;
  using reference = Tag;
  using pointer = void;

  TagIterator() = default;
  TagIterator(const TagSource& source, size_t index) : source_(source), index_(index) {}
  Tag operator*() const { return source_.At(index_); }
  Tag operator[](difference_type n) const { return source_.At(index_ + n); }
  TagIterator& operator++() { ++index_; return *this; }
  TagIterator operator++(int) { TagIterator old = *this; ++index_; return old; }
  TagIterator& operator--() { --index_; return *this; }
  TagIterator operator--(int) { TagIterator old = *this; --index_; return old; }
  TagIterator& operator+=(difference_type n) { index_ += n; return *this; }
  TagIterator& operator-=(difference_type n) { index_ -= n; return *this; }
  friend TagIterator operator+(TagIterator it, difference_type n) { return it += n; }
  friend TagIterator operator+(difference_type n, TagIterator it) { return it += n; }
  friend TagIterator operator-(TagIterator it, difference_type n) { return it -= n; }
  friend difference_type operator-(const TagIterator& a, const TagIterator& b) {
    return static_cast<difference_type>(a.index_) - static_cast<difference_type>(b.index_);
  }
  friend bool operator==(const TagIterator& a, const TagIterator& b) { return a.index_ == b.index_; }
  friend auto operator<=>(const TagIterator& a, const TagIterator& b) { return a.index_ <=> b.index_; }

 private:
  TagSource source_;
  size_t index_ = 0;
};

// A record's tags as a document hands them out: either packed tags as read, or the Tags of
// an edited record. Indexing and iterating yield Tag values (a code and a view of the value),
// which stay valid as long as the tags do. A range is three pointers and a size: pass it by
// value.
class TagRange {
 public:
  TagRange() = default;
  TagRange(std::span<const Tag> tags) : source_{.full = tags.data()}, size_(tags.size()) {}  // NOLINT
  TagRange(const std::vector<Tag>& tags) : TagRange(std::span<const Tag>(tags)) {}  // NOLINT
  TagRange(const Tag* tags, size_t size) : TagRange(std::span<const Tag>(tags, size)) {}
  template <size_t N>
  TagRange(const Tag (&tags)[N]) : TagRange(std::span<const Tag>(tags)) {}  // NOLINT
  TagRange(const PackedTag* packed, size_t size, const TagValues* values)
      : source_{.packed = packed, .values = values}, size_(size) {}

  size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  Tag operator[](size_t index) const { return source_.At(index); }
  // The group code alone, without finding the value.
  int code(size_t index) const { return source_.CodeAt(index); }
  Tag front() const { return source_.At(0); }
  Tag back() const { return source_.At(size_ - 1); }
  TagRange subspan(size_t offset, size_t count = std::dynamic_extent) const {
    TagRange part;
    part.source_ = source_.From(offset);
    part.size_ = count == std::dynamic_extent ? size_ - offset : count;
    return part;
  }
  TagRange first(size_t count) const { return subspan(0, count); }
  TagIterator begin() const { return {source_, 0}; }
  TagIterator end() const { return {source_, size_}; }

 private:
  TagSource source_;
  size_t size_ = 0;
};

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_TAG_RANGE_H_
