#include "daxi/gradient.h"

#include <gtest/gtest.h>

#include <cmath>

#include "daxi/gradient_mag_dir.h"
#include "tests/image/gradient/gradient_oracle.h"
#include "tests/support/filter_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

template <class T>
struct Gradients;
#define DAX_GRADIENT_TYPE(SUFFIX, T, D, MAG_DIR)                                                          \
  template <>                                                                                             \
  struct Gradients<T> {                                                                                   \
    using Result = D;                                                                                     \
    static constexpr decltype(&DAXI_SobelX_##SUFFIX##_C1R) kFunctions[] = {                               \
        DAXI_SobelX_##SUFFIX##_C1R,   DAXI_SobelY_##SUFFIX##_C1R,  DAXI_PrewittX_##SUFFIX##_C1R,          \
        DAXI_PrewittY_##SUFFIX##_C1R, DAXI_ScharrX_##SUFFIX##_C1R, DAXI_ScharrY_##SUFFIX##_C1R,           \
        DAXI_Laplace_##SUFFIX##_C1R};                                                                     \
    static constexpr decltype(&DAXI_SobelX_##SUFFIX##_C1R_MT) kPooled[] = {                               \
        DAXI_SobelX_##SUFFIX##_C1R_MT,   DAXI_SobelY_##SUFFIX##_C1R_MT,  DAXI_PrewittX_##SUFFIX##_C1R_MT, \
        DAXI_PrewittY_##SUFFIX##_C1R_MT, DAXI_ScharrX_##SUFFIX##_C1R_MT, DAXI_ScharrY_##SUFFIX##_C1R_MT,  \
        DAXI_Laplace_##SUFFIX##_C1R_MT};                                                                  \
    static constexpr auto kMagDir = DAXI_GradientMagDir_##MAG_DIR##_C1R;                                  \
    static constexpr auto kMagDirPooled = DAXI_GradientMagDir_##MAG_DIR##_C1R_MT;                         \
  };
DAX_GRADIENT_TYPE(8u16s, uint8_t, int16_t, 8u32f)
DAX_GRADIENT_TYPE(16u32f, uint16_t, float, 16u32f)
DAX_GRADIENT_TYPE(32f, float, float, 32f)
#undef DAX_GRADIENT_TYPE

constexpr int kLaplace = 6;

// How far floats may be off: sums of 16-bit pixels by Scharr's large window exceed 24 bits; floats are eighths.
double tolerance(int function, int32_t window) {
  return function / 2 == 2 && window == 5 ? 0.01 : 0;
}

template <class T>
double expected(const FilterScene<T>& s, int function, int32_t window, int32_t border, double value, int32_t x,
                int32_t y) {
  const auto pixel = [&](int64_t u, int64_t v) { return s.pixel(u, v, border, value); };
  if (function < kLaplace) {
    return oracle::product(pixel, x, y, oracle::derivative(function / 2, function % 2 == 0, window)) *
           oracle::scaleOf(function / 2, window);
  }
  double sum = 0;
  for (int32_t k = 0; k < 9; ++k) {
    if (window == 4 && k % 2 == 0) continue;
    sum += static_cast<double>(pixel(x + k % 3 - 1, y + k / 3 - 1)) - static_cast<double>(pixel(x, y));
  }
  return sum;
}

template <class T>
void checkDerivative(const FilterScene<T>& s, int function, int32_t window, int32_t border, double value) {
  using G = Gradients<T>;
  TestImage<typename G::Result> dst(s.size, 2), tiled(s.size);
  dst.remember();
  const auto run = G::kFunctions[function];
  ASSERT_EQ(run(s.data(), s.image.step(), dst.data(), dst.step(), s.size, window, border, value), DAX_STS_OK);
  ASSERT_TRUE(dst.paddingUntouched());
  for (int32_t y = 0; y < s.size.height; ++y) {
    for (int32_t x = 0; x < s.size.width; ++x) {
      ASSERT_NEAR(dst.at(x, y), expected(s, function, window, border, value, x, y), tolerance(function, window))
          << x << ", " << y << " function " << function << " window " << window << " border " << border;
    }
  }
  MockPool pool;
  ASSERT_EQ(G::kPooled[function](&pool, 3, s.data(), s.image.step(), tiled.data(), tiled.step(), s.size, window, border,
                                 value),
            DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, tiled)) << "on a pool";
}

template <class>
class Derivatives : public testing::Test {};
using GradientPixels = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(Derivatives, GradientPixels);

TYPED_TEST(Derivatives, EqualTheProductOfTheirKernels) {
  Random random(5);
  for (int32_t round = 0; round < 84; ++round) {
    const int function = round % 7;
    const bool isWide = round / 7 % 2 != 0 && !(function / 2 == 2 && std::is_same_v<TypeParam, uint8_t>);
    const int32_t window = function == kLaplace ? (isWide ? 8 : 4) : isWide ? 5 : 3;
    const int32_t border = round / 14;
    const DaxiSize size = {1 + random.below(round % 4 == 0 ? 5 : 40), 1 + random.below(12)};
    const FilterScene<TypeParam> scene(size, border == DAXI_BORDER_IN_MEMORY ? 2 : 0, static_cast<uint64_t>(round));
    checkDerivative(scene, function, window, border, random.below(200));
  }
}

// Rows of several strips, at whose joints the border is not to be seen.
TYPED_TEST(Derivatives, OfWideRows) {
  for (const int32_t width : {512, 513, 1030}) {
    const FilterScene<TypeParam> scene({width, 3}, 0, 9);
    checkDerivative(scene, 0, 5, DAXI_BORDER_CIRCULAR, 0);
    checkDerivative(scene, 3, 3, DAXI_BORDER_CONSTANT, 50);
  }
}

TYPED_TEST(Derivatives, MagnitudeAndDirection) {
  using G = Gradients<TypeParam>;
  for (int32_t round = 0; round < 12; ++round) {
    const int kernel = round % 3;
    const int32_t window = round % 2 == 0 ? 3 : 5, border = round % 5;
    FilterScene<TypeParam> s({37, 11}, 0, round + 1u);
    for (int32_t x = 0; x < 12; ++x) std::fill_n(s.image.row(x % 6) + x, 3, TypeParam(7));  // zero gradients, too
    TestImage<float> mag(s.size, 1), dir(s.size, 2), mag2(s.size, 1), dir2(s.size, 2);
    ASSERT_EQ(G::kMagDir(s.data(), s.image.step(), mag.data(), mag.step(), dir.data(), dir.step(), s.size, kernel,
                         window, border, 9),
              DAX_STS_OK);
    for (int32_t y = 0; y < s.size.height; ++y) {
      for (int32_t x = 0; x < s.size.width; ++x) {
        const double gx = expected(s, 2 * kernel, window, border, 9, x, y);
        const double gy = expected(s, 2 * kernel + 1, window, border, 9, x, y), length = std::hypot(gx, gy);
        // Floats of Scharr's large window are off by some 1e-4.
        ASSERT_NEAR(mag.at(x, y), length, length * 4e-7 + tolerance(2 * kernel, window) / 8) << x << ", " << y;
        const double turn = std::remainder(dir.at(x, y) - std::atan2(gy, gx), 2 * M_PI);
        ASSERT_LE(std::fabs(turn) * length, 1e-3 + 6e-7 * length) << x << ", " << y;
        ASSERT_TRUE(length != 0 || dir.at(x, y) == 0);
      }
    }
    MockPool pool;
    ASSERT_EQ(G::kMagDirPooled(&pool, 3, s.data(), s.image.step(), mag2.data(), mag2.step(), dir2.data(), dir2.step(),
                               s.size, kernel, window, border, 9),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(mag, mag2) && samePixels(dir, dir2)) << "on a pool";
  }
}

}  // namespace
}  // namespace dax::test
