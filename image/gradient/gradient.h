// First and second derivatives by windows of 3 x 3 or 5 x 5 pixels.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "frame/tiles.h"

namespace dax {

// Weights at distance 0..kRadius along an axis: of the sum p(-i) + p(i) for smoothing, of the difference p(i) - p(-i) for
// the derivative. Results are multiplied by `scale`.
template <int kSomeRadius>
struct GradientTaps {
  static constexpr int kRadius = kSomeRadius;
  int16_t smooth[kRadius + 1];
  int16_t derive[kRadius + 1];
  float scale = 1;

  // From the centre outwards.
  template <class Sum, class At>
  static constexpr Sum smoothed(const int16_t (&weights)[kRadius + 1], At at) {
    Sum sum = static_cast<Sum>(weights[0] * Sum(at(0)));
    for (int i = 1; i <= kRadius; ++i) sum = static_cast<Sum>(sum + weights[i] * (Sum(at(-i)) + Sum(at(i))));
    return sum;
  }
  template <class Sum, class At>
  static constexpr Sum derived(const int16_t (&weights)[kRadius + 1], At at) {
    Sum sum = static_cast<Sum>(weights[1] * (Sum(at(1)) - Sum(at(-1))));
    for (int i = 2; i <= kRadius; ++i) sum = static_cast<Sum>(sum + weights[i] * (Sum(at(i)) - Sum(at(-i))));
    return sum;
  }
};

struct SobelKernel {
  static constexpr GradientTaps<1> k3 = {{2, 1}, {0, 1}};
  static constexpr GradientTaps<2> k5 = {{6, 4, 1}, {0, 2, 1}};
};
struct PrewittKernel {
  static constexpr GradientTaps<1> k3 = {{1, 1}, {0, 1}};
  static constexpr GradientTaps<2> k5 = {{1, 1, 1}, {0, 1, 2}};
};
struct ScharrKernel {
  static constexpr GradientTaps<1> k3 = {{10, 3}, {0, 1}};
  static constexpr GradientTaps<2> k5 = {{120, 62, 6}, {0, 86, 21}, 0x1p-16f};
};

// The column pass of derivatives: plane 0 smoothed, for d/dx, plane 1 derived, for d/dy.
template <auto kTaps>
struct GradientColumns {
  static constexpr int kRadius = kTaps.kRadius, kPlanes = 2;
  template <class Sum, int kPlane, class At>
  static Sum column(At at) {
    if constexpr (kPlane == 0) {
      return kTaps.template smoothed<Sum>(kTaps.smooth, at);
    } else {
      return kTaps.template derived<Sum>(kTaps.derive, at);
    }
  }
};

// Sums that hold all results of a source.
template <class T>
struct GradientSums;
template <>
struct GradientSums<uint8_t> {
  using Sum = int16_t;
};
template <>
struct GradientSums<uint16_t> {
  using Sum = int32_t;
};
template <>
struct GradientSums<float> {
  using Sum = float;
};
template <class T>
using GradientSum = typename GradientSums<T>::Sum;

enum class Axis { x, y };

template <class Kernel, Axis kAxis, class T, class D>
DaxStatus gradient(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
                   int32_t aperture, int32_t border, double value);

template <class T, class D>
DaxStatus laplace(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
                  int32_t neighbours, int32_t border, double value);

}  // namespace dax
