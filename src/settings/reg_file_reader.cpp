#include "settings/reg_file_reader.h"

#include <optional>

#include "settings/reg_text.h"

namespace fx::settings {
namespace {

constexpr char kRegedit4Header[] = "REGEDIT4";

struct SourceLine {
  int number;
  std::optional<std::string> text;  // empty when the line is not valid text
};

std::string_view Trim(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && SameRegistryName(text.substr(0, prefix.size()), prefix);
}

std::vector<SourceLine> SplitUtf16(std::string_view bytes, bool big_endian) {
  std::vector<SourceLine> lines;
  std::u16string line;
  auto finish = [&lines, &line] {
    if (!line.empty() && line.back() == u'\r') line.pop_back();
    std::string text;
    lines.push_back({static_cast<int>(lines.size()) + 1,
                     Utf16ToUtf8(line, &text) ? std::optional(text) : std::nullopt});
    line.clear();
  };
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto a = static_cast<unsigned char>(bytes[i]);
    const auto b = static_cast<unsigned char>(bytes[i + 1]);
    const auto unit = static_cast<char16_t>(big_endian ? (a << 8) | b : (b << 8) | a);
    if (unit == u'\n') {
      finish();
    } else {
      line.push_back(unit);
    }
  }
  finish();
  // An odd byte count means the file was cut inside a character.
  if (bytes.size() % 2 != 0) lines.back().text.reset();
  return lines;
}

std::vector<SourceLine> SplitUtf8(std::string_view bytes) {
  std::vector<SourceLine> lines;
  size_t start = 0;
  while (true) {
    const size_t end = bytes.find('\n', start);
    std::string_view line = bytes.substr(start, end == std::string_view::npos ? end : end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    std::u16string ignored;
    lines.push_back({static_cast<int>(lines.size()) + 1, Utf8ToUtf16(line, &ignored)
                                                             ? std::optional(std::string(line))
                                                             : std::nullopt});
    if (end == std::string_view::npos) break;
    start = end + 1;
  }
  return lines;
}

std::vector<SourceLine> DecodeLines(std::string_view bytes, RegEncoding* encoding) {
  if (bytes.starts_with("\xFF\xFE")) {
    *encoding = RegEncoding::kUtf16Le;
    return SplitUtf16(bytes.substr(2), false);
  }
  if (bytes.starts_with("\xFE\xFF")) {
    *encoding = RegEncoding::kUtf16Le;
    return SplitUtf16(bytes.substr(2), true);
  }
  if (bytes.starts_with("\xEF\xBB\xBF")) {
    *encoding = RegEncoding::kUtf8Bom;
    return SplitUtf8(bytes.substr(3));
  }
  *encoding = RegEncoding::kUtf8;
  return SplitUtf8(bytes);
}

// Reads a quoted name or string starting at text[*pos] == '"' and leaves
// *pos after the closing quote. The registry editor escapes only the
// backslash and the double quote; any other backslash is kept as written.
bool ParseQuoted(std::string_view text, size_t* pos, std::string* out) {
  out->clear();
  for (size_t i = *pos + 1; i < text.size(); ++i) {
    if (text[i] == '"') {
      *pos = i + 1;
      return true;
    }
    if (text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == '\\' || text[i + 1] == '"')) {
      ++i;
    }
    out->push_back(text[i]);
  }
  return false;
}

bool ParseHexNumber(std::string_view digits, uint32_t* value) {
  if (digits.empty() || digits.size() > 8) return false;
  *value = 0;
  for (const char c : digits) {
    int digit = -1;
    if (c >= '0' && c <= '9') digit = c - '0';
    if (c >= 'a' && c <= 'f') digit = c - 'a' + 10;
    if (c >= 'A' && c <= 'F') digit = c - 'A' + 10;
    if (digit < 0) return false;
    *value = (*value << 4) | static_cast<uint32_t>(digit);
  }
  return true;
}

// "01,00,00,00": bytes of one or two hex digits separated by commas; a
// trailing comma (left by a continuation) is allowed.
bool ParseHexBytes(std::string_view list, std::vector<uint8_t>* data) {
  list = Trim(list);
  if (list.ends_with(',')) list.remove_suffix(1);
  if (list.empty()) return true;
  size_t start = 0;
  while (true) {
    const size_t comma = list.find(',', start);
    const std::string_view token = Trim(list.substr(start, comma - start));
    uint32_t byte = 0;
    if (token.size() > 2 || !ParseHexNumber(token, &byte)) return false;
    data->push_back(static_cast<uint8_t>(byte));
    if (comma == std::string_view::npos) return true;
    start = comma + 1;
  }
}

bool Fail(std::string* error, const char* message) {
  *error = message;
  return false;
}

// The value part after '=': a string, dword:, hex: or hex(N):. On failure
// *error names the fault.
bool ParseValueData(std::string_view text, RegValue* value, std::string* error) {
  if (text.starts_with('"')) {
    size_t pos = 0;
    std::string content;
    if (!ParseQuoted(text, &pos, &content)) return Fail(error, "unterminated string");
    if (!Trim(text.substr(pos)).empty()) return Fail(error, "text after the closing quote");
    value->type = kRegSz;
    return EncodeRegSz(content, &value->data) || Fail(error, "bad string");
  }
  if (StartsWith(text, "dword:")) {
    uint32_t number = 0;
    if (!ParseHexNumber(Trim(text.substr(6)), &number)) return Fail(error, "bad dword");
    value->type = kRegDword;
    for (int i = 0; i < 4; ++i) value->data.push_back(static_cast<uint8_t>(number >> (8 * i)));
    return true;
  }
  size_t list = 0;
  if (StartsWith(text, "hex:")) {
    value->type = kRegBinary;
    list = 4;
  } else if (StartsWith(text, "hex(")) {
    const size_t close = text.find("):");
    if (close == std::string_view::npos ||
        !ParseHexNumber(text.substr(4, close - 4), &value->type)) {
      return Fail(error, "bad value type");
    }
    list = close + 2;
  } else {
    return Fail(error, "unknown kind of value");
  }
  if (!ParseHexBytes(text.substr(list), &value->data)) return Fail(error, "bad hex data");
  return true;
}

class Parser {
 public:
  Parser(RegFile* file, std::vector<RegFileProblem>* problems) : file_(file), problems_(problems) {}

