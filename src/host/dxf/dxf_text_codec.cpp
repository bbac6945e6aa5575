#include "host/dxf/dxf_text_codec.h"

#include <cstdint>

#include "host/dxf/dxf_code_page_tables.h"
#include "host/dxf/dxf_iconv.h"
#include "host/dxf/dxf_utf8.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/dxf_version.h"

namespace fx::dxf {
namespace {

struct MultiByteCodePage {
  std::string_view dxf_name;
  const char* iconv_name;
  char escape_digit;  // N of the "\M+N" escape naming this page
};

constexpr MultiByteCodePage kMultiBytePages[] = {
    {"ANSI_932", "CP932", '1'},  {"ANSI_950", "CP950", '2'}, {"ANSI_949", "CP949", '3'},
    {"ANSI_1361", "JOHAB", '4'}, {"ANSI_936", "CP936", '5'},
};

constexpr std::string_view kDefaultCodePage = "ANSI_1252";

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    const auto lower = [](char c) {
      return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// The value of four hex digits at text[pos..pos+4), or -1.
int Hex4At(std::string_view text, size_t pos) {
  if (pos + 4 > text.size()) return -1;
  int value = 0;
  for (size_t i = pos; i < pos + 4; ++i) {
    const int digit = HexDigit(text[i]);
    if (digit < 0) return -1;
    value = value * 16 + digit;
  }
  return value;
}

bool IsHighSurrogate(int unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(int unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Length of a "\U+XXXX" escape at text[pos] and its UTF-16 unit, or 0.
size_t UnicodeEscapeAt(std::string_view text, size_t pos, int* unit) {
  if (text.compare(pos, 3, "\\U+") != 0) return 0;
  *unit = Hex4At(text, pos + 3);
  return *unit < 0 ? 0 : 7;
}

// Turns "\U+XXXX" and "\M+NXXXX" escapes of decoded UTF-8 text into the characters.
std::string ExpandEscapes(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  size_t pos = 0;
  while (pos < text.size()) {
    const size_t backslash = text.find('\\', pos);
    if (backslash == std::string_view::npos) break;
    out.append(text.substr(pos, backslash - pos));
    pos = backslash;
    int unit = 0;
    if (const size_t length = UnicodeEscapeAt(text, pos, &unit)) {
      pos += length;
      char32_t code_point = static_cast<char32_t>(unit);
      int low = 0;
      if (IsHighSurrogate(unit) && UnicodeEscapeAt(text, pos, &low) && IsLowSurrogate(low)) {
        pos += 7;
        code_point = 0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10) +
                     (static_cast<char32_t>(low) - 0xDC00);
      } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
        code_point = kReplacementCharacter;
      }
      AppendUtf8(code_point, &out);
      continue;
    }
    if (text.compare(pos, 3, "\\M+") == 0 && pos + 8 <= text.size()) {
      const int bytes = Hex4At(text, pos + 4);
      for (const MultiByteCodePage& page : kMultiBytePages) {
        if (bytes < 0 || page.escape_digit != text[pos + 3]) continue;
        const char pair[2] = {static_cast<char>(bytes >> 8), static_cast<char>(bytes & 0xFF)};
        out += IconvDecodeToUtf8(page.iconv_name, std::string_view(pair, 2));
        pos += 8;
        break;
      }
      if (pos != backslash) continue;
    }
    out.push_back('\\');
    ++pos;
  }
  out.append(text.substr(pos));
  return out;
}

void AppendUnicodeEscape(char32_t code_point, std::string* out) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  const auto append_unit = [out](uint32_t unit) {
    *out += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4) out->push_back(kHex[(unit >> shift) & 0xF]);
  };
  const uint32_t cp = code_point;
  if (cp < 0x10000) {
    append_unit(cp);
  } else {
    append_unit(0xD800 + ((cp - 0x10000) >> 10));
    append_unit(0xDC00 + ((cp - 0x10000) & 0x3FF));
  }
}

int SingleByteFor(const SingleByteCodePage& page, char32_t code_point) {
  for (size_t i = 0; i < page.upper.size(); ++i) {
    if (page.upper[i] == code_point && code_point != kReplacementCharacter) {
      return static_cast<int>(0x80 + i);
    }
  }
  return -1;
}

}  // namespace

