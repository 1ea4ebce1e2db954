#include "tests/support/mock_pool.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include "tests/support/any_pool.h"
#include "tests/support/test_image.h"

using dax::test::MockPool;

namespace {

std::vector<int32_t> tileOrder(const MockPool& pool, int32_t count) {
  std::vector<int32_t> order(static_cast<size_t>(count));
  for (int32_t i = 0; i < count; ++i) order[static_cast<size_t>(i)] = i;
  if (pool.order == MockPool::Order::backward) std::reverse(order.begin(), order.end());
  if (pool.order == MockPool::Order::shuffled) {
    dax::test::Random random(static_cast<uint64_t>(count));
    for (int32_t i = count - 1; i > 0; --i) {
      std::swap(order[static_cast<size_t>(i)], order[static_cast<size_t>(random.below(i + 1))]);
    }
  }
  return order;
}

struct Call {
  const MockPool& pool;
  DaxTileFunction tile;
  void* context;
  int32_t total;
  int32_t tileSize;

  DaxStatus run(int32_t index, uint32_t worker) const {
    if (index == pool.failingTile) return pool.failure;
    const int64_t first = int64_t{index} * tileSize;
    const int64_t length = std::min<int64_t>(tileSize, total - first);
    const auto bound = static_cast<int32_t>(pool.passesLength ? length : first + length);
    return tile(context, static_cast<uint32_t>(first), bound, worker);
  }
};

// Tile i of the order goes to worker i modulo their number.
DaxStatus runOnThreads(const Call& call, const std::vector<int32_t>& order, uint32_t workers) {
  std::atomic<DaxStatus> result{DAX_STS_OK};
  std::vector<std::thread> threads;
  for (uint32_t worker = 0; worker < workers; ++worker) {
    threads.emplace_back([&, worker] {
      for (size_t i = worker; i < order.size(); i += workers) {
        if (const DaxStatus status = call.run(order[i], worker)) result = status;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  return result;
}

DaxStatus runInTurn(const Call& call, const std::vector<int32_t>& order, uint32_t workers) {
  DaxStatus result = DAX_STS_OK;
  for (size_t i = 0; i < order.size(); ++i) {
    const DaxStatus status = call.run(order[i], static_cast<uint32_t>(i) % workers);
    if (result == DAX_STS_OK) result = status;
  }
  return result;
}

}  // namespace

DaxStatus DAX_THREADPOOL_Compute1DTiled(void* opaque, DaxTileFunction tile, void* context, int32_t total,
                                        int32_t tileSize) {
  MockPool& pool = *static_cast<MockPool*>(opaque);
  const auto count = static_cast<int32_t>((int64_t{total} + tileSize - 1) / tileSize);
  ++pool.calls;
  pool.tiles += count;
  const Call call{pool, tile, context, total, tileSize};
  const uint32_t workers = pool.oneWorker ? 1 : pool.threads;
  return (pool.concurrent ? runOnThreads : runInTurn)(call, tileOrder(pool, count), workers);
}

uint32_t DAX_THREADPOOL_GetThreadsCnt(void* pool) {
  return static_cast<MockPool*>(pool)->threads;
}

namespace dax::test {

AnyPool::AnyPool(uint32_t threads) : pool_(new MockPool) {
  auto& mock = *static_cast<MockPool*>(pool_);
  mock.threads = threads;
  mock.concurrent = true;
}

AnyPool::~AnyPool() {
  delete static_cast<MockPool*>(pool_);
}

}  // namespace dax::test
