#ifndef FX_HOST_DXF_DXF_TAG_FORMATTER_H_
#define FX_HOST_DXF_DXF_TAG_FORMATTER_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <span>
#include <string>
#include <string_view>

#include "host/dxf/dxf_document.h"

namespace fx::dxf {

// Turns tags into file bytes in one encoding and style.
class TagFormatter {
 public:
  // `source`: the ASCII file the tags were read from, if any. A tag whose value is still a line
  // of it is written with the group code line it had there, padding and all.
  static TagFormatter Ascii(const AsciiStyle& style, std::string_view source = {}) {
    return TagFormatter(style, false, false, source);
  }
  static TagFormatter Binary(bool two_byte_codes) { return TagFormatter({}, true, two_byte_codes); }

  // Appends the tags to *out. On a value the encoding cannot hold, returns false with
  // *failure describing the tag; *out may then hold part of the tags.
  bool Append(TagRange tags, std::string* out, std::string* failure) const;

 private:
  TagFormatter(const AsciiStyle& style, bool binary, bool two_byte_codes, std::string_view source = {})
      : style_(style), binary_(binary), two_byte_codes_(two_byte_codes), source_(source) {}

  // The code line (without its line end) that `tag` had in the source, or empty.
  std::string_view SourceCodeLine(const Tag& tag) const;

  bool AppendAscii(const Tag& tag, std::string* out, std::string* failure) const;
  bool AppendBinary(const Tag& tag, std::string* out, std::string* failure) const;
  void AppendBinaryCode(int code, std::string* out) const;

  AsciiStyle style_;
  bool binary_;
  bool two_byte_codes_;
  std::string_view source_;
};

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_TAG_FORMATTER_H_
