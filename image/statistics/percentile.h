// Percentiles of regions: one worker for all pixel types, with a mask or without.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"

namespace dax {

template <class T, bool kMasked>
DaxStatus percentilesOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                        const double* shares, int32_t count, T* values, void* buffer);

template <class T, bool kMasked>
DaxStatus medianOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T* median,
                   void* buffer);

}  // namespace dax
