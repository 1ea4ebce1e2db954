#include "image/pixel/arithmetic.h"

#include "frame/dispatch.h"
#include "frame/op2d.h"
#include "image/pixel/arithmetic_neon.h"
#include "image/pixel/arithmetic_portable.h"

namespace dax {
namespace {

constexpr int32_t kMaxScaleFactor = 31;

DaxStatus checkScaleFactor(int32_t scaleFactor) {
  DAX_REQUIRE(scaleFactor >= -kMaxScaleFactor && scaleFactor <= kMaxScaleFactor, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace

template <class Op, Operand kOperand, class T>
void arithmeticRow(const T* a, const T* b, T* dst, int32_t count, int32_t scaleFactor, int32_t isa) {
  if constexpr (std::is_integral_v<T>) {
    if (scaleFactor != 0) {
      return usesNeon(isa) ? neon::scaledRow<Op, kOperand>(a, b, dst, count, scaleFactor)
                           : portable::scaledRow<Op, kOperand>(a, b, dst, count, scaleFactor);
    }
  }
  usesNeon(isa) ? neon::exactRow<Op, kOperand>(a, b, dst, count) : portable::exactRow<Op, kOperand>(a, b, dst, count);
}

template <class Op, class T, int kChannels>
DaxStatus withConstant(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const T* value,
                       int32_t scaleFactor) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE(value, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, kChannels, from, to));
  DAX_REQUIRE_OK(checkScaleFactor(scaleFactor));
  const Pattern<T, kChannels> pattern(value);
  const auto row = [&, isa = currentIsa()](const T* a, T* result, int32_t count) {
    arithmeticRow<Op, Operand::pattern>(a, pattern.elements, result, count, scaleFactor, isa);
  };
  forEachRow(size, kChannels, row, from, to);
  return DAX_STS_OK;
}

template <class Op, class T, int kChannels>
DaxStatus withImage(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep, DaxiSize size,
                    int32_t scaleFactor) {
  const Plane first{src1, step1}, second{src2, step2};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, kChannels, first, second, to));
  DAX_REQUIRE_OK(checkScaleFactor(scaleFactor));
  const auto row = [&, isa = currentIsa()](const T* a, const T* b, T* result, int32_t count) {
    arithmeticRow<Op, Operand::row>(a, b, result, count, scaleFactor, isa);
  };
  forEachRow(size, kChannels, row, first, second, to);
  return DAX_STS_OK;
}

#define DAX_ARITHMETIC_CHANNELS(OP, T, CHANNELS)                                                                 \
  template DaxStatus withConstant<OP, T, CHANNELS>(const T*, int32_t, T*, int32_t, DaxiSize, const T*, int32_t); \
  template DaxStatus withImage<OP, T, CHANNELS>(const T*, int32_t, const T*, int32_t, T*, int32_t, DaxiSize, int32_t);
#define DAX_ARITHMETIC_OPERATION(OP, T)                                                                    \
  DAX_ARITHMETIC_CHANNELS(OP, T, 1)                                                                        \
  DAX_ARITHMETIC_CHANNELS(OP, T, 3)                                                                        \
  template void arithmeticRow<OP, Operand::pattern, T>(const T*, const T*, T*, int32_t, int32_t, int32_t); \
  template void arithmeticRow<OP, Operand::row, T>(const T*, const T*, T*, int32_t, int32_t, int32_t);
#define DAX_ARITHMETIC_OPERATIONS(T) \
  DAX_ARITHMETIC_OPERATION(AddOp, T) \
  DAX_ARITHMETIC_OPERATION(SubOp, T) \
  DAX_ARITHMETIC_OPERATION(MulOp, T) \
  DAX_ARITHMETIC_OPERATION(AbsDiffOp, T)
DAX_ARITHMETIC_OPERATIONS(uint8_t)
DAX_ARITHMETIC_OPERATIONS(uint16_t)
DAX_ARITHMETIC_OPERATIONS(int16_t)
DAX_ARITHMETIC_OPERATIONS(float)
#undef DAX_ARITHMETIC_OPERATIONS
#undef DAX_ARITHMETIC_OPERATION
#undef DAX_ARITHMETIC_CHANNELS

}  // namespace dax
