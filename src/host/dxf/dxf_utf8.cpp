#include "host/dxf/dxf_utf8.h"

#include <cstdint>
#include <cstring>

namespace fx::dxf {

char32_t NextCodePoint(std::string_view utf8, size_t* pos) {
  const auto byte = [&](size_t i) { return static_cast<uint8_t>(utf8[i]); };
  const size_t start = *pos;
  const uint8_t lead = byte(start);
  if (lead < 0x80) {
    *pos = start + 1;
    return lead;
  }
  size_t length = 0;
  char32_t code_point = 0;
  char32_t minimum = 0;
  if ((lead & 0xE0) == 0xC0) {
    length = 2, code_point = lead & 0x1F, minimum = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3, code_point = lead & 0x0F, minimum = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4, code_point = lead & 0x07, minimum = 0x10000;
  }
  bool valid = length != 0 && start + length <= utf8.size();
  for (size_t i = 1; valid && i < length; ++i) {
    valid = (byte(start + i) & 0xC0) == 0x80;
    code_point = (code_point << 6) | (byte(start + i) & 0x3F);
  }
  valid = valid && code_point >= minimum && code_point <= 0x10FFFF &&
          !(code_point >= 0xD800 && code_point <= 0xDFFF);
  if (!valid) {
    *pos = start + 1;
    return kReplacementCharacter;
  }
  *pos = start + length;
  return code_point;
}

void AppendUtf8(char32_t code_point, std::string* out) {
  const auto put = [out](uint32_t bits) { out->push_back(static_cast<char>(bits)); };
  const uint32_t cp = code_point;
  if (cp < 0x80) {
    put(cp);
  } else if (cp < 0x800) {
    put(0xC0 | (cp >> 6));
    put(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    put(0xE0 | (cp >> 12));
    put(0x80 | ((cp >> 6) & 0x3F));
    put(0x80 | (cp & 0x3F));
  } else {
    put(0xF0 | (cp >> 18));
    put(0x80 | ((cp >> 12) & 0x3F));
    put(0x80 | ((cp >> 6) & 0x3F));
    put(0x80 | (cp & 0x3F));
  }
}

bool IsAscii(std::string_view text) {
  // Eight bytes at a time: any byte with its high bit set makes the text non-ASCII.
  size_t i = 0;
  for (; i + 8 <= text.size(); i += 8) {
    uint64_t word;
    std::memcpy(&word, text.data() + i, sizeof word);
    if (word & 0x8080808080808080ULL) return false;
  }
  for (; i < text.size(); ++i) {
    if (static_cast<uint8_t>(text[i]) >= 0x80) return false;
  }
  return true;
}

}  // namespace fx::dxf
