#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

#include "pcl/search/kdtree_nearest.h"
#include "tests/pcl/search/kd_tree.h"
#include "tests/pcl/search/point_sets.h"

namespace dax::test {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN(), kInf = std::numeric_limits<float>::infinity();

// Places of points, places near them, and some further away.
std::vector<float> makeQueries(const std::vector<float>& points, int32_t d, int32_t count) {
  Random random(points.size());
  std::vector<float> queries;
  const auto n = static_cast<int32_t>(points.size()) / d;
  for (int32_t i = 0; i < count; ++i) {
    const float* const p = &points[static_cast<size_t>(random.below(n) * d)];
    const float away = i % 3 == 0 ? 0.0f : i % 3 == 1 ? 0.3f : 20.0f;
    for (int32_t a = 0; a < d; ++a) queries.push_back(p[a] + away * unitFloat(random));
  }
  return queries;
}

struct Shape {
  int32_t n, d, leafSize, k;
};

// The order of points and every neighbour, ties included, as the definition has them; with either kernel, which leave
// the same block behind.
void checkAgainstDefinition(PointKind kind, const Shape& shape, Guard guard = Guard::after) {
  const auto& [n, d, leafSize, k] = shape;
  SCOPED_TRACE(testing::Message() << "kind " << static_cast<int>(kind) << ", " << n << " points, " << d
                                  << " axes, leaves of " << leafSize << ", k " << k);
  const std::vector<float> points = makePoints(kind, n, d);
  const oracle::KdTree expected(points, d, leafSize);
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    FirstTree tree(points, d, leafSize, isa, guard);
    const DAX3DPCL_KDTREE& record = *tree.record();
    ASSERT_EQ(static_cast<int32_t>(record.nodeCount), expected.nodeCount());
    for (size_t i = 0; i < expected.index().size(); ++i) {
      ASSERT_EQ(record.index[i], expected.index()[i]);
      const auto row = static_cast<size_t>(d);
      ASSERT_EQ(std::memcmp(record.points + i * row, &points[record.index[i] * row], sizeof(float) * row), 0);
    }
    const std::vector<float> queries = makeQueries(points, d, 12);
    for (size_t q = 0; q < queries.size(); q += static_cast<size_t>(d)) {
      GuardedBuffer<uint32_t> indices(static_cast<size_t>(k));
      GuardedBuffer<float> distances(static_cast<size_t>(k));
      searchNearest(KdView(record), {&queries[q], 1, k, indices.data(), distances.data()}, record.boxStack, isa);
      ASSERT_EQ(neighbours(indices.data(), distances.data(), std::min(n, k)),
                expected.nearest(&queries[q], static_cast<size_t>(k)));
    }
  }
}

TEST(KdTree, IsDividedAndSearchedByItsDefinition) {
  const Shape shapes[] = {{1, 3, 1, 1},    {2, 3, 1, 3},    {3, 1, 1, 2},     {40, 3, 1, 45},     {97, 2, 3, 8},
                          {300, 3, 10, 1}, {300, 3, 4, 17}, {300, 4, 2, 5},   {250, 5, 10, 9},    {200, 7, 6, 4},
                          {150, 8, 1, 3},  {150, 16, 9, 6}, {90, 3, 90, 7},   {800, 1, 10, 16},   {1500, 3, 10, 16},
                          {300, 3, 5, 64}, {300, 3, 5, 65}, {300, 4, 2, 130}, {1500, 3, 10, 700}, {150, 2, 3, 200}};
  for (const PointKind kind : kPointKinds) {
    for (const Shape& shape : shapes) checkAgainstDefinition(kind, shape);
  }
}

// Memory of exactly the queried size, with the most nodes and boxes that there can be.
TEST(KdTree, EverySmallSizeFitsItsBlock) {
  for (int32_t n = 1; n <= 130; ++n) {
    for (const int32_t d : {1, 2, 3, 5}) {
      checkAgainstDefinition(kPointKinds[n % 7], {n, d, 1, n % 13 + 1}, kGuards[n % 2]);
    }
  }
}

