// The reference pool: one oneTBB arena per pool.
#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/info.h>
#include <oneapi/tbb/parallel_for.h>
#include <oneapi/tbb/task_arena.h>

#include <algorithm>
#include <atomic>
#include <new>

#include "daxhost.h"

#if DAX_HOST_ANNOTATES
#include <sanitizer/tsan_interface.h>
#else
static void __tsan_acquire(void*) {}
static void __tsan_release(void*) {}
#endif

namespace {

constexpr uint32_t kMaxThreads = 1024;

// The scheduler limits all arenas to the number of processors unless a control allows more. The smallest of several
// controls applies, so all pools set the same limit.
struct Pool {
  explicit Pool(int threads) : arena(threads) {}
  tbb::global_control control{tbb::global_control::max_allowed_parallelism, kMaxThreads};
  tbb::task_arena arena;
  char slots[kMaxThreads] = {};  // their addresses identify worker indices to the sanitizer
};

// Happens-before relations of a call, declared to the thread sanitizer, which cannot see into the scheduler: the call
// precedes every tile, every tile precedes the return, and tiles with the same worker index run one after the other.
// Nothing else is ordered, so that races between tiles are reported. See docs/testing.md.
class Order {
 public:
  explicit Order(Pool& pool) : slots_(pool.slots) { __tsan_release(&begin_); }
  void beginTile(uint32_t worker) {
    __tsan_acquire(&begin_);
    __tsan_acquire(slots_ + worker);
  }
  void endTile(uint32_t worker) {
    __tsan_release(slots_ + worker);
    __tsan_release(&end_);
  }
  void endCall() { __tsan_acquire(&end_); }

 private:
  char* slots_;
  char begin_ = 0, end_ = 0;
};

// Runs tile number `index`. The worker index is a slot of the arena, which only one thread holds at a time. Tiles are
// isolated, so that a thread that waits inside a nested call does not start another tile of the outer call.
void runTile(DaxTileFunction tile, void* context, int32_t total, int32_t tileSize, int64_t index, Order& order,
             std::atomic<DaxStatus>& result) {
  const int64_t first = index * tileSize;
  const int64_t end = std::min<int64_t>(first + tileSize, total);
  const auto worker = static_cast<uint32_t>(tbb::this_task_arena::current_thread_index());
  DaxStatus status = DAX_STS_OK;
  order.beginTile(worker);
  tbb::this_task_arena::isolate(
      [&] { status = tile(context, static_cast<uint32_t>(first), static_cast<int32_t>(end), worker); });
  order.endTile(worker);
  DaxStatus none = DAX_STS_OK;
  if (status != DAX_STS_OK) result.compare_exchange_strong(none, status);
}

}  // namespace

void* DAXHOST_CreatePool(uint32_t threads) {
  if (threads > kMaxThreads) return nullptr;
  const int count = threads == 0 ? tbb::info::default_concurrency() : static_cast<int>(threads);
  return new (std::nothrow) Pool(count);
}

void DAXHOST_DestroyPool(void* pool) {
  delete static_cast<Pool*>(pool);
}

uint32_t DAX_THREADPOOL_GetThreadsCnt(void* pool) {
  return pool ? static_cast<uint32_t>(static_cast<Pool*>(pool)->arena.max_concurrency()) : 1;
}

DaxStatus DAX_THREADPOOL_Compute1DTiled(void* pool, DaxTileFunction tile, void* context, int32_t total,
                                        int32_t tileSize) try {
  if (!pool || !tile) return DAX_STS_NULL_POINTER;
  if (total < 1) return DAX_STS_OK;
  if (tileSize < 1) return DAX_STS_BAD_PARAM;

  Pool& tasks = *static_cast<Pool*>(pool);
  Order order(tasks);
  const int64_t tiles = (int64_t{total} + tileSize - 1) / tileSize;
  std::atomic<DaxStatus> result{DAX_STS_OK};
  const auto runAll = [&] {
    tbb::parallel_for(
        int64_t{0}, tiles, [&](int64_t i) { runTile(tile, context, total, tileSize, i, order, result); },
        tbb::simple_partitioner{});
  };
  // Entering an arena ends the isolation of the calling tile, so the inside is isolated again.
  tasks.arena.execute([&] { tbb::this_task_arena::isolate(runAll); });
  order.endCall();
  return result;
} catch (...) {
  return DAX_STS_NO_MEMORY;
}
