#include "daxi/filter_rank.h"

#include <gtest/gtest.h>

#include <limits>

#include "frame/cpu_feature.h"
#include "image/rank/filter_rank.h"
#include "tests/image/rank/filter_rank_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct RankExports;
#define DAX_RANK_EXPORTS(SUFFIX, TYPE)                                           \
  template <>                                                                    \
  struct RankExports<TYPE> {                                                     \
    static constexpr auto bytes = DAXI_FilterRankBufferSize_##SUFFIX;            \
    static constexpr auto pooledBytes = DAXI_FilterRankBufferSize_##SUFFIX##_MT; \
    static constexpr auto rank = DAXI_FilterRank_##SUFFIX##_C1R;                 \
    static constexpr auto pooled = DAXI_FilterRank_##SUFFIX##_C1R_MT;            \
    static constexpr auto median = DAXI_FilterMedian_##SUFFIX##_C1R;             \
    static constexpr auto pooledMedian = DAXI_FilterMedian_##SUFFIX##_C1R_MT;    \
  };
DAX_RANK_EXPORTS(8u, uint8_t)
DAX_RANK_EXPORTS(16u, uint16_t)
DAX_RANK_EXPORTS(16s, int16_t)
DAX_RANK_EXPORTS(32f, float)
#undef DAX_RANK_EXPORTS

// A region, with pixels around it for borders in memory.
template <class T>
struct RankScene {
  RankScene(DaxiSize region, DaxiSize around, uint64_t seed)
      : size(region), margin(around), image({region.width + 2 * around.width, region.height + 2 * around.height}, 3) {
    image.randomize(seed);
  }
  // Few values, many of them equal.
  void coarsen(uint64_t seed) {
    Random random(seed);
    image.fill([&](int32_t x, int32_t y) { return static_cast<T>(40 * (x / 7 % 3) + y + random.below(3)); });
  }
  const T* data() const { return &image.at(margin.width, margin.height); }
  T pixel(int64_t x, int64_t y) const {
    return image.at(static_cast<int32_t>(x) + margin.width, static_cast<int32_t>(y) + margin.height);
  }

  DaxiSize size, margin;
  TestImage<T> image;
};

struct RankCase {
  DaxiSize window;
  int32_t rank, border;
};

template <class T>
void checkRank(const RankScene<T>& s, const RankCase& c) {
  using Exports = RankExports<T>;
  const T value = T(77);
  const auto describe = [&] {
    return testing::Message() << s.size.width << " x " << s.size.height << ", window " << c.window.width << " x "
                              << c.window.height << ", rank " << c.rank << ", border " << c.border;
  };
  TestImage<T> expected(s.size), dst(s.size, 2);
  const auto pixel = [&](int64_t x, int64_t y) { return s.pixel(x, y); };
  expected.fill([&](int32_t x, int32_t y) {
    return oracle::rankFilter<T>(pixel, x, y, s.size, c.window, c.rank, c.border, value);
  });
  dst.remember();
  constexpr uint32_t kThreads = 3;
  uint64_t bytes = 0, pooledBytes = 0;
  ASSERT_EQ(Exports::bytes(s.size, c.window, &bytes), DAX_STS_OK);
  ASSERT_EQ(Exports::pooledBytes(s.size, c.window, kThreads, &pooledBytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes), slices(pooledBytes);
  const RankFilter<T> filter = {s.data(), s.image.step(), dst.data(), dst.step(), s.size,
                                c.window, c.rank,         c.border,   value};
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    dst.fill([](int32_t, int32_t) { return T(0); });
    rankRows(filter, 0, s.size.height / 2, buffer.data(), isa);
    rankRows(filter, s.size.height / 2, s.size.height, buffer.data(), isa);
    ASSERT_TRUE(samePixels(dst, expected)) << describe() << ", code " << isa;
  }
  const auto call = [&](auto function, auto... rank) {
    dst.fill([](int32_t, int32_t) { return T(0); });
    ASSERT_EQ(function(s.data(), s.image.step(), dst.data(), dst.step(), s.size, c.window, rank..., c.border, value,
                       buffer.data()),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, expected)) << describe();
  };
  MockPool pool;
  const auto callPooled = [&](auto function, auto... rank) {
    dst.fill([](int32_t, int32_t) { return T(0); });
    ASSERT_EQ(function(&pool, kThreads, s.data(), s.image.step(), dst.data(), dst.step(), s.size, c.window, rank...,
                       c.border, value, slices.data()),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, expected)) << describe() << " on a pool";
  };
  call(Exports::rank, c.rank);
  callPooled(Exports::pooled, c.rank);
  if (c.rank == c.window.width * c.window.height / 2) {
    call(Exports::median);
    callPooled(Exports::pooledMedian);
  }
  ASSERT_TRUE(dst.paddingUntouched());
}

