#include "frame/numeric/elementary.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

#include "tests/support/digest.h"

namespace dax::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kSmallest = 0x1p-1074, kLargest = std::numeric_limits<double>::max();
constexpr double kPi = std::numbers::pi;
constexpr int kSamples = 20000;

// Distance from what is right, in units of the last place of a T.
template <class T>
double unitsBetween(T result, long double right) {
  using Limits = std::numeric_limits<T>;
  if (std::isinf(result) && result == static_cast<T>(right)) return 0;
  int exponent;
  std::frexp(right, &exponent);
  const long double unit = std::ldexp(1.0L, std::max(exponent, Limits::min_exponent) - Limits::digits);
  return static_cast<double>(std::fabs(static_cast<long double>(result) - right) / unit);
}

// Random arguments from `low` to `high`, or any bits but infinities and NaN.
class Arguments {
 public:
  Arguments(uint64_t seed, double low, double high) : random_(seed), low_(low), high_(high) {}
  double next() {
    if (low_ < high_) return low_ + (high_ - low_) * (static_cast<double>(random_.next() >> 11) * 0x1p-53);
    for (;;) {
      if (const auto x = std::bit_cast<double>(random_.next()); std::isfinite(x)) return low_ > 0 ? std::fabs(x) : x;
    }
  }

 private:
  Random random_;
  double low_, high_;
};

struct Range {
  double low, high;
};
constexpr Range kAnyBits = {0, 0}, kAnyPositive = {1, 0};

struct OneArgument {
  const char* name;
  double (*function)(double);
  long double (*right)(long double);
  double bound;
  std::vector<Range> ranges;
};

const OneArgument kOneArgument[] = {
    {"exp", elementary::exp, std::exp, 0.51, {{-708, 709.7}, {-1, 1}}},
    {"exp, subnormal", elementary::exp, std::exp, 0.76, {{-745.2, -708}}},
    {"log", elementary::log, std::log, 0.501, {kAnyPositive, {0.5, 2}, {0.99, 1.01}, {1, 1 + 0x1p-30}}},
    {"cbrt", elementary::cbrt, std::cbrt, 0.501, {kAnyBits, {-8, 8}}},
    {"sin", elementary::sin, std::sin, 0.85, {kAnyBits, {-4, 4}, {-1e6, 1e6}, {0x1p19, 0x1p21}}},
    {"cos", elementary::cos, std::cos, 0.85, {kAnyBits, {-4, 4}, {-1e6, 1e6}, {0x1p19, 0x1p21}}},
};

// The C library's functions in extended or quadruple precision tell what is right; the digest is the same on all machines.
TEST(Elementary, ErrorsStayWithinTheirBounds) {
  Digest digest;
  for (const OneArgument& f : kOneArgument) {
    double worst = 0;
    for (const Range range : f.ranges) {
      Arguments arguments(1, range.low, range.high);
      for (int i = 0; i < kSamples; ++i) {
        const double x = arguments.next(), result = f.function(x);
        worst = std::max(worst, unitsBetween(result, f.right(x)));
        digest.add(&result, sizeof result);
      }
    }
    EXPECT_LT(worst, f.bound) << f.name;
    EXPECT_GT(worst, 0.49) << f.name;
  }
  EXPECT_EQ(digest.value(), 18370931349062411722u);
}

struct TwoArguments {
  const char* name;
  double (*function)(double, double);
  long double (*right)(long double, long double);
  double bound;
  std::vector<std::pair<Range, Range>> ranges;
};

const TwoArguments kTwoArguments[] = {
    {"atan2", elementary::atan2, std::atan2, 0.502, {{kAnyBits, kAnyBits}, {{-1, 1}, {-1, 1}}, {{-1, 1}, {-30, 30}}}},
    {"atan2, subnormal", elementary::atan2, std::atan2, 0.502, {{{-1e-310, 1e-310}, {-1e-310, 1e-310}}}},
    {"pow",
     elementary::pow,
     std::pow,
     0.56,
     {{{0, 10}, {-10, 10}}, {kAnyPositive, {-0.9, 0.9}}, {{0.999, 1.001}, {-7e5, 7e5}}}},
    {"pow, subnormal", elementary::pow, std::pow, 0.8, {{{0.124, 0.125}, {341, 357}}}},
};

TEST(Elementary, ErrorsStayWithinTheirBoundsOfTwo) {
  Digest digest;
  for (const TwoArguments& f : kTwoArguments) {
    double worst = 0;
    for (const auto& [first, second] : f.ranges) {
      Arguments a(1, first.low, first.high), b(2, second.low, second.high);
      for (int i = 0; i < kSamples; ++i) {
        const double x = a.next(), y = b.next(), result = f.function(x, y);
        worst = std::max(worst, unitsBetween(result, f.right(x, y)));
        digest.add(&result, sizeof result);
      }
    }
    EXPECT_LT(worst, f.bound) << f.name;
    EXPECT_GT(worst, 0.49) << f.name;
  }
  EXPECT_EQ(digest.value(), 16970311692452624144u);
}

