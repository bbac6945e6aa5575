#include "host/ids.h"

#include <gtest/gtest.h>

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
