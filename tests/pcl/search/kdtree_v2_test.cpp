#include <gtest/gtest.h>

#include <limits>

#include "pcl/search/kdtree_nearest.h"
#include "tests/pcl/search/kd_tree.h"
#include "tests/pcl/search/point_sets.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

using oracle::Neighbour;

std::vector<Neighbour> byDistance(std::vector<Neighbour> all) {
  std::sort(all.begin(), all.end(), [](const Neighbour& a, const Neighbour& b) {
    return std::pair(a.distance, a.index) < std::pair(b.distance, b.index);
  });
  return all;
}

TEST(KdTreeV2, IsTheFirstGenerationsTree) {
  for (const PointKind kind : kPointKinds) {
    for (const int32_t d : {1, 2, 3, 4, 9}) {
      const std::vector<float> points = makePoints(kind, 700, d, 2), queries = makePoints(kind, 25, d, 8);
      FirstTree first(points, d, 6);
      SecondTree second(points, d, 6);
      for (size_t q = 0; q < queries.size(); q += static_cast<size_t>(d)) {
        ASSERT_EQ(second.nearest(&queries[q], 11), first.nearest(&queries[q], 11));
      }
    }
  }
}

// The pool of nodes runs out in trees of single points: then leaves hold what is left, of about one size.
TEST(KdTreeV2, InnerTreesAreAsExact) {
  for (const PointKind kind : kPointKinds) {
    for (const int32_t n : {1, 50, 51, 99, 100, 101, 3000}) {
      const std::vector<float> points = makePoints(kind, n, 3, 4), queries = makePoints(kind, 20, 3, 9);
      SecondTree tree(points, 3, 1, true);
      const DAX3DPCL_KDTREE_V2& record = *tree.record();
      ASSERT_LE(record.nodeCount, static_cast<uint32_t>(std::max(n, 100)));
      for (uint32_t i = 0; i < record.nodeCount; ++i) {
        const KdNode& node = record.nodes[i];
        if (kind == PointKind::uniform && !node.first) {
          ASSERT_LE(node.hi - node.lo, 12u);
        }
      }
      for (size_t q = 0; q < queries.size(); q += 3) {
        const std::vector<float> expected = oracle::sortedDistances(points, 3, &queries[q]);
        const std::vector<Neighbour> found = tree.nearest(&queries[q], 7);
        for (size_t i = 0; i < found.size(); ++i) {
          ASSERT_LE(found[i].distance, expected[i] * (1 + 2 * FLT_EPSILON));
        }
      }
    }
  }
}

TEST(KdTreeV2, WithinARadius) {
  for (const PointKind kind : kPointKinds) {
    for (const int32_t d : {1, 2, 3, 5}) {
      const std::vector<float> points = makePoints(kind, 600, d, 2);
      SecondTree tree(points, d, 7);
      for (const float radius : {0.05f, 1.0f, 4.0f, 1e19f, 1e20f}) {
        for (size_t i = 0; i < 600; i += 59) {
          const float* const q = &points[i * static_cast<size_t>(d)];
          const std::vector<Neighbour> all = tree.within(q, radius, 600);
          ASSERT_EQ(byDistance(all), oracle::within(points, d, q, radius * radius)) << "radius " << radius;
          // The first ones met.
          const size_t max = (all.size() + 1) / 2;
          const std::vector<Neighbour> some = tree.within(q, radius, static_cast<int32_t>(max));
          ASSERT_EQ(some, std::vector<Neighbour>(all.begin(), all.begin() + static_cast<ptrdiff_t>(max)));
        }
      }
    }
  }
}

TEST(KdTreeV2, SmallRadiiFindNothing) {
  const std::vector<float> points = makePoints(PointKind::identical, 30, 3);
  SecondTree tree(points, 3, 7);
  for (const float radius : {0.0f, -0.0f, -1.1e-7f, 3.4e-4f})
    EXPECT_TRUE(tree.within(points.data(), radius, 5).empty());
  EXPECT_EQ(tree.within(points.data(), 3.5e-4f, 50).size(), 30u);
}

TEST(KdTreeV2, MaskedRadius) {
  const std::vector<float> points = makePoints(PointKind::grid, 400, 3, 2);
  SecondTree tree(points, 3, 7);
  GuardedBuffer<uint8_t> mask(400);
  for (size_t i = 0; i < 400; ++i) mask[i] = i % 3 == 0 ? 0 : static_cast<uint8_t>(i);
  for (size_t i = 0; i < 400; i += 13) {
    std::vector<Neighbour> expected;
    for (const Neighbour& each : oracle::within(points, 3, &points[3 * i], 2.25f)) {
      if (mask[each.index] != 0) expected.push_back(each);
    }
    ASSERT_GT(expected.size(), 2u);
    GuardedBuffer<uint32_t> indices(expected.size()), list(expected.size());
    GuardedBuffer<float> distances(expected.size());
    int32_t count = 0;
    ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_RNearestSearchMask_V2(
                  tree.record(), &points[3 * i], 3, static_cast<int32_t>(expected.size()), indices.data(),
                  distances.data(), &count, tree.searchStack(), 1.5f, mask.data(), list.data()),
              DAX_STS_OK);
    ASSERT_EQ(byDistance(neighbours(indices.data(), distances.data(), count)), expected);
    for (size_t j = 0; j < expected.size(); ++j) ASSERT_EQ(list[j], expected[j].index);
  }
}

