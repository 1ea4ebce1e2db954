#include "daxi/threshold_hysteresis.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
using Hysteresis = DaxStatus (*)(const T*, int32_t, uint8_t*, int32_t, DaxiSize, T, T, int32_t, void*);
template <class T>
using Pooled = DaxStatus (*)(void*, uint32_t, const T*, int32_t, uint8_t*, int32_t, DaxiSize, T, T, int32_t, void*);
using Query = DaxStatus (*)(DaxiSize, uint64_t*);

// Spreads from the strong pixels until nothing changes.
template <class T>
TestImage<uint8_t> spread(const TestImage<T>& src, T low, T high, int32_t connectivity) {
  TestImage<uint8_t> set(src.size());
  const auto [width, height] = src.size();
  set.fill([&](int32_t x, int32_t y) { return src.at(x, y) > high ? 255 : 0; });
  const auto touches = [&, w = width, h = height](int32_t x, int32_t y) {
    for (int32_t v = -1; v <= 1; ++v) {
      for (int32_t u = -1; u <= 1; ++u) {
        if (connectivity == 4 && u != 0 && v != 0) continue;
        if (x + u >= 0 && x + u < w && y + v >= 0 && y + v < h && set.at(x + u, y + v)) return true;
      }
    }
    return false;
  };
  for (bool changed = true; changed;) {
    changed = false;
    for (int32_t y = 0; y < height; ++y) {
      for (int32_t x = 0; x < width; ++x) {
        if (set.at(x, y) || !(src.at(x, y) > low) || !touches(x, y)) continue;
        set.at(x, y) = 255, changed = true;
      }
    }
  }
  return set;
}

template <class T>
void checkHysteresis(const TestImage<T>& src, Query query, Hysteresis<T> hysteresis, Pooled<T> pooled, T low, T high) {
  uint64_t bytes = 0;
  ASSERT_EQ(query(src.size(), &bytes), DAX_STS_OK);
  for (const int32_t connectivity : {4, 8}) {
    GuardedBuffer<uint8_t> buffer(bytes);
    TestImage<uint8_t> dst(src.size(), 3);
    dst.remember();
    ASSERT_EQ(
        hysteresis(src.data(), src.step(), dst.data(), dst.step(), src.size(), low, high, connectivity, buffer.data()),
        DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, spread(src, low, high, connectivity))) << src.size().width << " by " << connectivity;
    ASSERT_TRUE(dst.paddingUntouched());
    for (const uint32_t threads : {2u, 5u, 1000u}) {
      MockPool pool;
      TestImage<uint8_t> again(src.size());
      ASSERT_EQ(pooled(&pool, threads, src.data(), src.step(), again.data(), again.step(), src.size(), low, high,
                       connectivity, buffer.data()),
                DAX_STS_OK);
      ASSERT_TRUE(samePixels(dst, again)) << src.size().width << " on " << threads;
    }
  }
}

// Mazes of weak pixels with few strong ones, in all types; NaN belongs to nothing.
TEST(ThresholdHysteresis, SpreadsFromStrongPixels) {
  Random random(3);
  for (int32_t round = 0; round < 30; ++round) {
    const DaxiSize size = {1 + random.below(70), 1 + random.below(30)};
    TestImage<uint8_t> bytes(size, 2);
    TestImage<uint16_t> words(size);
    TestImage<float> floats(size, 1);
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) {
        const int32_t v = random.below(100) < 42 ? 10 : random.below(100) < 97 ? 11 + random.below(90) : 102;
        bytes.at(x, y) = static_cast<uint8_t>(v);
        words.at(x, y) = static_cast<uint16_t>(600 * v);
        floats.at(x, y) = v == 10 && x % 3 == 0 ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(v) - 50;
      }
    }
    checkHysteresis<uint8_t>(bytes, DAXI_ThresholdHysteresisBufferSize_8u, DAXI_ThresholdHysteresis_8u_C1R,
                             DAXI_ThresholdHysteresis_8u_C1R_MT, 10, 101);
    checkHysteresis<uint16_t>(words, DAXI_ThresholdHysteresisBufferSize_16u8u, DAXI_ThresholdHysteresis_16u8u_C1R,
                              DAXI_ThresholdHysteresis_16u8u_C1R_MT, 6000, 61000);
    checkHysteresis<float>(floats, DAXI_ThresholdHysteresisBufferSize_32f8u, DAXI_ThresholdHysteresis_32f8u_C1R,
                           DAXI_ThresholdHysteresis_32f8u_C1R_MT, -40, 51.5F);
  }
}

// A serpentine through the whole picture, and the largest size.
TEST(ThresholdHysteresis, LongWays) {
  TestImage<uint8_t> maze({41, 41});
  maze.fill([](int32_t x, int32_t y) { return y % 2 == 0 || x == (y % 4 == 1 ? 40 : 0) ? 50 : 0; });
  maze.at(0, 40) = 200;
  checkHysteresis<uint8_t>(maze, DAXI_ThresholdHysteresisBufferSize_8u, DAXI_ThresholdHysteresis_8u_C1R,
                           DAXI_ThresholdHysteresis_8u_C1R_MT, 20, 100);
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_ThresholdHysteresisBufferSize_8u({1 << 16, 1 << 15}, &bytes), DAX_STS_OK);
  EXPECT_EQ(DAXI_ThresholdHysteresisBufferSize_8u({1 << 16, (1 << 15) + 1}, &bytes), DAX_STS_BAD_PARAM);
}

}  // namespace
}  // namespace dax::test
