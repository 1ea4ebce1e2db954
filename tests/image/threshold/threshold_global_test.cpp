#include "daxi/threshold_global.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
using ByLevel = DaxStatus (*)(const T*, int32_t, uint8_t*, int32_t, DaxiSize, const DaxiThresholdGlobalCfg*,
                              DaxiHistLevel*, void*);
using Level = DaxStatus (*)(const uint64_t*, int32_t, const DaxiHistLevelCfg*, DaxiHistLevel*);

template <class T>
struct Result {
  TestImage<uint8_t> mask;
  DaxiHistLevel level{};

  Result(ByLevel<T> method, const TestImage<T>& src, int32_t polarity, int32_t classes = 2) : mask(src.size(), 3) {
    const DaxiThresholdGlobalCfg cfg = {{classes, 0, 0.3}, polarity, 0};
    uint64_t bytes = 0;
    const auto query = sizeof(T) == 1 ? DAXI_ThresholdOtsuMultiBufferSize_8u : DAXI_ThresholdOtsuMultiBufferSize_16u;
    EXPECT_EQ(query(&bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    mask.remember();
    EXPECT_EQ(method(src.data(), src.step(), mask.data(), mask.step(), src.size(), &cfg, &level, buffer.data()),
              DAX_STS_OK);
    EXPECT_TRUE(mask.paddingUntouched());
  }
};

// The exported functions use the level of their names, and the mask is what lies above it.
template <class T>
void checkMethods(std::vector<std::pair<ByLevel<T>, Level>> methods) {
  TestImage<T> src({61, 47}, 2);
  Random random(4);
  src.fill([&](int32_t x, int32_t y) { return (x / 9 + y / 7) % 3 ? 20 + random.below(60) : 150 + random.below(90); });
  std::vector<uint64_t> hist(size_t{1} << (8 * sizeof(T)));
  for (int32_t y = 0; y < 47; ++y) {
    for (int32_t x = 0; x < 61; ++x) ++hist[src.at(x, y)];
  }
  for (const auto& [method, level] : methods) {
    const DaxiHistLevelCfg cfg = {2, 0, 0.3};
    DaxiHistLevel expected{};
    ASSERT_EQ(level(hist.data(), static_cast<int32_t>(hist.size()), &cfg, &expected), DAX_STS_OK);
    const Result<T> bright(method, src, DAXI_POLARITY_BRIGHT), dark(method, src, DAXI_POLARITY_DARK);
    ASSERT_EQ(bright.level.level[0], expected.level[0]);
    ASSERT_EQ(dark.level.flags, expected.flags | DAXI_HIST_LEVEL_DARK);
    for (int32_t y = 0; y < 47; ++y) {
      for (int32_t x = 0; x < 61; ++x) {
        ASSERT_EQ(bright.mask.at(x, y), src.at(x, y) > expected.level[0] ? 255 : 0);
        ASSERT_EQ(dark.mask.at(x, y), 255 - bright.mask.at(x, y));
      }
    }
  }
}

TEST(ThresholdGlobal, MasksByTheLevelOfItsName) {
  checkMethods<uint8_t>({{DAXI_ThresholdKapur_8u_C1R, DAXI_HistLevel_Kapur},
                         {DAXI_ThresholdYen_8u_C1R, DAXI_HistLevel_Yen},
                         {DAXI_ThresholdLi_8u_C1R, DAXI_HistLevel_Li},
                         {DAXI_ThresholdKittler_8u_C1R, DAXI_HistLevel_Kittler},
                         {DAXI_ThresholdIsodata_8u_C1R, DAXI_HistLevel_Isodata},
                         {DAXI_ThresholdIntermodes_8u_C1R, DAXI_HistLevel_Intermodes},
                         {DAXI_ThresholdTriangle_8u_C1R, DAXI_HistLevel_Triangle},
                         {DAXI_ThresholdPercentile_8u_C1R, DAXI_HistLevel_Percentile},
                         {DAXI_ThresholdOtsuMulti_8u_C1R, DAXI_HistLevel_Otsu}});
  checkMethods<uint16_t>({{DAXI_ThresholdKapur_16u_C1R, DAXI_HistLevel_Kapur},
                          {DAXI_ThresholdTriangle_16u_C1R, DAXI_HistLevel_Triangle},
                          {DAXI_ThresholdIntermodes_16u_C1R, DAXI_HistLevel_Intermodes},
                          {DAXI_ThresholdOtsu_16u_C1R, DAXI_HistLevel_Otsu}});
}

TEST(ThresholdGlobal, ClassesBecomeEvenGreys) {
  TestImage<uint16_t> src({40, 4});
  src.fill([](int32_t x, int32_t) { return 1000 * (x / 10); });
  const Result<uint16_t> four(DAXI_ThresholdOtsuMulti_16u_C1R, src, DAXI_POLARITY_BRIGHT, 4);
  const Result<uint16_t> dark(DAXI_ThresholdOtsuMulti_16u_C1R, src, DAXI_POLARITY_DARK, 3);
  for (int32_t x = 0; x < 40; ++x) ASSERT_EQ(four.mask.at(x, 2), 85 * (x / 10));
  EXPECT_EQ(dark.mask.at(0, 0), 255);
  EXPECT_EQ(dark.mask.at(39, 3), 0);
}

// Objects are what does not surround the picture; an even frame counts as dark ground.
TEST(ThresholdGlobal, PolarityFromTheFrame) {
  for (const bool isDark : {false, true}) {
    TestImage<uint8_t> src({30, 20});
    const auto isInside = [](int32_t x, int32_t y) { return x > 4 && x < 25 && y > 3 && y < 16; };
    src.fill([&](int32_t x, int32_t y) { return isInside(x, y) == isDark ? 40 + y % 2 : 200 - x % 2; });
    const Result<uint8_t> result(DAXI_ThresholdOtsuMulti_8u_C1R, src, DAXI_POLARITY_AUTO);
    EXPECT_EQ((result.level.flags & DAXI_HIST_LEVEL_DARK) != 0, isDark);
    for (int32_t y = 0; y < 20; ++y) {
      for (int32_t x = 0; x < 30; ++x) ASSERT_EQ(result.mask.at(x, y) != 0, isInside(x, y));
    }
  }
  // Of four classes the brightest has most of the frame, though the mean of the classes is their middle.
  TestImage<uint8_t> four({14, 1});
  four.fill([](int32_t x, int32_t) { return x < 4 ? 10 : x < 8 ? 80 : x < 9 ? 150 : 220; });
  EXPECT_EQ(Result<uint8_t>(DAXI_ThresholdOtsuMulti_8u_C1R, four, DAXI_POLARITY_AUTO, 4).level.flags,
            uint32_t{DAXI_HIST_LEVEL_DARK});
  TestImage<uint8_t> even({2, 1});
  even.fill([](int32_t x, int32_t) { return 100 * x; });
  EXPECT_EQ(Result<uint8_t>(DAXI_ThresholdOtsuMulti_8u_C1R, even, DAXI_POLARITY_AUTO).level.flags, 0u);
}

}  // namespace
}  // namespace dax::test
