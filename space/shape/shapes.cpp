#include "space/shape/shapes.h"

#include "dax3d/status.h"
#include "space/pose/pose.h"

namespace dax {

// C. Ericson, Real-Time Collision Detection, 2005, 5.1.5: by the regions around a triangle in its plane.
Nearest Triangle::nearest(const Vector3& p) const {
  const Vector3 ab = b - a, ac = c - a, ap = p - a, bp = p - b, cp = p - c;
  const double d1 = dot(ab, ap), d2 = dot(ac, ap), d3 = dot(ab, bp), d4 = dot(ac, bp), d5 = dot(ab, cp),
               d6 = dot(ac, cp);
  const double ofA = d3 * d6 - d5 * d4, ofB = d5 * d2 - d1 * d6, ofC = d1 * d4 - d3 * d2;
  Vector3 foot;
  if (d1 <= 0 && d2 <= 0) {
    foot = a;
  } else if (d3 >= 0 && d4 <= d3) {
    foot = b;
  } else if (d6 >= 0 && d5 <= d6) {
    foot = c;
  } else if (ofC <= 0 && d1 >= 0 && d3 <= 0) {
    foot = a + (d1 / (d1 - d3)) * ab;
  } else if (ofB <= 0 && d2 >= 0 && d6 <= 0) {
    foot = a + (d2 / (d2 - d6)) * ac;
  } else if (ofA <= 0 && d4 >= d3 && d5 >= d6) {
    foot = b + ((d4 - d3) / ((d4 - d3) + (d5 - d6))) * (c - b);
  } else {
    const double all = ofA + ofB + ofC;
    foot = a + (ofB / all) * ab + (ofC / all) * ac;
  }
  return {length(p - foot), foot};
}

DaxStatus Box3::read(const double* n) {
  const Pose pose = loadPose(n);
  const Vector3 size = load3(n + 16);
  DAX_REQUIRE(size.x >= 0 && size.y >= 0 && size.z >= 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isRotation(pose.rotation), DAX3D_STS_NO_ROTATION);
  axes = transposed(matrixOf(quaternionOf(pose.rotation)));
  centre = pose.translation;
  half = 0.5 * size;
  return DAX_STS_OK;
}

Nearest Box3::nearest(const Vector3& p) const {
  const Vector3 q = inside(p);
  const Vector3 held{std::clamp(q.x, -half.x, half.x), std::clamp(q.y, -half.y, half.y),
                     std::clamp(q.z, -half.z, half.z)};
  const double out = length(q - held);
  if (out > 0) return {out, outside(held)};
  // Inside: to the nearest face.
  const double depths[3] = {half.x - std::fabs(q.x), half.y - std::fabs(q.y), half.z - std::fabs(q.z)};
  const auto axis = std::min_element(depths, depths + 3) - depths;
  Vector3 foot = q;
  double& side = axis == 0 ? foot.x : axis == 1 ? foot.y : foot.z;
  const double reach = axis == 0 ? half.x : axis == 1 ? half.y : half.z;
  side = side < 0 ? -reach : reach;
  return {-depths[axis], outside(foot)};
}

}  // namespace dax
