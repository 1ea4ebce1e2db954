#include "daxi/bayer.h"

#include <gtest/gtest.h>

#include "daxi/gray.h"
#include "image/camera/bayer_neon.h"
#include "image/camera/bayer_portable.h"
#include "tests/image/camera/bayer_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct BayerExports;
#define BAYER_EXPORTS(SUFFIX, T)                                                                                   \
  template <>                                                                                                      \
  struct BayerExports<T> {                                                                                         \
    static constexpr decltype(&DAXI_BayerMHC_##SUFFIX##_C1C3R) colour[2] = {DAXI_BayerBilinear_##SUFFIX##_C1C3R,   \
                                                                            DAXI_BayerMHC_##SUFFIX##_C1C3R};       \
    static constexpr decltype(&DAXI_BayerMHC_##SUFFIX##_C1C3R_MT) pooled[4] = {                                    \
        DAXI_BayerBilinear_##SUFFIX##_C1C3R_MT, DAXI_BayerMHC_##SUFFIX##_C1C3R_MT,                                 \
        DAXI_BayerBilinearToGray_##SUFFIX##_C1R_MT, DAXI_BayerMHCToGray_##SUFFIX##_C1R_MT};                        \
    static constexpr decltype(&DAXI_BayerMHC_##SUFFIX##_C1C3R) gray[2] = {DAXI_BayerBilinearToGray_##SUFFIX##_C1R, \
                                                                          DAXI_BayerMHCToGray_##SUFFIX##_C1R};     \
    static constexpr auto fromRgb = DAXI_RGBToGray_##SUFFIX##_C3C1R;                                               \
  };
BAYER_EXPORTS(8u, uint8_t)
BAYER_EXPORTS(16u, uint16_t)
#undef BAYER_EXPORTS

template <class T>
class Bayer : public testing::Test {};
using BayerTypes = testing::Types<uint8_t, uint16_t>;
TYPED_TEST_SUITE(Bayer, BayerTypes);

template <class T>
int32_t expectedBayer(bool mhc, const TestImage<T>& src, int32_t phase, int32_t x, int32_t y, int32_t c) {
  const auto at = [&](int32_t i, int32_t j) { return int32_t{src.at(i, j)}; };
  const auto [width, height] = src.size();
  return mhc ? oracle::mhcBayer<T>(at, width, height, phase, x, y, c)
             : oracle::bilinearBayer(at, width, height, phase, x, y, c);
}

// From 2 x 2 on, with odd sides; extreme levels, which saturate; grey as from the colours; tiles in any order.
TYPED_TEST(Bayer, OverRaggedSizesAndPhases) {
  using T = TypeParam;
  using Exports = BayerExports<T>;
  MockPool pool;
  for (int32_t i = 0; i < 4 * 70; ++i) {
    const int32_t phase = i % 4, width = 2 + i / 4;
    const DaxiSize size = {width, 2 + i % 7}, wide = {3 * width, size.height};
    TestImage<T> src(size, i % 3, kGuards[i % 2]), dst(wide, i % 5, kGuards[i % 2]), gray(size), expected(size);
    src.randomize(static_cast<uint64_t>(i));
    if (i % 2) src.fill([&](int32_t x, int32_t y) { return src.at(x, y) % 2 ? static_cast<T>(-1) : 0; });
    for (const bool mhc : {false, true}) {
      dst.remember();
      ASSERT_EQ(Exports::colour[mhc](src.data(), src.step(), dst.data(), dst.step(), size, phase), DAX_STS_OK);
      ASSERT_TRUE(dst.paddingUntouched());
      for (int32_t k = 0; k < wide.width * wide.height; ++k) {
        const int32_t x = k % wide.width, y = k / wide.width;
        ASSERT_EQ(dst.at(x, y), expectedBayer(mhc, src, phase, x / 3, y, x % 3))
            << (mhc ? "MHC " : "bilinear ") << size.width << " x " << size.height << ", phase " << phase << " at "
            << x / 3 << ", " << y;
      }
      ASSERT_EQ(Exports::fromRgb(dst.data(), dst.step(), expected.data(), expected.step(), size, 0), DAX_STS_OK);
      ASSERT_EQ(Exports::gray[mhc](src.data(), src.step(), gray.data(), gray.step(), size, phase), DAX_STS_OK);
      ASSERT_TRUE(samePixels(gray, expected));
      TestImage<T> pooled(wide), pooledGray(size);
      ASSERT_EQ(Exports::pooled[mhc](&pool, 3, src.data(), src.step(), pooled.data(), pooled.step(), size, phase),
                DAX_STS_OK);
      ASSERT_EQ(
          Exports::pooled[2 + mhc](&pool, 3, src.data(), src.step(), pooledGray.data(), pooledGray.step(), size, phase),
          DAX_STS_OK);
      ASSERT_TRUE(samePixels(pooled, dst) && samePixels(pooledGray, gray));
    }
  }
}

// Parts of rows from any column to any other, wider than the small array of the grey forms, by both twins.
TYPED_TEST(Bayer, PartsOfRows) {
  using T = TypeParam;
  TestImage<T> src({1100, 5}), whole({3 * 1100, 1}), part({3 * 1100, 1});
  src.randomize(4);
  const T* const rows[5] = {src.row(0), src.row(1), src.row(2), src.row(3), src.row(4)};
  const auto compare = [&](auto method) {
    using Method = decltype(method);
    for (int32_t phase = 0; phase < 4; ++phase) {
      const BayerRow row(phase, 2);
      portable::bayerRow<Method>(rows, row, 1100, 0, 1100, whole.data());
      for (int32_t first = 0; first < 1100; first += 101) {
        const int32_t end = std::min(first + 97 + first % 13, 1100);
        neon::bayerRow<Method>(rows, row, 1100, first, end, part.data());
        ASSERT_TRUE(std::equal(part.data(), part.data() + 3 * (end - first), whole.data() + 3 * first));
      }
    }
  };
  compare(BayerBilinear{}), compare(BayerMhc{});
}

// Mosaics of linear ramps give the ramps inside.
TEST(BayerRamps, AreReproduced) {
  for (int32_t phase = 0; phase < 4; ++phase) {
    TestImage<uint16_t> src({40, 30}), dst({120, 30});
    const auto ramp = [](int32_t x, int32_t y, int32_t c) { return 1000 + 16 * x * (c + 1) + 32 * y * (3 - c); };
    src.fill([&](int32_t x, int32_t y) { return ramp(x, y, oracle::bayerColour(phase, x, y)); });
    DAXI_BayerBilinear_16u_C1C3R(src.data(), src.step(), dst.data(), dst.step(), src.size(), phase);
    for (int32_t y = 1; y < 29; ++y) {
      for (int32_t x = 3; x < 117; ++x) ASSERT_EQ(dst.at(x, y), ramp(x / 3, y, x % 3)) << phase;
    }
  }
}

TEST(BayerPhase, OfAPartIsThatOfItsCorner) {
  for (int32_t i = 0; i < 64; ++i) {
    const int32_t phase = i % 4, x = i / 4 % 4 - 2, y = i / 16 - 2;
    int32_t at = -1;
    ASSERT_EQ(DAXI_BayerPhaseAt(phase, x, y, &at), DAX_STS_OK);
    ASSERT_EQ(oracle::bayerColour(at, 0, 0), oracle::bayerColour(phase, x & 1, y & 1));
    ASSERT_EQ(oracle::bayerColour(at, 1, 0), oracle::bayerColour(phase, (x & 1) + 1, y & 1));
  }
}

}  // namespace
}  // namespace dax::test
