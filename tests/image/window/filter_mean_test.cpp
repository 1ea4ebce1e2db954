#include "image/window/filter_mean.h"

#include <gtest/gtest.h>

#include <limits>

#include "daxi/filter_mean.h"
#include "image/window/filter_mean_int.h"
#include "tests/image/window/filter_mean_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using SizeQuery = DaxStatus (*)(DaxiSize, uint64_t*);
template <class T>
using Export = DaxStatus (*)(const T*, int32_t, T*, int32_t, DaxiSize, DaxiSize, void*);

template <class T>
struct Members;
#define DAX_MEMBERS(SUFFIX, T)                                                   \
  template <>                                                                    \
  struct Members<T> {                                                            \
    static constexpr SizeQuery bytes = DAXI_FilterMeanBufferSize_##SUFFIX;       \
    static constexpr SizeQuery intBytes = DAXI_FilterMeanIntBufferSize_##SUFFIX; \
    static constexpr Export<T> mean = DAXI_FilterMean_##SUFFIX##_C1R;            \
    static constexpr Export<T> meanInt = DAXI_FilterMeanInt_##SUFFIX##_C1R;      \
  };
DAX_MEMBERS(8u, uint8_t)
DAX_MEMBERS(16u, uint16_t)
DAX_MEMBERS(16s, int16_t)
DAX_MEMBERS(32f, float)
DAX_MEMBERS(64f, double)
#undef DAX_MEMBERS

template <class T>
class Mean : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t, int16_t, float, double>;
TYPED_TEST_SUITE(Mean, PixelTypes);

uint64_t bytesOf(SizeQuery query, DaxiSize size) {
  uint64_t bytes = 0;
  EXPECT_EQ(query(size, &bytes), DAX_STS_OK);
  return bytes;
}

// Integers of every value; floats of both signs and of several magnitudes, finite.
template <class T>
TestImage<T> noise(DaxiSize size, Guard guard, int32_t padding = 0) {
  TestImage<T> image(size, padding, guard);
  image.randomize(static_cast<uint64_t>(size.width) * 1000 + static_cast<uint64_t>(size.height));
  if constexpr (std::is_floating_point_v<T>) {
    Random random(static_cast<uint64_t>(size.width));
    image.fill([&](int32_t, int32_t) { return T(random.below(2001) - 1000) * (random.below(2) ? T(0.001) : T(0.7)); });
    image.at(0, 0) = T(-0.0);
  }
  return image;
}

template <class T>
::testing::AssertionResult holds(const TestImage<T>& image, const std::vector<T>& expected) {
  const auto w = static_cast<size_t>(image.size().width);
  for (size_t i = 0; i < expected.size(); ++i) {
    const T got = image.at(static_cast<int32_t>(i % w), static_cast<int32_t>(i / w));
    if (!sameBits(got, expected[i])) {
      return ::testing::AssertionFailure() << +got << " for " << +expected[i] << " at " << i % w << ", " << i / w;
    }
  }
  return ::testing::AssertionSuccess();
}

constexpr int32_t kExported = -1;

