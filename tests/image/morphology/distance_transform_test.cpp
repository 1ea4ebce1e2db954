#include "daxi/distance_transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Mask = TestImage<uint8_t>;

// The nearest clear pixel by looking at all; INT32_MAX where there is none.
int32_t nearestClear(const std::vector<std::pair<int32_t, int32_t>>& clear, int32_t x, int32_t y, int32_t metric) {
  int32_t nearest = INT32_MAX;
  for (const auto& place : clear) {
    const int32_t dx = std::abs(x - place.first), dy = std::abs(y - place.second);
    const int32_t distance = metric == DAXI_DISTANCE_L2   ? dx * dx + dy * dy
                             : metric == DAXI_DISTANCE_L1 ? dx + dy
                                                          : std::max(dx, dy);
    nearest = std::min(nearest, distance);
  }
  return nearest;
}

float asFloat(int32_t distance, int32_t metric) {
  if (distance == INT32_MAX) return std::numeric_limits<float>::infinity();
  return metric == DAXI_DISTANCE_L2 ? static_cast<float>(std::sqrt(static_cast<double>(distance)))
                                    : static_cast<float>(distance);
}

void checkDistances(const Mask& src, int32_t metric) {
  const DaxiSize size = src.size();
  std::vector<std::pair<int32_t, int32_t>> clear;
  for (int32_t y = 0; y < size.height; ++y) {
    for (int32_t x = 0; x < size.width; ++x) {
      if (src.at(x, y) == 0) clear.emplace_back(x, y);
    }
  }
  TestImage<int32_t> integers(size, 1), expected(size);
  TestImage<float> floats(size, 2), expectedFloats(size);
  expected.fill([&](int32_t x, int32_t y) { return nearestClear(clear, x, y, metric); });
  expectedFloats.fill([&](int32_t x, int32_t y) { return asFloat(expected.at(x, y), metric); });
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_DistanceTransformBufferSize_8u32s(size, metric, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  MockPool pool;
  ASSERT_EQ(DAXI_DistanceTransform_8u32s_C1R(src.data(), src.step(), integers.data(), integers.step(), size, metric,
                                             buffer.data()),
            DAX_STS_OK);
  ASSERT_EQ(DAXI_DistanceTransform_8u32f_C1R_MT(&pool, 3, src.data(), src.step(), floats.data(), floats.step(), size,
                                                metric, buffer.data()),
            DAX_STS_OK);
  ASSERT_TRUE(samePixels(integers, expected)) << size.width << " x " << size.height << " metric " << metric;
  ASSERT_TRUE(samePixels(floats, expectedFloats)) << size.width << " x " << size.height << " metric " << metric;
}

// From masks without a clear pixel to ones without a set one.
TEST(DistanceTransform, IsThatToTheNearestClearPixel) {
  Random random(4);
  for (int32_t round = 0; round < 120; ++round) {
    Mask src({1 + random.below(round % 3 ? 40 : 300), 1 + random.below(round % 4 ? 30 : 3)}, round % 3,
             kGuards[round % 2]);
    const int32_t rarity = 1 << random.below(11);
    src.fill([&](int32_t, int32_t) { return random.below(rarity) == 1 ? 0 : 1 + random.below(255); });
    checkDistances(src, round % 3);
  }
}

// The largest sides: the greatest square is 2 * 32767^2 for a square image; a row and a column tell as much.
TEST(DistanceTransform, LargestSides) {
  for (const DaxiSize size : {DaxiSize{32768, 2}, DaxiSize{2, 32768}}) {
    Mask src(size);
    src.fill([](int32_t x, int32_t y) { return x + y > 0; });
    for (int32_t metric = 0; metric < 3; ++metric) checkDistances(src, metric);
  }
  Mask src({32768, 1});
  TestImage<int32_t> dst({32768, 1});
  uint64_t buffer[1];
  EXPECT_EQ(DAXI_DistanceTransform_8u32s_C1R(src.data(), 32769, dst.data(), 32769, {32769, 1}, 0, buffer),
            DAX_STS_BAD_SIZE);
}

}  // namespace
}  // namespace dax::test
