#include "image/transform/dft_row.h"

#include "frame/check.h"
#include "image/transform/dft_strip.h"

namespace dax {
namespace {

template <class C>
C productOf(C a, C b) {
  return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

template <class C>
C exchangedIf(bool isExchanged, C a) {
  return isExchanged ? C{a.im, a.re} : a;
}

// Point k of the columns first.. times e^(-2 pi i k column / (first second)), a product of two numbers of the table.
template <class T>
void turnColumns(const DftSplit<T>& split, int32_t column, T* points) {
  const DaxComplex64f *const fine = split.turns, *const coarse = fine + (int64_t{1} << split.bits);
  const int64_t mask = (int64_t{1} << split.bits) - 1;
  for (int64_t k = 0; k < split.first; ++k, points += kDftPoint<T>) {
    for (int l = 0; l < kDftLines<T> && column + l < split.second; ++l) {
      const int64_t turn = k * (column + l);
      const DaxComplex64f w = productOf(coarse[turn >> split.bits], fine[turn & mask]);
      const auto re = static_cast<T>(w.re), im = static_cast<T>(w.im);
      const T a = points[l], b = points[l + kDftLines<T>];
      points[l] = a * re - b * im, points[l + kDftLines<T>] = a * im + b * re;
    }
  }
}

template <class T>
DaxStatus transformSplit(const DftSplit<T>& split, const DftWork<T>& work, const ComplexOf<T>* src, ComplexOf<T>* dst,
                         bool backward, T scale, ComplexOf<T>* between) {
  const int32_t rows = split.first, columns = split.second;
  DAX_REQUIRE_OK(work.strips(columns, kDftLines<T>, [&](int32_t first, int32_t count, T* x, T* y) {
    loadColumns(src + first, columns, count, rows, backward, x);
    T* const z = transformStages(rows, split.firstTwiddles, x, y);
    turnColumns(split, first, z);
    storeColumns(z, false, T{1}, between + first, columns, count, rows);
  }));
  return work.strips(rows, kDftLines<T>, [&](int32_t first, int32_t count, T* x, T* y) {
    loadRows(between + ptrdiff_t{first} * columns, columns, count, columns, false, x);
    const T* const z = transformStages(columns, split.secondTwiddles, x, y);
    storeColumns(z, backward, scale, dst + first, rows, count, columns);
  });
}

}  // namespace

template <class T>
DaxStatus transformRow(const DftPlan<T>& plan, const DftWork<T>& work, const ComplexOf<T>* src, ComplexOf<T>* dst,
                       bool backward, T scale, ComplexOf<T>* staged, ComplexOf<T>* between) {
  using C = ComplexOf<T>;
  const DftLine<T>& line = plan.along[0];
  if (!line.isChirp()) return transformSplit(plan.split, work, src, dst, backward, scale, between);
  const auto* const chirp = reinterpret_cast<const C*>(line.chirp);
  const auto* const spectrum = reinterpret_cast<const DaxComplex64f*>(line.spectrum);
  for (int32_t k = 0; k < line.n; ++k) staged[k] = productOf(exchangedIf(backward, src[k]), chirp[k]);
  std::fill(staged + line.n, staged + line.length, C{0, 0});
  DAX_REQUIRE_OK(transformSplit(plan.split, work, staged, staged, false, T{1}, between));
  for (int32_t k = 0; k < line.length; ++k) {
    staged[k] = productOf(staged[k], C{static_cast<T>(spectrum[k].re), static_cast<T>(spectrum[k].im)});
  }
  DAX_REQUIRE_OK(transformSplit(plan.split, work, staged, staged, true, T{1}, between));
  for (int32_t k = 0; k < line.n; ++k) {
    const C a = exchangedIf(backward, productOf(staged[k], chirp[k]));
    dst[k] = {a.re * scale, a.im * scale};
  }
  return DAX_STS_OK;
}

#define DAX_DFT_ROW(T)                                                                                               \
  template DaxStatus transformRow(const DftPlan<T>&, const DftWork<T>&, const ComplexOf<T>*, ComplexOf<T>*, bool, T, \
                                  ComplexOf<T>*, ComplexOf<T>*);
DAX_DFT_ROW(float)
DAX_DFT_ROW(double)
#undef DAX_DFT_ROW

}  // namespace dax