// Both families, the kernels of both codes and the exports, in guarded buffers of exactly the queried size.
template <class T>
void checkMeans(const TestImage<T>& src, DaxiSize mask, Guard guard) {
  const DaxiSize size = src.size();
  const auto pixel = [&](int32_t x, int32_t y) { return src.at(x, y); };
  const std::vector<T> mean = oracle::mean<T>(pixel, size, mask), inside = oracle::meanInside<T>(pixel, size, mask);
  GuardedBuffer<uint8_t> buffer(bytesOf(Members<T>::bytes, size), guard);
  GuardedBuffer<uint8_t> intBuffer(bytesOf(Members<T>::intBytes, size), guard);
  for (const int32_t isa : {int32_t{DAX_ISA_PORTABLE}, int32_t{DAX_ISA_NEON}, kExported}) {
    SCOPED_TRACE(testing::Message() << size.width << " x " << size.height << " mask " << mask.width << " x "
                                    << mask.height << " code " << isa);
    TestImage<T> dst(size, 2, guard);
    dst.remember();
    const auto run = [&](auto worker, Export<T> exported, GuardedBuffer<uint8_t>& work) {
      std::memset(work.data(), 0x7E, work.size());
      if (isa != kExported) return worker(work.data());
      ASSERT_EQ(exported(src.data(), src.step(), dst.data(), dst.step(), size, mask, work.data()), DAX_STS_OK);
    };
    run(
        [&](void* b) {
          filterMean(src.data(), src.step(), dst.data(), dst.step(), size, mask, 0, size.height, b, isa);
        },
        Members<T>::mean, buffer);
    ASSERT_TRUE(holds(dst, mean));
    run([&](void* b) { filterMeanInt(src.data(), src.step(), dst.data(), dst.step(), size, mask, b, isa); },
        Members<T>::meanInt, intBuffer);
    ASSERT_TRUE(holds(dst, inside)) << "of the pixels inside";
    ASSERT_TRUE(dst.paddingUntouched());
  }
}

TYPED_TEST(Mean, EverySmallSizeAndMask) {
  for (int32_t w = 1; w <= 9; ++w) {
    for (int32_t h = 1; h <= 9; ++h) {
      const Guard guard = kGuards[(w + h) % 2];
      const auto src = noise<TypeParam>({w, h}, guard, w % 3);
      for (int32_t mask = 0; mask < w * h; ++mask) checkMeans(src, {mask % w + 1, mask / w + 1}, guard);
    }
  }
}

// Rows of several blocks, with windows that reach far over either end of them, even and odd, low and high.
TYPED_TEST(Mean, LargerSizes) {
  const std::pair<DaxiSize, DaxiSize> cases[] = {
      {{16, 1}, {16, 1}},   {{32, 1}, {32, 1}},    {{224, 1}, {224, 1}}, {{1, 70}, {1, 40}},      {{17, 2}, {17, 2}},
      {{70, 5}, {2, 5}},    {{67, 40}, {3, 3}},    {{67, 40}, {64, 4}},  {{40, 67}, {15, 15}},    {{130, 61}, {16, 61}},
      {{61, 61}, {60, 31}}, {{333, 75}, {75, 75}}, {{300, 90}, {1, 90}}, {{301, 281}, {255, 255}}};
  for (const auto& [size, mask] : cases) {
    const Guard guard = kGuards[size.width % 2];
    checkMeans(noise<TypeParam>(size, guard, mask.width % 4), mask, guard);
  }
  for (int32_t w = 9; w <= 70; w += 3) checkMeans(noise<TypeParam>({w, 9}, Guard::after), {w / 2 + 1, 4}, Guard::after);
}

// Sums at the limits of 16, 31 and 32 bits and beyond them.
TYPED_TEST(Mean, ExtremeSums) {
  using T = TypeParam;
  if constexpr (std::is_integral_v<T>) {
    const int32_t max = sizeof(T) == 1 ? 255 : 300;
    for (const T value : {std::numeric_limits<T>::max(), std::numeric_limits<T>::min(), T(77)}) {
      TestImage<T> src({300, 300});
      src.fill([&](int32_t, int32_t) { return value; });
      for (const DaxiSize mask : {DaxiSize{max, max}, {255, 255}, {256, 256}, {257, 256}}) {
        if (mask.width <= max && mask.height <= max) checkMeans(src, mask, Guard::after);
      }
    }
  }
}

