#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <vector>

#include "daxi.h"
#include "image/convert/convert.h"
#include "tests/image/convert/convert_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T, class F>
struct Pair {
  using From = T;
  using To = F;
};
using Pairs =
    testing::Types<Pair<uint8_t, uint16_t>, Pair<uint8_t, int16_t>, Pair<uint8_t, float>, Pair<uint16_t, uint8_t>,
                   Pair<uint16_t, int16_t>, Pair<uint16_t, float>, Pair<int16_t, uint8_t>, Pair<int16_t, uint16_t>,
                   Pair<int16_t, float>, Pair<float, uint8_t>, Pair<float, uint16_t>, Pair<float, int16_t>>;
template <class P>
class Convert : public testing::Test {};
TYPED_TEST_SUITE(Convert, Pairs);

// All values of the integers; of floats every exponent, the neighbourhood of halves, what is no number.
template <class T>
std::vector<T> allValues() {
  std::vector<T> values;
  if constexpr (std::is_integral_v<T>) {
    for (int32_t v = std::numeric_limits<T>::min(); v <= std::numeric_limits<T>::max(); ++v)
      values.push_back(static_cast<T>(v));
  } else {
    for (int32_t v = -70000; v <= 70000; v += 7) {
      const T half = static_cast<T>(v) / 2;
      for (const T near : {half, std::nextafter(half, T{1e9}), std::nextafter(half, T{-1e9}), half / 255, half / 65535})
        values.push_back(near);
    }
    Random random(3);
    for (int32_t i = 0; i < 20000; ++i) values.push_back(std::bit_cast<float>(static_cast<uint32_t>(random.next())));
    values.insert(values.end(), {INFINITY, -INFINITY, NAN, 0, -0.f});
  }
  return values;
}

template <class T>
bool isSame(T a, T b) {
  return sameBits(a, b) || (a != a && b != b);
}

const DaxiConvertCfg kCfgs[] = {{1, 0},         {1 / 16.0, 0},    {0.5, 0},        {-1.5, 100.25},  {257, 0},
                                {1 / 255.0, 0}, {1 / 257.0, 0.5}, {255, 0},        {65535, -3},     {0, 7.5},
                                {0.1, 0.05},    {1e-300, 1},      {1e300, -1e300}, {-1e300, 1e300}, {0.25, 1e-9},
                                {1 / 100.0, 0}, {0.7, 0},         {1.7, -200},     {3, 16777216.5}, {2, -131072},
                                {1, 0.5},       {1e39, 0}};

// Both twins, every scale and number.
TYPED_TEST(Convert, AllValues) {
  using From = typename TypeParam::From;
  using To = typename TypeParam::To;
  const std::vector<From> values = allValues<From>();
  const auto count = static_cast<int32_t>(values.size());
  // Few pixels, all values, and so many that all values are tried beforehand: each may have its own arithmetic.
  std::vector<From> repeated;
  for (int32_t i = 0; i < 16 && std::is_integral_v<From>; ++i)
    repeated.insert(repeated.end(), values.begin(), values.end());
  std::vector<To> result(values.size()), results(repeated.size());
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    for (const DaxiConvertCfg& cfg : kCfgs) {
      for (int32_t part = count; part > 0; part = part == count ? 200 : 0) {
        convertElements(values.data(), result.data(), part, cfg, isa);
        for (size_t i = 0; i < static_cast<size_t>(part); ++i) {
          const To expected = oracle::converted<To>(values[i], cfg.scale, cfg.offset);
          ASSERT_TRUE(isSame(result[i], expected)) << +values[i] << " * " << cfg.scale << " + " << cfg.offset << " = "
                                                   << +result[i] << ", not " << +expected << ", code " << isa;
        }
      }
      convertElements(values.data(), result.data(), count, cfg, isa);
      convertElements(repeated.data(), results.data(), static_cast<int32_t>(repeated.size()), cfg, isa);
      for (size_t i = 0; i < results.size(); i += result.size()) {
        ASSERT_EQ(std::memcmp(results.data() + i, result.data(), result.size() * sizeof(To)), 0) << cfg.scale;
      }
    }
    convertFullRangeElements(values.data(), result.data(), count, isa);
    for (size_t i = 0; i < values.size(); ++i) {
      const To expected = oracle::convertedFullRange<To>(values[i]);
      ASSERT_TRUE(isSame(result[i], expected)) << +values[i] << " to " << +result[i] << ", not " << +expected;
    }
  }
}

// Ragged sizes, padded and guarded.
TYPED_TEST(Convert, RaggedSizes) {
  using From = typename TypeParam::From;
  using To = typename TypeParam::To;
  for (int32_t i = 2; i <= 300; i += i < 80 ? 1 : 31) {
    const int32_t pixels = i / 2, gap = i % 3;
    const DaxiSize size = {pixels, 1 + i % 4};
    const bool isColour = i % 2;
    TestImage<From> src({isColour ? 3 * pixels : pixels, size.height}, gap, kGuards[pixels % 2]);
    TestImage<To> dst(src.size(), 2 * gap, kGuards[pixels % 2]);
    src.randomize(static_cast<uint64_t>(i)), dst.randomize(99);
    dst.remember();
    const DaxiConvertCfg cfg = {0.3, 1};
    MockPool pool;
    const PoolThreads on = {i % 4 ? &pool : nullptr, 3};
    ASSERT_EQ((isColour ? convert<From, To, 3> : convert<From, To, 1>)(on, src.data(), src.step(), dst.data(),
                                                                       dst.step(), size, &cfg),
              DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < src.size().width; ++x) {
        ASSERT_TRUE(isSame(dst.at(x, y), oracle::converted<To>(src.at(x, y), 0.3, 1))) << x << ", " << y;
      }
    }
    ASSERT_EQ((isColour ? convertFullRange<From, To, 3> : convertFullRange<From, To, 1>)(on, src.data(), src.step(),
                                                                                         dst.data(), dst.step(), size),
              DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    for (int32_t x = 0; x < src.size().width; ++x) {
      ASSERT_TRUE(isSame(dst.at(x, 0), oracle::convertedFullRange<To>(src.at(x, 0)))) << x;
    }
  }
}

}  // namespace
}  // namespace dax::test
