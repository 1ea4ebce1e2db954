#include "dax3d/fit.h"

#include <gtest/gtest.h>

#include "tests/space/space_scene.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, FitsInSpace) {
  Digest digest;
  Random random(7);
  std::vector<double> points;
  for (int i = 0; i < 1500; ++i) {
    const Real3 p = anyVector(random);
    const double flat = std::sqrt(p[0] * p[0] + p[1] * p[1]);
    append(points, {p[0] / flat, p[1] / flat, 2 * p[2] + 0.5});
  }
  double numbers[7], rms;
  int32_t inliers;
  std::vector<float> buffer(2048);
  for (const auto fit :
       {DAX3D_FIT_Plane_f64, DAX3D_FIT_Line_f64, DAX3D_FIT_Sphere_f64, DAX3D_FIT_Circle_f64, DAX3D_FIT_Cylinder_f64}) {
    std::fill_n(numbers, 7, 0.0);
    ASSERT_EQ(fit(points.data(), 1500, numbers, &rms), DAX_STS_OK);
    digest.add(numbers, sizeof numbers).add(&rms, sizeof rms);
  }
  ASSERT_EQ(DAX3D_FIT_PlaneRobust_f64(points.data(), 1500, numbers, &rms, &inliers, buffer.data()), DAX_STS_OK);
  digest.add(numbers, 4 * sizeof(double)).add(&rms, sizeof rms).add(&inliers, sizeof inliers);
  EXPECT_EQ(digest.value(), 0xA8B94CB231F4086Bu);
}

}  // namespace
}  // namespace dax::test
