#include "host/ids.h"

#include <gtest/gtest.h>

TEST(HandleTest, ParsesAndPrintsHexadecimal) {
  EXPECT_EQ(AcDbHandle("1A2f").value(), 0x1A2Fu);
  EXPECT_EQ(AcDbHandle(0x1A2F).ascii(), "1A2F");
  EXPECT_TRUE(AcDbHandle("zz").isNull());
  EXPECT_TRUE(AcDbHandle("").isNull());
}

TEST(DateTest, JulianDatesUseMidnightDays) {
  // 2451545.0 is 2000-01-01 at midnight in drawing headers.
  AcDbDate date = AcDbDate::fromJulian(2451545.75);
  EXPECT_EQ(date.year(), 2000);
  EXPECT_EQ(date.month(), 1);
  EXPECT_EQ(date.day(), 1);
  EXPECT_EQ(date.hour(), 18);
  EXPECT_EQ(date.minute(), 0);
  EXPECT_DOUBLE_EQ(date.julian(), 2451545.75);
}
