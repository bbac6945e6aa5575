#include "host/geometry.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {
void ExpectNear(const AcGePoint3d& actual, const AcGePoint3d& expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9);
  EXPECT_NEAR(actual.y, expected.y, 1e-9);
  EXPECT_NEAR(actual.z, expected.z, 1e-9);
}
}  // namespace

TEST(MatrixTest, ComposesRotationAboutCentreAndInverts) {
  AcGeMatrix3d m = AcGeMatrix3d::translation({10, 0, 0}) *
                   AcGeMatrix3d::rotation(std::numbers::pi / 2, AcGeVector3d::kZAxis, {1, 1, 0}) *
                   AcGeMatrix3d::scaling(2, 2, 2);
  // (1,0) scaled to (2,0), turned about (1,1) to (2,2), moved to (12,2).
  ExpectNear(m * AcGePoint3d(1, 0, 0), {12, 2, 0});
  ExpectNear(m.inverse() * (m * AcGePoint3d(3, -4, 5)), {3, -4, 5});
  EXPECT_NEAR(m.scale(), 2, 1e-12);
}

TEST(MatrixTest, ArbitraryAxisFrameOfNegativeZMirrorsX) {
  // An entity with extrusion (0,0,-1) has its x axis pointing to -x.
  AcGeMatrix3d m = AcGeMatrix3d::planeToWorld({0, 0, -1});
  ExpectNear(m * AcGePoint3d(1, 2, 3), {-1, 2, -3});
  EXPECT_TRUE(AcGeMatrix3d::planeToWorld({0, 0, 1}).isIdentity());
}

TEST(ExtentsTest, GrowsAndTransformsAsBox) {
  AcDbExtents box;
  EXPECT_TRUE(box.isEmpty());
  box.addPoint({0, 0, 0});
  box.addPoint({2, 1, 0});
  box.transformBy(AcGeMatrix3d::rotation(std::numbers::pi / 2, AcGeVector3d::kZAxis));
  ExpectNear(box.minPoint(), {-1, 0, 0});
  ExpectNear(box.maxPoint(), {0, 2, 0});
}
