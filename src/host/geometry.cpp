#include "host/geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

AcGeTol AcGeContext::gTol;
const AcGeVector3d AcGeVector3d::kXAxis{1, 0, 0};
const AcGeVector3d AcGeVector3d::kYAxis{0, 1, 0};
const AcGeVector3d AcGeVector3d::kZAxis{0, 0, 1};
const AcGePoint3d AcGePoint3d::kOrigin{0, 0, 0};
const AcGeMatrix3d AcGeMatrix3d::kIdentity;

AcGeVector3d AcGeVector3d::normal() const {
  double len = length();
  return len == 0 ? *this : AcGeVector3d{x / len, y / len, z / len};
}

AcGeMatrix3d::AcGeMatrix3d() {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m_[r][c] = r == c ? 1.0 : 0.0;
}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& offset) {
  AcGeMatrix3d m;
  m.m_[0][3] = offset.x;
  m.m_[1][3] = offset.y;
  m.m_[2][3] = offset.z;
  return m;
}

AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis,
                                    const AcGePoint3d& center) {
  AcGeVector3d u = axis.normal();
  double c = std::cos(angle), s = std::sin(angle), t = 1 - c;
  AcGeMatrix3d r;
  r.m_[0][0] = t * u.x * u.x + c;
  r.m_[0][1] = t * u.x * u.y - s * u.z;
  r.m_[0][2] = t * u.x * u.z + s * u.y;
  r.m_[1][0] = t * u.x * u.y + s * u.z;
  r.m_[1][1] = t * u.y * u.y + c;
  r.m_[1][2] = t * u.y * u.z - s * u.x;
  r.m_[2][0] = t * u.x * u.z - s * u.y;
  r.m_[2][1] = t * u.y * u.z + s * u.x;
  r.m_[2][2] = t * u.z * u.z + c;
  AcGeVector3d to_center = center - AcGePoint3d::kOrigin;
  return translation(to_center) * r * translation(-to_center);
}

AcGeMatrix3d AcGeMatrix3d::scaling(double sx, double sy, double sz, const AcGePoint3d& center) {
  AcGeMatrix3d s;
  s.m_[0][0] = sx;
  s.m_[1][1] = sy;
  s.m_[2][2] = sz;
  // About the origin with finite factors the products below only turn a
  // -0 factor into +0.
  if (center.x == 0 && center.y == 0 && center.z == 0 && std::isfinite(sx) && std::isfinite(sy) && std::isfinite(sz)) {
    for (int i = 0; i < 3; ++i) s.m_[i][i] += 0.0;
    return s;
  }
  AcGeVector3d to_center = center - AcGePoint3d::kOrigin;
  return translation(to_center) * s * translation(-to_center);
}

AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) {
  // The arbitrary axis algorithm of the DXF format. +Z, the usual normal,
  // without the arithmetic.
  if (normal.x == 0 && normal.y == 0 && normal.z > 0 && std::isfinite(normal.z)) return {};
  AcGeVector3d n = normal.normal();
  if (n.length() == 0 || n.isEqualTo(AcGeVector3d::kZAxis, AcGeTol(1e-12, 1e-12))) return {};
  constexpr double kLimit = 1.0 / 64;
  AcGeVector3d ax = (std::abs(n.x) < kLimit && std::abs(n.y) < kLimit)
                        ? AcGeVector3d::kYAxis.crossProduct(n).normal()
                        : AcGeVector3d::kZAxis.crossProduct(n).normal();
  AcGeVector3d ay = n.crossProduct(ax).normal();
  return alignCoordSys(AcGePoint3d::kOrigin, ax, ay, n);
}

AcGeMatrix3d AcGeMatrix3d::alignCoordSys(const AcGePoint3d& origin, const AcGeVector3d& x_axis,
                                         const AcGeVector3d& y_axis,
                                         const AcGeVector3d& z_axis) {
  AcGeMatrix3d m;
  const AcGeVector3d cols[4] = {x_axis, y_axis, z_axis, origin - AcGePoint3d::kOrigin};
  for (int c = 0; c < 4; ++c) {
    m.m_[0][c] = cols[c].x;
    m.m_[1][c] = cols[c].y;
    m.m_[2][c] = cols[c].z;
  }
  return m;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& right) const {
  AcGeMatrix3d out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      double sum = 0;
      for (int k = 0; k < 4; ++k) sum += m_[r][k] * right.m_[k][c];
      out.m_[r][c] = sum;
    }
  return out;
}

