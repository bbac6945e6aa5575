// Host value types: drawing dates and result buffer lists.
#include <gtest/gtest.h>

#include <string>

#include "host/ids.h"
#include "host/resbuf.h"

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

TEST(ResbufTest, BuildsCopiesAndReleasesExtendedDataLists) {
  const double point[3] = {1, 2, 3};
  ResbufPtr list(acutBuildList(1001, "VantoryApp", 1000, "1.2", 1071, 40000, 1010, point, RTNONE));
  ResbufPtr copy(acutDuplicateRb(list.get()));
  list.reset();  // the copy owns its own strings

  const resbuf* rb = copy.get();
  ASSERT_NE(rb, nullptr);
  EXPECT_EQ(rb->restype, 1001);
  EXPECT_EQ(std::string(rb->resval.rstring), "VantoryApp");
  rb = rb->rbnext;
  EXPECT_EQ(std::string(rb->resval.rstring), "1.2");
  rb = rb->rbnext;
  EXPECT_EQ(rb->resval.rlong, 40000);
  rb = rb->rbnext;
  EXPECT_EQ(rb->resval.rpoint[2], 3);
  EXPECT_EQ(rb->rbnext, nullptr);
}
