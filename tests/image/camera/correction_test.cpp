// Flat field and defects.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "daxi/defects.h"
#include "daxi/flat_field.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Correction;
#define CORRECTION(SUFFIX, T)                                                  \
  template <>                                                                  \
  struct Correction<T> {                                                       \
    static constexpr auto flatField = DAXI_FlatField_##SUFFIX##_C1R;           \
    static constexpr auto flatFieldInPlace = DAXI_FlatField_##SUFFIX##_C1IR;   \
    static constexpr auto replaceDefects = DAXI_ReplaceDefects_##SUFFIX##_C1R; \
  };
CORRECTION(8u, uint8_t)
CORRECTION(16u, uint16_t)
#undef CORRECTION

template <class T>
class SensorOf : public testing::Test {};
using SensorTypes = testing::Types<uint8_t, uint16_t>;
TYPED_TEST_SUITE(SensorOf, SensorTypes);

TYPED_TEST(SensorOf, FlatField) {
  using T = TypeParam;
  const float odd[] = {-1, NAN, INFINITY, -INFINITY, 0, 1e30f, 0.5f, 1.5f};
  for (int32_t width = 1; width <= 40; ++width) {
    const DaxiSize size = {width, 3};
    TestImage<T> src(size, width % 3, kGuards[width % 2]), dark(size), dst(size, width % 2);
    TestImage<float> gain(size, width % 4);
    src.randomize(static_cast<uint64_t>(width)), dark.randomize(77);
    dark.fill([&](int32_t x, int32_t y) { return dark.at(x, y) / 8; });
    gain.fill(
        [&](int32_t x, int32_t y) { return y == 0 ? odd[x % 8] : 0.75f + static_cast<float>((x * 7 + y) % 40) / 64; });
    dst.remember();
    ASSERT_EQ(Correction<T>::flatField(src.data(), src.step(), dark.data(), dark.step(), gain.data(), gain.step(),
                                       dst.data(), dst.step(), size),
              DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    for (int32_t i = 0; i < 3 * width; ++i) {
      const int32_t x = i % width, y = i / width;
      const float product = static_cast<float>(src.at(x, y) - dark.at(x, y)) * gain.at(x, y);
      const bool isPositive = src.at(x, y) > dark.at(x, y) && product > 0;
      const double expected = isPositive ? std::min<double>(std::nearbyint(product), std::numeric_limits<T>::max()) : 0;
      ASSERT_EQ(dst.at(x, y), expected) << x << ", " << y;
    }
    ASSERT_EQ(Correction<T>::flatFieldInPlace(dark.data(), dark.step(), gain.data(), gain.step(), src.data(),
                                              src.step(), size),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(src, dst));
  }
}

// By the definition: rings of four, of which the first with a good pixel counts. From single defects to none good.
TYPED_TEST(SensorOf, Defects) {
  using T = TypeParam;
  for (int32_t i = 0; i < 60; ++i) {
    const DaxiSize size = {1 + i % 31, 1 + i % 19};
    const int32_t distance = 1 + i % 2, percent = i % 3 == 0 ? 5 : i % 3 == 1 ? 60 : 97;
    TestImage<T> src(size, i % 3, kGuards[i % 2]), dst(size, i % 4);
    TestImage<uint8_t> map(size, i % 5);
    src.randomize(static_cast<uint64_t>(i));
    Random random(static_cast<uint64_t>(900 + i));
    map.fill([&](int32_t, int32_t) { return random.below(100) < percent ? 1 + random.below(255) : 0; });
    int64_t unmended = -1, expectedUnmended = 0;
    ASSERT_EQ(Correction<T>::replaceDefects(src.data(), src.step(), map.data(), map.step(), dst.data(), dst.step(),
                                            size, distance, &unmended),
              DAX_STS_OK);
    for (int32_t k = 0; k < size.width * size.height; ++k) {
      const int32_t x = k % size.width, y = k / size.width;
      double sum = 0, count = 0;
      for (int32_t d = distance; map.at(x, y) != 0 && d <= 7 * distance && count == 0; d += distance) {
        for (const auto& [px, py] : {std::pair{x - d, y}, {x + d, y}, {x, y - d}, {x, y + d}}) {
          const bool inside = px >= 0 && py >= 0 && px < size.width && py < size.height;
          if (inside && map.at(px, py) == 0) sum += src.at(px, py), ++count;
        }
      }
      expectedUnmended += map.at(x, y) != 0 && count == 0;
      const double expected = count > 0 ? std::nearbyint(sum / count) : src.at(x, y);
      ASSERT_EQ(dst.at(x, y), expected) << x << ", " << y;
    }
    ASSERT_EQ(unmended, expectedUnmended);
    ASSERT_EQ(Correction<T>::replaceDefects(src.data(), src.step(), map.data(), map.step(), src.data(), src.step(),
                                            size, distance, &unmended),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(src, dst)) << "in place";
  }
}

}  // namespace
}  // namespace dax::test
