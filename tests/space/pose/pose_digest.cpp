#include "dax3d/pose.h"

#include <gtest/gtest.h>

#include "dax3d/rotation.h"
#include "tests/space/space_scene.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Poses) {
  Digest digest;
  Random random(2);
  std::vector<double> poses, weights;
  std::vector<float> cloud(3 * 1001), result(cloud.size());
  for (float& value : cloud) value = static_cast<float>(uniform(random, -9, 9));
  for (int i = 0; i < 40; ++i) {
    const Real3 vector = anyVector(random);
    double rotation[9], q[4], back[3], angles[3], distance[2];
    int32_t locked;
    ASSERT_EQ(DAX3D_ROT_FromRotVec_f64(vector.data(), rotation), DAX_STS_OK);
    ASSERT_EQ(DAX3D_ROT_ToQuat_f64(rotation, q), DAX_STS_OK);
    ASSERT_EQ(DAX3D_ROT_ToRotVec_f64(rotation, back), DAX_STS_OK);
    ASSERT_EQ(DAX3D_ROT_ToEuler_f64(rotation, i % 2 ? "ZYX" : "zxz", angles, &locked), DAX_STS_OK);
    const PoseMatrix pose = poseOf({rotation[0], rotation[1], rotation[2], rotation[3], rotation[4], rotation[5],
                                    rotation[6], rotation[7], rotation[8]},
                                   vector);
    poses.insert(poses.end(), pose.begin(), pose.end());
    weights.push_back(i % 3);
    PoseMatrix between;
    ASSERT_EQ(DAX3D_POSE_Interpolate_f64(poses.data(), pose.data(), 0.3, between.data()), DAX_STS_OK);
    ASSERT_EQ(DAX3D_POSE_Distance_f64(poses.data(), pose.data(), distance, distance + 1), DAX_STS_OK);
    ASSERT_EQ(DAX3D_POSE_ApplyCloud_f32(pose.data(), cloud.data(), 1001, result.data()), DAX_STS_OK);
    digest.add(rotation, sizeof rotation).add(q, sizeof q).add(back, sizeof back).add(angles, sizeof angles);
    digest.add(between.data(), sizeof between).add(distance, sizeof distance);
    digest.add(result.data(), result.size() * sizeof(float));
  }
  PoseMatrix mean;
  ASSERT_EQ(DAX3D_POSE_Mean_f64(poses.data(), weights.data(), 40, mean.data()), DAX_STS_OK);
  digest.add(mean.data(), sizeof mean);
  ASSERT_EQ(DAX3D_POSE_MeanRobust_f64(poses.data(), weights.data(), 40, mean.data()), DAX_STS_OK);
  digest.add(mean.data(), sizeof mean);
  EXPECT_EQ(digest.value(), 0x5E3E1FA361A327C9u);
}

}  // namespace
}  // namespace dax::test
