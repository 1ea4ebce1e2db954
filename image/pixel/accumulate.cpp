#include "image/pixel/accumulate.h"

#include "image/pixel/accumulate_neon.h"
#include "image/pixel/accumulate_portable.h"

namespace dax {
namespace {

template <class T>
void accumulateRows(Plane<const T> src, Plane<float> sums, DaxiSize size, const float* alpha) {
  const auto row = [alpha, isa = currentIsa()](const T* values, float* result, int32_t count) {
    accumulateRow(values, result, count, alpha, isa);
  };
  forEachRow(size, 1, row, src, sums);
}

}  // namespace

template <class T>
void accumulateRow(const T* src, float* sums, int32_t count, const float* alpha, int32_t isa) {
  (usesNeon(isa) ? neon::accumulateRow<T> : portable::accumulateRow<T>)(src, sums, count, alpha);
}

template <class T>
DaxStatus accumulate(const float*, int32_t, const T* src, int32_t srcStep, float* sums, int32_t sumsStep,
                     DaxiSize size) {
  const Plane from{src, srcStep};
  const Plane to{sums, sumsStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  accumulateRows(from, to, size, nullptr);
  return DAX_STS_OK;
}

template <class T>
DaxStatus accumulateWeighted(const float*, int32_t, const T* src, int32_t srcStep, float* means, int32_t meansStep,
                             DaxiSize size, float alpha) {
  const Plane from{src, srcStep};
  const Plane to{means, meansStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  DAX_REQUIRE(alpha >= 0 && alpha <= 1, DAX_STS_BAD_PARAM);
  accumulateRows(from, to, size, &alpha);
  return DAX_STS_OK;
}

#define DAX_ACCUMULATE(T)                                                                                       \
  template DaxStatus accumulate<T>(const float*, int32_t, const T*, int32_t, float*, int32_t, DaxiSize);        \
  template DaxStatus accumulateWeighted<T>(const float*, int32_t, const T*, int32_t, float*, int32_t, DaxiSize, \
                                           float);                                                              \
  template void accumulateRow<T>(const T*, float*, int32_t, const float*, int32_t);
DAX_ACCUMULATE(uint8_t)
DAX_ACCUMULATE(uint16_t)
#undef DAX_ACCUMULATE

}  // namespace dax