// Results of the searches for all points, one after the other and by tiles in any order, with stacks of exactly the size
// that is asked for.
class OnPool : public testing::TestWithParam<bool> {
 public:
  static constexpr int32_t kCount = 1501, kMax = 6;
  std::vector<float> points_ = makePoints(PointKind::clustered, kCount, 3, 2);
  SecondTree tree_{points_, 3, 5, GetParam()};

  struct Results {
    std::vector<uint32_t> indices = std::vector<uint32_t>(kCount * kMax, 77);
    std::vector<float> distances = std::vector<float>(kCount * kMax, 77);
    std::vector<int32_t> counts = std::vector<int32_t>(kCount, 77);
    bool operator==(const Results&) const = default;
  };

  DaxStatus nearest(MockPool* pool, uint32_t threads, Results& r) {
    Bytes stack = tree_.stack(std::max(threads, 1u));
    return DAX3DPCL_KDTREE_KNearestSearch_MT(pool, threads, tree_.record(), points_.data(), kCount, 3, kMax,
                                             r.indices.data(), r.distances.data(), r.counts.data(), stack.data());
  }
  DaxStatus within(MockPool* pool, uint32_t threads, Results& r) {
    Bytes stack = tree_.stack(std::max(threads, 1u));
    return DAX3DPCL_KDTREE_RNearestSearch_MT(pool, threads, tree_.record(), points_.data(), kCount, 3, kMax,
                                             r.indices.data(), r.distances.data(), r.counts.data(), stack.data(),
                                             0.02f);
  }
};

TEST_P(OnPool, TilesGiveTheSameResults) {
  for (const auto search : {&OnPool::nearest, &OnPool::within}) {
    Results serial;
    ASSERT_EQ((this->*search)(nullptr, 8, serial), DAX_STS_OK);
    MockPool pool;
    pool.threads = 5;  // more than announced
    Results results;
    ASSERT_EQ((this->*search)(&pool, 4, results), DAX_STS_OK);
    ASSERT_TRUE(results == serial);
    MockPool failing;
    failing.failingTile = 2;
    EXPECT_EQ((this->*search)(&failing, 4, results), failing.failure);
  }
}

TEST_P(OnPool, TheSameAsOneByOne) {
  Results all;
  ASSERT_EQ(nearest(nullptr, 1, all), DAX_STS_OK);
  EXPECT_EQ(all.counts[0], kMax);
  EXPECT_EQ(all.counts[1], 77);
  for (size_t i = 0; i < kCount; i += 50) {
    ASSERT_EQ(neighbours(&all.indices[i * kMax], &all.distances[i * kMax], kMax), tree_.nearest(&points_[3 * i], kMax));
  }
  ASSERT_EQ(within(nullptr, 1, all), DAX_STS_OK);
  for (size_t i = 0; i < kCount; i += 50) {
    ASSERT_EQ(neighbours(&all.indices[i * kMax], &all.distances[i * kMax], all.counts[i]),
              tree_.within(&points_[3 * i], 0.02f, kMax));
  }
}
INSTANTIATE_TEST_SUITE_P(KdTreeV2, OnPool, testing::Bool());

TEST(KdTreeV2, WorksWhereItIsCopiedTo) {
  const std::vector<float> points = makePoints(PointKind::uniform, 500, 3);
  for (const bool inner : {false, true}) {
    SecondTree tree(points, 3, 2, inner);
    checkMoves(tree.block(), DAX3DPCL_SEARCH_KDTREE_HandleRerange_V2,
               [&](const DAX3DPCL_KDTREE_V2* record) { return tree.nearest(record, &points[30], 70); });
  }
}

TEST(KdTreeV2, WithoutRootFindsNothing) {
  const DAX3DPCL_KDTREE_V2 zeroed = {};
  const float query[3] = {};
  uint32_t index = 7;
  float distance = 7;
  int32_t count = 7;
  uint8_t stack[128];
  EXPECT_EQ(DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(&zeroed, query, 3, 1, &index, &distance, &count, stack, 1),
            DAX_STS_OK);
  EXPECT_EQ(count, 0);
  count = 7;
  EXPECT_EQ(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2(&zeroed, query, 1, 3, 1, &index, &distance, &count, stack),
            DAX_STS_OK);
  EXPECT_EQ(count, 0);
}

TEST(KdTreeV2, Sizes) {
  const auto size = [](auto* query, auto... arguments) {
    uint64_t result = 0;
    EXPECT_EQ(query(arguments..., &result), DAX_STS_OK);
    return result;
  };
  EXPECT_EQ(size(DAX3DPCL_SEARCH_KDTREE_V2_BufferSize, 1000, 3), 12032u + 4096 + 128 + 128 + 80000);
  EXPECT_EQ(size(DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize, 1000, 3), 48000u);
  EXPECT_EQ(size(DAX3DPCL_SEARCH_KDTREE_V2_BufferSize_Inner, 10, 3), 4u * 128 + 4096);
  EXPECT_EQ(size(DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize_Inner, 10, 3), 2432u);
  EXPECT_EQ(size(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize, 1000), 48000u);
  EXPECT_EQ(size(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize_Inner, 1000), 24064u);
  EXPECT_EQ(size(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize, 10, 64u), 64u * 512);
}

}  // namespace
}  // namespace dax::test
