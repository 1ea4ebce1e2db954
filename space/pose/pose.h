// What other files know of poses: 4 x 4 matrices, row by row.
#pragma once

#include "dax3d/status.h"
#include "frame/check.h"
#include "geometry/finite.h"
#include "geometry/quaternion.h"

namespace dax {

struct Pose {
  Matrix33 rotation;
  Vector3 translation;
};

inline Pose loadPose(const double* m) {
  return {loadMatrix33(m, 4), {m[3], m[7], m[11]}};
}
inline void storePose(const Pose& pose, double* to) {
  const double t[3] = {pose.translation.x, pose.translation.y, pose.translation.z};
  storeMatrix33(pose.rotation, to, 4);
  for (int i = 0; i < 3; ++i) to[4 * i + 3] = t[i], to[12 + i] = 0;
  to[15] = 1;
}

inline DaxStatus checkPose(const Pose& pose) {
  DAX_REQUIRE(isFinite(pose.translation), DAX_STS_DATA_RANGE);
  DAX_REQUIRE(isRotation(pose.rotation), DAX3D_STS_NO_ROTATION);
  return DAX_STS_OK;
}

}  // namespace dax
