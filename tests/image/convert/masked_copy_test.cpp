#include <gtest/gtest.h>

#include <functional>

#include "daxi/masked_copy.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
using CopyFunction = DaxStatus (*)(const T*, int32_t, const uint8_t*, int32_t, T*, int32_t, DaxiSize);
template <class T>
using SetFunction = std::function<DaxStatus(const uint8_t*, int32_t, T*, int32_t, DaxiSize, const T*)>;

// Every third pixel or so is set, by any number but 0.
TestImage<uint8_t> someMask(DaxiSize size, uint64_t seed) {
  TestImage<uint8_t> mask(size, 1);
  Random random(seed);
  mask.fill([&](int32_t, int32_t) { return random.below(3) ? 0 : 1 + random.below(255); });
  return mask;
}

template <class T>
void expectMasked(CopyFunction<T> copy, const SetFunction<T>& set, int32_t channels) {
  for (int32_t width = 1; width <= 70; ++width) {
    const DaxiSize size = {width, 1 + width % 3};
    TestImage<T> src({width * channels, size.height}, width % 4), dst(src.size(), 2), before(src.size()), value({3, 1});
    const TestImage<uint8_t> mask = someMask(size, static_cast<uint64_t>(width));
    src.randomize(5), before.randomize(6), value.randomize(7);
    const auto expectIn = [&](auto inside) {
      ASSERT_TRUE(dst.paddingUntouched());
      for (int32_t y = 0; y < size.height; ++y) {
        for (int32_t x = 0; x < src.size().width; ++x) {
          ASSERT_TRUE(sameBits(dst.at(x, y), mask.at(x / channels, y) ? inside(x, y) : before.at(x, y)))
              << x << ", " << y;
        }
      }
    };
    const auto start = [&] { dst.fill([&](int32_t x, int32_t y) { return before.at(x, y); }).remember(); };
    start();
    ASSERT_EQ(copy(src.data(), src.step(), mask.data(), mask.step(), dst.data(), dst.step(), size), DAX_STS_OK);
    expectIn([&](int32_t x, int32_t y) { return src.at(x, y); });
    start();
    ASSERT_EQ(set(mask.data(), mask.step(), dst.data(), dst.step(), size, value.data()), DAX_STS_OK);
    expectIn([&](int32_t x, int32_t) { return value.at(x % channels, 0); });
  }
}

#define MASKED(SUFFIX, T)                                                                                             \
  expectMasked<T>(                                                                                                    \
      DAXI_Copy_##SUFFIX##_C1MR,                                                                                      \
      [](auto m, auto ms, auto d, auto ds, auto z, auto v) { return DAXI_Set_##SUFFIX##_C1MR(m, ms, d, ds, z, *v); }, \
      1);                                                                                                             \
  expectMasked<T>(DAXI_Copy_##SUFFIX##_C3MR, DAXI_Set_##SUFFIX##_C3MR, 3);

TEST(MaskedCopy, RaggedSizes) {
  MASKED(8u, uint8_t) MASKED(16u, uint16_t) MASKED(16s, int16_t) MASKED(32f, float)
}

}  // namespace
}  // namespace dax::test
