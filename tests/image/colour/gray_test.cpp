#include <gtest/gtest.h>

#include <cmath>

#include "daxi/gray.h"
#include "image/colour/gray.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

// All colours of bytes, a row for each blue: the formula in exact integers, within half a level of the real one, by both
// twins.
TEST(Gray, AllColoursOfBytes) {
  TestImage<uint8_t> rgb({3 * 65536, 1}), gray({65536, 1});
  for (int32_t blue = 0; blue < 256; ++blue) {
    for (int32_t i = 0; i < 65536; ++i) {
      uint8_t* const at = &rgb.at(3 * i, 0);
      at[0] = static_cast<uint8_t>(i), at[1] = static_cast<uint8_t>(i >> 8), at[2] = static_cast<uint8_t>(blue);
    }
    for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
      grayRow601(rgb.data(), gray.data(), 65536, isa);
      int32_t wrong = 0;
      for (int32_t i = 0; i < 65536; ++i) {
        wrong += gray.at(i, 0) != (299 * (i & 255) + 587 * (i >> 8) + 114 * blue + 500) / 1000;
      }
      ASSERT_EQ(wrong, 0) << "blue " << blue << " code " << isa;
    }
  }
}

template <class T>
struct GrayExports;
#define GRAY_EXPORTS(SUFFIX, T)                                          \
  template <>                                                            \
  struct GrayExports<T> {                                                \
    static constexpr auto rgb = DAXI_RGBToGray_##SUFFIX##_C3C1R;         \
    static constexpr auto bgr = DAXI_BGRToGray_##SUFFIX##_C3C1R;         \
    static constexpr auto weighted = DAXI_ColourToGray_##SUFFIX##_C3C1R; \
    static constexpr auto back = DAXI_GrayToRGB_##SUFFIX##_C1C3R;        \
  };
GRAY_EXPORTS(8u, uint8_t)
GRAY_EXPORTS(16u, uint16_t)
GRAY_EXPORTS(32f, float)
#undef GRAY_EXPORTS

// The real formula; integers rounded halves up.
template <class T>
T expectedGray(const T* rgb, const double (&weights)[3]) {
  const double sum = weights[0] * rgb[0] + weights[1] * rgb[1] + weights[2] * rgb[2];
  return static_cast<T>(std::is_integral_v<T> ? std::floor(sum + 0.5 + 1e-9) : sum);
}

template <class T>
class GrayOf : public testing::Test {};
using GrayTypes = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(GrayOf, GrayTypes);

TYPED_TEST(GrayOf, ExportsOverRaggedSizes) {
  using T = TypeParam;
  using Exports = GrayExports<T>;
  const double weights[2][3] = {{0.299, 0.587, 0.114}, {0.2126, 0.7152, 0.0722}};
  for (int32_t width = 1; width <= 50; ++width) {
    const DaxiSize size = {width, 1 + width % 3};
    TestImage<T> src({3 * width, size.height}, width % 4, kGuards[width % 2]), swapped(src.size());
    TestImage<T> dst(size, width % 3, kGuards[width % 2]), other(size), back(src.size(), width % 2);
    Random random(static_cast<uint64_t>(width));
    src.fill([&](int32_t, int32_t) { return random.below(sizeof(T) == 1 ? 256 : 65536); });
    swapped.fill([&](int32_t x, int32_t y) { return src.at(x - x % 3 + 2 - x % 3, y); });
    for (int32_t standard = 0; standard <= 1; ++standard) {
      dst.remember();
      ASSERT_EQ(Exports::rgb(src.data(), src.step(), dst.data(), dst.step(), size, standard), DAX_STS_OK);
      ASSERT_TRUE(dst.paddingUntouched());
      for (int32_t i = 0; i < width * size.height; ++i) {
        const int32_t x = i % width, y = i / width;
        const T expected = expectedGray(&src.at(3 * x, y), weights[standard]);
        ASSERT_NEAR(dst.at(x, y), expected, std::is_integral_v<T> ? 0 : 65535 * 2e-7) << x << ", " << y;
      }
      ASSERT_EQ(Exports::bgr(swapped.data(), swapped.step(), other.data(), other.step(), size, standard), DAX_STS_OK);
      ASSERT_TRUE(samePixels(dst, other));
    }
    const double own[3] = {0.25, -0.5, 1.5};
    ASSERT_EQ(Exports::weighted(src.data(), src.step(), dst.data(), dst.step(), size, own), DAX_STS_OK);
    for (int32_t x = 0; x < width; ++x) {
      const T* const at = &src.at(3 * x, 0);
      const double sum = 0.25 * at[0] - 0.5 * at[1] + 1.5 * at[2], most = sizeof(T) == 1 ? 255 : 65535;
      const double expected = std::is_integral_v<T> ? std::clamp(std::nearbyint(sum), 0.0, most) : sum;
      ASSERT_EQ(dst.at(x, 0), static_cast<T>(expected));
    }
    ASSERT_EQ(Exports::back(dst.data(), dst.step(), back.data(), back.step(), size), DAX_STS_OK);
    for (int32_t x = 0; x < 3 * width; ++x) ASSERT_EQ(back.at(x, 0), dst.at(x / 3, 0));
  }
}

}  // namespace
}  // namespace dax::test