// The bound of a far region is a difference of floats; so only nearly the nearest come out far away from the cloud.
TEST(KdTree, FindsTheNearestByBruteForce) {
  for (const PointKind kind : kPointKinds) {
    for (const int32_t d : {1, 2, 3, 6, 13}) {
      const std::vector<float> points = makePoints(kind, 2000, d, 3);
      FirstTree tree(points, d, 10);
      const std::vector<float> queries = makeQueries(points, d, 40);
      for (size_t q = 0; q < queries.size(); q += static_cast<size_t>(d)) {
        const std::vector<oracle::Neighbour> found = tree.nearest(&queries[q], 9);
        const std::vector<float> expected = oracle::sortedDistances(points, d, &queries[q]);
        for (size_t i = 0; i < found.size(); ++i) {
          ASSERT_LE(found[i].distance, expected[i] * (1 + 2 * FLT_EPSILON));
          ASSERT_EQ(found[i].distance,
                    oracle::squaredDistance(&points[found[i].index * static_cast<size_t>(d)], &queries[q], d));
        }
      }
    }
  }
}

TEST(KdTree, NonFinitePointsDisturbNoOtherQuery) {
  const float bad[] = {kNaN, kInf, -kInf, -kNaN, 3e38f};
  for (const int32_t d : {1, 3, 4}) {
    for (const int32_t period : {1, 2, 7, 40}) {
      std::vector<float> points = makePoints(PointKind::uniform, 1000, d, 5);
      Random random(7);
      for (size_t i = 0; i < points.size(); i += static_cast<size_t>(d * period)) {
        points[i + static_cast<size_t>(random.below(d))] = bad[random.below(5)];
      }
      FirstTree tree(points, d, 3), portable(points, d, 3, DAX_ISA_PORTABLE);
      ASSERT_TRUE(std::equal(portable.record()->index, portable.record()->index + 1000, tree.record()->index));
      std::vector<float> queries = makePoints(PointKind::uniform, 60, d, 6);
      for (size_t q = 0; q < queries.size(); q += static_cast<size_t>(d)) {
        const std::vector<float> expected = oracle::sortedDistances(points, d, &queries[q]);
        GuardedBuffer<uint32_t> indices(8);
        GuardedBuffer<float> distances(8);
        int32_t count = 0;
        ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_KNearestSearch(tree.record(), &queries[q], 1, d, 8, indices.data(),
                                                        distances.data(), &count),
                  DAX_STS_OK);
        for (size_t i = 0; i < std::min<size_t>(8, expected.size()); ++i) ASSERT_EQ(distances[i], expected[i]);
        queries[q] = bad[q % 5];
        ASSERT_EQ(tree.nearest(&queries[q], 1).size(), 1u);
      }
    }
  }
}

// A depth of some two thousand, in the little stack of a host's thread.
TEST(KdTree, DeepTreesNeedNoStack) {
  std::vector<float> points;
  for (int32_t i = 0; i < 2160; ++i) {
    for (int32_t a = 0; a < 8; ++a) points.push_back(a == i / 270 ? std::ldexp(1.0f, i % 270 - 148) : 0.0f);
  }
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, 128 * 1024);
  pthread_t thread;
  const auto body = [](void* opaque) -> void* {
    const auto& all = *static_cast<const std::vector<float>*>(opaque);
    FirstTree tree(all, 8, 1);
    EXPECT_EQ(tree.record()->nodeCount, 4319u);
    for (const size_t i : {size_t{0}, size_t{269}, size_t{1000}, size_t{2159}}) {
      EXPECT_EQ(tree.nearest(&all[i * 8], 2)[0].distance, 0.0f);
    }
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, body, &points), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST(KdTree, WorksWhereItIsCopiedTo) {
  const std::vector<float> points = makePoints(PointKind::uniform, 500, 3);
  FirstTree tree(points, 3, 5);
  checkMoves(tree.block(), DAX3DPCL_SEARCH_KDTREE_HandleRerange,
             [&](DAX3DPCL_KDTREE* record) { return FirstTree::nearest(record, &points[30], 3, 70); });
}

