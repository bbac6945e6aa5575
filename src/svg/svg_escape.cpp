#include "svg/svg_escape.h"

#include <cstdint>

namespace fx::svg {
namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD";  // U+FFFD

// The length of a valid UTF-8 sequence at the start of `s` and its code
// point; 0 when the sequence is not valid.
size_t DecodeOne(std::string_view s, uint32_t& code) {
  const auto byte = [&](size_t i) { return static_cast<uint8_t>(s[i]); };
  const uint8_t lead = byte(0);
  if (lead < 0x80) {
    code = lead;
    return 1;
  }
  size_t length;
  uint32_t min;
  if ((lead & 0xE0) == 0xC0) {
    length = 2, min = 0x80, code = lead & 0x1F;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3, min = 0x800, code = lead & 0x0F;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4, min = 0x10000, code = lead & 0x07;
  } else {
    return 0;
  }
  if (s.size() < length) return 0;
  for (size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    code = (code << 6) | (byte(i) & 0x3F);
  }
  if (code < min || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return 0;
  return length;
}

// Where a bad sequence ends: its lead byte and the continuation bytes after it.
size_t BadLength(std::string_view s) {
  size_t n = 1;
  while (n < s.size() && n < 4 && (static_cast<uint8_t>(s[n]) & 0xC0) == 0x80) ++n;
  return n;
}

std::string CleanXml(std::string_view in) {
  std::string out;
  out.reserve(in.size());
  while (!in.empty()) {
    uint32_t code = 0;
    size_t length = DecodeOne(in, code);
    if (length == 0) {
      out += kReplacement;
      in.remove_prefix(BadLength(in));
      continue;
    }
    if (code == '\t' || code == '\n' || code == '\r') {
      out += ' ';
    } else if (code < 0x20) {
      // Not allowed in XML 1.0 at all: dropped.
    } else if (code == 0xFFFE || code == 0xFFFF) {
      out += kReplacement;
    } else {
      out.append(in.substr(0, length));
    }
    in.remove_prefix(length);
  }
  return out;
}

}  // namespace

std::string TextContent(std::string_view utf8) { return CleanXml(utf8); }

std::string AttributeValue(std::string_view utf8) { return CleanXml(utf8); }

std::string FontFamily(std::string_view face) {
  std::string clean = CleanXml(face);
  if (clean.empty()) return "sans-serif";
  std::string out = "'";
  for (char c : clean) {
    if (c == '\'' || c == '\\') out += '\\';
    out += c;
  }
  return out + "'";
}

}  // namespace fx::svg
