#include "prmt/lie.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Matrix = std::vector<double>;

Matrix product(const Matrix& a, const Matrix& b) {
  const size_t n = a.size() == 9 ? 3 : 4;
  Matrix ab(n * n);
  for (size_t i = 0; i < n; ++i) {
    for (size_t j = 0; j < n; ++j) {
      for (size_t k = 0; k < n; ++k) ab[i * n + j] += a[i * n + k] * b[k * n + j];
    }
  }
  return ab;
}

// The matrix exponential by its power series, after halving and before squaring.
Matrix series(const double* twist) {
  const double* const w = twist + 3;
  const Matrix generator = {0, -w[2], w[1], twist[0], w[2], 0, -w[0], twist[1], -w[1], w[0], 0, twist[2], 0, 0, 0, 0};
  Matrix power = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, sum = power;
  for (int k = 1; k < 25; ++k) {
    power = product(power, generator);
    for (double& value : power) value /= 64.0 * k;
    for (size_t i = 0; i < 16; ++i) sum[i] += power[i];
  }
  for (int k = 0; k < 6; ++k) sum = product(sum, sum);
  return sum;
}

std::vector<std::vector<double>> twists() {
  std::vector<std::vector<double>> all;
  Random random(3);
  for (const double angle : {0.0, 1e-200, 1e-9, 1e-4, 0.1, 0.49, 0.51, 1.0, 1.9, 2.1, 3.0, 3.14159, std::numbers::pi}) {
    for (int axis = 0; axis < 8; ++axis) {
      double v[6], length = 0;
      for (double& value : v) value = axis < 3 ? 0 : random.below(201) - 100;
      if (axis < 3) v[3 + axis] = 1, v[axis] = 2;
      for (int i = 3; i < 6; ++i) length += v[i] * v[i];
      for (int i = 3; i < 6; ++i) v[i] *= angle / std::sqrt(length);
      all.emplace_back(v, v + 6);
    }
  }
  return all;
}

double largest(const std::vector<double>& a, const std::vector<double>& b) {
  double max = 0;
  for (size_t i = 0; i < a.size(); ++i) max = std::max(max, std::fabs(a[i] - b[i]));
  return max;
}

TEST(Lie, ExponentialsAgainstTheirSeries) {
  for (const auto& twist : twists()) {
    Matrix motion(16), rotation(9);
    ASSERT_EQ(PRMT_SE3_Exp_f64(twist.data(), motion.data()), 0);
    ASSERT_EQ(PRMT_SO3_Exp_f64(twist.data() + 3, rotation.data()), 0);
    const Matrix expected = series(twist.data());
    EXPECT_LT(largest(motion, expected), 3e-12);  // the series' own rounding
    for (size_t i = 0; i < 9; ++i) EXPECT_EQ(rotation[i], motion[i / 3 * 4 + i % 3]);
    // Orthogonal to rounding.
    Matrix turned(9);
    ASSERT_EQ(PRMT_SO3_Inverse_f64(rotation.data(), turned.data()), 0);
    EXPECT_LT(largest(product(rotation, turned), {1, 0, 0, 0, 1, 0, 0, 0, 1}), 2e-15);
  }
}

TEST(Lie, LogarithmsUndoExponentials) {
  for (const auto& twist : twists()) {
    double motion[16], back[6], w[3], rotation[9];
    PRMT_SE3_Exp_f64(twist.data(), motion);
    ASSERT_EQ(PRMT_SE3_Log_f64(motion, back), 0);
    PRMT_SO3_Exp_f64(twist.data() + 3, rotation);
    ASSERT_EQ(PRMT_SO3_Log_f64(rotation, w), 0);
    // Half a turn may come back the other way round.
    const bool flipped = w[0] * twist[3] + w[1] * twist[4] + w[2] * twist[5] < 0;
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR(w[i], (flipped ? -1 : 1) * twist[static_cast<size_t>(3 + i)], 3e-15);
      EXPECT_TRUE(flipped || std::fabs(back[i] - twist[static_cast<size_t>(i)]) < 1e-12);
      EXPECT_EQ(back[3 + i], w[i]);
    }
  }
}

TEST(Lie, GroupsAndUpdates) {
  const auto all = twists();
  for (size_t k = 0; k + 1 < all.size(); ++k) {
    Matrix a(16), b(16), ab(16), inverse(16);
    PRMT_SE3_Exp_f64(all[k].data(), a.data());
    PRMT_SE3_Exp_f64(all[k + 1].data(), b.data());
    ASSERT_EQ(PRMT_SE3_Compose_f64(a.data(), b.data(), ab.data()), 0);
    EXPECT_LT(largest(ab, product(a, b)), 1e-13);
    ASSERT_EQ(PRMT_SE3_Inverse_f64(a.data(), inverse.data()), 0);
    EXPECT_LT(largest(product(a, inverse), {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}), 2e-13);
    std::vector<double> moved = all[k], again(16);
    ASSERT_EQ(PRMT_SE3_Update_f64(moved.data(), all[k + 1].data()), 0);
    PRMT_SE3_Exp_f64(moved.data(), again.data());
    EXPECT_LT(largest(again, ab), 1e-11);
    ASSERT_EQ(PRMT_SE3_Compose_f64(a.data(), b.data(), a.data()), 0);  // in place
    EXPECT_EQ(a, ab);
  }
}

// The square of the angle is 0 in double precision, not so the angle, nor half of w x v.
TEST(Lie, AnglesWhoseSquareVanishes) {
  const double twist[6] = {1e200, 0, 0, 0, 0, 1e-200};
  double motion[16], rotation[9], back[6];
  PRMT_SE3_Exp_f64(twist, motion);
  PRMT_SO3_Exp_f64(twist + 3, rotation);
  EXPECT_EQ(Matrix(motion, motion + 16), (Matrix{1, -1e-200, 0, 1e200, 1e-200, 1, 0, 0.5, 0, 0, 1, 0, 0, 0, 0, 1}));
  EXPECT_EQ(Matrix(rotation, rotation + 9), (Matrix{1, -1e-200, 0, 1e-200, 1, 0, 0, 0, 1}));
  PRMT_SE3_Log_f64(motion, back);
  EXPECT_EQ(Matrix(back, back + 6), Matrix(twist, twist + 6));
}

// Log(Exp(w) Exp(d)) = w + J d + O(d^2).
TEST(Lie, JacobianOfTheLogarithm) {
  for (const auto& twist : twists()) {
    const double* const w = twist.data() + 3;
    if (std::hypot(w[0], w[1], w[2]) > 3.1) continue;
    double jacobian[9];
    ASSERT_EQ(PRMT_SO3_LogJacobian_f64(w, jacobian), 0);
    for (int j = 0; j < 3; ++j) {
      double ahead[3] = {w[0], w[1], w[2]}, behind[3] = {w[0], w[1], w[2]}, step[3] = {};
      step[j] = 1e-6;
      PRMT_SO3_Update_f64(ahead, step);
      step[j] = -1e-6;
      PRMT_SO3_Update_f64(behind, step);
      for (int i = 0; i < 3; ++i) EXPECT_NEAR((ahead[i] - behind[i]) / 2e-6, jacobian[3 * i + j], 1e-7);
    }
  }
}

}  // namespace
}  // namespace dax::test
