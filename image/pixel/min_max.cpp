#include "image/pixel/min_max.h"

#include "image/pixel/min_max_neon.h"
#include "image/pixel/min_max_portable.h"

namespace dax {

template <class Op, Operand kOperand, class T>
void extremeRow(const T* a, const T* b, T* dst, int32_t count, int32_t isa) {
  usesNeon(isa) ? neon::extremeRow<Op, kOperand>(a, b, dst, count)
                : portable::extremeRow<Op, kOperand>(a, b, dst, count);
}

template <class Op, class T>
DaxStatus extremeOfImages(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep,
                          DaxiSize size) {
  return rowsWithImage(src1, step1, src2, step2, dst, dstStep, size,
                       [isa = currentIsa()](const T* a, const T* b, T* result, int32_t count) {
                         extremeRow<Op, Operand::row>(a, b, result, count, isa);
                       });
}

template <class Op, class T>
DaxStatus extremeOfConstant(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T value) {
  return rowsWithConstant(src, srcStep, dst, dstStep, size, value,
                          [isa = currentIsa()](const T* a, const T* b, T* result, int32_t count) {
                            extremeRow<Op, Operand::pattern>(a, b, result, count, isa);
                          });
}

#define DAX_EXTREME(OP, T)                                                                                \
  template DaxStatus extremeOfImages<OP, T>(const T*, int32_t, const T*, int32_t, T*, int32_t, DaxiSize); \
  template DaxStatus extremeOfConstant<OP, T>(const T*, int32_t, T*, int32_t, DaxiSize, T);               \
  template void extremeRow<OP, Operand::pattern, T>(const T*, const T*, T*, int32_t, int32_t);            \
  template void extremeRow<OP, Operand::row, T>(const T*, const T*, T*, int32_t, int32_t);
#define DAX_EXTREMES(T) \
  DAX_EXTREME(MinOp, T) \
  DAX_EXTREME(MaxOp, T)
DAX_EXTREMES(uint8_t)
DAX_EXTREMES(uint16_t)
DAX_EXTREMES(int16_t)
DAX_EXTREMES(float)
#undef DAX_EXTREMES
#undef DAX_EXTREME

}  // namespace dax
