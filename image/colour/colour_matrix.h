// A 3 x 4 matrix over the channels of each pixel: of the caller, or what a conversion between linear colour spaces is.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "dax/status.h"
#include "dax/types.h"
#include "frame/numeric/round.h"
#include "frame/tiles.h"

namespace dax {

struct ColourMatrix {
  double m[3][4];
};

// A computed value as a pixel.
template <class T>
T pixelOf(double value) {
  if constexpr (std::is_floating_point_v<T>)
    return static_cast<T>(value);
  else
    return roundTo<T>(value);
}

// One row; dst may be src.
template <class T>
void matrixRow(const T* src, T* dst, int32_t count, const ColourMatrix& by) {
  const auto& m = by.m;
  for (ptrdiff_t x = 0; x < count; ++x) {
    const double c0 = src[3 * x], c1 = src[3 * x + 1], c2 = src[3 * x + 2];
    for (int k = 0; k < 3; ++k) dst[3 * x + k] = pixelOf<T>(((m[k][0] * c0 + m[k][1] * c1) + m[k][2] * c2) + m[k][3]);
  }
}

template <class T>
DaxStatus colourMatrix(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                       const double* matrix);

template <class T>
DaxStatus whiteBalance(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                       const double* gains);

}  // namespace dax
