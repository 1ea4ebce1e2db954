// Moments against their definitions, and what they do not change with.
#include "daxi/moments.h"

#include <gtest/gtest.h>

#include <cmath>

#include "daxi/point.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

DaxStatus momentsOf(const TestImage<uint8_t>& image, DaxiMoments* m) {
  return DAXI_Moments_8u_C1R(image.data(), image.step(), image.size(), m);
}
DaxStatus momentsOf(const TestImage<uint16_t>& image, DaxiMoments* m) {
  return DAXI_Moments_16u_C1R(image.data(), image.step(), image.size(), m);
}
DaxStatus momentsOf(const TestImage<float>& image, DaxiMoments* m) {
  return DAXI_Moments_32f_C1R(image.data(), image.step(), image.size(), m);
}

template <class T>
class Moments : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(Moments, PixelTypes);

template <class T>
long double momentOf(const TestImage<T>& image, int p, int q, long double x0 = 0, long double y0 = 0) {
  long double sum = 0;
  for (int32_t y = 0; y < image.size().height; ++y) {
    for (int32_t x = 0; x < image.size().width; ++x) sum += std::pow(x - x0, p) * std::pow(y - y0, q) * image.at(x, y);
  }
  return sum;
}

void expectNear(double value, long double expected, long double scale) {
  EXPECT_LE(std::fabs(value - static_cast<double>(expected)), 1e-12 * static_cast<double>(scale));
}

TYPED_TEST(Moments, AreTheSumsThatDefineThem) {
  for (const DaxiSize size : {DaxiSize{1, 1}, {1, 9}, {37, 21}, {2100, 3}}) {
    TestImage<TypeParam> image(size, 3);
    Random random(3);
    image.fill([&](int32_t, int32_t) { return 1 + random.below(200); });
    DaxiMoments m;
    ASSERT_EQ(momentsOf(image, &m), DAX_STS_OK);
    const double raw[] = {m.m00, m.m10, m.m01, m.m20, m.m11, m.m02, m.m30, m.m21, m.m12, m.m03};
    const double central[] = {m.mu20, m.mu11, m.mu02, m.mu30, m.mu21, m.mu12, m.mu03};
    const int orders[][2] = {{0, 0}, {1, 0}, {0, 1}, {2, 0}, {1, 1}, {0, 2}, {3, 0}, {2, 1}, {1, 2}, {0, 3}};
    const auto mass = momentOf(image, 0, 0), x = momentOf(image, 1, 0) / mass, y = momentOf(image, 0, 1) / mass;
    for (int i = 0; i < 10; ++i) {
      const auto [p, q] = orders[i];
      const auto expected = momentOf(image, p, q);
      expectNear(raw[i], expected, expected);
      const long double scale =
          mass * std::pow(static_cast<long double>(size.width), p) * std::pow(static_cast<long double>(size.height), q);
      if (i >= 3) expectNear(central[i - 3], momentOf(image, p, q, x, y), scale);
    }
    EXPECT_DOUBLE_EQ(m.x, static_cast<double>(x));
    EXPECT_DOUBLE_EQ(m.y, static_cast<double>(y));
    EXPECT_DOUBLE_EQ(m.nu11, m.mu11 / (m.m00 * m.m00));
    EXPECT_DOUBLE_EQ(m.nu03, m.mu03 / std::pow(m.m00, 2.5));
  }
}

// Sums of sums of the brightest pixels: m30 of a row is a square, (n (n - 1) / 2)^2 times the brightness.
TYPED_TEST(Moments, OfTheBrightestRows) {
  const double white = std::is_same_v<TypeParam, uint8_t> ? 255 : 65535;
  for (const int32_t width : {527, 2047, 2048, 2079, 4103}) {
    TestImage<TypeParam> image({width, 1});
    image.fill([&](int32_t, int32_t) { return static_cast<TypeParam>(white); });
    DaxiMoments m;
    ASSERT_EQ(momentsOf(image, &m), DAX_STS_OK);
    const double n = width, first = n * (n - 1) / 2;
    EXPECT_EQ(m.m00, n * white);
    EXPECT_EQ(m.m10, first * white);
    EXPECT_DOUBLE_EQ(m.m20, first * (2 * n - 1) / 3 * white);
    EXPECT_DOUBLE_EQ(m.m30, first * first * white);
  }
}

// A lopsided blob anywhere in a large image has the same central moments to the last bit; so far from the corner, differences
// of raw moments in double would have lost them.
TEST(Moments, ShiftsChangeNoBitOfIntegers) {
  DaxiMoments first = {};
  for (const DaxiPoint32s at : {DaxiPoint32s{0, 0}, {1, 2}, {1000, 333}, {4000, 700}}) {
    TestImage<uint16_t> image({4100, 800});
    image.fill([&](int32_t x, int32_t y) {
      const int32_t u = x - at.x, v = y - at.y;
      return u >= 0 && v >= 0 && u < 90 && v < 90 ? 100 + u * u / 9 + v * (u % 5) : 0;
    });
    DaxiMoments m;
    ASSERT_EQ(momentsOf(image, &m), DAX_STS_OK);
    if (at.x == 0) first = m;
    EXPECT_EQ(std::memcmp(&m.mu20, &first.mu20, 7 * sizeof(double)), 0) << at.x;
    EXPECT_EQ(std::memcmp(m.hu, first.hu, sizeof m.hu), 0) << at.x;
    EXPECT_NEAR(m.x - at.x, first.x, 1e-9);
  }
}

// Turned by a quarter, all invariants stay; mirrored, the last changes its sign.
TYPED_TEST(Moments, HuInvariants) {
  TestImage<TypeParam> image({40, 40}), turned({40, 40}), mirrored({40, 40});
  image.fill([](int32_t x, int32_t y) { return x + 2 * y < 60 && x * y > 40 ? 10 + x * 3 : 0; });
  turned.fill([&](int32_t x, int32_t y) { return image.at(y, 39 - x); });
  mirrored.fill([&](int32_t x, int32_t y) { return image.at(39 - x, y); });
  DaxiMoments m[3];
  ASSERT_EQ(momentsOf(image, &m[0]), DAX_STS_OK);
  ASSERT_EQ(momentsOf(turned, &m[1]), DAX_STS_OK);
  ASSERT_EQ(momentsOf(mirrored, &m[2]), DAX_STS_OK);
  for (int i = 0; i < 7; ++i) {
    EXPECT_NE(m[0].hu[i], 0);
    EXPECT_NEAR(m[1].hu[i] / m[0].hu[i], 1, 1e-9) << i;
    EXPECT_NEAR(m[2].hu[i] / m[0].hu[i], i == 6 ? -1 : 1, 1e-9) << i;
  }
}

TEST(Moments, WithoutMass) {
  TestImage<uint8_t> dark({30, 2});
  dark.fill([](int32_t, int32_t) { return 0; });
  DaxiMoments m = {};
  EXPECT_EQ(momentsOf(dark, &m), DAX_STS_DEGENERATE);
  TestImage<float> image({30, 2});
  for (const float value : {-1.0f, NAN, INFINITY}) {
    image.fill([&](int32_t x, int32_t) { return x == 20 ? value : 0; });
    EXPECT_EQ(momentsOf(image, &m), DAX_STS_DEGENERATE);
  }
  EXPECT_EQ(m.m00, 0);
}

}  // namespace
}  // namespace dax::test