AcGeMatrix3d& AcGeMatrix3d::preMultBy(const AcGeMatrix3d& left) { return *this = left * *this; }
AcGeMatrix3d& AcGeMatrix3d::postMultBy(const AcGeMatrix3d& right) { return *this = *this * right; }

double AcGeMatrix3d::det() const {
  return m_[0][0] * (m_[1][1] * m_[2][2] - m_[1][2] * m_[2][1]) -
         m_[0][1] * (m_[1][0] * m_[2][2] - m_[1][2] * m_[2][0]) +
         m_[0][2] * (m_[1][0] * m_[2][1] - m_[1][1] * m_[2][0]);
}

AcGeMatrix3d AcGeMatrix3d::inverse() const {
  // Inverse of the linear 3x3 part by cofactors, then the translation.
  double d = det();
  AcGeMatrix3d inv;
  if (d == 0) return inv;
  const auto& a = m_;
  inv.m_[0][0] = (a[1][1] * a[2][2] - a[1][2] * a[2][1]) / d;
  inv.m_[0][1] = (a[0][2] * a[2][1] - a[0][1] * a[2][2]) / d;
  inv.m_[0][2] = (a[0][1] * a[1][2] - a[0][2] * a[1][1]) / d;
  inv.m_[1][0] = (a[1][2] * a[2][0] - a[1][0] * a[2][2]) / d;
  inv.m_[1][1] = (a[0][0] * a[2][2] - a[0][2] * a[2][0]) / d;
  inv.m_[1][2] = (a[0][2] * a[1][0] - a[0][0] * a[1][2]) / d;
  inv.m_[2][0] = (a[1][0] * a[2][1] - a[1][1] * a[2][0]) / d;
  inv.m_[2][1] = (a[0][1] * a[2][0] - a[0][0] * a[2][1]) / d;
  inv.m_[2][2] = (a[0][0] * a[1][1] - a[0][1] * a[1][0]) / d;
  for (int r = 0; r < 3; ++r)
    inv.m_[r][3] = -(inv.m_[r][0] * a[0][3] + inv.m_[r][1] * a[1][3] + inv.m_[r][2] * a[2][3]);
  return inv;
}

bool AcGeMatrix3d::isIdentity() const {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (m_[r][c] != (r == c ? 1.0 : 0.0)) return false;
  return true;
}

double AcGeMatrix3d::scale() const {
  double sx = apply(AcGeVector3d::kXAxis).length();
  double sy = apply(AcGeVector3d::kYAxis).length();
  return std::max(sx, sy);
}

AcGePoint3d AcGeMatrix3d::apply(const AcGePoint3d& p) const {
  return {m_[0][0] * p.x + m_[0][1] * p.y + m_[0][2] * p.z + m_[0][3],
          m_[1][0] * p.x + m_[1][1] * p.y + m_[1][2] * p.z + m_[1][3],
          m_[2][0] * p.x + m_[2][1] * p.y + m_[2][2] * p.z + m_[2][3]};
}

AcGeVector3d AcGeMatrix3d::apply(const AcGeVector3d& v) const {
  return {m_[0][0] * v.x + m_[0][1] * v.y + m_[0][2] * v.z,
          m_[1][0] * v.x + m_[1][1] * v.y + m_[1][2] * v.z,
          m_[2][0] * v.x + m_[2][1] * v.y + m_[2][2] * v.z};
}

AcDbExtents::AcDbExtents() {
  constexpr double kBig = std::numeric_limits<double>::max();
  min_ = {kBig, kBig, kBig};
  max_ = {-kBig, -kBig, -kBig};
}

void AcDbExtents::addPoint(const AcGePoint3d& p) {
  min_ = {std::min(min_.x, p.x), std::min(min_.y, p.y), std::min(min_.z, p.z)};
  max_ = {std::max(max_.x, p.x), std::max(max_.y, p.y), std::max(max_.z, p.z)};
}

void AcDbExtents::addExt(const AcDbExtents& other) {
  if (other.isEmpty()) return;
  addPoint(other.min_);
  addPoint(other.max_);
}

void AcDbExtents::transformBy(const AcGeMatrix3d& m) {
  if (isEmpty()) return;
  AcDbExtents out;
  for (int i = 0; i < 8; ++i) {
    AcGePoint3d corner{(i & 1) ? max_.x : min_.x, (i & 2) ? max_.y : min_.y,
                       (i & 4) ? max_.z : min_.z};
    out.addPoint(m.apply(corner));
  }
  *this = out;
}
