#include "space/hull/box_axes.h"

namespace dax {
namespace {

template <class T>
DaxStatus uprightBox(const T* points, int32_t n, double* lower, double* upper) {
  DAX_REQUIRE(points && lower && upper, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(areBoxable(points, int64_t{3} * n), DAX_STS_DATA_RANGE);
  Span along[3];
  for (ptrdiff_t i = 0; i < n; ++i) {
    for (int k = 0; k < 3; ++k) along[k].add(double{points[3 * i + k]});
  }
  for (int k = 0; k < 3; ++k) lower[k] = along[k].low, upper[k] = along[k].high;
  return DAX_STS_OK;
}

template <class T>
DaxStatus principalBox(const T* given, int32_t n, Dax3dBox* box) {
  DAX_REQUIRE(given && box, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(areBoxable(given, int64_t{3} * n), DAX_STS_DATA_RANGE);
  CentredPoints<T> points{given, n};
  Vector3 first{1, 0, 0}, second{0, 1, 0};
  if (points.centre() == DAX_STS_OK) {  // more than one place
    const EigenSystem<3> axes = principalAxes(points);
    first = load3(axes.vectors[2]), second = load3(axes.vectors[1]);
  }
  *box = boxAlong(given, n, first, second);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_BOX_Upright_f64(const double* points, int32_t n, double lower[3], double upper[3]) {
  return uprightBox(points, n, lower, upper);
}
DaxStatus DAX3D_BOX_Upright_f32(const float* points, int32_t n, double lower[3], double upper[3]) {
  return uprightBox(points, n, lower, upper);
}
DaxStatus DAX3D_BOX_Pca_f64(const double* points, int32_t n, Dax3dBox* box) {
  return principalBox(points, n, box);
}
DaxStatus DAX3D_BOX_Pca_f32(const float* points, int32_t n, Dax3dBox* box) {
  return principalBox(points, n, box);
}
