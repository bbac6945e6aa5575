#include "host/resbuf.h"

#include <gtest/gtest.h>

#include <string>

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