TextCodec TextCodec::Utf8() { return TextCodec(Kind::kUtf8, "UTF-8", nullptr, nullptr); }

std::optional<TextCodec> TextCodec::ForCodePage(std::string_view dwg_code_page) {
  dwg_code_page = TrimBlanks(dwg_code_page);
  for (const SingleByteCodePage* page : SingleByteCodePages()) {
    if (EqualsIgnoringCase(page->dxf_name, dwg_code_page)) {
      return TextCodec(Kind::kSingleByte, page->dxf_name, page, nullptr);
    }
  }
  for (const MultiByteCodePage& page : kMultiBytePages) {
    if (EqualsIgnoringCase(page.dxf_name, dwg_code_page)) {
      return TextCodec(Kind::kMultiByte, page.dxf_name, nullptr, page.iconv_name);
    }
  }
  return std::nullopt;
}

TextCodec TextCodec::ForDrawing(std::string_view acadver, std::string_view dwg_code_page,
                                bool* code_page_known) {
  if (code_page_known != nullptr) *code_page_known = true;
  if (StoresUtf8Strings(acadver)) return Utf8();
  if (std::optional<TextCodec> codec = ForCodePage(dwg_code_page)) return *codec;
  if (code_page_known != nullptr) *code_page_known = TrimBlanks(dwg_code_page).empty();
  return *ForCodePage(kDefaultCodePage);
}

std::string TextCodec::BytesToUtf8(std::string_view raw) const {
  std::string out;
  switch (kind_) {
    case Kind::kUtf8:
      out.reserve(raw.size());
      for (size_t pos = 0; pos < raw.size();) AppendUtf8(NextCodePoint(raw, &pos), &out);
      break;
    case Kind::kSingleByte:
      out.reserve(raw.size() * 2);
      for (const char c : raw) {
        const auto byte = static_cast<uint8_t>(c);
        AppendUtf8(byte < 0x80 ? byte : single_byte_page_->upper[byte - 0x80], &out);
      }
      break;
    case Kind::kMultiByte:
      out = IconvDecodeToUtf8(iconv_name_, raw);
      break;
  }
  return out;
}

std::string TextCodec::Decode(std::string_view raw) const {
  const bool has_escape = raw.find('\\') != std::string_view::npos;
  if (IsAscii(raw)) return has_escape ? ExpandEscapes(raw) : std::string(raw);
  const std::string utf8 = BytesToUtf8(raw);
  return has_escape ? ExpandEscapes(utf8) : utf8;
}

std::string TextCodec::Encode(std::string_view utf8) const {
  if (kind_ == Kind::kUtf8 || IsAscii(utf8)) return std::string(utf8);
  std::string out;
  out.reserve(utf8.size());
  std::optional<IconvEncoder> encoder;
  if (kind_ == Kind::kMultiByte) encoder.emplace(iconv_name_);
  for (size_t pos = 0; pos < utf8.size();) {
    const size_t start = pos;
    const char32_t code_point = NextCodePoint(utf8, &pos);
    if (code_point < 0x80) {
      out.push_back(static_cast<char>(code_point));
      continue;
    }
    if (kind_ == Kind::kSingleByte) {
      if (const int byte = SingleByteFor(*single_byte_page_, code_point); byte >= 0) {
        out.push_back(static_cast<char>(byte));
        continue;
      }
    } else if (code_point != kReplacementCharacter &&
               encoder->EncodeCharacter(utf8.substr(start, pos - start), &out)) {
      continue;
    }
    AppendUnicodeEscape(code_point, &out);
  }
  return out;
}

}  // namespace fx::dxf
