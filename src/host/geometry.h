// Geometry value types of the host API: points, vectors, transforms,
// tolerances and extents boxes, shaped like the editor's AcGe classes.
#ifndef FLOORXPORT_HOST_GEOMETRY_H_
#define FLOORXPORT_HOST_GEOMETRY_H_

#include <cmath>

// Tolerances for geometric comparisons: one object passed to the routines
// that need it instead of epsilons scattered through the code.
class AcGeTol {
 public:
  AcGeTol() = default;
  AcGeTol(double point, double vector) : point_(point), vector_(vector) {}
  double equalPoint() const { return point_; }
  double equalVector() const { return vector_; }
  void setEqualPoint(double value) { point_ = value; }
  void setEqualVector(double value) { vector_ = value; }

 private:
  double point_ = 1e-10;
  double vector_ = 1e-12;
};

struct AcGeContext {
  static AcGeTol gTol;  // the global tolerance used when none is passed
};

struct AcGeVector2d {
  double x = 0, y = 0;
  AcGeVector2d() = default;
  AcGeVector2d(double ax, double ay) : x(ax), y(ay) {}
  double length() const { return std::hypot(x, y); }
  AcGeVector2d operator+(AcGeVector2d o) const { return {x + o.x, y + o.y}; }
  AcGeVector2d operator-(AcGeVector2d o) const { return {x - o.x, y - o.y}; }
  AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
};

struct AcGePoint2d {
  double x = 0, y = 0;
  AcGePoint2d() = default;
  AcGePoint2d(double ax, double ay) : x(ax), y(ay) {}
  AcGeVector2d operator-(AcGePoint2d o) const { return {x - o.x, y - o.y}; }
  AcGePoint2d operator+(AcGeVector2d v) const { return {x + v.x, y + v.y}; }
  double distanceTo(AcGePoint2d o) const { return (*this - o).length(); }
  bool isEqualTo(AcGePoint2d o, const AcGeTol& tol = AcGeContext::gTol) const {
    return distanceTo(o) <= tol.equalPoint();
  }
  bool operator==(const AcGePoint2d&) const = default;
};

struct AcGeVector3d {
  double x = 0, y = 0, z = 0;
  AcGeVector3d() = default;
  AcGeVector3d(double ax, double ay, double az) : x(ax), y(ay), z(az) {}
  static const AcGeVector3d kXAxis, kYAxis, kZAxis;
  double length() const { return std::sqrt(x * x + y * y + z * z); }
  AcGeVector3d normal() const;  // unit vector; the zero vector stays zero
  double dotProduct(AcGeVector3d o) const { return x * o.x + y * o.y + z * o.z; }
  AcGeVector3d crossProduct(AcGeVector3d o) const {
    return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
  }
  AcGeVector3d operator+(AcGeVector3d o) const { return {x + o.x, y + o.y, z + o.z}; }
  AcGeVector3d operator-(AcGeVector3d o) const { return {x - o.x, y - o.y, z - o.z}; }
  AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
  AcGeVector3d operator-() const { return {-x, -y, -z}; }
  bool isEqualTo(AcGeVector3d o, const AcGeTol& tol = AcGeContext::gTol) const {
    return (*this - o).length() <= tol.equalVector();
  }
  bool operator==(const AcGeVector3d&) const = default;
};

struct AcGePoint3d {
  double x = 0, y = 0, z = 0;
  AcGePoint3d() = default;
  AcGePoint3d(double ax, double ay, double az) : x(ax), y(ay), z(az) {}
  static const AcGePoint3d kOrigin;
  AcGeVector3d operator-(AcGePoint3d o) const { return {x - o.x, y - o.y, z - o.z}; }
  AcGePoint3d operator+(AcGeVector3d v) const { return {x + v.x, y + v.y, z + v.z}; }
  AcGePoint3d operator-(AcGeVector3d v) const { return {x - v.x, y - v.y, z - v.z}; }
  double distanceTo(AcGePoint3d o) const { return (*this - o).length(); }
  bool isEqualTo(AcGePoint3d o, const AcGeTol& tol = AcGeContext::gTol) const {
    return distanceTo(o) <= tol.equalPoint();
  }
  AcGePoint2d to2d() const { return {x, y}; }
  bool operator==(const AcGePoint3d&) const = default;
};

// An affine transform of 3D space, row-major 4x4 with the last row 0 0 0 1.
// Points are columns: p' = M * p.
class AcGeMatrix3d {
 public:
  AcGeMatrix3d();  // identity
  static const AcGeMatrix3d kIdentity;

  static AcGeMatrix3d translation(const AcGeVector3d& offset);
  static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                               const AcGePoint3d& center = AcGePoint3d::kOrigin);
  static AcGeMatrix3d scaling(double sx, double sy, double sz,
                              const AcGePoint3d& center = AcGePoint3d::kOrigin);
  // The arbitrary-axis frame of an object whose extrusion is `normal`: maps
  // object coordinates to world coordinates (identity for +Z).
  static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
  // Columns are the images of the axes and of the origin.
  static AcGeMatrix3d alignCoordSys(const AcGePoint3d& origin, const AcGeVector3d& x_axis,
                                    const AcGeVector3d& y_axis, const AcGeVector3d& z_axis);

  AcGeMatrix3d operator*(const AcGeMatrix3d& right) const;  // this applied after right
  AcGeMatrix3d& preMultBy(const AcGeMatrix3d& left);         // *this = left * *this
  AcGeMatrix3d& postMultBy(const AcGeMatrix3d& right);       // *this = *this * right
  AcGeMatrix3d inverse() const;  // identity-like garbage for a singular matrix; check det()
  double det() const;
  bool isIdentity() const;
  // The largest factor by which the transform stretches a length in the XY plane.
  double scale() const;

  double operator()(int row, int col) const { return m_[row][col]; }
  double& operator()(int row, int col) { return m_[row][col]; }

  AcGePoint3d apply(const AcGePoint3d& p) const;
  AcGeVector3d apply(const AcGeVector3d& v) const;

 private:
  double m_[4][4];
};

inline AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p) { return m.apply(p); }
inline AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v) { return m.apply(v); }

// An axis-aligned box. A default box is empty (min above max) and grows with
// addPoint; getGeomExtents fails with eInvalidExtents rather than return one.
class AcDbExtents {
 public:
  AcDbExtents();
  AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max) : min_(min), max_(max) {}
  const AcGePoint3d& minPoint() const { return min_; }
  const AcGePoint3d& maxPoint() const { return max_; }
  void set(const AcGePoint3d& min, const AcGePoint3d& max) { min_ = min; max_ = max; }
  void addPoint(const AcGePoint3d& p);
  void addExt(const AcDbExtents& other);
  bool isEmpty() const { return min_.x > max_.x; }
  // The box of the eight transformed corners.
  void transformBy(const AcGeMatrix3d& m);

 private:
  AcGePoint3d min_, max_;
};

#endif  // FLOORXPORT_HOST_GEOMETRY_H_
