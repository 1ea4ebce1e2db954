// Rows of pixels times a matrix, any instruction set.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>

#include "image/colour/colour_matrix.h"

namespace dax::portable {

// A computed value as a pixel: rounded half to even, saturated, 0 for NaN; without branches.
template <class T>
T matrixPixel(double value) {
  if constexpr (std::is_floating_point_v<T>) {
    return static_cast<T>(value);
  } else {
    const double within = value > 0 ? std::min<double>(value, std::numeric_limits<T>::max()) : 0;
    return static_cast<T>(static_cast<int32_t>(std::nearbyint(within)));
  }
}

template <class T>
void matrixRow(const T* src, T* dst, int32_t count, const ColourMatrix& by) {
  const ColourMatrix local = by;  // which dst cannot be
  const auto& m = local.m;
  for (ptrdiff_t x = 0; x < count; ++x) {
    const double c0 = src[3 * x], c1 = src[3 * x + 1], c2 = src[3 * x + 2];
    dst[3 * x] = matrixPixel<T>(((m[0][0] * c0 + m[0][1] * c1) + m[0][2] * c2) + m[0][3]);
    dst[3 * x + 1] = matrixPixel<T>(((m[1][0] * c0 + m[1][1] * c1) + m[1][2] * c2) + m[1][3]);
    dst[3 * x + 2] = matrixPixel<T>(((m[2][0] * c0 + m[2][1] * c1) + m[2][2] * c2) + m[2][3]);
  }
}

}  // namespace dax::portable
