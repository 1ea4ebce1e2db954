#include <gtest/gtest.h>

#include <vector>

#include "daxi/channels.h"
#include "image/convert/channels.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Exports;
#define EXPORTS(SUFFIX, T)                                                                                          \
  template <>                                                                                                       \
  struct Exports<T> {                                                                                               \
    static constexpr auto split3 = DAXI_Split_##SUFFIX##_C3P3R, split4 = DAXI_Split_##SUFFIX##_C4P4R;               \
    static constexpr auto merge3 = DAXI_Merge_##SUFFIX##_P3C3R, merge4 = DAXI_Merge_##SUFFIX##_P4C4R;               \
    static constexpr auto pick3 = DAXI_PickChannel_##SUFFIX##_C3C1R, pick4 = DAXI_PickChannel_##SUFFIX##_C4C1R;     \
    static constexpr auto swap33 = DAXI_SwapChannels_##SUFFIX##_C3R, swap44 = DAXI_SwapChannels_##SUFFIX##_C4R;     \
    static constexpr auto swap34 = DAXI_SwapChannels_##SUFFIX##_C3C4R, swap43 = DAXI_SwapChannels_##SUFFIX##_C4C3R; \
    static constexpr auto in3 = DAXI_SwapChannels_##SUFFIX##_C3IR, in4 = DAXI_SwapChannels_##SUFFIX##_C4IR;         \
  }
EXPORTS(8u, uint8_t);
EXPORTS(16u, uint16_t);
EXPORTS(16s, int16_t);
EXPORTS(32f, float);

template <class T>
class Channels : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Channels, PixelTypes);

// Apart, each channel alone, and together again, in rows with gaps that end at a page which faults.
TYPED_TEST(Channels, SplitPickMerge) {
  using T = TypeParam;
  for (const int32_t channels : {3, 4}) {
    for (int32_t width = 1; width <= 70; ++width) {
      const DaxiSize size = {width, 1 + width % 3};
      TestImage<T> src({width * channels, size.height}, width % 3, kGuards[width % 2]), merged(src.size(), 2);
      std::vector<TestImage<T>> planes;
      T* written[4] = {};
      const T* read[4] = {};
      for (int32_t c = 0; c < channels; ++c) planes.emplace_back(size, 3);
      for (size_t c = 0; c < planes.size(); ++c) read[c] = written[c] = planes[c].data(), planes[c].remember();
      src.randomize(static_cast<uint64_t>(width));
      ASSERT_EQ((channels == 3 ? Exports<T>::split3 : Exports<T>::split4)(src.data(), src.step(), written,
                                                                          planes[0].step(), size),
                DAX_STS_OK);
      for (int32_t c = 0; c < channels; ++c) {
        const TestImage<T>& plane = planes[static_cast<size_t>(c)];
        ASSERT_TRUE(plane.paddingUntouched());
        for (int32_t y = 0; y < size.height; ++y) {
          for (int32_t x = 0; x < width; ++x)
            ASSERT_TRUE(sameBits(plane.at(x, y), src.at(x * channels + c, y))) << x << " of " << width;
        }
        TestImage<T> picked(size, 1);
        picked.remember();
        ASSERT_EQ((channels == 3 ? Exports<T>::pick3 : Exports<T>::pick4)(src.data(), src.step(), picked.data(),
                                                                          picked.step(), size, c),
                  DAX_STS_OK);
        ASSERT_TRUE(samePixels(picked, plane) && picked.paddingUntouched());
      }
      merged.remember();
      ASSERT_EQ((channels == 3 ? Exports<T>::merge3 : Exports<T>::merge4)(read, planes[0].step(), merged.data(),
                                                                          merged.step(), size),
                DAX_STS_OK);
      ASSERT_TRUE(samePixels(merged, src) && merged.paddingUntouched());
    }
  }
}

template <class T, int kFrom, int kTo, class Swap>
void expectSwapped(Swap swap, const int32_t* order) {
  for (int32_t width = 1; width <= 40; ++width) {
    const DaxiSize size = {width, 1 + width % 3};
    TestImage<T> src({width * kFrom, size.height}, width % 3, kGuards[width % 2]), dst({width * kTo, size.height}, 2),
        value({1, 1});
    src.randomize(static_cast<uint64_t>(width)), value.randomize(3);
    dst.remember();
    ASSERT_EQ(swap(src.data(), src.step(), dst.data(), dst.step(), size, order, value.at(0, 0)), DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    TestImage<T> portable(dst.size(), 2);
    for (int32_t y = 0; y < size.height; ++y) {
      swapChannelsRow<T, kFrom, kTo>(src.row(y), portable.row(y), width, order, value.at(0, 0), DAX_ISA_PORTABLE);
      for (int32_t i = 0; i < width * kTo; ++i) {
        const int32_t channel = order[i % kTo];
        ASSERT_TRUE(sameBits(dst.at(i, y), channel < 0 ? value.at(0, 0) : src.at(i / kTo * kFrom + channel, y))) << i;
      }
    }
    ASSERT_TRUE(samePixels(portable, dst));
  }
}

// All orders, of three of four channels too, with constants and repeats.
TYPED_TEST(Channels, Swap) {
  using T = TypeParam;
  for (int32_t i = 0; i < 625; ++i) {
    const int32_t order[4] = {i % 5 - 1, i / 5 % 5 - 1, i / 25 % 5 - 1, i / 125 - 1};
    const bool isOfThree = std::all_of(order, order + 4, [](int32_t channel) { return channel < 3; });
    if (isOfThree && i % 7 == 0) expectSwapped<T, 3, 3>(Exports<T>::swap33, order);
    if (isOfThree && i % 7 == 0) expectSwapped<T, 3, 4>(Exports<T>::swap34, order);
    if (i % 11 == 0) expectSwapped<T, 4, 3>(Exports<T>::swap43, order);
    if (i % 11 == 0) expectSwapped<T, 4, 4>(Exports<T>::swap44, order);
  }
}

TYPED_TEST(Channels, SwapInPlace) {
  using T = TypeParam;
  const int32_t order[4] = {2, 0, -1, 1};
  for (const int32_t channels : {3, 4}) {
    const DaxiSize size = {37, 2};
    TestImage<T> both({37 * channels, 2}, 1), dst(both.size());
    both.randomize(5);
    ASSERT_EQ((channels == 3 ? Exports<T>::swap33 : Exports<T>::swap44)(both.data(), both.step(), dst.data(),
                                                                        dst.step(), size, order, T{9}),
              DAX_STS_OK);
    ASSERT_EQ((channels == 3 ? Exports<T>::in3 : Exports<T>::in4)(both.data(), both.step(), size, order, T{9}),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(both, dst));
  }
}

}  // namespace
}  // namespace dax::test
