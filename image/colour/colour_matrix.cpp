#include "image/colour/colour_matrix.h"

#include <algorithm>
#include <cmath>

#include "frame/dispatch.h"
#include "image/colour/colour_matrix_neon.h"
#include "image/colour/colour_matrix_portable.h"
#include "image/colour/colour_rows.h"

namespace dax {
namespace {

bool areFinite(const double* values, int32_t count) {
  return std::all_of(values, values + count, [](double each) { return std::isfinite(each); });
}

template <class T>
DaxStatus checkMatrix(Interleaved<3, const T> from, Interleaved<3, T> to, DaxiSize size, const double* values,
                      int32_t count) {
  DAX_REQUIRE(values, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkConversion(from, to, size));
  DAX_REQUIRE(areFinite(values, count), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace

template <class T>
DaxStatus timesMatrix(PoolThreads on, Interleaved<3, const T> src, Interleaved<3, T> dst, DaxiSize size,
                      const ColourMatrix& by) {
  auto* const row = usesNeon(currentIsa()) ? neon::matrixRow<T> : portable::matrixRow<T>;
  return convertRows(on, src, dst, size, [&](const T* s, T* d, int32_t count) { row(s, d, count, by); });
}

template <class T>
DaxStatus colourMatrix(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                       const double* matrix) {
  const Interleaved<3, const T> from{src, srcStep};
  const Interleaved<3, T> to{dst, dstStep};
  DAX_REQUIRE_OK(checkMatrix(from, to, size, matrix, 12));
  ColourMatrix by;
  std::copy_n(matrix, 12, by.m[0]);
  return timesMatrix(on, from, to, size, by);
}

template <class T>
DaxStatus whiteBalance(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                       const double* gains) {
  const Interleaved<3, const T> from{src, srcStep};
  const Interleaved<3, T> to{dst, dstStep};
  DAX_REQUIRE_OK(checkMatrix(from, to, size, gains, 3));
  const double g0 = gains[0], g1 = gains[1], g2 = gains[2];
  return convertRows(on, from, to, size, [=](const T* s, T* d, int32_t count) {
    for (ptrdiff_t x = 0; x < count; ++x) {
      d[3 * x] = portable::matrixPixel<T>(g0 * s[3 * x]), d[3 * x + 1] = portable::matrixPixel<T>(g1 * s[3 * x + 1]);
      d[3 * x + 2] = portable::matrixPixel<T>(g2 * s[3 * x + 2]);
    }
  });
}

#define DAX_COLOUR_MATRIX(T)                                                                                \
  template DaxStatus timesMatrix<T>(PoolThreads, Interleaved<3, const T>, Interleaved<3, T>, DaxiSize,      \
                                    const ColourMatrix&);                                                   \
  template DaxStatus colourMatrix<T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, const double*); \
  template DaxStatus whiteBalance<T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, const double*);
DAX_COLOUR_MATRIX(uint8_t)
DAX_COLOUR_MATRIX(uint16_t)
DAX_COLOUR_MATRIX(float)
#undef DAX_COLOUR_MATRIX

}  // namespace dax
