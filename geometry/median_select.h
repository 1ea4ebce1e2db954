// Order statistics of floats by selection. The values hold no NaN and are reordered.
#pragma once

#include <cstdint>

// Median of n >= 1 values; for an even n the mean of the middle two.
extern "C" float _DAXS_Median_32f(float* values, int32_t n);

namespace dax {

// The value halfway between the rank-th and the next largest of n values, 1 <= rank < n.
double valueBelowLargest(float* values, int32_t n, int32_t rank);

}  // namespace dax