// Whatever was there before, padding included.
TEST(KdTree, BuildsAreEqualBytes) {
  const std::vector<float> points = makePoints(PointKind::clustered, 300, 3);
  FirstTree first(points, 3, 4);
  SecondTree second(points, 3, 4), inner(points, 3, 4, true);
  Bytes stack = queried(DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize, Guard::after, 300, 3);
  const auto built = [](auto& tree, uint8_t before, const auto& build) {
    std::fill(tree.block().begin(), tree.block().end(), before);
    build();
    const auto* const record = tree.record();
    const auto* const nodes = reinterpret_cast<const uint8_t*>(record->nodes);
    std::vector<uint8_t> bytes(tree.block().begin(), tree.block().begin() + 128);
    bytes.insert(bytes.end(), nodes, nodes + sizeof(KdNode) * record->nodeCount);
    return bytes;
  };
  const auto check = [&](auto& tree, const auto& build) { EXPECT_EQ(built(tree, 0, build), built(tree, 0xEE, build)); };
  check(first, [&] { _DAX3DPCL_SEARCH_KDTREE_BuildIndex(first.record(), points.data(), 300, 3, 4); });
  check(second,
        [&] { _DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(second.record(), points.data(), 300, 3, 4, stack.data()); });
  check(inner,
        [&] { _DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner(inner.record(), points.data(), 300, 3, 4, stack.data()); });
}

// Neither the build nor a search looks at every pair: minutes, if one did.
TEST(KdTree, ManyPointsInOnePlace) {
  constexpr int32_t kCount = 100000;
  for (const float elsewhere : {1.0f, kNaN, kInf}) {
    std::vector<float> points(size_t{3} * kCount, 1.0f);
    for (size_t i = 0; i < points.size() / 2; ++i) points[i] = elsewhere;
    FirstTree tree(points, 3, 1);
    EXPECT_EQ(tree.record()->nodeCount, 2u * kCount - 1);
    const float near[3] = {1, 1, 1}, away[3] = {3, 1, 1};
    for (int32_t i = 0; i < 1000; ++i) {
      ASSERT_EQ(tree.nearest(near, 40).back().distance, 0.0f);
      ASSERT_EQ(tree.nearest(away, 40).back().distance, 4.0f);
    }
  }
}

TEST(KdTree, WithoutRootFindsNothing) {
  GuardedBuffer<DAX3DPCL_KDTREE> zeroed(1, Guard::after, 0);
  const float query[3] = {};
  EXPECT_TRUE(FirstTree::nearest(zeroed.data(), query, 3, 4).empty());
  EXPECT_EQ(DAX3DPCL_SEARCH_KDTREE_HandleRerange(zeroed.data()), DAX_STS_OK);
  EXPECT_EQ(zeroed[0].root, nullptr);
  const std::vector<float> points = makePoints(PointKind::grid, 20, 3);
  FirstTree tree(points, 3, 4);
  _DAX3DPCL_SEARCH_KDTREE_BuildIndex(tree.record(), points.data(), 20, 3, 0);
  EXPECT_TRUE(tree.nearest(query, 2).empty());
}

TEST(KdTree, Sizes) {
  uint64_t bytes = 7;
  auto* const query = DAX3DPCL_SEARCH_KDTREE_BufferSize;
  EXPECT_EQ(query(1000, 3, &bytes), DAX_STS_OK);
  EXPECT_EQ(bytes, 128u + 12032 + 128 + 4096 + 128 + 80000 + 48000);
  EXPECT_EQ(query(INT32_MAX, 3, &bytes), DAX_STS_OK);
  EXPECT_GT(bytes, uint64_t{INT32_MAX} * 140);
}

}  // namespace
}  // namespace dax::test
