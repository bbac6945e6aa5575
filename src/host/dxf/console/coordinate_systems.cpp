#include "host/dxf/console/coordinate_systems.h"

#include "host/database.h"
#include "host/dxf/console/active_view.h"
#include "host/dxf/console/system_variables.h"

namespace fx::console {
namespace {

constexpr int kWorld = 0;
constexpr int kUser = 1;
constexpr int kDisplay = 2;

bool GetVector(const char* name, AcGeVector3d& vector) {
  resbuf value{};
  if (GetSystemVariable(name, &value) != RTNORM) return false;
  vector = {value.resval.rpoint[0], value.resval.rpoint[1], value.resval.rpoint[2]};
  return true;
}

// False without a drawing. Axes that make no frame (zero, parallel) stand
// for the world's: the editor never keeps such a user system.
bool UserToWorld(AcGeMatrix3d& matrix) {
  AcGeVector3d origin, x_axis, y_axis;
  if (!GetVector("UCSORG", origin) || !GetVector("UCSXDIR", x_axis) || !GetVector("UCSYDIR", y_axis)) {
    return false;
  }
  x_axis = x_axis.normal();
  AcGeVector3d z_axis = x_axis.crossProduct(y_axis).normal();
  if (z_axis.length() == 0) {
    x_axis = AcGeVector3d::kXAxis;
    z_axis = AcGeVector3d::kZAxis;
  }
  y_axis = z_axis.crossProduct(x_axis);
  matrix = AcGeMatrix3d::alignCoordSys(AcGePoint3d::kOrigin + origin, x_axis, y_axis, z_axis);
  return true;
}

bool DisplayToWorld(AcGeMatrix3d& matrix) {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  View view;
  if (database == nullptr || GetActiveView(*database, view) != Acad::eOk) return false;
  matrix = view.to_world;
  return true;
}

// The matrix from the system `system` names to world; false when it names
// none this host knows.
bool ToWorld(const resbuf* system, AcGeMatrix3d& matrix) {
  if (system == nullptr) return false;
  if (system->restype == RT3DPOINT) {
    const AcGeVector3d normal(system->resval.rpoint[0], system->resval.rpoint[1], system->resval.rpoint[2]);
    if (!(normal.length() > 0)) return false;
    matrix = AcGeMatrix3d::planeToWorld(normal);
    return true;
  }
  if (system->restype != RTSHORT) return false;
  switch (system->resval.rint) {
    case kWorld: matrix = AcGeMatrix3d::kIdentity; return true;
    case kUser: return UserToWorld(matrix);
    case kDisplay: return DisplayToWorld(matrix);
    default: return false;
  }
}

}  // namespace

int TransformPoint(const ads_point point, const resbuf* from, const resbuf* to, int disp, ads_point result) {
  AcGeMatrix3d from_world, to_world;
  if (point == nullptr || result == nullptr || !ToWorld(from, from_world) || !ToWorld(to, to_world)) {
    return RTERROR;
  }
  const AcGeMatrix3d transform = to_world.inverse() * from_world;
  // `point` and `result` may be the same array: read it whole first.
  const AcGePoint3d given(point[0], point[1], point[2]);
  const AcGePoint3d moved =
      disp != 0 ? AcGePoint3d::kOrigin + transform * (given - AcGePoint3d::kOrigin) : transform * given;
  result[0] = moved.x;
  result[1] = moved.y;
  result[2] = moved.z;
  return RTNORM;
}

}  // namespace fx::console
