#include "image/pixel/arithmetic.h"

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/rows.h"
#include "image/pixel/arithmetic_neon.h"
#include "image/pixel/arithmetic_portable.h"

namespace dax {
namespace {

constexpr int32_t kMaxScaleFactor = 31;

template <int kChannels>
DaxStatus check(const void* src, int32_t srcStep, const void* dst, int32_t dstStep, DaxiSize size, const void* value,
                int32_t scaleFactor) {
  DAX_REQUIRE(src && dst && value, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep), kChannels), DAX_STS_BAD_STEP);
  DAX_REQUIRE(scaleFactor >= -kMaxScaleFactor && scaleFactor <= kMaxScaleFactor, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace

template <class Op, class T>
void constantRows(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize elements, const T* pattern,
                  int32_t scaleFactor, int32_t isa) {
  const auto row = usesNeon(isa) ? neon::constantRow<Op, T> : portable::constantRow<Op, T>;
  for (int32_t y = 0; y < elements.height; ++y) {
    const T* const from = rowAt(src, srcStep, y);
    T* const to = rowAt(dst, dstStep, y);
    if constexpr (std::is_integral_v<T>) {
      if (scaleFactor != 0) {
        portable::scaledRow<Op>(from, to, elements.width, pattern, scaleFactor);
        continue;
      }
    }
    row(from, to, elements.width, pattern);
  }
}

template <class Op, class T, int kChannels>
DaxStatus withConstant(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const T* value,
                       int32_t scaleFactor) {
  DAX_REQUIRE_OK(check<kChannels>(src, srcStep, dst, dstStep, size, value, scaleFactor));
  T pattern[kPatternLength];
  for (int32_t i = 0; i < kPatternLength; ++i) pattern[i] = value[i % kChannels];
  constantRows<Op>(src, srcStep, dst, dstStep, {size.width * kChannels, size.height}, pattern, scaleFactor,
                   currentIsa());
  return DAX_STS_OK;
}

#define DAX_CONSTANT_OPERATION(OP, T)                                                                     \
  template DaxStatus withConstant<OP, T, 1>(const T*, int32_t, T*, int32_t, DaxiSize, const T*, int32_t); \
  template DaxStatus withConstant<OP, T, 3>(const T*, int32_t, T*, int32_t, DaxiSize, const T*, int32_t); \
  template void constantRows<OP, T>(const T*, int32_t, T*, int32_t, DaxiSize, const T*, int32_t, int32_t);
#define DAX_CONSTANT_OPERATIONS(T) \
  DAX_CONSTANT_OPERATION(AddOp, T) \
  DAX_CONSTANT_OPERATION(SubOp, T) \
  DAX_CONSTANT_OPERATION(MulOp, T) \
  DAX_CONSTANT_OPERATION(AbsDiffOp, T)
DAX_CONSTANT_OPERATIONS(uint8_t)
DAX_CONSTANT_OPERATIONS(uint16_t)
DAX_CONSTANT_OPERATIONS(int16_t)
DAX_CONSTANT_OPERATIONS(float)
#undef DAX_CONSTANT_OPERATIONS
#undef DAX_CONSTANT_OPERATION

}  // namespace dax
