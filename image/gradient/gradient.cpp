#include "image/gradient/gradient.h"

#include <cmath>

#include "frame/op2d.h"
#include "image/border/bordered_image.h"
#include "image/gradient/gradient_strips.h"

namespace dax {
namespace {

template <class D, class Sum>
D scaled(Sum sum, float scale) {
  if constexpr (std::is_floating_point_v<D>) {
    return scale == 1 ? static_cast<D>(sum) : static_cast<D>(sum) * scale;
  } else {
    return sum;
  }
}

// One derivative only.
template <auto kTaps, Axis kAxis>
struct OneGradient {
  static constexpr int kRadius = kTaps.kRadius, kPlanes = 1;
  template <class Sum, int, class At>
  static Sum column(At at) {
    return GradientColumns<kTaps>::template column < Sum, kAxis == Axis::x ? 0 : 1 > (at);
  }
  template <class D, class Sum>
  static D row(const Sum* const (&planes)[1], int32_t i) {
    const auto at = [&](int32_t dx) { return planes[0][i + dx]; };
    if constexpr (kAxis == Axis::x) {
      return scaled<D>(kTaps.template derived<Sum>(kTaps.derive, at), kTaps.scale);
    } else {
      return scaled<D>(kTaps.template smoothed<Sum>(kTaps.smooth, at), kTaps.scale);
    }
  }
};

// Plane 0: the column's part of the neighbours, plane 1: the centre.
struct LaplaceOf4 {
  static constexpr int kRadius = 1, kPlanes = 2;
  template <class Sum, int kPlane, class At>
  static Sum column(At at) {
    if constexpr (kPlane == 1) return at(0);
    return static_cast<Sum>((Sum(at(-1)) + Sum(at(1))) - 4 * Sum(at(0)));
  }
  template <class D, class Sum>
  static D row(const Sum* const (&planes)[2], int32_t i) {
    return static_cast<D>(planes[0][i] + (planes[1][i - 1] + planes[1][i + 1]));
  }
};

struct LaplaceOf8 {
  static constexpr int kRadius = 1, kPlanes = 2;
  template <class Sum, int kPlane, class At>
  static Sum column(At at) {
    if constexpr (kPlane == 1) return at(0);
    return static_cast<Sum>((Sum(at(-1)) + Sum(at(1))) + Sum(at(0)));
  }
  template <class D, class Sum>
  static D row(const Sum* const (&planes)[2], int32_t i) {
    return static_cast<D>((planes[0][i - 1] + planes[0][i + 1]) + planes[0][i] - 9 * planes[1][i]);
  }
};

template <class T>
DaxStatus checkBorder(int32_t border, double value) {
  DAX_REQUIRE(border >= DAXI_BORDER_REPLICATE && border <= DAXI_BORDER_IN_MEMORY, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(value), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class Op, class T, class D>
DaxStatus filterStrips(PoolThreads on, const BorderedImage<T>& image, D* dst, int32_t dstStep) {
  return runRows(on, image.size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      D* const row = rowAt(dst, dstStep, y);
      GradientStrips<Op, T, GradientSum<T>>(image, y).run([&](int64_t x, int32_t count, const auto& planes) {
        D* __restrict to = row + x;
        for (int32_t i = 0; i < count; ++i) to[i] = Op::template row<D>(planes, i);
      });
    }
  });
}

}  // namespace

template <class Kernel, Axis kAxis, class T, class D>
DaxStatus gradient(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
                   int32_t aperture, int32_t border, double value) {
  constexpr bool kHas5 = Kernel::k5.scale == 1 || std::is_floating_point_v<D>;
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  DAX_REQUIRE(aperture == 3 || aperture == 5, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkBorder<T>(border, value));
  DAX_REQUIRE(aperture == 3 || kHas5, DAX_STS_BAD_PARAM);
  const BorderedImage<T> image = {src, srcStep, size, border, borderPixel<T>(value)};
  if constexpr (kHas5) {
    if (aperture == 5) return filterStrips<OneGradient<Kernel::k5, kAxis>>(on, image, dst, dstStep);
  }
  return filterStrips<OneGradient<Kernel::k3, kAxis>>(on, image, dst, dstStep);
}

template <class T, class D>
DaxStatus laplace(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
                  int32_t neighbours, int32_t border, double value) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  DAX_REQUIRE(neighbours == 4 || neighbours == 8, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkBorder<T>(border, value));
  const BorderedImage<T> image = {src, srcStep, size, border, borderPixel<T>(value)};
  return neighbours == 4 ? filterStrips<LaplaceOf4>(on, image, dst, dstStep)
                         : filterStrips<LaplaceOf8>(on, image, dst, dstStep);
}

#define DAX_GRADIENT(KERNEL, AXIS, T, D)                                                                          \
  template DaxStatus gradient<KERNEL, AXIS, T, D>(PoolThreads, const T*, int32_t, D*, int32_t, DaxiSize, int32_t, \
                                                  int32_t, double);
#define DAX_GRADIENTS(KERNEL, T, D)   \
  DAX_GRADIENT(KERNEL, Axis::x, T, D) \
  DAX_GRADIENT(KERNEL, Axis::y, T, D)
#define DAX_DERIVATIVES(T, D)        \
  DAX_GRADIENTS(SobelKernel, T, D)   \
  DAX_GRADIENTS(PrewittKernel, T, D) \
  DAX_GRADIENTS(ScharrKernel, T, D)  \
  template DaxStatus laplace<T, D>(PoolThreads, const T*, int32_t, D*, int32_t, DaxiSize, int32_t, int32_t, double);
DAX_DERIVATIVES(uint8_t, int16_t)
DAX_DERIVATIVES(uint16_t, float)
DAX_DERIVATIVES(float, float)
#undef DAX_DERIVATIVES
#undef DAX_GRADIENTS
#undef DAX_GRADIENT

}  // namespace dax
