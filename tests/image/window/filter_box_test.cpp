#include "image/window/filter_box.h"

#include <gtest/gtest.h>

#include "daxi/filter_box.h"
#include "tests/image/window/filter_box_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T, class Sum>
struct Types {
  using Pixel = T;
  using SumType = Sum;
};

template <class>
class Box : public testing::Test {};
using Members =
    testing::Types<Types<uint8_t, uint32_t>, Types<int16_t, float>, Types<uint32_t, uint32_t>, Types<float, float>>;
TYPED_TEST_SUITE(Box, Members);

// What must come out, bit for bit.
template <class T, class Sum>
std::vector<Sum> expectedSums(const TestImage<T>& src, int32_t radius) {
  const auto [w, h] = src.size();
  const auto pixel = [&](int32_t x, int32_t y) { return src.at(x, y); };
  if constexpr (std::is_same_v<Sum, float>) {
    return oracle::box<float>(pixel, radius, w, h, oracle::runningWindows);
  } else {
    return oracle::box<uint32_t>(pixel, radius, w, h, oracle::clippedWindows);
  }
}

template <class Sum>
::testing::AssertionResult holds(const TestImage<Sum>& image, const std::vector<Sum>& expected) {
  for (size_t i = 0; i < expected.size(); ++i) {
    const auto w = static_cast<size_t>(image.size().width);
    const Sum got = image.at(static_cast<int32_t>(i % w), static_cast<int32_t>(i / w));
    if (!sameBits(got, expected[i])) {
      return ::testing::AssertionFailure() << got << " for " << expected[i] << " at " << i % w << ", " << i / w;
    }
  }
  return ::testing::AssertionSuccess();
}

// Pixels of every magnitude; floats of both signs and zeros of both signs, but neither infinities nor NaNs.
template <class T>
void fillWithNoise(TestImage<T>& image, uint64_t seed) {
  image.randomize(seed);
  if constexpr (std::is_same_v<T, float>) {
    Random random(seed);
    image.fill([&](int32_t, int32_t) {
      return static_cast<float>(random.below(2001) - 1000) * (random.below(2) ? 0.001f : 0.7f);
    });
    image.at(0, 0) = -0.0f;
  }
}

template <class T, class Sum>
void checkBox(DaxiSize size, int32_t radius, Guard guard) {
  TestImage<T> src(size, radius % 3, guard);
  fillWithNoise(src, static_cast<uint64_t>(size.width * 100 + radius));
  const std::vector<Sum> expected = expectedSums<T, Sum>(src, radius);
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_FilterBoxBufferSize_8u32s(size, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes, guard);
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    SCOPED_TRACE(testing::Message() << size.width << " x " << size.height << " r " << radius << " code " << isa);
    TestImage<Sum> dst(size, 2, guard);
    dst.remember();
    filterBox(src.data(), src.step(), dst.data(), dst.step(), size, radius, buffer.data(), isa);
    ASSERT_TRUE(holds(dst, expected));
    ASSERT_TRUE(dst.paddingUntouched());
    if constexpr (std::is_same_v<T, Sum>) {
      dst.fill([&](int32_t x, int32_t y) { return src.at(x, y); });
      filterBox(dst.data(), dst.step(), dst.data(), dst.step(), size, radius, buffer.data(), isa);
      ASSERT_TRUE(holds(dst, expected)) << "in place";
    }
  }
}

TYPED_TEST(Box, EverySmallSizeAndRadius) {
  for (int32_t w = 3; w <= 12; ++w) {
    for (int32_t h = 3; h <= 12; ++h) {
      for (int32_t radius = 1; 2 * radius < std::min(w, h); ++radius) {
        checkBox<typename TypeParam::Pixel, typename TypeParam::SumType>({w, h}, radius, kGuards[(w + h) % 2]);
      }
    }
  }
}

