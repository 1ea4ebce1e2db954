#include "image/transform/fourier_plan.h"

#include "frame/check.h"
#include "image/transform/dft_row.h"
#include "image/transform/dft_strip.h"

namespace dax {
namespace {

constexpr auto identity = [](int32_t i) { return i; };

// Workers trust the plan.
template <class T>
DftPlan<T> trustedPlan(const void* memory) {
  DftPlan<T> plan;
  openPlan(DftKind::fourier, memory, INT64_MAX, plan);
  return plan;
}

template <class T>
DaxStatus transformColumns(const DftPlan<T>& plan, const DftWork<T>& work, const ComplexOf<T>* src, int32_t srcStep,
                           ComplexOf<T>* dst, int32_t dstStep, int32_t width, bool backward, T scale) {
  const DftLine<T>& line = plan.along[1];
  return work.strips(width, kDftLines<T>, [&](int32_t first, int32_t count, T* x, T* y) {
    loadColumns(src + first, srcStep, count, line.n, backward, x);
    const T* const z = transformLine(line, x, y);
    storeColumns(z, backward, scale, dst + first, dstStep, count, line.n);
  });
}

// Two real lines were transformed as the parts of a complex one: the half spectrum of the one that was the real or the
// imaginary part.
template <class T>
void takeRealLine(const T* both, int32_t n, bool isImaginary, T* to) {
  for (int32_t k = 0; k <= n / 2; ++k, to += kDftPoint<T>) {
    for (int half = 0; half < 2; ++half) {
      const Cx<T> a = loadHalf(both + ptrdiff_t{k} * kDftPoint<T>, half);
      const Cx<T> b = loadHalf(both + ptrdiff_t{k ? n - k : 0} * kDftPoint<T>, half);
      const Cx<T> line = isImaginary ? Cx<T>{a.im + b.im, b.re - a.re} : Cx<T>{a.re + b.re, a.im - b.im};
      storeHalf(to, half, line * T{0.5});
    }
  }
}

// Of the half spectra of two real lines, at `a` and `b`, the whole one of a + i b, at `a`, parts exchanged.
template <class T>
void joinRealLines(T* a, const T* b, int32_t n) {
  for (int32_t k = 0; k <= n / 2; ++k) {
    T *const at = a + ptrdiff_t{k} * kDftPoint<T>, *const mirrored = a + ptrdiff_t{n - k} * kDftPoint<T>;
    const bool isReal = k == 0 || 2 * k == n;
    for (int half = 0; half < 2; ++half) {
      Cx<T> u = loadHalf(at, half), v = loadHalf(b + ptrdiff_t{k} * kDftPoint<T>, half);
      if (isReal) u.im = v.im = DftVector<T>{};
      storeHalf(at, half, Cx<T>{u.im + v.re, u.re - v.im});
      if (!isReal) storeHalf(mirrored, half, Cx<T>{v.re - u.im, u.re + v.im});
    }
  }
}

template <class T>
DaxStatus realRowForward(const DftPlan<T>& plan, const DftWork<T>& work, const T* src, ComplexOf<T>* dst, T scale) {
  const int32_t width = plan.size.width;
  ComplexOf<T>*const staged = work.numbers(), *const between = staged + plan.along[0].length;
  for (int32_t x = 0; x < width; ++x) staged[x] = {src[x], 0};
  DAX_REQUIRE_OK(transformRow(plan, work, staged, staged, false, scale, staged, between));
  std::copy_n(staged, width / 2 + 1, dst);
  return DAX_STS_OK;
}

template <class T>
DaxStatus realRowBackward(const DftPlan<T>& plan, const DftWork<T>& work, const ComplexOf<T>* src, T* dst, T scale) {
  const int32_t width = plan.size.width;
  ComplexOf<T>*const staged = work.numbers(), *const between = staged + plan.along[0].length;
  for (int32_t k = 0; k <= width / 2; ++k) {
    const bool isReal = k == 0 || 2 * k == width;
    staged[k] = {src[k].re, isReal ? 0 : src[k].im};
    if (!isReal) staged[width - k] = {src[k].re, -src[k].im};
  }
  DAX_REQUIRE_OK(transformRow(plan, work, staged, staged, true, scale, staged, between));
  for (int32_t x = 0; x < width; ++x) dst[x] = staged[x].re;
  return DAX_STS_OK;
}

}  // namespace

template <class T>
DaxStatus dftPlanSize(DaxiSize size, uint64_t* bytes) {
  return planSize<T>(DftKind::fourier, size, bytes);
}

template <class T>
DaxStatus dftPlanInit(DaxiSize size, void* plan) {
  return makePlan<T>(DftKind::fourier, size, plan);
}

template <class T>
DaxStatus dftBufferSize(DaxiSize size, uint64_t* bytes) {
  return DftBuffer<T>(size, DftKind::fourier).layout.store(bytes);
}

template <class T>
DaxStatus dftComplex(PoolThreads on, const ComplexOf<T>* src, int32_t srcStep, ComplexOf<T>* dst, int32_t dstStep,
                     DaxiSize size, bool backward, T scale, const void* plan, void* buffer) {
  const DftPlan<T> tables = trustedPlan<T>(plan);
  const DftWork<T> work(on, DftKind::fourier, size, buffer);
  if (tables.isSplit()) {
    ComplexOf<T>* const staged = work.numbers();
    return transformRow(tables, work, src, dst, backward, scale, staged, staged + tables.along[0].length);
  }
  const T rowScale = size.height == 1 ? scale : 1;
  DAX_REQUIRE_OK(work.strips(size.height, kDftLines<T>, [&](int32_t first, int32_t count, T* x, T* y) {
    loadRows(rowAt(src, srcStep, first), srcStep, count, size.width, backward, x);
    const T* const z = transformLine(tables.along[0], x, y);
    storeRows(z, backward, rowScale, rowAt(dst, dstStep, first), dstStep, count, size.width);
  }));
  if (size.height == 1) return DAX_STS_OK;
  return transformColumns(tables, work, dst, dstStep, dst, dstStep, size.width, backward, scale);
}

template <class T>
DaxStatus dftRealForward(PoolThreads on, const T* src, int32_t srcStep, ComplexOf<T>* dst, int32_t dstStep,
                         DaxiSize size, T scale, const void* plan, void* buffer) {
  const DftPlan<T> tables = trustedPlan<T>(plan);
  const DftWork<T> work(on, DftKind::fourier, size, buffer);
  if (tables.isSplit()) return realRowForward(tables, work, src, dst, scale);
  const int32_t half = size.width / 2 + 1;
  const T rowScale = size.height == 1 ? scale : 1;
  DAX_REQUIRE_OK(work.strips(size.height, kDftPoint<T>, [&](int32_t first, int32_t count, T* x, T* y) {
    loadRealRows(rowAt(src, srcStep, first), srcStep, count, size.width, identity, x);
    const T* const both = transformLine(tables.along[0], x, y);
    T* const line = both == x ? y : x;
    for (const bool isImaginary : {false, true}) {
      const int32_t skipped = isImaginary ? kDftLines<T> : 0;
      if (count <= skipped) break;
      takeRealLine(both, size.width, isImaginary, line);
      storeRows(line, false, rowScale, rowAt(dst, dstStep, first + skipped), dstStep,
                std::min(count - skipped, kDftLines<T>), half);
    }
  }));
  if (size.height == 1) return DAX_STS_OK;
  return transformColumns(tables, work, dst, dstStep, dst, dstStep, half, false, scale);
}

template <class T>
DaxStatus dftRealBackward(PoolThreads on, const ComplexOf<T>* src, int32_t srcStep, T* dst, int32_t dstStep,
                          DaxiSize size, T scale, const void* plan, void* buffer) {
  const DftPlan<T> tables = trustedPlan<T>(plan);
  const DftWork<T> work(on, DftKind::fourier, size, buffer);
  if (tables.isSplit()) return realRowBackward(tables, work, src, dst, scale);
  const int32_t half = size.width / 2 + 1;
  const ComplexOf<T>* from = src;
  int32_t step = srcStep;
  if (size.height > 1) {
    from = work.numbers(), step = half;
    DAX_REQUIRE_OK(transformColumns(tables, work, src, srcStep, work.numbers(), half, half, true, T{1}));
  }
  return work.strips(size.height, kDftPoint<T>, [&](int32_t first, int32_t count, T* x, T* y) {
    const auto load = [&](int32_t skipped, T* to) {
      const int32_t rows = std::min(count - skipped, kDftLines<T>);
      loadRows(rowAt(from, step, first + skipped), step, rows, half, false, to);
    };
    load(0, x);
    load(count > kDftLines<T> ? kDftLines<T> : 0, y);
    joinRealLines(x, y, size.width);
    const T* const z = transformLine(tables.along[0], x, y);
    storeRealRows(z, true, scale, identity, rowAt(dst, dstStep, first), dstStep, count, size.width);
  });
}

#define DAX_FOURIER_PLAN(T)                                                                                           \
  template DaxStatus dftPlanSize<T>(DaxiSize, uint64_t*);                                                             \
  template DaxStatus dftPlanInit<T>(DaxiSize, void*);                                                                 \
  template DaxStatus dftBufferSize<T>(DaxiSize, uint64_t*);                                                           \
  template DaxStatus dftComplex<T>(PoolThreads, const ComplexOf<T>*, int32_t, ComplexOf<T>*, int32_t, DaxiSize, bool, \
                                   T, const void*, void*);                                                            \
  template DaxStatus dftRealForward<T>(PoolThreads, const T*, int32_t, ComplexOf<T>*, int32_t, DaxiSize, T,           \
                                       const void*, void*);                                                           \
  template DaxStatus dftRealBackward<T>(PoolThreads, const ComplexOf<T>*, int32_t, T*, int32_t, DaxiSize, T,          \
                                        const void*, void*);
DAX_FOURIER_PLAN(float)
DAX_FOURIER_PLAN(double)
#undef DAX_FOURIER_PLAN

}  // namespace dax
