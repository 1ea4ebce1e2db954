// Histograms and the levels found from them.
#include <gtest/gtest.h>

#include "image/statistics/histogram.h"
#include "image/threshold/threshold.h"
#include "image/threshold/threshold_levels.h"
#include "tests/image/threshold/threshold_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Image = TestImage<uint8_t>;

TEST(Histogram, CountsEveryPixelOnce) {
  for (int32_t width : {1, 15, 16, 17, 33, 257}) {
    Image src({width, 5}, 3, kGuards[width % 2]);
    src.randomize(11);
    Histogram expected = {};
    for (int32_t y = 0; y < 5; ++y) {
      for (int32_t x = 0; x < width; ++x) ++expected[src.at(x, y)];
    }
    EXPECT_EQ(histogram(src.data(), src.step(), src.size()), expected) << width;
    // In bands of 1, 2, 4 and 5 rows.
    for (const int32_t pixels : {1, 2 * width, 5 * width - 1, 5 * width}) {
      EXPECT_EQ(histogram(src.data(), src.step(), src.size(), pixels), expected) << width;
    }
  }
}

// The level reached is as good as the best in double precision, up to what single precision can tell apart.
TEST(Otsu, LevelMaximisesTheVariance) {
  Random random(5);
  for (int round = 0; round < 2000; ++round) {
    Histogram counts = {};
    const int32_t levels = 2 + random.below(255);
    for (int32_t i = 0; i < levels; ++i)
      counts[static_cast<size_t>(random.below(256))] += static_cast<uint64_t>(random.below(5000));
    counts[7] += 1;
    double best = 0;
    for (int t = 0; t < 256; ++t) best = std::max(best, oracle::betweenClassVariance(counts, t));
    EXPECT_GE(oracle::betweenClassVariance(counts, otsuLevel(counts)), best * (1 - 1e-4)) << round;
  }
}

TEST(Otsu, TwoLevelsAndOneLevel) {
  for (uint64_t share = 1; share < 64; ++share) {
    Histogram counts = {};
    counts[10] = share;
    counts[200] = 64 - share;
    EXPECT_EQ(otsuLevel(counts), 10);
  }
  Histogram flat = {};
  flat[90] = 1000;
  EXPECT_EQ(otsuLevel(flat), 0);
  // The shares add up to more than 1 before the last level.
  Histogram rounded = {};
  rounded[25] = rounded[142] = rounded[217] = 10, rounded[231] = 1, rounded[249] = 4;
  EXPECT_EQ(otsuLevel(rounded), 25);
}

TEST(Histogram, RelativeLevels) {
  Histogram counts = {};
  counts[20] = 10, counts[60] = 40, counts[180] = 40, counts[220] = 10;
  const auto levels = [&](float r0, float r1, float q0, float q1) {
    const LevelPair pair = relativeLevels(counts, {r0, r1, q0, q1});
    return std::pair<int, int>(pair.low, pair.high);
  };
  EXPECT_EQ(levels(0, 0, 0, 1), std::pair(20, 220));
  EXPECT_EQ(levels(0.2f, 0.2f, 0, 1), std::pair(60, 180));
  EXPECT_EQ(levels(0.2f, 0.2f, 0.25f, 0.5f), std::pair(90, 120));
  EXPECT_EQ(levels(0.1f, 0.95f, 0, 1), std::pair(20, 60));  // the tails meet: dark above bright
  EXPECT_EQ(levels(1, 0, 0, 1), std::pair(220, 255));       // no level has more than everything below it
  counts = {};
  counts[90] = 5;
  EXPECT_EQ(levels(0.5f, 0.5f, 0, 1), std::pair(90, 90));
  // The first and the last level.
  counts = {};
  counts[0] = 30, counts[255] = 70;
  EXPECT_EQ(levels(0.2f, 0.2f, 0, 1), std::pair(0, 255));
  EXPECT_EQ(levels(0, 1, 0, 1), std::pair(0, 0));
  EXPECT_EQ(levels(1, 0, 0, 1), std::pair(255, 255));
}

TEST(Histogram, RampSteps) {
  for (const LevelPair pair : {LevelPair{0, 255}, {7, 8}, {40, 43}, {90, 90}}) {
    for (const uint32_t soft : {0u, 1u, 6u, 254u}) {
      for (int32_t level = 0; level < 256; ++level) {
        ASSERT_EQ(rampStep(level, pair, soft),
                  oracle::rampStep(level, pair.low, pair.high, static_cast<int32_t>(soft)));
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
