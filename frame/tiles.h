// Tiles on the host's pool: turns a lambda into the host's C callback, with its context on the stack of the call.
#pragma once

#include <algorithm>
#include <cstdint>

#include "dax/threadpool.h"

namespace dax {

// What an _MT member was given to run on; nothing: the calling thread.
struct PoolThreads {
  void* pool = nullptr;
  uint32_t threads = 0;
};

// Whether an _MT member may go to the pool at all.
inline bool hasPool(const void* pool, uint32_t threads) {
  return pool && threads > 1 && &DAX_THREADPOOL_Compute1DTiled != nullptr;
}

// One tile per thread: ceil(total / threads), at least 1.
inline int32_t tilePerThread(int32_t total, uint32_t threads) {
  const int64_t parts = std::max<int64_t>(threads, 1);
  return static_cast<int32_t>(std::max<int64_t>((int64_t{total} + parts - 1) / parts, 1));
}

// Runs body(first, end, slice) -> DaxStatus over [0, total) in at most `threads` tiles of at least `minTile`; returns what
// the host returns. `slice` is the number of the tile, below `threads`: it names a private part of the work buffer
// whatever worker indices the host hands out, so `threads` need not be the number of the pool's workers. Hosts differ
// in what they pass as the second bound, so a tile computes its own end.
template <class Body>
DaxStatus runTiles(void* pool, uint32_t threads, int32_t total, int32_t minTile, Body&& body) {
  struct Context {
    Body& body;
    int64_t total;
    int64_t tileSize;
  } context{body, total, std::max(minTile, tilePerThread(total, threads))};

  const DaxTileFunction tile = [](void* opaque, uint32_t first, int32_t, uint32_t) -> DaxStatus {
    const Context& c = *static_cast<const Context*>(opaque);
    if (first >= c.total) return DAX_STS_OK;
    const int64_t end = std::min(first + c.tileSize, c.total);
    return c.body(static_cast<int32_t>(first), static_cast<int32_t>(end), static_cast<uint32_t>(first / c.tileSize));
  };
  return DAX_THREADPOOL_Compute1DTiled(pool, tile, &context, total, static_cast<int32_t>(context.tileSize));
}

// Runs body(first, end) -> void over the rows of an image, on the pool where there is one.
template <class Body>
DaxStatus runRows(PoolThreads on, int32_t rows, Body&& body) {
  if (!hasPool(on.pool, on.threads)) {
    body(0, rows);
    return 0;
  }
  return runTiles(on.pool, on.threads, rows, 1, [&](int32_t first, int32_t end, uint32_t) -> DaxStatus {
    body(first, end);
    return 0;
  });
}

}  // namespace dax
