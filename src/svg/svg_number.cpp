#include "svg/svg_number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

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

}  // namespace

int CoordinateDecimals(double diagonal) {
  if (!std::isfinite(diagonal) || diagonal < 0) diagonal = 0;
  // Digits of the truncated diagonal, as "%d" would print it.
  int digits = 1;
  for (double whole = std::trunc(diagonal); whole >= 10; whole = std::trunc(whole / 10)) ++digits;
  return digits < 6 ? 6 - digits : 0;
}

void AppendCoordinate(std::string& out, double value, int decimals) {
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