// Columns beyond 2^16 rows, which bytes have only inside the image.
TEST(MeanOfHighWindows, SumsDoNotWrap) {
  const auto check = [](auto pixel, bool symmetric) {
    using T = decltype(pixel);
    const DaxiSize size{2, 66000};
    TestImage<T> src(size), dst(size);
    for (const T value : {std::numeric_limits<T>::max(), std::numeric_limits<T>::min()}) {
      src.fill([&](int32_t, int32_t) { return value; });
      for (const int32_t rows : {65535, 65536, 65537, 66000}) {
        for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
          const auto isSource = [&] { return samePixels(src, dst); };
          const DaxiSize mask{1 + rows % 2, rows};
          GuardedBuffer<uint8_t> buffer(bytesOf(Members<T>::bytes, size));
          if (symmetric) {
            filterMean(src.data(), src.step(), dst.data(), dst.step(), size, mask, 0, size.height, buffer.data(), isa);
            ASSERT_TRUE(isSource()) << rows << " code " << isa;
          }
          dst.fill([](int32_t, int32_t) { return 1; });
          filterMeanInt(src.data(), src.step(), dst.data(), dst.step(), size, mask, buffer.data(), isa);
          ASSERT_TRUE(isSource()) << rows << " code " << isa << " inside";
        }
      }
    }
  };
  check(uint8_t{}, false);
  check(uint16_t{}, true);
  check(int16_t{}, true);
}

TEST(MeanExports, CornersAndConstants) {
  uint8_t buffer[512];
  uint8_t corner[25] = {90}, means[25];
  ASSERT_EQ(DAXI_FilterMeanInt_8u_C1R(corner, 5, means, 5, {5, 5}, {3, 3}, buffer), DAX_STS_OK);
  EXPECT_EQ(means[0], 23);
  ASSERT_EQ(DAXI_FilterMean_8u_C1R(corner, 5, means, 5, {5, 5}, {3, 3}, buffer), DAX_STS_OK);
  EXPECT_EQ(means[0], 40);

  const int16_t shorts[4] = {-1, -2, -3, -4};  // halves, away from zero
  int16_t halves[4];
  ASSERT_EQ(DAXI_FilterMean_16s_C1R(shorts, 4, halves, 4, {4, 1}, {2, 1}, buffer), DAX_STS_OK);
  EXPECT_EQ(halves[1], -2);
  EXPECT_EQ(halves[3], -4);

  TestImage<uint8_t> src({40, 40}), dst({40, 40});
  std::vector<uint8_t> work(4 * 40 * 40);
  for (int32_t value = 0; value < 256; ++value) {
    src.fill([&](int32_t, int32_t) { return value; });
    for (int32_t side = 1; side <= 40; side += 3) {
      ASSERT_EQ(DAXI_FilterMean_8u_C1R(src.data(), 40, dst.data(), 40, src.size(), {side, 41 - side}, work.data()),
                DAX_STS_OK);
      ASSERT_TRUE(samePixels(src, dst)) << value << " " << side;
    }
  }
}

// In slices of exactly the queried buffer; rows in one piece and in halves.
TEST(MeanBands, SameResultForEveryNumberOfThreads) {
  const std::pair<DaxiSize, DaxiSize> cases[] = {{{77, 23}, {1, 1}},   {{77, 23}, {4, 3}},    {{77, 23}, {77, 5}},
                                                 {{128, 17}, {15, 2}}, {{129, 17}, {64, 3}},  {{129, 17}, {65, 3}},
                                                 {{331, 13}, {1, 1}},  {{331, 13}, {165, 3}}, {{600, 11}, {255, 1}}};
  for (const auto& [size, mask] : cases) {
    const auto src = noise<uint8_t>(size, Guard::after, 2);
    const auto pixel = [&image = src](int32_t x, int32_t y) { return image.at(x, y); };
    const std::vector<uint8_t> expected = oracle::mean<uint8_t>(pixel, size, mask);
    const auto height = static_cast<uint32_t>(size.height), maskHeight = static_cast<uint32_t>(mask.height);
    for (uint32_t threads = 0; threads <= height + 1; ++threads) {
      MockPool pool;
      pool.threads = 1 + threads * 5 % 9, pool.concurrent = threads % 3 == 0, pool.passesLength = threads % 2;
      uint64_t bytes = 0;
      ASSERT_EQ(DAXI_FilterMeanBufferSize_8u_MT(size, mask, threads, &bytes), DAX_STS_OK);
      GuardedBuffer<uint8_t> buffer(bytes);
      TestImage<uint8_t> dst(size, 1);
      ASSERT_EQ(DAXI_FilterMean_8u_C1R_MT(src.data(), src.step(), dst.data(), dst.step(), size, mask, buffer.data(),
                                          threads, &pool),
                DAX_STS_OK);
      ASSERT_TRUE(holds(dst, expected)) << size.width << " mask " << mask.width << " threads " << threads;
      ASSERT_EQ(pool.calls, threads > 1 && threads * maskHeight <= height);
    }
  }
}

