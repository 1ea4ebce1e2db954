#include <gtest/gtest.h>

#include "dax3dpcl.h"
#include "tests/pcl/search/point_sets.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

struct Neighbours {
  explicit Neighbours(size_t queries, int32_t k)
      : indices(queries * static_cast<size_t>(k)), distances(indices.size()), counts(queries) {}
  std::vector<uint32_t> indices;
  std::vector<float> distances;
  std::vector<int32_t> counts;
};

// Both generations: the nearest of every point.

TEST(Digests, KdTrees) {
  Digest digest;
  for (const PointKind kind : kPointKinds) {
    for (const int32_t d : {2, 3, 5}) {
      constexpr int32_t kCount = 400, kNearest = 7;
      const std::vector<float> points = makePoints(kind, kCount, d);
      uint64_t treeBytes = 0, stackBytes = 0;
      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BufferSize(kCount, d, &treeBytes), DAX_STS_OK);
      std::vector<uint64_t> block(treeBytes / 8), stack;
      auto* const first = reinterpret_cast<DAX3DPCL_KDTREE*>(block.data());
      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BuildIndex(first, points.data(), kCount, d, 8), DAX_STS_OK);
      Neighbours near(kCount, kNearest);
      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_KNearestSearch(first, points.data(), kCount, d, kNearest, near.indices.data(),
                                                      near.distances.data(), near.counts.data()),
                DAX_STS_OK);
      digest.add(near.indices.data(), near.indices.size() * 4).add(near.distances.data(), near.distances.size() * 4);

      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize(kCount, d, &stackBytes), DAX_STS_OK);
      stack.resize(stackBytes);
      auto* const second = reinterpret_cast<DAX3DPCL_KDTREE_V2*>(block.data());
      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(second, points.data(), kCount, d, 8, stack.data()), DAX_STS_OK);
      int32_t count = 0;
      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(second, points.data(), d, kCount, near.indices.data(),
                                                         near.distances.data(), &count, stack.data(), 3),
                DAX_STS_OK);
      digest.add(near.indices.data(), static_cast<size_t>(count) * 4);
      digest.add(near.distances.data(), static_cast<size_t>(count) * 4);
    }
  }
  EXPECT_EQ(digest.value(), 0x5E439BCB50C12BF2u);
}

TEST(Digests, KdTreesOnPool) {
  constexpr int32_t kCount = 1000, kNearest = 9;
  const std::vector<float> points = makePoints(PointKind::clustered, kCount, 3);
  uint64_t treeBytes = 0, stackBytes = 0;
  ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_V2_BufferSize(kCount, 3, &treeBytes), DAX_STS_OK);
  ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize(kCount, 16, &stackBytes), DAX_STS_OK);
  std::vector<uint64_t> block(treeBytes / 8), stack(stackBytes / 8);
  auto* const tree = reinterpret_cast<DAX3DPCL_KDTREE_V2*>(block.data());
  ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(tree, points.data(), kCount, 3, 10, stack.data()), DAX_STS_OK);
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    Neighbours near(kCount, kNearest);
    ASSERT_EQ(
        DAX3DPCL_KDTREE_KNearestSearch_MT(pool.get(), threads, tree, points.data(), kCount, 3, kNearest,
                                          near.indices.data(), near.distances.data(), near.counts.data(), stack.data()),
        DAX_STS_OK);
    Digest digest;
    digest.add(near.indices.data(), near.indices.size() * 4).add(near.distances.data(), near.distances.size() * 4);
    ASSERT_EQ(DAX3DPCL_KDTREE_RNearestSearch_MT(pool.get(), threads, tree, points.data(), kCount, 3, kNearest,
                                                near.indices.data(), near.distances.data(), near.counts.data(),
                                                stack.data(), 0.5f),
              DAX_STS_OK);
    digest.add(near.indices.data(), near.indices.size() * 4).add(near.counts.data(), near.counts.size() * 4);
    EXPECT_EQ(digest.value(), 0x1233B50AD4AF6170u) << threads << " threads";
  }
}

}  // namespace
}  // namespace dax::test
