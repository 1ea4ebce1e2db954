// A 3 x 4 matrix over the channels of each pixel: of the caller, or what a conversion between linear colour spaces is.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "dax/status.h"
#include "dax/types.h"
#include "frame/numeric/round.h"
#include "frame/tiles.h"

namespace dax {

struct ColourMatrix {
  double m[3][4];
};

// A computed value as a pixel: rounded half to even, saturated, 0 for NaN; without branches.
template <class T>
T pixelOf(double value) {
  if constexpr (std::is_floating_point_v<T>) {
    return static_cast<T>(value);
  } else {
    const double within = value > 0 ? std::min<double>(value, std::numeric_limits<T>::max()) : 0;
    return static_cast<T>(static_cast<int32_t>(std::nearbyint(within)));
  }
}

// One row; dst may be src.
template <class T>
void matrixRow(const T* src, T* dst, int32_t count, const ColourMatrix& by) {
  const ColourMatrix local = by;  // which dst cannot be
  const auto& m = local.m;
  for (ptrdiff_t x = 0; x < count; ++x) {
    const double c0 = src[3 * x], c1 = src[3 * x + 1], c2 = src[3 * x + 2];
    dst[3 * x] = pixelOf<T>(((m[0][0] * c0 + m[0][1] * c1) + m[0][2] * c2) + m[0][3]);
    dst[3 * x + 1] = pixelOf<T>(((m[1][0] * c0 + m[1][1] * c1) + m[1][2] * c2) + m[1][3]);
    dst[3 * x + 2] = pixelOf<T>(((m[2][0] * c0 + m[2][1] * c1) + m[2][2] * c2) + m[2][3]);
  }
}

template <class T>
DaxStatus colourMatrix(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                       const double* matrix);

template <class T>
DaxStatus whiteBalance(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                       const double* gains);

}  // namespace dax
