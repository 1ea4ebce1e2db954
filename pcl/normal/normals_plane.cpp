#include "pcl/normal/normals_plane.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace dax {

Symmetric3<float> covariance(const float* points, int32_t count) {
  const auto n = static_cast<float>(count);
  const float* const end = points + ptrdiff_t{3} * count;
  float x = 0, y = 0, z = 0;
  for (const float* p = points; p < end; p += 3) x += p[0], y += p[1], z += p[2];
  x /= n, y /= n, z /= n;
  Symmetric3<float> sum{0, 0, 0, 0, 0, 0};
  for (const float* p = points; p < end; p += 3) {
    const float dx = p[0] - x, dy = p[1] - y, dz = p[2] - z;
    sum.xx += dx * dx, sum.xy += dx * dy, sum.xz += dx * dz;
    sum.yy += dy * dy, sum.yz += dy * dz, sum.zz += dz * dz;
  }
  return {sum.xx / n, sum.xy / n, sum.xz / n, sum.yy / n, sum.yz / n, sum.zz / n};
}

bool fitNormal(const Symmetric3<float>& c, DAX3DPCL_NORMAL& normal) {
  const Symmetric3<double> wide{c.xx, c.xy, c.xz, c.yy, c.yz, c.zz};
  const Eigenvalues3 values = eigenvalues(wide);
  if (!(values.largest <= FLT_MAX)) return false;
  const auto smallest = static_cast<float>(values.smallest), largest = static_cast<float>(values.largest);
  const float noise = std::max(FLT_MIN, 4 * FLT_EPSILON * largest);
  if (!(static_cast<float>(values.middle) >= noise)) return false;
  const Vector3 axis = smallestAxis(wide, values);
  normal = {static_cast<float>(axis.x), static_cast<float>(axis.y), static_cast<float>(axis.z), 0};
  if (smallest >= noise) normal.curvature = std::fabs(smallest / (c.xx + c.yy + c.zz));
  return true;
}

}  // namespace dax
