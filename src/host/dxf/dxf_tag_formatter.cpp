#include "host/dxf/dxf_tag_formatter.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>
#include <functional>
#include <optional>

#include "host/dxf/dxf_binary_format.h"
#include "host/dxf/dxf_caret.h"
#include "host/dxf/dxf_diagnostics.h"
#include "host/dxf/dxf_values.h"

namespace fx::dxf {
namespace {

void AppendLittleEndian(uint64_t value, size_t size, std::string* out) {
  for (size_t i = 0; i < size; ++i) out->push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

std::string Describe(const Tag& tag, std::string_view problem) {
  return "group code " + std::to_string(tag.code) + " value '" + QuoteForMessage(tag.value) + "' " +
         std::string(problem);
}

// The range an integer type accepts: signed, or the same bits written unsigned.
bool FitsInteger(int64_t value, GroupValueType type) {
  switch (type) {
    case GroupValueType::kInt16:
      return value >= INT16_MIN && value <= UINT16_MAX;
    case GroupValueType::kInt32:
      return value >= INT32_MIN && value <= UINT32_MAX;
    case GroupValueType::kBool:
      return value >= 0 && value <= UINT8_MAX;
    default:
      return true;
  }
}

size_t BinarySize(GroupValueType type) {
  switch (type) {
    case GroupValueType::kInt16:
      return 2;
    case GroupValueType::kInt32:
      return 4;
    case GroupValueType::kBool:
      return 1;
    default:
      return 8;
  }
}

}  // namespace

bool TagFormatter::Append(TagRange tags, std::string* out, std::string* failure) const {
  for (const Tag& tag : tags) {
    if (!(binary_ ? AppendBinary(tag, out, failure) : AppendAscii(tag, out, failure))) return false;
  }
  return true;
}

bool TagFormatter::AppendAscii(const Tag& tag, std::string* out, std::string* failure) const {
  if (tag.value.find_first_of("\r\n") != std::string_view::npos) {
    *failure = Describe(tag, "holds a line break, which ASCII DXF cannot hold");
    return false;
  }
  const std::string_view line_end = style_.crlf ? "\r\n" : "\n";
  if (const std::string_view kept = SourceCodeLine(tag); !kept.empty()) {
    out->append(kept);
  } else {
    char code[16];
    const auto [end, ec] = std::to_chars(code, code + sizeof code, tag.code);
    (void)ec;
    const auto digits = static_cast<size_t>(end - code);
    out->append(style_.code_blanks[std::min(digits, AsciiStyle::kWidths) - 1], ' ');
    out->append(code, digits);
  }
  out->append(line_end);
  out->append(tag.value);
  out->append(line_end);
  return true;
}

std::string_view TagFormatter::SourceCodeLine(const Tag& tag) const {
  if (source_.empty()) return {};
  const char* value = tag.value.data();
  const std::less_equal<const char*> at_most;
  // The value must start a line of the source that follows a code line.
  if (value == nullptr || !at_most(source_.data() + 1, value) ||
      !at_most(value + tag.value.size(), source_.data() + source_.size()) || value[-1] != '\n') {
    return {};
  }
  const char* code_end = value - 1;
  if (code_end > source_.data() && code_end[-1] == '\r') --code_end;
  const char* code_begin = code_end;
  while (code_begin > source_.data() && code_begin[-1] != '\n') --code_begin;
  const std::string_view line(code_begin, static_cast<size_t>(code_end - code_begin));
  const std::string_view digits = TrimBlanks(line);
  int code = -1;
  const auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), code);
  const bool same_code = ec == std::errc() && end == digits.data() + digits.size() && code == tag.code;
  return same_code ? line : std::string_view();
}

void TagFormatter::AppendBinaryCode(int code, std::string* out) const {
  if (two_byte_codes_) {
    AppendLittleEndian(static_cast<uint64_t>(code), 2, out);
  } else if (code < kBinaryCodeEscape) {
    out->push_back(static_cast<char>(code));
  } else {
    out->push_back(static_cast<char>(kBinaryCodeEscape));
    AppendLittleEndian(static_cast<uint64_t>(code), 2, out);
  }
}

bool TagFormatter::AppendBinary(const Tag& tag, std::string* out, std::string* failure) const {
  const GroupValueType type = ValueTypeOf(tag.code);
  if (type == GroupValueType::kUnknown) {
    *failure = "group code " + std::to_string(tag.code) + " has no binary form";
    return false;
  }
  AppendBinaryCode(tag.code, out);
  switch (type) {
    case GroupValueType::kString:
    case GroupValueType::kHandle: {
      const std::string text =
          type == GroupValueType::kString ? CaretDecode(tag.value) : std::string(tag.value);
      if (text.find('\0') != std::string::npos) {
        *failure = Describe(tag, "holds a NUL byte, which binary DXF cannot hold");
        return false;
      }
      out->append(text);
      out->push_back('\0');
      return true;
    }
    case GroupValueType::kDouble: {
      const std::optional<double> value = ParseDouble(tag.value);
      if (!value) {
        *failure = Describe(tag, "is not a number");
        return false;
      }
      AppendLittleEndian(std::bit_cast<uint64_t>(*value), 8, out);
      return true;
    }
    case GroupValueType::kInt16:
    case GroupValueType::kInt32:
    case GroupValueType::kInt64:
    case GroupValueType::kBool: {
      const std::optional<int64_t> value = ParseInt(tag.value);
      if (!value || !FitsInteger(*value, type)) {
        *failure = Describe(tag, value ? "is out of range" : "is not an integer");
        return false;
      }
      AppendLittleEndian(static_cast<uint64_t>(*value), BinarySize(type), out);
      return true;
    }
    case GroupValueType::kBinaryChunk: {
      const std::string_view hex = TrimBlanks(tag.value);
      if (hex.size() % 2 != 0 || hex.size() / 2 > kMaxBinaryChunkSize) {
        *failure = Describe(tag, "is not a binary chunk of at most 255 bytes");
        return false;
      }
      out->push_back(static_cast<char>(hex.size() / 2));
      for (size_t i = 0; i < hex.size(); i += 2) {
        const int high = HexValue(hex[i]);
        const int low = HexValue(hex[i + 1]);
        if (high < 0 || low < 0) {
          *failure = Describe(tag, "is not hexadecimal");
          return false;
        }
        out->push_back(static_cast<char>(high * 16 + low));
      }
      return true;
    }
    case GroupValueType::kUnknown:
      break;
  }
  return false;
}

}  // namespace fx::dxf
