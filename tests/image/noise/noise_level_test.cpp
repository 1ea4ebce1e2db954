#include "daxi/noise_level_function.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "tests/image/noise/noise_images.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

template <class T>
struct LevelCalls;
#define LEVEL_CALLS(SUFFIX, T)                                                  \
  template <>                                                                   \
  struct LevelCalls<T> {                                                        \
    static constexpr auto defaults = DAXI_NoiseLevelDefaultCfg_##SUFFIX;        \
    static constexpr auto blocks = DAXI_NoiseLevelFunction_##SUFFIX##_C1R;      \
    static constexpr auto blocksMt = DAXI_NoiseLevelFunction_##SUFFIX##_C1R_MT; \
    static constexpr auto frames = DAXI_NoiseLevelFrames_##SUFFIX##_C1R;        \
  };
LEVEL_CALLS(8u, uint8_t)
LEVEL_CALLS(16u, uint16_t)
LEVEL_CALLS(16s, int16_t)
LEVEL_CALLS(32f, float)
#undef LEVEL_CALLS

template <class T>
constexpr double kRounding = std::is_integral_v<T> ? 1.0 / 12 : 0;

template <class T>
DaxiNoiseLevelCfg defaultCfg() {
  DaxiNoiseLevelCfg cfg;
  EXPECT_EQ(LevelCalls<T>::defaults(&cfg), DAX_STS_OK);
  return cfg;
}

using Points = std::vector<DaxiNoiseLevel>;

