// Histograms of grey levels.
#pragma once

#include <array>
#include <cstdint>

#include "dax/types.h"

namespace dax {

// The number of pixels of each level.
using Histogram = std::array<uint64_t, 256>;

// Pixels that 32-bit counters can count, at least a row each time.
inline constexpr int64_t kMaxCounted = UINT32_MAX;

// Of rows of at least one pixel; `maxPixels` are counted before the counters are added up and start again.
Histogram histogram(const uint8_t* src, int32_t srcStep, DaxiSize size, int64_t maxPixels = kMaxCounted);

}  // namespace dax