// The doubles nearest to multiples of pi/2, where most digits cancel; the second is the closest of all.
TEST(Elementary, AnglesAtQuarterTurns) {
  for (const double x :
       {0x1.921FB54442D18p+0, 0x1.6AC5B262CA1FFp+849, 0x1.DFE9D5C3B8F4Ep+19, 0x1p20, 0x1p1023, kLargest}) {
    const auto [sine, cosine] = elementary::sinCos(x);
    EXPECT_LT(unitsBetween(sine, std::sin(static_cast<long double>(x))), 0.85) << x;
    EXPECT_LT(unitsBetween(cosine, std::cos(static_cast<long double>(x))), 0.85) << x;
  }
  for (int k = 1; k < 600000; k += 101) {
    const double x = k * (kPi / 2);
    const double right =
        static_cast<double>(k % 2 ? std::cos(static_cast<long double>(x)) : std::sin(static_cast<long double>(x)));
    const double result = k % 2 ? elementary::cos(x) : elementary::sin(x);
    ASSERT_NEAR(result / right, 1, 3e-16) << k;
  }
}

// Bits, so that zeros have their signs and NaN is always the same.
void expectBits(double result, double right, double x, double y = 0) {
  EXPECT_EQ(std::bit_cast<uint64_t>(result), std::bit_cast<uint64_t>(right)) << x << ", " << y << ": " << result;
}

TEST(Elementary, SpecialArguments) {
  const double negativeNaN = std::copysign(kNaN, -1.0);
  for (const OneArgument& f : kOneArgument) expectBits(f.function(negativeNaN), kNaN, kNaN);
  const struct {
    double (*function)(double);
    double x, right;
  } cases[] = {
      {elementary::exp, -0.0, 1},
      {elementary::exp, kSmallest, 1},
      {elementary::exp, kInfinity, kInfinity},
      {elementary::exp, -kInfinity, 0},
      {elementary::exp, 709.79, kInfinity},
      {elementary::exp, -745.14, 0},
      {elementary::exp, -745.13, kSmallest},
      {elementary::log, 1, 0},
      {elementary::log, -0.0, -kInfinity},
      {elementary::log, kInfinity, kInfinity},
      {elementary::log, -kSmallest, kNaN},
      {elementary::cbrt, -0.0, -0.0},
      {elementary::cbrt, -kInfinity, -kInfinity},
      {elementary::cbrt, 0x1p-1074, 0x1p-358},
      {elementary::sin, -0.0, -0.0},
      {elementary::sin, -kSmallest, -kSmallest},
      {elementary::sin, kInfinity, kNaN},
      {elementary::cos, -0.0, 1},
      {elementary::cos, -kInfinity, kNaN},
  };
  for (const auto& c : cases) expectBits(c.function(c.x), c.right, c.x);
  for (double i = 1; i < 100; ++i) expectBits(elementary::cbrt(-i * i * i), -i, i);
}

// The C library follows Annex F, too, and these results have one or no rounding error.
TEST(Elementary, SpecialArgumentsOfTwo) {
  const double values[] = {0, kSmallest, 0x1p-1000, 0.5, 1, 2, 3, 4, 0x1p53, 0x1p1000, kInfinity};
  for (const double a : values) {
    for (const double b : values) {
      for (const auto& [x, y] : {std::pair{a, b}, {a, -b}, {-a, b}, {-a, -b}}) {
        const auto power = static_cast<double>(std::pow(static_cast<long double>(x), y));
        if (std::isnan(power))
          expectBits(elementary::pow(x, y), kNaN, x, y);
        else
          EXPECT_EQ(elementary::pow(x, y), power) << x << ", " << y;
        EXPECT_EQ(std::signbit(elementary::pow(x, y)), !std::isnan(power) && std::signbit(power)) << x << ", " << y;
        expectBits(elementary::atan2(y, x), static_cast<double>(std::atan2(static_cast<long double>(y), x)), x, y);
      }
    }
    expectBits(elementary::atan2(a, -kNaN), kNaN, a);
    expectBits(elementary::atan2(-kNaN, a), kNaN, a);
    expectBits(elementary::pow(-kNaN, a), a == 0 ? 1 : kNaN, a);
    expectBits(elementary::pow(a, -kNaN), a == 1 ? 1 : kNaN, a);
  }
  for (int i = 0; i <= 33; ++i) EXPECT_EQ(elementary::pow(-3.0, i * 1.0), std::pow(-3.0, i)) << i;
}

TEST(Elementary, SinglePrecision) {
  Arguments arguments(3, -80, 80);
  for (int i = 0; i < kSamples; ++i) {
    const auto x = static_cast<float>(arguments.next()), y = static_cast<float>(arguments.next());
    const long double wide = x;
    ASSERT_LT(unitsBetween(elementary::exp(x), std::exp(wide)), 0.50001) << x;
    ASSERT_LT(unitsBetween(elementary::log(std::fabs(x)), std::log(std::fabs(wide))), 0.50001) << x;
    ASSERT_LT(unitsBetween(elementary::cbrt(x), std::cbrt(wide)), 0.50001) << x;
    ASSERT_LT(unitsBetween(elementary::sin(x), std::sin(wide)), 0.50001) << x;
    ASSERT_LT(unitsBetween(elementary::cos(x), std::cos(wide)), 0.50001) << x;
    ASSERT_LT(unitsBetween(elementary::atan2(y, x), std::atan2(static_cast<long double>(y), wide)), 0.50001) << x;
    ASSERT_LT(unitsBetween(elementary::pow(x * x, y / 80),
                           std::pow(static_cast<long double>(x * x), static_cast<long double>(y / 80))),
              0.50001)
        << x;
  }
}

}  // namespace
}  // namespace dax::test