  void Line(int number, std::string_view text) {
    line_ = number;
    if (text.starts_with('[')) return Key(text);
    if (text.starts_with('"') || text.starts_with('@')) return Value(text);
    Problem("not a key, a value or a comment");
  }

  void Problem(std::string message) { problems_->push_back({line_, std::move(message)}); }

 private:
  void Key(std::string_view text) {
    current_.reset();
    if (!text.ends_with(']')) return Problem("key line without its closing ']'");
    std::string_view path = text.substr(1, text.size() - 2);
    const bool erase = path.starts_with('-');
    if (erase) path.remove_prefix(1);
    while (path.ends_with('\\')) path.remove_suffix(1);
    if (path.empty()) return Problem("empty key path");
    // A bare CR inside a line: no file could hold such a key again.
    if (path.find('\r') != std::string_view::npos) return Problem("line break in the key path");
    if (erase) return file_->EraseKeyTree(path);
    file_->FindOrAddKey(path);
    current_ = std::string(path);
  }

  void Value(std::string_view text) {
    RegValue value;
    size_t pos = 1;  // after "@", the default value's name
    if (text.starts_with('"')) {
      pos = 0;
      if (!ParseQuoted(text, &pos, &value.name)) return Problem("unterminated value name");
    }
    if (value.name.find('\r') != std::string::npos) return Problem("line break in a value name");
    const std::string quoted = "\"" + value.name + "\"";
    const std::string_view rest = Trim(text.substr(pos));
    if (!rest.starts_with('=')) return Problem("no '=' after the value name " + quoted);
    if (!current_) return Problem("value " + quoted + " outside a valid key");
    RegKey& key = *file_->FindKey(*current_);
    const std::string_view data = Trim(rest.substr(1));
    if (data == "-") {
      key.Erase(value.name);
      return;
    }
    std::string error;
    if (!ParseValueData(data, &value, &error)) return Problem(error + " in value " + quoted);
    key.Set(std::move(value));
  }

  RegFile* file_;
  std::vector<RegFileProblem>* problems_;
  int line_ = 0;
  std::optional<std::string> current_;  // path of the key values go to
};

bool IsHeader(std::string_view text) { return text == kRegFileHeader || text == kRegedit4Header; }

}  // namespace

RegFile ParseRegFile(std::string_view bytes, std::vector<RegFileProblem>* problems) {
  RegFile file;
  const std::vector<SourceLine> lines = DecodeLines(bytes, &file.encoding);
  Parser parser(&file, problems);
  bool seen_content = false;
  for (size_t i = 0; i < lines.size(); ++i) {
    const int number = lines[i].number;
    if (!lines[i].text) {
      problems->push_back({number, "not valid text in the file's encoding"});
      continue;
    }
    std::string text(Trim(*lines[i].text));
    if (text.empty() || text.starts_with(';')) continue;
    if (!seen_content) {
      seen_content = true;
      if (IsHeader(text)) continue;
      problems->push_back({number, std::string("no \"") + kRegFileHeader + "\" line"});
    }
    // A value's hex data may go on over several lines, each but the last
    // ending in a backslash.
    while (text.ends_with('\\') && !text.starts_with('[') && i + 1 < lines.size() &&
           lines[i + 1].text) {
      text.pop_back();
      text += Trim(*lines[++i].text);
    }
    parser.Line(number, text);
  }
  return file;
}

}  // namespace fx::settings
