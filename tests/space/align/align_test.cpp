#include "dax3d/align.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/space/space_scene.h"

namespace dax::test {
namespace {

struct Pairs {
  std::vector<double> from, to;
  int32_t count() const { return static_cast<int32_t>(from.size() / 3); }
};

// n points, in a plane where `isFlat`, and what a similarity makes of them.
Pairs pairs(int32_t n, const PoseMatrix& pose, double scale, double offset, double noise, bool isFlat = false) {
  Random random(17);
  Pairs made;
  for (int32_t i = 0; i < n; ++i) {
    Real3 p = anyVector(random);
    if (isFlat) p[2] = 0;
    const Real3 away = anyVector(random);
    const Real3 scaled{scale * (p[0] + offset), scale * (p[1] - offset), scale * p[2]};
    const Real3 q = moved(pose, scaled);
    append(made.from, {p[0] + offset, p[1] - offset, p[2]});
    append(made.to, {q[0] + noise * away[0], q[1] + noise * away[1], q[2] + noise * away[2]});
  }
  return made;
}

double energyOf(const Pairs& set, const PoseMatrix& pose, double scale, const std::vector<double>& weights = {}) {
  double sum = 0;
  for (size_t i = 0; i < set.from.size() / 3; ++i) {
    const double* const p = &set.from[3 * i];
    const Real3 q = moved(pose, {scale * p[0], scale * p[1], scale * p[2]});
    const Real3 away = q - Real3{set.to[3 * i], set.to[3 * i + 1], set.to[3 * i + 2]};
    sum += (weights.empty() ? 1 : weights[i]) * inner(away, away);
  }
  return sum;
}

PoseMatrix poseOf(const Dax3dAlignment& found) {
  PoseMatrix pose;
  std::copy_n(found.pose, 16, pose.begin());
  return pose;
}

// Few points, some blocks, a rest; in a plane; far from the origin.
TEST(Align, FindsWhatMovedThePoints) {
  Random random(1);
  for (const int32_t n : {3, 4, 7, 1024, 1025, 5000}) {
    for (const bool isFlat : {false, true}) {
      for (const double offset : {0.0, 1e6}) {
        const PoseMatrix truth = anyPose(random);
        Dax3dAlignment rigid, similar;
        const Pairs same = pairs(n, truth, 1, offset, 0, isFlat), larger = pairs(n, truth, 2.5, offset, 0, isFlat);
        ASSERT_EQ(DAX3D_ALIGN_Rigid_f64(same.from.data(), same.to.data(), nullptr, n, &rigid), DAX_STS_OK);
        ASSERT_EQ(DAX3D_ALIGN_Similarity_f64(larger.from.data(), larger.to.data(), nullptr, n, &similar), DAX_STS_OK);
        const double tolerance = 1e-13 + 3e-16 * offset * offset * 1e-5;
        for (const Dax3dAlignment* const found : {&rigid, &similar}) {
          for (const size_t i : {0, 1, 2, 4, 5, 6, 8, 9, 10}) {
            ASSERT_NEAR(found->pose[i], truth[i], 1e-14 + offset * 1e-15) << n << " " << offset;
          }
          EXPECT_EQ(found->isMirrored, 0);
          EXPECT_LT(found->rms, 2e-7 + offset * 1e-14);
        }
        EXPECT_NEAR(similar.scale, 2.5, tolerance + offset * 1e-15);
        EXPECT_EQ(rigid.scale, 1);
        EXPECT_LT(std::sqrt(energyOf(same, poseOf(rigid), 1) / n), 1e-14 + offset * 3e-15);
      }
    }
  }
}

// Of noisy points no small change of the result is better, weights or not, and rms is what is left.
TEST(Align, NothingNearIsBetter) {
  Random random(2);
  const PoseMatrix truth = anyPose(random);
  const Pairs set = pairs(3000, truth, 1.3, 0, 0.3);
  std::vector<double> weights, none;
  for (int i = 0; i < 3000; ++i) weights.push_back(i < 1500 ? 0 : uniform(random, 0, 2));
  for (const std::vector<double>& each : {none, weights}) {
    for (const bool hasScale : {false, true}) {
      Dax3dAlignment found;
      const auto align = hasScale ? DAX3D_ALIGN_Similarity_f64 : DAX3D_ALIGN_Rigid_f64;
      ASSERT_EQ(align(set.from.data(), set.to.data(), each.empty() ? nullptr : each.data(), 3000, &found), DAX_STS_OK);
      const double least = energyOf(set, poseOf(found), found.scale, each);
      double total = each.empty() ? 3000 : 0;
      for (const double weight : each) total += weight;
      EXPECT_NEAR(found.rms, std::sqrt(least / total), 1e-12);
      for (int k = 0; k < 7; ++k) {
        for (const double step : {-1e-4, 1e-4}) {
          if (k == 6 && !hasScale) continue;
          PoseMatrix pose = poseOf(found);
          if (k < 3) pose[static_cast<size_t>(4 * k + 3)] += step;
          if (k >= 3 && k < 6) {
            const Turn turn = turnOf({k == 3 ? 1.0 : 0, k == 4 ? 1.0 : 0, k == 5 ? 1.0 : 0}, step);
            const Turn r =
                turn * Turn{pose[0], pose[1], pose[2], pose[4], pose[5], pose[6], pose[8], pose[9], pose[10]};
            pose = test::poseOf(r, {pose[3], pose[7], pose[11]});
          }
          EXPECT_GT(energyOf(set, pose, found.scale * (k == 6 ? 1 + step : 1), each), least) << k;
        }
      }
    }
  }
}

// A far point that comes first in its block, with a weight of 0, spoils nothing; one that has a weight is a point.
TEST(Align, FarFirstPoints) {
  Random random(3);
  const PoseMatrix truth = anyPose(random);
  Pairs set = pairs(2000, truth, 1, 0, 0);
  std::vector<double> weights(2000, 1.0);
  for (const size_t i : {0, 1024}) {
    set.from[3 * i] = 1e12, set.to[3 * i] = -1e12;
    weights[i] = 0;
  }
  Dax3dAlignment found;
  ASSERT_EQ(DAX3D_ALIGN_Rigid_f64(set.from.data(), set.to.data(), weights.data(), 2000, &found), DAX_STS_OK);
  EXPECT_LT(difference(found.pose, truth.data(), 12), 1e-14);
}

TEST(Align, MirroredSetsAndSetsWithoutAnAnswer) {
  const PoseMatrix eye = test::poseOf({1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 0, 0});
  Pairs set = pairs(50, eye, 1, 0, 0);
  for (size_t i = 0; i < 50; ++i) set.to[3 * i] *= -1, set.from[3 * i + 1] *= 2, set.to[3 * i + 1] *= 2;
  for (size_t i = 0; i < 50; ++i) set.from[3 * i + 2] *= 0.5, set.to[3 * i + 2] *= 0.5;
  Dax3dAlignment found;
  ASSERT_EQ(DAX3D_ALIGN_Rigid_f64(set.from.data(), set.to.data(), nullptr, 50, &found), DAX_STS_OK);
  EXPECT_EQ(found.isMirrored, 1);
  const double* const r = found.pose;
  EXPECT_NEAR(
      r[0] * (r[5] * r[10] - r[6] * r[9]) - r[1] * (r[4] * r[10] - r[6] * r[8]) + r[2] * (r[4] * r[9] - r[5] * r[8]), 1,
      1e-14);
  // On a line; at a place; a cross of three equal arms, mirrored: several turns are as good.
  const std::vector<double> line = {0, 0, 0, 1, 2, 3, 2, 4, 6, 3, 6, 9}, place(12, 7.5);
  const std::vector<double> arms = {1, 0, 0, -1, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 1, 0, 0, -1};
  std::vector<double> mirrored = arms;
  for (double& value : mirrored) value = -value;
  EXPECT_EQ(DAX3D_ALIGN_Rigid_f64(line.data(), line.data(), nullptr, 4, &found), DAX_STS_DEGENERATE);
  EXPECT_EQ(DAX3D_ALIGN_Rigid_f64(place.data(), line.data(), nullptr, 4, &found), DAX_STS_DEGENERATE);
  EXPECT_EQ(DAX3D_ALIGN_Rigid_f64(arms.data(), mirrored.data(), nullptr, 6, &found), DAX_STS_DEGENERATE);
  EXPECT_EQ(DAX3D_ALIGN_Rigid_f64(arms.data(), arms.data(), nullptr, 6, &found), DAX_STS_OK);
}

// By powers of two, into numbers whose squares overflow or vanish: the same rotation to the bit.
TEST(Align, AnyUnit) {
  Random random(4);
  const PoseMatrix truth = anyPose(random);
  const Pairs set = pairs(40, truth, 2, 0, 0.1);
  std::vector<double> weights(40, 3.0);
  Dax3dAlignment plain, scaled;
  ASSERT_EQ(DAX3D_ALIGN_Similarity_f64(set.from.data(), set.to.data(), weights.data(), 40, &plain), DAX_STS_OK);
  for (const int exponent : {-960, -40, 40, 1000}) {
    Pairs other = set;
    std::vector<double> heavy = weights;
    for (double& value : other.from) value = std::ldexp(value, exponent);
    for (double& value : other.to) value = std::ldexp(value, exponent + 3);
    for (double& weight : heavy) weight = std::ldexp(weight, exponent);
    ASSERT_EQ(DAX3D_ALIGN_Similarity_f64(other.from.data(), other.to.data(), heavy.data(), 40, &scaled), DAX_STS_OK);
    for (int i = 0; i < 12; ++i) {
      EXPECT_EQ(scaled.pose[i], i % 4 == 3 ? std::ldexp(plain.pose[i], exponent + 3) : plain.pose[i]) << exponent;
    }
    EXPECT_EQ(scaled.scale, 8 * plain.scale);
    EXPECT_EQ(scaled.rms, std::ldexp(plain.rms, exponent + 3));
  }
}

TEST(Align, RefusesWhatIsNoNumber) {
  Random random(6);
  const PoseMatrix truth = anyPose(random);
  const Pairs set = pairs(2500, truth, 1, 0, 0);
  std::vector<double> weights(2500, 1.0);
  std::fill_n(weights.begin() + 1024, 1024, 0.0);  // a block without weight
  Dax3dAlignment found;
  for (const double bad : {double{NAN}, double{INFINITY}}) {
    for (const size_t at : {size_t{0}, size_t{4000}, set.from.size() - 1}) {
      Pairs other = set;
      other.from[at] = bad;
      EXPECT_EQ(DAX3D_ALIGN_Rigid_f64(other.from.data(), set.to.data(), nullptr, 2500, &found), DAX_STS_DATA_RANGE);
      EXPECT_EQ(DAX3D_ALIGN_Rigid_f64(set.from.data(), other.from.data(), weights.data(), 2500, &found),
                DAX_STS_DATA_RANGE);
    }
    std::vector<double> heavy = weights;
    heavy[7] = bad;
    EXPECT_EQ(DAX3D_ALIGN_Rigid_f64(set.from.data(), set.to.data(), heavy.data(), 2500, &found), DAX_STS_DATA_RANGE);
  }
  weights[9] = -1e-9;
  EXPECT_EQ(DAX3D_ALIGN_Rigid_f64(set.from.data(), set.to.data(), weights.data(), 2500, &found), DAX_STS_BAD_PARAM);
  std::fill(weights.begin(), weights.end(), 0.0);
  EXPECT_EQ(DAX3D_ALIGN_Rigid_f64(set.from.data(), set.to.data(), weights.data(), 2500, &found), DAX_STS_BAD_PARAM);
}

// Floats are summed as doubles.
TEST(Align, FloatsAsTheirDoubles) {
  Random random(5);
  const PoseMatrix truth = anyPose(random);
  const Pairs set = pairs(1500, truth, 1, 10, 0.1);
  const std::vector<float> from(set.from.begin(), set.from.end()), to(set.to.begin(), set.to.end());
  const std::vector<double> wideFrom(from.begin(), from.end()), wideTo(to.begin(), to.end());
  Dax3dAlignment narrow, wide;
  for (const bool hasScale : {false, true}) {
    const auto one = hasScale ? DAX3D_ALIGN_Similarity_f32 : DAX3D_ALIGN_Rigid_f32;
    const auto other = hasScale ? DAX3D_ALIGN_Similarity_f64 : DAX3D_ALIGN_Rigid_f64;
    ASSERT_EQ(one(from.data(), to.data(), nullptr, 1500, &narrow), DAX_STS_OK);
    ASSERT_EQ(other(wideFrom.data(), wideTo.data(), nullptr, 1500, &wide), DAX_STS_OK);
    EXPECT_EQ(std::memcmp(&narrow, &wide, sizeof narrow), 0);
  }
}

}  // namespace
}  // namespace dax::test
