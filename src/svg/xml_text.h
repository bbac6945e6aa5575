// XML written as it is made, for documents whose elements are finished in
// order: the text is all that is kept, in the form pugixml writes a tree
// with format_raw (attributes in double quotes, an element without
// children closed by "/>", no whitespace between elements), so that a tree
// and its text stay interchangeable byte for byte.
#ifndef FLOORXPORT_SVG_XML_TEXT_H_
#define FLOORXPORT_SVG_XML_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

namespace fx::svg {

// The text of a sequence of elements (and their descendants) appended in
// document order. An element stays open until an element that is not its
// descendant starts, or the text is written; its attributes must all come
// before its first child (std::logic_error otherwise). Element names must
// outlive the text (they are literals). A value ends at its first NUL, as
// a C string would.
class XmlElement;
class XmlText {
 public:
  // Starts an element at the top of this text, closing what is open.
  XmlElement Top(const char* name);
  // The same under `parent`, which must be open; what is open below it closes.
  XmlElement Start(const XmlElement& parent, const char* name);
  void Attribute(const XmlElement& element, std::string_view name, std::string_view value);
  // Character data as the last child of `element`, which must be open.
  void Text(const XmlElement& element, std::string_view value);
  // The text as if every open element were closed now.
  void Write(pugi::xml_writer& writer) const;

 private:
  // A piece of the text; full pieces are never moved or grown.
  struct Chunk {
    std::unique_ptr<char[]> bytes;
    size_t size = 0, capacity = 0;
  };
  // Room for `size` more bytes at the end of the text; Commit(end) keeps
  // what was written up to `end`.
  char* Reserve(size_t size);
  void Commit(char* end) { chunks_.back().size = static_cast<size_t>(end - chunks_.back().bytes.get()); }
  void Put(std::string_view bytes);
  // `value` up to its first NUL, with what must be escaped escaped.
  void PutEscaped(std::string_view value, bool attribute);
  // Closes the open elements deeper than `depth`.
  void CloseTo(size_t depth);
  void EndStartTag();
  XmlElement Open(size_t parent_depth, const char* name);
  // Whether `element` is open (and is the innermost when `innermost`).
  bool IsOpen(const XmlElement& element, bool innermost) const;

  struct OpenElement {
    const char* name;
    uint64_t serial;
  };

  std::vector<Chunk> chunks_;
  std::vector<OpenElement> open_;    // outermost first
  uint64_t serial_ = 0;              // of the last element started
  bool start_tag_open_ = false;      // the innermost open element's start tag awaits its end
};

// An element of an XmlText: what the renderer appends to.
class XmlElement {
 public:
  XmlElement() = default;
  XmlElement Child(const char* name) const { return text_->Start(*this, name); }
  const XmlElement& Attribute(std::string_view name, std::string_view value) const;
  const XmlElement& Attribute(std::string_view name, long long value) const;
  void Text(std::string_view value) const { text_->Text(*this, value); }

 private:
  friend class XmlText;
  XmlElement(XmlText* text, size_t depth, uint64_t serial) : text_(text), depth_(depth), serial_(serial) {}
  XmlText* text_ = nullptr;
  size_t depth_ = 0;  // 1: at the top of its text
  uint64_t serial_ = 0;
};

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_XML_TEXT_H_
