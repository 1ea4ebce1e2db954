// Extremes with their places, and pixels within limits, in both twins.
#include "daxi/extremes.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "image/statistics/extremes.h"
#include "tests/image/statistics/statistics_oracle.h"

namespace dax::test {
namespace {

template <class T>
class MinMax : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(MinMax, PixelTypes);

// The place of the first pixel that no other one is before.
template <class T, class Before>
DaxiPoint32s firstPlace(const TestImage<T>& image, const TestImage<uint8_t>* mask, int32_t channels, int32_t channel,
                        Before before) {
  DaxiPoint32s best = {-1, -1};
  for (int32_t y = 0; y < image.size().height; ++y) {
    for (int32_t x = 0; x < image.size().width / channels; ++x) {
      const T value = image.at(x * channels + channel, y);
      if (value != value || (mask && mask->at(x, y) == 0)) continue;
      if (best.x < 0 || before(value, image.at(best.x * channels + channel, best.y))) best = {x, y};
    }
  }
  return best;
}

template <int32_t kChannels, class T>
void checkMinMax(const TestImage<T>& image, const TestImage<uint8_t>* mask) {
  const DaxiSize size = {image.size().width / kChannels, image.size().height};
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    T min[kChannels], max[kChannels];
    DaxiPoint32s minAt[kChannels], maxAt[kChannels];
    const DaxStatus status = findMinMax<kChannels>(image.data(), image.step(), mask ? mask->data() : nullptr,
                                                   mask ? mask->step() : 0, size, min, max, minAt, maxAt, isa);
    DaxStatus expected = DAX_STS_OK;
    for (int32_t c = 0; c < kChannels; ++c) {
      if (firstPlace(image, mask, kChannels, c, std::less<T>()).x < 0) expected = DAX_STS_DEGENERATE;
    }
    ASSERT_EQ(status, expected);
    for (int32_t c = 0; c < kChannels && status == DAX_STS_OK; ++c) {
      const DaxiPoint32s least = firstPlace(image, mask, kChannels, c, std::less<T>());
      const DaxiPoint32s greatest = firstPlace(image, mask, kChannels, c, std::greater<T>());
      ASSERT_TRUE(sameBits(minAt[c], least)) << size.width << " code " << isa;
      ASSERT_TRUE(sameBits(maxAt[c], greatest)) << size.width << " code " << isa;
      ASSERT_TRUE(sameBits(min[c], image.at(least.x * kChannels + c, least.y)));
      ASSERT_TRUE(sameBits(max[c], image.at(greatest.x * kChannels + c, greatest.y)));
    }
  }
}

TYPED_TEST(MinMax, RaggedSizesChannelsAndMasks) {
  using T = TypeParam;
  for (int32_t width = 1; width <= 140; ++width) {
    const DaxiSize size = {width, 1 + width % 4};
    TestImage<T> grey(size, width % 3, kGuards[width % 2]), colour({3 * width, size.height}, width % 2);
    TestImage<uint8_t> mask(size);
    Random random(static_cast<uint64_t>(width));
    const auto few = [&](int32_t, int32_t) { return static_cast<T>(40 + random.below(20)); };  // so that values tie
    if (width % 2) {
      grey.fill(few), colour.fill(few);
    } else {
      grey.randomize(random.next()), colour.randomize(random.next());  // NaN and infinities too
    }
    mask.fill([&](int32_t, int32_t) { return random.below(3) == 0; });
    checkMinMax<1>(grey, nullptr);
    checkMinMax<1>(grey, &mask);
    checkMinMax<3>(colour, nullptr);
    checkMinMax<3>(colour, &mask);
  }
}

// An extreme in any place of a wide row.
TYPED_TEST(MinMax, EveryPlace) {
  using T = TypeParam;
  TestImage<T> image({150, 1});
  for (int32_t at = 0; at < 150; ++at) {
    for (const T value : {std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()}) {
      image.fill([&](int32_t x, int32_t) { return x == at ? value : T{100}; });
      checkMinMax<1>(image, nullptr);
    }
  }
}

TYPED_TEST(MinMax, CountInRange) {
  using T = TypeParam;
  TestImage<T> image({9001, 2}, 5);
  TestImage<uint8_t> mask(image.size());
  image.randomize(3), mask.randomize(4);
  const T lowest = std::numeric_limits<T>::lowest(), highest = std::numeric_limits<T>::max();
  for (const auto& [low, high] : {std::pair<T, T>(lowest, highest), {20, 100}, {100, 20}, {77, 77}, {lowest, 60}}) {
    for (const TestImage<uint8_t>* const chosen : {static_cast<TestImage<uint8_t>*>(nullptr), &mask}) {
      const auto pixels = oracle::chosenPixels(image, chosen);
      const auto expected = std::count_if(pixels.begin(), pixels.end(), [&](T x) { return x >= low && x <= high; });
      for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
        EXPECT_EQ(countInRange(image.data(), image.step(), chosen ? mask.data() : nullptr, mask.step(), image.size(),
                               low, high, isa),
                  static_cast<uint64_t>(expected));
      }
    }
  }
}

TEST(MinMaxOfFloats, NanInEveryLaneIsPassedOver) {
  TestImage<float> image({37, 2});
  for (const float other : {5.0f, INFINITY, -INFINITY}) {
    for (int32_t at = 0; at < 37; ++at) {
      image.fill([&](int32_t x, int32_t y) { return x == at && y == 1 ? other : NAN; });
      checkMinMax<1>(image, nullptr);
      image.fill([&](int32_t x, int32_t y) { return x == at && y == 1 ? NAN : other; });
      checkMinMax<1>(image, nullptr);
    }
  }
  image.fill([&](int32_t, int32_t) { return NAN; });
  float min = 7, max = 8;
  DaxiPoint32s at = {3, 4};
  EXPECT_EQ(DAXI_MinMax_32f_C1R(image.data(), 37, {37, 2}, &min, &max, &at, nullptr), DAX_STS_DEGENERATE);
  EXPECT_TRUE(min == 7 && max == 8 && at.x == 3 && at.y == 4);
}

}  // namespace
}  // namespace dax::test
