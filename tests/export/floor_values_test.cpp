// The number formats of the floor files, the text position, the matrix
// coefficients and the units names: the edges a small drawing's export
// (floor_writers_test) does not reach.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>

#include "export/floor_values.h"

namespace fx::exports {
namespace {

std::string Printf(const char* format, double value) {
  char buffer[512];
  std::snprintf(buffer, sizeof buffer, format, value);
  return buffer;
}

TEST(FloorValues, FixedDecimalsAreThoseOfPrintf) {
  for (double value : {0.0, 12.0, -12.0, 0.5, 1.00005, 0.00005, -0.00004, 123456789.123456789, 1e15, 2.5e-7,
                       -67425.0, 0.1 + 0.2, 1.23456789e-3, 99999.99995}) {
    EXPECT_EQ(Fixed4(value), Printf("%.4f", value)) << value;
    EXPECT_EQ(Fixed6(value), Printf("%.6f", value)) << value;
  }
  EXPECT_EQ(Fixed4(-0.0), "0.0000");
  EXPECT_EQ(Fixed6(std::numeric_limits<double>::quiet_NaN()), "0");
  EXPECT_EQ(Fixed4(std::numeric_limits<double>::infinity()), "0");
}

// Only min and max being one point is degenerate: a line has a centre.
// (Boxes of rooms, negative ones too, are checked in floor_writers_test.)
TEST(FloorValues, TheTextPositionIsTheBoxCentreUnlessTheBoxIsAPoint) {
  EXPECT_EQ(BoxCentreText(AcDbExtents({0, 0, 0}, {2, 0, 0})), "1.000000,0.000000");
  EXPECT_EQ(BoxCentreText(AcDbExtents({3, 7, 0}, {3 + 1e-12, 7, 0})), std::nullopt);
  EXPECT_EQ(BoxCentreText(AcDbExtents()), std::nullopt);
}

TEST(FloorValues, MatrixCoefficientsReadBackExactly) {
  const struct {
    double value;
    const char* text;
  } kCases[] = {
      {1, "1"}, {-1, "-1"}, {0, "0"}, {-0.0, "0"}, {225, "225"}, {-67425.5, "-67425.5"}, {0.1, "0.1"},
      {1e21, "1e+21"}, {std::numeric_limits<double>::quiet_NaN(), "0"},
  };
  for (const auto& c : kCases) EXPECT_EQ(MatrixCoefficient(c.value), c.text) << c.value;
  for (double value : {1.0 / 3, 123456.789012345, -2.5e-9}) {
    EXPECT_EQ(std::stod(MatrixCoefficient(value)), value);
  }
}

TEST(FloorValues, InsertionUnitsFoldIntoEightNames) {
  const char* kNames[] = {
      "inches",     "inches", "feet",   "miles",  "millimeters", "centimeters", "meters",
      "kilometers", "inches", "inches", "yards",  "inches",      "meters",      "meters",
      "meters",     "meters", "meters", "inches", "inches",      "inches",      "inches",
  };
  for (int units = 0; units <= 20; ++units) EXPECT_STREQ(DefaultUnitsName(units), kNames[units]) << units;
  EXPECT_STREQ(DefaultUnitsName(21), "inches");
  EXPECT_STREQ(DefaultUnitsName(-1), "inches");
}

}  // namespace
}  // namespace fx::exports
