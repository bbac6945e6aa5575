#include "settings/reg_file_writer.h"

#include <cassert>

#include "settings/reg_file_reader.h"
#include "settings/reg_text.h"

namespace fx::settings {
namespace {

constexpr char kLineEnd[] = "\r\n";
// Hex data lines stay within 80 columns, the backslash included, as in the
// registry editor's own exports.
constexpr size_t kHexLineWidth = 77;

std::string Quoted(std::string_view text) {
  std::string out = "\"";
  for (const char c : text) {
    if (c == '\\' || c == '"') out.push_back('\\');
    out.push_back(c);
  }
  out.push_back('"');
  return out;
}

std::string HexByte(uint8_t byte) {
  constexpr char kDigits[] = "0123456789abcdef";
  return {kDigits[byte >> 4], kDigits[byte & 0xF]};
}

std::string HexType(uint32_t type) {
  if (type == kRegBinary) return "hex:";
  std::string digits;
  do {
    digits.insert(digits.begin(), "0123456789abcdef"[type & 0xF]);
    type >>= 4;
  } while (type != 0);
  return "hex(" + digits + "):";
}

// A REG_SZ whose text survives the quoted form unchanged: one terminating
// zero, valid UTF-16, no line break (a quoted string cannot span lines).
bool QuotableString(const RegValue& value, std::string* text) {
  return value.type == kRegSz && IsPlainRegSz(value.data, text) &&
         text->find_first_of("\r\n") == std::string::npos;
}

std::string EncodeFile(const std::string& text, RegEncoding encoding) {
  if (encoding == RegEncoding::kUtf8) return text;
  if (encoding == RegEncoding::kUtf8Bom) return "\xEF\xBB\xBF" + text;
  std::u16string units;
  const bool valid = Utf8ToUtf16(text, &units);
  assert(valid && "every piece of the file is valid UTF-8");
  (void)valid;
  std::string bytes = "\xFF\xFE";
  bytes.reserve(2 + units.size() * 2);
  for (const char16_t unit : units) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

}  // namespace

std::string FormatRegValue(const RegValue& value) {
  assert(value.name.find_first_of("\r\n") == std::string::npos);
  std::string line = (value.name.empty() ? std::string("@") : Quoted(value.name)) + "=";
  std::string text;
  if (QuotableString(value, &text)) return line + Quoted(text);
  if (value.type == kRegDword && value.data.size() == 4) {
    line += "dword:";
    for (int i = 3; i >= 0; --i) line += HexByte(value.data[i]);
    return line;
  }
  line += HexType(value.type);
  std::string out;
  for (size_t i = 0; i < value.data.size(); ++i) {
    const bool last = i + 1 == value.data.size();
    if (line.size() + (last ? 2 : 3) > kHexLineWidth) {
      out += line + "\\" + kLineEnd;
      line = "  ";
    }
    line += HexByte(value.data[i]);
    if (!last) line += ",";
  }
  return out + line;
}

std::string FormatRegFile(const RegFile& file) {
  std::string text = std::string(kRegFileHeader) + kLineEnd + kLineEnd;
  for (const RegKey& key : file.keys) {
    assert(key.path.find_first_of("\r\n") == std::string::npos);
    text += "[" + key.path + "]" + kLineEnd;
    for (const RegValue& value : key.values) text += FormatRegValue(value) + kLineEnd;
    text += kLineEnd;
  }
  return EncodeFile(text, file.encoding);
}

}  // namespace fx::settings
