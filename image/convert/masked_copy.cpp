#include "daxi/masked_copy.h"

#include "frame/dispatch.h"
#include "frame/op2d.h"
#include "image/convert/masked_copy_neon.h"
#include "image/convert/masked_copy_portable.h"

namespace dax {
namespace {

// `isConstant`: src has one pixel for all.
template <class T, int kChannels>
void maskedCopyRow(const T* src, bool isConstant, const uint8_t* mask, T* dst, int32_t width, int32_t isa) {
  const bool neon = usesNeon(isa);
  const auto row = isConstant
                       ? (neon ? neon::maskedConstantRow<T, kChannels> : portable::maskedConstantRow<T, kChannels>)
                       : (neon ? neon::maskedRow<T, kChannels> : portable::maskedRow<T, kChannels>);
  row(src, mask, dst, width);
}

// Checks and runs; a constant has no step.
template <class T, int kChannels>
DaxStatus maskedCopy(const T* src, int32_t srcStep, bool isConstant, const uint8_t* mask, int32_t maskStep, T* dst,
                     int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE(src && mask && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, maskStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(isConstant || rowFits(size.width, srcStep, kChannels), DAX_STS_BAD_STEP);
  DAX_REQUIRE(rowFits(size.width, dstStep, kChannels), DAX_STS_BAD_STEP);
  const int32_t isa = currentIsa();
  for (int32_t y = 0; y < size.height; ++y) {
    maskedCopyRow<T, kChannels>(isConstant ? src : rowAt(src, srcStep, y), isConstant, rowAt(mask, maskStep, y),
                                rowAt(dst, dstStep, y), size.width, isa);
  }
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_MASKED(SUFFIX, T, CHANNELS, VALUE, ADDRESS)                                                                \
  DaxStatus DAXI_Copy_##SUFFIX##_C##CHANNELS##MR(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, \
                                                 T* dst, int32_t dstStep, DaxiSize size) {                             \
    return dax::maskedCopy<T, CHANNELS>(src, srcStep, false, mask, maskStep, dst, dstStep, size);                      \
  }                                                                                                                    \
  DaxStatus DAXI_Set_##SUFFIX##_C##CHANNELS##MR(const uint8_t* mask, int32_t maskStep, T* dst, int32_t dstStep,        \
                                                DaxiSize size, VALUE) {                                                \
    return dax::maskedCopy<T, CHANNELS>(ADDRESS, 0, true, mask, maskStep, dst, dstStep, size);                         \
  }
#define DAX_MASKED_TYPE(SUFFIX, T)          \
  DAX_MASKED(SUFFIX, T, 1, T value, &value) \
  DAX_MASKED(SUFFIX, T, 3, const T value[3], value)
DAX_MASKED_TYPE(8u, uint8_t)
DAX_MASKED_TYPE(16u, uint16_t)
DAX_MASKED_TYPE(16s, int16_t)
DAX_MASKED_TYPE(32f, float)
#undef DAX_MASKED_TYPE
#undef DAX_MASKED
