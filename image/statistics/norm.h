// Norms of regions and of differences: one worker for all pixel types, with a mask or without.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"

namespace dax {

enum class Norm { l1, l2, inf };

template <Norm kNorm, class T, bool kMasked>
DaxStatus normOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);

template <Norm kNorm, class T, bool kMasked>
DaxStatus normOfDifference(const T* src1, int32_t step1, const T* src2, int32_t step2, const uint8_t* mask,
                           int32_t maskStep, DaxiSize size, double* norm);

}  // namespace dax
