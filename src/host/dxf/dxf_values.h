#ifndef FX_HOST_DXF_DXF_VALUES_H_
#define FX_HOST_DXF_DXF_VALUES_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fx::dxf {

// What a group code's value is, after the DXF reference's table of code ranges. It decides
// how a value is stored in binary files and whether it must read as a number.
enum class GroupValueType : uint8_t {
  kUnknown,  // a code outside the known ranges: kept as text, has no binary form
  kString,
  kHandle,  // hexadecimal handle text; a string in binary files
  kDouble,
  kInt16,
  kInt32,
  kInt64,
  kBool,         // one byte in binary files
  kBinaryChunk,  // uppercase hex text; length-prefixed bytes in binary files
};

GroupValueType ValueTypeOf(int code);

inline bool IsNumeric(GroupValueType type) {
  return type == GroupValueType::kDouble || type == GroupValueType::kInt16 ||
         type == GroupValueType::kInt32 || type == GroupValueType::kInt64 ||
         type == GroupValueType::kBool;
}

// Blanks are spaces and tabs; files pad numbers with them ("    70" / "     0"). Inline: the
// reader and every open call it on values that mostly have none.
inline std::string_view TrimBlanks(std::string_view text) {
  size_t begin = 0;
  size_t end = text.size();
  while (begin < end && (text[begin] == ' ' || text[begin] == '\t')) ++begin;
  while (end > begin && (text[end - 1] == ' ' || text[end - 1] == '\t')) --end;
  return text.substr(begin, end - begin);
}

// Number parsing for tag values: surrounding blanks and a leading '+' are accepted, anything
// else that is not part of the number makes the result empty.
std::optional<double> ParseDouble(std::string_view text);
std::optional<int64_t> ParseInt(std::string_view text);

// The shortest text that reads back as exactly `value`; integral values get a ".0" so that
// they still look like reals to other readers ("1.0", "-0.0", "1e+300").
std::string FormatDouble(double value);

// The same into a caller's buffer; returns the length written.
inline constexpr size_t kMaxFormattedDoubleSize = 32;
size_t FormatDoubleTo(double value, char (&out)[kMaxFormattedDoubleSize]);

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_VALUES_H_
