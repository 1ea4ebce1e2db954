#include "image/spectrum/spectrum.h"

#include <algorithm>
#include <cmath>

#include "frame/numeric/elementary.h"
#include "frame/op2d.h"

namespace dax {

struct MagnitudeOp {
  static double of(double re, double im) { return std::sqrt(re * re + im * im); }
};
struct PhaseOp {
  static double of(double re, double im) { return elementary::atan2(im, re); }
};
struct LogSpectrumOp {
  static double of(double re, double im) { return elementary::log(1 + MagnitudeOp::of(re, im)); }
};

template <class Op, class C>
DaxStatus ofSpectrum(PoolThreads on, const C* src, int32_t srcStep, PartOf<C>* dst, int32_t dstStep, DaxiSize size) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  const auto row = [](const C* a, PartOf<C>* result, int32_t count) {
    for (int32_t i = 0; i < count; ++i) result[i] = static_cast<PartOf<C>>(Op::of(a[i].re, a[i].im));
  };
  return forEachRow(on, size, 1, row, from, to);
}

template <bool kConjugate, class C>
DaxStatus productOfSpectra(PoolThreads on, const C* src1, int32_t step1, const C* src2, int32_t step2, C* dst,
                           int32_t dstStep, DaxiSize size) {
  using T = PartOf<C>;
  const Plane first{src1, step1}, second{src2, step2};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, first, second, to));
  const auto row = [](const C* a, const C* b, C* result, int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
      const double re = a[i].re, im = a[i].im, bRe = b[i].re, bIm = kConjugate ? -b[i].im : b[i].im;
      result[i] = {static_cast<T>(re * bRe - im * bIm), static_cast<T>(re * bIm + im * bRe)};
    }
  };
  return forEachRow(on, size, 1, row, first, second, to);
}

template <class T>
DaxStatus shiftQuadrants(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                         int32_t back) {
  DAX_REQUIRE_OK(checkPlanes(size, 1, Plane{src, srcStep}, Plane{dst, dstStep}));
  DAX_REQUIRE(back == 0 || back == 1, DAX_STS_BAD_PARAM);
  // The pixel that comes to the corner.
  const auto start = [back](int32_t side) { return back ? side / 2 : side - side / 2; };
  const int32_t left = start(size.width) % size.width, top = start(size.height) % size.height;
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      const T* const from = rowAt(src, srcStep, y < size.height - top ? y + top : y - (size.height - top));
      T* const to = rowAt(dst, dstStep, y);
      std::copy_n(from, left, std::copy(from + left, from + size.width, to));
    }
  });
}

#define DAX_SPECTRUM(C)                                                                                        \
  template DaxStatus ofSpectrum<MagnitudeOp>(PoolThreads, const C*, int32_t, PartOf<C>*, int32_t, DaxiSize);   \
  template DaxStatus ofSpectrum<PhaseOp>(PoolThreads, const C*, int32_t, PartOf<C>*, int32_t, DaxiSize);       \
  template DaxStatus ofSpectrum<LogSpectrumOp>(PoolThreads, const C*, int32_t, PartOf<C>*, int32_t, DaxiSize); \
  template DaxStatus productOfSpectra<false>(PoolThreads, const C*, int32_t, const C*, int32_t, C*, int32_t,   \
                                             DaxiSize);                                                        \
  template DaxStatus productOfSpectra<true>(PoolThreads, const C*, int32_t, const C*, int32_t, C*, int32_t, DaxiSize);
DAX_SPECTRUM(DaxComplex32f)
DAX_SPECTRUM(DaxComplex64f)
#undef DAX_SPECTRUM

#define DAX_SHIFT(T) template DaxStatus shiftQuadrants(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, int32_t);
DAX_SHIFT(uint8_t)
DAX_SHIFT(float)
DAX_SHIFT(double)
DAX_SHIFT(DaxComplex32f)
DAX_SHIFT(DaxComplex64f)
#undef DAX_SHIFT

}  // namespace dax
