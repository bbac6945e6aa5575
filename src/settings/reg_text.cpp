#include "settings/reg_text.h"

namespace fx::settings {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(char32_t code, std::string* out) {
  auto byte = [out](uint32_t b) { out->push_back(static_cast<char>(b)); };
  if (code < 0x80) {
    byte(code);
  } else if (code < 0x800) {
    byte(0xC0 | (code >> 6));
    byte(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    byte(0xE0 | (code >> 12));
    byte(0x80 | ((code >> 6) & 0x3F));
    byte(0x80 | (code & 0x3F));
  } else {
    byte(0xF0 | (code >> 18));
    byte(0x80 | ((code >> 12) & 0x3F));
    byte(0x80 | ((code >> 6) & 0x3F));
    byte(0x80 | (code & 0x3F));
  }
}

// Decodes one code point at text[*pos], advancing *pos; false for an invalid
// sequence (overlong forms, surrogates and values past U+10FFFF included).
bool NextUtf8(std::string_view text, size_t* pos, char32_t* code) {
  const auto lead = static_cast<unsigned char>(text[*pos]);
  int extra = 0;
  char32_t value = 0;
  char32_t minimum = 0;
  if (lead < 0x80) {
    *code = lead;
    ++*pos;
    return true;
  } else if ((lead & 0xE0) == 0xC0) {
    extra = 1, value = lead & 0x1F, minimum = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    extra = 2, value = lead & 0x0F, minimum = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    extra = 3, value = lead & 0x07, minimum = 0x10000;
  } else {
    return false;
  }
  if (*pos + extra >= text.size()) return false;
  for (int i = 1; i <= extra; ++i) {
    const auto next = static_cast<unsigned char>(text[*pos + i]);
    if ((next & 0xC0) != 0x80) return false;
    value = (value << 6) | (next & 0x3F);
  }
  if (value < minimum || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return false;
  *pos += extra + 1;
  *code = value;
  return true;
}

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Decodes UTF-16 into UTF-8; unpaired surrogates become U+FFFD and make the
// result false.
bool Utf16ToUtf8Lossy(std::u16string_view text, std::string* out) {
  out->clear();
  bool valid = true;
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      AppendUtf8(0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00), out);
      ++i;
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      AppendUtf8(kReplacement, out);
      valid = false;
    } else {
      AppendUtf8(unit, out);
    }
  }
  return valid;
}

std::u16string UnitsOf(const std::vector<uint8_t>& data) {
  std::u16string units;
  units.reserve(data.size() / 2);
  for (size_t i = 0; i + 1 < data.size(); i += 2) {
    units.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
  }
  return units;
}

}  // namespace

bool Utf8ToUtf16(std::string_view text, std::u16string* out) {
  out->clear();
  size_t pos = 0;
  while (pos < text.size()) {
    char32_t code = 0;
    if (!NextUtf8(text, &pos, &code)) return false;
    if (code >= 0x10000) {
      out->push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
      out->push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
    } else {
      out->push_back(static_cast<char16_t>(code));
    }
  }
  return true;
}

bool Utf16ToUtf8(std::u16string_view text, std::string* out) { return Utf16ToUtf8Lossy(text, out); }

bool EncodeRegSz(std::string_view text, std::vector<uint8_t>* data) {
  std::u16string units;
  if (!Utf8ToUtf16(text, &units)) return false;
  data->clear();
  data->reserve((units.size() + 1) * 2);
  for (const char16_t unit : units) {
    data->push_back(static_cast<uint8_t>(unit & 0xFF));
    data->push_back(static_cast<uint8_t>(unit >> 8));
  }
  data->push_back(0);
  data->push_back(0);
  return true;
}

std::string DecodeRegSz(const std::vector<uint8_t>& data) {
  const std::u16string units = UnitsOf(data);
  const std::u16string_view view(units);
  std::string text;
  Utf16ToUtf8Lossy(view.substr(0, view.find(u'\0')), &text);
  return text;
}

bool IsPlainRegSz(const std::vector<uint8_t>& data, std::string* text) {
  if (data.size() < 2 || data.size() % 2 != 0) return false;
  const std::u16string units = UnitsOf(data);
  if (units.find(u'\0') != units.size() - 1) return false;
  return Utf16ToUtf8Lossy(std::u16string_view(units).substr(0, units.size() - 1), text);
}

}  // namespace fx::settings