// Rows of several blocks, strips of many columns and of one, either way of the column pass, windows as large as the
// image.
TYPED_TEST(Box, LargerSizes) {
  const std::pair<DaxiSize, int32_t> cases[] = {{{67, 40}, 1},  {{67, 40}, 5},    {{40, 67}, 19},  {{130, 61}, 9},
                                                {{61, 61}, 30}, {{300, 90}, 3},   {{333, 75}, 37}, {{20, 400}, 9},
                                                {{64, 200}, 2}, {{301, 281}, 139}};
  for (const auto& [size, radius] : cases) {
    checkBox<typename TypeParam::Pixel, typename TypeParam::SumType>(size, radius, kGuards[size.width % 2]);
  }
}

// Columns of up to 257 bytes of 255 fit 16 bits.
TEST(BoxExports, WhiteColumnsOfBytes) {
  for (const int32_t radius : {128, 129}) {
    const DaxiSize size{259, 261};
    TestImage<uint8_t> src(size);
    src.fill([](int32_t, int32_t) { return 255; });
    TestImage<int32_t> dst(size);
    std::vector<uint8_t> buffer(1 << 22);
    ASSERT_EQ(DAXI_FilterBox_8u32s_C1R(src.data(), 259, dst.data(), 259, size, radius, buffer.data()), DAX_STS_OK);
    EXPECT_EQ(dst.at(129, 130), 255 * (2 * radius + 1) * (2 * radius + 1));
    EXPECT_EQ(dst.at(0, 0), 255 * (radius + 1) * (radius + 1));
  }
}

TEST(BoxExports, SumsOfOnesAndWrappedSums) {
  uint8_t buffer[128];
  float ones[25], sums[25];
  std::fill_n(ones, 25, 1.0f);
  ASSERT_EQ(DAXI_FilterBox_32f_C1R(ones, 5, sums, 5, {5, 5}, 1, buffer), DAX_STS_OK);
  EXPECT_EQ(sums[0], 4);
  EXPECT_EQ(sums[2], 6);
  EXPECT_EQ(sums[12], 9);
  ASSERT_EQ(DAXI_FilterBox_32f_C1IR(ones, 5, {5, 5}, 1, buffer), DAX_STS_OK);
  EXPECT_TRUE(std::equal(ones, ones + 25, sums));

  int32_t large[9], wrapped[9];
  std::fill_n(large, 9, INT32_MIN + 7);
  ASSERT_EQ(DAXI_FilterBox_32s_C1R(large, 3, wrapped, 3, {3, 3}, 1, buffer), DAX_STS_OK);
  EXPECT_EQ(wrapped[4], INT32_MIN + 63);
  EXPECT_EQ(wrapped[0], 28);
  ASSERT_EQ(DAXI_FilterBox_32s_C1IR(large, 3, {3, 3}, 1, buffer), DAX_STS_OK);
  EXPECT_TRUE(std::equal(large, large + 9, wrapped));

  const uint8_t bytes[9] = {1, 2, 3, 4, 5, 6, 7, 8, 255};
  ASSERT_EQ(DAXI_FilterBox_8u32s_C1R(bytes, 3, wrapped, 3, {3, 3}, 1, buffer), DAX_STS_OK);
  EXPECT_EQ(wrapped[4], 291);
  const int16_t shorts[9] = {-1, -2, -3, -4, -5, -6, -7, -8, -32768};
  ASSERT_EQ(DAXI_FilterBox_16s32f_C1R(shorts, 3, sums, 3, {3, 3}, 1, buffer), DAX_STS_OK);
  EXPECT_EQ(sums[4], -32804);
}

TEST(BoxChecks, BufferSize) {
  uint64_t bytes = 5;
  for (auto* const query : {DAXI_FilterBoxBufferSize_8u32s, DAXI_FilterBoxBufferSize_16s32f,
                            DAXI_FilterBoxBufferSize_32s, DAXI_FilterBoxBufferSize_32f}) {
    EXPECT_EQ(query({3, 33}, &bytes), DAX_STS_OK);
    EXPECT_EQ(bytes, 256u);
    EXPECT_EQ(query({INT32_MAX, 1}, &bytes), DAX_STS_OK);
    EXPECT_EQ(bytes, uint64_t{1} << 33);
  }
}

}  // namespace
}  // namespace dax::test