template <class>
class FilterRank : public testing::Test {};
using RankPixels = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(FilterRank, RankPixels);

// Windows of any shape and larger than the image, all borders, extreme ranks and the median.
TYPED_TEST(FilterRank, EqualsTheSortedWindow) {
  Random random(3);
  for (int32_t round = 0; round < 84; ++round) {
    RankCase c = {{1 + random.below(12), 1 + random.below(12)}, 0, round % 7};
    const int32_t all = c.window.width * c.window.height;
    c.rank = round % 3 == 0 ? all / 2 : round % 3 == 1 ? random.below(all) : round % 2 * (all - 1);
    const DaxiSize size = {1 + random.below(round % 5 == 0 ? 4 : 40), 1 + random.below(round % 4 == 0 ? 4 : 40)};
    const bool isInMemory = c.border == DAXI_BORDER_IN_MEMORY;
    RankScene<TypeParam> scene(size, isInMemory ? DaxiSize{6, 6} : DaxiSize{}, static_cast<uint64_t>(round));
    if (round % 2) scene.coarsen(static_cast<uint64_t>(round));
    checkRank(scene, c);
  }
}

// The networks of square windows, with pieces of full and of few vectors.
TYPED_TEST(FilterRank, SmallMedians) {
  for (const int32_t side : {3, 5, 7, 9}) {
    for (int32_t border = 0; border < 7; ++border) {
      const DaxiSize margin = border == DAXI_BORDER_IN_MEMORY ? DaxiSize{side / 2, side / 2} : DaxiSize{};
      for (const DaxiSize size : {DaxiSize{2, 3}, {side, side + 18}, {70 + 3 * border, 34}, {257 + border, 3}}) {
        const RankScene<TypeParam> scene(size, margin, static_cast<uint64_t>(border));
        checkRank(scene, {{side, side}, side * side / 2, border});
      }
    }
  }
}

// Several strips and tiles; counts up to those of the largest window.
TYPED_TEST(FilterRank, ManyTilesAndTheLargestWindow) {
  checkRank(RankScene<TypeParam>({530, 131}, {}, 1), {{4, 3}, 6, DAXI_BORDER_MIRROR});
  checkRank(RankScene<TypeParam>({140, 5}, {}, 1), {{11, 9}, 49, DAXI_BORDER_CLIP});
  RankScene<TypeParam> scene({9, 4}, {}, 1);
  for (const int32_t rank : {0, 32512, 65024}) checkRank(scene, {{255, 255}, rank, DAXI_BORDER_CIRCULAR});
  scene.image.fill([](int32_t, int32_t) { return std::numeric_limits<TypeParam>::max(); });
  checkRank(scene, {{255, 255}, 65024, DAXI_BORDER_REPLICATE});
}

// A network that is right for all arrangements of two values is right for all values. Columns are sorted first, so their
// counts of the larger value are all that matters: random ones.
TEST(FilterRankNetworks, TwoValues) {
  Random random(9);
  RankScene<uint8_t> scene({9 * 300, 10}, {}, 1);
  for (int32_t x = 0; x < scene.size.width; ++x) {
    const int32_t count = random.below(11);
    for (int32_t y = 0; y < 10; ++y) scene.image.at(x, y) = (y * 3 + x) % 10 < count ? 255 : 0;
  }
  for (const int32_t side : {7, 9}) checkRank(scene, {{side, side}, side * side / 2, DAXI_BORDER_MIRROR});
}

TEST(FilterRankPercentile, IsThatOfSortedPixels) {
  const auto rankOf = [](double percentile, DaxiSize window) {
    int32_t rank = -1;
    EXPECT_EQ(DAXI_RankFromPercentile(percentile, window, &rank), DAX_STS_OK);
    return rank;
  };
  EXPECT_EQ(rankOf(0, {5, 5}), 0);
  EXPECT_EQ(rankOf(0.5, {5, 5}), 12);
  EXPECT_EQ(rankOf(0.5, {4, 4}), 8);
  EXPECT_EQ(rankOf(0.999, {3, 3}), 8);
  EXPECT_EQ(rankOf(1, {255, 255}), 65024);
  int32_t rank = 7;
  EXPECT_EQ(DAXI_RankFromPercentile(std::numeric_limits<double>::quiet_NaN(), {3, 3}, &rank), DAX_STS_BAD_PARAM);
  EXPECT_EQ(rank, 7);
}

}  // namespace
}  // namespace dax::test
