#include "frame/tiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

TEST(Tiles, SizeAndDecision) {
  EXPECT_EQ(tilePerThread(10, 3), 4);
  EXPECT_EQ(tilePerThread(20, 4), 5);
  EXPECT_EQ(tilePerThread(3, 7), 1);
  EXPECT_EQ(tilePerThread(5, 0), 5);
  EXPECT_EQ(tilePerThread(INT32_MAX, UINT32_MAX), 1);
  EXPECT_EQ(tilePerThread(INT32_MAX, 2), 1 << 30);
  MockPool pool;
  EXPECT_TRUE(hasPool(&pool, 2));
  EXPECT_FALSE(hasPool(&pool, 1));
  EXPECT_FALSE(hasPool(&pool, 0));
  EXPECT_FALSE(hasPool(nullptr, 8));
}

// Whatever the host does within its contract, every index is visited once and every worker index is one announced.
TEST(Tiles, EveryIndexOnce) {
  for (const auto order : {MockPool::Order::forward, MockPool::Order::backward, MockPool::Order::shuffled}) {
    for (const bool passesLength : {false, true}) {
      for (const uint32_t threads : {2u, 3u, 7u, 64u}) {
        for (const int32_t total : {1, 9, 10, 100}) {
          MockPool pool;
          pool.order = order, pool.passesLength = passesLength, pool.threads = threads;
          pool.oneWorker = total == 9, pool.concurrent = total == 100;
          std::vector<int> visits(static_cast<size_t>(total));
          const DaxStatus status = runTiles(&pool, threads, total, 1, [&](int32_t first, int32_t end, uint32_t slice) {
            EXPECT_LT(slice, threads);
            for (int32_t i = first; i < end; ++i) ++visits[static_cast<size_t>(i)];
            return DaxStatus{DAX_STS_OK};
          });
          EXPECT_EQ(status, DAX_STS_OK);
          EXPECT_EQ(visits, std::vector<int>(static_cast<size_t>(total), 1));
          EXPECT_EQ(pool.calls, 1);
        }
      }
    }
  }
}

TEST(Tiles, EveryRowOnceWithAPoolOrWithout) {
  MockPool pool;
  for (const uint32_t threads : {1u, 3u}) {
    int visits[9] = {};
    const auto visit = [&](int32_t first, int32_t end) {
      std::for_each(visits + first, visits + end, [](int& v) { ++v; });
    };
    EXPECT_EQ(runRows({&pool, threads}, 9, visit), DAX_STS_OK);
    EXPECT_EQ(std::count(visits, visits + 9, 1), 9) << threads;
  }
}

// Every tile has a slice of its own below the announced number, however many workers the pool has.
TEST(Tiles, StatusComesBackAndAnyPoolServes) {
  MockPool pool;
  pool.failingTile = 1;
  const auto nothing = [](int32_t, int32_t, uint32_t) { return DaxStatus{DAX_STS_OK}; };
  EXPECT_EQ(runTiles(&pool, 4, 100, 1, nothing), pool.failure);

  for (const uint32_t workers : {1u, 3u, 8u}) {
    for (const int32_t minTile : {1, 30}) {
      MockPool other;
      other.threads = workers, other.passesLength = workers == 3;
      std::vector<int> slices(4);
      const auto count = [&](int32_t, int32_t, uint32_t slice) {
        ++slices.at(slice);
        return DaxStatus{DAX_STS_OK};
      };
      EXPECT_EQ(runTiles(&other, 4, 80, minTile, count), DAX_STS_OK);
      EXPECT_EQ(slices, minTile == 1 ? (std::vector<int>{1, 1, 1, 1}) : (std::vector<int>{1, 1, 1, 0}));
    }
  }
}

}  // namespace
}  // namespace dax::test
