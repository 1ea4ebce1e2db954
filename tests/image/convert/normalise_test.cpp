#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "daxi/normalise.h"
#include "image/convert/normalise_neon.h"
#include "tests/image/convert/convert_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class From, class To>
using NormaliseFunction = DaxStatus (*)(const From*, int32_t, To*, int32_t, DaxiSize, const DaxiNormaliseCfg*);

// The finite pixels sorted; ranks from whole percent, by integers.
template <class T>
T levelOf(const TestImage<T>& src, int32_t percent) {
  std::vector<T> values;
  for (int32_t y = 0; y < src.size().height; ++y) {
    for (int32_t x = 0; x < src.size().width; ++x) {
      if (std::isfinite(static_cast<float>(src.at(x, y)))) values.push_back(src.at(x, y));
    }
  }
  std::sort(values.begin(), values.end());
  const size_t rank = (values.size() * static_cast<size_t>(percent) + 99) / 100;
  return values[std::max<size_t>(rank, 1) - 1];
}

template <class From, class To>
void expectNormalised(NormaliseFunction<From, To> normalise) {
  for (int32_t i = 0; i < 40; ++i) {
    const DaxiSize size = {1 + i * 5 % 43, 1 + i % 4};
    TestImage<From> src(size, i % 3);
    TestImage<To> dst(size, 2);
    src.randomize(static_cast<uint64_t>(i));
    if (i % 2) src.fill([&](int32_t x, int32_t y) { return static_cast<From>((x * x + y * 7) % 90 + 20); });
    if (i == 7) src.fill([](int32_t, int32_t) { return 9; });
    src.at(0, 0) = 50;  // one that is finite
    const int32_t low = i % 5 == 0 ? 0 : i, high = i % 5 == 0 ? 100 : 100 - i;
    const DaxiNormaliseCfg cfg = {low / 100.0, high / 100.0, i % 3 ? 0.0 : 200.0, 100.5};
    dst.remember();
    ASSERT_EQ(normalise(src.data(), src.step(), dst.data(), dst.step(), size, &cfg), DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    const auto lowest = static_cast<double>(levelOf(src, low)), highest = static_cast<double>(levelOf(src, high));
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) {
        const auto value = static_cast<double>(src.at(x, y));
        const double held = std::isnan(value) ? value : std::clamp(value, lowest, highest);
        const double range = lowest < highest ? highest - lowest : 1;
        const To expected = oracle::pixel<To>(cfg.outLow + (held - lowest) * (cfg.outHigh - cfg.outLow) / range);
        ASSERT_TRUE(dst.at(x, y) == expected || (std::isnan(value) && dst.at(x, y) != dst.at(x, y)))
            << i << ": " << x << ", " << y;
      }
    }
  }
}

// Every value between the ends, for ranges from the largest on, and for others: as in double precision.
template <class T>
void expectBytesOfWords() {
  constexpr int32_t kLowest = std::numeric_limits<T>::lowest(), kWords = 65536;
  TestImage<T> words({kWords, 1});
  words.fill([&](int32_t x, int32_t) { return static_cast<T>(kLowest + x); });
  TestImage<uint8_t> byVectors(words.size()), byPixels(words.size());
  Random random(1);
  for (int32_t i = 0; i < 200; ++i) {
    const int32_t range = i < 100 ? kWords - 1 - i : 1 + random.below(kWords - 1), first = random.below(kWords - range);
    const DaxiNormaliseCfg cfg = {0, 1, 0, i % 4 ? 255.0 : 1.0 + random.below(255)};
    const Stretch stretch(kLowest + first, kLowest + first + range, cfg);
    ASSERT_TRUE(stretch.singleIsExact());
    neon::stretchRow(words.data(), byVectors.data(), kWords, stretch);
    portable::stretchRow(words.data(), byPixels.data(), kWords, stretch);
    ASSERT_TRUE(samePixels(byVectors, byPixels)) << range;
  }
}

TEST(Normalise, BytesOfWords) {
  expectBytesOfWords<uint16_t>();
  expectBytesOfWords<int16_t>();
}

TEST(Normalise, AllTypes) {
  expectNormalised<uint8_t, uint8_t>(DAXI_Normalise_8u_C1R);
  expectNormalised<uint16_t, uint16_t>(DAXI_Normalise_16u_C1R);
  expectNormalised<int16_t, int16_t>(DAXI_Normalise_16s_C1R);
  expectNormalised<float, float>(DAXI_Normalise_32f_C1R);
  expectNormalised<uint8_t, float>(DAXI_Normalise_8u32f_C1R);
  expectNormalised<uint16_t, uint8_t>(DAXI_Normalise_16u8u_C1R);
  expectNormalised<uint16_t, float>(DAXI_Normalise_16u32f_C1R);
  expectNormalised<int16_t, uint8_t>(DAXI_Normalise_16s8u_C1R);
  expectNormalised<int16_t, float>(DAXI_Normalise_16s32f_C1R);
  expectNormalised<float, uint8_t>(DAXI_Normalise_32f8u_C1R);
}

// 0.07 of 100 values is 7 of them, though the product of the doubles is above 7.
TEST(Normalise, RankOfAProductThatIsRoundedUp) {
  TestImage<uint8_t> image({100, 1});
  image.fill([](int32_t x, int32_t) { return x; });
  const DaxiNormaliseCfg cfg = {0.07, 0.58, 0, 255};
  ASSERT_EQ(DAXI_Normalise_8u_C1IR(image.data(), 100, image.size(), &cfg), DAX_STS_OK);
  EXPECT_EQ(image.at(6, 0), 0);
  EXPECT_EQ(image.at(7, 0), 5);
  EXPECT_EQ(image.at(57, 0), 255);
  EXPECT_EQ(image.at(56, 0), 250);
}

TEST(Normalise, NoFinitePixel) {
  float image[2] = {NAN, INFINITY};
  const DaxiNormaliseCfg cfg = {0, 1, 0, 255};
  EXPECT_EQ(DAXI_Normalise_32f_C1IR(image, 2, {2, 1}, &cfg), DAX_STS_DEGENERATE);
  EXPECT_EQ(image[1], INFINITY);
}

}  // namespace
}  // namespace dax::test
