// A 3 x 4 matrix over the channels of each pixel: of the caller, or what a conversion between linear colour spaces is.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"
#include "frame/tiles.h"
#include "image/colour/colour_rows.h"

namespace dax {

struct ColourMatrix {
  double m[3][4];
};

// All pixels times the matrix, without checks; dst may be src.
template <class T>
DaxStatus timesMatrix(PoolThreads on, Interleaved<3, const T> src, Interleaved<3, T> dst, DaxiSize size,
                      const ColourMatrix& by);

template <class T>
DaxStatus colourMatrix(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                       const double* matrix);

template <class T>
DaxStatus whiteBalance(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                       const double* gains);

}  // namespace dax
