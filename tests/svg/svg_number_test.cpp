// Numbers: the coordinate precision rule, coordinates, colours and widths.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

#include "svg/svg_number.h"

namespace {

using fx::svg::CoordinateDecimals;

TEST(SvgNumberTest, DecimalsFollowTheDigitsOfTheTruncatedDiagonal) {
  const struct {
    double diagonal;
    int decimals;
  } kCases[] = {
      {0, 5},     {0.5, 5},      {9.99, 5},       {10, 4},         {99.9, 4},       {100.0, 3},
      {250, 3},   {999.999, 3},  {12000, 1},      {99999.9, 1},    {100000, 0},     {1e6, 0},
      {1e12, 0},  {-1, 5},
  };
  for (const auto& c : kCases) EXPECT_EQ(CoordinateDecimals(c.diagonal), c.decimals) << c.diagonal;
}

TEST(SvgNumberTest, CoordinatesDropTrailingZerosAndNegativeZero) {
  const struct {
    double value;
    int decimals;
    const char* text;
  } kCases[] = {
      {1.23456789, 4, "1.2346"}, {1.23456789, 3, "1.235"}, {2.5, 3, "2.5"},   {2, 3, "2"},
      {100, 0, "100"},           {1e6, 0, "1000000"},      {-0.0001, 3, "0"}, {-0.0, 2, "0"},
      {-1.5, 0, "-2"},           {-0.5, 0, "0"},           {0.1, 1, "0.1"},          {std::numeric_limits<double>::infinity(), 2, "0"}, {std::nan(""), 2, "0"},
  };
  for (const auto& c : kCases) {
    std::string out;
    fx::svg::AppendCoordinate(out, c.value, c.decimals);
    EXPECT_EQ(out, c.text) << c.value << " " << c.decimals;
  }
}

// "%.*f" with trailing zeros, a trailing point and the sign of a zero removed.
std::string TrimmedFixed(double value, int decimals) {
  char buffer[400];
  std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
  std::string text = buffer;
  if (text.find('.') != std::string::npos) {
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string CGeneral(double value, int precision) {
  char buffer[400];
  std::snprintf(buffer, sizeof buffer, "%.*g", precision, value);
  return buffer;
}

TEST(SvgNumberTest, NumbersMatchTheCLibraryAcrossMagnitudesAndTies) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> mantissa(-1, 1);
  std::uniform_int_distribution<int> exponent(-12, 16), decimals(0, 9), eighths(-80000, 80000);
  for (int i = 0; i < 200000; ++i) {
    const int places = decimals(random);
    // Half the cases are exact binary fractions: ties such as 0.125 at two decimals.
    const double value = i % 2 == 0 ? mantissa(random) * std::pow(10.0, exponent(random))
                                    : eighths(random) / std::pow(2.0, 1 + i % 12);
    std::string out = "x";
    fx::svg::AppendCoordinate(out, value, places);
    ASSERT_EQ(out, "x" + TrimmedFixed(value, places)) << value << " " << places;
    const int precision = 1 + places;
    ASSERT_EQ(fx::svg::General(value, precision), CGeneral(value, precision)) << value << " " << precision;
  }
  // Powers of ten and values that round up into the next one.
  for (double value : {1e-5, 9.99995e-5, 1e-4, 0.001, 1.0, -1.0, 10.0, 100.0, 1000.0, 999.9996, 999999.5, 1e6, 1e9,
                       0.99999999999, 1.0000000001, std::nextafter(100.0, 0.0), std::nextafter(1e6, 2e6)})
    for (int precision : {4, 6, 9}) EXPECT_EQ(fx::svg::General(value, precision), CGeneral(value, precision)) << value;
}

TEST(SvgNumberTest, LineWeightsAndColours) {
  for (int weight : {0, int{AcDb::kLnWtByLayer}, int{AcDb::kLnWtByBlock}, int{AcDb::kLnWtByLwDefault}})
    EXPECT_EQ(fx::svg::LineWeightText(weight), "0.01mm") << weight;
  EXPECT_EQ(fx::svg::LineWeightText(5), "0.05mm");
  EXPECT_EQ(fx::svg::LineWeightText(100), "1mm");
  EXPECT_EQ(fx::svg::LineWeightText(211), "2.11mm");
  EXPECT_EQ(fx::svg::ColorText(0x000000), "#000000");
  EXPECT_EQ(fx::svg::ColorText(0x0a0b0c), "#0A0B0C");
}

}  // namespace
