// The reference pool against its contract.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

#include "daxhost.h"

namespace dax::test {
namespace {

struct Record {
  explicit Record(int32_t count) : visits(static_cast<size_t>(count)) {}
  std::vector<std::atomic<int>> visits;
  std::array<std::atomic<int>, 1024> busy = {};
  std::atomic<bool> clash = false;
  uint32_t threads = 0;
  void* pool = nullptr;
  int32_t tileSize = 1;

  // Visits the indices of a tile; a worker index in use by another tile, or beyond the count, is a clash.
  static DaxStatus visit(void* context, uint32_t first, int32_t bound, uint32_t worker) {
    auto& r = *static_cast<Record*>(context);
    if (worker >= r.threads || r.busy[worker].fetch_add(1) != 0) r.clash = true;
    for (int32_t i = static_cast<int32_t>(first); i < bound; ++i) ++r.visits[static_cast<size_t>(i)];
    std::this_thread::yield();
    --r.busy[worker];
    return DAX_STS_OK;
  }
};

class Pool {
 public:
  explicit Pool(uint32_t threads) : pool_(DAXHOST_CreatePool(threads)) {}
  ~Pool() { DAXHOST_DestroyPool(pool_); }
  Pool(const Pool&) = delete;
  Pool& operator=(const Pool&) = delete;
  void* get() const { return pool_; }

 private:
  void* pool_;
};

TEST(HostPool, EveryTileOnceWithItsOwnWorker) {
  for (const uint32_t threads : {1u, 2u, 3u, 8u}) {
    const Pool pool(threads);
    ASSERT_EQ(DAX_THREADPOOL_GetThreadsCnt(pool.get()), threads);
    for (const int32_t total : {1, 7, 1000}) {
      for (const int32_t tileSize : {1, 3, 1000}) {
        Record record(total);
        record.threads = threads;
        ASSERT_EQ(DAX_THREADPOOL_Compute1DTiled(pool.get(), Record::visit, &record, total, tileSize), DAX_STS_OK);
        EXPECT_FALSE(record.clash);
        for (const auto& visits : record.visits) EXPECT_EQ(visits, 1);
      }
    }
  }
}

// A pool may have more workers than the machine has processors: tiles that wait for each other all run at once.
TEST(HostPool, HasAsManyWorkersAsAsked) {
  constexpr int32_t kWorkers = 6;
  const Pool pool(kWorkers);
  std::atomic<int> arrived = 0;
  const DaxTileFunction meet = [](void* context, uint32_t, int32_t, uint32_t) -> DaxStatus {
    auto& count = *static_cast<std::atomic<int>*>(context);
    ++count;
    for (int i = 0; i < 1000 && count < kWorkers; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return count == kWorkers ? DAX_STS_OK : DAX_STS_FAILURE;
  };
  EXPECT_EQ(DAX_THREADPOOL_Compute1DTiled(pool.get(), meet, &arrived, kWorkers, 1), DAX_STS_OK);
}

// Callers on several threads at once share a pool, each with worker indices of its own call.
TEST(HostPool, ConcurrentCallers) {
  const Pool pool(3);
  std::vector<std::thread> callers;
  std::atomic<int> failures = 0;
  for (int i = 0; i < 4; ++i) {
    callers.emplace_back([&] {
      for (int round = 0; round < 20; ++round) {
        Record record(100);
        record.threads = 3;
        if (DAX_THREADPOOL_Compute1DTiled(pool.get(), Record::visit, &record, 100, 7) != DAX_STS_OK || record.clash)
          ++failures;
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
  EXPECT_EQ(failures, 0);
}

// A tile that hands out tiles itself: the thread that waits must not start another outer tile under the same index.
TEST(HostPool, NestedCalls) {
  const Pool pool(4);
  Record outer(40);
  outer.threads = 4;
  outer.pool = pool.get();
  const DaxTileFunction nest = [](void* context, uint32_t first, int32_t bound, uint32_t worker) -> DaxStatus {
    auto& r = *static_cast<Record*>(context);
    if (r.busy[worker].fetch_add(1) != 0) r.clash = true;
    Record inner(50);
    inner.threads = r.threads;
    const DaxStatus status = DAX_THREADPOOL_Compute1DTiled(r.pool, Record::visit, &inner, 50, 1);
    if (inner.clash) r.clash = true;
    --r.busy[worker];
    for (int32_t i = static_cast<int32_t>(first); i < bound; ++i) ++r.visits[static_cast<size_t>(i)];
    return status;
  };
  EXPECT_EQ(DAX_THREADPOOL_Compute1DTiled(pool.get(), nest, &outer, 40, 1), DAX_STS_OK);
  EXPECT_FALSE(outer.clash);
  for (const auto& visits : outer.visits) EXPECT_EQ(visits, 1);
}

TEST(HostPool, StatusAndArguments) {
  const Pool pool(2);
  std::atomic<int> ran = 0;
  const DaxTileFunction failing = [](void* context, uint32_t first, int32_t, uint32_t) -> DaxStatus {
    ++*static_cast<std::atomic<int>*>(context);
    return first == 5 ? 0x10000777 : 0;
  };
  EXPECT_EQ(DAX_THREADPOOL_Compute1DTiled(pool.get(), failing, &ran, 10, 1), 0x10000777u);
  EXPECT_EQ(ran, 10);  // one failing tile does not stop the others
  EXPECT_EQ(DAX_THREADPOOL_Compute1DTiled(pool.get(), failing, &ran, 0, 1), DAX_STS_OK);
  EXPECT_EQ(DAX_THREADPOOL_Compute1DTiled(pool.get(), failing, &ran, 10, 0), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAX_THREADPOOL_Compute1DTiled(nullptr, failing, &ran, 10, 1), DAX_STS_NULL_POINTER);
  EXPECT_EQ(DAX_THREADPOOL_Compute1DTiled(pool.get(), nullptr, &ran, 10, 1), DAX_STS_NULL_POINTER);
  EXPECT_EQ(DAXHOST_CreatePool(1025), nullptr);
  EXPECT_GE(DAX_THREADPOOL_GetThreadsCnt(Pool(0).get()), 1u);
}

}  // namespace
}  // namespace dax::test
