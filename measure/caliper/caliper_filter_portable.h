// The filter of calipers for any instruction set.
#pragma once

#include <cstdint>

namespace dax::portable {

// `extended` begins half a kernel before the first value.
inline void filter(const float* extended, const float* kernel, int32_t length, int32_t first, int32_t n, float* out) {
  for (int32_t i = first; i < n; ++i) {
    float sum = 0;
    for (int32_t k = 0; k < length; ++k) sum += kernel[k] * extended[i + k];
    out[i] = sum;
  }
}

inline void filter(const float* extended, const float* kernel, int32_t length, int32_t n, float* out) {
  filter(extended, kernel, length, 0, n, out);
}

}  // namespace dax::portable