template <class T>
Points functionOf(const TestImage<T>& image, const DaxiNoiseLevelCfg& cfg, uint32_t threads = 0) {
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_NoiseLevelFunctionBufferSize(image.size(), &cfg, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  GuardedBuffer<DaxiNoiseLevel> points(static_cast<size_t>(cfg.bins));
  int32_t count = 0;
  MockPool pool;
  const DaxStatus status =
      threads == 0
          ? LevelCalls<T>::blocks(image.data(), image.step(), image.size(), &cfg, points.data(), &count, buffer.data())
          : LevelCalls<T>::blocksMt(&pool, threads, image.data(), image.step(), image.size(), &cfg, points.data(),
                                    &count, buffer.data());
  EXPECT_EQ(status, count > 0 ? DAX_STS_OK : DAX_STS_DEGENERATE);
  return {points.data(), points.data() + count};
}

template <class T>
Points functionOf(const std::vector<TestImage<T>>& frames, const DaxiNoiseLevelCfg& cfg) {
  uint64_t bytes = 0;
  const auto frameCount = static_cast<int32_t>(frames.size());
  EXPECT_EQ(DAXI_NoiseLevelFramesBufferSize(frameCount, &cfg, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  GuardedBuffer<DaxiNoiseLevel> points(static_cast<size_t>(cfg.bins));
  std::vector<const T*> pointers;
  for (const auto& frame : frames) pointers.push_back(frame.data());
  int32_t count = 0;
  const DaxStatus status = LevelCalls<T>::frames(pointers.data(), frameCount, frames[0].step(), frames[0].size(), &cfg,
                                                 points.data(), &count, buffer.data());
  EXPECT_EQ(status, count > 0 ? DAX_STS_OK : DAX_STS_DEGENERATE);
  return {points.data(), points.data() + count};
}

void expectNear(const Points& found, const Points& expected, double tolerance) {
  ASSERT_EQ(found.size(), expected.size());
  for (size_t i = 0; i < found.size(); ++i) {
    EXPECT_NEAR(found[i].level, expected[i].level, 1e-9);
    EXPECT_NEAR(found[i].variance, expected[i].variance, tolerance * (1 + expected[i].variance));
    EXPECT_EQ(found[i].count, expected[i].count);
  }
}

// Members by level, the bin of each by which of the bins' edges lie below it.
struct Member {
  double level, variance;
  size_t index;
};
std::map<int, std::vector<Member>> binned(const std::vector<Member>& members, int32_t bins) {
  const auto less = [](const Member& a, const Member& b) { return a.level < b.level; };
  const auto [low, high] = std::minmax_element(members.begin(), members.end(), less);
  std::map<int, std::vector<Member>> result;
  for (const Member& each : members) {
    int bin = 0;
    while (bin + 1 < bins && each.level >= low->level + (bin + 1) * (high->level - low->level) / bins) ++bin;
    result[bin].push_back(each);
  }
  return result;
}

double meanLevel(const std::vector<Member>& members) {
  double sum = 0;
  for (const Member& each : members) sum += each.level;
  return sum / static_cast<double>(members.size());
}

// The deviate by bisection of the error function, and the quantile of Wilson and Hilferty.
double blockQuantile(double rank, double n, double side) {
  double low = -9, high = 9;
  for (int i = 0; i < 100; ++i) {
    const double middle = (low + high) / 2;
    (std::erfc(-middle / std::sqrt(2)) / 2 < (rank - 0.375) / (n + 0.25) ? low : high) = middle;
  }
  double overlap = 0;
  const double correlation[] = {1, 16.0 / 36, 1.0 / 36};
  for (int lag = -2; lag <= 2; ++lag) overlap += (1 - std::abs(lag) / (side - 2)) * correlation[std::abs(lag)];
  const double k = std::pow((side - 2) / overlap, 2);
  return std::pow(1 - 2 / (9 * k) + low * std::sqrt(2 / (9 * k)), 3);
}

template <class T>
std::vector<Member> blocksOf(const TestImage<T>& image, const DaxiNoiseLevelCfg& cfg) {
  std::vector<Member> blocks;
  const int32_t side = cfg.block;
  for (int32_t top = 0; top + side <= image.size().height; top += side) {
    for (int32_t left = 0; left + side <= image.size().width; left += side) {
      double sum = 0, squares = 0;
      bool counts = true;
      for (int32_t i = 0; i < side * side; ++i) {
        const double v = image.at(left + i % side, top + i / side);
        sum += v;
        counts &= v > cfg.low && v < cfg.high;
      }
      for (int32_t y = top + 1; y + 1 < top + side; ++y) {
        for (int32_t x = left + 1; x + 1 < left + side; ++x) {
          const int weights[3] = {1, -2, 1};
          double response = 0;
          for (int i = 0; i < 9; ++i) {
            response += weights[i % 3] * weights[i / 3] * static_cast<double>(image.at(x - 1 + i % 3, y - 1 + i / 3));
          }
          squares += response * response;
        }
      }
      if (counts) blocks.push_back({sum / (side * side), squares / 36 / ((side - 2.0) * (side - 2)), 0});
    }
  }
  return blocks;
}

template <class T>
Points definedByBlocks(const TestImage<T>& image, const DaxiNoiseLevelCfg& cfg) {
  Points points;
  for (auto& [bin, members] : binned(blocksOf(image, cfg), cfg.bins)) {
    const auto n = static_cast<double>(members.size()), rank = std::ceil(cfg.share * n);
    if (n < cfg.minCount) continue;
    std::sort(members.begin(), members.end(), [](const auto& a, const auto& b) { return a.variance < b.variance; });
    const double variance = members[static_cast<size_t>(rank) - 1].variance / blockQuantile(rank, n, cfg.block);
    points.push_back({meanLevel(members), std::max(variance - kRounding<T>, 0.0), members.size()});
  }
  return points;
}

template <class T>
Points definedByFrames(const std::vector<TestImage<T>>& frames, const DaxiNoiseLevelCfg& cfg) {
  const auto n = static_cast<double>(frames.size());
  const DaxiSize size = frames[0].size();
  const auto valueOf = [&](size_t frame, size_t i) {
    const auto at = static_cast<int32_t>(i);
    return static_cast<double>(frames[frame].at(at % size.width, at / size.width));
  };
  // sum of (v - mean)^2 / (n - 1) of numbers that value(0), value(1), ... are.
  const auto varianceOf = [&](const auto& value) {
    double mean = 0, squares = 0;
    for (size_t k = 0; k < frames.size(); ++k) mean += value(k) / n;
    for (size_t k = 0; k < frames.size(); ++k) squares += (value(k) - mean) * (value(k) - mean);
    return squares / (n - 1);
  };
  std::vector<Member> pixels;
  for (size_t i = 0; i < static_cast<size_t>(size.width) * static_cast<size_t>(size.height); ++i) {
    double mean = 0;
    bool counts = true;
    for (size_t k = 0; k < frames.size(); ++k) {
      mean += valueOf(k, i) / n;
      counts &= valueOf(k, i) > cfg.low && valueOf(k, i) < cfg.high;
    }
    if (counts) pixels.push_back({mean, varianceOf([&](size_t k) { return valueOf(k, i); }), i});
  }
  Points points;
  for (const auto& [bin, members] : binned(pixels, cfg.bins)) {
    const auto count = static_cast<double>(members.size());
    if (count < cfg.minCount) continue;
    double variance = 0;
    for (const Member& each : members) variance += each.variance / count;
    variance -= varianceOf([&, &all = members](size_t k) {
      double sum = 0;
      for (const Member& each : all) sum += valueOf(k, each.index);
      return sum / count;
    });
    points.push_back({meanLevel(members), std::max(variance - kRounding<T>, 0.0), members.size()});
  }
  return points;
}

template <class T>
class NoiseLevels : public ::testing::Test {};
using NoiseTypes = ::testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(NoiseLevels, NoiseTypes);

TYPED_TEST(NoiseLevels, OfBlocksEqualTheDefinition) {
  using T = TypeParam;
  for (const DaxiSize size : {DaxiSize{130, 90}, DaxiSize{67, 200}}) {
    DaxiNoiseLevelCfg cfg = defaultCfg<T>();
    TestImage<T> image = noisyScene<T>(size, 4);
    if (std::is_floating_point_v<T>) image.at(2, 2) = static_cast<T>(NAN);
    for (const auto& [block, bins, share] : {std::tuple{16, 16, 0.25}, {8, 7, 0.5}, {13, 1, 0.01}}) {
      cfg.block = block, cfg.bins = bins, cfg.share = share, cfg.minCount = 2, cfg.high = 150;
      // The rational approximation of the deviate is within 4.5e-4.
      const Points found = functionOf(image, cfg);
      expectNear(found, definedByBlocks(image, cfg), 3e-4);
      for (const uint32_t threads : {1u, 3u, 50u}) expectNear(functionOf(image, cfg, threads), found, 0);
    }
  }
}

TYPED_TEST(NoiseLevels, OfFramesEqualTheDefinition) {
  using T = TypeParam;
  for (const size_t count : {2u, 3u, 9u}) {
    std::vector<TestImage<T>> frames;
    for (size_t i = 0; i < count; ++i) {
      frames.push_back(noisyScene<T>({270, 11}, 6, 1 + 0.02 * static_cast<double>(i), i + 1));  // the light rises
    }
    DaxiNoiseLevelCfg cfg = defaultCfg<T>();
    cfg.bins = 5, cfg.minCount = 20, cfg.low = 95;
    if (std::is_floating_point_v<T>) frames[1].at(260, 9) = static_cast<T>(NAN);
    expectNear(functionOf(frames, cfg), definedByFrames(frames, cfg), 1e-9);
  }
}

// Variance that grows with the level, shading, a disc, a checker board: within 10 % where there are blocks enough, all
// points together within 5.
TEST(NoiseLevels, FindTheNoiseOfScenes) {
  for (const double gain : {0.05, 0.5, 4.0}) {
    const DaxiSize size = {640, 480};
    const auto varianceAt = [=](double level) { return 2 + gain * (level - 90); };
    const auto frame = [=](uint64_t seed) {
      NormalNoise noise(seed);
      TestImage<uint16_t> image(size);
      image.fill([&](int32_t x, int32_t y) {
        const double level = sceneAt(x, y, size);
        return std::round(level + std::sqrt(varianceAt(level)) * noise.next());
      });
      return image;
    };
    std::vector<TestImage<uint16_t>> frames;
    for (uint64_t seed : {1, 2}) frames.push_back(frame(seed));
    DaxiNoiseLevelCfg cfg = defaultCfg<uint16_t>();
    double sum = 0, expected = 0;
    const Points points = functionOf(frames[0], cfg);
    EXPECT_GE(points.size(), 8u);
    for (const DaxiNoiseLevel& point : points) {
      const double ratio = std::sqrt(point.variance / varianceAt(point.level));
      EXPECT_NEAR(ratio, 1, point.count >= 40 ? 0.1 : 0.5) << point.level;
      sum += point.variance, expected += varianceAt(point.level);
    }
    EXPECT_NEAR(std::sqrt(sum / expected), 1, 0.05);
    cfg.bins = 8;
    if (gain > 1) continue;  // the mean of two frames scatters by more than a bin
    for (const DaxiNoiseLevel& point : functionOf(frames, cfg)) {
      const double ratio = std::sqrt(point.variance / varianceAt(point.level));
      EXPECT_NEAR(ratio, 1, point.count >= 5000 ? 0.08 : 0.5) << point.level;
    }
  }
}

TEST(NoiseLevels, OfFlatAndOfClippedImages) {
  TestImage<uint8_t> image({40, 33});
  DaxiNoiseLevelCfg cfg = defaultCfg<uint8_t>();
  cfg.minCount = 1;
  image.fill([](int32_t, int32_t) { return 7; });
  const Points flat = functionOf(image, cfg);
  ASSERT_EQ(flat.size(), 1u);
  EXPECT_EQ(flat[0].level, 7);
  EXPECT_EQ(flat[0].variance, 0);
  EXPECT_EQ(flat[0].count, 4u);
  image.fill([](int32_t, int32_t) { return 255; });
  EXPECT_TRUE(functionOf(image, cfg).empty());
}

}  // namespace
}  // namespace dax::test
