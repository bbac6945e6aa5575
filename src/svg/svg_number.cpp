#include "svg/svg_number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace fx::svg {
namespace {

// Room for "%.*f" of the largest double with a few decimals.
constexpr size_t kBufferSize = 400;

void AppendChars(std::string& out, double value, std::chars_format format, int precision) {
  if (!std::isfinite(value)) {
    out += '0';
    return;
  }
  if (value == 0) value = 0;  // -0 prints as "0"
  char buffer[kBufferSize];
  auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, format, precision);
  if (error != std::errc()) {
    out += '0';
    return;
  }
  out.append(buffer, end);
}

// Whole powers of ten, exact in a double and in an int64_t.
constexpr int kMaxQuickDecimals = 15;
constexpr double kPowersOfTen[] = {1,    1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
constexpr int64_t kIntegerPowersOfTen[] = {1,
                                           10,
                                           100,
                                           1000,
                                           10000,
                                           100000,
                                           1000000,
                                           10000000,
                                           100000000,
                                           1000000000,
                                           10000000000,
                                           100000000000,
                                           1000000000000,
                                           10000000000000,
                                           100000000000000,
                                           1000000000000000};
// The scaled values the quick path takes: below 2^40 a double's rounding
// error is under 2^-13, far inside kTieMargin.
constexpr double kQuickLimit = 1099511627776.0;
constexpr double kTieMargin = 1.0 / 4096;
constexpr double kLogarithmMargin = 1e-9;

// The integer `value` x 10^decimals rounds to, as "%.*f" rounds it, when the
// scaled value is not so near a tie that the product's own rounding could
// decide it; false then (and for what is out of the quick range).
bool QuickUnits(double value, int decimals, int64_t& units) {
  if (decimals < 0 || decimals > kMaxQuickDecimals) return false;
  const double scaled = value * kPowersOfTen[decimals];
  if (!(std::abs(scaled) < kQuickLimit)) return false;  // NaN too
  const double below = std::floor(scaled);
  const double fraction = scaled - below;  // exact at this size
  if (std::abs(fraction - 0.5) <= kTieMargin) return false;
  units = static_cast<int64_t>(below) + (fraction > 0.5 ? 1 : 0);
  return true;
}

// units / 10^decimals with trailing zeros and a trailing point removed;
// zero is "0" whatever the sign of the value it came from.
void AppendUnits(std::string& out, int64_t units, int decimals) {
  if (units == 0) {
    out += '0';
    return;
  }
  if (units < 0) {
    out += '-';
    units = -units;
  }
  const int64_t unit = kIntegerPowersOfTen[decimals];
  int64_t part = units % unit;
  char digits[24];
  char* end = std::to_chars(digits, digits + sizeof digits, units / unit).ptr;
  out.append(digits, end);
  if (part == 0) return;
  int places = decimals;
  while (part % 10 == 0) part /= 10, --places;
  out += '.';
  end = std::to_chars(digits, digits + sizeof digits, part).ptr;
  out.append(static_cast<size_t>(places - (end - digits)), '0');
  out.append(digits, end);
}

// AppendGeneral without the general conversion: "%.*g" writes a value whose
// rounded decimal exponent X is at least -4 and below the precision as
// "%.*f" with precision - 1 - X decimals, trailing zeros removed. X is the
// value's own exponent unless rounding carries into the next power of ten,
// which the digits show (false then, or when the quick rounding declines).
bool AppendGeneralQuickly(std::string& out, double value, int precision) {
  if (value == 0) {
    out += '0';
    return true;
  }
  if (!std::isfinite(value) || precision < 1 || precision > kMaxQuickDecimals) return false;
  // Near a power of ten the logarithm's own rounding could give the wrong
  // floor: there the power decides, where it is exact.
  const double magnitude = std::abs(value);
  const double logarithm = std::log10(magnitude);
  const double nearest = std::round(logarithm);
  int exponent = static_cast<int>(std::floor(logarithm));
  if (std::abs(logarithm - nearest) < kLogarithmMargin) {
    if (nearest < 0 || nearest > kMaxQuickDecimals) return false;
    exponent = static_cast<int>(nearest) - (magnitude < kPowersOfTen[static_cast<int>(nearest)] ? 1 : 0);
  }
  if (exponent < -4 || exponent >= precision) return false;
  int64_t units = 0;
  const int decimals = precision - 1 - exponent;
  if (decimals > kMaxQuickDecimals || !QuickUnits(value, decimals, units)) return false;
  const int64_t digits = units < 0 ? -units : units;
  if (digits < kIntegerPowersOfTen[precision - 1] || digits >= kIntegerPowersOfTen[precision]) return false;
  AppendUnits(out, units, decimals);
  return true;
}

}  // namespace

int CoordinateDecimals(double diagonal) {
  if (!std::isfinite(diagonal) || diagonal < 0) diagonal = 0;
  // Digits of the truncated diagonal, as "%d" would print it.
  int digits = 1;
  for (double whole = std::trunc(diagonal); whole >= 10; whole = std::trunc(whole / 10)) ++digits;
  return digits < 6 ? 6 - digits : 0;
}

void AppendCoordinate(std::string& out, double value, int decimals) {
  if (int64_t units = 0; QuickUnits(value, decimals, units)) {
    AppendUnits(out, units, decimals);
    return;
  }
  const size_t start = out.size();
  AppendChars(out, value, std::chars_format::fixed, decimals);
  if (decimals > 0 && out.find('.', start) != std::string::npos) {
    while (out.back() == '0') out.pop_back();
    if (out.back() == '.') out.pop_back();
  }
  // A value that rounds to zero from below prints as "-0".
  if (out.size() - start == 2 && out[start] == '-' && out[start + 1] == '0') out.erase(start, 1);
}

void AppendGeneral(std::string& out, double value, int precision) {
  if (AppendGeneralQuickly(out, value, precision)) return;
  AppendChars(out, value, std::chars_format::general, precision);
}

void AppendFixed(std::string& out, double value, int decimals) {
  AppendChars(out, value, std::chars_format::fixed, decimals);
}

void AppendMatrix(std::string& out, const double m[6], int decimals) {
  // A coefficient this small against the largest one is rounding noise
  // (the cosine of a right angle): written as 0.
  double largest = 0;
  for (int i = 0; i < 4; ++i) largest = std::max(largest, std::abs(m[i]));
  out += "matrix(";
  for (int i = 0; i < 6; ++i) {
    if (i > 0) out += ' ';
    if (i < 4) AppendGeneral(out, std::abs(m[i]) <= 1e-12 * largest ? 0.0 : m[i], 9);
    else AppendCoordinate(out, m[i], decimals);
  }
  out += ')';
}

std::string General(double value, int precision) {
  std::string out;
  AppendGeneral(out, value, precision);
  return out;
}

std::string ColorText(uint32_t rgb) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string out = "#";
  for (int shift = 20; shift >= 0; shift -= 4) out += kHex[(rgb >> shift) & 0xF];
  return out;
}

std::string LineWeightText(int weight) {
  const double millimetres = weight / 100.0;
  if (weight < 0 || std::abs(millimetres) <= 1e-6) return "0.01mm";
  std::string out;
  AppendGeneral(out, millimetres, 4);
  return out + "mm";
}

}  // namespace fx::svg
