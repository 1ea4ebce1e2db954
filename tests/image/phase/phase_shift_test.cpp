#include "daxi/phase_shift.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "tests/image/phase/phase_scene.h"
#include "tests/image/phase/phase_shift_oracle.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

template <class T>
struct Phase;
#define DAX_PHASE(SUFFIX, T)                                                         \
  template <>                                                                        \
  struct Phase<T> {                                                                  \
    static constexpr auto kShift = DAXI_PhaseShift_##SUFFIX##_C1R;                   \
    static constexpr auto kShiftPooled = DAXI_PhaseShift_##SUFFIX##_C1R_MT;          \
    static constexpr auto kMotion = DAXI_PhaseRotationScale_##SUFFIX##_C1R;          \
    static constexpr auto kMotionPooled = DAXI_PhaseRotationScale_##SUFFIX##_C1R_MT; \
  };
DAX_PHASE(8u, uint8_t)
DAX_PHASE(16u, uint16_t)
DAX_PHASE(32f, float)
#undef DAX_PHASE

// With a buffer of exactly the size that the query says, and then on a pool, with the same bits.
template <class Result, class T, class Query, class Find, class FindPooled>
DaxStatus found(const TestImage<T>& a, const TestImage<T>& b, Query query, Find find, FindPooled pooled,
                Result* result) {
  uint64_t bytes = 0;
  EXPECT_EQ(query(a.size(), &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  const DaxStatus status = find(a.data(), a.step(), b.data(), b.step(), a.size(), result, buffer.data());
  if (status != DAX_STS_OK) return status;
  std::fill_n(buffer.data(), bytes, uint8_t{0xA5});
  MockPool pool;
  Result again = {};
  EXPECT_EQ(pooled(&pool, 3, a.data(), a.step(), b.data(), b.step(), a.size(), &again, buffer.data()), DAX_STS_OK);
  EXPECT_TRUE(sameBits(*result, again)) << "on a pool";
  return status;
}

template <class T>
DaxStatus shiftOf(const TestImage<T>& a, const TestImage<T>& b, DaxiPhaseShift* shift) {
  return found(a, b, DAXI_PhaseShiftBufferSize, Phase<T>::kShift, Phase<T>::kShiftPooled, shift);
}

template <class T>
DaxStatus motionOf(const TestImage<T>& a, const TestImage<T>& b, DaxiPhaseMotion* motion) {
  return found(a, b, DAXI_PhaseRotationScaleBufferSize, Phase<T>::kMotion, Phase<T>::kMotionPooled, motion);
}

template <class>
class PhaseShift : public testing::Test {};
using Greys = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(PhaseShift, Greys);

TYPED_TEST(PhaseShift, EqualsTheDefinition) {
  const struct {
    DaxiSize size;
    Motion by;
  } cases[] = {{{24, 20}, {2.3, -1.4}}, {{23, 17}, {-0.5, 0.25}}, {{31, 26}, {-6.7, 4.1}}};
  for (const auto& [size, by] : cases) {
    const SpotScene scene(size, 3);
    const auto a = asPixels<TypeParam>(scene.seen({})), b = asPixels<TypeParam>(scene.seen(by));
    DaxiPhaseShift shift;
    ASSERT_EQ(shiftOf(a, b, &shift), DAX_STS_OK) << size.width;
    const DaxiPhaseShift expected = PhaseOracle::shift(a, b);
    EXPECT_NEAR(shift.dx, expected.dx, 1e-4) << size.width;
    EXPECT_NEAR(shift.dy, expected.dy, 1e-4);
    // Without the rounding of pixels many frequencies lie close to that of the transforms.
    const double tolerance = std::is_floating_point_v<TypeParam> ? 1e-2 : 1e-3;
    EXPECT_NEAR(shift.peak, expected.peak, tolerance);
    EXPECT_NEAR(shift.second, expected.second, tolerance);
  }
}

TYPED_TEST(PhaseShift, FindsShifts) {
  const DaxiSize size = {128, 100};
  const SpotScene scene(size, 5);
  const TestImage<double> still = scene.seen({});
  Random random(9);
  for (int32_t round = 0; round < 6; ++round) {
    const Motion by = {(random.below(6000) - 3000) / 100.0, (random.below(4000) - 2000) / 100.0};
    const TestImage<double> moved = scene.seen(by);
    const auto check = [&](const TestImage<TypeParam>& a, const TestImage<TypeParam>& b, double sign,
                           double tolerance) {
      DaxiPhaseShift shift;
      ASSERT_EQ(shiftOf(a, b, &shift), DAX_STS_OK) << by.dx << ", " << by.dy;
      EXPECT_NEAR(shift.dx, sign * by.dx, tolerance);
      EXPECT_NEAR(shift.dy, sign * by.dy, tolerance);
      EXPECT_GT(shift.peak, 1.5 * shift.second);
    };
    const auto a = asPixels<TypeParam>(still);
    check(a, asPixels<TypeParam>(moved), 1, 0.02);
    check(asPixels<TypeParam>(moved), a, -1, 0.02);
    check(a, asPixels<TypeParam>(moved, 0.4, 60), 1, 0.02);
    check(asPixels<TypeParam>(still, 1, 0, 4, 1), asPixels<TypeParam>(moved, 1, 0, 4, 2), 1, 0.08);
  }
}

TYPED_TEST(PhaseShift, FindsRotationAndScale) {
  const DaxiSize size = {150, 160};
  const SpotScene scene(size, 6);
  const auto a = asPixels<TypeParam>(scene.seen({}));
  for (const Motion& by : {Motion{3.2, -5.4, 0.6, 1.2}, Motion{-4, 2.5, -2.9, 0.8}, Motion{0, 0, 1.6, 1},
                           Motion{8.3, 1.1, 3.1, 1.1}, Motion{1, 2, 0, 0.7}}) {
    DaxiPhaseMotion motion;
    ASSERT_EQ(motionOf(a, asPixels<TypeParam>(scene.seen(by)), &motion), DAX_STS_OK) << by.angle;
    EXPECT_NEAR(std::remainder(motion.angle - by.angle, 2 * std::numbers::pi), 0, 0.005) << by.angle;
    EXPECT_LE(std::fabs(motion.angle), std::numbers::pi);
    EXPECT_NEAR(motion.scale, by.scale, 0.01 * by.scale) << by.angle;
    EXPECT_NEAR(motion.dx, by.dx, 0.15) << by.angle;
    EXPECT_NEAR(motion.dy, by.dy, 0.15) << by.angle;
    // The matrix moves the centre as dx and dy say, and a point beside it by angle and scale.
    const double* const m = motion.m;
    const auto x = [m](double u, double v) { return m[0] * u + m[1] * v + m[2]; };
    const auto y = [m](double u, double v) { return m[3] * u + m[4] * v + m[5]; };
    EXPECT_NEAR(x(74.5, 79.5), 74.5 + motion.dx, 1e-9);
    EXPECT_NEAR(y(74.5, 79.5), 79.5 + motion.dy, 1e-9);
    EXPECT_NEAR(x(84.5, 79.5) - x(74.5, 79.5), 10 * motion.scale * std::cos(motion.angle), 1e-9);
    EXPECT_NEAR(y(84.5, 79.5) - y(74.5, 79.5), 10 * motion.scale * std::sin(motion.angle), 1e-9);
    EXPECT_EQ(m[6] == 0 && m[7] == 0, m[8] == 1);
  }
}

TYPED_TEST(PhaseShift, RefusesFlatImages) {
  TestImage<TypeParam> flat({40, 30}), other({40, 30});
  flat.fill([](int32_t, int32_t) { return 37; });
  other.fill([](int32_t x, int32_t y) { return x * y % 50; });
  DaxiPhaseShift shift = {1, 2, 3, 4};
  DaxiPhaseMotion motion;
  EXPECT_EQ(shiftOf(flat, other, &shift), DAX_STS_DEGENERATE);
  EXPECT_EQ(shiftOf(other, flat, &shift), DAX_STS_DEGENERATE);
  EXPECT_EQ(motionOf(flat, other, &motion), DAX_STS_DEGENERATE);
  EXPECT_EQ(shift.dx, 1);
}

TEST(PhaseShiftFloats, RefusesNumbersThatAreNone) {
  TestImage<float> good({40, 30}), bad({40, 30});
  good.fill([](int32_t x, int32_t y) { return x * y % 50; });
  for (const float value : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    bad.fill([](int32_t x, int32_t y) { return x * y % 50; });
    bad.at(39, 29) = value;
    DaxiPhaseShift shift;
    EXPECT_EQ(shiftOf(good, bad, &shift), DAX_STS_DATA_RANGE);
    EXPECT_EQ(shiftOf(bad, good, &shift), DAX_STS_DATA_RANGE);
  }
  // The same picture at the ends of the range, where squares of floats have none.
  const SpotScene scene({40, 30}, 2);
  const auto a = scene.seen({}), b = scene.seen({1.5, 0.5});
  for (const double gain : {1e36, 1e-40}) {
    DaxiPhaseShift shift;
    ASSERT_EQ(shiftOf(asPixels<float>(a, gain), asPixels<float>(b, gain), &shift), DAX_STS_OK) << gain;
    EXPECT_NEAR(shift.dx, 1.5, 0.05);
  }
}

}  // namespace
}  // namespace dax::test
