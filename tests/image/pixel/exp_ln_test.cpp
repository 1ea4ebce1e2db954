#include "daxi/exp_ln.h"

#include <numbers>

#include "tests/image/pixel/element_check.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

// A unit of the last place of floats of this size.
double ulpAt(double value) {
  int exponent;
  std::frexp(value, &exponent);
  return std::ldexp(1.0, std::max(exponent - 24, -149));
}

// Every 10007th float, and every one of a short stretch about the places where formulas change.
template <class Function, class Exact>
void checkError(Function function, Exact exact, std::vector<float> about) {
  std::vector<float> values;
  for (uint64_t bits = 0; bits < uint64_t{1} << 32; bits += 10007)
    values.push_back(std::bit_cast<float>(uint32_t(bits)));
  for (const float centre : about) {
    for (int32_t i = -2000; i <= 2000; ++i) {
      values.push_back(std::bit_cast<float>(std::bit_cast<uint32_t>(centre) + static_cast<uint32_t>(i)));
    }
  }
  std::vector<float> results(values.size());
  const auto count = static_cast<int32_t>(values.size());
  ASSERT_EQ(function(values.data(), count, results.data(), count, DaxiSize{count, 1}), DAX_STS_OK);
  for (size_t i = 0; i < values.size(); ++i) {
    const double expected = exact(static_cast<double>(values[i]));
    if (std::isfinite(expected) && std::isfinite(results[i])) {
      ASSERT_LE(std::fabs(results[i] - expected), ulpAt(expected)) << values[i];
    } else {
      ASSERT_TRUE(sameNumber(results[i], static_cast<float>(expected))) << values[i];
    }
  }
}

TEST(ExpLn, WithinOneUnitOfTheLastPlace) {
  const double ln2 = std::numbers::ln2;
  checkError(DAXI_Exp_32f_C1R, [](double x) { return std::exp(x); },
             {1.0f, -86.0f, 86.0f, -103.97f, 88.72f, static_cast<float>(ln2 / 2), static_cast<float>(-1.5 * ln2)});
  checkError(DAXI_Ln_32f_C1R, [](double x) { return std::log(x); }, {1.0f, 0.70710678f, 1.41421356f, 0x1p-126f, 2.0f});
}

// Also where the others of a vector are ordinary numbers.
TEST(ExpLn, SpecialValues) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity(), kNaN = std::numeric_limits<float>::quiet_NaN();
  const struct {
    DaxStatus (*function)(const float*, int32_t, float*, int32_t, DaxiSize);
    float value, expected;
  } cases[] = {{DAXI_Exp_32f_C1R, 0, 1},
               {DAXI_Exp_32f_C1R, -0.0f, 1},
               {DAXI_Exp_32f_C1R, kInfinity, kInfinity},
               {DAXI_Exp_32f_C1R, -kInfinity, 0},
               {DAXI_Exp_32f_C1R, kNaN, kNaN},
               {DAXI_Exp_32f_C1R, -103, 0x1p-149f},
               {DAXI_Exp_32f_C1R, 89, kInfinity},
               {DAXI_Ln_32f_C1R, 1, 0},
               {DAXI_Ln_32f_C1R, 0, -kInfinity},
               {DAXI_Ln_32f_C1R, -0.0f, -kInfinity},
               {DAXI_Ln_32f_C1R, -1, kNaN},
               {DAXI_Ln_32f_C1R, -kInfinity, kNaN},
               {DAXI_Ln_32f_C1R, kInfinity, kInfinity},
               {DAXI_Ln_32f_C1R, kNaN, kNaN}};
  for (const auto& each : cases) {
    for (int32_t at = 0; at < 37; ++at) {
      TestImage<float> src({37, 1}), dst(src.size());
      src.fill([&](int32_t x, int32_t) { return x == at ? each.value : 1.0f; });
      ASSERT_EQ(each.function(src.data(), 37, dst.data(), 37, src.size()), DAX_STS_OK);
      ASSERT_TRUE(sameNumber(dst.at(at, 0), each.expected)) << each.value << " at " << at;
      ASSERT_TRUE(
          sameNumber(dst.at((at + 1) % 37, 0), each.function == DAXI_Ln_32f_C1R ? 0.0f : dst.at((at + 2) % 37, 0)));
    }
  }
}

// Sizes, steps, in place, and any number of bands.
TEST(ExpLn, FormsAgree) {
  MockPool pool;
  overRaggedSizes([&](DaxiSize size, int32_t gap, Guard guard) {
    TestImage<float> src(size, gap, guard), dst(size, gap + 1, guard), other(size, gap), single({1, 1});
    src.randomize(static_cast<uint64_t>(size.width)), dst.remember();
    ASSERT_EQ(DAXI_Exp_32f_C1R(src.data(), src.step(), dst.data(), dst.step(), size), DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    for (int32_t y = 0; y < size.height; ++y) {
      ASSERT_EQ(DAXI_Exp_32f_C1R(&src.at(size.width / 2, y), 1, single.data(), 1, {1, 1}), DAX_STS_OK);
      ASSERT_TRUE(sameNumber(dst.at(size.width / 2, y), single.at(0, 0)));
    }
    for (const uint32_t threads : {1u, 2u, 7u}) {
      ASSERT_EQ(DAXI_Exp_32f_C1R_MT(&pool, threads, src.data(), src.step(), other.data(), other.step(), size),
                DAX_STS_OK);
      ASSERT_TRUE(samePixels(other, dst));
    }
    ASSERT_EQ(DAXI_Exp_32f_C1IR(src.data(), src.step(), size), DAX_STS_OK);
    ASSERT_TRUE(samePixels(src, dst));
    ASSERT_EQ(DAXI_Ln_32f_C1R_MT(&pool, 3, src.data(), src.step(), other.data(), other.step(), size), DAX_STS_OK);
    ASSERT_EQ(DAXI_Ln_32f_C1IR(src.data(), src.step(), size), DAX_STS_OK);
    ASSERT_TRUE(samePixels(src, other));
  });
}

}  // namespace
}  // namespace dax::test
