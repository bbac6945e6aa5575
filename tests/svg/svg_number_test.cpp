// Numbers: the coordinate precision rule, coordinates, colours and widths.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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
      {-1.5, 0, "-2"},           {0.1, 1, "0.1"},          {std::numeric_limits<double>::infinity(), 2, "0"}, {std::nan(""), 2, "0"},
  };
  for (const auto& c : kCases) {
    std::string out;
    fx::svg::AppendCoordinate(out, c.value, c.decimals);
    EXPECT_EQ(out, c.text) << c.value << " " << c.decimals;
  }
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
