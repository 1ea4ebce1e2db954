#include "dax3d/rotation.h"

#include <gtest/gtest.h>

#include <numbers>
#include <string>

#include "tests/space/space_scene.h"

namespace dax::test {
namespace {

constexpr double kPi = std::numbers::pi;

// At every distance from a half turn, from none and from a quarter.
TEST(Rotation, VectorsAndQuaternionsAtEveryAngle) {
  Random random(5);
  for (int k = 0; k <= 18; ++k) {
    for (const double angle : {kPi - std::pow(10.0, -k), std::pow(10.0, -8 * k), kPi / 2 - std::pow(10.0, -k), kPi}) {
      for (int round = 0; round < 6; ++round) {
        Real3 axis = anyVector(random);
        if (round < 3) axis = {round == 0 ? 1.0 : 0, round == 1 ? 1.0 : 0, round == 2 ? 1.0 : 0};
        const double size = norm(axis);
        const Real3 vector = {axis[0] / size * angle, axis[1] / size * angle, axis[2] / size * angle};
        Turn rotation, again;
        Real3 back;
        double q[4];
        ASSERT_EQ(DAX3D_ROT_FromRotVec_f64(vector.data(), rotation.data()), DAX_STS_OK);
        const Turn expected = turnOf(axis, angle);
        ASSERT_LT(difference(rotation.data(), expected.data(), 9), 1e-15);
        ASSERT_EQ(DAX3D_ROT_ToRotVec_f64(rotation.data(), back.data()), DAX_STS_OK);
        const double sign = kPi - angle < 1e-14 && inner(back, vector) < 0 ? -1 : 1;
        for (size_t i = 0; i < 3; ++i) ASSERT_NEAR(back[i], sign * vector[i], 1e-15 + 1e-15 * angle) << angle;
        ASSERT_EQ(DAX3D_ROT_ToQuat_f64(rotation.data(), q), DAX_STS_OK);
        EXPECT_NEAR(q[0], std::cos(angle / 2), 3e-16);
        ASSERT_EQ(DAX3D_ROT_FromQuat_f64(q, again.data()), DAX_STS_OK);
        ASSERT_LT(difference(rotation.data(), again.data(), 9), 2e-15);
      }
    }
  }
}

TEST(Rotation, SignsOfHalfTurnsAndScaledQuaternions) {
  double q[4], vector[3], scaled[9], plain[9];
  const double half[9] = {-1, 0, 0, 0, 1, 0, 0, 0, -1};
  ASSERT_EQ(DAX3D_ROT_ToQuat_f64(half, q), DAX_STS_OK);
  EXPECT_EQ(std::vector<double>(q, q + 4), (std::vector<double>{0, 0, 1, 0}));
  ASSERT_EQ(DAX3D_ROT_ToRotVec_f64(half, vector), DAX_STS_OK);
  EXPECT_EQ(std::vector<double>(vector, vector + 3), (std::vector<double>{0, kPi, 0}));
  const double one[4] = {-1, 2, 3, -4};
  ASSERT_EQ(DAX3D_ROT_FromQuat_f64(one, plain), DAX_STS_OK);
  for (const double scale : {-1.0, 0x1p1000, 0x1p-1060}) {
    const double given[4] = {-scale, 2 * scale, 3 * scale, -4 * scale};
    ASSERT_EQ(DAX3D_ROT_FromQuat_f64(given, scaled), DAX_STS_OK);
    EXPECT_LT(difference(scaled, plain, 9), 1e-15) << scale;
  }
}

const char* const kOrders[] = {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX", "XYX", "XZX", "YXY", "YZY", "ZXZ", "ZYZ"};

Turn productOf(const std::string& order, const Real3& angles) {
  const auto about = [&](size_t k) {
    const char axis = static_cast<char>(std::toupper(order[k]));
    return turnOf({axis == 'X' ? 1.0 : 0, axis == 'Y' ? 1.0 : 0, axis == 'Z' ? 1.0 : 0}, angles[k]);
  };
  return std::isupper(order[0]) ? about(0) * about(1) * about(2) : about(2) * about(1) * about(0);
}

// Middle angles at both ends, close to them, and between.
TEST(Rotation, AllEulerOrdersTellTheirAngles) {
  Random random(7);
  for (const bool isLower : {false, true}) {
    for (std::string order : kOrders) {
      const bool isProper = order[0] == order[2];
      if (isLower) std::transform(order.begin(), order.end(), order.begin(), [](int c) { return std::tolower(c); });
      const double low = isProper ? 0 : -kPi / 2, high = low + kPi;
      for (const double middle : {low, low + 1e-9, low + 1.1, low + kPi / 2, high - 1e-9, high}) {
        const bool isLocked = middle == low || middle == high;
        const Real3 angles{uniform(random, -3.1, 3.1), middle, isLocked ? 0 : uniform(random, -3.1, 3.1)};
        Turn rotation, again;
        Real3 found;
        int32_t locked = -1;
        ASSERT_EQ(DAX3D_ROT_FromEuler_f64(angles.data(), order.c_str(), rotation.data()), DAX_STS_OK);
        const Turn expected = productOf(order, angles);
        ASSERT_LT(difference(rotation.data(), expected.data(), 9), 2e-15) << order;
        ASSERT_EQ(DAX3D_ROT_ToEuler_f64(rotation.data(), order.c_str(), found.data(), &locked), DAX_STS_OK);
        EXPECT_EQ(locked, isLocked) << order << middle;
        // Near the lock the outer angles lose digits, but not together.
        const double tolerance = isLocked || std::fabs(middle - low - kPi / 2) < 1 ? 4e-15 : 1e-6;
        for (size_t k = 0; k < 3; ++k) EXPECT_NEAR(found[k], angles[k], k == 1 ? 2e-15 : tolerance) << order << middle;
        EXPECT_TRUE(!isLocked || found[2] == 0);
        DAX3D_ROT_FromEuler_f64(found.data(), order.c_str(), again.data());
        EXPECT_LT(difference(rotation.data(), again.data(), 9), 3e-15) << order << middle;
      }
    }
  }
}

TEST(Rotation, RefusesOrdersAndMatrices) {
  double angles[3] = {1, 2, 3}, rotation[9];
  int32_t locked;
  for (const char* const bad : {"", "X", "XY", "XXY", "XYY", "XyZ", "XYZX", "ABC", "wxy"}) {
    EXPECT_EQ(DAX3D_ROT_FromEuler_f64(angles, bad, rotation), DAX_STS_BAD_PARAM) << bad;
  }
  const double mirror[9] = {1, 0, 0, 0, 1, 0, 0, 0, -1}, skewed[9] = {1, 0.002, 0, 0, 1, 0, 0, 0, 1};
  const double nan[9] = {1, 0, 0, 0, 1, 0, 0, 0, NAN}, zero[4] = {};
  for (const double* const bad : {mirror, skewed, nan}) {
    EXPECT_EQ(DAX3D_ROT_ToQuat_f64(bad, rotation), DAX3D_STS_NO_ROTATION);
    EXPECT_EQ(DAX3D_ROT_ToRotVec_f64(bad, rotation), DAX3D_STS_NO_ROTATION);
    EXPECT_EQ(DAX3D_ROT_ToEuler_f64(bad, "XYZ", angles, &locked), DAX3D_STS_NO_ROTATION);
  }
  EXPECT_EQ(DAX3D_ROT_FromQuat_f64(zero, rotation), DAX_STS_BAD_PARAM);
  angles[1] = INFINITY;
  EXPECT_EQ(DAX3D_ROT_FromRotVec_f64(angles, rotation), DAX_STS_DATA_RANGE);
  EXPECT_EQ(DAX3D_ROT_FromEuler_f64(angles, "XYZ", rotation), DAX_STS_DATA_RANGE);
}

}  // namespace
}  // namespace dax::test
