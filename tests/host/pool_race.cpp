// Two tiles that write the same numbers: the thread sanitizer must say so, or it sees nothing of what runs on the pool.
// Numbers, as it may miss two writes at the very same time.
#include <atomic>
#include <chrono>
#include <cstdio>

#include "daxhost.h"

namespace {

struct Shared {
  std::atomic<int> inside{0};
  int numbers[1000] = {};
};

// Waits for the other tile in a way that orders nothing.
DaxStatus tile(void* context, uint32_t, int32_t, uint32_t) {
  Shared& shared = *static_cast<Shared*>(context);
  shared.inside.fetch_add(1, std::memory_order_relaxed);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  while (shared.inside.load(std::memory_order_relaxed) < 2 && std::chrono::steady_clock::now() < end) {
  }
  for (int& number : shared.numbers) ++number;
  return DAX_STS_OK;
}

}  // namespace

int main() {
  void* const pool = DAXHOST_CreatePool(2);
  Shared shared;
  DAX_THREADPOOL_Compute1DTiled(pool, tile, &shared, 2, 1);
  std::printf("%d\n", shared.numbers[0]);
  DAXHOST_DestroyPool(pool);
}