TEST(MeanBands, PoolAndStatus) {
  const auto src = noise<uint8_t>({40, 10}, Guard::after), narrow = noise<uint8_t>({8, 10}, Guard::after);
  std::vector<uint8_t> buffer(4 * 40 * 10);
  TestImage<uint8_t> dst(src.size());
  MockPool pool;
  pool.threads = 3;
  const auto run = [&](const TestImage<uint8_t>& image, void* host) {
    return DAXI_FilterMean_8u_C1R_MT(image.data(), image.step(), dst.data(), dst.step(), image.size(), {3, 3},
                                     buffer.data(), 3, host);
  };
  EXPECT_EQ(run(narrow, &pool), DAX_STS_OK);
  EXPECT_EQ(run(src, nullptr), DAX_STS_OK);
  EXPECT_EQ(pool.calls, 0);
  EXPECT_EQ(run(src, &pool), DAX_STS_OK);
  EXPECT_EQ(pool.tiles, 3);  // of 4, 4 and 2 rows
  pool.failingTile = 1;
  EXPECT_EQ(run(src, &pool), pool.failure);
}

// n entries of a row and of the sums of its columns, each piece at a multiple of 128 bytes.
TYPED_TEST(Mean, BufferSizes) {
  const uint64_t entry = sizeof(TypeParam) == 8 ? 8 : 4;
  EXPECT_EQ(bytesOf(Members<TypeParam>::bytes, {3, 33}), entry == 8 ? 896u : 512u);
  EXPECT_EQ(bytesOf(Members<TypeParam>::bytes, {1 << 30, 1 << 20}), entry << 50);
  EXPECT_EQ(bytesOf(Members<TypeParam>::intBytes, {3, 33}), 640u);
  EXPECT_EQ(bytesOf(Members<TypeParam>::intBytes, {23169, 23169}), 2147395712u);
  uint64_t bytes = 5;
  for (const int32_t side : {23170, 32767, 65535, 1600000000, INT32_MAX}) {
    EXPECT_EQ(Members<TypeParam>::intBytes({side, side}, &bytes), DAX_STS_BUFFER_OVERFLOW) << side;
  }
}

TEST(MeanMembers, BufferSizesByMask) {
  struct Case {
    DaxiSize size, mask;
    uint32_t threads;
    uint64_t bytes;
  };
  // 2 (640 + 7 + 8) = 1310; 2 (640 + 8 + 16) = 1328; 2 * 8 * 100.
  const Case cases[] = {{{640, 480}, {15, 15}, 0, 1408}, {{640, 480}, {15, 15}, 1, 1408},
                        {{640, 480}, {16, 1}, 1, 1408},  {{640, 480}, {15, 15}, 4, 5248},
                        {{640, 480}, {16, 15}, 4, 5376}, {{8, 100}, {3, 3}, 2, 3200}};
  for (const Case& c : cases) {
    uint64_t bytes = 0;
    EXPECT_EQ(DAXI_FilterMeanBufferSize_8u_MT(c.size, c.mask, c.threads, &bytes), DAX_STS_OK);
    EXPECT_EQ(bytes, c.bytes);
  }
}

}  // namespace
}  // namespace dax::test
