#include "dax3d/pose.h"

#include <gtest/gtest.h>

#include "dax3d/rotation.h"
#include "tests/space/space_scene.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

TEST(Pose, ComposesAndInverts) {
  Random random(3);
  for (int round = 0; round < 20; ++round) {
    const PoseMatrix a = anyPose(random), b = anyPose(random);
    PoseMatrix ab = b, back;
    Real3 p = anyVector(random), q;
    ASSERT_EQ(DAX3D_POSE_Compose_f64(a.data(), ab.data(), ab.data()), DAX_STS_OK);
    const Real3 expected = moved(a, moved(b, p));
    ASSERT_EQ(DAX3D_POSE_Apply_f64(ab.data(), p.data(), q.data()), DAX_STS_OK);
    EXPECT_LT(difference(q.data(), expected.data(), 3), 2e-15);
    ASSERT_EQ(DAX3D_POSE_Inverse_f64(ab.data(), back.data()), DAX_STS_OK);
    ASSERT_EQ(DAX3D_POSE_Apply_f64(back.data(), q.data(), q.data()), DAX_STS_OK);
    EXPECT_LT(difference(q.data(), p.data(), 3), 2e-15);
  }
}

// Each coordinate as ((r0 x + r1 y) + r2 z) + t, in the precision of the points; also in place and in bands.
template <class T, class Call, class Pooled>
void checkClouds(const Call& call, const Pooled& pooled, bool isCloud) {
  Random random(11);
  const PoseMatrix pose = anyPose(random);
  for (int32_t n = 1; n < 20; ++n) {
    GuardedBuffer<T> points(static_cast<size_t>(3 * n)), result(points.size());
    std::vector<T> expected;
    for (T& value : points) value = static_cast<T>(uniform(random, -10, 10));
    for (size_t i = 0; i < points.size(); ++i) {
      const T* const p = points.data() + i / 3 * 3;
      const double* const row = pose.data() + i % 3 * 4;
      const T turned = T(T(T(row[0]) * p[0]) + T(T(row[1]) * p[1])) + T(T(row[2]) * p[2]);
      expected.push_back(isCloud ? turned + T(row[3]) : turned);
    }
    ASSERT_EQ(call(pose.data(), points.data(), n, result.data()), DAX_STS_OK);
    EXPECT_EQ(std::vector<T>(result.begin(), result.end()), expected) << n;
    MockPool pool;
    ASSERT_EQ(pooled(&pool, 3, pose.data(), points.data(), n, points.data()), DAX_STS_OK);
    EXPECT_EQ(std::vector<T>(points.begin(), points.end()), expected) << n;
  }
}

TEST(Pose, MovesCloudsAndNormals) {
  checkClouds<float>(DAX3D_POSE_ApplyCloud_f32, DAX3D_POSE_ApplyCloud_f32_MT, true);
  checkClouds<double>(DAX3D_POSE_ApplyCloud_f64, DAX3D_POSE_ApplyCloud_f64_MT, true);
  checkClouds<float>(
      DAX3D_POSE_ApplyNormals_f32, [](void*, uint32_t, auto... rest) { return DAX3D_POSE_ApplyNormals_f32(rest...); },
      false);
  checkClouds<double>(
      DAX3D_POSE_ApplyNormals_f64, [](void*, uint32_t, auto... rest) { return DAX3D_POSE_ApplyNormals_f64(rest...); },
      false);
}

Turn turnIn(const PoseMatrix& p) {
  return {p[0], p[1], p[2], p[4], p[5], p[6], p[8], p[9], p[10]};
}

TEST(Pose, InterpolatesAtConstantSpeed) {
  Random random(4);
  for (const double angle : {0.0, 1e-12, 1e-4, 1.0, 3.0, 3.141592}) {
    const Real3 axis = anyVector(random), start = anyVector(random), end = anyVector(random);
    const Turn first = anyTurn(random);
    const PoseMatrix a = poseOf(first, start), b = poseOf(first * turnOf(axis, angle), end);
    for (const double t : {0.0, 0.25, 0.5, 1.0}) {
      PoseMatrix between;
      double travelled, turned;
      ASSERT_EQ(DAX3D_POSE_Interpolate_f64(a.data(), b.data(), t, between.data()), DAX_STS_OK);
      const PoseMatrix expected = poseOf(
          first * turnOf(axis, t * angle),
          {start[0] + t * (end[0] - start[0]), start[1] + t * (end[1] - start[1]), start[2] + t * (end[2] - start[2])});
      EXPECT_LT(difference(between.data(), expected.data(), 16), 2e-15) << angle << " " << t;
      ASSERT_EQ(DAX3D_POSE_Distance_f64(a.data(), between.data(), &travelled, &turned), DAX_STS_OK);
      EXPECT_NEAR(turned, t * angle, 2e-15);
      EXPECT_NEAR(travelled, t * norm(end - start), 1e-15);
    }
  }
  PoseMatrix a = anyPose(random), b = a;
  EXPECT_EQ(DAX3D_POSE_Interpolate_f64(a.data(), b.data(), 1.5, b.data()), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAX3D_POSE_Interpolate_f64(a.data(), b.data(), NAN, b.data()), DAX_STS_BAD_PARAM);
  a[3] = NAN;
  EXPECT_EQ(DAX3D_POSE_Interpolate_f64(a.data(), b.data(), 0.5, b.data()), DAX_STS_DATA_RANGE);
}

