// Histograms: of grey levels, and over bins of one width or between given edges.
#pragma once

#include <array>
#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"
#include "daxi/histogram.h"

namespace dax {

// The number of pixels of each level.
using Histogram = std::array<uint64_t, 256>;

// Pixels that 32-bit counters can count, at least a row each time.
inline constexpr int64_t kMaxCounted = UINT32_MAX;

// Of rows of at least one pixel; `maxPixels` are counted before the counters are added up and start again.
Histogram histogram(const uint8_t* src, int32_t srcStep, DaxiSize size, int64_t maxPixels = kMaxCounted);

// End is the type of the ends of bins: int32_t, or of floats double for even bins and float for given edges.
template <class T, bool kMasked, class End>
DaxStatus histogramEven(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                        int32_t bins, End low, End high, uint64_t* counts, DaxiHistogramOutside* outside, void* buffer);

template <class T, bool kMasked, class End>
DaxStatus histogramRange(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                         const End* edges, int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside, void* buffer);

}  // namespace dax
