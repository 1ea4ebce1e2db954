// Convolution and correlation by Fourier transforms.
#pragma once

#include <cstdint>

#include "daxi/convolve_dft.h"
#include "frame/tiles.h"

namespace dax {

template <bool kCorrelate, class T>
DaxStatus convolveDft(PoolThreads on, const T* src, int32_t srcStep, DaxiSize srcSize, const T* kernel,
                      int32_t kernelStep, DaxiSize kernelSize, T* dst, int32_t dstStep, int32_t part, void* buffer);

}  // namespace dax
