#include "frame/numeric/round.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace dax::test {
namespace {

template <class T>
class RoundTest : public testing::Test {};
using Integers = testing::Types<uint8_t, int8_t, uint16_t, int16_t, uint32_t, int32_t, uint64_t, int64_t>;
TYPED_TEST_SUITE(RoundTest, Integers);

template <class Real, class T>
void expectRounding() {
  using Limits = std::numeric_limits<T>;
  constexpr Real kInfinity = std::numeric_limits<Real>::infinity();
  EXPECT_EQ(roundTo<T>(kInfinity), Limits::max());
  EXPECT_EQ(roundTo<T>(-kInfinity), Limits::min());
  EXPECT_EQ(roundTo<T>(std::numeric_limits<Real>::max()), Limits::max());
  EXPECT_EQ(roundTo<T>(std::numeric_limits<Real>::quiet_NaN()), T{0});
  EXPECT_EQ(roundTo<T>(-std::numeric_limits<Real>::quiet_NaN()), T{0});
  // Halves, and their neighbours.
  for (int i = Limits::is_signed ? -100 : 0; i < 100; ++i) {
    const Real half = static_cast<Real>(i) + Real{0.5};
    EXPECT_EQ(roundTo<T>(half), static_cast<T>(i + (i & 1))) << half;
    EXPECT_EQ(roundTo<T>(std::nextafter(half, -kInfinity)), static_cast<T>(i)) << half;
    EXPECT_EQ(roundTo<T>(std::nextafter(half, kInfinity)), static_cast<T>(i + 1)) << half;
  }
  // Around the limits: 2^n is above the greatest T, what precedes it is below where the real type has fewer bits.
  const Real above = std::ldexp(Real{1}, Limits::digits), below = std::nextafter(above, Real{0});
  EXPECT_EQ(roundTo<T>(above), Limits::max());
  EXPECT_EQ(roundTo<T>(below),
            std::numeric_limits<Real>::digits <= Limits::digits ? static_cast<T>(below) : Limits::max());
  const Real lowest = static_cast<Real>(Limits::min());
  EXPECT_EQ(roundTo<T>(lowest), Limits::min());
  EXPECT_EQ(roundTo<T>(lowest - Real{0.5}), Limits::min());
  EXPECT_EQ(roundTo<T>(std::nextafter(lowest, -kInfinity)), Limits::min());
}

TYPED_TEST(RoundTest, HalvesToEvenThenSaturates) {
  expectRounding<float, TypeParam>();
  expectRounding<double, TypeParam>();
}

// The halves next to the limits.
TEST(Round, HalvesAtTheLimits) {
  EXPECT_EQ(roundTo<uint8_t>(254.5f), 254);
  EXPECT_EQ(roundTo<uint8_t>(255.5f), 255);
  EXPECT_EQ(roundTo<uint8_t>(-0.5f), 0);
  EXPECT_EQ(roundTo<int16_t>(32766.5f), 32766);
  EXPECT_EQ(roundTo<int16_t>(-32767.5f), -32768);
  EXPECT_EQ(roundTo<int32_t>(2147483646.5), 2147483646);
  EXPECT_EQ(roundTo<int32_t>(-2147483647.5), INT32_MIN);
}

}  // namespace
}  // namespace dax::test
