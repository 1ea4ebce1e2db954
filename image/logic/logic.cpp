#include "image/logic/logic.h"

#include "image/logic/logic_neon.h"
#include "image/logic/logic_portable.h"

namespace dax {

template <class Op, Operand kOperand, class T>
void bitsRow(const T* a, const T* b, T* dst, int32_t count, int32_t isa) {
  usesNeon(isa) ? neon::bitsRow<Op, kOperand>(a, b, dst, count) : portable::bitsRow<Op, kOperand>(a, b, dst, count);
}

template <class Op, class T>
void shiftRow(const T* src, T* dst, int32_t width, int32_t count, int32_t isa) {
  const T places = static_cast<T>(count);
  usesNeon(isa) ? neon::shiftRow<Op>(src, dst, width, places) : portable::shiftRow<Op>(src, dst, width, places);
}

template <class Op, class T>
DaxStatus bitsOfImages(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep,
                       DaxiSize size) {
  return rowsWithImage(src1, step1, src2, step2, dst, dstStep, size,
                       [isa = currentIsa()](const T* a, const T* b, T* result, int32_t count) {
                         bitsRow<Op, Operand::row>(a, b, result, count, isa);
                       });
}

template <class Op, class T>
DaxStatus bitsOfConstant(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T value) {
  return rowsWithConstant(src, srcStep, dst, dstStep, size, value,
                          [isa = currentIsa()](const T* a, const T* b, T* result, int32_t count) {
                            bitsRow<Op, Operand::pattern>(a, b, result, count, isa);
                          });
}

template <class T>
DaxStatus invertBits(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) {
  return bitsOfConstant<XorOp>(src, srcStep, dst, dstStep, size, static_cast<T>(-1));
}

template <class Op, class T>
DaxStatus shiftBits(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t count) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  DAX_REQUIRE(count >= 0 && count < static_cast<int32_t>(8 * sizeof(T)), DAX_STS_BAD_PARAM);
  const auto row = [count, isa = currentIsa()](const T* a, T* result, int32_t width) {
    shiftRow<Op>(a, result, width, count, isa);
  };
  forEachRow(size, 1, row, from, to);
  return DAX_STS_OK;
}

#define DAX_BITS(OP, T)                                                                                \
  template DaxStatus bitsOfImages<OP, T>(const T*, int32_t, const T*, int32_t, T*, int32_t, DaxiSize); \
  template DaxStatus bitsOfConstant<OP, T>(const T*, int32_t, T*, int32_t, DaxiSize, T);               \
  template void bitsRow<OP, Operand::row, T>(const T*, const T*, T*, int32_t, int32_t);                \
  template void bitsRow<OP, Operand::pattern, T>(const T*, const T*, T*, int32_t, int32_t);
#define DAX_SHIFT(OP, T)                                                                  \
  template DaxStatus shiftBits<OP, T>(const T*, int32_t, T*, int32_t, DaxiSize, int32_t); \
  template void shiftRow<OP, T>(const T*, T*, int32_t, int32_t, int32_t);
#define DAX_LOGIC(T)         \
  DAX_BITS(AndOp, T)         \
  DAX_BITS(OrOp, T)          \
  DAX_BITS(XorOp, T)         \
  DAX_SHIFT(LeftShiftOp, T)  \
  DAX_SHIFT(RightShiftOp, T) \
  template DaxStatus invertBits<T>(const T*, int32_t, T*, int32_t, DaxiSize);
DAX_LOGIC(uint8_t)
DAX_LOGIC(uint16_t)
DAX_LOGIC(int16_t)
#undef DAX_LOGIC
#undef DAX_SHIFT
#undef DAX_BITS

}  // namespace dax

void _DAXI_Not_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t isa) {
  constexpr uint8_t kOnes = UINT8_MAX;
  const dax::Pattern<uint8_t, 1> ones(&kOnes);
  for (int32_t y = 0; y < size.height; ++y) {
    dax::bitsRow<dax::XorOp, dax::Operand::pattern>(dax::rowAt(src, srcStep, y), ones.elements,
                                                    dax::rowAt(dst, dstStep, y), size.width, isa);
  }
}
