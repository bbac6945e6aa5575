#include "svg/xml_text.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <stdexcept>

namespace fx::svg {
namespace {

// A new piece of text once the last one holds this much.
constexpr size_t kChunkSize = 1 << 20;

// What pugixml writes as a reference: in attribute values &, <, " and every
// control character; in character data &, <, > and the control characters
// other than tab, line feed and carriage return. Bit 1: in attribute
// values, bit 2: in character data.
constexpr unsigned kInAttribute = 1, kInText = 2;
struct SpecialTable {
  unsigned char kinds[256] = {};
  constexpr SpecialTable() {
    for (int c = 0; c < 32; ++c) kinds[c] = (c == '\t' || c == '\n' || c == '\r') ? kInAttribute : kInAttribute | kInText;
    kinds[static_cast<int>('&')] = kinds[static_cast<int>('<')] = kInAttribute | kInText;
    kinds[static_cast<int>('"')] = kInAttribute;
    kinds[static_cast<int>('>')] = kInText;
  }
};
constexpr SpecialTable kSpecial;
// The longest reference a byte becomes ("&quot;").
constexpr size_t kLongestReference = 6;

}  // namespace

char* XmlText::Reserve(size_t size) {
  if (chunks_.empty() || chunks_.back().size + size > chunks_.back().capacity) {
    Chunk chunk;
    chunk.capacity = std::max(kChunkSize, size);
    chunk.bytes = std::make_unique_for_overwrite<char[]>(chunk.capacity);
    chunks_.push_back(std::move(chunk));
  }
  return chunks_.back().bytes.get() + chunks_.back().size;
}

void XmlText::Put(std::string_view bytes) {
  char* out = Reserve(bytes.size());
  std::memcpy(out, bytes.data(), bytes.size());
  Commit(out + bytes.size());
}

void XmlText::PutEscaped(std::string_view value, bool attribute) {
  const unsigned kind = attribute ? kInAttribute : kInText;
  char* out = Reserve(value.size() * kLongestReference);
  for (const char c : value) {
    const auto byte = static_cast<unsigned char>(c);
    if ((kSpecial.kinds[byte] & kind) == 0) {
      *out++ = c;
      continue;
    }
    if (byte == 0) break;
    const char* reference = nullptr;
    switch (byte) {
      case '&': reference = "&amp;"; break;
      case '<': reference = "&lt;"; break;
      case '>': reference = "&gt;"; break;
      case '"': reference = "&quot;"; break;
      default: {
        const char digits[] = {'&', '#', static_cast<char>('0' + byte / 10), static_cast<char>('0' + byte % 10), ';'};
        out = std::copy(std::begin(digits), std::end(digits), out);
        continue;
      }
    }
    for (; *reference != '\0'; ++reference) *out++ = *reference;
  }
  Commit(out);
}

void XmlText::EndStartTag() {
  if (start_tag_open_) Put(">");
  start_tag_open_ = false;
}

void XmlText::CloseTo(size_t depth) {
  while (open_.size() > depth) {
    if (start_tag_open_) {
      Put("/>");
      start_tag_open_ = false;
    } else {
      Put("</");
      Put(open_.back().name);
      Put(">");
    }
    open_.pop_back();
  }
}

bool XmlText::IsOpen(const XmlElement& element, bool innermost) const {
  if (element.text_ != this || element.depth_ == 0 || element.depth_ > open_.size()) return false;
  if (innermost && element.depth_ != open_.size()) return false;
  return open_[element.depth_ - 1].serial == element.serial_;
}

XmlElement XmlText::Open(size_t parent_depth, const char* name) {
  CloseTo(parent_depth);
  EndStartTag();
  Put("<");
  Put(name);
  open_.push_back({name, ++serial_});
  start_tag_open_ = true;
  return {this, open_.size(), serial_};
}

XmlElement XmlText::Top(const char* name) { return Open(0, name); }

XmlElement XmlText::Start(const XmlElement& parent, const char* name) {
  if (!IsOpen(parent, false)) throw std::logic_error("XML element under a closed element");
  return Open(parent.depth_, name);
}

void XmlText::Attribute(const XmlElement& element, std::string_view name, std::string_view value) {
  if (!IsOpen(element, true) || !start_tag_open_) throw std::logic_error("XML attribute after the element's content");
  char* out = Reserve(name.size() + 3);
  *out++ = ' ';
  out = std::copy(name.begin(), name.end(), out);
  *out++ = '=';
  *out++ = '"';
  Commit(out);
  PutEscaped(value, true);
  Put("\"");
}

void XmlText::Text(const XmlElement& element, std::string_view value) {
  if (!IsOpen(element, false)) throw std::logic_error("XML text outside its element");
  CloseTo(element.depth_);
  EndStartTag();
  PutEscaped(value, false);
}

void XmlText::Write(pugi::xml_writer& writer) const {
  for (const Chunk& chunk : chunks_) writer.write(chunk.bytes.get(), chunk.size);
  for (size_t i = open_.size(); i-- > 0;) {
    if (i + 1 == open_.size() && start_tag_open_) {
      writer.write("/>", 2);
      continue;
    }
    const std::string end = std::string("</") + open_[i].name + ">";
    writer.write(end.data(), end.size());
  }
}

const XmlElement& XmlElement::Attribute(std::string_view name, std::string_view value) const {
  text_->Attribute(*this, name, value);
  return *this;
}

const XmlElement& XmlElement::Attribute(std::string_view name, long long value) const {
  char digits[24];
  const char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  return Attribute(name, std::string_view(digits, static_cast<size_t>(end - digits)));
}

}  // namespace fx::svg
