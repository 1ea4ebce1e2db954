#include "image/pixel/divide.h"

#include "image/pixel/divide_neon.h"
#include "image/pixel/divide_portable.h"

namespace dax {
namespace {

DaxStatus checkDivisionFactor(int32_t scaleFactor) {
  DAX_REQUIRE(scaleFactor >= -31 && scaleFactor <= 31, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class T>
bool imageHasZero(DaxiSize size, int32_t channels, Plane<const T> plane, int32_t isa) {
  bool found = false;
  const auto row = [&](const T* elements, int32_t count) { found = found || hasZero(elements, count, isa); };
  forEachRow(size, channels, row, plane);
  return found;
}

}  // namespace

template <class T>
bool hasZero(const T* row, int32_t count, int32_t isa) {
  return usesNeon(isa) ? neon::hasZero(row, count) : portable::hasZero(row, count);
}

template <Operand kOperand, class T>
void divideRow(const T* a, const T* b, T* dst, int32_t count, int32_t scaleFactor, int32_t isa) {
  usesNeon(isa) ? neon::divideRow<kOperand>(a, b, dst, count, scaleFactor)
                : portable::divideRow<kOperand>(a, b, dst, count, scaleFactor);
}

template <class T, int kChannels>
DaxStatus divideByConstant(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                           const T* value, int32_t scaleFactor) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE(value, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, kChannels, from, to));
  DAX_REQUIRE_OK(checkDivisionFactor(scaleFactor));
  if constexpr (std::is_integral_v<T>) DAX_REQUIRE(!portable::hasZero(value, kChannels), DAX_STS_BAD_PARAM);
  const Pattern<T, kChannels> pattern(value);
  const auto row = [&, isa = currentIsa()](const T* a, T* result, int32_t count) {
    divideRow<Operand::pattern>(a, pattern.elements, result, count, scaleFactor, isa);
  };
  return forEachRow(on, size, kChannels, row, from, to);
}

template <class T, int kChannels>
DaxStatus divideByImage(PoolThreads on, const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst,
                        int32_t dstStep, DaxiSize size, int32_t scaleFactor) {
  const Plane first{src1, step1}, second{src2, step2};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, kChannels, first, second, to));
  DAX_REQUIRE_OK(checkDivisionFactor(scaleFactor));
  const int32_t isa = currentIsa();
  if constexpr (std::is_integral_v<T>) {
    DAX_REQUIRE(!imageHasZero(size, kChannels, second, isa), DAX_STS_DATA_RANGE);
  }
  const auto row = [=](const T* a, const T* b, T* result, int32_t count) {
    divideRow<Operand::row>(a, b, result, count, scaleFactor, isa);
  };
  return forEachRow(on, size, kChannels, row, first, second, to);
}

#define DAX_DIVIDE_CHANNELS(T, CHANNELS)                                                                            \
  template DaxStatus divideByConstant<T, CHANNELS>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, const T*, \
                                                   int32_t);                                                        \
  template DaxStatus divideByImage<T, CHANNELS>(PoolThreads, const T*, int32_t, const T*, int32_t, T*, int32_t,     \
                                                DaxiSize, int32_t);
#define DAX_DIVIDE(T)                                                                          \
  DAX_DIVIDE_CHANNELS(T, 1)                                                                    \
  DAX_DIVIDE_CHANNELS(T, 3)                                                                    \
  template void divideRow<Operand::row, T>(const T*, const T*, T*, int32_t, int32_t, int32_t); \
  template void divideRow<Operand::pattern, T>(const T*, const T*, T*, int32_t, int32_t, int32_t);
DAX_DIVIDE(uint8_t)
DAX_DIVIDE(uint16_t)
DAX_DIVIDE(int16_t)
DAX_DIVIDE(float)
#undef DAX_DIVIDE
#undef DAX_DIVIDE_CHANNELS

}  // namespace dax
