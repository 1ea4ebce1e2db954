#include "dax3d/shape.h"

#include <gtest/gtest.h>

#include "tests/space/space_scene.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Shapes) {
  Digest digest;
  Random random(9);
  for (int round = 0; round < 50; ++round) {
    const Real3 p = anyVector(random);
    double shape[9], distance[8], foot[3], feet[6], angle;
    for (double& number : shape) number = uniform(random, 0.1, 2);
    ASSERT_EQ(DAX3D_DIST_PointLine_f64(p.data(), shape, distance, foot), DAX_STS_OK);
    ASSERT_EQ(DAX3D_DIST_PointPlane_f64(p.data(), shape, distance + 1, foot), DAX_STS_OK);
    ASSERT_EQ(DAX3D_DIST_PointSphere_f64(p.data(), shape, distance + 2, foot), DAX_STS_OK);
    ASSERT_EQ(DAX3D_DIST_PointCylinder_f64(p.data(), shape, distance + 3, foot), DAX_STS_OK);
    ASSERT_EQ(DAX3D_DIST_PointCircle_f64(p.data(), shape, distance + 4, foot), DAX_STS_OK);
    ASSERT_EQ(DAX3D_DIST_PointTriangle_f64(p.data(), shape, distance + 5, foot), DAX_STS_OK);
    ASSERT_EQ(DAX3D_DIST_SegmentSegment_f64(shape, shape + 3, distance + 6, feet), DAX_STS_OK);
    ASSERT_EQ(DAX3D_DIST_LineLine_f64(shape, shape + 3, distance + 7, feet), DAX_STS_OK);
    ASSERT_EQ(DAX3D_ANGLE_Vectors_f64(p.data(), shape, &angle), DAX_STS_OK);
    digest.add(distance, sizeof distance).add(foot, sizeof foot).add(feet, sizeof feet).add(&angle, sizeof angle);
  }
  EXPECT_EQ(digest.value(), 0x5D15CEAF11DE64ABu);
}

}  // namespace
}  // namespace dax::test
