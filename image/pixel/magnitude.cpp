#include "image/pixel/magnitude.h"

#include "image/pixel/arithmetic.h"
#include "image/pixel/magnitude_neon.h"
#include "image/pixel/magnitude_portable.h"

namespace dax {

template <class Op, class T>
void magnitudeRow(const T* src, T* dst, int32_t count, int32_t isa) {
  usesNeon(isa) ? neon::magnitudeRow<Op>(src, dst, count) : portable::magnitudeRow<Op>(src, dst, count);
}

template <class Op, class T>
DaxStatus magnitude(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  const auto row = [isa = currentIsa()](const T* a, T* result, int32_t count) {
    magnitudeRow<Op>(a, result, count, isa);
  };
  return forEachRow(on, size, 1, row, from, to);
}

template <class T>
DaxStatus square(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  return withImage<MulOp, T, 1>(src, srcStep, src, srcStep, dst, dstStep, size, scaleFactor);
}

#define DAX_MAGNITUDE(OP, T)                                                                  \
  template DaxStatus magnitude<OP, T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize); \
  template void magnitudeRow<OP, T>(const T*, T*, int32_t, int32_t);
#define DAX_ROOT_AND_SQUARE(T) \
  DAX_MAGNITUDE(SqrtOp, T)     \
  template DaxStatus square<T>(const T*, int32_t, T*, int32_t, DaxiSize, int32_t);
DAX_MAGNITUDE(AbsOp, int16_t)
DAX_MAGNITUDE(AbsOp, float)
DAX_ROOT_AND_SQUARE(uint8_t)
DAX_ROOT_AND_SQUARE(uint16_t)
DAX_ROOT_AND_SQUARE(int16_t)
DAX_ROOT_AND_SQUARE(float)
#undef DAX_ROOT_AND_SQUARE
#undef DAX_MAGNITUDE

}  // namespace dax
