#include "daxi/co_occurrence.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using PairCounts = std::vector<uint32_t>;

int32_t levelOf(int32_t value, const DaxiCoOccurrenceCfg& cfg) {
  if (value < cfg.low) return 0;
  const int64_t level = int64_t{value - cfg.low} * cfg.levels / (cfg.high - cfg.low + 1);
  return static_cast<int32_t>(std::min<int64_t>(level, cfg.levels - 1));
}

template <class T>
PairCounts expectedCounts(const TestImage<T>& image, int32_t dx, int32_t dy, const DaxiCoOccurrenceCfg& cfg) {
  PairCounts counts(static_cast<size_t>(cfg.levels * cfg.levels));
  const auto [width, height] = image.size();
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      if (x + dx < 0 || x + dx >= width || y + dy < 0 || y + dy >= height) continue;
      const int32_t i = levelOf(image.at(x, y), cfg), j = levelOf(image.at(x + dx, y + dy), cfg);
      ++counts[static_cast<size_t>(i * cfg.levels + j)];
      if (cfg.symmetric != 0) ++counts[static_cast<size_t>(j * cfg.levels + i)];
    }
  }
  return counts;
}

template <class Query, class PooledQuery, class Plain, class Pooled, class T>
void checkCounts(Query query, PooledQuery pooledQuery, Plain plain, Pooled pooled, const TestImage<T>& image,
                 const DaxiCoOccurrenceCfg& cfg, const PairCounts& expected) {
  uint64_t bytes = 0, pooledBytes = 0;
  ASSERT_EQ(query(image.size(), &cfg, &bytes), DAX_STS_OK);
  ASSERT_EQ(pooledQuery(image.size(), &cfg, 3, &pooledBytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes), slices(pooledBytes);
  GuardedBuffer<uint32_t> counts(expected.size()), tiled(expected.size());
  ASSERT_EQ(plain(image.data(), image.step(), image.size(), &cfg, counts.data(), buffer.data()), DAX_STS_OK);
  MockPool pool;
  ASSERT_EQ(pooled(&pool, 3, image.data(), image.step(), image.size(), &cfg, tiled.data(), slices.data()), DAX_STS_OK);
  EXPECT_TRUE(std::equal(expected.begin(), expected.end(), counts.data()))
      << cfg.dx << ", " << cfg.dy << " levels " << cfg.levels << " of " << cfg.low << ".." << cfg.high;
  EXPECT_TRUE(std::equal(expected.begin(), expected.end(), tiled.data())) << "on a pool";
}

template <class T>
struct CoOccurrences;
#define DAX_CO_OCCURRENCES(T, SUFFIX)                                                                             \
  template <>                                                                                                     \
  struct CoOccurrences<T> {                                                                                       \
    static void check(const TestImage<T>& image, const DaxiCoOccurrenceCfg& cfg, const PairCounts& expected) {    \
      checkCounts(DAXI_CoOccurrenceBufferSize_##SUFFIX, DAXI_CoOccurrenceBufferSize_##SUFFIX##_MT,                \
                  DAXI_CoOccurrence_##SUFFIX##_C1R, DAXI_CoOccurrence_##SUFFIX##_C1R_MT, image, cfg, expected);   \
    }                                                                                                             \
    static void check4(const TestImage<T>& image, const DaxiCoOccurrenceCfg& cfg, const PairCounts& expected) {   \
      checkCounts(DAXI_CoOccurrence4BufferSize_##SUFFIX, DAXI_CoOccurrence4BufferSize_##SUFFIX##_MT,              \
                  DAXI_CoOccurrence4_##SUFFIX##_C1R, DAXI_CoOccurrence4_##SUFFIX##_C1R_MT, image, cfg, expected); \
    }                                                                                                             \
  };
DAX_CO_OCCURRENCES(uint8_t, 8u)
DAX_CO_OCCURRENCES(uint16_t, 16u)
#undef DAX_CO_OCCURRENCES

template <class>
class CoOccurrence : public testing::Test {};
using LevelPixels = testing::Types<uint8_t, uint16_t>;
TYPED_TEST_SUITE(CoOccurrence, LevelPixels);

// Offsets in all directions, beyond the image, too, and rows longer than a strip.
TYPED_TEST(CoOccurrence, CountsPairs) {
  constexpr int32_t kUnit = sizeof(TypeParam) == 1 ? 1 : 257;
  Random random(8);
  for (int32_t round = 0; round < 60; ++round) {
    TestImage<TypeParam> image({round % 5 == 0 ? 500 + random.below(60) : 1 + random.below(30), 1 + random.below(9)},
                               2);
    image.randomize(static_cast<uint64_t>(round));
    const int32_t low = random.below(200) * kUnit, high = round % 2 == 0 ? 255 * kUnit : low + random.below(56) * kUnit;
    const int32_t levels = round % 3 == 0 ? 256 : 2 + random.below(60);
    const int32_t dx = random.below(13) - 6, dy = random.below(13) - 6;
    DaxiCoOccurrenceCfg cfg = {dx, dy, levels, round % 4 == 0 ? 0 : low, high, round % 2};
    CoOccurrences<TypeParam>::check(image, cfg, expectedCounts(image, dx, dy, cfg));
    const int32_t d = cfg.dx = 1 + random.below(5);
    PairCounts all;
    for (const auto& offset : {DaxiSize{d, 0}, DaxiSize{d, -d}, DaxiSize{0, -d}, DaxiSize{-d, -d}}) {
      const PairCounts one = expectedCounts(image, offset.width, offset.height, cfg);
      all.insert(all.end(), one.begin(), one.end());
    }
    CoOccurrences<TypeParam>::check4(image, cfg, all);
  }
}

// Every value, at every number of levels: the multiplication in place of a division is exact.
TYPED_TEST(CoOccurrence, LevelsAreExact) {
  constexpr int32_t kGreatest = sizeof(TypeParam) == 1 ? 255 : 65535;
  TestImage<TypeParam> image({kGreatest + 1, 1});
  image.fill([](int32_t x, int32_t) { return x; });
  for (int32_t levels = 2; levels <= 256; levels += sizeof(TypeParam) == 1 ? 1 : 23) {
    for (const int32_t high : {0, kGreatest / 3, kGreatest - 1, kGreatest}) {
      const DaxiCoOccurrenceCfg cfg = {0, 0, levels, high / 5, high, 0};
      CoOccurrences<TypeParam>::check(image, cfg, expectedCounts(image, 0, 0, cfg));
    }
  }
}

}  // namespace
}  // namespace dax::test
