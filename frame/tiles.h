// Tiles on the host's pool: turns a lambda into the host's C callback, with its context on the stack of the call.
#pragma once

#include <algorithm>
#include <cstdint>

#include "dax/threadpool.h"

namespace dax {

// Whether an _MT member may go to the pool at all.
inline bool hasPool(const void* pool, uint32_t threads) {
  return pool && threads > 1 && &DAX_THREADPOOL_Compute1DTiled != nullptr;
}

// One tile per thread: ceil(total / threads), at least 1.
inline int32_t tilePerThread(int32_t total, uint32_t threads) {
  const int64_t parts = std::max<int64_t>(threads, 1);
  return static_cast<int32_t>(std::max<int64_t>((int64_t{total} + parts - 1) / parts, 1));
}

// Runs body(first, end, worker) -> DaxStatus over [0, total) in tiles of `tileSize`; returns what the host returns.
// Hosts differ in what they pass as the second bound, so a tile computes its own end. A worker index of `threads` or
// more has no slice of the work buffer: such a tile fails and writes nothing.
template <class Body>
DaxStatus runTiles(void* pool, uint32_t threads, int32_t total, int32_t tileSize, Body&& body) {
  struct Context {
    Body& body;
    uint32_t threads;
    int64_t total;
    int64_t tileSize;
  } context{body, threads, total, tileSize};

  const DaxTileFunction tile = [](void* opaque, uint32_t first, int32_t, uint32_t worker) -> DaxStatus {
    const Context& c = *static_cast<const Context*>(opaque);
    if (worker >= c.threads) return DAX_STS_FAILURE;
    if (first >= c.total) return DAX_STS_OK;
    const int64_t end = std::min(first + c.tileSize, c.total);
    return c.body(static_cast<int32_t>(first), static_cast<int32_t>(end), worker);
  };
  return DAX_THREADPOOL_Compute1DTiled(pool, tile, &context, total, tileSize);
}

}  // namespace dax