// At the mean the weighted rotation vectors to all poses add up to nothing.
TEST(Pose, MeanIsWhereVectorsBalance) {
  Random random(8);
  const Turn centre = anyTurn(random);
  std::vector<double> poses, weights;
  Real3 sum{};
  double total = 0;
  for (int i = 0; i < 30; ++i) {
    const Real3 axis = anyVector(random), t = anyVector(random);
    const PoseMatrix pose = poseOf(centre * turnOf(axis, uniform(random, -1, 1)), t);
    poses.insert(poses.end(), pose.begin(), pose.end());
    weights.push_back(uniform(random, 0, 2));
    total += weights.back();
    for (size_t k = 0; k < 3; ++k) sum[k] += weights.back() * t[k];
  }
  PoseMatrix mean, inverse, away;
  ASSERT_EQ(DAX3D_POSE_Mean_f64(poses.data(), weights.data(), 30, mean.data()), DAX_STS_OK);
  ASSERT_EQ(DAX3D_POSE_Inverse_f64(mean.data(), inverse.data()), DAX_STS_OK);
  Real3 balance{};
  for (size_t i = 0; i < 30; ++i) {
    Real3 vector;
    ASSERT_EQ(DAX3D_POSE_Compose_f64(inverse.data(), &poses[16 * i], away.data()), DAX_STS_OK);
    ASSERT_EQ(DAX3D_ROT_ToRotVec_f64(turnIn(away).data(), vector.data()), DAX_STS_OK);
    for (size_t k = 0; k < 3; ++k) balance[k] += weights[i] * vector[k] / total;
  }
  EXPECT_LT(norm(balance), 1e-14);
  for (size_t k = 0; k < 3; ++k) EXPECT_NEAR(mean[4 * k + 3], sum[k] / total, 1e-15);
  // Weights are relative, and no weight is as good as no pose.
  PoseMatrix again;
  for (double& weight : weights) weight *= 0x1p1000;
  weights.push_back(0);
  const PoseMatrix other = anyPose(random);
  poses.insert(poses.end(), other.begin(), other.end());
  ASSERT_EQ(DAX3D_POSE_Mean_f64(poses.data(), weights.data(), 31, again.data()), DAX_STS_OK);
  EXPECT_EQ(again, mean);
}

// Nearly half of the poses lie elsewhere.
TEST(Pose, RobustMeanStaysWithTheMajority) {
  Random random(9);
  const PoseMatrix truth = anyPose(random);
  std::vector<double> poses;
  for (int i = 0; i < 101; ++i) {
    const Real3 axis = anyVector(random);
    const Turn small = turnOf(axis, uniform(random, -1e-3, 1e-3));
    const PoseMatrix pose = i % 5 < 2 ? poseOf(turnIn(truth) * turnOf({1, 2, 0}, 1.4), {50, 60, 70})
                                      : poseOf(turnIn(truth) * small, {truth[3] + 1e-3 * axis[0], truth[7], truth[11]});
    poses.insert(poses.end(), pose.begin(), pose.end());
  }
  PoseMatrix mean, robust;
  double far, near, farTurn, nearTurn;
  ASSERT_EQ(DAX3D_POSE_Mean_f64(poses.data(), nullptr, 101, mean.data()), DAX_STS_OK);
  ASSERT_EQ(DAX3D_POSE_MeanRobust_f64(poses.data(), nullptr, 101, robust.data()), DAX_STS_OK);
  DAX3D_POSE_Distance_f64(mean.data(), truth.data(), &far, &farTurn);
  DAX3D_POSE_Distance_f64(robust.data(), truth.data(), &near, &nearTurn);
  EXPECT_GT(far, 20);
  EXPECT_GT(farTurn, 0.4);
  EXPECT_LT(near, 2e-3);
  EXPECT_LT(nearTurn, 2e-3);
}

// The mean lies at one of the translations, where plain steps would stay.
TEST(Pose, MedianLeavesAPointAtTheMean) {
  std::vector<double> poses;
  for (const double x : {-3.0, 0.0, 1.0, 1.0, 1.0}) {
    const PoseMatrix pose = poseOf({1, 0, 0, 0, 1, 0, 0, 0, 1}, {x, 0, 0});
    poses.insert(poses.end(), pose.begin(), pose.end());
  }
  PoseMatrix robust;
  ASSERT_EQ(DAX3D_POSE_MeanRobust_f64(poses.data(), nullptr, 5, robust.data()), DAX_STS_OK);
  EXPECT_NEAR(robust[3], 1, 1e-8);
}

TEST(Pose, MeansThatAreNone) {
  const PoseMatrix eye = poseOf({1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 0, 0});
  const PoseMatrix half = poseOf({1, 0, 0, 0, -1, 0, 0, 0, -1}, {0, 0, 0});
  std::vector<double> poses(eye.begin(), eye.end());
  poses.insert(poses.end(), half.begin(), half.end());
  PoseMatrix mean;
  double weights[2] = {1, 1};
  EXPECT_EQ(DAX3D_POSE_Mean_f64(poses.data(), weights, 2, mean.data()), DAX_STS_DEGENERATE);
  EXPECT_EQ(DAX3D_POSE_MeanRobust_f64(poses.data(), weights, 2, mean.data()), DAX_STS_DEGENERATE);
  weights[1] = -1;
  EXPECT_EQ(DAX3D_POSE_Mean_f64(poses.data(), weights, 2, mean.data()), DAX_STS_BAD_PARAM);
  weights[0] = weights[1] = 0;
  EXPECT_EQ(DAX3D_POSE_Mean_f64(poses.data(), weights, 2, mean.data()), DAX_STS_BAD_PARAM);
  weights[0] = NAN;
  EXPECT_EQ(DAX3D_POSE_Mean_f64(poses.data(), weights, 2, mean.data()), DAX_STS_DATA_RANGE);
  poses[21] = 1;  // a mirror
  EXPECT_EQ(DAX3D_POSE_Mean_f64(poses.data(), nullptr, 2, mean.data()), DAX3D_STS_NO_ROTATION);
}

}  // namespace
}  // namespace dax::test
