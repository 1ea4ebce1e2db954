#include "frame/math.h"

#include <gtest/gtest.h>

namespace dax::test {
namespace {

// The C library in extended precision tells what is right.
TEST(Math, SineAndCosine) {
  long double worst = 0;
  for (int i = -400000; i <= 400000; ++i) {
    const double angle = i * 1.7e-5;
    const auto [sine, cosine] = sinCosExact(angle);
    worst = std::max({worst, std::fabs(sine - std::sin(static_cast<long double>(angle))),
                      std::fabs(cosine - std::cos(static_cast<long double>(angle)))});
  }
  EXPECT_LT(worst, 2.3e-16L);
  for (const double angle : {1e3, -1e4, 123456.789, 1e6}) {
    EXPECT_NEAR(sinCosExact(angle).sine, std::sin(angle), 3e-16) << angle;
    EXPECT_NEAR(sinCosExact(angle).cosine, std::cos(angle), 3e-16) << angle;
  }
  for (const double bad : {HUGE_VAL, -HUGE_VAL, std::nan("")}) {
    EXPECT_TRUE(std::isnan(sinCosAny(bad).sine) && std::isnan(sinCosAny(bad).cosine));
  }
  for (const double angle : {1e6, 1.000001e6, -3456789.0, 1e9, -1e12, 1e15}) {
    const double error = 3e-16 + 1e-16 * std::fabs(angle);
    EXPECT_NEAR(sinCosAny(angle).sine, std::sin(angle), error) << angle;
    EXPECT_NEAR(sinCosAny(angle).cosine, std::cos(angle), error) << angle;
  }
  EXPECT_EQ(sinCosExact(0).sine, 0);
  EXPECT_EQ(sinCosExact(0).cosine, 1);
}

TEST(Math, Exponential) {
  for (int i = -70000; i <= 70000; ++i) {
    const double x = i * 0.01, expected = static_cast<double>(std::exp(static_cast<long double>(x)));
    ASSERT_NEAR(expExact(x) / expected, 1, 5e-16) << x;
  }
  EXPECT_EQ(expExact(0), 1);
  for (int i = -4000; i <= 0; ++i) {
    const double x = i * 0.01, expected = static_cast<double>(std::exp(static_cast<long double>(x)));
    ASSERT_NEAR(expOfTable(x) / expected, 1, 2e-14) << x;
  }
}

TEST(Math, ArcTangent) {
  long double worst = 0;
  for (int i = -200000; i <= 200000; ++i) {
    const double angle = i * 1.57e-5, radius = 1 + std::abs(i) % 7, x = radius * std::cos(angle),
                 y = radius * std::sin(angle);
    worst = std::max(worst, std::fabs(atan2Exact(y, x) - std::atan2(static_cast<long double>(y), x)));
  }
  EXPECT_LT(worst, 5e-16L);
  const double zeros[] = {0.0, -0.0};
  for (const double zero : zeros) {
    EXPECT_EQ(atan2Exact(zero, zero), 0);
    EXPECT_EQ(atan2Exact(zero, -2), std::numbers::pi);
    EXPECT_EQ(atan2Exact(3, zero), std::numbers::pi / 2);
    EXPECT_EQ(atan2Exact(-3, zero), -std::numbers::pi / 2);
  }
}

TEST(Math, Roots) {
  for (int n = 1; n <= 10; ++n) {
    for (double value = 1e-80; value < 1e80; value *= 1.37) {
      const double expected = static_cast<double>(std::pow(static_cast<long double>(value), 1.0L / n));
      ASSERT_NEAR(rootExact(value, n) / expected, 1, 1e-15) << value << ", " << n;
    }
    EXPECT_EQ(rootExact(0, n), 0);
    EXPECT_EQ(rootExact(1, n), 1);
  }
  EXPECT_EQ(rootExact(1024, 10), 2);
}

}  // namespace
}  // namespace dax::test
