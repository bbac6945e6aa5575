#include "host/dxf/dxf_values.h"

#include <array>
#include <charconv>

namespace fx::dxf {
namespace {

inline constexpr int kMaxKnownCode = 1071;

struct CodeRange {
  int first;
  int last;
  GroupValueType type;
};

// Group code value types by range, as the DXF reference lists them.
constexpr CodeRange kCodeRanges[] = {
    {0, 4, GroupValueType::kString},       {5, 5, GroupValueType::kHandle},
    {6, 9, GroupValueType::kString},       {10, 59, GroupValueType::kDouble},
    {60, 79, GroupValueType::kInt16},      {90, 99, GroupValueType::kInt32},
    {100, 102, GroupValueType::kString},   {105, 105, GroupValueType::kHandle},
    {110, 149, GroupValueType::kDouble},   {160, 169, GroupValueType::kInt64},
    {170, 179, GroupValueType::kInt16},    {210, 239, GroupValueType::kDouble},
    {270, 289, GroupValueType::kInt16},    {290, 299, GroupValueType::kBool},
    {300, 309, GroupValueType::kString},   {310, 319, GroupValueType::kBinaryChunk},
    {320, 369, GroupValueType::kHandle},   {370, 389, GroupValueType::kInt16},
    {390, 399, GroupValueType::kHandle},   {400, 409, GroupValueType::kInt16},
    {410, 419, GroupValueType::kString},   {420, 429, GroupValueType::kInt32},
    {430, 439, GroupValueType::kString},   {440, 459, GroupValueType::kInt32},
    {460, 469, GroupValueType::kDouble},   {470, 479, GroupValueType::kString},
    {480, 481, GroupValueType::kHandle},   {999, 999, GroupValueType::kString},
    {1000, 1003, GroupValueType::kString}, {1004, 1004, GroupValueType::kBinaryChunk},
    {1005, 1005, GroupValueType::kHandle}, {1006, 1009, GroupValueType::kString},
    {1010, 1059, GroupValueType::kDouble}, {1060, 1070, GroupValueType::kInt16},
    {1071, 1071, GroupValueType::kInt32},
};

constexpr std::array<GroupValueType, kMaxKnownCode + 1> BuildTypeTable() {
  std::array<GroupValueType, kMaxKnownCode + 1> table{};
  for (const CodeRange& range : kCodeRanges) {
    for (int code = range.first; code <= range.last; ++code) table[code] = range.type;
  }
  return table;
}

constexpr std::array<GroupValueType, kMaxKnownCode + 1> kTypeTable = BuildTypeTable();

// Removes the blanks and the leading '+' that from_chars does not accept; empty when the
// text cannot be a number ("+-1").
std::string_view NumberBody(std::string_view text) {
  text = TrimBlanks(text);
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) return {};
  }
  return text;
}

// Exact powers of ten: every one up to 1e22 is a double.
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// The decimal numbers drawing files are full of ("-1234.5678", "0.0", "1e-3"), read without
// from_chars: with at most 15 significant digits (so the digits are an exact integer below
// 2^53) and a power of ten of at most 22 (exact too), one multiplication or division gives
// the correctly rounded result. Anything else, valid or not, answers nullopt and is left to
// from_chars, which decides.
std::optional<double> ParseSimpleDecimal(std::string_view text) {
  const char* p = text.data();
  const char* const end = p + text.size();
  const bool negative = p < end && *p == '-';
  if (negative) ++p;
  uint64_t digits = 0;
  int significant = 0;
  int exponent = 0;
  bool any_digit = false;
  for (; p < end && *p >= '0' && *p <= '9'; ++p, any_digit = true) {
    if (digits == 0 && *p == '0') continue;
    digits = digits * 10 + static_cast<uint64_t>(*p - '0');
    ++significant;
  }
  if (p < end && *p == '.') {
    for (++p; p < end && *p >= '0' && *p <= '9'; ++p, any_digit = true) {
      --exponent;
      if (digits == 0 && *p == '0') continue;
      digits = digits * 10 + static_cast<uint64_t>(*p - '0');
      ++significant;
    }
  }
  if (!any_digit || significant > 15) return std::nullopt;
  if (p < end && (*p == 'e' || *p == 'E')) {
    ++p;
    const bool exponent_negative = p < end && *p == '-';
    if (p < end && (*p == '-' || *p == '+')) ++p;
    if (p == end || end - p > 3) return std::nullopt;
    int written = 0;
    for (; p < end && *p >= '0' && *p <= '9'; ++p) written = written * 10 + (*p - '0');
    exponent += exponent_negative ? -written : written;
  }
  if (p != end || exponent < -22 || exponent > 22) return std::nullopt;
  double value = static_cast<double>(digits);
  value = exponent < 0 ? value / kPowersOfTen[-exponent] : value * kPowersOfTen[exponent];
  return negative ? -value : value;
}

}  // namespace

GroupValueType ValueTypeOf(int code) {
  if (code < 0 || code > kMaxKnownCode) return GroupValueType::kUnknown;
  return kTypeTable[static_cast<size_t>(code)];
}

std::optional<double> ParseDouble(std::string_view text) {
  const std::string_view body = NumberBody(text);
  if (body.empty()) return std::nullopt;
  if (const std::optional<double> simple = ParseSimpleDecimal(body)) return simple;
  double value = 0;
  const char* end = body.data() + body.size();
  const auto [ptr, ec] = std::from_chars(body.data(), end, value);
  if (ec != std::errc() || ptr != end) return std::nullopt;
  return value;
}

std::optional<int64_t> ParseInt(std::string_view text) {
  const std::string_view body = NumberBody(text);
  if (body.empty()) return std::nullopt;
  int64_t value = 0;
  const char* end = body.data() + body.size();
  const auto [ptr, ec] = std::from_chars(body.data(), end, value);
  if (ec != std::errc() || ptr != end) return std::nullopt;
  return value;
}

size_t FormatDoubleTo(double value, char (&out)[kMaxFormattedDoubleSize]) {
  // Shortest round-trip text is at most 24 characters; two more for ".0".
  const auto [ptr, ec] = std::to_chars(out, out + kMaxFormattedDoubleSize - 2, value);
  (void)ec;
  size_t size = static_cast<size_t>(ptr - out);
  bool integral_looking = true;
  for (size_t i = 0; i < size; ++i) {
    const char c = out[i];
    if (!(c == '-' || (c >= '0' && c <= '9'))) integral_looking = false;
  }
  if (integral_looking) {
    out[size++] = '.';
    out[size++] = '0';
  }
  return size;
}

std::string FormatDouble(double value) {
  char buffer[kMaxFormattedDoubleSize];
  return std::string(buffer, FormatDoubleTo(value, buffer));
}

}  // namespace fx::dxf
