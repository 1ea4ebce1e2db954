// Discrete Fourier transforms with the checks of their exports.
#pragma once

#include <cmath>
#include <cstdint>

#include "daxi/fourier.h"
#include "frame/check.h"
#include "image/transform/fourier_plan.h"

namespace dax {

template <class C>
using RealOf = decltype(C::re);

inline bool areDftSides(DaxiSize size) {
  return atLeast(size, 1) && atMost(size, kMaxDftSide);
}

// What sums are multiplied by.
template <class T>
T dftScale(int32_t scale, bool isBackward, DaxiSize size) {
  const double pixels = static_cast<double>(size.width) * size.height;
  if (scale == DAXI_DFT_UNITARY) return static_cast<T>(1 / std::sqrt(pixels));
  return scale == DAXI_DFT_BACKWARD && isBackward ? static_cast<T>(1 / pixels) : T{1};
}

template <class C>
DaxStatus dft(PoolThreads on, const C* src, int32_t srcStep, C* dst, int32_t dstStep, DaxiSize size, int32_t scale,
              const void* model, uint64_t modelBytes, void* buffer);
template <class C>
DaxStatus idft(PoolThreads on, const C* src, int32_t srcStep, C* dst, int32_t dstStep, DaxiSize size, int32_t scale,
               const void* model, uint64_t modelBytes, void* buffer);
template <class T>
DaxStatus dftReal(PoolThreads on, const T* src, int32_t srcStep, ComplexOf<T>* dst, int32_t dstStep, DaxiSize size,
                  int32_t scale, const void* model, uint64_t modelBytes, void* buffer);
template <class T>
DaxStatus idftReal(PoolThreads on, const ComplexOf<T>* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                   int32_t scale, const void* model, uint64_t modelBytes, void* buffer);

}  // namespace dax
