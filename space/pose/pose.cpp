#include "space/pose/pose.h"

#include "dax3d/pose.h"

namespace dax {
namespace {

// Both are finite and rotations: first all translations, then all rotations.
DaxStatus checkTwoPoses(const Pose& a, const Pose& b) {
  DAX_REQUIRE(isFinite(a.translation) && isFinite(b.translation), DAX_STS_DATA_RANGE);
  DAX_REQUIRE_OK(checkPose(a));
  return checkPose(b);
}

// The angle between both is at most pi / 2, as half angles of the rotations are.
Quaternion slerp(const Quaternion& a, const Quaternion& to, double t) {
  const Quaternion b = dot(a, to) < 0 ? -1.0 * to : to;
  const double angle = angleBetween(a, b) / 2;
  // sin(x) / x differs from 1 by less than half a unit of the last place.
  if (angle < 1e-8) return unit((1 - t) * a + t * b);
  return unit(elementary::sin((1 - t) * angle) * a + elementary::sin(t * angle) * b);
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_POSE_Compose_f64(const double a[16], const double b[16], double ab[16]) {
  DAX_REQUIRE(a && b && ab, DAX_STS_NULL_POINTER);
  const Pose left = loadPose(a), right = loadPose(b);
  storePose({left.rotation * right.rotation, left.rotation * right.translation + left.translation}, ab);
  return DAX_STS_OK;
}

DaxStatus DAX3D_POSE_Inverse_f64(const double pose[16], double inverse[16]) {
  DAX_REQUIRE(pose && inverse, DAX_STS_NULL_POINTER);
  const Pose given = loadPose(pose);
  storePose({transposed(given.rotation), -transposedTimes(given.rotation, given.translation)}, inverse);
  return DAX_STS_OK;
}

DaxStatus DAX3D_POSE_Apply_f64(const double pose[16], const double point[3], double result[3]) {
  DAX_REQUIRE(pose && point && result, DAX_STS_NULL_POINTER);
  const Pose given = loadPose(pose);
  store3(given.rotation * load3(point) + given.translation, result);
  return DAX_STS_OK;
}

DaxStatus DAX3D_POSE_Interpolate_f64(const double a[16], const double b[16], double t, double pose[16]) {
  DAX_REQUIRE(a && b && pose, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(t >= 0 && t <= 1, DAX_STS_BAD_PARAM);
  const Pose from = loadPose(a), to = loadPose(b);
  DAX_REQUIRE_OK(checkTwoPoses(from, to));
  const Quaternion q = slerp(quaternionOf(from.rotation), quaternionOf(to.rotation), t);
  storePose({matrixOf(q), (1 - t) * from.translation + t * to.translation}, pose);
  return DAX_STS_OK;
}

DaxStatus DAX3D_POSE_Distance_f64(const double a[16], const double b[16], double* translation, double* angle) {
  DAX_REQUIRE(a && b && translation && angle, DAX_STS_NULL_POINTER);
  const Pose from = loadPose(a), to = loadPose(b);
  DAX_REQUIRE_OK(checkTwoPoses(from, to));
  *translation = safeLength(to.translation - from.translation);
  *angle = angleBetween(quaternionOf(from.rotation), quaternionOf(to.rotation));
  return DAX_STS_OK;
}
