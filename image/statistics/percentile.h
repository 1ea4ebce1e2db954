// Percentiles of regions: one worker for all pixel types, with a mask or without.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"
#include "frame/tiles.h"

namespace dax {

template <class T, bool kMasked>
DaxStatus percentilesOf(PoolThreads on, const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                        DaxiSize size, const double* shares, int32_t count, T* values, void* buffer);

template <class T, bool kMasked>
DaxStatus medianOf(PoolThreads on, const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                   T* median, void* buffer);

// Of bytes, which need neither a pool nor a buffer.
template <class T, bool kMasked>
DaxStatus percentilesOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                        const double* shares, int32_t count, T* values) {
  return percentilesOf<T, kMasked>({}, src, srcStep, mask, maskStep, size, shares, count, values, nullptr);
}

template <class T, bool kMasked>
DaxStatus medianOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T* median) {
  return medianOf<T, kMasked>({}, src, srcStep, mask, maskStep, size, median, nullptr);
}

}  // namespace dax
