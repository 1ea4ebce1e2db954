// Tiles that work in private parts of the work buffer, of which there is a limited number.
#pragma once

#include <algorithm>
#include <cstdint>

#include "dax/status.h"
#include "frame/tiles.h"

namespace dax {

// Runs body(first, end, slice) -> void over [0, total): on the pool where there is one, in at most maxSlices tiles of at
// least minTile, whose slices are below maxSlices; else on the calling thread with slice 0.
template <class Body>
DaxStatus runSlices(PoolThreads on, uint32_t maxSlices, int32_t total, int32_t minTile, Body&& body) {
  if (!hasPool(on.pool, on.threads)) {
    body(0, total, 0u);
    return DAX_STS_OK;
  }
  const auto tile = [&](int32_t first, int32_t end, uint32_t slice) -> DaxStatus {
    body(first, end, slice);
    return DAX_STS_OK;
  };
  return runTiles(on.pool, std::min(on.threads, maxSlices), total, minTile, tile);
}

}  // namespace dax
