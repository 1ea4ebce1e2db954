// Trees for tests, in guarded memory of exactly the queried size.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "frame/cpu_feature.h"
#include "pcl/search/kdtree.h"
#include "pcl/search/kdtree_v2.h"
#include "tests/pcl/search/kdtree_oracle.h"
#include "tests/support/guarded_buffer.h"

namespace dax::test {

using Bytes = GuardedBuffer<uint8_t>;

template <class Query, class... Arguments>
Bytes queried(Query query, Guard guard, Arguments... arguments) {
  uint64_t bytes = 0;
  EXPECT_EQ(query(arguments..., &bytes), DAX_STS_OK);
  EXPECT_EQ(bytes % 128, 0u);
  return Bytes(bytes, guard);
}

// One query's row, made into pairs.
inline std::vector<oracle::Neighbour> neighbours(const uint32_t* indices, const float* distances, int32_t count) {
  std::vector<oracle::Neighbour> row;
  for (int32_t i = 0; i < count; ++i) row.push_back({indices[i], distances[i]});
  return row;
}

// Searches find the same after each of several moves, to multiples of 8 that are seldom more, when nothing is left where
// the block was built.
template <class Record, class Search>
void checkMoves(Bytes& block, DaxStatus (*rerange)(Record*), const Search& search) {
  auto* const built = reinterpret_cast<Record*>(block.data());
  const std::vector<oracle::Neighbour> expected = search(built);
  ASSERT_EQ(rerange(built), DAX_STS_OK);
  ASSERT_EQ(search(built), expected);
  constexpr size_t kMoves = 20, kStep = 136;
  std::vector<uint64_t> home((block.size() + kMoves * kStep) / 8);
  auto* const start = reinterpret_cast<uint8_t*>(home.data());
  std::memcpy(start, block.data(), block.size());
  std::memset(block.data(), 0xEE, block.size());
  for (size_t move = 0; move < kMoves; ++move) {
    uint8_t* const place = start + move * kStep;
    if (move > 0) std::memmove(place, place - kStep, block.size());
    auto* const record = reinterpret_cast<Record*>(place);
    for (int32_t again = 0; again < 2; ++again) {
      ASSERT_EQ(rerange(record), DAX_STS_OK);
      ASSERT_EQ(search(record), expected);
    }
  }
}

// First generation.
class FirstTree {
 public:
  FirstTree(const std::vector<float>& points, int32_t d, int32_t leafSize, int32_t isa = currentIsa(),
            Guard guard = Guard::after)
      : n_(static_cast<int32_t>(points.size()) / d),
        d_(d),
        block_(queried(DAX3DPCL_SEARCH_KDTREE_BufferSize, guard, n_, d)) {
    buildKdTree(record(), points.data(), n_, d, leafSize, isa);
  }

  DAX3DPCL_KDTREE* record() { return reinterpret_cast<DAX3DPCL_KDTREE*>(block_.data()); }
  Bytes& block() { return block_; }

  std::vector<oracle::Neighbour> nearest(const float* q, int32_t k) { return nearest(record(), q, d_, k); }

  static std::vector<oracle::Neighbour> nearest(DAX3DPCL_KDTREE* tree, const float* q, int32_t d, int32_t k) {
    GuardedBuffer<uint32_t> indices(static_cast<size_t>(k));
    GuardedBuffer<float> distances(static_cast<size_t>(k));
    int32_t count = -1;
    EXPECT_EQ(DAX3DPCL_SEARCH_KDTREE_KNearestSearch(tree, q, 1, d, k, indices.data(), distances.data(), &count),
              DAX_STS_OK);
    for (int32_t i = count; i < k; ++i) {
      EXPECT_EQ(indices[static_cast<size_t>(i)], 0u);
      EXPECT_EQ(distances[static_cast<size_t>(i)], i == k - 1 ? FLT_MAX : 0.0f);
    }
    return neighbours(indices.data(), distances.data(), count);
  }

 private:
  int32_t n_, d_;
  Bytes block_;
};

// Second generation, of either kind, with the stack of a search.
class SecondTree {
 public:
  SecondTree(const std::vector<float>& points, int32_t d, int32_t leafSize, bool inner = false)
      : n_(static_cast<int32_t>(points.size()) / d),
        d_(d),
        inner_(inner),
        block_(queried(inner ? DAX3DPCL_SEARCH_KDTREE_V2_BufferSize_Inner : DAX3DPCL_SEARCH_KDTREE_V2_BufferSize,
                       Guard::after, n_, d)),
        stack_(stack(1)) {
    Bytes build =
        queried(inner ? DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize_Inner : DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize,
                Guard::after, n_, d);
    EXPECT_EQ((inner ? DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner : DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2)(
                  record(), points.data(), n_, d, leafSize, build.data()),
              DAX_STS_OK);
  }

  DAX3DPCL_KDTREE_V2* record() { return reinterpret_cast<DAX3DPCL_KDTREE_V2*>(block_.data()); }
  Bytes& block() { return block_; }
  void* searchStack() { return stack_.data(); }
  int32_t n() const { return n_; }

  Bytes stack(uint32_t threads) const {
    return queried(inner_ ? DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize_Inner
                          : DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize,
                   Guard::after, n_, threads);
  }

  std::vector<oracle::Neighbour> nearest(const float* q, int32_t k) { return nearest(record(), q, k); }
  std::vector<oracle::Neighbour> nearest(const DAX3DPCL_KDTREE_V2* tree, const float* q, int32_t k) {
    std::vector<uint32_t> indices(static_cast<size_t>(k));
    std::vector<float> distances(static_cast<size_t>(k));
    int32_t count = -1;
    EXPECT_EQ(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2(tree, q, 1, d_, k, indices.data(), distances.data(), &count,
                                                       stack_.data()),
              DAX_STS_OK);
    return neighbours(indices.data(), distances.data(), count);
  }

  std::vector<oracle::Neighbour> within(const float* q, float radius, int32_t max) {
    GuardedBuffer<uint32_t> indices(static_cast<size_t>(max));
    GuardedBuffer<float> distances(static_cast<size_t>(max));
    int32_t count = -1;
    EXPECT_EQ(DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(record(), q, d_, max, indices.data(), distances.data(), &count,
                                                       stack_.data(), radius),
              DAX_STS_OK);
    return neighbours(indices.data(), distances.data(), count);
  }

 private:
  int32_t n_, d_;
  bool inner_;
  Bytes block_, stack_;
};

}  // namespace dax::test
